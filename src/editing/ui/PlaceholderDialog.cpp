#include "editing/ui/PlaceholderDialog.h"

#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

namespace {

constexpr int kWordsAround = 120;  // letters of the text on each side of the gap

}  // namespace

PlaceholderDialog::PlaceholderDialog(const ReplacementQuestion& question, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("placeholderDialog"));
  setWindowTitle(tr("Replace"));
  auto* prompt = new QLabel(ToQString(question.prompt), this);
  prompt->setTextFormat(Qt::PlainText);
  prompt->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  if (!question.before.empty() || !question.after.empty()) {
    // Two gaps of one text may ask the same.
    const QString sentence = device::ui::ToDisplay(question.before).right(kWordsAround).toHtmlEscaped() +
                             QStringLiteral("<b>[ … ]</b>") +
                             device::ui::ToDisplay(question.after).left(kWordsAround).toHtmlEscaped();
    auto* gap = new QLabel(sentence, this);
    gap->setObjectName(QStringLiteral("gap"));
    gap->setTextFormat(Qt::RichText);
    gap->setWordWrap(true);
    layout->addWidget(gap);
  }
  QWidget* field = nullptr;
  if (question.offersChoices) {
    m_Choices = new device::ui::DropDown(this, 150);
    m_Choices->setObjectName(QStringLiteral("replacementChoices"));
    m_Choices->setEditable(true);
    m_Choices->setInsertPolicy(QComboBox::NoInsert);
    m_Choices->setCompleter(nullptr);  // it would make "10" of a typed "1"
    for (const Text& choice : question.choices) m_Choices->addItem(ToQString(choice));
    m_Choices->setCurrentIndex(question.choices.empty() ? -1 : 0);
    m_Choices->lineEdit()->setAccessibleName(ToQString(question.prompt));
    field = m_Choices;
  } else {
    m_Entry = new QLineEdit(this);
    m_Entry->setObjectName(QStringLiteral("replacementField"));
    field = m_Entry;
  }
  field->setAccessibleName(ToQString(question.prompt));
  layout->addWidget(field);
  layout->addLayout(device::ui::HistoryBeside(*this, device::ui::MakeOkCancel(*this)));
  device::ui::FitToWords(*this);
  field->setFocus();
}

Text PlaceholderDialog::Entered() const {
  return FromQString(m_Choices ? m_Choices->currentText() : m_Entry->text());
}

}  // namespace inspector::editing::ui
