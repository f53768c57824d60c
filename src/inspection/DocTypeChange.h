// Applying an inspection type: the visit's categories are replaced by those of the type.
#pragma once

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::inspection {

using device::Text;
using device::TextView;

// The key of the type while none is chosen.
inline constexpr std::int32_t kNoType = -1;

// The columns of an inspection that a change of type reads and sets.
struct DocTypeState {
  std::int32_t inspectionID = 0;
  std::int32_t inspectionTypeID = kNoType;
  Text docType;  // the type's name, empty while none is chosen
  Text generalInformation;
};

// Deletes every category and step of the inspection, makes one category per category template of the type,
// and appends the type's default comments. A name that no type has leaves the type's key alone and makes no
// category. The inspection's row is not touched. Runs inside the caller's transaction; false when a read or
// write failed.
bool ApplyDocType(data::Databases& databases, DocTypeState& state, TextView newType);

// Adds the sentence of a default comment ("[*Label]Sentence") to a text, two blanks after a period. Any other
// comment adds nothing.
void AppendDefaultComment(Text& text, TextView comment);

bool HasInspectionType(data::Databases& databases, TextView name);

}  // namespace inspector::inspection
