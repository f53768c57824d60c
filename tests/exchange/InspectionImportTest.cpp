#include "exchange/InspectionImport.h"

#include "ExchangeFixture.h"
#include "exchange/ExportFile.h"

namespace inspector::exchange {
namespace {

constexpr auto kOffer = u"Don't show this again for this file";

TEST(ExportFileTest, RecordsAndPartsOfAnyBytes) {
  const auto records = [](std::string_view bytes) {
    std::string joined;
    const ExportRecords found = RecordsOf(bytes);
    for (const std::string_view record : found.records) joined.append(record).append("/");
    return joined + (found.isCutShort ? " cut" : "") + (found.hasRest ? " rest" : "");
  };
  ExpectEach(std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                              {"\xA7", ""},
                                                              {"a\xA7", "a/"},
                                                              {"a\xA7"
                                                               "b",
                                                               "a/b/ cut"},
                                                              {"a\xA7\xA7", "a/"},
                                                              {"a\xA7\xA7"
                                                               "b\xA7",
                                                               "a/ rest"}},
             records);
  const auto parts = [](const Text& record) {
    std::vector<Text> joined;
    for (const TextView part : RecordParts(record)) joined.emplace_back(part);
    return Joined(joined);
  };
  ExpectEach(
      std::vector<std::pair<Text, Text>>{
          {u"", u""}, {u"STEP", u"STEP"}, {u"STEP\u00A4", u"STEP|"}, {u"\u00A4\u00A4x", u"||x"}},
      parts);
}

class InspectionImportTest : public ExchangeTest {
protected:
  ImportOutcome Import(const std::string& onPaper) {
    m_Device.Put("house.rtf", OffPaper(onPaper));
    return ImportFile();
  }
  ImportOutcome ImportFile() { return ImportInspectionFile(m_Device.GetWorkspace(), m_File); }
  // The alerts, without their title.
  Text Alerts() {
    return Joined(
        Prompts().Messages(), [](const auto& each) { return each.text; }, u"#");
  }
  std::string Staged() {
    return InVisits("SELECT count(*) FROM MERGE_Inspection") +
           InVisits("SELECT count(*) FROM MERGE_Category") + InVisits("SELECT count(*) FROM MERGE_Step");
  }
  // Every other alert of a file is one that only shows what is read.
  void BeSilent() { Prompts().Queue(u"vtBuffer = ", Answer::OkForAll); }
};

constexpr auto kHeader = "Brindlecove Export File|\n";

TEST_F(InspectionImportTest, StagesEveryColumnAndShowsWhatItReads) {
  const ImportOutcome outcome =
      Import(std::string(kHeader) +
             "INSPECTIONCOMPANY|<x />|\n"
             "INSPECTION|12 "
             "Elm|Ana|ca|cc|gi|7/3/2002|9:5|House|TRUE|FALSE|-5|N1|555|csz|agent|listing|16|company|Marge|\n"
             "CATEGORY|Roof|20|r|\x93q\x94|TRUE|true|3|x|\n"
             "STEP|20.1|Shingles|Poor|Bent.|Tin;|Condition|x|y|2|TRUE|Drainage|-1|s|b.jpg|TRUE|\n"
             "CATEGORY|Cellar\n"
             "STEP|9\n");
  EXPECT_EQ(outcome.result, ImportResult::Staged);
  EXPECT_THAT(outcome.inspections, ElementsAre(1001));
  EXPECT_THAT(outcome.notes, IsEmpty());
  EXPECT_EQ(std::pair(outcome.categories, outcome.steps), std::pair(2, 2));
  EXPECT_EQ(InVisits("SELECT * FROM MERGE_Inspection"),
            "1001|12 Elm|Ana|ca|cc|gi|2002-07-03T09:05:00|House|1|0|-5|N1|555|csz|agent|listing|16|company");
  EXPECT_EQ(InVisits("SELECT * FROM MERGE_Category"),
            "1000|Roof|20|r|\xE2\x80\x9Cq\xE2\x80\x9D|1|0|1001|3|0\n1001|Cellar||||0|0|1001|0|0");
  EXPECT_EQ(InVisits("SELECT * FROM MERGE_Step"),
            "1000|20.1|Shingles|1000|Poor|Bent.|Tin;|Condition|x|y|2|1|Drainage|1|s|b.jpg|0\n"
            "1001|9||1001|||||||0|0||0|||0");
  EXPECT_EQ(InVisits("SELECT * FROM UniqueID WHERE TableName LIKE 'MERGE%' ORDER BY 1"),
            "MERGE_InspectionCategory|1001\nMERGE_Step|1001");
  EXPECT_EQ(Prompts().ProgressWindows().back()->Told(),
            u"Importing Inspection...|Record 1 of 7|Record 2 of 7|Record 3 of 7|Record 4 of 7|Record 5 of 7|"
            u"Record 6 of 7|Record 7 of 7|0|6|8");
}

TEST_F(InspectionImportTest, AlertsComeInTheirOrderUntilThePersonHasSeenEnough) {
  Import(std::string(kHeader) + "STEP|1|\n");
  EXPECT_EQ(
      Alerts(),
      u"Attempting to open as CE/PPC#vtBuffer = #Brindlecove Export File\u00A4#vtBuffer = #STEP\u00A41\u00A4#"
      u"vtBuffer = ##Brindlecove Export File\u00A4");
  const auto& seen = Prompts().Messages();
  EXPECT_EQ(seen[0].offer, u"");
  for (std::size_t n = 1; n < seen.size(); ++n)
    EXPECT_EQ(seen[n].title + seen[n].offer, Text(u"Alert") + kOffer);
  Prompts().Forget();
  BeSilent();
  Import(std::string(kHeader) + "STEP|1|\n");
  EXPECT_EQ(Alerts(), u"Attempting to open as CE/PPC#vtBuffer = ");
  Prompts().Forget();
  BeSilent();  // for another file it is asked again, and a failure is told all the same
  Import("something else\nSTEP|1|\n");
  EXPECT_EQ(Alerts(), u"Attempting to open as CE/PPC#vtBuffer = #Invalid Import File.#" +
                          FromUtf8(m_File.native()) +
                          u" does not begin as an export file does. Nothing was imported.");
  EXPECT_EQ(Staged(), "002");
}

TEST_F(InspectionImportTest, WhatIsNoExportFileIsRefusedInWords) {
  const Text begin = u"Attempting to open as CE/PPC#";
  const Text unopened = begin + u"File failed to open!##Invalid Import File.#" + FromUtf8(m_File.native());
  const auto says = [&](const Text& alerts) {
    EXPECT_EQ(ImportFile().result, ImportResult::Failed);
    EXPECT_THAT(ToUtf8(Alerts()), StartsWith(ToUtf8(alerts)));
    Prompts().Forget();
  };
  says(unopened + u" is not there.");
  m_Device.Put("house.rtf");
  says(begin + u"vtBuffer = ###Invalid Import File.#" + FromUtf8(m_File.native()) + u" is empty.");
  m_Device.Put("house.rtf", OffPaper("Brindlecove Export File"));
  says(begin +
       u"vtBuffer = #Brindlecove Export File#vtBuffer = ##Brindlecove Export File#Invalid Import File.#");
  std::filesystem::resize_file(m_File, kMostFileBytes + 1);
  says(unopened + u" is larger than 64 MiB");
  m_Device.Put("house.rtf", OffPaper(kHeader));
  m_Device.Disk().FailRead(1);
  says(unopened + u" could not be read to its end.");
  std::filesystem::remove(m_File);
  std::filesystem::create_directory(m_File);
  says(unopened + u" is a folder.");
  EXPECT_EQ(Staged(), "000");
}

TEST_F(InspectionImportTest, FileIsAskedFor) {
  Prompts().QueueOpenPath(std::nullopt);
  EXPECT_EQ(ImportInspectionFile(m_Device.GetWorkspace()).result, ImportResult::Cancelled);
  EXPECT_EQ(Alerts(), u"Attempting to open as CE/PPC##Invalid Import File.");
  EXPECT_EQ(Prompts().OpenQuestions().back().filter, u"Rich Text Format (*.rtf)|*.rtf|");
  m_Device.Put("house.rtf", OffPaper(std::string(kHeader) + "INSPECTION|\n"));
  Prompts().QueueOpenPath(m_File);
  BeSilent();
  EXPECT_EQ(ImportInspectionFile(m_Device.GetWorkspace()).result, ImportResult::Staged);
}

TEST_F(InspectionImportTest, OddFilesAreTakenAsFarAsTheyGoAndTold) {
  const std::string twoHouses =
      "STEP|a|\nCATEGORY|stray|\nINSPECTION|1|\nSTEP|b|\nINSPECTION|2|\nSTEP|c|\nPOEM|\nCATEGORY|C|";
  const ImportOutcome outcome = Import(kHeader + twoHouses);
  EXPECT_EQ(outcome.result, ImportResult::Staged);
  EXPECT_THAT(outcome.inspections, ElementsAre(1001, 1002));
  EXPECT_EQ(InVisits("SELECT InspectionDate IS NULL, DwellingAddress FROM MERGE_Inspection"), "1|1\n1|2");
  EXPECT_EQ(InVisits("SELECT CategoryTitle, InspectionID FROM MERGE_Category"), "stray|-777\nC|1002");
  EXPECT_EQ(InVisits("SELECT StepNumber, CategoryID FROM MERGE_Step"), "a|-777\nb|1000\nc|1000");
  ASSERT_THAT(outcome.notes, SizeIs(2));
  EXPECT_THAT(ToUtf8(outcome.notes[0]), HasSubstr("breaks off in its last record"));
  EXPECT_THAT(ToUtf8(outcome.notes[1]), HasSubstr("belong to nothing: 2."));
  EXPECT_THAT(ToUtf8(Joined(Import(std::string(kHeader) + "\nINSPECTION|1|\n").notes)),
              AllOf(HasSubstr("An empty record stands behind record 1."), HasSubstr("holds no inspection")));
}

TEST_F(InspectionImportTest, AllOfAFileIsStagedOrNothing) {
  const std::string file = std::string(kHeader) + "INSPECTION|1|\nCATEGORY|C|\nSTEP|b|\nSTEP|no|\n";
  BeSilent();
  Prompts().CancelAtStep(5);
  EXPECT_EQ(Import(file).result, ImportResult::Cancelled);
  EXPECT_EQ(Prompts().Last(), "Alert: Cancelled. Nothing was imported.");
  Prompts().CancelAtStep(99);
  m_Device.RunInVisits(NoRoomFor("INSERT ON MERGE_Step WHEN NEW.StepNumber = 'no'"));
  BeSilent();
  EXPECT_EQ(Import(file).result, ImportResult::Failed);
  EXPECT_THAT(Prompts().Last(), HasSubstr("no room"));
  m_Device.RunInVisits(kRoomAgain);
  EXPECT_EQ(Staged(), "000");
  EXPECT_EQ(InVisits("SELECT count(*) FROM UniqueID WHERE TableName LIKE 'MERGE%'"), "0");
  BeSilent();
  EXPECT_EQ(Import(file).inspections.size(), 1u);
  EXPECT_EQ(Staged(), "112");
}

TEST_F(InspectionImportTest, StagingTablesAreMadeOrNamed) {
  m_Device.RunInVisits("DROP TABLE MERGE_Step");
  BeSilent();
  EXPECT_EQ(Import(std::string(kHeader) + "INSPECTION|1|\nSTEP|b|\n").result, ImportResult::Staged);
  EXPECT_EQ(Staged(), "101");
  m_Device.RunInVisits(
      "DROP TABLE MERGE_Step; DROP TABLE MERGE_Inspection;"
      "CREATE VIEW MERGE_Step AS SELECT * FROM Gone; CREATE VIEW MERGE_Inspection AS SELECT * FROM Gone");
  BeSilent();
  Prompts().Forget();
  EXPECT_EQ(Import(std::string(kHeader) + "INSPECTION|1|\n").result, ImportResult::Failed);
  EXPECT_EQ(Prompts().Last(),
            "Alert: The following tables failed to open:\r\r* MERGE_Inspection\r* MERGE_Step\r");
  // Tables that would take a row and lose half of it.
  m_Device.RunInVisits(
      "DROP VIEW MERGE_Step; DROP VIEW MERGE_Inspection; DROP TABLE IF EXISTS MERGE_Category;"
      "CREATE TABLE MERGE_Category (CategoryID INTEGER); CREATE VIEW MERGE_Step AS SELECT * FROM Step");
  EXPECT_EQ(Import(std::string(kHeader) + "INSPECTION|1|\n").result, ImportResult::Failed);
  EXPECT_EQ(Prompts().Last(),
            "Alert: The following tables failed to open:\r\r* MERGE_Category\r* MERGE_Step\r");
}

TEST_F(InspectionImportTest, ManyRecords) {
  constexpr int kSteps = 20'000;
  std::string file = std::string(kHeader) + "INSPECTION|1|\nCATEGORY|C|\n";
  for (int n = 0; n < kSteps; ++n) file += "STEP|" + std::to_string(n) + "|Shingles|\n";
  BeSilent();
  EXPECT_EQ(Import(file).steps, kSteps);
  EXPECT_EQ(InVisits("SELECT count(*), count(DISTINCT StepID), max(StepID) FROM MERGE_Step"),
            "20000|20000|20999");
}

}  // namespace
}  // namespace inspector::exchange
