// The two open databases that table objects work on.
#pragma once

#include "data/Connection.h"
#include "data/TableLayout.h"
#include "device/Calendar.h"

namespace inspector::data {

// One object per thread: the worker that applies an inspection type opens a pair of its own.
class Databases {
public:
  Databases(std::filesystem::path templateFile, std::filesystem::path inspectionFile,
            device::FaultLog& faults, device::Clock& clock)
      : m_Template(std::move(templateFile), faults),
        m_Inspection(std::move(inspectionFile), faults),
        m_Clock(clock),
        m_Faults(faults) {}

  // The Template database first, the Inspection database only when that succeeded. Returns why not, or an
  // empty text.
  Text Open() {
    Text problem = m_Template.Open();
    return problem.empty() ? m_Inspection.Open() : problem;
  }

  Connection& Get(DatabaseKind kind) { return kind == DatabaseKind::Template ? m_Template : m_Inspection; }
  Connection& Template() { return m_Template; }
  Connection& Inspection() { return m_Inspection; }
  device::Clock& GetClock() { return m_Clock; }
  device::FaultLog& Faults() { return m_Faults; }

private:
  Connection m_Template;
  Connection m_Inspection;
  device::Clock& m_Clock;
  device::FaultLog& m_Faults;
};

}  // namespace inspector::data
