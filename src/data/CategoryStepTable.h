// Table CategoryStep: which step templates belong to a category template.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class CategoryStepTable : public TableRecordset {
public:
  explicit CategoryStepTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"CategoryStep"), CategoryStepTable::Members(*this)) {}

  std::int32_t m_CategoryID = 0;
  std::int32_t m_StepID = 0;

private:
  static std::vector<BoundMember> Members(CategoryStepTable& row) {
    return {&row.m_CategoryID, &row.m_StepID};
  }
};

}  // namespace inspector::data
