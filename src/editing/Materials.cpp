#include "editing/Materials.h"

#include "data/MaterialTemplateTable.h"
#include "device/Format.h"

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

}  // namespace

bool MaterialBox::IsFree() const {
  return caption.starts_with(kFree) || caption.starts_with(kFreeLowerCase);
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
    box.caption = materials.m_Material;
    box.hasComments = materials.m_CommentsExist != 0;
    if (box.caption == kFree || box.caption == kFreeLowerCase)
      RestoreFreeEntry(box, stored);
    else
      box.ticked = device::Contains(stored, box.caption + u";");
    m_Boxes.push_back(std::move(box));
  }
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
