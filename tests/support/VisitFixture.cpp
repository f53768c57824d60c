#include "support/VisitFixture.h"

#include "device/Format.h"
#include "editing/CategoryOpening.h"

namespace inspector::tests {
namespace {

using device::Format;

constexpr const char* kLibrary = R"(
INSERT INTO RatingType (ID, RatingType) VALUES (1, 'Condition'), (2, 'Presence');
INSERT INTO RatingChoices (ID, RatingTypeID, ChoiceName, DefaultFlag, BoldFlag, CommentPromptFlag, SummaryFlag,
  RedFlag) VALUES (1, 1, 'Good', 1, 0, 0, 0, 0), (2, 1, 'Poor', 0, 1, 1, 1, 1),
  (3, 1, 'Good "as new"', 0, 0, 0, 0, 0), (4, 2, 'Yes', 0, 0, 0, 0, 0), (5, 2, 'No', 0, 0, 0, 0, 0);
INSERT INTO InspectionType (ID, InspectionType, Layout) VALUES (1, 'House', '4 Column'), (2, 'Condo', '3 Column');
INSERT INTO CategoryTemplate (ID, Title, CategoryNumber, FormType, ExcludeFromApplyDefault) VALUES
  (1, 'Roof', 20, 0, 0), (2, 'Cellar', 9, 0, 0), (3, 'Safety', 30, 0, 1), (4, 'Checklist', 99, 1, 0),
  (5, 'Attic', 15, 0, 0), (6, 'Kitchen', 70, 0, 0);
INSERT INTO InspectionTypeCategory VALUES (1, 1), (1, 2), (1, 3), (1, 4), (1, 5), (2, 6);
INSERT INTO StepTemplate (ID, StepNumber, Title, RatingTypeID, Keyword, StepInfo) VALUES
  (1, '20.1', 'Shingles', 1, 'Roof-Covering', 'Look'), (2, '20.2', 'Gutters', 1, 'Roof-Drainage*', '12'),
  (3, '20.3', 'Notes', 77, NULL, NULL), (4, '9.1', 'Sump', 2, '', ''), (5, '30.1', 'Alarms', 1, '', ''),
  (6, '70.1', 'Sink', 1, '', '');
INSERT INTO CategoryStep VALUES (1, 1), (1, 2), (1, 3), (2, 4), (3, 5), (6, 6);
INSERT INTO FieldTemplate (ID, Label, Type, Sequence, CategoryID) VALUES
  (1, 'Doors locked', 2, 2, 4), (2, 'Stove off', 2, 1, 4);
INSERT INTO MaterialTemplate (ID, StepID, Material, MaterialOrder, CommentsExist, DefaultMaterial) VALUES
  (1, 1, 'Asphalt', 1, 1, 1), (2, 1, 'Wood', 2, 0, 0), (3, 1, 'Wood Siding', 3, 0, 0), (4, 1, 'Other:', 4, 0, 0),
  (5, 2, 'Copper', 5, 0, 1);
INSERT INTO Comments (ID, Comments) VALUES (1, 'Shingles last 20 years.'), (2, 'Second comment.'),
  (3, '[*Scope]Seen from the ground.'), (4, 'Not a default comment.'), (5, '[*Age]Built in 1968.'),
  (6, '[*Roof]Walked on.');
INSERT INTO MaterialComment VALUES (1, 1, '1-1'), (1, 2, '1-2');
INSERT INTO InspectionTypeComment (InspectionTypeID, CommentID) VALUES (1, 3), (1, 4), (1, 5);
INSERT INTO CategoryComment (CategoryID, CommentID) VALUES (1, 6);
)";

// Category, steps and fields of the inspection %d.
constexpr const char16_t* kOutline =
    uR"(
WITH Mine AS (SELECT * FROM Category WHERE InspectionID = %d)
SELECT Line FROM (
  SELECT CategoryNumber AS A, CategoryTitle AS B, '' AS C, printf('%%s %%s (%%s)', CategoryNumber, CategoryTitle, CASE
    WHEN NotPresentFlag THEN 'Not Present' WHEN CompleteFlag THEN 'Complete' ELSE 'Incomplete' END) AS Line FROM Mine
  UNION ALL SELECT CategoryNumber, CategoryTitle, StepNumber,
    printf('  %%s|%%s|%%s|%%s|%%s', StepNumber, StepTitle, InspectResult, Materials, Comments)
    FROM Step JOIN Mine USING (CategoryID)
  UNION ALL SELECT CategoryNumber, CategoryTitle, SequenceNumber, printf('  %%s=%%s', FieldLabel, AssignedValue)
    FROM Field JOIN Mine USING (CategoryID)) ORDER BY A, B, C <> '', C)";

}  // namespace

VisitDevice::VisitDevice() {
  Open();
  RunInLibrary(kLibrary);
}

VisitDevice::~VisitDevice() {
  m_Document.reset();  // waits for a worker, which uses the workspace
}

void VisitDevice::Close() {
  m_Document.reset();
  m_Workspace.reset();
}

void VisitDevice::Open() {
  m_Document.reset();
  Start();
  m_Document = std::make_unique<inspection::CInspectorDoc>(*m_Workspace);
  EXPECT_TRUE(m_Document->IsOpen());
}

std::int32_t VisitDevice::Visit(const Text& type, const std::vector<Text>& opened) {
  const std::optional<std::int32_t> key = m_Document->CreateInspection({}, type);
  EXPECT_TRUE(key.has_value());
  for (const Text& title : opened) OpenCategory(title);
  return key.value_or(0);
}

std::int32_t VisitDevice::OpenCategory(const Text& title) {
  data::CategoryTable category(Databases());
  category.OpenSQL(Format(u"SELECT * FROM Category WHERE (InspectionID = %d) AND (CategoryTitle = \"%s\")",
                          m_Document->Inspection().m_InspectionID, title));
  EXPECT_TRUE(category.GetRecord(0)) << ToUtf8(title);
  EXPECT_TRUE(editing::OpenCategory(Databases(), category));
  return category.m_CategoryID;
}

std::int32_t VisitDevice::StepKey(const Text& number) {
  const auto found =
      Visits().Rows(ToUtf8(Format(u"SELECT StepID FROM Step JOIN Category USING (CategoryID) WHERE "
                                  u"InspectionID = %d AND StepNumber = '%s'",
                                  m_Document->Inspection().m_InspectionID, number)));
  EXPECT_EQ(found.size(), 1u) << ToUtf8(number);
  return found.empty() ? 0 : std::stoi(found[0]);
}

Text VisitDevice::Finding(std::int32_t stepID) {
  const auto found = Visits().Rows(
      "SELECT StepNumber, StepTitle, InspectResult, Materials, Comments FROM Step WHERE StepID = " +
      std::to_string(stepID));
  EXPECT_EQ(found.size(), 1u) << stepID;
  return found.empty() ? Text() : FromUtf8(found[0]);
}

std::vector<Text> VisitDevice::Outline(std::int32_t inspectionID) {
  std::vector<Text> lines;
  for (const std::string& line : Visits().Rows(ToUtf8(Format(kOutline, inspectionID))))
    lines.push_back(FromUtf8(line));
  return lines;
}

Text VisitDevice::RowCounts() {
  return FromUtf8(Visits().Ask(
      "SELECT printf('Inspection %d, Category %d, Step %d, Field %d', (SELECT count(*) FROM Inspection), "
      "(SELECT count(*) FROM Category), (SELECT count(*) FROM Step), (SELECT count(*) FROM Field))"));
}

}  // namespace inspector::tests
