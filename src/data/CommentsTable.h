// Table Comments: the comment library.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class CommentsTable : public TableRecordset {
public:
  explicit CommentsTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"Comments"), CommentsTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  std::int32_t m_OwnerID = 0;
  Text m_Comments;
  Text m_Rating;
  Text m_GroupName;
  Text m_PicturePath;
  std::int32_t m_VoidFlag = 0;

private:
  static std::vector<BoundMember> Members(CommentsTable& row) {
    return {&row.m_ID,        &row.m_OwnerID,     &row.m_Comments, &row.m_Rating,
            &row.m_GroupName, &row.m_PicturePath, &row.m_VoidFlag};
  }
};

}  // namespace inspector::data
