#include "data/Workspace.h"

namespace inspector::data {

Workspace::Workspace(const device::Machine& machine, device::DatabasePaths paths)
    : m_Machine(machine),
      m_Paths(std::move(paths)),
      m_Databases(machine.paths.ResolveStored(m_Paths.templatePath),
                  machine.paths.ResolveStored(m_Paths.inspectionPath), machine.faults, machine.clock) {}

OptionsTable& Workspace::Options() {
  if (!m_Options) {
    m_Options = std::make_unique<OptionsTable>(m_Databases);
    m_Options->Load();
  }
  return *m_Options;
}

Text Workspace::LockFiles() {
  // A lock beside a file that is refused anyway would only be litter.
  for (const Connection* connection : {&m_Databases.Template(), &m_Databases.Inspection()})
    if (Text problem = ExamineDatabaseFile(connection->File()); !problem.empty()) return problem;
  Text problem = m_TemplateLock.Acquire(m_Databases.Template().File());
  return problem.empty() ? m_InspectionLock.Acquire(m_Databases.Inspection().File()) : problem;
}

std::unique_ptr<Databases> Workspace::MakeDatabases() const {
  return std::make_unique<Databases>(m_Machine.paths.ResolveStored(m_Paths.templatePath),
                                     m_Machine.paths.ResolveStored(m_Paths.inspectionPath), m_Machine.faults,
                                     m_Machine.clock);
}

}  // namespace inspector::data
