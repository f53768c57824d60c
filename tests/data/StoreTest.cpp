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
  Shell(TemplateFile()).Run("INSERT INTO Options (DataVersion) VALUES ('5.0')");
}

void StoreTest::CreateGenerated() {
  for (const auto& file : {TemplateFile(), InspectionFile()}) {
    std::filesystem::create_directories(file.parent_path());
    Shell(file).Run("CREATE TABLE Other (A); INSERT INTO Other VALUES (1)");
  }
  OpenBoth();
  for (const TableLayout& layout : AllLayouts())
    EXPECT_TRUE(Table(layout.name, layout.database)->CreateTable());
}

void StoreTest::OpenBoth() {
  m_Databases = std::make_unique<Databases>(TemplateFile(), InspectionFile(), m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  ASSERT_TRUE(m_Databases->Template().PrepareForWriting() && m_Databases->Inspection().PrepareForWriting());
}

std::unique_ptr<TableRecordset> StoreTest::Table(TextView name, DatabaseKind kind) {
  Databases& databases = *m_Databases;
  if (name == u"UniqueID") return std::make_unique<UniqueIDTable>(databases, kind);
  if (name.ends_with(u"Inspection")) return std::make_unique<InspectionTable>(databases, name);
  if (name == u"Step" || name == u"MERGE_Step") return std::make_unique<StepTable>(databases, name);
  if (name == u"Field") return std::make_unique<FieldTable>(databases);
  if (name == u"CategoryComment") return std::make_unique<CategoryCommentTable>(databases);
  if (name == u"CategoryStep") return std::make_unique<CategoryStepTable>(databases);
  if (name == u"CategoryTemplate") return std::make_unique<CategoryTemplateTable>(databases);
  if (name == u"Comments") return std::make_unique<CommentsTable>(databases);
  if (name == u"ExpandedText") return std::make_unique<ExpandedTextTable>(databases);
  if (name == u"FieldTemplate") return std::make_unique<FieldTemplateTable>(databases);
  if (name == u"InspectionType") return std::make_unique<InspectionTypeTable>(databases);
  if (name == u"InspectionTypeCategory") return std::make_unique<InspectionTypeCategoryTable>(databases);
  if (name == u"InspectionTypeComment") return std::make_unique<InspectionTypeCommentTable>(databases);
  if (name == u"MaterialComment") return std::make_unique<MaterialCommentTable>(databases);
  if (name == u"MaterialTemplate") return std::make_unique<MaterialTemplateTable>(databases);
  if (name == u"Options") return std::make_unique<OptionsTable>(databases);
  if (name == u"Pickers") return std::make_unique<PickersTable>(databases);
  if (name == u"RatingChoices") return std::make_unique<RatingChoicesTable>(databases);
  if (name == u"RatingType") return std::make_unique<RatingTypeTable>(databases);
  if (name == u"StepComment") return std::make_unique<StepCommentTable>(databases);
  if (name == u"StepTemplate") return std::make_unique<StepTemplateTable>(databases);
  if (name == u"VoidComments") return std::make_unique<VoidCommentsTable>(databases);
  return std::make_unique<CategoryTable>(databases, name);
}

void StoreTest::Add(TextView table, std::initializer_list<std::pair<int, Cell>> cells) {
  const auto row = Table(table);
  row->PrepareNew();
  for (const auto& [ordinal, cell] : cells) {
    const auto& member = row->Columns()[static_cast<std::size_t>(ordinal)].member;
    if (const auto* number = std::get_if<int>(&cell))
      *std::get<std::int32_t*>(member) = *number;
    else
      *std::get<Text*>(member) = std::get<Text>(cell);
  }
  EXPECT_TRUE(row->Write());
}

namespace {

const ColumnDef& FirstInteger(const TableRecordset& table) {
  const auto columns = table.Columns();
  return *std::find_if(columns.begin(), columns.end(),
                       [](const ColumnDef& column) { return column.type == ValueType::Integer; });
}

}  // namespace

void StoreTest::Store(TextView table, int id, int ordinal, const std::string& value) {
  const auto row = Table(table);
  Connection& connection = row->GetConnection();
  const auto& stored = *connection.ColumnsOf(table);
  const auto name = [&](int at) { return QuotedName(stored[static_cast<std::size_t>(at)].name); };
  EXPECT_TRUE(connection.ExecuteNative("UPDATE " + QuotedName(table) + " SET " + name(ordinal) + " = " +
                                       value + " WHERE " + name(FirstInteger(*row).ordinal) + " = " +
                                       std::to_string(id)));
}

std::vector<int> StoreTest::Find(TextView table, TextView sql) {
  const auto rows = Table(table);
  EXPECT_TRUE(rows->OpenSQL(sql));
  EXPECT_FALSE(rows->Failed()) << device::ToUtf8(sql);
  std::vector<int> found;
  for (int n = 0; n < rows->RecordCount(); ++n) {
    EXPECT_TRUE(rows->GetRecord(n));
    found.push_back(*std::get<std::int32_t*>(FirstInteger(*rows).member));
  }
  return found;
}

}  // namespace inspector::tests
