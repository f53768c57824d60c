// Table RatingChoices: the choices of a rating type.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class RatingChoicesTable : public TableRecordset {
public:
  explicit RatingChoicesTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"RatingChoices"), RatingChoicesTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  std::int32_t m_RatingTypeID = 0;
  Text m_ChoiceName;
  std::int32_t m_DefaultFlag = 0;
  std::int32_t m_BoldFlag = 0;
  std::int32_t m_CommentPromptFlag = 0;
  std::int32_t m_SummaryFlag = 0;
  std::int32_t m_ReserveFlag = 0;
  std::int32_t m_RedFlag = 0;

private:
  static std::vector<BoundMember> Members(RatingChoicesTable& row) {
    return {&row.m_ID,          &row.m_RatingTypeID, &row.m_ChoiceName,
            &row.m_DefaultFlag, &row.m_BoldFlag,     &row.m_CommentPromptFlag,
            &row.m_SummaryFlag, &row.m_ReserveFlag,  &row.m_RedFlag};
  }
};

}  // namespace inspector::data
