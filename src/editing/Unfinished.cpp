#include "editing/Unfinished.h"

#include <algorithm>

#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/CommentText.h"
#include "editing/Completeness.h"

namespace inspector::editing {
namespace {

using device::Format;

// What sorts before a blank counts as empty.
bool IsEmpty(const Text& text) {
  return text < u" ";
}

}  // namespace

Text UnfinishedStep::Reasons() const {
  Text reasons;
  const auto add = [&reasons](bool applies, TextView reason) {
    if (!applies) return;
    if (!reasons.empty()) reasons += u", ";
    reasons += reason;
  };
  add(stepID == 0, u"not opened yet");
  add(needsRating, u"no rating");
  add(needsComment, u"the rating asks for a comment");
  add(hasGap || hasGapInMaterials, u"a gap (^) is not filled");
  add(lacksPicture, u"a picture is missing");
  if (!reasons.empty() && reasons.front() >= u'a' && reasons.front() <= u'z')
    reasons.front() = static_cast<char16_t>(reasons.front() - u'a' + u'A');
  return reasons;
}

std::optional<StepSheet::Page> UnfinishedStep::Where() const {
  if (needsRating) return std::nullopt;
  if (needsComment || hasGap) return StepSheet::Page::Comments;
  if (hasGapInMaterials) return StepSheet::Page::Materials;
  return lacksOwnPicture ? StepSheet::Page::Picture : StepSheet::Page::Comments;
}

Unfinished::Unfinished(data::Workspace& workspace, std::int32_t inspectionID)
    : m_Workspace(workspace), m_InspectionID(inspectionID), m_Offers(workspace.GetDatabases()) {}

bool Unfinished::ReadChoices() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Template());
  m_Prompting.clear();
  std::multimap<std::int32_t, Text> typeNames;
  data::RatingTypeTable types(databases);
  types.Open();
  for (int n = 0; n < types.RecordCount(); ++n)
    if (types.GetRecord(n)) typeNames.emplace(types.m_ID, types.m_RatingType);
  data::RatingChoicesTable choices(databases);
  choices.Open();
  for (int n = 0; n < choices.RecordCount(); ++n) {
    if (!choices.GetRecord(n) || !choices.m_CommentPromptFlag) continue;
    const auto [first, last] = typeNames.equal_range(choices.m_RatingTypeID);
    for (auto name = first; name != last; ++name) m_Prompting.emplace(name->second, choices.m_ChoiceName);
  }
  return !types.Failed() && !choices.Failed();
}

bool Unfinished::Refresh() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Inspection());
  m_Pictures.emplace(m_Workspace);
  m_Offers = MaterialOffers(databases);
  m_Categories.clear();
  m_StepOrder.clear();
  m_Steps.clear();
  bool complete = ReadChoices();
  data::CategoryTable categories(databases);
  categories.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             m_InspectionID));
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (!categories.GetRecord(n)) continue;
    m_Categories.push_back(categories.m_CategoryID);
    complete = AddCategory(categories) && complete;
  }
  return complete && !categories.Failed() && !m_Offers.Failed();
}

bool Unfinished::AddCategory(const data::CategoryTable& category) {
  std::vector<std::int32_t>& order = m_StepOrder[category.m_CategoryID];
  if (category.m_NotPresentFlag || category.m_Type == kFormCategory) return true;
  data::StepTable steps(m_Workspace.GetDatabases());
  steps.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", steps.TableName(),
                       category.m_CategoryID));
  if (steps.Failed()) return false;
  UnfinishedStep step;
  step.categoryID = category.m_CategoryID;
  step.categoryTitle = category.m_CategoryTitle;
  if (steps.RecordCount() == 0 && !category.m_CompleteFlag) m_Steps.push_back(step);
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) continue;
    order.push_back(steps.m_StepID);
    step.needsRating = IsEmpty(steps.m_InspectResult);
    step.needsComment = !step.needsRating && NeedsComment(steps);
    step.hasGap = HasGap(steps);
    step.hasGapInMaterials = MayFillMaterials(steps);
    step.lacksOwnPicture = m_Pictures->IsLackedOn(steps);
    step.lacksPicture = m_Pictures->IsLackedBy(steps);
    if (!step.IsAny()) continue;
    step.stepID = steps.m_StepID;
    step.stepNumber = steps.m_StepNumber;
    step.title = steps.m_StepTitle;
    m_Steps.push_back(step);
  }
  return !steps.Failed();
}

