#include "support/VisitFixture.h"

#include "data/CategoryCommentTable.h"
#include "data/CategoryStepTable.h"
#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/ExpandedTextTable.h"
#include "data/FieldTable.h"
#include "data/FieldTemplateTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTypeCategoryTable.h"
#include "data/InspectionTypeCommentTable.h"
#include "data/InspectionTypeTable.h"
#include "data/MaterialCommentTable.h"
#include "data/MaterialTemplateTable.h"
#include "data/PickersTable.h"
#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"
#include "data/StartUp.h"
#include "data/StepCommentTable.h"
#include "data/StepTemplateTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"

namespace inspector::tests {
namespace {

using device::Format;

// Adds a row whose members `fill` sets.
template <typename Table, typename Fill>
void Add(data::Databases& databases, Fill fill) {
  Table row(databases);
  row.PrepareNew();
  fill(row);
  EXPECT_TRUE(row.Write());
}

int YesNo(bool value) {
  return value ? -1 : 0;
}

}  // namespace

std::int32_t TemplateLibrary::AddRatingType(const Text& name, const std::vector<Choice>& choices) {
  const std::int32_t id = ++m_RatingTypes;
  Add<data::RatingTypeTable>(m_Databases, [&](auto& row) {
    row.m_ID = id;
    row.m_RatingType = name;
  });
  for (const Choice& choice : choices) {
    Add<data::RatingChoicesTable>(m_Databases, [&](auto& row) {
      row.m_ID = ++m_RatingChoices;
      row.m_RatingTypeID = id;
      row.m_ChoiceName = choice.name;
      row.m_DefaultFlag = YesNo(choice.isDefault);
      row.m_BoldFlag = YesNo(choice.isBold);
      row.m_CommentPromptFlag = YesNo(choice.prompts);
      row.m_SummaryFlag = YesNo(choice.isSummary);
      row.m_RedFlag = YesNo(choice.isRed);
    });
  }
  return id;
}

std::int32_t TemplateLibrary::AddType(const Text& name, const Text& layout) {
  Add<data::InspectionTypeTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Types;
    row.m_InspectionType = name;
    row.m_Layout = layout;
  });
  return m_Types;
}

std::int32_t TemplateLibrary::AddCategory(std::int32_t type, const Category& category) {
  Add<data::CategoryTemplateTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Categories;
    row.m_Title = category.title;
    row.m_CategoryNumber = category.number;
    row.m_FormType = category.formType;
    row.m_ExcludeFromApplyDefault = YesNo(category.excluded);
  });
  Add<data::InspectionTypeCategoryTable>(m_Databases, [&](auto& row) {
    row.m_InspectionTypeID = type;
    row.m_CategoryID = m_Categories;
  });
  return m_Categories;
}

std::int32_t TemplateLibrary::AddStep(std::int32_t category, const Step& step) {
  Add<data::StepTemplateTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Steps;
    row.m_StepNumber = step.number;
    row.m_Title = step.title;
    row.m_RatingTypeID = step.ratingType;
    row.m_Keyword = step.keyword;
    row.m_StepInfo = step.info;
  });
  Add<data::CategoryStepTable>(m_Databases, [&](auto& row) {
    row.m_CategoryID = category;
    row.m_StepID = m_Steps;
  });
  return m_Steps;
}

void TemplateLibrary::AddField(std::int32_t category, const Text& label, std::int32_t sequence) {
  Add<data::FieldTemplateTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Fields;
    row.m_Label = label;
    row.m_Type = 2;
    row.m_Sequence = sequence;
    row.m_CategoryID = category;
  });
}

std::int32_t TemplateLibrary::AddMaterial(std::int32_t step, const Text& material, bool isDefault) {
  Add<data::MaterialTemplateTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Materials;
    row.m_StepID = step;
    row.m_Material = material;
    row.m_MaterialOrder = m_Materials;
    row.m_DefaultMaterial = YesNo(isDefault);
  });
  return m_Materials;
}

std::int32_t TemplateLibrary::AddComment(const Text& comment, const Text& group) {
  Add<data::CommentsTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Comments;
    row.m_Comments = comment;
    row.m_GroupName = group;
  });
  return m_Comments;
}

void TemplateLibrary::AddCommentToType(std::int32_t type, const Text& comment) {
  const std::int32_t id = AddComment(comment);
  Add<data::InspectionTypeCommentTable>(m_Databases, [&](auto& row) {
    row.m_InspectionTypeID = type;
    row.m_CommentID = id;
  });
}

void TemplateLibrary::AddCommentToCategory(std::int32_t category, const Text& comment) {
  const std::int32_t id = AddComment(comment);
  Add<data::CategoryCommentTable>(m_Databases, [&](auto& row) {
    row.m_CategoryID = category;
    row.m_CommentID = id;
  });
}

