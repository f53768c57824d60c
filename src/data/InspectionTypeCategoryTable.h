// Table InspectionTypeCategory: which category templates belong to a type.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class InspectionTypeCategoryTable : public TableRecordset {
public:
  explicit InspectionTypeCategoryTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"InspectionTypeCategory"),
                       InspectionTypeCategoryTable::Members(*this)) {}

  std::int32_t m_InspectionTypeID = 0;
  std::int32_t m_CategoryID = 0;

private:
  static std::vector<BoundMember> Members(InspectionTypeCategoryTable& row) {
    return {&row.m_InspectionTypeID, &row.m_CategoryID};
  }
};

}  // namespace inspector::data
