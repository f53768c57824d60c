// What one run of the program shares: the machine, the two connections, the options.
#pragma once

#include <memory>

#include "data/DatabaseFile.h"
#include "data/Databases.h"
#include "data/OptionsTable.h"
#include "device/Machine.h"

namespace inspector::data {

// Built by StartUp and passed in to everything above the store. One per run.
class Workspace {
public:
  Workspace(const device::Machine& machine, device::DatabasePaths paths);

  const device::Machine& GetMachine() const { return m_Machine; }
  device::Prompts& GetPrompts() const { return m_Machine.prompts; }
  Databases& GetDatabases() { return m_Databases; }
  Connection& InspectionConnection() { return m_Databases.Inspection(); }
  Connection& TemplateConnection() { return m_Databases.Template(); }

  // An action is under way on this thread, which a window or box that it opened lets wait. What happens
  // meanwhile (a timer, the loss of the focus) must leave the databases alone: it would become part of the
  // action, and be taken back with it.
  bool IsBusy() { return m_Databases.Inspection().IsBusy() || m_Databases.Template().IsBusy(); }

  // The single options row, read by the first call and kept until the end.
  OptionsTable& Options();
  // The next call of Options reads the row again (after the library was replaced).
  void ForgetOptions() { m_Options.reset(); }

  // The device paths in use, as the registry holds them.
  const device::DatabasePaths& PathsInUse() const { return m_Paths; }

  // Keeps a second Inspector off both files. Empty, or why not.
  Text LockFiles();
  // A second pair of connections to the same files, for another thread; not opened yet.
  std::unique_ptr<Databases> MakeDatabases() const;

private:
  device::Machine m_Machine;
  device::DatabasePaths m_Paths;
  Databases m_Databases;
  std::unique_ptr<OptionsTable> m_Options;
  DatabaseLock m_TemplateLock;
  DatabaseLock m_InspectionLock;
};

}  // namespace inspector::data
