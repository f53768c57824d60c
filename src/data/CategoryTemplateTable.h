// Table CategoryTemplate: what a category is made from.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class CategoryTemplateTable : public TableRecordset {
public:
  explicit CategoryTemplateTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"CategoryTemplate"), CategoryTemplateTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  Text m_Title;
  std::int32_t m_CategoryNumber = 0;
  Text m_Description;
  Text m_DefComments;
  std::int32_t m_FormType = 0;
  std::int32_t m_ExcludeFromApplyDefault = 0;

private:
  static std::vector<BoundMember> Members(CategoryTemplateTable& row) {
    return {&row.m_ID,          &row.m_Title,    &row.m_CategoryNumber,         &row.m_Description,
            &row.m_DefComments, &row.m_FormType, &row.m_ExcludeFromApplyDefault};
  }
};

}  // namespace inspector::data
