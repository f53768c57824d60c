#include "reports/CategorySelection.h"

#include <algorithm>

#include "data/CategoryTable.h"
#include "device/Format.h"

namespace inspector::reports {

CategorySelection::CategorySelection(data::Workspace& workspace, std::int32_t inspectionID) {
  const data::ReadScope reading(workspace.InspectionConnection());
  data::CategoryTable categories(workspace.GetDatabases());
  categories.OpenSQL(
      device::Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
                     inspectionID));
  for (int n = 0; n < categories.RecordCount(); ++n)
    if (categories.GetRecord(n))
      m_Rows.push_back(
          {categories.m_CategoryID, categories.m_CategoryTitle, categories.m_NotPresentFlag == 0, true});
  m_Failed = categories.Failed();
}

std::vector<device::ListColumn> CategorySelection::Columns() {
  return {{u"*", 25, device::ListColumn::Align::Centre, true}, {u"Category", 215}};
}

device::ListRow CategorySelection::ShownRow(int row) {
  const Row& shown = m_Rows[static_cast<std::size_t>(row)];
  if (!shown.isPresent)
    return {{u"", shown.title + u"\nNot Present"}, device::CheckImage::None, device::RowTone::Muted};
  return {{u"", shown.title},
          shown.isChosen ? device::CheckImage::Ticked : device::CheckImage::Empty,
          device::RowTone::Normal};
}

CategorySelection::Count CategorySelection::Counted() const {
  Count count;
  for (const Row& row : m_Rows) {
    count.present += row.isPresent;
    count.chosen += row.isPresent && row.isChosen;
  }
  return count;
}

Text CategorySelection::Caption() const {
  const Count count = Counted();
  return device::Format(u"%d of %d categories go into the report", count.chosen, count.present);
}

void CategorySelection::Choose(const Text& title, bool chosen) {
  for (Row& row : m_Rows)
    if (row.title == title) row.isChosen = chosen;
}

void CategorySelection::Toggle(int row) {
  const Row& toggled = m_Rows[static_cast<std::size_t>(row)];
  if (toggled.isPresent) Choose(toggled.title, !toggled.isChosen);
}

void CategorySelection::ChooseAll(bool chosen) {
  for (Row& row : m_Rows) row.isChosen = chosen;
}

bool CategorySelection::LeaveOut(TextView titleOrKey) {
  auto found =
      std::find_if(m_Rows.begin(), m_Rows.end(), [&](const Row& row) { return row.title == titleOrKey; });
  if (found == m_Rows.end())
    found = std::find_if(m_Rows.begin(), m_Rows.end(),
                         [&](const Row& row) { return device::Decimal(row.categoryID) == titleOrKey; });
  if (found == m_Rows.end()) return false;
  Choose(Text(found->title), false);
  return true;
}

std::vector<Text> CategorySelection::Deselected() const {
  std::vector<Text> titles;
  for (const Row& row : m_Rows)
    if (!row.isChosen && std::find(titles.begin(), titles.end(), row.title) == titles.end())
      titles.push_back(row.title);
  return titles;
}

}  // namespace inspector::reports
