#include "editing/Materials.h"

#include <algorithm>

#include "data/MaterialTemplateTable.h"
#include "device/Format.h"
#include "editing/Placeholders.h"

namespace inspector::editing {
namespace {

constexpr TextView kFree = u"Other:";
constexpr TextView kFreeLowerCase = u"other:";

// A free box whose entry is stored shows it: the piece from the marker up to the next ";".
void RestoreFreeEntry(MaterialBox& box, TextView stored) {
  std::size_t at = stored.find(kFree);
  if (at == TextView::npos) at = stored.find(kFreeLowerCase);
  if (at == TextView::npos) return;
  const std::size_t end = stored.find(u';', at);
  box.caption = Text(stored.substr(at, end == TextView::npos ? end : end - at));
  box.ticked = true;
}

bool IsFreePiece(TextView piece) {
  return piece.starts_with(kFree) || piece.starts_with(kFreeLowerCase);
}

// A material with placeholders is stored with what they were filled with. A piece that belongs to another box
// is none of it.
void RestoreFilled(std::vector<MaterialBox>& boxes, TextView stored) {
  for (MaterialBox& box : boxes) {
    if (box.ticked || !FindPlaceholder(box.offered)) continue;
    for (const Text& piece : device::Split(stored, u';')) {
      const auto owns = [&piece](const MaterialBox& each) { return each.ticked && each.caption == piece; };
      if (piece.empty() || IsFreePiece(piece) || std::any_of(boxes.begin(), boxes.end(), owns) ||
          !IsFilledFrom(piece, box.offered))
        continue;
      box.caption = piece;
      box.ticked = true;
      break;
    }
  }
}

}  // namespace

bool MaterialBox::IsFree() const {
  return IsFreePiece(caption);
}

Text MaterialsLost(TextView before, TextView after) {
  const std::vector<Text> left = device::Split(after, u';');
  Text lost;
  for (const Text& piece : device::Split(before, u';'))
    if (piece.find_first_not_of(u' ') != Text::npos &&
        std::find(left.begin(), left.end(), piece) == left.end())
      lost += (lost.empty() ? u"" : u", ") + piece;
  return lost;
}

Text LossOfMaterials(TextView lost) {
  return device::Format(u"No longer among the materials of this step, so taken out: %s", lost);
}

bool MaterialOffers::HasAny(std::int32_t stepTemplateID) {
  const auto known = m_Known.find(stepTemplateID);
  if (known != m_Known.end()) return known->second;
  data::MaterialTemplateTable materials(*m_Databases);
  materials.OpenSQL(device::Format(u"SELECT * FROM MaterialTemplate WHERE StepID = %d ORDER BY MaterialOrder",
                                   stepTemplateID));
  if (materials.Failed()) {
    m_Failed = true;
    return false;
  }
  return m_Known.emplace(stepTemplateID, materials.RecordCount() > 0).first->second;
}

bool HasGapInMaterials(TextView stored) {
  if (stored.find(u'^') == TextView::npos) return false;
  const std::vector<Text> materials = device::Split(stored, u';');
  return std::any_of(materials.begin(), materials.end(), HasUnfilledGap);
}

Text MaterialsForDisplay(TextView stored) {
  if (stored.ends_with(u';')) stored.remove_suffix(1);
  if (stored.starts_with(kFree)) stored.remove_prefix(kFree.size());
  Text shown(stored);
  constexpr TextView kInside = u";Other:";
  for (std::size_t at = shown.find(kInside); at != Text::npos; at = shown.find(kInside))
    shown.erase(at + 1, kInside.size() - 1);
  return shown;
}

MaterialBoxes::MaterialBoxes(data::Databases& databases, std::int32_t stepTemplateID, TextView stored) {
  data::MaterialTemplateTable materials(databases);
  materials.OpenSQL(device::Format(u"SELECT * FROM MaterialTemplate WHERE StepID = %d ORDER BY MaterialOrder",
                                   stepTemplateID));
  m_Failed = materials.Failed();
  for (int n = 0; n < materials.RecordCount(); ++n) {
    if (!materials.GetRecord(n)) {
      m_Failed = true;
      continue;
    }
    MaterialBox box;
    box.materialID = materials.m_ID;
    box.caption = box.offered = materials.m_Material;
    box.hasComments = materials.m_CommentsExist != 0;
    if (box.caption == kFree || box.caption == kFreeLowerCase)
      RestoreFreeEntry(box, stored);
    else
      box.ticked = device::Contains(stored, box.caption + u";");
    m_Boxes.push_back(std::move(box));
  }
  RestoreFilled(m_Boxes, stored);
}

void MaterialBoxes::Tick(std::size_t box, bool ticked) {
  m_Boxes[box].ticked = ticked;
  if (!ticked && FindPlaceholder(m_Boxes[box].offered)) m_Boxes[box].caption = m_Boxes[box].offered;
}

void MaterialBoxes::TickFilled(std::size_t box, TextView filled) {
  m_Boxes[box].caption = Text(filled);
  m_Boxes[box].ticked = true;
}

void MaterialBoxes::TickFree(std::size_t box, TextView words) {
  m_Boxes[box].caption = Text(kFree) + Text(words);
  m_Boxes[box].ticked = true;
}

Text MaterialBoxes::Stored() const {
  Text stored;
  for (const MaterialBox& box : m_Boxes)
    if (box.ticked) stored += box.caption + u";";
  return stored;
}

}  // namespace inspector::editing
