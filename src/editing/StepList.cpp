#include "editing/StepList.h"

#include <algorithm>

#include "data/MaterialTemplateTable.h"
#include "device/Format.h"
#include "editing/AddressCaption.h"
#include "editing/CategoryOpening.h"
#include "editing/CommentText.h"
#include "editing/Completeness.h"
#include "editing/Defaults.h"
#include "editing/RatingDropDown.h"
#include "editing/RowFilter.h"
#include "editing/StepDuplication.h"
#include "editing/StepEditing.h"
#include "inspection/UndoLog.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr TextView kStepsInOrder = u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber";
constexpr auto kNone = u"None";
constexpr auto kHasInfo = u"Info";
constexpr auto kNotRated = u"Not rated";
constexpr int kMaterialsPage = 0;
constexpr int kCommentsPage = 1;

Text Done(bool done) {
  return done ? u"Complete" : u"Incomplete";
}

}  // namespace

StepList::StepList(inspection::CInspectorDoc& document, EditingDialogs& dialogs)
    : m_Document(document),
      m_Dialogs(dialogs),
      m_Databases(document.GetWorkspace().GetDatabases()),
      m_List(m_Databases),
      m_Offers(m_Databases) {}

std::vector<device::ListColumn> StepList::Columns() {
  // The status columns are as narrow as a finger, so that the words of a step have room beside them.
  using Align = device::ListColumn::Align;
  return {{u"Steps:", 76},
          {u"Rating", 64},
          {u"Materials", 27, Align::Centre},
          {u"Comments", 27, Align::Centre},
          {u"Picture", 27, Align::Centre},
          {u"Info", 27, Align::Centre}};
}

Text StepList::Caption() const {
  return AddressCaption(m_Document.Inspection());
}

bool StepList::Show() {
  m_Document.FinishDocTypeChange();
  m_Choices.clear();
  m_Offers = MaterialOffers(m_Databases);
  const auto waiting = m_Document.GetWorkspace().GetPrompts().ShowWaiting();
  const bool opened = OpenCategory(m_Databases, m_Document.Categories());
  m_Document.LoadCategories();  // without steps it is complete now
  Refill();
  return opened && !m_List.Failed();
}

void StepList::Refill() {
  m_List.OpenSQL(Format(kStepsInOrder, m_List.TableName(), m_Document.Categories().m_CategoryID));
  m_Pictures.emplace(m_Document.GetWorkspace());
  FilterRows();
}

void StepList::SetFilter(TextView words) {
  m_Filter = device::WordFilter(words);
  FilterRows();
}

void StepList::FilterRows() {
  m_Shown = FilteredRecords(m_List, m_Filter,
                            [&] { return Format(u"%s. %s", m_List.m_StepNumber, m_List.m_StepTitle); });
}

bool StepList::Read(int row) {
  return row >= 0 && row < RowCount() && m_List.GetRecord(m_Shown[static_cast<std::size_t>(row)]);
}

const std::vector<RatingChoice>* StepList::Choices(const Text& ratingType) {
  const auto known = m_Choices.find(ratingType);
  if (known != m_Choices.end()) return &known->second;
  auto choices = ChoicesOf(m_Databases, ratingType);
  return choices ? &m_Choices.emplace(ratingType, std::move(*choices)).first->second : nullptr;
}

StepList::Attention StepList::AttentionFor(const data::StepTable& step) {
  if (step.m_InspectResult < u" ") return Attention::NotRated;
  if (HasWords(step.m_Comments)) return Attention::None;
  const std::vector<RatingChoice>* const choices = Choices(step.m_RatingType);
  if (choices == nullptr) return Attention::None;
  for (const RatingChoice& choice : *choices)
    if (choice.name == step.m_InspectResult)
      return choice.promptsForComment ? Attention::CommentAsked : Attention::None;
  return Attention::None;
}

std::optional<StepList::Row> StepList::RowAt(int row) {
  if (!Read(row)) return std::nullopt;
  Row shown;
  shown.stepID = m_List.m_StepID;
  shown.label = m_Document.GetWorkspace().Options().m_ShowStepNumbers
                    ? Format(u"%s. %s", m_List.m_StepNumber, m_List.m_StepTitle)
                    : m_List.m_StepTitle;
  shown.rating = m_List.m_InspectResult;
  shown.hasMaterials = m_Offers.HasAny(m_List.m_StepTemplateID);
  shown.materials =
      m_List.m_Materials.empty() && !shown.hasMaterials ? Text(kNone) : Done(!m_List.m_Materials.empty());
  shown.gapInMaterials = shown.hasMaterials && HasGapInMaterials(m_List.m_Materials);
  shown.comments = Done(!m_List.m_Comments.empty());
  shown.gapInComments = HasGapInComment(m_List.m_Comments) || HasGapInComment(m_List.m_SummaryComment);
  shown.picture = Done(!m_List.m_BitmapPath.empty());
  shown.lacksPicture = m_Pictures->IsLackedBy(m_List);
  shown.hasInfo = m_List.m_StepInfoExists != 0;
  shown.attention = AttentionFor(m_List);
  return shown;
}

