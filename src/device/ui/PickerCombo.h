// A field with a list of values that come back again and again; its last entry opens the editor of the list.
#pragma once

#include <QComboBox>
#include <functional>
#include <optional>

#include "device/Text.h"

namespace inspector::device::ui {

// A drop-down whose list is at most as high as so many pixels were on the device, where a line had 24 of
// them.
class DropDown : public QComboBox {
public:
  explicit DropDown(QWidget* parent = nullptr, int devicePixels = 100);

  void showPopup() override;

protected:
  // Nothing is chosen before it was seen: keys that would go from entry to entry open the list.
  void keyPressEvent(QKeyEvent* event) override;

private:
  int m_ListHeight;  // logical pixels
};

// Any value may be typed. Choosing the last entry keeps the value and calls `onEditList`.
class PickerCombo : public DropDown {
public:
  explicit PickerCombo(QWidget* parent = nullptr);

  // `choices` ends with the entry that opens the editor.
  void SetChoices(const std::vector<Text>& choices);
  void SetValue(TextView value);
  Text Value() const;

  void showPopup() override;
  void hidePopup() override;

  std::function<void()> onEditList;

private:
  void TakeChosen();

  std::optional<QString> m_BeforeList;  // the value when the list was opened, until something is chosen
  QString m_Kept;                       // the value before an entry was chosen
};

}  // namespace inspector::device::ui
