// Table FieldTemplate: what the fields of a form category are made from.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class FieldTemplateTable : public TableRecordset {
public:
  explicit FieldTemplateTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"FieldTemplate"), FieldTemplateTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  Text m_Label;
  std::int32_t m_Type = 0;
  std::int32_t m_Sequence = 0;
  std::int32_t m_CategoryID = 0;

private:
  static std::vector<BoundMember> Members(FieldTemplateTable& row) {
    return {&row.m_ID, &row.m_Label, &row.m_Type, &row.m_Sequence, &row.m_CategoryID};
  }
};

}  // namespace inspector::data
