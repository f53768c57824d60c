#include "cli/Session.h"

#include "cli/TerminalText.h"
#include "device/DefaultHome.h"
#include "device/Format.h"

namespace inspector::cli {

Session::Session(const SessionSettings& settings, std::ostream& out, std::ostream& err)
    : m_Out(out),
      m_Err(err),
      m_Paths(settings.home),
      m_Registry(m_Files, settings.home / device::kRegistryFile),
      m_Prompts(err, settings.yes),
      m_Faults(m_Prompts, m_Clock, settings.home / device::kLogFile),
      m_Machine{m_Paths, m_Files, m_Registry, m_Prompts, m_Clock, m_Faults} {
  m_Prompts.SetPaths(&m_Paths);
}

bool Session::OpenDocument() {
  data::StartUp start = data::StartData(m_Machine);
  if (start.result != data::StartUpResult::Ready) return false;
  m_Workspace = std::move(start.workspace);
  m_Document = std::make_unique<inspection::CInspectorDoc>(*m_Workspace);
  return m_Document->IsOpen();
}

bool Session::Fail(const device::Text& problem) {
  m_Err << "inspector-cli: " << device::ToUtf8(ForTerminal(problem)) << "\n";
  return false;
}

void Session::Note(const device::Text& note) {
  m_Err << device::ToUtf8(ForTerminal(note)) << "\n";
}

bool Session::SelectInspection(std::int32_t inspectionID) {
  if (m_Document->SelectInspection(inspectionID)) return true;
  return Fail(device::Format(u"There is no inspection %d. \"list\" shows those there are.", inspectionID));
}

}  // namespace inspector::cli
