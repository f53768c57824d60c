// Everything that an inspector wrote about a house, for who goes over the words of a whole visit.
#pragma once

#include <optional>
#include <vector>

#include "inspection/InspectorDoc.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

struct VisitText {
  enum class Kind { General, Notes, Comments, Summary, MaterialNote, Field };
  Kind kind = Kind::General;
  std::int32_t id = 0;          // of the inspection, the step or the field
  std::int32_t categoryID = 0;  // 0 for texts of the header
  std::vector<Text> where;      // "Roof", "20.1 Shingles", "Comments"; of the header the field alone
  Text text;
};

// The long texts of the current inspection's header, then those of its categories in their order: comments,
// summary comment and free material of each step, values of form fields. Empty ones are left out. Nothing
// when some could not be read, which has been reported.
std::optional<std::vector<VisitText>> TextsOfVisit(inspection::CInspectorDoc& document);

// All comments of the library, each once: what an office writes often.
std::optional<std::vector<Text>> TextsOfLibrary(data::Databases& databases);

}  // namespace inspector::editing
