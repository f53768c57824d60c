// Table InspectionType: what kinds of inspection there are.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class InspectionTypeTable : public TableRecordset {
public:
  explicit InspectionTypeTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"InspectionType"), InspectionTypeTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  Text m_InspectionType;
  Text m_Description;
  Text m_Reserve3;
  Text m_Reserve4;
  Text m_Layout;
  std::int32_t m_Reserve6 = 0;
  std::int32_t m_Reserve7 = 0;

private:
  static std::vector<BoundMember> Members(InspectionTypeTable& row) {
    return {&row.m_ID,       &row.m_InspectionType, &row.m_Description, &row.m_Reserve3,
            &row.m_Reserve4, &row.m_Layout,         &row.m_Reserve6,    &row.m_Reserve7};
  }
};

}  // namespace inspector::data
