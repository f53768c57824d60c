// Table Step: one row per step of a category.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

// MERGE_Step has the same columns.
class StepTable : public TableRecordset {
public:
  explicit StepTable(Databases& databases, TextView tableName = u"Step")
      : TableRecordset(databases, *FindLayout(tableName), tableName, StepTable::Members(*this)) {}

  std::int32_t m_StepID = 0;
  Text m_StepNumber;
  Text m_StepTitle;
  std::int32_t m_CategoryID = 0;
  Text m_InspectResult;
  Text m_Comments;
  Text m_Materials;
  Text m_RatingType;
  Text m_Reserve8;
  Text m_MaterialNote;
  std::int32_t m_StepTemplateID = 0;
  std::int32_t m_Reserve11 = 0;
  Text m_MajorSystem;
  std::int32_t m_StepInfoExists = 0;
  Text m_SummaryComment;
  Text m_BitmapPath;
  std::int32_t m_PictureBefore = 0;

private:
  static std::vector<BoundMember> Members(StepTable& row) {
    return {&row.m_StepID,        &row.m_StepNumber,     &row.m_StepTitle,      &row.m_CategoryID,
            &row.m_InspectResult, &row.m_Comments,       &row.m_Materials,      &row.m_RatingType,
            &row.m_Reserve8,      &row.m_MaterialNote,   &row.m_StepTemplateID, &row.m_Reserve11,
            &row.m_MajorSystem,   &row.m_StepInfoExists, &row.m_SummaryComment, &row.m_BitmapPath,
            &row.m_PictureBefore};
  }
};

}  // namespace inspector::data
