#include "editing/CommentPicklist.h"

#include <algorithm>

#include "data/CommentsTable.h"
#include "data/StepCommentTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr std::size_t kShortestComment = 2;

// What a link leads to.
struct Linked {
  int row;
  int comments;  // one, unless the library is damaged
  Text text;
};

}  // namespace

const std::vector<LibraryComment>& CommentPicklist::Comments() {
  if (!m_Comments) m_Comments = CommentsOfStep(m_Workspace.GetDatabases(), m_StepTemplateID);
  return m_Comments ? *m_Comments : m_None;
}

CommentPicklist::Result CommentPicklist::Add(TextView comment, const TextSelection& selection,
                                             TextView rating) {
  if (!device::ConfirmCaution(m_Workspace.GetPrompts(),
                              u"Are you sure you want to add this comment to your picklist?"))
    return Result::Refused;
  const std::size_t begin = std::min({selection.begin, selection.end, comment.size()});
  const std::size_t end = std::min(std::max(selection.begin, selection.end), comment.size());
  const Text text = device::StripLeadingControls(begin == end ? comment : comment.substr(begin, end - begin));
  const auto isThere = [&](const LibraryComment& each) { return each.text == text; };
  if (text.size() < kShortestComment || std::any_of(Comments().begin(), Comments().end(), isThere))
    return Result::Nothing;
  if (!m_Comments) return Result::Failed;  // whether it is there already is not known
  std::int32_t commentID = 0;
  if (!Write(text, rating, commentID)) return Result::Failed;
  m_Comments->push_back({commentID, text, Text(rating), {}});
  return Result::Done;
}

bool CommentPicklist::Write(TextView text, TextView rating, std::int32_t& commentID) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen()) return false;
  commentID = data::UniqueIDTable(databases, data::DatabaseKind::Template).NextID(u"Comments");
  data::CommentsTable comment(databases);
  comment.PrepareNew();
  comment.m_ID = commentID;
  comment.m_Comments = Text(text);
  comment.m_Rating = Text(rating);
  data::StepCommentTable link(databases);
  link.PrepareNew();
  link.m_StepID = m_StepTemplateID;
  link.m_CommentID = commentID;
  link.m_LinkKey = Format(u"%d-%d", m_StepTemplateID, commentID);
  return comment.Write() && link.Write() && transaction.Commit();
}

CommentPicklist::Result CommentPicklist::Delete(const std::vector<Text>& texts) {
  if (texts.empty()) return Result::Nothing;
  if (!device::ConfirmCaution(m_Workspace.GetPrompts(), u"Please confirm the deleting of these comments."))
    return Result::Refused;
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen()) return Result::Failed;
  data::StepCommentTable link(databases);
  link.OpenSQL(Format(u"SELECT * FROM StepComment WHERE StepID = %d", m_StepTemplateID));
  if (link.Failed()) return Result::Failed;
  std::vector<Linked> linked;
  data::CommentsTable comment(databases);
  for (int n = 0; n < link.RecordCount(); ++n) {
    if (!link.GetRecord(n)) return Result::Failed;
    comment.OpenSQL(Format(u"SELECT * FROM Comments WHERE ID = %d", link.m_CommentID));
    if (comment.Failed()) return Result::Failed;
    if (comment.GetRecord(0)) linked.push_back({n, comment.RecordCount(), comment.m_Comments});
  }

  int ambiguous = 0;
  for (const Text& text : texts) {
    for (const Linked& each : linked) {
      if (each.comments > 1) ++ambiguous;
      if (each.comments > 1 || each.text != text) continue;
      if (!link.GetRecord(each.row)) return Result::Failed;
      link.m_StepID = -m_StepTemplateID;
      link.m_LinkKey = Format(u"%d-%d", link.m_StepID, link.m_CommentID);
      if (!link.Write()) return Result::Failed;
    }
  }
  if (!transaction.Commit()) return Result::Failed;
  m_Comments.reset();
  // Not before the end, so that no box stands open while others wait for the database.
  for (int n = 0; n < ambiguous; ++n)
    device::Alert(m_Workspace.GetPrompts(), u"[ERROR CODE => 999] CCommentsPage::OnCommentPicker.");
  return Result::Done;
}

}  // namespace inspector::editing
