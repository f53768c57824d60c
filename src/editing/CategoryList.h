// What the category list shows and does: statuses, marks, opening, and the commands on marked categories.
#pragma once

#include <map>
#include <vector>

#include "device/ListColumns.h"
#include "device/RowSource.h"
#include "device/WordFilter.h"
#include "editing/Defaults.h"
#include "editing/EditingDialogs.h"
#include "editing/Unfinished.h"
#include "inspection/InspectorDoc.h"
#include "inspection/UndoLog.h"

namespace inspector::editing {

// Rows are counted from 0 in the order of the list, over those that the filter leaves. Every row is fetched
// when it is asked for. Lives as long as its screen: the marks and the caption of the toggle do too.
class CategoryList : public device::RowSource {
public:
  CategoryList(inspection::CInspectorDoc& document, EditingDialogs& dialogs);

  // "*", "Category", "Status".
  static std::vector<device::ListColumn> Columns();

  // To be called on every showing: reads the categories of the current inspection.
  void Show();
  Text Caption() const;
  std::int32_t InspectionID() const { return m_Document.Inspection().m_InspectionID; }
  // Leaves the rows whose titles hold these words; all when there are none.
  void SetFilter(TextView words);

  struct Row {
    std::int32_t categoryID = 0;
    bool marked = false;
    Text title;
    Text status;          // "Not Present", "Complete" or "Incomplete"
    bool opened = false;  // its steps are made; so they are for a form
    int toDo = 0;         // steps that want a rating, a comment or a picture
  };
  // The row with this key; -1 when the filter hides it or there is none.
  int RowOf(std::int32_t categoryID);
  // Of the category that was marked or opened last. -1 when the list has none such.
  int RowToShow();
  // The row that was marked first, -1 for none in the list.
  int MarkedRow();
  int RowCount() const override { return static_cast<int>(m_Shown.size()); }
  // Nothing for a row that another program deleted.
  std::optional<Row> RowAt(int row);
  // Under the status: how many steps still want something.
  device::ListRow ShownRow(int row) override;
  // There is a type but no category, as the office sends them.
  bool LacksCategories();
  // Makes those of the type. False when none were made, which has been told.
  bool MakeCategories();
  // What is left in the whole inspection, absent categories aside: "4 of 5 categories to complete (2 not
  // opened yet), 12 steps to do".
  Text LeftCaption();

  enum class Screen { None, Steps, Form };
  // In the first column: marks the row instead of those marked before. Elsewhere: opens the category, unless
  // it is not present. `topRow` is the topmost row of the list, to come back to.
  Screen Click(int row, int column, int topRow);
  Screen Open(int row, int topRow);
  int TopRow() const { return m_Document.CategoryTopIndex(); }
  void Mark(int row);
  // Beside those marked before. No click does this.
  void MarkToo(int row);
  bool HasMarks() { return !MarkedRows().empty(); }

  // The commands loop over the marked rows that the filter leaves. False when something could not be written.
  //
  // The caption is also the state: a press turns "Set Not Present" into absent and "Set Present", and
  // anything else, so also the "Not Present" of the beginning, into present and "Set Not Present". It is
  // looked at for each marked row anew.
  const Text& ToggleCaption() const { return m_ToggleCaption; }
  bool TogglePresence();
  bool Rename();
  bool Duplicate();
  // The key of the first copy that the last Duplicate has made; -1 when it made none.
  std::int32_t FirstCopy() const { return m_FirstCopy; }
  DefaultsResult ApplyDefaults();

private:
  struct Left {
    int categories = 0;  // neither complete nor absent
    int unopened = 0;    // of these, the ones whose steps are not made yet
    int steps = 0;       // that want something, of the categories that were opened
  };
  Left WhatIsLeft();
  Unfinished::Left LeftIn(std::int32_t categoryID) const;
  void Refill();
  void FilterRows();
  std::vector<int> MarkedRows();
  int RecordOf(std::int32_t categoryID);
  bool Toggle(int record, Text& caption);
  bool RenameRow(int record);
  bool DuplicateRow(int record, std::optional<inspection::UndoRecording>& recording);

  inspection::CInspectorDoc& m_Document;
  EditingDialogs& m_Dialogs;
  data::Databases& m_Databases;
  data::CategoryTable m_List;  // not the document's own: showing a row must not make it current
  std::vector<int> m_Shown;    // records of m_List
  device::WordFilter m_Filter;
  // By category, as it was when the list was last read; nothing when that failed.
  std::optional<std::map<std::int32_t, Unfinished::Left>> m_Left;
  std::vector<std::int32_t> m_Marked;  // keys, in the order of marking
  // The category that was opened last when one was marked; -1 when one was opened since.
  std::int32_t m_OpenedBeforeMark = -1;
  std::int32_t m_FirstCopy = -1;
  Text m_ToggleCaption = u"Not Present";
};

}  // namespace inspector::editing
