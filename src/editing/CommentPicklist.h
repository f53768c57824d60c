// The prepared comments of one step, and what a person adds to them and takes out.
#pragma once

#include "data/Workspace.h"
#include "editing/CommentLibrary.h"
#include "editing/CommentText.h"

namespace inspector::editing {

class CommentPicklist {
public:
  CommentPicklist(data::Workspace& workspace, std::int32_t stepTemplateID)
      : m_Workspace(workspace), m_StepTemplateID(stepTemplateID) {}

  std::int32_t StepTemplateID() const { return m_StepTemplateID; }
  // Read at the first call, because most steps are passed without looking at them. Ordered by group; what was
  // added since stands at the end. Empty when they could not be read, which the next call tries again.
  const std::vector<LibraryComment>& Comments();

  enum class Result { Done, Refused, Nothing, Failed };
  // Asks, then adds the selected part of the comment, or the whole. Nothing is added when that has fewer than
  // two characters or is offered already.
  Result Add(TextView comment, const TextSelection& selection, TextView rating);
  // Asks, then disables the step's link to each comment with one of these texts: the step's key in it becomes
  // negative. The comment itself stays in the library.
  Result Delete(const std::vector<Text>& texts);

private:
  bool Write(TextView text, TextView rating, std::int32_t& commentID);

  data::Workspace& m_Workspace;
  std::int32_t m_StepTemplateID;
  std::optional<std::vector<LibraryComment>> m_Comments;
  const std::vector<LibraryComment> m_None;
};

}  // namespace inspector::editing
