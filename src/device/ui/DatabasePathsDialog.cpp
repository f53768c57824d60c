#include "device/ui/DatabasePathsDialog.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/FileDialog.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::device::ui {
namespace {

// A path without a slash at its beginning lies below the current folder, which is another one the next time.
Text Absolute(const QString& typed) {
  if (typed.isEmpty() || typed.startsWith(u'\\') || typed.startsWith(u'/')) return FromQString(typed);
  return FromQString(QFileInfo(typed).absoluteFilePath());
}

}  // namespace

DatabasePathsDialog::DatabasePathsDialog(const DatabasePaths& current, const Text& missing, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("databasePathsDialog"));
  setWindowTitle(QStringLiteral("Inspector"));
  auto* layout = new QVBoxLayout(this);
  auto* explanation = new QLabel(this);
  explanation->setTextFormat(Qt::PlainText);
  explanation->setText(
      missing.empty() ? QStringLiteral("Say where the two databases are, or leave with Cancel.")
                      : QStringLiteral("There is no file\n%1\nSay where the databases are, or leave with "
                                       "Cancel. On a new device, \"inspector-cli init\" makes both.")
                            .arg(ToDisplay(missing)));
  explanation->setWordWrap(true);
  layout->addWidget(explanation);
  m_Template = AddPath(QStringLiteral("&Template database"), "templatePath", current.templatePath);
  m_Inspection = AddPath(QStringLiteral("&Inspection database"), "inspectionPath", current.inspectionPath);
  layout->addStretch(1);
  layout->addLayout(HistoryBeside(*this, MakeOkCancel(*this)));
  FitToWords(*this);
  m_Template->setFocus();
}

QLineEdit* DatabasePathsDialog::AddPath(const QString& caption, const char* name, const Text& path) {
  auto* label = new QLabel(caption, this);
  auto* field = new QLineEdit(ToQString(path), this);
  field->setObjectName(QLatin1String(name));
  field->setAccessibleName(QString(caption).remove(u'&'));
  label->setBuddy(field);
  auto* browse = new QPushButton(QStringLiteral("Browse..."), this);
  browse->setAccessibleName(QStringLiteral("Browse for the ") + QString(caption).remove(u'&').toLower());
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, [this, field] {
    FileDialog dialog(this, QStringLiteral("Database"), "databaseDialog");
    dialog.setNameFilter(QStringLiteral("Pocket Access Files (*.cdb);;All files (*)"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    for (const std::filesystem::path& file : dialog.Ask()) field->setText(QFile::decodeName(file.c_str()));
  });
  auto* row = new QHBoxLayout;
  row->addWidget(field, 1);
  row->addWidget(browse);
  auto* whole = static_cast<QVBoxLayout*>(layout());
  whole->addWidget(label);
  whole->addLayout(row);
  return field;
}

DatabasePaths DatabasePathsDialog::Paths() const {
  return {Absolute(m_Template->text()), Absolute(m_Inspection->text())};
}

}  // namespace inspector::device::ui
