// Table CategoryComment: which library comments belong to a category template.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class CategoryCommentTable : public TableRecordset {
public:
  explicit CategoryCommentTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"CategoryComment"), CategoryCommentTable::Members(*this)) {}

  std::int32_t m_CategoryID = 0;
  std::int32_t m_CommentID = 0;
  Text m_LinkKey;

private:
  static std::vector<BoundMember> Members(CategoryCommentTable& row) {
    return {&row.m_CategoryID, &row.m_CommentID, &row.m_LinkKey};
  }
};

}  // namespace inspector::data
