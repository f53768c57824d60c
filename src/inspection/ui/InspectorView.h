// The first header form: doc type, client and dwelling.
#pragma once

#include "inspection/ui/HeaderView.h"

namespace inspector::inspection::ui {

class CInspectorView : public HeaderView {
public:
  explicit CInspectorView(CInspectorDoc& document, QWidget* parent = nullptr);

  QString Title() const override;

  // The type was applied: the inspection has other categories now.
  std::function<void()> onDocTypeChanged;
  // It could not be applied, and nothing was changed.
  std::function<void(const Text& why)> onDocTypeFailed;

protected:
  void Fill() override;
  void OnDocTypeChanged() override;

private:
  void SelectDocType();
  void ShowStoredDocType();
  void FinishDocType();
  void ShowProgress(bool running);

  device::ui::DropDown* m_DocType;
  QWidget* m_Progress;
  QTimer m_Poll;
  bool m_HasChanged = false;            // the type, when its change was finished
  bool m_HadFocus = false;              // the field of the type, when it was disabled
  QWidget* m_FocusMeanwhile = nullptr;  // only compared
};

}  // namespace inspector::inspection::ui