void TemplateLibrary::AddCommentToMaterial(std::int32_t material, const Text& comment) {
  const std::int32_t id = AddComment(comment);
  Add<data::MaterialCommentTable>(m_Databases, [&](auto& row) {
    row.m_MaterialID = material;
    row.m_CommentID = id;
    row.m_LinkKey = Format(u"%d-%d", material, id);
  });
  data::MaterialTemplateTable row(m_Databases);
  row.OpenSQL(Format(u"SELECT * FROM MaterialTemplate WHERE ID = %d", material));
  EXPECT_TRUE(row.GetRecord(0));
  row.m_CommentsExist = -1;
  EXPECT_TRUE(row.Write());
}

std::int32_t TemplateLibrary::AddCommentToStep(std::int32_t step, const Text& comment, const Text& group) {
  const std::int32_t id = AddComment(comment, group);
  Add<data::StepCommentTable>(m_Databases, [&](auto& row) {
    row.m_StepID = step;
    row.m_CommentID = id;
    row.m_LinkKey = Format(u"%d-%d", step, id);
  });
  return id;
}

void TemplateLibrary::AddShortcut(const Text& shortCut, const Text& expanded) {
  Add<data::ExpandedTextTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Shortcuts;
    row.m_ShortCut = shortCut;
    row.m_Expanded = expanded;
  });
}

void TemplateLibrary::AddPicker(const Text& list, const Text& choice) {
  Add<data::PickersTable>(m_Databases, [&](auto& row) {
    row.m_ID = ++m_Pickers;
    row.m_PickerName = list;
    row.m_PickerChoice = choice;
  });
}

VisitDevice::VisitDevice() {
  const std::filesystem::path documents = m_Folder / "My Documents";
  for (const auto& [name, kind] : {std::pair{"Template_Data.cdb", data::DatabaseKind::Template},
                                   std::pair{"Inspection_Data.cdb", data::DatabaseKind::Inspection}})
    EXPECT_EQ(data::CreateFreshDatabase(documents / name, kind, m_Faults), u"");
  Open();
  MakeLibrary();
}

VisitDevice::~VisitDevice() {
  m_Document.reset();  // waits for a worker, which uses the workspace
}

void VisitDevice::Close() {
  m_Library.reset();
  m_Document.reset();
  m_Workspace.reset();
}

void VisitDevice::Open() {
  Close();
  m_Workspace = data::StartData(m_Machine).workspace;
  if (!m_Workspace) {
    ADD_FAILURE() << "The databases do not start.";
    std::abort();  // every test would go on without a database
  }
  m_Library = std::make_unique<TemplateLibrary>(Databases());
  m_Document = std::make_unique<inspection::CInspectorDoc>(*m_Workspace);
  EXPECT_TRUE(m_Document->IsOpen());
}

void VisitDevice::MakeLibrary() {
  const data::ReadScope reading(Databases().Template());
  data::Transaction transaction(Databases().Template());
  TemplateLibrary& library = *m_Library;
  const auto condition = library.AddRatingType(
      u"Condition", {{.name = u"Good", .isDefault = true},
                     {.name = u"Poor", .isBold = true, .prompts = true, .isSummary = true, .isRed = true},
                     {.name = u"Good \"as new\""}});
  const auto presence = library.AddRatingType(u"Presence", {{.name = u"Yes"}, {.name = u"No"}});

  const auto house = library.AddType(u"House", u"4 Column");
  const auto roof = library.AddCategory(house, {u"Roof", 20});
  const auto cellar = library.AddCategory(house, {u"Cellar", 9});
  const auto safety = library.AddCategory(house, {u"Safety", 30, 0, true});
  const auto checklist = library.AddCategory(house, {u"Checklist", 99, 1});
  library.AddCategory(house, {u"Attic", 15});
  const auto shingles = library.AddStep(roof, {u"20.1", u"Shingles", condition, u"Roof-Covering", u"Look"});
  const auto gutters = library.AddStep(roof, {u"20.2", u"Gutters", condition, u"Roof-Drainage*", u"12"});
  library.AddStep(roof, {u"20.3", u"Notes", 77});
  library.AddStep(cellar, {u"9.1", u"Sump", presence});
  library.AddStep(safety, {u"30.1", u"Alarms", condition});
  library.AddField(checklist, u"Doors locked", 2);
  library.AddField(checklist, u"Stove off", 1);

  const auto asphalt = library.AddMaterial(shingles, u"Asphalt", true);
  library.AddMaterial(shingles, u"Wood");
  library.AddMaterial(shingles, u"Wood Siding");
  library.AddMaterial(shingles, u"Other:");
  library.AddMaterial(gutters, u"Copper", true);
  library.AddCommentToMaterial(asphalt, u"Shingles last 20 years.");
  library.AddCommentToMaterial(asphalt, u"Second comment.");
  library.AddCommentToType(house, u"[*Scope]Seen from the ground.");
  library.AddCommentToType(house, u"Not a default comment.");
  library.AddCommentToType(house, u"[*Age]Built in 1968.");
  library.AddCommentToCategory(roof, u"[*Roof]Walked on.");

  const auto condo = library.AddType(u"Condo", u"3 Column");
  const auto kitchen = library.AddCategory(condo, {u"Kitchen", 70});
  library.AddStep(kitchen, {u"70.1", u"Sink", condition});
  EXPECT_TRUE(transaction.Commit());
}

