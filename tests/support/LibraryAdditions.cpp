#include "support/LibraryAdditions.h"

#include <gtest/gtest.h>

#include "data/CommentsTable.h"
#include "data/ExpandedTextTable.h"
#include "data/MaterialTemplateTable.h"
#include "data/PickersTable.h"
#include "data/StepCommentTable.h"
#include "device/Format.h"

namespace inspector::tests {
namespace {

// The tables' rows have no gaps in a test, so that the next key is their number plus one.
template <typename Table, typename Fill>
std::int32_t Add(data::Databases& databases, Fill fill) {
  Table row(databases);
  row.Open();
  const std::int32_t key = row.RecordCount() + 1;
  row.PrepareNew();
  fill(row, key);
  EXPECT_TRUE(row.Write());
  return key;
}

}  // namespace

std::int32_t LibraryAdditions::AddMaterial(std::int32_t step, const Text& material, bool isDefault) {
  return Add<data::MaterialTemplateTable>(m_Databases, [&](auto& row, std::int32_t key) {
    row.m_ID = key;
    row.m_StepID = step;
    row.m_Material = material;
    row.m_MaterialOrder = key;
    row.m_DefaultMaterial = isDefault ? -1 : 0;
  });
}

std::int32_t LibraryAdditions::AddCommentToStep(std::int32_t step, const Text& comment, const Text& group) {
  const std::int32_t id = Add<data::CommentsTable>(m_Databases, [&](auto& row, std::int32_t key) {
    row.m_ID = key;
    row.m_Comments = comment;
    row.m_GroupName = group;
  });
  Add<data::StepCommentTable>(m_Databases, [&](auto& row, std::int32_t) {
    row.m_StepID = step;
    row.m_CommentID = id;
    row.m_LinkKey = device::Format(u"%d-%d", step, id);
  });
  return id;
}

void LibraryAdditions::AddPicker(const Text& list, const Text& choice) {
  Add<data::PickersTable>(m_Databases, [&](auto& row, std::int32_t key) {
    row.m_ID = key;
    row.m_PickerName = list;
    row.m_PickerChoice = choice;
  });
}

void LibraryAdditions::AddShortcut(const Text& shortCut, const Text& expanded) {
  Add<data::ExpandedTextTable>(m_Databases, [&](auto& row, std::int32_t key) {
    row.m_ID = key;
    row.m_ShortCut = shortCut;
    row.m_Expanded = expanded;
  });
}

}  // namespace inspector::tests
