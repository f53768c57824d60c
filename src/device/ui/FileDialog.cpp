#include "device/ui/FileDialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>

namespace inspector::device::ui {

FileDialog::FileDialog(QWidget* parent, const QString& title, const char* objectName)
    : QFileDialog(parent, title) {
  setObjectName(QLatin1String(objectName));
  setOption(DontUseNativeDialog);
  setViewMode(List);
  // Beside the list of files there is no room for places, nor above it for ways back.
  for (const char* name : {"sidebar", "backButton", "forwardButton", "listModeButton", "detailModeButton",
                           "newFolderButton", "fileTypeLabel"})
    if (auto* part = findChild<QWidget*>(QLatin1String(name))) part->hide();
  for (QComboBox* box : findChildren<QComboBox*>()) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(4);
  }
  if (auto* types = findChild<QComboBox*>(QStringLiteral("fileTypeCombo")))
    types->setAccessibleName(QStringLiteral("Files of type"));
  if (parent) resize(QSize(640, 560).boundedTo(parent->window()->size()));
}

void FileDialog::ShowFolder(const std::filesystem::path& folder) {
  setDirectory(QFile::decodeName(folder.c_str()));
}

std::vector<std::filesystem::path> FileDialog::Ask() {
  std::vector<std::filesystem::path> files;
  if (exec() == Accepted)
    for (const QString& file : selectedFiles()) files.emplace_back(QFile::encodeName(file).toStdString());
  return files;
}

}  // namespace inspector::device::ui
