// What both header forms share: fields in a column that can be scrolled, saved a moment after the first key
// that is not stored yet.
#pragma once

#include <map>

#include "device/ui/PauseTimer.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/Screen.h"
#include "inspection/HeaderForm.h"

class QGridLayout;

namespace inspector::inspection::ui {

class HeaderView : public device::ui::Screen {
public:
  HeaderView(CInspectorDoc& document, HeaderPage page, QWidget* parent);

  void OnShow() override;
  // Waits for a running change of type: what was typed is written with what the type adds to it.
  bool Flush() override;
  void Discard() override;
  bool TakesText() const override { return true; }
  // The lists that the fields offer were edited elsewhere.
  void ListsChanged();

  // "Edit List..." was chosen; the list is read again afterwards.
  std::function<void(const Text& pickerList)> onEditList;

protected:
  // Of the inspection, into the fields.
  virtual void Fill();
  HeaderForm::EnteredFields Entered() const;
  // A caption and its control at the end of the form.
  void AddRow(const QString& caption, QWidget* control);
  void AddFields();
  void Touched() { m_Pause.Begin(); }
  CInspectorDoc& Document() const { return m_Document; }
  HeaderForm& Form() { return m_Form; }
  bool IsFilling() const { return m_Filling; }
  // A change of type has ended and its result is in the fields.
  virtual void OnDocTypeChanged() {}

  void resizeEvent(QResizeEvent* event) override;

private:
  QWidget* MakeControl(const HeaderField& field);
  void FillChoices();
  void LayOut();

  CInspectorDoc& m_Document;
  HeaderForm m_Form;
  std::vector<const HeaderField*> m_Fields;
  std::map<const HeaderField*, QWidget*> m_Controls;
  std::map<const HeaderField*, Text> m_Filled;  // as stored when the fields were filled
  struct Row {
    QWidget* caption;
    QWidget* control;
  };
  std::vector<Row> m_Rows;
  QWidget* m_Inside;
  QGridLayout* m_Grid;
  device::ui::PauseTimer m_Pause;
  int m_Columns = 0;
  bool m_Filling = false;
};

}  // namespace inspector::inspection::ui
