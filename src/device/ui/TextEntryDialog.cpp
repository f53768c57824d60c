#include "device/ui/TextEntryDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

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
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  layout->addWidget(m_Entry);
  layout->addLayout(HistoryBeside(*this, MakeOkCancel(*this)));
  FitToWords(*this);
  m_Entry->setFocus();
}

Text TextEntryDialog::Entered() const {
  return FromQString(m_Entry->text());
}

}  // namespace inspector::device::ui
