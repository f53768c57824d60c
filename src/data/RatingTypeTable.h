// Table RatingType: the scales that steps are rated on.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class RatingTypeTable : public TableRecordset {
public:
  explicit RatingTypeTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"RatingType"), RatingTypeTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  Text m_RatingType;
  Text m_Description;

private:
  static std::vector<BoundMember> Members(RatingTypeTable& row) {
    return {&row.m_ID, &row.m_RatingType, &row.m_Description};
  }
};

}  // namespace inspector::data