std::optional<std::map<std::int32_t, Unfinished::Left>> Unfinished::CountByCategory() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Inspection());
  m_Pictures.emplace(m_Workspace);
  m_Offers = MaterialOffers(databases);
  bool complete = ReadChoices();
  std::map<std::int32_t, Left> left;
  data::CategoryTable categories(databases);
  categories.OpenSQL(Format(u"SELECT * FROM Category WHERE InspectionID = %d", m_InspectionID));
  for (int n = 0; n < categories.RecordCount(); ++n)
    if (categories.GetRecord(n) && !categories.m_NotPresentFlag && categories.m_Type != kFormCategory)
      complete = CountIn(categories, left[categories.m_CategoryID]) && complete;
  return complete && !categories.Failed() && !m_Offers.Failed() ? std::optional(std::move(left))
                                                                : std::nullopt;
}

// A step without a rating counts whatever else it wants. Of those with one only few have to be read: no words
// means nothing, or a text that begins below "!"; a picture has a path of its own or a tag; a gap has carets.
bool Unfinished::CountIn(const data::CategoryTable& category, Left& left) {
  data::Databases& databases = m_Workspace.GetDatabases();
  const std::optional<int> unrated = UnratedSteps(databases, category.m_CategoryID);
  if (!unrated) return false;
  left.steps = *unrated;
  data::StepTable rated(databases);
  if (*unrated == 0 && !category.m_CompleteFlag) {
    rated.OpenSQL(
        Format(u"SELECT * FROM %s WHERE CategoryID = %d", rated.TableName(), category.m_CategoryID));
    if (rated.Failed()) return false;
    left.unopened = rated.RecordCount() == 0;
  }
  rated.OpenSQL(Format(
      u"SELECT * FROM %s WHERE (CategoryID = %d) AND (InspectResult >= \" \") AND ((Comments < \"!\") OR "
      u"(BitmapPath > \"\") OR (Comments LIKE \"%%***%%\") OR (SummaryComment LIKE \"%%***%%\") OR "
      u"(Comments LIKE \"%%^%%^%%\") OR (SummaryComment LIKE \"%%^%%^%%\") OR (Materials LIKE \"%%^%%^%%\"))",
      rated.TableName(), category.m_CategoryID));
  for (int row = 0; row < rated.RecordCount(); ++row)
    if (rated.GetRecord(row) &&
        (NeedsComment(rated) || HasGap(rated) || MayFillMaterials(rated) || m_Pictures->IsLackedBy(rated)))
      ++left.steps;
  return !rated.Failed();
}

bool Unfinished::HasGap(const data::StepTable& step) {
  return HasGapInComment(step.m_Comments) || HasGapInComment(step.m_SummaryComment);
}

// What stands among the materials of a step that offers none cannot be changed any more.
bool Unfinished::MayFillMaterials(const data::StepTable& step) {
  return HasGapInMaterials(step.m_Materials) && m_Offers.HasAny(step.m_StepTemplateID);
}

bool Unfinished::NeedsComment(const data::StepTable& step) const {
  return !HasWords(step.m_Comments) && m_Prompting.contains({step.m_RatingType, step.m_InspectResult});
}

std::optional<UnfinishedStep> Unfinished::NextAfter(const PlaceInVisit& place) const {
  if (m_Steps.empty()) return std::nullopt;
  const auto placeOf = [this](std::int32_t categoryID, std::int32_t stepID) {
    const auto category = std::find(m_Categories.begin(), m_Categories.end(), categoryID);
    std::ptrdiff_t row = -1;
    const auto order = m_StepOrder.find(categoryID);
    if (stepID != 0 && order != m_StepOrder.end())
      row = std::find(order->second.begin(), order->second.end(), stepID) - order->second.begin();
    return std::pair(category - m_Categories.begin(), row);
  };
  const auto here = placeOf(place.categoryID, place.stepID);
  for (const UnfinishedStep& step : m_Steps)
    if (placeOf(step.categoryID, step.stepID) > here) return step;
  return m_Steps.front();
}

}  // namespace inspector::editing