device::ListRow StepList::ShownRow(int row) {
  const std::optional<Row> shown = RowAt(row);
  if (!shown) return {{u"(deleted)"}, device::CheckImage::None, device::RowTone::Muted};
  const bool needsAttention = shown->attention != Attention::None || shown->gapInMaterials ||
                              shown->gapInComments || shown->lacksPicture;
  const Text rating = shown->attention == Attention::NotRated ? Text(kNotRated) : shown->rating;
  device::ListRow cells{{shown->label, rating, shown->materials, shown->comments, shown->picture,
                         shown->hasInfo ? kHasInfo : kNone},
                        device::CheckImage::None,
                        needsAttention ? device::RowTone::Attention : device::RowTone::Normal};
  if (shown->attention == Attention::CommentAsked)
    cells.warnings.push_back({kComments, u"the rating asks for a comment"});
  if (shown->gapInMaterials) cells.warnings.push_back({kMaterials, u"a gap (^) is not filled"});
  if (shown->gapInComments) cells.warnings.push_back({kComments, u"a gap (^) is not filled"});
  if (shown->lacksPicture) cells.warnings.push_back({kPicture, u"a picture is missing"});
  return cells;
}

int StepList::RowOf(std::int32_t stepID) const {
  data::StepTable found(m_Databases);
  found.OpenSQL(Format(u"SELECT * FROM Step WHERE StepID = %d", stepID));
  const auto row = std::find(m_Shown.begin(), m_Shown.end(), m_List.FindRowOf(found, 0));
  return row == m_Shown.end() ? -1 : static_cast<int>(row - m_Shown.begin());
}

Text StepList::LeftCaption() {
  const std::optional<int> unrated = UnratedSteps(m_Databases, m_Document.Categories().m_CategoryID);
  return unrated ? Format(u"%d of %d steps to rate", *unrated, m_List.RecordCount())
                 : Text(u"The steps could not be read.");
}

std::vector<Text> StepList::RatingEntries(int row) {
  if (!Read(row)) return {};
  const std::vector<RatingChoice>* const choices = Choices(m_List.m_RatingType);
  return choices ? RatingDropDown(*choices).Entries() : std::vector<Text>();
}

bool StepList::ChangeRating(int row, TextView entry) {
  if (!Read(row)) {
    if (!m_List.Failed()) m_Databases.Inspection().ReportVanishedRow(m_List.TableName());
    return false;
  }
  const std::int32_t stepID = m_List.m_StepID;
  bool prompts = false;
  StepEditing editing(m_Document.GetWorkspace());
  const StepEditing::Result result = editing.Rate(stepID, RatingDropDown::ResultOf(entry), &prompts);
  if (result == StepEditing::Result::NoSuchStep)
    m_Databases.Inspection().ReportVanishedRow(m_List.TableName());
  if (result != StepEditing::Result::Done) return false;
  m_Document.LoadCategories();
  if (const std::optional<Row> step = RowAt(row); prompts && step)
    OpenSheet(*step, step->hasMaterials ? kCommentsPage : kCommentsPage - 1);
  return true;
}

bool StepList::Click(int row, int column) {
  if (column == kStep) return OpenStep(row);
  return column >= kMaterials && OpenColumn(row, column);
}

bool StepList::OpenStep(int row) {
  const std::optional<Row> step = RowAt(row);
  return step && OpenSheet(*step, std::nullopt);
}

// Columns count all four pages; the sheet counts those that it has. A step that once had materials, as its
// column says, is counted as if it had them still.
bool StepList::OpenColumn(int row, int column) {
  const std::optional<Row> step = RowAt(row);
  const int page = column - kMaterials;
  if (!step || (page == kMaterialsPage && !step->hasMaterials)) return false;
  return OpenSheet(*step, step->materials == kNone ? page - 1 : page);
}

bool StepList::OpenSheet(const Row& step, std::optional<int> tab) {
  m_Dialogs.OpenStepProperties(m_List.m_CategoryID, step.stepID, tab);
  m_Document.LoadCategories();
  Refill();
  return true;
}

bool StepList::ApplyDefaults() {
  m_Document.FinishDocTypeChange();
  inspection::UndoRecording recording(m_Document, u"Defaults", m_Document.Inspection().m_InspectionID);
  const bool applied = ApplyStepDefaults(m_Databases, m_Document.Categories().m_CategoryID);
  if (applied) recording.Done();
  m_Document.LoadCategories();
  Refill();
  return applied;
}

std::optional<std::int32_t> StepList::DuplicateStep(int row) {
  if (!Read(row)) return std::nullopt;
  StepDuplication duplication(m_Databases, m_List);
  const std::optional<Text> suggested = duplication.SuggestedName();
  if (!suggested) return std::nullopt;
  const std::optional<Text> name = m_Document.GetWorkspace().GetPrompts().AskText(
      {u"Enter the name for the new duplicated step:", u"Duplicate Step", *suggested});
  if (!name) return std::nullopt;
  inspection::UndoRecording recording(m_Document, u"Duplicate Step", m_Document.Inspection().m_InspectionID);
  const std::optional<std::int32_t> copy = duplication.Make(*name);
  if (copy) recording.Done();
  m_Document.LoadCategories();
  Refill();
  return copy;
}

}  // namespace inspector::editing
