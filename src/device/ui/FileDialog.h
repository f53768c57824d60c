// The dialog for choosing files, as narrow as a handheld.
#pragma once

#include <QFileDialog>
#include <filesystem>
#include <optional>
#include <vector>

namespace inspector::device::ui {

class FileDialog : public QFileDialog {
public:
  FileDialog(QWidget* parent, const QString& title, const char* objectName);

  void ShowFolder(const std::filesystem::path& folder);
  // Shows it. Empty when the person leaves with Cancel.
  std::vector<std::filesystem::path> Ask();
};

}  // namespace inspector::device::ui
