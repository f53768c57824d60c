#include "app/ReportCommand.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>

#include "device/Format.h"
#include "device/ui/TextConversion.h"
#include "reports/HtmlReport.h"
#include "reports/ReportForm.h"
#include "reports/ui/ReportDialog.h"

namespace inspector::app {
namespace {

using device::Text;

// A folder that goes with the window, because what is shown may be looked at for as long.
class CopyOfPages : public QObject {
public:
  using QObject::QObject;

  // The pages for viewing name each other by their places on the device, which lead nowhere else: in the copy
  // they find each other. Empty when there is no room.
  std::filesystem::path Make(const device::Machine& machine, const std::filesystem::path& pages) {
    if (!m_Folder.isValid()) return {};
    const std::filesystem::path folder = QFile::encodeName(m_Folder.path()).toStdString();
    std::vector<std::string> names = {device::ToUtf8(reports::kInspectionPage),
                                      device::ToUtf8(reports::kContentsPage)};
    const reports::PageRecord record(machine, pages);
    for (const auto& [name, picture] : record.Pictures()) names.push_back(name);
    std::error_code error;
    for (const std::string& name : names)
      if (!std::filesystem::copy_file(pages / name, folder / name, error)) return {};
    QFile index(m_Folder.filePath(device::ui::ToQString(reports::kFramesPage)));
    const std::string frames = device::ToUtf8(reports::HtmlReport::FramesPage({}));
    const bool isWritten =
        index.open(QIODevice::WriteOnly) && index.write(frames.c_str()) > 0 && index.flush();
    return isWritten ? folder / reports::kFramesPage : std::filesystem::path();
  }

private:
  QTemporaryDir m_Folder;
};

constexpr std::size_t kLongestNote = 150;  // letters; the details have the whole
constexpr std::size_t kNotesInBox = 2;     // more of them would make it higher than a screen

Text Described(const reports::ReportOutcome& outcome) {
  Text text = u"The report is written:\n" + device::FromUtf8(outcome.file.native());
  if (outcome.notes.size() > kNotesInBox)
    return text + device::Format(u"\n\nThere are %d remarks on its pictures and tags; the details have them.",
                                 outcome.notes.size());
  for (const Text& note : outcome.notes)
    text += u"\n\n" + Text(device::Shortened(note, kLongestNote)) +
            (note.size() > kLongestNote ? u"\u2026" : u"");
  return text;
}

Text AllNotes(const reports::ReportOutcome& outcome) {
  Text notes;
  for (const Text& note : outcome.notes) notes += note + u"\n";
  return notes;
}

// Large text leaves no room for captions side by side on a handheld.
void StackWhereNarrow(QMessageBox& box) {
  constexpr int kMargins = 40;
  auto* const buttons = box.findChild<QDialogButtonBox*>();
  if (buttons != nullptr && buttons->sizeHint().width() + kMargins > box.screen()->availableSize().width())
    buttons->setOrientation(Qt::Vertical);
}

}  // namespace

bool OpenInSystem(const std::filesystem::path& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QFile::decodeName(file.c_str())));
}

Text WriteReport(inspection::CInspectorDoc& document, QWidget& window, const OpenFile& open) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  reports::ReportForm form(workspace, document.Inspection().m_InspectionID);
  if (form.Failed()) return {};
  reports::ui::ReportDialog dialog(form, workspace.GetPrompts(), &window);
  if (dialog.exec() != QDialog::Accepted) return {};
  const reports::ReportOutcome& outcome = dialog.Outcome();

  QMessageBox box(&window);
  box.setObjectName(QStringLiteral("reportWritten"));
  box.setWindowTitle(QStringLiteral("Report"));
  box.setIcon(QMessageBox::Information);
  box.setTextFormat(Qt::PlainText);
  box.setText(device::ui::ToDisplay(Described(outcome)));
  const bool isCut = std::any_of(outcome.notes.begin(), outcome.notes.end(),
                                 [](const Text& note) { return note.size() > kLongestNote; });
  if (isCut || outcome.notes.size() > kNotesInBox)
    box.setDetailedText(device::ui::ToQString(AllNotes(outcome)));
  QPushButton* const openButton = box.addButton(QStringLiteral("&Open"), QMessageBox::AcceptRole);
  QPushButton* const folderButton = box.addButton(QStringLiteral("&Show in folder"), QMessageBox::ActionRole);
  QPushButton* const close = box.addButton(QMessageBox::Close);
  box.setEscapeButton(close);
  box.setDefaultButton(openButton);
  StackWhereNarrow(box);
  box.exec();

  const bool isFolder = form.Kind().Used().folder;
  std::filesystem::path wanted;
  if (box.clickedButton() == openButton) {
    wanted = outcome.file;
    if (isFolder) wanted /= reports::kFramesPage;
    if (form.Kind().Used().ownFolder)
      wanted = (new CopyOfPages(&window))->Make(workspace.GetMachine(), outcome.file);
    if (wanted.empty())
      device::ShowError(
          workspace.GetPrompts(),
          u"The pages could not be copied to be shown. Free some space on the disk and try again.");
  } else if (box.clickedButton() == folderButton) {
    wanted = isFolder ? outcome.file : outcome.file.parent_path();
  }
  if (!wanted.empty() && !open(wanted))
    device::Alert(
        workspace.GetPrompts(),
        device::Format(u"This system has no program that opens %s. The file is there: open it from a file "
                       u"manager, or copy it to another device.",
                       device::FromUtf8(wanted.native())));
  return device::FromUtf8(outcome.file.native());
}

}  // namespace inspector::app
