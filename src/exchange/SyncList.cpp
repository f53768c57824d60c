#include "exchange/SyncList.h"

#include <algorithm>

namespace inspector::exchange {
namespace {

constexpr char16_t kMarked = u'*';
constexpr char16_t kUnmarked = u' ';

}  // namespace

SyncList::SyncList(data::Databases& databases) : m_Rows(databases) {
  const data::ReadScope reading(databases.Inspection());
  m_Rows.Open();
  m_Entries.reserve(static_cast<std::size_t>(m_Rows.RecordCount()));
  // Every row has its entry, also one that cannot be read: it is no inspection's key that can be sent.
  for (int n = 0; n < m_Rows.RecordCount(); ++n) {
    m_Rows.GetRecord(n);
    m_Entries.push_back({m_Rows.m_InspectionID, kUnmarked});
  }
}

std::vector<device::ListColumn> SyncList::Columns() {
  device::ListColumn mark{u"*", 20, device::ListColumn::Align::Centre};
  mark.isMark = true;
  return {mark, {u"Client Name", 125}, {u"Address", 125}, {u"City, State Zip", 200}};
}

device::ListRow SyncList::ShownRow(int row) {
  if (row < 0 || row >= RowCount()) return {};
  device::ListRow shown;
  const char16_t mark = m_Entries[static_cast<std::size_t>(row)].mark;
  shown.cells.emplace_back(1, mark);
  // A box that can be ticked says what a lone blank does not.
  shown.check = mark == kMarked ? device::CheckImage::Ticked : device::CheckImage::Empty;
  if (m_Rows.GetRecord(row))
    shown.cells.insert(shown.cells.end(),
                       {m_Rows.m_ClientName, m_Rows.m_DwellingAddress, m_Rows.m_CityStateZip});
  return shown;
}

void SyncList::Toggle(int row) {
  if (row < 0 || row >= RowCount()) return;
  char16_t& mark = m_Entries[static_cast<std::size_t>(row)].mark;
  mark = mark == kMarked ? kUnmarked : kMarked;
}

void SyncList::MarkAll(bool marked) {
  for (Entry& entry : m_Entries) entry.mark = marked ? kMarked : kUnmarked;
}

int SyncList::MarkedCount() const {
  return static_cast<int>(std::count_if(m_Entries.begin(), m_Entries.end(),
                                        [](const Entry& entry) { return entry.mark == kMarked; }));
}

std::vector<std::int32_t> SyncList::Marked() const {
  std::vector<std::int32_t> keys;
  for (const Entry& entry : m_Entries)
    if (entry.mark == kMarked) keys.push_back(entry.inspectionID);
  return keys;
}

std::vector<std::int32_t> InOrderOfList(data::Databases& databases, const std::vector<std::int32_t>& keys) {
  const data::ReadScope reading(databases.Inspection());
  data::InspectionTable rows(databases);
  rows.Open();
  std::vector<std::int32_t> wanted = keys;
  std::sort(wanted.begin(), wanted.end());
  std::vector<std::int32_t> ordered;
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n) && std::binary_search(wanted.begin(), wanted.end(), rows.m_InspectionID))
      ordered.push_back(rows.m_InspectionID);
  for (const std::int32_t key : keys)
    if (std::find(ordered.begin(), ordered.end(), key) == ordered.end()) ordered.push_back(key);
  return ordered;
}

}  // namespace inspector::exchange
