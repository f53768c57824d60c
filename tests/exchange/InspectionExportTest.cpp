#include "exchange/InspectionExport.h"

#include "ExchangeFixture.h"
#include "data/StartUp.h"
#include "device/OwnerRecord.h"

namespace inspector::exchange {
namespace {

constexpr auto kCompany =
    "Name= \"\" ContactName= \"\" Address= \"\" CSZ= \"\" Phone_Work= \"\" Phone_Fax= \"\"";

class InspectionExportTest : public ExchangeTest {
protected:
  void SetOwner(const device::OwnerRecord& owner, const Text& inspector) {
    m_Device.GetWorkspace().GetMachine().registry.WriteBinary(Text(data::kOwnerKey), u"Owner",
                                                              owner.Encode());
    m_Device.GetWorkspace().Options().m_InspectorEntry = inspector;
  }
};

TEST_F(InspectionExportTest, FileIsTheSameByteForByte) {
  SetOwner({u"A. Owner", u"Cole \"Home\"", u"1 Main St\r\nUnit 5\r\nSalem, OR 97301", u"555-1;555-2"},
           u" Marge Osgood ; License 4417");
  const ExportOutcome outcome = Export();
  EXPECT_EQ(outcome.result, ExportResult::Written);
  EXPECT_EQ(outcome.file, m_File);
  EXPECT_EQ(outcome.records, 7);
  EXPECT_EQ(Exported(),
            "Brindlecove Export File|\n"
            "INSPECTIONCOMPANY|<InspectionCompany Name= \"Cole \"Home\"\" ContactName= \"Marge Osgood\" "
            "Address= \"1 Main "
            "St\" CSZ= \"Unit 5, Salem, OR 97301\" Phone_Work= \"555-1\" Phone_Fax= \"555-2\" Email= \"Not "
            "currently "
            "supported.\" />|\n"
            "INSPECTION|12 Elm Street|Ana Ruiz||Salem, OR|Clear, 60 "
            "F.|7/3/2002|9:5|House|TRUE|FALSE|-5|2026-014|555|Salem|"
            "M. Cole|L. Ito|1|Elm Realty| Marge Osgood ; License 4417|\n"
            "CATEGORY|Cellar|09|||FALSE|TRUE|-7|2|\n"
            "CATEGORY|Roof|20|r|c|TRUE|FALSE|3|0|\n"
            "STEP|20.1|Shingles||||Condition|||0|FALSE||0|||FALSE|\n"
            "STEP|20.2|Gutters|Poor|Bent \xE9.|Copper;|Condition|x|y|2|TRUE|Drainage|-1|s|b.jpg|TRUE|\n");
  EXPECT_EQ(Prompts().ProgressWindows().back()->Told(),
            u"Exporting Inspection...|Category 1 of 2|Category 2 of 2|0|2|3");
  EXPECT_EQ(Joined(outcome.notes), u"Not in the file: the private notes and 1 picture (only its name).");
  m_Device.RunInVisits("UPDATE Step SET SummaryComment = '***Picture-2;Scaling=50***'");
  m_Device.Put("HousePhoto2026-014.jpg", "x");
  EXPECT_EQ(Joined(Export().notes), u"Not in the file: the private notes and 3 pictures (only their names).");
}

TEST_F(InspectionExportTest, HouseWithoutCategoriesIsThreeRecords) {
  m_Device.RunInVisits("INSERT INTO Inspection (InspectionID) VALUES (72)");
  const ExportOutcome outcome = Export(72);
  EXPECT_EQ(Exported(), std::string("Brindlecove Export File|\nINSPECTIONCOMPANY|<InspectionCompany ") +
                            kCompany +
                            " Email= \"Not currently supported.\" />|\n"
                            "INSPECTION|||||||||FALSE|FALSE|0||||||0|||\n");
  EXPECT_EQ(outcome.records, 3);
  EXPECT_THAT(outcome.notes, IsEmpty());
}

TEST_F(InspectionExportTest, MoreRecordsThanOlderReadersTakeAreToldAndWritten) {
  // With the seven that are there: 1,000, and then one more.
  m_Device.RunInVisits(
      "INSERT INTO Step (StepID, CategoryID) WITH RECURSIVE n(k) AS (SELECT 1000 UNION ALL SELECT k + 1 FROM "
      "n WHERE k < "
      "1992) SELECT k, 81 FROM n");
  EXPECT_THAT(Export().notes, SizeIs(1));
  m_Device.RunInVisits("INSERT INTO Step (StepID, CategoryID) VALUES (1993, 81)");
  const ExportOutcome outcome = Export();
  EXPECT_EQ(outcome.notes.back(), u"The file has 1001 records. Older readers stop after 1000 of them.");
  const std::string bytes = ContentOf(m_File);
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\xA7'), 1001);
}

TEST_F(InspectionExportTest, ValuesThatDoNotArriveAreAskedAbout) {
  m_Device.RunInVisits(
      "UPDATE Step SET Comments = 'Costs \xC2\xA4 5, see \xC2\xA7 3.' WHERE StepID = 92;"
      "UPDATE Category SET Remarks = '\xE2\x9C\x93 \xC2\xA7' WHERE CategoryID = 82;"
      "UPDATE Inspection SET ClientName = '\xC5\x81ucja' WHERE InspectionID = 71");
  const Text question =
      u"4 values will not arrive as they are:\n\n"
      u"The inspection, Client Name: holds characters that become \"?\".\n"
      u"Category 09 Cellar, remarks: holds \u00A4 or \u00A7, where a reader cuts it.\n"
      u"Category 09 Cellar, remarks: holds characters that become \"?\".\n"
      u"Step 20.1 Shingles, comments: holds \u00A4 or \u00A7, where a reader cuts it.\n"
      u"\nWrite the file as it stands?";
  Prompts().Queue(question, Answer::No);
  EXPECT_EQ(Export().result, ExportResult::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(m_File));
  Prompts().Queue(question, Answer::Yes);
  EXPECT_EQ(Export().result, ExportResult::Written);
  EXPECT_THAT(Exported(),
              AllOf(HasSubstr("|?ucja|"), HasSubstr("|09|? \n||"), HasSubstr("|Costs | 5, see \n 3.|")));
}

TEST_F(InspectionExportTest, WhatStandsThereStaysUnlessTheFileIsWhole) {
  m_Device.Put("house.rtf", "before");
  for (const int step : {0, 2, 3}) {
    Prompts().CancelAtStep(step);
    EXPECT_EQ(Export().result, ExportResult::Cancelled) << step;
  }
  Prompts().CancelAtStep(99);
  EXPECT_THAT(Prompts().Messages(), IsEmpty());
  for (int write = 1; write <= 3; ++write) {
    m_Device.Disk().FailWrite(write);
    EXPECT_EQ(Export().result, ExportResult::Failed);
    EXPECT_THAT(Prompts().Last(), AllOf(StartsWith("Error: " + m_File.string()), HasSubstr("No space left")));
  }
  m_Device.Disk().FailCommit(1);
  EXPECT_EQ(Export().result, ExportResult::Failed);
  EXPECT_EQ(ContentOf(m_File), "before");
  EXPECT_EQ(Export().result, ExportResult::Written);
}

TEST_F(InspectionExportTest, AsksWhereToAndKeepsDatabasesAndPictures) {
  m_Device.GetWorkspace().Options().m_DefaultPath = u"\\Exports";
  m_Device.RunInVisits("UPDATE Inspection SET InspectionNum = '7/8' WHERE InspectionID = 71");
  Prompts().QueueSavePath(std::nullopt);
  EXPECT_EQ(ExportInspection(m_Device.GetWorkspace(), {kHouse, {}}).result, ExportResult::Cancelled);
  const device::SaveQuestion& question = Prompts().SaveQuestions().back();
  EXPECT_EQ(question.folder + question.suggestedName + u"|" + question.filter + question.defaultExtension,
            u"\\Exports\\Export_7_8.rtf|Rich Text Format (*.rtf)|*.rtf|rtf");
  EXPECT_THAT(Prompts().Messages(), IsEmpty());
  for (const char* name : {"My Documents/Inspection_Data.cdb", "registry.toml", "b.jpg"}) {
    EXPECT_EQ(ExportInspection(m_Device.GetWorkspace(), {kHouse, m_Device.Root() / name}).result,
              ExportResult::Failed);
    EXPECT_THAT(Prompts().Last(), HasSubstr("Choose another name"));
  }
  EXPECT_EQ(Export(4711).result, ExportResult::Failed);
  EXPECT_THAT(Prompts().Last(), HasSubstr("There is no inspection 4711"));
}

}  // namespace
}  // namespace inspector::exchange
