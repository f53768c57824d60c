#include "inspection/DocTypeChange.h"

#include "data/CategoryTable.h"
#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/InspectionTypeTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "inspection/InspectionRows.h"

namespace inspector::inspection {
namespace {

using device::Format;

constexpr TextView kCommentsOfType =
    u"SELECT Comments.* FROM InspectionType INNER JOIN (Comments INNER JOIN InspectionTypeComment ON "
    u"Comments.ID = InspectionTypeComment.CommentID) ON InspectionType.ID = "
    u"InspectionTypeComment.InspectionTypeID WHERE (((InspectionType.id)=%d));";
constexpr TextView kCommentsOfCategory =
    u"SELECT Comments.* FROM CategoryTemplate INNER JOIN (Comments INNER JOIN CategoryComment ON Comments.ID "
    u"= CategoryComment.CommentID) ON CategoryTemplate.ID = CategoryComment.CategoryID WHERE "
    u"(((CategoryTemplate.ID)=%d));";
constexpr TextView kTemplatesOfType =
    u"SELECT CategoryTemplate.* FROM InspectionType INNER JOIN (CategoryTemplate INNER JOIN "
    u"InspectionTypeCategory ON CategoryTemplate.ID = InspectionTypeCategory.CategoryID) ON "
    u"InspectionType.ID = InspectionTypeCategory.InspectionTypeID WHERE "
    u"(((InspectionType.InspectionType)=\"%s\"));";

bool AppendDefaultComments(data::Databases& databases, Text& text, TextView query, std::int32_t owner) {
  data::CommentsTable comments(databases);
  comments.OpenSQL(Format(query, owner));
  for (int n = 0; n < comments.RecordCount(); ++n) {
    if (!comments.GetRecord(n)) return false;
    AppendDefaultComment(text, comments.m_Comments);
  }
  return !comments.Failed();
}

bool MakeCategories(data::Databases& databases, std::int32_t inspectionID, TextView type) {
  data::CategoryTemplateTable templates(databases);
  templates.OpenSQL(Format(kTemplatesOfType, type));
  data::CategoryTable category(databases);
  data::UniqueIDTable uniqueIDs(databases, data::DatabaseKind::Inspection);
  data::KeyRange keys = uniqueIDs.TakeIDs(u"InspectionCategory", templates.RecordCount());
  for (int n = 0; n < templates.RecordCount(); ++n) {
    if (!templates.GetRecord(n)) return false;
    category.PrepareNew();
    category.m_CategoryID = keys.Next();
    category.m_CategoryTitle = templates.m_Title;
    category.m_CategoryNumber = device::Decimal(templates.m_CategoryNumber);
    category.m_InspectionID = inspectionID;
    category.m_CategoryTemplateID = templates.m_ID;
    category.m_Type = templates.m_FormType;
    if (!AppendDefaultComments(databases, category.m_CommentText, kCommentsOfCategory, templates.m_ID) ||
        !category.Write())
      return false;
  }
  return !templates.Failed();
}

}  // namespace

void AppendDefaultComment(Text& text, TextView comment) {
  if (!comment.starts_with(u"[*")) return;
  const std::size_t bracket = comment.find(u']');
  if (bracket != TextView::npos) comment.remove_prefix(bracket + 1);
  if (text.ends_with(u'.')) text += u"  ";
  text += comment;
}

bool HasInspectionType(data::Databases& databases, TextView name) {
  data::InspectionTypeTable types(databases);
  types.Open();
  for (int n = 0; n < types.RecordCount(); ++n)
    if (types.GetRecord(n) && types.m_InspectionType == name) return true;
  return false;
}

bool ApplyDocType(data::Databases& databases, DocTypeState& state, TextView newType) {
  const data::ReadScope reading(databases.Template());
  data::InspectionTypeTable types(databases);
  types.Open();
  for (int n = 0; n < types.RecordCount(); ++n) {
    if (!types.GetRecord(n)) return false;
    if (types.m_InspectionType == newType) state.inspectionTypeID = types.m_ID;
  }

  if (types.Failed() ||
      !AppendDefaultComments(databases, state.generalInformation, kCommentsOfType, state.inspectionTypeID) ||
      DeleteInspectionRows(databases, state.inspectionID, nullptr) != RunResult::Done)
    return false;
  state.docType = Text(newType);
  return MakeCategories(databases, state.inspectionID, newType);
}

}  // namespace inspector::inspection
