// Table MaterialTemplate: the materials that a step offers.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

class MaterialTemplateTable : public TableRecordset {
public:
  explicit MaterialTemplateTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"MaterialTemplate"), MaterialTemplateTable::Members(*this)) {}

  std::int32_t m_ID = 0;
  std::int32_t m_StepID = 0;
  Text m_Material;
  std::int32_t m_MaterialOrder = 0;
  std::int32_t m_CommentsExist = 0;
  std::int32_t m_DefaultMaterial = 0;
  Text m_PicturePath;

private:
  static std::vector<BoundMember> Members(MaterialTemplateTable& row) {
    return {&row.m_ID,
            &row.m_StepID,
            &row.m_Material,
            &row.m_MaterialOrder,
            &row.m_CommentsExist,
            &row.m_DefaultMaterial,
            &row.m_PicturePath};
  }
};

}  // namespace inspector::data
