// Every step of the visit that still needs something, each one a tap away.
#pragma once

#include "editing/Unfinished.h"
#include "editing/ui/ListScreen.h"
#include "inspection/InspectorDoc.h"

namespace inspector::editing::ui {

class CUnfinishedView : public ListScreen, private device::RowSource {
public:
  explicit CUnfinishedView(inspection::CInspectorDoc& document, QWidget* parent = nullptr);

  QString Title() const override { return QStringLiteral("Unfinished"); }
  // Reads the visit again and stays at the row that it had; another visit is shown whole, from its first row
  // on.
  void OnShow() override;

  // What the person tapped; its step is 0 for a category that was never opened.
  std::function<void(const UnfinishedStep& step)> onOpen;

private:
  int RowCount() const override { return static_cast<int>(m_Shown.size()); }
  device::ListRow ShownRow(int row) override;
  void OnSearch(const device::Text& words) override;
  void ShowRows();

  inspection::CInspectorDoc& m_Document;
  std::optional<Unfinished> m_Unfinished;  // of the inspection that is shown
  std::vector<UnfinishedStep> m_Shown;     // those that the search leaves
  device::Text m_Words;
  bool m_IsWhole = true;  // all of the visit could be read
  std::int32_t m_InspectionID = -1;
};

}  // namespace inspector::editing::ui