std::int32_t VisitDevice::Visit(const Text& type) {
  const std::optional<std::int32_t> key = m_Document->CreateInspection({}, type);
  EXPECT_TRUE(key.has_value());
  return key.value_or(0);
}

std::int32_t VisitDevice::OpenCategory(const Text& title) {
  data::CategoryTable category(Databases());
  category.OpenSQL(Format(u"SELECT * FROM Category WHERE (InspectionID = %d) AND (CategoryTitle = \"%s\")",
                          m_Document->Inspection().m_InspectionID, title));
  EXPECT_TRUE(category.GetRecord(0)) << device::ToUtf8(title);
  EXPECT_TRUE(editing::OpenCategory(Databases(), category));
  return category.m_CategoryID;
}

std::int32_t VisitDevice::StepKey(const Text& number) {
  data::StepTable step(Databases());
  step.OpenSQL(
      Format(u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID "
             u"WHERE ((Category.InspectionID = %d) AND (Step.StepNumber = \"%s\"))",
             m_Document->Inspection().m_InspectionID, number));
  EXPECT_TRUE(step.GetRecord(0)) << device::ToUtf8(number);
  return step.m_StepID;
}

Text VisitDevice::Finding(std::int32_t stepID) {
  data::StepTable step(Databases());
  step.OpenSQL(Format(u"SELECT * FROM Step WHERE StepID = %d", stepID));
  EXPECT_TRUE(step.GetRecord(0)) << stepID;
  return Format(u"%s|%s|%s|%s|%s", step.m_StepNumber, step.m_StepTitle, step.m_InspectResult,
                step.m_Materials, step.m_Comments);
}

void VisitDevice::Store(std::int32_t stepID, const std::function<void(data::StepTable&)>& change) {
  data::StepTable step(Databases());
  step.OpenSQL(Format(u"SELECT * FROM Step WHERE StepID = %d", stepID));
  ASSERT_TRUE(step.GetRecord(0)) << stepID;
  change(step);
  EXPECT_TRUE(step.Write());
}

std::vector<Text> VisitDevice::Outline(std::int32_t inspectionID) {
  std::vector<Text> lines;
  data::CategoryTable categories(Databases());
  categories.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             inspectionID));
  for (int n = 0; n < categories.RecordCount() && categories.GetRecord(n); ++n) {
    lines.push_back(Format(u"%s %s (%s)", categories.m_CategoryNumber, categories.m_CategoryTitle,
                           editing::StatusOf(categories)));
    data::StepTable steps(Databases());
    steps.OpenSQL(
        Format(u"SELECT * FROM Step WHERE CategoryID = %d Order By StepNumber", categories.m_CategoryID));
    for (int s = 0; s < steps.RecordCount() && steps.GetRecord(s); ++s)
      lines.push_back(Format(u"  %s|%s|%s|%s|%s", steps.m_StepNumber, steps.m_StepTitle,
                             steps.m_InspectResult, steps.m_Materials, steps.m_Comments));
    data::FieldTable fields(Databases());
    fields.OpenSQL(Format(u"SELECT * FROM Field WHERE Field.CategoryID = %d Order By Field.SequenceNumber",
                          categories.m_CategoryID));
    for (int f = 0; f < fields.RecordCount() && fields.GetRecord(f); ++f)
      lines.push_back(Format(u"  %s=%s", fields.m_FieldLabel, fields.m_AssignedValue));
  }
  return lines;
}

Text VisitDevice::RowCounts() {
  data::InspectionTable inspections(Databases());
  data::CategoryTable categories(Databases());
  data::StepTable steps(Databases());
  data::FieldTable fields(Databases());
  Text counts;
  for (data::TableRecordset* table :
       {static_cast<data::TableRecordset*>(&inspections), static_cast<data::TableRecordset*>(&categories),
        static_cast<data::TableRecordset*>(&steps), static_cast<data::TableRecordset*>(&fields)}) {
    EXPECT_TRUE(table->Open());
    counts += Format(u"%s%s %d", counts.empty() ? u"" : u", ", table->TableName(), table->RecordCount());
  }
  return counts;
}

void VisitDevice::Run(data::DatabaseKind kind, const std::string& sql) {
  EXPECT_TRUE(Databases().Get(kind).ExecuteNative(sql)) << sql;
  Databases().Get(kind).SchemaChanged();
}

}  // namespace inspector::tests
