// Table StepComment: which library comments a step offers; a negative step disables the link.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class StepCommentTable : public TableRecordset {
public:
  explicit StepCommentTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"StepComment"), StepCommentTable::Members(*this)) {}

  std::int32_t m_StepID = 0;
  std::int32_t m_CommentID = 0;
  Text m_LinkKey;

private:
  static std::vector<BoundMember> Members(StepCommentTable& row) {
    return {&row.m_StepID, &row.m_CommentID, &row.m_LinkKey};
  }
};

}  // namespace inspector::data
