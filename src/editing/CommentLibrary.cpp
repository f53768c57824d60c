#include "editing/CommentLibrary.h"

#include "data/CommentsTable.h"
#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

std::optional<std::vector<LibraryComment>> Read(data::Databases& databases, TextView query) {
  const data::ReadScope reading(databases.Template());
  data::CommentsTable rows(databases);
  rows.OpenSQL(query);
  if (rows.Failed()) return std::nullopt;
  std::vector<LibraryComment> comments;
  comments.reserve(static_cast<std::size_t>(rows.RecordCount()));
  for (int n = 0; n < rows.RecordCount(); ++n) {
    if (!rows.GetRecord(n)) {
      if (rows.Failed()) return std::nullopt;
      continue;
    }
    comments.push_back({rows.m_ID, rows.m_Comments, rows.m_Rating, rows.m_GroupName});
  }
  return comments;
}

}  // namespace

Text GroupHeading(TextView group) {
  return Format(u"<<%s>>", group.empty() ? TextView(u"No group") : group);
}

std::optional<std::vector<LibraryComment>> CommentsOfStep(data::Databases& databases,
                                                          std::int32_t stepTemplateID) {
  return Read(databases,
              Format(u"SELECT Comments.* FROM Comments INNER JOIN StepComment  ON Comments.ID = "
                     u"StepComment.CommentID  WHERE (((StepComment.StepID)=%d))ORDER BY GroupName, Comments;",
                     stepTemplateID));
}

std::optional<std::vector<LibraryComment>> CommentsOfMaterial(data::Databases& databases,
                                                              std::int32_t materialID) {
  return Read(databases,
              Format(u"SELECT Comments.* FROM MaterialTemplate INNER JOIN (Comments INNER JOIN "
                     u"MaterialComment ON Comments.ID = MaterialComment.CommentID) ON MaterialTemplate.ID = "
                     u"MaterialComment.MaterialID WHERE (((MaterialTemplate.ID)=%d));",
                     materialID));
}

}  // namespace inspector::editing
