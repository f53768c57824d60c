// The second header form: agents, date and time.
#pragma once

#include "inspection/ui/HeaderView.h"

class QDateTimeEdit;

namespace inspector::inspection::ui {

class CInspectionSetupView2 : public HeaderView {
public:
  explicit CInspectionSetupView2(CInspectorDoc& document, QWidget* parent = nullptr);

  QString Title() const override { return QStringLiteral("Agents and date"); }
  bool Flush() override;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Fill() override;

private:
  void PassToNextPart();

  QDateTimeEdit* m_Date = nullptr;  // owned by Qt, as child
  bool m_DateTouched = false;
};

}  // namespace inspector::inspection::ui
