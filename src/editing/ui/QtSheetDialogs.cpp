#include "editing/ui/QtSheetDialogs.h"

#include "device/ui/FileDialog.h"
#include "device/ui/TextConversion.h"
#include "editing/ui/CommentPickerDialog.h"
#include "editing/ui/PlaceholderDialog.h"

namespace inspector::editing::ui {
namespace {

// "Name (*.a;*.b)|*.a; *.b||" as Qt writes it: "Name (*.a;*.b) (*.a *.b)", of which it shows the first part.
QString QtFilter(const Text& filter) {
  const std::vector<Text> parts = device::Split(filter, u'|');
  if (parts.size() < 2) return {};
  return device::ui::ToQString(parts[0] + u" (" + device::ReplaceAll(parts[1], u";", u"") + u")");
}

}  // namespace

std::optional<Text> QtSheetDialogs::AskReplacement(const ReplacementQuestion& question) {
  PlaceholderDialog dialog(question, &m_Parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Entered();
}

bool QtSheetDialogs::PickComments(CommentPicker& picker) {
  CommentPickerDialog dialog(picker, &m_Parent);
  return dialog.exec() == QDialog::Accepted;
}

std::optional<std::filesystem::path> QtSheetDialogs::AskPictureFile(const std::filesystem::path& folder,
                                                                    const Text& filter) {
  device::ui::FileDialog dialog(&m_Parent, QObject::tr("Open"), "pictureFileDialog");
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilter(QtFilter(filter));
  dialog.ShowFolder(folder);
  dialog.setFileMode(QFileDialog::ExistingFile);
  const std::vector<std::filesystem::path> files = dialog.Ask();
  return files.empty() ? std::nullopt : std::optional(files.front());
}

}  // namespace inspector::editing::ui
