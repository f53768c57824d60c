// Table Field: the fields of a form category, with what was entered.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class FieldTable : public TableRecordset {
public:
  explicit FieldTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"Field"), FieldTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  std::int32_t m_CategoryID = 0;
  Text m_AssignedValue;
  std::int32_t m_SequenceNumber = 0;
  std::int32_t m_FieldType = 0;
  Text m_FieldLabel;

private:
  static std::vector<BoundMember> Members(FieldTable& row) {
    return {&row.m_ID,        &row.m_CategoryID, &row.m_AssignedValue, &row.m_SequenceNumber,
            &row.m_FieldType, &row.m_FieldLabel};
  }
};

}  // namespace inspector::data
