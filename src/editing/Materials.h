// The materials of a step: how they are stored, shown and ticked.
//
// Stored form: each ticked material followed by ";", in the order of the boxes; a free entry as "Other:", the
// inspector's words and ";".
#pragma once

#include <map>
#include <vector>

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// The materials of the stored form `before` that `after` lacks, with ", " between.
Text MaterialsLost(TextView before, TextView after);
// The sentence that tells a person of those.
Text LossOfMaterials(TextView lost);

// For reading: without the final ";" and without the "Other:" markers. ";" stands between materials.
Text MaterialsForDisplay(TextView stored);

// Which steps have materials to tick; each template is looked up once.
class MaterialOffers {
public:
  explicit MaterialOffers(data::Databases& databases) : m_Databases(&databases) {}
  // False, too, for one that could not be looked up: Failed then.
  bool HasAny(std::int32_t stepTemplateID);
  bool Failed() const { return m_Failed; }

private:
  data::Databases* m_Databases;
  std::map<std::int32_t, bool> m_Known;
  bool m_Failed = false;
};

// A gap that nobody has filled in one of the materials.
bool HasGapInMaterials(TextView stored);

struct MaterialBox {
  std::int32_t materialID = 0;
  Text caption;  // the material, or "Other:" with the inspector's words once ticked
  Text offered;  // the caption of the template: "Other:", or a text with placeholders
  bool ticked = false;
  bool hasComments = false;

  bool IsFree() const;  // the caption begins with "Other:" or "other:"
};

// The boxes of one step, one per material of its template, in their order.
class MaterialBoxes {
public:
  MaterialBoxes(data::Databases& databases, std::int32_t stepTemplateID, TextView stored);

  // Not all boxes could be read. Stored() would then lose what the missing ones held.
  bool Failed() const { return m_Failed; }
  const std::vector<MaterialBox>& Boxes() const { return m_Boxes; }
  void Tick(std::size_t box, bool ticked);
  // The free box takes the words and is ticked.
  void TickFree(std::size_t box, TextView words);
  // A material with placeholders, ticked once they are filled. Unticking brings them back.
  void TickFilled(std::size_t box, TextView filled);
  Text Stored() const;

private:
  std::vector<MaterialBox> m_Boxes;
  bool m_Failed = false;
};

}  // namespace inspector::editing
