#include "inspection/ui/HeaderView.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>

#include "device/ui/FieldArea.h"
#include "device/ui/LinesEdit.h"
#include "device/ui/TextConversion.h"

namespace inspector::inspection::ui {

using device::ui::PickerCombo;
using device::ui::ToQString;

namespace {

constexpr int kWriteAfter = 700;      // milliseconds from the first key
constexpr int kTwoColumnsFrom = 900;  // pixels of width
constexpr int kLinesOfLongFields = 4;

bool IsLong(const HeaderField& field) {
  return field.name == u"general" || field.name == u"notes";
}

Text ValueOf(const QWidget* control, const Text& stored) {
  if (const auto* combo = dynamic_cast<const PickerCombo*>(control)) return combo->Value();
  if (const auto* lines = qobject_cast<const QPlainTextEdit*>(control)) {
    // Untouched text keeps the line ends that it came with.
    const QString text = device::ui::LinesOf(*lines->document());
    return text == device::ui::ToDisplay(stored) ? stored : device::ui::FromLines(text);
  }
  return device::ui::FromQString(static_cast<const QLineEdit*>(control)->text());
}

}  // namespace

HeaderView::HeaderView(CInspectorDoc& document, HeaderPage page, QWidget* parent)
    : Screen(parent),
      m_Document(document),
      m_Form(document),
      m_Fields(FieldsOn(page)),
      m_Pause(
          kWriteAfter, document.GetWorkspace().GetMachine().faults,
          [&document] { return document.IsChangingDocType() || document.GetWorkspace().IsBusy(); },
          [this] { return Flush(); }) {
  auto* scroll = new device::ui::FieldArea(this);
  m_Inside = new QWidget(scroll);
  m_Grid = new QGridLayout(m_Inside);
  m_Grid->setContentsMargins(12, 8, 12, 12);
  m_Grid->setHorizontalSpacing(20);
  m_Grid->setVerticalSpacing(2);
  scroll->setWidget(m_Inside);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll);
}

QWidget* HeaderView::MakeControl(const HeaderField& field) {
  QWidget* control = nullptr;
  if (!field.pickerList.empty()) {
    auto* combo = new PickerCombo(m_Inside);
    connect(combo, &QComboBox::editTextChanged, this, [this] {
      if (!m_Filling) Touched();
    });
    combo->onEditList = [this, &field] {
      Flush();
      if (onEditList) onEditList(m_Form.ListToEdit(field));
      FillChoices();
    };
    control = combo;
  } else if (IsLong(field)) {
    auto* lines = new device::ui::LinesEdit(m_Inside);
    lines->setTabChangesFocus(true);
    lines->setMinimumHeight(kLinesOfLongFields * lines->fontMetrics().lineSpacing() + 16);
    connect(lines, &QPlainTextEdit::textChanged, this, [this] {
      if (!m_Filling) Touched();
    });
    control = lines;
  } else {
    auto* line = new QLineEdit(m_Inside);
    connect(line, &QLineEdit::textEdited, this, [this] { Touched(); });
    control = line;
  }
  control->setObjectName(ToQString(field.name) + QStringLiteral("Field"));
  return control;
}

void HeaderView::AddFields() {
  for (const HeaderField* field : m_Fields) {
    QWidget* const control = MakeControl(*field);
    m_Controls[field] = control;
    m_Filled[field];
    AddRow(ToQString(field->caption), control);
  }
}

void HeaderView::AddRow(const QString& caption, QWidget* control) {
  auto* label = new QLabel(caption, m_Inside);
  label->setBuddy(control);
  control->setAccessibleName(QString(caption).remove(u'*'));
  if (!m_Rows.empty()) setTabOrder(m_Rows.back().control, control);
  m_Rows.push_back({label, control});
  m_Columns = 0;  // to be laid out again
  LayOut();
}

// Captions stand above their fields, so that long values have the whole width; a tablet shows two such
// columns.
void HeaderView::LayOut() {
  const int columns = width() >= kTwoColumnsFrom ? 2 : 1;
  if (columns == m_Columns) return;
  m_Columns = columns;
  int row = 0;
  int column = 0;
  for (const Row& one : m_Rows) {
    m_Grid->removeWidget(one.caption);
    m_Grid->removeWidget(one.control);
    m_Grid->addWidget(one.caption, 2 * row, column, Qt::AlignBottom);
    m_Grid->addWidget(one.control, 2 * row + 1, column);
    column = (column + 1) % columns;
    if (column == 0) ++row;
  }
  m_Grid->setColumnStretch(0, 1);
  m_Grid->setColumnStretch(1, columns == 2 ? 1 : 0);
  for (int n = 0; n < m_Grid->rowCount(); ++n) m_Grid->setRowStretch(n, 0);
  m_Grid->setRowStretch(2 * row + 2, 1);
}

void HeaderView::resizeEvent(QResizeEvent* event) {
  Screen::resizeEvent(event);
  LayOut();
}

void HeaderView::OnShow() {
  m_Document.RefreshHeader();
  const bool isOther = m_Form.MustFill();
  if (isOther) FillChoices();
  Fill();
  // Undo must not bring one client's words into another's visit.
  if (isOther) {
    for (auto* lines : findChildren<QPlainTextEdit*>()) lines->document()->clearUndoRedoStacks();
    for (auto* line : findChildren<QLineEdit*>()) {
      line->setText(line->text());  // forgets as well
      line->setCursorPosition(0);   // a long value shows how it begins
    }
  }
}

void HeaderView::ListsChanged() {
  m_Form.Forget();
}

void HeaderView::FillChoices() {
  for (const auto& [field, control] : m_Controls)
    if (auto* combo = dynamic_cast<PickerCombo*>(control)) combo->SetChoices(m_Form.Choices(*field));
}

void HeaderView::Fill() {
  const QScopedValueRollback filling(m_Filling, true);
  for (const auto& [field, control] : m_Controls) {
    const Text& value = m_Document.Inspection().*field->text;
    m_Filled[field] = value;
    // What shows the value already keeps its cursor and what can be undone.
    if (ValueOf(control, value) == value) continue;
    if (auto* combo = dynamic_cast<PickerCombo*>(control)) {
      combo->SetValue(value);
    } else if (auto* lines = dynamic_cast<device::ui::LinesEdit*>(control)) {
      // The caret stays: the person may be typing while a change of type ends.
      lines->ReplaceText(device::ui::ToDisplay(value));
    } else {
      static_cast<QLineEdit*>(control)->setText(ToQString(value));
    }
  }
  m_Form.Filled(Entered());
}

HeaderForm::EnteredFields HeaderView::Entered() const {
  HeaderForm::EnteredFields entered;
  for (const HeaderField* field : m_Fields)
    entered.push_back({field, ValueOf(m_Controls.at(field), m_Filled.at(field))});
  return entered;
}

void HeaderView::Discard() {
  m_Pause.stop();
  m_Document.DropHeaderChanges();
  Fill();
  m_Form.Drop(Entered());
}

bool HeaderView::Flush() {
  m_Pause.stop();
  // First into memory: a change of type that ends below appends its comments to what was typed.
  m_Form.TakeOver(Entered());
  if (m_Document.FinishDocTypeChange()) {
    Fill();
    OnDocTypeChanged();
  }
  const bool stored = m_Form.Save(Entered());
  if (!stored) m_Pause.Begin();
  if (onStored) onStored(stored);
  if (onTitleChanged) onTitleChanged();
  return stored;
}

}  // namespace inspector::inspection::ui
