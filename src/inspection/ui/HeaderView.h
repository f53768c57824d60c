// What both header forms share: fields in a column that can be scrolled, saved a moment after typing pauses.
#pragma once

#include <map>

#include "device/ui/PauseTimer.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/Screen.h"
#include "inspection/HeaderForm.h"

class QGridLayout;
class QPlainTextEdit;

namespace inspector::inspection::ui {

class HeaderView : public device::ui::Screen {
public:
  HeaderView(CInspectorDoc& document, HeaderPage page, QWidget* parent);

  void OnShow() override;
  // While a type is being applied it waits: the document must not be touched, and what was typed stays here.
  bool Flush() override;
  // Waits for a running change of type.
  bool OnLeave() override;
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
  mutable std::map<const HeaderField*, Text> m_Filled;  // as stored when the fields were filled
  struct Row {
    QWidget* caption;
    QWidget* control;
    bool tall;
  };
  std::vector<Row> m_Rows;
  QWidget* m_Inside;
  QGridLayout* m_Grid;
  device::ui::PauseTimer m_Pause;
  int m_Columns = 0;
  bool m_Filling = false;
  bool m_AwaitsType = false;  // a change of type ran when the fields were last handed over
};

}  // namespace inspector::inspection::ui
