// Asks where the two databases are, while one of them is missing.
#pragma once

#include <QDialog>

#include "device/Prompts.h"

class QLineEdit;

namespace inspector::device::ui {

class DatabasePathsDialog : public QDialog {
public:
  // `missing` are the lines that name the files that are not there.
  DatabasePathsDialog(const DatabasePaths& current, const Text& missing, QWidget* parent);

  DatabasePaths Paths() const;

private:
  QLineEdit* AddPath(const QString& caption, const char* name, const Text& path);

  QLineEdit* m_Template;
  QLineEdit* m_Inspection;
};

}  // namespace inspector::device::ui
