// One run of the command line: the machine it stands on and, for most commands, the open document.
#pragma once

#include <filesystem>
#include <memory>
#include <ostream>

#include "cli/ConsolePrompts.h"
#include "data/StartUp.h"
#include "device/Machine.h"
#include "inspection/InspectorDoc.h"

namespace inspector::cli {

struct SessionSettings {
  std::filesystem::path home;  // the device root
  bool yes = false;            // every question is answered Yes
};

class Session {
public:
  Session(const SessionSettings& settings, std::ostream& out, std::ostream& err);

  // Opens databases and document as the application does. False when start-up failed; why has been said.
  bool OpenDocument();

  device::Machine& GetMachine() { return m_Machine; }
  data::Workspace& Workspace() { return *m_Workspace; }
  inspection::CInspectorDoc& Document() { return *m_Document; }
  std::ostream& Out() { return m_Out; }

  // One line to standard error. Always returns false.
  bool Fail(const device::Text& problem);
  // The same for something worth knowing that is no failure.
  void Note(const device::Text& note);

  // Makes an inspection current by its key; says so when there is none.
  bool SelectInspection(std::int32_t inspectionID);

private:
  std::ostream& m_Out;
  std::ostream& m_Err;
  device::DevicePaths m_Paths;
  device::HostFiles m_Files;
  device::Registry m_Registry;
  ConsolePrompts m_Prompts;
  device::SystemClock m_Clock;
  device::FaultLog m_Faults;
  device::Machine m_Machine;
  std::unique_ptr<data::Workspace> m_Workspace;
  std::unique_ptr<inspection::CInspectorDoc> m_Document;
};

}  // namespace inspector::cli
