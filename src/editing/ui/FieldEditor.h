// One field of a form category: its label and what fits its kind to enter a value.
#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>

#include "editing/FieldForm.h"

class QAbstractButton;

namespace inspector::device::ui {
class PickerCombo;
}

namespace inspector::editing::ui {

class FieldEditor : public QWidget {
public:
  // `choices` are those of the form; `number` counts the fields from 0 and makes the object names.
  FieldEditor(const FieldForm::Field& field, const std::vector<device::Text>& choices, int number,
              QWidget* parent);

  device::Text Value() const;
  // Something was entered since the value was last stored.
  bool HasChanges() const { return Value() != m_Stored; }
  void Stored() { m_Stored = Value(); }
  void SetChoices(const std::vector<device::Text>& choices);
  void ShowDoubt(device::TextView doubt);
  // Where typing begins.
  QWidget* Entry() const { return m_Entry; }

  std::function<void()> onTyped;    // something is being typed
  std::function<void()> onEntered;  // a choice was made, or the field was left
  std::function<void()> onEditList;

private:
  QWidget* MakeWords(const device::Text& value);
  QWidget* MakeLine(const FieldForm::Field& field);
  QWidget* MakeYesNo(const device::Text& value, const std::vector<device::Text>& choices);
  QWidget* MakePicker(const device::Text& value, const std::vector<device::Text>& choices);
  void PickDate();
  void Typed();
  bool eventFilter(QObject* watched, QEvent* event) override;

  QString m_Name;
  QString m_Label;
  QWidget* m_Entry = nullptr;  // owned by Qt, as child, like the following
  QLabel* m_Doubt;
  device::ui::PickerCombo* m_Picker = nullptr;
  std::vector<QAbstractButton*> m_Buttons;
  std::function<device::Text()> m_Read;
  device::Text m_Other;   // of a yes/no field: a value that is neither
  device::Text m_Stored;  // as the entry showed it when it was stored
};

}  // namespace inspector::editing::ui
