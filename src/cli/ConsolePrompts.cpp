#include "cli/ConsolePrompts.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <string>

#include "cli/TerminalText.h"
#include "device/Format.h"

namespace inspector::cli {
namespace {

using device::Answer;
using device::Buttons;
using device::Text;
using device::ToUtf8;

// Set by the interrupt key while there is a progress line, so that the run ends cleanly.
volatile std::sig_atomic_t interrupted = 0;

extern "C" void OnInterrupt(int) {
  interrupted = 1;
}

// One line, rewritten in place. Without a terminal it shows nothing, but the interrupt key still cancels.
class ConsoleProgress : public device::ProgressWindow {
public:
  ConsoleProgress(std::ostream& err, Text title, bool cancellable)
      : m_Err(err),
        m_Title(std::move(title)),
        m_Shown(isatty(STDERR_FILENO) != 0),
        m_Cancellable(cancellable) {
    interrupted = 0;
    if (m_Cancellable) m_Previous = std::signal(SIGINT, OnInterrupt);
  }
  ~ConsoleProgress() override {
    if (m_Cancellable) std::signal(SIGINT, m_Previous);
    if (m_Shown && m_LineLength > 0) m_Err << '\r' << std::string(m_LineLength, ' ') << '\r' << std::flush;
  }

  void SetStatus(const Text& status) override {
    m_Status = status;
    Draw();
  }
  void SetDetail(const Text& detail) override { m_Detail = detail; }
  void SetRange(int low, int high) override {
    m_Low = low;
    m_High = high;
    m_Position = low;
  }
  void SetPosition(int position) override {
    m_Position = position;
    Draw();
  }
  void Step() override { SetPosition(m_Position + 1); }
  bool Cancelled() override { return m_Cancellable && interrupted != 0; }

private:
  void Draw() {
    if (!m_Shown) return;
    const int whole = m_High > m_Low ? m_High - m_Low : 1;
    const std::string line = ToUtf8(
        device::Format(u"%s %d%% %s %s", m_Title, 100 * (m_Position - m_Low) / whole, m_Status, m_Detail));
    m_Err << '\r' << line;
    if (line.size() < m_LineLength) m_Err << std::string(m_LineLength - line.size(), ' ');
    m_Err << std::flush;
    m_LineLength = line.size();
  }

  std::ostream& m_Err;
  Text m_Title;
  Text m_Status;
  Text m_Detail;
  int m_Low = 0;
  int m_High = 0;
  int m_Position = 0;
  bool m_Shown;
  bool m_Cancellable;
  std::size_t m_LineLength = 0;
  void (*m_Previous)(int) = SIG_DFL;
};

}  // namespace

ConsolePrompts::ConsolePrompts(std::ostream& err, bool yes)
    : m_Err(err), m_Yes(yes), m_HasTerminal(isatty(STDIN_FILENO) != 0) {}

bool ConsolePrompts::Answered(const Text& question) {
  if (m_Yes) {
    m_Err << ToUtf8(question) << " [yes]\n";
    return true;
  }
  if (!m_HasTerminal) {
    m_Err << ToUtf8(question) << " [no; --yes answers yes]\n";
    return false;
  }
  m_Err << ToUtf8(question) << " [y/N] " << std::flush;
  std::string line;
  return std::getline(std::cin, line) && !line.empty() && (line[0] == 'y' || line[0] == 'Y');
}

Answer ConsolePrompts::Show(const device::Message& message) {
  Text text = device::ReplaceAll(message.text, u"\r\n", u"\n");
  text = ForTerminal(message.title + u": " + device::ReplaceAll(std::move(text), u"\r", u"\n"));
  switch (message.buttons) {
    case Buttons::YesNo:
      return Answered(text) ? Answer::Yes : Answer::No;
    case Buttons::OkCancel:
      return Answered(text) ? Answer::Ok : Answer::Cancel;
    case Buttons::Ok:
      break;
  }
  m_Err << ToUtf8(text) << "\n";
  return Answer::Ok;
}

std::optional<Text> ConsolePrompts::AskText(const device::TextQuestion& question) {
  m_Err << ToUtf8(question.title) << ": " << ToUtf8(question.prompt) << ' ' << std::flush;
  std::string line;
  if (!m_HasTerminal || !std::getline(std::cin, line)) {
    m_Err << "[no answer]\n";
    return std::nullopt;
  }
  return device::FromUtf8(line);
}

std::optional<std::filesystem::path> ConsolePrompts::AskSavePath(const device::SaveQuestion& question) {
  const std::filesystem::path path = m_Paths->Resolve(question.folder + question.suggestedName);
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return path;
  const Text text = device::Format(u"Save As: %s already exists. Do you want to replace it?",
                                   device::FromUtf8(path.string()));
  return Answered(text) ? std::optional(path) : std::nullopt;
}

std::optional<device::DatabasePaths> ConsolePrompts::AskDatabasePaths(const device::DatabasePaths& current) {
  bool isMissing = false;
  for (const Text& path : {current.templatePath, current.inspectionPath}) {
    std::error_code error;
    if (std::filesystem::exists(m_Paths->ResolveStored(path), error)) continue;
    const std::filesystem::path file = m_Paths->ResolveStored(path);
    const bool isLink = std::filesystem::is_symlink(file, error);
    m_Err << "The database " << file.string()
          << (isLink ? " is a link that leads nowhere.\n" : " is not there.\n");
    isMissing = isMissing || !isLink;
  }
  if (isMissing) m_Err << "\"inspector-cli init\" creates what is missing.\n";
  if (!m_HasTerminal || m_Yes) return std::nullopt;
  device::DatabasePaths chosen = current;
  for (auto [label, path] : {std::pair{"Template database", &chosen.templatePath},
                             std::pair{"Inspection database", &chosen.inspectionPath}}) {
    m_Err << label << " (empty: stop): " << std::flush;
    std::string line;
    if (!std::getline(std::cin, line) || line.empty()) return std::nullopt;
    *path = device::FromUtf8(line);
    // What is stored must lead to the same file from every folder.
    if (line.front() != '\\') *path = device::FromUtf8(m_Paths->ResolveTyped(*path).string());
  }
  return chosen;
}

std::unique_ptr<device::ProgressWindow> ConsolePrompts::OpenProgress(const Text& title, bool cancellable) {
  return std::make_unique<ConsoleProgress>(m_Err, title, cancellable);
}

}  // namespace inspector::cli
