// Table InspectionTypeComment: which library comments belong to a type.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class InspectionTypeCommentTable : public TableRecordset {
public:
  explicit InspectionTypeCommentTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"InspectionTypeComment"),
                       InspectionTypeCommentTable::Members(*this)) {}

  std::int32_t m_InspectionTypeID = 0;
  std::int32_t m_CommentID = 0;
  Text m_LinkKey;

private:
  static std::vector<BoundMember> Members(InspectionTypeCommentTable& row) {
    return {&row.m_InspectionTypeID, &row.m_CommentID, &row.m_LinkKey};
  }
};

}  // namespace inspector::data
