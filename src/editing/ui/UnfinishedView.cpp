#include "editing/ui/UnfinishedView.h"

#include <utility>

#include "device/Format.h"
#include "device/WordFilter.h"
#include "editing/AddressCaption.h"

namespace inspector::editing::ui {

CUnfinishedView::CUnfinishedView(inspection::CInspectorDoc& document, QWidget* parent)
    : ListScreen(parent), m_Document(document) {
  Build(*this, {{u"Step", 150}, {u"Still needs", 90}}, QStringLiteral("unfinished steps"));
  m_Rows->onClick = [this](int row, int) {
    if (row < 0 || row >= RowCount() || !onOpen) return;
    const UnfinishedStep step = m_Shown[static_cast<std::size_t>(row)];  // opening reads the rows again
    onOpen(step);
  };
}

void CUnfinishedView::OnShow() {
  m_Document.FinishDocTypeChange();
  const std::int32_t inspection = m_Document.Inspection().m_InspectionID;
  const bool isAnother = std::exchange(m_InspectionID, inspection) != inspection;
  if (isAnother) ClearSearch();
  m_Unfinished.emplace(m_Document.GetWorkspace(), inspection);
  m_IsWhole = m_Unfinished->Refresh();
  const int row = isAnother ? 0 : m_Rows->SelectedRow();
  ShowRows();
  m_Rows->SelectRow(std::min(std::max(row, 0), RowCount() - 1));
  m_Rows->setFocus();
}

void CUnfinishedView::OnSearch(const device::Text& words) {
  m_Words = words;
  ShowRows();
}

void CUnfinishedView::ShowRows() {
  m_Shown.clear();
  if (!m_Unfinished) return;
  const device::WordFilter filter(m_Words);
  for (const UnfinishedStep& step : m_Unfinished->Steps())
    if (filter.Accepts(
            device::Format(u"%s %s %s %s", step.categoryTitle, step.stepNumber, step.title, step.Reasons())))
      m_Shown.push_back(step);
  SetEmptyText(m_IsWhole ? QStringLiteral("Nothing is left to do here.") : QString());
  m_Rows->Refill();
  const int count = m_Unfinished->Count();
  ShowCaptions(AddressCaption(m_Document.Inspection()),
               !m_IsWhole   ? device::Text(kNotReadWhole)
               : count == 0 ? device::Text(u"The visit is complete.")
                            : device::Format(u"%d left in this visit", count));
}

device::ListRow CUnfinishedView::ShownRow(int row) {
  const UnfinishedStep& step = m_Shown[static_cast<std::size_t>(row)];
  const device::Text name = step.stepID == 0 ? device::Text(u"not opened yet")
                                             : device::Format(u"%s. %s", step.stepNumber, step.title);
  return {{device::Format(u"%s\n%s", step.categoryTitle, name), step.Reasons()},
          device::CheckImage::None,
          device::RowTone::Attention};
}

}  // namespace inspector::editing::ui
