// The form of a category: every field with what fits its kind. What is typed is stored a moment after the
// first key that is not stored yet.
#pragma once

#include <QLabel>
#include <QScrollArea>

#include "device/ui/PauseTimer.h"
#include "device/ui/Screen.h"
#include "editing/FieldForm.h"

namespace inspector::editing::ui {

class FieldEditor;

class CFieldFormView : public device::ui::Screen {
public:
  CFieldFormView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent = nullptr);

  ~CFieldFormView() override;

  QString Title() const override;
  void OnShow() override;
  bool OnLeave() override;
  bool Flush() override;
  void Discard() override;
  bool TakesText() const override { return true; }
  // Of the form that was last shown.
  std::int32_t CategoryID() const { return m_Form.CategoryID(); }

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  void FitCaptions();
  void MakeEditors();
  bool Store(int field, FieldEditor& editor);
  void EditList(int field);
  void ShowCaptions();

  FieldForm m_Form;
  QLabel* m_Caption;
  QScrollArea* m_Area;
  QLabel* m_Left;
  device::ui::PauseTimer m_Pause;
  device::FaultLog& m_Faults;
  std::map<int, FieldEditor*> m_Editors;  // by field; owned by Qt, below the area
};

}  // namespace inspector::editing::ui
