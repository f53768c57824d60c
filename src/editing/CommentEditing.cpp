#include "editing/CommentEditing.h"

#include <algorithm>

#include "editing/CommentPicker.h"
#include "editing/PictureTags.h"
#include "editing/Placeholders.h"
#include "editing/StepEditing.h"

namespace inspector::editing {

void CommentEditing::ShowStep() {
  m_Selection = {};
  if (!m_Picklist || m_Picklist->StepTemplateID() != m_Sheet.StepTemplateID())
    m_Picklist.emplace(m_Sheet.GetWorkspace(), m_Sheet.StepTemplateID());
}

TextChange CommentEditing::Apply(TextChange change) {
  Text comments = m_Sheet.Draft().comments;
  change.ApplyTo(comments);
  m_Sheet.SetComments(std::move(comments));
  return change;
}

std::optional<TextChange> CommentEditing::Insert(TextView comment) {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const std::optional<Text> filled = FillPlaceholders(workspace.GetDatabases(), m_Dialogs, comment);
  if (!filled) return std::nullopt;
  const TextChange change = Apply(InsertComment(m_Sheet.Draft().comments, m_Selection, *filled,
                                                StepEditing(workspace).CommentSeparator()));
  m_Selection.begin = m_Selection.end = change.CaretAfter();  // for the next one
  return change;
}

std::optional<TextChange> CommentEditing::ExpandWord(TextView line, std::size_t wordEnd) {
  data::Databases& databases = m_Sheet.GetWorkspace().GetDatabases();
  if (!m_Shortcuts) m_Shortcuts.emplace(databases);
  std::optional<TextChange> change = m_Shortcuts->Expand(line, wordEnd);
  if (!change) return std::nullopt;
  std::optional<Text> filled = FillPlaceholders(databases, m_Dialogs, change->replacement);
  if (!filled) return std::nullopt;
  change->replacement = std::move(*filled);
  return change;
}

std::vector<TextChange> CommentEditing::InsertAll(const std::vector<Text>& comments) {
  std::vector<TextChange> changes;
  for (const Text& comment : comments)
    if (std::optional<TextChange> change = Insert(comment)) changes.push_back(std::move(*change));
  return changes;
}

std::vector<TextChange> CommentEditing::OpenPicker() {
  CommentPicker picker(m_Picklist->Comments(), true);
  if (!m_Dialogs.PickComments(picker)) return {};
  m_Picklist->Delete(picker.Deleted());
  return InsertAll(picker.Chosen());
}

std::vector<TextChange> CommentEditing::OfferMaterialComments(std::int32_t materialID) {
  std::optional<std::vector<LibraryComment>> comments =
      CommentsOfMaterial(m_Sheet.GetWorkspace().GetDatabases(), materialID);
  if (!comments || comments->empty()) return {};
  // In the library's order, but a group's comments together.
  std::stable_sort(comments->begin(), comments->end(),
                   [](const LibraryComment& a, const LibraryComment& b) { return a.group < b.group; });
  CommentPicker picker(std::move(*comments), false);
  if (!m_Dialogs.PickComments(picker)) return {};
  return InsertAll(picker.Chosen());
}

CommentPicklist::Result CommentEditing::AddToPicklist() {
  const StepDraft& draft = m_Sheet.Draft();
  return m_Picklist->Add(draft.comments, m_Selection, draft.result);
}

std::optional<TextChange> CommentEditing::AddCameraPicture() {
  const std::optional<Text> tag = TakeCameraTag(m_Sheet.GetWorkspace());
  if (!tag) return std::nullopt;
  return Apply(AppendTag(m_Sheet.Draft().comments, *tag));
}

TextChange CommentEditing::AddKnownPicture(TextView devicePath) {
  const Text& comments = m_Sheet.Draft().comments;
  const Text tag = KnownPictureTag(devicePath);
  const Text bare = tag.substr(1);  // without the blank before it
  const std::vector<Text> tags = DistinctTags(comments + tag);
  // Asterisks that somebody typed and did not close would swallow it at the end.
  const bool isRead = std::find(tags.begin(), tags.end(), bare) != tags.end();
  if (isRead) return Apply(AppendTag(comments, tag));
  const TextChange change = Apply(TextChange{0, 0, bare + u" "});
  m_Selection.begin += change.replacement.size();
  m_Selection.end += change.replacement.size();
  return change;
}

}  // namespace inspector::editing
