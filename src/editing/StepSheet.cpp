#include "editing/StepSheet.h"

#include <algorithm>
#include <utility>

#include "data/StepTemplateTable.h"
#include "device/Format.h"
#include "editing/CommentText.h"
#include "editing/Completeness.h"
#include "editing/Placeholders.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr TextView kFreeMarker = u"Other:";

// Within one material there is no ";": it would come back as two.
Text AsOneMaterial(TextView entered) {
  return device::ReplaceAll(device::StripLeadingControls(entered), u";", u",");
}

StepDraft DraftOf(const data::StepTable& step) {
  return {step.m_InspectResult, step.m_Comments,   step.m_SummaryComment,
          step.m_MaterialNote,  step.m_BitmapPath, step.m_PictureBefore != 0};
}

}  // namespace

StepSheet::StepSheet(inspection::CInspectorDoc& document)
    : m_Document(document),
      m_Steps(document.GetWorkspace().GetDatabases()),
      m_Step(document.GetWorkspace().GetDatabases()) {}

bool StepSheet::Open(std::int32_t categoryID, std::int32_t stepID) {
  if (m_Document.IsChangingDocType()) m_Document.FinishDocTypeChange();
  m_Current = -1;
  m_Steps.OpenSQL(
      Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", m_Steps.TableName(), categoryID));
  return MoveTo(stepID);
}

Text StepSheet::Caption() const {
  return Format(u"%s. %s", m_Step.m_StepNumber, m_Step.m_StepTitle);
}

Text StepSheet::StepInfo() {
  data::StepTemplateTable step(GetWorkspace().GetDatabases());
  step.OpenSQL(Format(u"SELECT * FROM StepTemplate WHERE ID = %d", StepTemplateID()));
  return step.GetRecord(0) ? step.m_StepInfo : Text();
}

StepSheet::Page StepSheet::PageAt(int index) const {
  const int last = static_cast<int>(m_Pages.size()) - 1;
  return m_Pages[static_cast<std::size_t>(std::clamp(index, 0, last))];
}

StepSheet::Page StepSheet::DefaultPage() {
  const int option = GetWorkspace().Options().m_DefStepTab;
  for (const Page page : m_Pages)
    if (static_cast<int>(page) == option) return page;
  return m_Pages.front();
}

bool StepSheet::MoveToPrevious() {
  return !IsFirst() && SaveOnLeaving() && Show(m_Current - 1, -1);
}

bool StepSheet::MoveToNext() {
  return !IsLast() && SaveOnLeaving() && Show(m_Current + 1, +1);
}

bool StepSheet::MoveTo(std::int32_t stepID) {
  if (HasStep() && stepID == StepID()) return true;
  if (!SaveOnLeaving()) return false;
  const data::ReadScope reading(GetWorkspace().InspectionConnection());
  for (int n = 0; n < m_Steps.RecordCount(); ++n)
    if (m_Steps.GetRecord(n) && m_Steps.m_StepID == stepID) return Show(n, 0);
  return false;
}

// A row that is gone by now is passed over in the direction of the move.
bool StepSheet::Show(int row, int direction) {
  const data::ReadScope reading(GetWorkspace().InspectionConnection());
  while (!m_Steps.GetRecord(row)) {
    row += direction;
    if (direction == 0 || row < 0 || row >= m_Steps.RecordCount()) return false;
  }
  m_Current = row;
  TakeOver(m_Steps);
  m_Recording.emplace(m_Document, Format(u"Step %s", m_Step.m_StepNumber),
                      inspection::VisitSnapshot::OfStep(StepID(), CategoryID()));
  return true;
}

void StepSheet::TakeOver(const data::StepTable& step) {
  data::Databases& databases = GetWorkspace().GetDatabases();
  const data::ReadScope reading(databases.Template());
  data::CopyColumns(step, m_Step);
  m_Loaded = m_Draft = DraftOf(step);
  m_Materials.emplace(databases, step.m_StepTemplateID, step.m_Materials);
  m_LoadedMaterials = m_Materials->Stored();
  m_ReadMaterials = step.m_Materials;
  m_Unknown = MaterialsLost(m_ReadMaterials, m_LoadedMaterials);
  m_Dropped.clear();
  m_Pages = {Page::Comments, Page::Picture, Page::Info};
  if (!m_Materials->Boxes().empty()) m_Pages.insert(m_Pages.begin(), Page::Materials);
  if (step.m_RatingType != m_RatingType || m_Ratings.Entries().empty()) {
    m_RatingType = step.m_RatingType;
    m_Ratings = RatingDropDown(databases, m_RatingType);
  }
}

void StepSheet::PickRating(std::size_t entry) {
  m_Draft.result = m_Ratings.Picked(entry);
}

bool StepSheet::TickMaterial(SheetDialogs& dialogs, std::size_t box, bool ticked) {
  if (m_Materials->Failed()) return false;  // what the boxes hold would replace what could not be read
  const MaterialBox& ticking = m_Materials->Boxes()[box];
  if (!ticked || (!ticking.IsFree() && !FindPlaceholder(ticking.offered))) {
    m_Materials->Tick(box, ticked);
    return true;
  }
  if (ticking.IsFree()) {
    const std::optional<Text> entered =
        GetWorkspace().GetPrompts().AskText({Format(u"Enter the new material for: \r\n%s", Title()),
                                             u"Other Material", ticking.caption.substr(kFreeMarker.size())});
    if (!entered) return false;
    const Text words = AsOneMaterial(*entered);
    if (!HasWords(words)) return false;
    m_Materials->TickFree(box, words);
    return true;
  }
  const std::optional<Text> filled =
      FillPlaceholders(GetWorkspace().GetDatabases(), dialogs, ticking.offered);
  if (!filled) return false;
  const Text material = AsOneMaterial(*filled);
  if (!HasWords(material)) return false;
  m_Materials->TickFilled(box, material);
  return true;
}

bool StepSheet::HasChanges() const {
  return HasStep() && (m_Draft != m_Loaded || m_Materials->Stored() != m_LoadedMaterials);
}

bool StepSheet::SaveNow() {
  return !HasChanges() || Write(m_Materials->Stored() != m_LoadedMaterials);
}

bool StepSheet::SaveOnLeaving() {
  if (!HasStep()) return true;
  const bool hasBoxes = !m_Materials->Boxes().empty() && !m_Materials->Failed();
  const bool rebuilds = hasBoxes && m_Materials->Stored() != m_Step.m_Materials;
  if (!(rebuilds ? Write(true) : SaveNow())) return false;
  // Nobody has taken it out: the boxes do not know it.
  if (const Text dropped = std::exchange(m_Dropped, {}); !dropped.empty())
    device::Alert(GetWorkspace().GetPrompts(), Format(u"%s\r\n%s", Caption(), LossOfMaterials(dropped)));
  return true;
}

bool StepSheet::Write(bool withMaterials) {
  if (m_Document.IsChangingDocType()) m_Document.FinishDocTypeChange();
  data::Databases& databases = GetWorkspace().GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return false;
  if (!m_Steps.GetRecord(m_Current)) {
    if (!m_Steps.Failed()) databases.Inspection().ReportVanishedRow(m_Steps.TableName());
    return false;
  }
  const Text materials = m_Materials->Stored();
  const auto store = [](Text& column, const Text& entered, const Text& loaded) {
    if (entered != loaded) column = device::StripLeadingControls(entered);
  };
  store(m_Steps.m_InspectResult, m_Draft.result, m_Loaded.result);
  store(m_Steps.m_Comments, m_Draft.comments, m_Loaded.comments);
  store(m_Steps.m_SummaryComment, m_Draft.summaryComment, m_Loaded.summaryComment);
  store(m_Steps.m_MaterialNote, m_Draft.materialNote, m_Loaded.materialNote);
  store(m_Steps.m_BitmapPath, m_Draft.bitmapPath, m_Loaded.bitmapPath);
  // What another program has written meanwhile is not what the boxes were filled from; a tick means them all
  // the same.
  if (withMaterials && (materials != m_LoadedMaterials || m_Steps.m_Materials == m_ReadMaterials)) {
    m_Steps.m_Materials = device::StripLeadingControls(materials);
    m_Dropped += std::exchange(m_Unknown, {});
  }
  if (m_Draft.pictureBefore != m_Loaded.pictureBefore)
    m_Steps.m_PictureBefore = m_Draft.pictureBefore ? -1 : 0;
  if (!m_Steps.Write() || !RecomputeComplete(databases, m_Steps.m_CategoryID) || !transaction.Commit())
    return false;
  data::CopyColumns(m_Steps, m_Step);
  m_Loaded = m_Draft;
  m_LoadedMaterials = materials;
  return true;
}

void StepSheet::LetUndo() {
  if (m_Recording) m_Recording->Done();
}

void StepSheet::Discard() {
  if (HasStep()) TakeOver(m_Step);
}

}  // namespace inspector::editing
