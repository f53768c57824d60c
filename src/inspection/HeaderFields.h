// The header of an inspection as named fields, and what the header forms ask and offer.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

struct HeaderField {
  TextView name;                      // as typed on the command line
  TextView caption;                   // as shown to a person
  Text data::InspectionTable::*text;  // null for the date
  // The picker lists that offer values: the second where the first has none. Empty for most fields.
  TextView pickerList = {};
  TextView fallbackList = {};
};

// number client phone address citystatezip clientaddress clientcitystatezip agent listingagent company date
// general notes
std::span<const HeaderField> HeaderFields();
// Names compare without regard to case. Null when there is no such field.
const HeaderField* FindHeaderField(TextView name);

// Sets a field from what a person typed. False when a date is none ("2026-05-31 14:05" is one).
bool SetHeaderField(data::InspectionTable& inspection, const HeaderField& field, TextView typed);

// What the picker lists of a field offer, then "Edit List...".
std::vector<Text> PickerChoices(data::Databases& databases, const HeaderField& field);

// What changing the type of the current inspection leads to. Asks when it already has one.
enum class DocTypeChoice { Same, Refused, Change };
DocTypeChoice ConfirmDocTypeChange(CInspectorDoc& document, TextView newType);

// Makes the categories of the current inspection's type, with the type's comments, where there are none: the
// office sends the type but no categories, and choosing the same type once more changes nothing. False when
// nothing was made; why has been told.
bool MakeLackingCategories(CInspectorDoc& document);

}  // namespace inspector::inspection
