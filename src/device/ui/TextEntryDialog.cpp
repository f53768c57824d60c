#include "device/ui/TextEntryDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"

namespace inspector::device::ui {

TextEntryDialog::TextEntryDialog(const TextQuestion& question, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("textEntryDialog"));
  setWindowTitle(ToQString(question.title));
  auto* prompt = new QLabel(ToDisplay(question.prompt), this);
  prompt->setTextFormat(Qt::PlainText);
  prompt->setWordWrap(true);
  m_Entry = new QLineEdit(ToQString(question.initial), this);
  m_Entry->setObjectName(QStringLiteral("entryField"));
  m_Entry->setAccessibleName(ToQString(question.prompt));
  m_Entry->selectAll();
  QDialogButtonBox* const buttons = MakeOkCancel(*this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  layout->addWidget(m_Entry);
  layout->addWidget(buttons);
  setMinimumWidth(360);
  m_Entry->setFocus();
}

Text TextEntryDialog::Entered() const {
  return FromQString(m_Entry->text());
}

}  // namespace inspector::device::ui
