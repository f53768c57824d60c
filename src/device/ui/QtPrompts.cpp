#include "device/ui/QtPrompts.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "device/ui/DatabasePathsDialog.h"
#include "device/ui/FileDialog.h"
#include "device/ui/QtProgressWindow.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TextEntryDialog.h"

namespace inspector::device::ui {
namespace {

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Hand:
      return QMessageBox::Critical;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// "Rich Text Format (*.rtf)|*.rtf|" as "Rich Text Format (*.rtf)": the pattern in brackets is what counts
// here.
QString FilterOf(const Text& filter) {
  QStringList entries;
  const std::vector<Text> parts = Split(filter, u'|');
  for (std::size_t n = 0; n + 1 < parts.size(); n += 2) {
    const QString caption = ToQString(parts[n]);
    entries +=
        caption.contains(u'(') ? caption : caption + QStringLiteral(" (") + ToQString(parts[n + 1]) + u')';
  }
  return entries.join(QStringLiteral(";;"));
}

class WaitCursor : public Prompts::Waiting {
public:
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() override { QApplication::restoreOverrideCursor(); }
};

}  // namespace

QWidget* QtPrompts::Parent() const {
  if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
  return m_Window;
}

Answer QtPrompts::Show(const Message& message) {
  QMessageBox box(Parent());
  box.setObjectName(QStringLiteral("messageBox"));
  box.setTextFormat(Qt::PlainText);
  box.setWindowTitle(ToQString(message.title));
  box.setText(ToDisplay(message.text));
  box.setIcon(IconOf(message.icon));
  switch (message.buttons) {
    case Buttons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      box.exec();
      return Answer::Ok;
    case Buttons::OkCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Ok);
      return box.exec() == QMessageBox::Ok ? Answer::Ok : Answer::Cancel;
    case Buttons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setDefaultButton(message.isNoFirst ? QMessageBox::No : QMessageBox::Yes);
      box.setEscapeButton(QMessageBox::No);
      return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
  }
  return Answer::Cancel;
}

std::optional<Text> QtPrompts::AskText(const TextQuestion& question) {
  TextEntryDialog dialog(question, Parent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Entered();
}

std::optional<std::filesystem::path> QtPrompts::AskSavePath(const SaveQuestion& question) {
  // Asks before an existing file is named.
  FileDialog dialog(Parent(), QStringLiteral("Save As"), "saveDialog");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  const std::filesystem::path folder = m_Paths.ResolveStored(question.folder);
  std::error_code passedOver;  // the dialog shows another folder then
  std::filesystem::create_directories(folder, passedOver);
  dialog.ShowFolder(folder);
  dialog.setNameFilter(FilterOf(question.filter));
  dialog.setDefaultSuffix(ToQString(question.defaultExtension));
  dialog.selectFile(ToQString(question.suggestedName));
  const std::vector<std::filesystem::path> files = dialog.Ask();
  return files.empty() ? std::nullopt : std::optional(files.front());
}

std::optional<DatabasePaths> QtPrompts::AskDatabasePaths(const DatabasePaths& current) {
  DatabasePathsDialog dialog(current, Parent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Paths();
}

std::unique_ptr<Prompts::Waiting> QtPrompts::ShowWaiting() {
  return std::make_unique<WaitCursor>();
}

std::unique_ptr<ProgressWindow> QtPrompts::OpenProgress(const Text& title, bool cancellable) {
  return std::make_unique<QtProgressWindow>(title, cancellable, Parent());
}

}  // namespace inspector::device::ui
