// Message boxes, questions and progress on a console.
#pragma once

#include <ostream>

#include "device/DevicePaths.h"
#include "device/Prompts.h"

namespace inspector::cli {

// Everything goes to `err` with its title. A question is answered by `yes`, else by the terminal, else No.
class ConsolePrompts : public device::Prompts {
public:
  ConsolePrompts(std::ostream& err, bool yes);

  device::Answer Show(const device::Message& message) override;
  std::optional<device::Text> AskText(const device::TextQuestion& question) override;
  std::optional<std::filesystem::path> AskSavePath(const device::SaveQuestion& question) override;
  std::optional<device::DatabasePaths> AskDatabasePaths(const device::DatabasePaths& current) override;
  std::unique_ptr<device::ProgressWindow> OpenProgress(const device::Text& title, bool cancellable) override;

  // Where the paths of AskSavePath lead; set once the device is known.
  void SetPaths(const device::DevicePaths* paths) { m_Paths = paths; }

private:
  bool Answered(const device::Text& question);

  std::ostream& m_Err;
  bool m_Yes;
  bool m_HasTerminal;  // to answer from
  bool m_ErrIsTerminal;
  const device::DevicePaths* m_Paths = nullptr;
};

}  // namespace inspector::cli
