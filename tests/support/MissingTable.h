// A library that cannot be read any more.
#pragma once

#include "support/VisitFixture.h"

namespace inspector::tests {

// The table is gone, so that every statement about it fails, until the scope ends.
class MissingTable {
public:
  MissingTable(VisitDevice& device, std::string table) : m_Device(device), m_Table(std::move(table)) {
    m_Device.RunInLibrary("ALTER TABLE " + m_Table + " RENAME TO Gone");
  }
  ~MissingTable() { m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO " + m_Table); }
  MissingTable(const MissingTable&) = delete;
  MissingTable& operator=(const MissingTable&) = delete;

private:
  VisitDevice& m_Device;
  std::string m_Table;
};

}  // namespace inspector::tests
