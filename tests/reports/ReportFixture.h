// A device in a temporary folder with both databases empty; a test adds what it needs.
#pragma once

#include "reports/MakeReport.h"
#include "support/StartedMachine.h"

namespace inspector::tests {

class ReportTest : public ::testing::Test, protected StartedMachine {
protected:
  void RunInVisits(const std::string& sql) {
    EXPECT_TRUE(m_Workspace->InspectionConnection().ExecuteNative(sql)) << sql;
  }
};

}  // namespace inspector::tests
