// Table VoidComments: pairs of material and comment.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class VoidCommentsTable : public TableRecordset {
public:
  explicit VoidCommentsTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"VoidComments"), VoidCommentsTable::Members(*this)) {}

  std::int32_t m_MaterialID = 0;
  std::int32_t m_CommentID = 0;

private:
  static std::vector<BoundMember> Members(VoidCommentsTable& row) {
    return {&row.m_MaterialID, &row.m_CommentID};
  }
};

}  // namespace inspector::data
