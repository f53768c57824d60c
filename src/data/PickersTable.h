// Table Pickers: named lists of choices.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class PickersTable : public TableRecordset {
public:
  explicit PickersTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"Pickers"), PickersTable::Members(*this)) {}

  Text m_PickerName;
  Text m_PickerChoice;
  std::int32_t m_ID = 0;

private:
  static std::vector<BoundMember> Members(PickersTable& row) {
    return {&row.m_PickerName, &row.m_PickerChoice, &row.m_ID};
  }
};

}  // namespace inspector::data
