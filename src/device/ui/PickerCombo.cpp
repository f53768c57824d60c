#include "device/ui/PickerCombo.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "device/ListColumns.h"
#include "device/ui/TextConversion.h"

namespace inspector::device::ui {
namespace {

constexpr int kDeviceLine = 24;

}  // namespace

DropDown::DropDown(QWidget* parent, int devicePixels)
    : QComboBox(parent), m_ListHeight(devicePixels * kSmallestTarget / kDeviceLine) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(8);
}

void DropDown::showPopup() {
  QComboBox::showPopup();
  QWidget* const list = view()->parentWidget();
  QRect rect = list->geometry();
  // Position and width stay, at the edge that touches the field. A few entries are less high anyway.
  const int spare = std::max(rect.height() - m_ListHeight, 0);
  const bool isAbove = rect.top() < mapToGlobal(QPoint(0, 0)).y();
  list->setGeometry(isAbove ? rect.adjusted(0, spare, 0, 0) : rect.adjusted(0, 0, 0, -spare));
}

void DropDown::keyPressEvent(QKeyEvent* event) {
  const bool moves = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                     event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
  const bool searches = !isEditable() && !event->text().isEmpty() && event->text().front().isPrint();
  const bool jumps = !isEditable() && (event->key() == Qt::Key_Home || event->key() == Qt::Key_End);
  moves || searches || jumps ? showPopup() : QComboBox::keyPressEvent(event);
}

PickerCombo::PickerCombo(QWidget* parent) : DropDown(parent) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  // A completion would turn "Oak" into "Oakland" while a person goes on to the next field.
  setCompleter(nullptr);
  connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) {
    if (count() == 0 || text != itemText(count() - 1)) m_Kept = text;
  });
  connect(this, &QComboBox::activated, this, [this](int index) {
    if (index < 0) return;
    if (index != count() - 1) return TakeChosen();
    {
      const QSignalBlocker quiet(this);
      setEditText(m_Kept);
    }
    if (onEditList) onEditList();
  });
}

void PickerCombo::showPopup() {
  m_BeforeList = currentText();
  DropDown::showPopup();
}

void PickerCombo::hidePopup() {
  DropDown::hidePopup();
  // Later: what was chosen is said after the list has closed.
  QMetaObject::invokeMethod(
      this, [this] { m_BeforeList.reset(); }, Qt::QueuedConnection);
}

// As if it had been typed over the former value, so that undo knows both.
void PickerCombo::TakeChosen() {
  // Leaving the field with the words of an entry counts as choosing it, too; those were typed.
  const std::optional<QString> before = std::exchange(m_BeforeList, std::nullopt);
  const QString chosen = currentText();
  if (!before || *before == chosen) return;
  {
    const QSignalBlocker quiet(this);
    const QSignalBlocker quietLine(lineEdit());
    lineEdit()->setText(*before);
  }
  lineEdit()->selectAll();
  lineEdit()->insert(chosen);
}

void PickerCombo::SetChoices(const std::vector<Text>& choices) {
  const QSignalBlocker quiet(this);
  const QString value = currentText();
  clear();
  for (const Text& choice : choices) addItem(ToQString(choice));
  setCurrentIndex(-1);
  setEditText(value);
}

void PickerCombo::SetValue(TextView value) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(-1);
  setEditText(ToQString(value));
  m_Kept = currentText();
  m_BeforeList.reset();
}

Text PickerCombo::Value() const {
  return FromQString(currentText());
}

}  // namespace inspector::device::ui
