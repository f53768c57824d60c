// Message boxes, questions, text entry, file choosing and progress on the screen.
#pragma once

#include <QPointer>
#include <QWidget>

#include "device/DevicePaths.h"
#include "device/Prompts.h"

namespace inspector::device::ui {

// Needs a QApplication, not a window: start-up asks before there is one.
class QtPrompts : public Prompts {
public:
  explicit QtPrompts(const DevicePaths& paths) : m_Paths(paths) {}

  // The boxes stand over this window, unless a dialog is open: then over that.
  void SetWindow(QWidget* window) { m_Window = window; }

  Answer Show(const Message& message) override;
  std::optional<Text> AskText(const TextQuestion& question) override;
  std::optional<std::filesystem::path> AskSavePath(const SaveQuestion& question) override;
  std::optional<std::filesystem::path> AskOpenPath(const OpenQuestion& question) override;
  std::optional<DatabasePaths> AskDatabasePaths(const DatabasePaths& current) override;
  std::unique_ptr<ProgressWindow> OpenProgress(const Text& title, bool cancellable) override;
  std::unique_ptr<Waiting> ShowWaiting() override;  // the wait cursor

private:
  QWidget* Parent() const;

  const DevicePaths& m_Paths;
  QPointer<QWidget> m_Window;
};

}  // namespace inspector::device::ui
