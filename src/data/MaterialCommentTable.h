// Table MaterialComment: which library comments belong to a material.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class MaterialCommentTable : public TableRecordset {
public:
  explicit MaterialCommentTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"MaterialComment"), MaterialCommentTable::Members(*this)) {}

  std::int32_t m_MaterialID = 0;
  std::int32_t m_CommentID = 0;
  Text m_LinkKey;

private:
  static std::vector<BoundMember> Members(MaterialCommentTable& row) {
    return {&row.m_MaterialID, &row.m_CommentID, &row.m_LinkKey};
  }
};

}  // namespace inspector::data
