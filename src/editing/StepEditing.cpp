#include "editing/StepEditing.h"

#include <algorithm>

#include "device/Format.h"
#include "editing/CommentText.h"
#include "editing/Completeness.h"
#include "editing/Materials.h"
#include "editing/Placeholders.h"
#include "editing/RatingDropDown.h"
#include "editing/Ratings.h"

namespace inspector::editing {
namespace {

constexpr TextView kFreeMarkers[] = {u"Other:", u"other:"};

}  // namespace

bool StepEditing::Find(data::StepTable& step, std::int32_t stepID) {
  step.OpenSQL(device::Format(u"SELECT * FROM Step WHERE StepID = %d", stepID));
  return step.RecordCount() > 0 && step.GetRecord(0);
}

StepEditing::Result StepEditing::WriteStep(data::StepTable& step, data::Transaction& transaction) {
  const bool written = step.Write() && RecomputeComplete(m_Workspace.GetDatabases(), step.m_CategoryID);
  return written && transaction.Commit() ? Result::Done : Result::Failed;
}

StepEditing::Result StepEditing::Rate(std::int32_t stepID, TextView rating, bool* promptsForComment) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return Result::Failed;
  data::StepTable step(databases);
  if (!Find(step, stepID)) return step.Failed() ? Result::Failed : Result::NoSuchStep;
  bool prompts = false;
  if (!rating.empty()) {
    bool failed = false;
    const std::optional<RatingChoice> choice = FindChoice(databases, step.m_RatingType, rating, &failed);
    if (failed) return Result::Failed;
    const bool isOnlyEntry = !choice && RatingDropDown(databases, step.m_RatingType).EntryOf(rating);
    if (!choice && !isOnlyEntry) return Result::NotOffered;
    prompts = choice && choice->promptsForComment;
  }
  step.m_InspectResult = Text(rating);
  const Result result = WriteStep(step, transaction);
  if (promptsForComment) *promptsForComment = prompts && result == Result::Done;
  return result;
}

Text StepEditing::CommentSeparator() {
  return m_Workspace.Options().m_BlankLineBetweenComments ? u"\r\n\r\n" : u"  ";
}

StepEditing::Result StepEditing::AppendComment(std::int32_t stepID, TextView comment) {
  data::Databases& databases = m_Workspace.GetDatabases();
  const Text separator = CommentSeparator();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return Result::Failed;
  data::StepTable step(databases);
  if (!Find(step, stepID)) return step.Failed() ? Result::Failed : Result::NoSuchStep;
  const Text entered = device::StripLeadingControls(comment);
  if (entered.empty()) return Result::Done;
  const std::size_t end = step.m_Comments.size();
  InsertComment(step.m_Comments, {end, end}, entered, separator).ApplyTo(step.m_Comments);
  return WriteStep(step, transaction);
}

StepEditing::Result StepEditing::AddMaterial(std::int32_t stepID, TextView material, MaterialNote* note) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return Result::Failed;
  data::StepTable step(databases);
  if (!Find(step, stepID)) return step.Failed() ? Result::Failed : Result::NoSuchStep;

  MaterialBoxes boxes(databases, step.m_StepTemplateID, step.m_Materials);
  if (boxes.Failed()) return Result::Failed;
  const Text lost = MaterialsLost(step.m_Materials, boxes.Stored());
  const auto find = [&](auto&& matches) -> std::optional<std::size_t> {
    const auto found = std::find_if(boxes.Boxes().begin(), boxes.Boxes().end(), matches);
    if (found == boxes.Boxes().end()) return std::nullopt;
    return static_cast<std::size_t>(found - boxes.Boxes().begin());
  };
  Text entered = device::StripLeadingControls(material);
  if (!HasWords(entered) || HasUnfilledGap(entered)) return Result::NotOffered;
  std::optional<std::size_t> box = find([&](const MaterialBox& each) {
    return !each.IsFree() && each.caption == entered && !FindPlaceholder(each.caption);
  });
  const auto isFilled = [&](const MaterialBox& each) {
    return FindPlaceholder(each.offered) && IsFilledFrom(entered, each.offered, true);
  };
  const bool isFree = std::any_of(std::begin(kFreeMarkers), std::end(kFreeMarkers),
                                  [&](TextView marker) { return entered.starts_with(marker); });
  if (box) {
    boxes.Tick(*box, true);
  } else if (entered.find(u';') != Text::npos) {
    return Result::NotOffered;
  } else if (!isFree && (box = find(isFilled))) {
    boxes.TickFilled(*box, entered);
  } else {
    for (const TextView marker : kFreeMarkers) {
      if (!entered.starts_with(marker)) continue;
      entered.erase(0, marker.size());
      break;
    }
    box = find([](const MaterialBox& each) { return each.IsFree(); });
    if (!box || !HasWords(entered)) return Result::NotOffered;
    boxes.TickFree(*box, entered);
  }
  step.m_Materials = boxes.Stored();
  const Result result = WriteStep(step, transaction);
  if (note && result == Result::Done) *note = {boxes.Boxes()[*box].hasComments, lost};
  return result;
}

}  // namespace inspector::editing
