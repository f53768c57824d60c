#include "device/FaultLog.h"

#include <fstream>
#include <system_error>
#include <utility>

namespace inspector::device {

FaultLog::FaultLog(Prompts& prompts, Clock& clock, std::filesystem::path file)
    : m_Prompts(prompts), m_Clock(clock), m_File(std::move(file)), m_Owner(std::this_thread::get_id()) {}

void FaultLog::Report(const Text& text) {
  {
    const std::lock_guard lock(m_Mutex);
    ++m_Count;
    Append(text);
    m_Latest = text;
    if (IsUnattended()) return;
    if (!m_Seen.insert(text).second) return;
    m_Pending.push_back(text);
  }
  if (std::this_thread::get_id() == m_Owner) ShowPending();
}

void FaultLog::BeginAction() {
  const std::lock_guard lock(m_Mutex);
  m_Seen.clear();
}

Text FaultLog::Latest() const {
  const std::lock_guard lock(m_Mutex);
  return m_Latest;
}

void FaultLog::ShowPending() {
  while (m_Silences == 0 && m_Unattended == 0) {
    Text text;
    {
      const std::lock_guard lock(m_Mutex);
      if (m_Pending.empty()) return;
      text = std::move(m_Pending.front());
      m_Pending.erase(m_Pending.begin());
    }
    // Without the lock: while the box is up, other work may fail and report.
    ShowError(m_Prompts, text);
  }
}

void FaultLog::DropPending() {
  const std::lock_guard lock(m_Mutex);
  m_Pending.clear();
}

int FaultLog::Count() const {
  const std::lock_guard lock(m_Mutex);
  return m_Count;
}

Text NotStored(const FaultLog& faults) {
  return u"Not stored yet. It is tried again every few seconds; do not end the program before. " +
         faults.Latest();
}

void FaultLog::Append(const Text& text) {
  std::string line = ToIso(m_Clock.Now()) + ' ' + ToUtf8(text);
  for (char& byte : line) {
    if (static_cast<unsigned char>(byte) < 0x20) byte = ' ';  // a fault is one line
  }
  line += '\n';
  std::error_code ignored;
  std::filesystem::create_directories(m_File.parent_path(), ignored);
  std::ofstream out(m_File, std::ios::app | std::ios::binary);
  out.write(line.data(), static_cast<std::streamsize>(line.size()));
}

}  // namespace inspector::device
