// Table ExpandedText: shortcuts and what they stand for.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class ExpandedTextTable : public TableRecordset {
public:
  explicit ExpandedTextTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"ExpandedText"), ExpandedTextTable::Members(*this)) {}

  Text m_ShortCut;
  Text m_Expanded;
  std::int32_t m_ID = 0;

private:
  static std::vector<BoundMember> Members(ExpandedTextTable& row) {
    return {&row.m_ShortCut, &row.m_Expanded, &row.m_ID};
  }
};

}  // namespace inspector::data
