// Table Category: one row per category of an inspection.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

// InspectionCategory and MERGE_Category have the same columns.
class CategoryTable : public TableRecordset {
public:
  explicit CategoryTable(Databases& databases, TextView tableName = u"Category")
      : TableRecordset(databases, *FindLayout(tableName), tableName, CategoryTable::Members(*this)) {}

  std::int32_t m_CategoryID = 0;
  Text m_CategoryTitle;
  Text m_CategoryNumber;
  Text m_Remarks;
  Text m_CommentText;
  std::int32_t m_CompleteFlag = 0;
  std::int32_t m_NotPresentFlag = 0;
  std::int32_t m_InspectionID = 0;
  std::int32_t m_CategoryTemplateID = 0;
  std::int32_t m_Type = 0;

private:
  static std::vector<BoundMember> Members(CategoryTable& row) {
    return {&row.m_CategoryID,         &row.m_CategoryTitle, &row.m_CategoryNumber, &row.m_Remarks,
            &row.m_CommentText,        &row.m_CompleteFlag,  &row.m_NotPresentFlag, &row.m_InspectionID,
            &row.m_CategoryTemplateID, &row.m_Type};
  }
};

}  // namespace inspector::data
