#include "editing/ui/PlaceholderDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

PlaceholderDialog::PlaceholderDialog(const ReplacementQuestion& question, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("placeholderDialog"));
  setWindowTitle(tr("Replace"));
  auto* prompt = new QLabel(ToQString(question.prompt), this);
  prompt->setTextFormat(Qt::PlainText);
  prompt->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  QWidget* field = nullptr;
  if (question.offersChoices) {
    m_Choices = new QComboBox(this);
    m_Choices->setObjectName(QStringLiteral("replacementChoices"));
    m_Choices->setEditable(true);
    m_Choices->setInsertPolicy(QComboBox::NoInsert);
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
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  setMinimumWidth(360);
  field->setFocus();
}

Text PlaceholderDialog::Entered() const {
  return FromQString(m_Choices ? m_Choices->currentText() : m_Entry->text());
}

}  // namespace inspector::editing::ui
