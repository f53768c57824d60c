// What the two header forms fill in, take over and ask.
#pragma once

#include <map>
#include <vector>

#include "inspection/HeaderFields.h"

namespace inspector::inspection {

enum class HeaderPage {
  Dwelling,  // doc type, client and dwelling
  SetUp,     // agents, date and time
};

// The fields of a page, in the order in which they stand on it.
std::vector<const HeaderField*> FieldsOn(HeaderPage page);

// One of them for each form. The form keeps what a person types and hands it over as one `Entered`.
class HeaderForm {
public:
  explicit HeaderForm(CInspectorDoc& document) : m_Document(document) {}

  struct Entered {
    const HeaderField* field;
    Text text;
  };
  using EnteredFields = std::vector<Entered>;

  // To be asked each time the form is shown. True when the inspection is another one than it last showed: the
  // form must be filled.
  bool MustFill();
  // The next MustFill is true whatever the inspection (a list was edited, the data changed elsewhere).
  void Forget() { m_MustFill = true; }

  std::vector<Text> DocTypes();
  std::vector<Text> Choices(const HeaderField& field);
  // The list that "Edit List..." opens: the one whose rows are offered, the primary one while there are none.
  Text ListToEdit(const HeaderField& field);

  // What the fields show now is what the document holds.
  void Filled(const EnteredFields& shown);
  // What was taken over and could not be written is given up.
  void Drop(const EnteredFields& shown) {
    Filled(shown);
    m_HasUnwritten = false;
  }
  // What a person changed since, into the document's inspection only. True when something differed.
  bool TakeOver(const EnteredFields& entered);
  bool TakeOverDate(const device::CalendarTime& date);
  // Also writes what was taken over, when something differed. False when it could not be written.
  bool Save(const EnteredFields& entered);

  // The selection of the type changed. Refused: the former selection must come back.
  DocTypeChoice SelectDocType(const EnteredFields& entered, TextView newType);

private:
  bool IsShown() const;

  CInspectorDoc& m_Document;
  bool m_HasShown = false;
  bool m_MustFill = false;
  std::int32_t m_ShownID = 0;
  bool m_HasUnwritten = false;                 // taken over, not written yet
  std::map<const HeaderField*, Text> m_Known;  // as filled or last taken over
};

}  // namespace inspector::inspection
