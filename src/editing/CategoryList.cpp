#include "editing/CategoryList.h"

#include <algorithm>

#include "device/Format.h"
#include "editing/AddressCaption.h"
#include "editing/CategoryDuplication.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "editing/RowFilter.h"
#include "inspection/HeaderFields.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr int kMarkColumn = 0;
constexpr int kStatusColumn = 2;
constexpr TextView kNotPresent = u"Not Present";
constexpr TextView kSetNotPresent = u"Set Not Present";
constexpr TextView kSetPresent = u"Set Present";

}  // namespace

CategoryList::CategoryList(inspection::CInspectorDoc& document, EditingDialogs& dialogs)
    : m_Document(document),
      m_Dialogs(dialogs),
      m_Databases(document.GetWorkspace().GetDatabases()),
      m_List(m_Databases) {}

std::vector<device::ListColumn> CategoryList::Columns() {
  using Align = device::ListColumn::Align;
  return {{u"*", 25, Align::Centre, true}, {u"Category", 125}, {u"Status", 100}};
}

Text CategoryList::Caption() const {
  return AddressCaption(m_Document.Inspection());
}

void CategoryList::Show() {
  m_Document.FinishDocTypeChange();
  Refill();
}

void CategoryList::Refill() {
  m_List.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             m_Document.Inspection().m_InspectionID));
  m_Left = Unfinished(m_Document.GetWorkspace(), m_Document.Inspection().m_InspectionID).CountByCategory();
  FilterRows();
}

void CategoryList::SetFilter(TextView words) {
  m_Filter = device::WordFilter(words);
  FilterRows();
}

void CategoryList::FilterRows() {
  m_Shown = FilteredRecords(m_List, m_Filter, [&] { return m_List.m_CategoryTitle; });
}

std::optional<CategoryList::Row> CategoryList::RowAt(int row) {
  if (row < 0 || row >= RowCount() || !m_List.GetRecord(m_Shown[static_cast<std::size_t>(row)]))
    return std::nullopt;
  const bool marked = std::find(m_Marked.begin(), m_Marked.end(), m_List.m_CategoryID) != m_Marked.end();
  const Unfinished::Left left = LeftIn(m_List.m_CategoryID);
  return Row{m_List.m_CategoryID, marked,         m_List.m_CategoryTitle,
             StatusOf(m_List),    !left.unopened, left.steps};
}

device::ListRow CategoryList::ShownRow(int row) {
  const std::optional<Row> shown = RowAt(row);
  if (!shown) return {{u"", u"(deleted)"}, device::CheckImage::None, device::RowTone::Muted};
  const bool absent = shown->status == kNotPresent;
  Text left;
  if (!shown->opened)
    left = u"not opened yet";
  else if (shown->toDo > 0)
    left = Format(u"%d to do", shown->toDo);
  device::ListRow cells{{u"", shown->title, shown->status},
                        shown->marked ? device::CheckImage::Ticked : device::CheckImage::Empty,
                        absent ? device::RowTone::Muted : device::RowTone::Normal};
  if (left.empty() || absent) return cells;
  cells.remarkedCell = kStatusColumn;
  cells.remark = left;
  return cells;
}

Unfinished::Left CategoryList::LeftIn(std::int32_t categoryID) const {
  if (!m_Left) return {};
  const auto found = m_Left->find(categoryID);
  return found == m_Left->end() ? Unfinished::Left() : found->second;
}

CategoryList::Left CategoryList::WhatIsLeft() {
  const data::ReadScope reading(m_Databases.Inspection());
  Left left;
  for (int record = 0; record < m_List.RecordCount(); ++record) {
    if (!m_List.GetRecord(record) || m_List.m_NotPresentFlag) continue;
    if (!m_List.m_CompleteFlag) ++left.categories;
    const Unfinished::Left here = LeftIn(m_List.m_CategoryID);
    left.unopened += here.unopened;
    left.steps += here.steps;
  }
  return left;
}

bool CategoryList::LacksCategories() {
  return m_Document.HasInspection() && !m_Document.Inspection().m_DocType.empty() && !m_List.Failed() &&
         m_List.RecordCount() == 0;
}

bool CategoryList::MakeCategories() {
  const bool isMade = inspection::MakeLackingCategories(m_Document);
  Refill();
  return isMade;
}

Text CategoryList::LeftCaption() {
  if (!m_Left) return Text(kNotReadWhole);
  const Left left = WhatIsLeft();
  const Text unopened = left.unopened > 0 ? Format(u" (%d not opened yet)", left.unopened) : Text();
  return Format(u"%d of %d categories to complete%s, %d %s to do", left.categories, m_List.RecordCount(),
                unopened, left.steps, left.steps == 1 ? u"step" : u"steps");
}

CategoryList::Screen CategoryList::Click(int row, int column, int topRow) {
  if (column == kMarkColumn) Mark(row);
  return column > kMarkColumn ? Open(row, topRow) : Screen::None;
}

void CategoryList::Mark(int row) {
  const std::optional<Row> clicked = RowAt(row);
  if (clicked && !clicked->marked) m_Marked = {clicked->categoryID};
  m_OpenedBeforeMark = m_Document.Categories().m_CategoryID;
}

void CategoryList::MarkToo(int row) {
  const std::optional<Row> clicked = RowAt(row);
  if (clicked && !clicked->marked) m_Marked.push_back(clicked->categoryID);
  m_OpenedBeforeMark = m_Document.Categories().m_CategoryID;
}

