// What the form of a category does: its fields in their order, each stored as soon as it was entered.
#pragma once

#include <vector>

#include "data/FieldTable.h"
#include "editing/EditingDialogs.h"
#include "inspection/InspectorDoc.h"

namespace inspector::editing {

// Field.FieldType and FieldTemplate.Type; any other code is words.
enum class FieldKind { Words = 1, Number = 2, Date = 3, YesNo = 4, Picker = 5 };

class FieldForm {
public:
  FieldForm(inspection::CInspectorDoc& document, EditingDialogs& dialogs);

  // To be called on every showing: makes the fields of the document's current category when it has none, and
  // reads them. False when that failed.
  bool Show();
  Text Caption() const;
  Text CategoryTitle() const { return m_Document.Categories().m_CategoryTitle; }

  struct Field {
    Text label;
    FieldKind kind = FieldKind::Words;
    Text value;  // a date as "5/28/2026", yes/no as "Yes" and "No"
    Text doubt;  // what looks wrong about the value, empty when nothing does; it is stored all the same
  };
  int FieldCount() const { return m_Fields.RecordCount(); }
  // Nothing for a field that another program deleted.
  std::optional<Field> FieldAt(int field);
  int EmptyFields();
  // "3 of 14 fields empty".
  Text LeftCaption();
  // Of the form that was last shown, 0 for none.
  std::int32_t CategoryID() const { return m_CategoryID; }

  // "Yes" and "No", or the list of a picker and "Edit List..."; nothing for what is typed.
  std::vector<Text> Choices(int field);
  // Stores what was entered, at once; a value that is stored already costs nothing. "Edit List..." of a
  // picker is no value: it opens the editor. False when nothing could be written.
  bool Enter(int field, TextView value);
  // Opens the editor of the field's list.
  void EditList(int field);
  // To be called when the form is left: the complete flag of the category follows.
  bool Leave();

private:
  inspection::CInspectorDoc& m_Document;
  EditingDialogs& m_Dialogs;
  data::Databases& m_Databases;
  data::FieldTable m_Fields;
  std::int32_t m_CategoryID = 0;
};

// What looks wrong about a value of this kind: "This is no number." or "This is no date."; else empty.
Text DoubtAbout(FieldKind kind, TextView value);

}  // namespace inspector::editing
