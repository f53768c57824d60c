#include "editing/ui/FieldEditor.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"
#include "editing/ui/DateDialog.h"
#include "editing/ui/GrowingTextEdit.h"

namespace inspector::editing::ui {

using device::Text;
using device::TextView;
using device::ui::FromQString;
using device::ui::ToQString;

FieldEditor::FieldEditor(const FieldForm::Field& field, const std::vector<Text>& choices, int number,
                         QWidget* parent)
    : QWidget(parent),
      m_Name(QStringLiteral("field%1").arg(number)),
      m_Label(ToQString(field.label)),
      m_Doubt(new QLabel(this)) {
  auto* label = new QLabel(m_Label, this);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  m_Doubt->setTextFormat(Qt::PlainText);
  m_Doubt->setWordWrap(true);
  m_Doubt->setObjectName(QStringLiteral("doubt%1").arg(number));

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 6);
  layout->setSpacing(2);
  layout->addWidget(label);
  switch (field.kind) {
    case FieldKind::YesNo:
      layout->addWidget(MakeYesNo(field.value, choices));
      break;
    case FieldKind::Picker:
      layout->addWidget(MakePicker(field.value, choices));
      break;
    case FieldKind::Number:
    case FieldKind::Date:
      layout->addWidget(MakeLine(field));
      break;
    case FieldKind::Words:
      layout->addWidget(MakeWords(field.value));
  }
  layout->addWidget(m_Doubt);
  if (m_Entry->objectName().isEmpty()) m_Entry->setObjectName(m_Name);
  if (m_Entry->accessibleName().isEmpty()) m_Entry->setAccessibleName(m_Label);
  m_Entry->installEventFilter(this);
  label->setBuddy(m_Entry);
  m_Stored = Value();
  ShowDoubt(field.doubt);
}

Text FieldEditor::Value() const {
  return m_Read();
}

void FieldEditor::Typed() {
  if (onTyped) onTyped();
}

QWidget* FieldEditor::MakeWords(const Text& value) {
  auto* edit = new GrowingTextEdit(this);
  edit->setPlainText(device::ui::ToDisplay(value));
  m_Read = [edit] { return device::ui::FromLines(device::ui::LinesOf(*edit->document())); };
  connect(edit, &QPlainTextEdit::textChanged, this, [this] { Typed(); });
  m_Entry = edit;
  return edit;
}

QWidget* FieldEditor::MakeLine(const FieldForm::Field& field) {
  auto* line = new QLineEdit(ToQString(field.value), this);
  m_Read = [line] { return FromQString(line->text()); };
  connect(line, &QLineEdit::textChanged, this, [this] { Typed(); });
  m_Entry = line;
  if (field.kind == FieldKind::Number) {
    line->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    return line;
  }
  line->setInputMethodHints(Qt::ImhDate);
  line->setPlaceholderText(QStringLiteral("month/day/year"));
  auto* row = new QWidget(this);
  auto* choose = new QPushButton(QStringLiteral("Calendar..."), row);
  choose->setObjectName(QStringLiteral("calendarButton"));
  choose->setAccessibleName(QStringLiteral("Calendar for ") + m_Label);
  connect(choose, &QPushButton::clicked, this, [this] { PickDate(); });
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(line, 1);
  layout->addWidget(choose);
  return row;
}

void FieldEditor::PickDate() {
  auto* line = static_cast<QLineEdit*>(m_Entry);
  DateDialog dialog(m_Label, line->text(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  line->selectAll();
  line->insert(dialog.Chosen());  // as if typed, so that undo knows it
  if (onEntered) onEntered();
}

// Two buttons of which one or none is pressed: pressing the pressed one takes the answer back.
QWidget* FieldEditor::MakeYesNo(const Text& value, const std::vector<Text>& choices) {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  m_Other = value;
  for (const Text& choice : choices) {
    auto* button = new QPushButton(ToQString(choice), row);
    button->setObjectName(m_Name + button->text());
    button->setAccessibleName(m_Label + QStringLiteral(": ") + button->text());
    button->setCheckable(true);
    button->setChecked(choice == value);
    if (choice == value) m_Other.clear();
    connect(button, &QPushButton::clicked, this, [this, button] {
      for (QAbstractButton* each : m_Buttons)
        if (each != button) each->setChecked(false);
      m_Other.clear();
      if (onEntered) onEntered();
    });
    m_Buttons.push_back(button);
    layout->addWidget(button);
  }
  layout->addStretch(1);
  m_Read = [this] {
    for (const QAbstractButton* each : m_Buttons)
      if (each->isChecked()) return FromQString(each->text());
    return m_Other;
  };
  m_Entry = m_Buttons.front();
  return row;
}

QWidget* FieldEditor::MakePicker(const Text& value, const std::vector<Text>& choices) {
  m_Picker = new device::ui::PickerCombo(this);
  m_Picker->SetChoices(choices);
  m_Picker->SetValue(value);
  m_Picker->lineEdit()->setAccessibleName(m_Label);
  m_Picker->onEditList = [this] {
    if (onEditList) onEditList();
  };
  m_Read = [this] { return m_Picker->Value(); };
  connect(m_Picker, &QComboBox::editTextChanged, this, [this] { Typed(); });
  connect(m_Picker, &QComboBox::activated, this, [this] {
    if (onEntered) onEntered();
  });
  m_Entry = m_Picker;
  return m_Picker;
}

void FieldEditor::SetChoices(const std::vector<Text>& choices) {
  if (m_Picker) m_Picker->SetChoices(choices);
}

void FieldEditor::ShowDoubt(TextView doubt) {
  QPalette palette = m_Doubt->palette();
  palette.setColor(QPalette::WindowText, device::ui::AttentionColour(palette));
  m_Doubt->setPalette(palette);
  constexpr qsizetype kLongest = 200;  // letters
  m_Doubt->setText(m_Other.empty()
                       ? ToQString(doubt)
                       : QStringLiteral("Stored: ") + device::ui::Shortened(ToQString(m_Other), kLongest));
  m_Doubt->setVisible(!m_Doubt->text().isEmpty());
}

bool FieldEditor::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut && onEntered) onEntered();
  return QWidget::eventFilter(watched, event);
}

}  // namespace inspector::editing::ui