CategoryList::Screen CategoryList::Open(int row, int topRow) {
  if (m_Document.FinishDocTypeChange()) {  // the rows on the screen are gone
    Refill();
    return Screen::None;
  }
  const bool isThere = RowAt(row).has_value();
  if (isThere && m_List.m_NotPresentFlag) return Screen::None;
  m_Document.LoadCategories();
  if (!m_Document.SetCurrentCategory(
          isThere ? m_Document.Categories().FindRowOf(m_List, m_Shown[static_cast<std::size_t>(row)]) : -1))
    return Screen::None;
  m_Document.SetCategoryTopIndex(topRow);
  m_OpenedBeforeMark = -1;
  return m_Document.Categories().m_Type == kFormCategory ? Screen::Form : Screen::Steps;
}

int CategoryList::MarkedRow() {
  for (const std::int32_t key : m_Marked)
    if (const int row = RowOf(key); row >= 0) return row;
  return -1;
}

int CategoryList::RowToShow() {
  const std::int32_t opened = m_Document.Categories().m_CategoryID;
  const int marked = opened == m_OpenedBeforeMark ? MarkedRow() : -1;
  return marked >= 0 ? marked : RowOf(opened);
}

int CategoryList::RowOf(std::int32_t categoryID) {
  data::CategoryTable found(m_Databases);
  found.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryID = %d", categoryID));
  const auto row = std::find(m_Shown.begin(), m_Shown.end(), m_List.FindRowOf(found, 0));
  return row == m_Shown.end() ? -1 : static_cast<int>(row - m_Shown.begin());
}

// The record of a category among those shown, -1 when it is none of them.
int CategoryList::RecordOf(std::int32_t categoryID) {
  const int row = RowOf(categoryID);
  return row < 0 ? -1 : m_Shown[static_cast<std::size_t>(row)];
}

std::vector<int> CategoryList::MarkedRows() {
  std::vector<int> records;
  for (const std::int32_t key : m_Marked)
    if (const int record = RecordOf(key); record >= 0) records.push_back(record);
  return records;
}

bool CategoryList::Toggle(int record, Text& caption) {
  if (!m_List.GetRecord(record)) return false;
  const bool absent = caption == kSetNotPresent;
  m_List.m_NotPresentFlag = absent ? -1 : 0;
  caption = absent ? kSetPresent : kSetNotPresent;
  return m_List.Write();
}

bool CategoryList::TogglePresence() {
  m_Document.FinishDocTypeChange();
  data::Transaction transaction(m_Databases.Inspection());
  if (!transaction.IsOpen()) return false;
  Text caption = m_ToggleCaption;
  for (const int record : MarkedRows())
    if (!Toggle(record, caption)) return false;
  if (!transaction.Commit()) return false;
  m_ToggleCaption = caption;
  m_Document.LoadCategories();
  Refill();
  return true;
}

bool CategoryList::RenameRow(int record) {
  if (!m_List.GetRecord(record)) return false;
  const Text title = m_List.m_CategoryTitle;
  const std::optional<Text> entered = m_Document.GetWorkspace().GetPrompts().AskText(
      {u"Enter the new name for " + title, u"Rename Category", title});
  if (!entered) return true;
  data::Transaction transaction(m_Databases.Inspection());
  if (!transaction.IsOpen()) return false;
  if (!m_List.GetRecord(record)) {  // deleted by another program while the dialog was open
    if (!m_List.Failed()) m_Databases.Inspection().ReportVanishedRow(m_List.TableName());
    return false;
  }
  m_List.m_CategoryTitle = device::StripLeadingControls(*entered);
  return m_List.Write() && transaction.Commit();
}

bool CategoryList::Rename() {
  m_Document.FinishDocTypeChange();
  bool renamed = true;
  for (const int record : MarkedRows()) renamed = RenameRow(record) && renamed;
  m_Document.LoadCategories();
  Refill();
  return renamed;
}

bool CategoryList::DuplicateRow(int record, std::optional<inspection::UndoRecording>& recording) {
  if (!m_List.GetRecord(record)) return false;
  CategoryDuplication duplication(m_Document.GetWorkspace(), m_List);
  const auto suggested = duplication.Suggest();
  if (!suggested) return false;
  const auto wanted = m_Dialogs.AskDuplicateCategory(*suggested);
  if (!wanted) return true;
  if (!recording)
    recording.emplace(m_Document, u"Duplicate Category", m_Document.Inspection().m_InspectionID);
  const bool made = duplication.Make(*wanted);
  if (made && m_FirstCopy < 0) m_FirstCopy = duplication.FirstCopy();
  m_Document.LoadCategories();
  m_Document.SetCategoryTopIndex(0);
  return made;
}

bool CategoryList::Duplicate() {
  m_Document.FinishDocTypeChange();
  Refill();
  m_FirstCopy = -1;
  std::optional<inspection::UndoRecording> recording;  // from the first OK on
  bool made = true;
  for (const int record : MarkedRows()) made = DuplicateRow(record, recording) && made;
  Refill();
  if (recording) recording->Done();
  return made;
}

DefaultsResult CategoryList::ApplyDefaults() {
  m_Document.FinishDocTypeChange();
  const DefaultsResult result = editing::ApplyDefaults(m_Document);
  Refill();
  return result;
}

}  // namespace inspector::editing
