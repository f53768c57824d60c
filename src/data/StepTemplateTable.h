// Table StepTemplate: what a step is made from.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class StepTemplateTable : public TableRecordset {
public:
  explicit StepTemplateTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"StepTemplate"), StepTemplateTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  Text m_Title;
  Text m_StepNumber;
  std::int32_t m_RatingTypeID = 0;
  Text m_StepInfo;
  Text m_Keyword;

private:
  static std::vector<BoundMember> Members(StepTemplateTable& row) {
    return {&row.m_ID, &row.m_Title, &row.m_StepNumber, &row.m_RatingTypeID, &row.m_StepInfo, &row.m_Keyword};
  }
};

}  // namespace inspector::data
