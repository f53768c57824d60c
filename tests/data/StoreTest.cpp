#include "StoreTest.h"

#include "data/CategoryCommentTable.h"
#include "data/CategoryStepTable.h"
#include "data/CategoryTable.h"
#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/ExpandedTextTable.h"
#include "data/FieldTable.h"
#include "data/FieldTemplateTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTable.h"
#include "data/InspectionTypeCategoryTable.h"
#include "data/InspectionTypeCommentTable.h"
#include "data/InspectionTypeTable.h"
#include "data/MaterialCommentTable.h"
#include "data/MaterialTemplateTable.h"
#include "data/PickersTable.h"
#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"
#include "data/StepCommentTable.h"
#include "data/StepTable.h"
#include "data/StepTemplateTable.h"
#include "data/UniqueIDTable.h"
#include "data/VoidCommentsTable.h"

namespace inspector::tests {

using namespace data;  // every table class

void StoreTest::CreateFresh() {
  ASSERT_EQ(CreateFreshDatabase(TemplateFile(), DatabaseKind::Template, m_Faults), u"");
  ASSERT_EQ(CreateFreshDatabase(InspectionFile(), DatabaseKind::Inspection, m_Faults), u"");
  InLibrary("INSERT INTO Options (DataVersion) VALUES ('5.0')");
}

void StoreTest::CreateGenerated() {
  for (const auto& file : {TemplateFile(), InspectionFile()}) {
    std::filesystem::create_directories(file.parent_path());
    Shell(file).Run("CREATE TABLE Other (A); INSERT INTO Other VALUES (1)");
  }
  OpenBoth();
  for (const TableLayout& each : AllLayouts()) EXPECT_TRUE(Table(each.name, each.database)->CreateTable());
}

void StoreTest::OpenBoth() {
  m_Databases = std::make_unique<Databases>(TemplateFile(), InspectionFile(), m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  ASSERT_TRUE(m_Databases->Template().PrepareForWriting() && m_Databases->Inspection().PrepareForWriting());
}

// Of these classes the one of the table of that name.
template <typename... Tables>
static std::unique_ptr<TableRecordset> OneOf(Databases& databases, TextView name) {
  std::unique_ptr<TableRecordset> found;
  ((found = std::make_unique<Tables>(databases), found->TableName() == name) || ...);
  return found;
}

std::unique_ptr<TableRecordset> StoreTest::Table(TextView name, DatabaseKind kind) {
  Databases& databases = *m_Databases;
  if (name == u"UniqueID") return std::make_unique<UniqueIDTable>(databases, kind);
  if (name.ends_with(u"Inspection")) return std::make_unique<InspectionTable>(databases, name);
  if (name.ends_with(u"Category") && FindLayout(name)->columns.size() > 2)
    return std::make_unique<CategoryTable>(databases, name);
  if (name == u"MERGE_Step") return std::make_unique<StepTable>(databases, name);
  return OneOf<StepTable, FieldTable, CategoryCommentTable, CategoryStepTable, CategoryTemplateTable,
               CommentsTable, ExpandedTextTable, FieldTemplateTable, InspectionTypeTable,
               InspectionTypeCategoryTable, InspectionTypeCommentTable, MaterialCommentTable,
               MaterialTemplateTable, OptionsTable, PickersTable, RatingChoicesTable, RatingTypeTable,
               StepCommentTable, StepTemplateTable, VoidCommentsTable>(databases, name);
}

}  // namespace inspector::tests
