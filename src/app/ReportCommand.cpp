#include "app/ReportCommand.h"

#include <QDesktopServices>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUrl>

#include "device/Format.h"
#include "device/ui/TextConversion.h"
#include "reports/ReportForm.h"
#include "reports/ui/ReportDialog.h"

namespace inspector::app {
namespace {

using device::Text;

// The pages for viewing name each other by their places on the device, which lead nowhere else: what is
// opened is a copy whose pages find each other anywhere.
std::filesystem::path CopyForViewing(data::Workspace& workspace, reports::ReportForm& form,
                                     std::int32_t inspectionID) {
  QTemporaryDir folder;
  folder.setAutoRemove(false);  // it is still open when the program ends
  if (!folder.isValid()) return {};
  reports::ReportRequest request{inspectionID, u"html", form.Choices(), {}};
  request.choices.deselected = form.Categories().Deselected();
  request.target = QFile::encodeName(folder.path()).toStdString();
  const reports::ReportOutcome outcome = reports::MakeReport(workspace, request);
  return outcome.result == reports::ReportResult::Written ? outcome.file / "index.htm"
                                                          : std::filesystem::path();
}

Text Described(const reports::ReportOutcome& outcome) {
  Text text = u"The report is written:\n" + device::FromUtf8(outcome.file.native());
  for (const Text& note : outcome.notes) text += u"\n\n" + note;
  return text;
}

}  // namespace

bool OpenInSystem(const std::filesystem::path& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QFile::decodeName(file.c_str())));
}

Text WriteReport(inspection::CInspectorDoc& document, QWidget& window, const OpenFile& open) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  const std::int32_t inspectionID = document.Inspection().m_InspectionID;
  reports::ReportForm form(workspace, inspectionID);
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
  QPushButton* const openButton = box.addButton(QStringLiteral("&Open"), QMessageBox::AcceptRole);
  QPushButton* const folderButton = box.addButton(QStringLiteral("&Show in folder"), QMessageBox::ActionRole);
  QPushButton* const close = box.addButton(QMessageBox::Close);
  box.setEscapeButton(close);
  box.setDefaultButton(openButton);
  box.exec();

  const bool isFolder = form.Kind().Used().folder;
  std::filesystem::path wanted;
  if (box.clickedButton() == openButton) {
    wanted = outcome.file;
    if (isFolder) wanted /= "index.htm";
    if (form.Kind().Name() == u"html-view") wanted = CopyForViewing(workspace, form, inspectionID);
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
