#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

using device::Text;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using InspectionCommandsTest = tests::CommandLineTest;

TEST_F(InspectionCommandsTest, TypesAndInspectionsForProgramsAndForPeople) {
  EXPECT_EQ(Out({"types", "--json"}), R"([
  {
    "id": 1,
    "name": "House",
    "layout": "4 Column"
  },
  {
    "id": 2,
    "name": "Condo",
    "layout": "3 Column"
  }
]
)");
  EXPECT_EQ(Out({"types"}),
            "ID  NAME   LAYOUT\n"
            "1   House  4 Column\n"
            "2   Condo  3 Column\n");
  Out({"set", "1000", "number=7", "client=Élise \"Bo\"\\\nNoor", "address=418 Juniper Lane"});
  EXPECT_EQ(Out({"list", "--json"}), R"([
  {
    "id": 1000,
    "number": "7",
    "client": "Élise \"Bo\"\\\nNoor",
    "address": "418 Juniper Lane",
    "type": ""
  }
]
)");
  EXPECT_EQ(Out({"list"}),
            "ID    NUMBER  CLIENT            ADDRESS           TYPE\n"
            "1000  7       Élise \"Bo\"\\ Noor  418 Juniper Lane\n");
  Out({"set", "1000", "CLIENT=" + std::string(56, 'x') + "\U0001F3E0 and sons"});
  EXPECT_THAT(Out({"list"}), HasSubstr(std::string(56, 'x') + "...")) << "no half of a pair";
  EXPECT_EQ(Out({"categories", "1000", "--json"}), "[]\n");
}

TEST_F(InspectionCommandsTest, NewPrintsNothingButTheKey) {
  EXPECT_EQ(Out({"new"}), "1001\n");
  EXPECT_EQ(Out({"new", "number=2", "--type", "House", "client=a=b", "general=-", "notes="}), "1002\n");
  EXPECT_THAT(Outline(1002),
              ElementsAre(u"15 Attic (Incomplete)", u"20 Roof (Incomplete)", u"30 Safety (Incomplete)",
                          u"9 Cellar (Incomplete)", u"99 Checklist (Incomplete)"));
  EXPECT_EQ(m_Device.Visits().Ask(
                "SELECT ClientName, InspectionNum, DocType, GeneralInformation FROM Inspection WHERE "
                "InspectionID = 1002"),
            "a=b|2|House|-Seen from the ground.  Built in 1968.");

  struct Refused {
    std::vector<std::string> words;
    int exit;
    const char* says;
  };
  for (const auto& [words, exit, says] : std::vector<Refused>{
           {{"new", "--type", "Castle"}, 1, "no inspection type Castle"},
           {{"new", "--type", ""}, 1, "no inspection type"},
           {{"new", "colour=red"}, 2, "\"fields\" lists"},
           {{"new", "client"}, 2, "\"fields\" lists"},
           {{"new", "date=2026-02-30"}, 2, "2026-05-31 14:05"},
       }) {
    const tests::CliRun run = Cli(words);
    EXPECT_EQ(run.exit, exit) << says;
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr(says));
  }
  EXPECT_EQ(RowCounts(), u"Inspection 3, Category 5, Step 0, Field 0");
}

TEST_F(InspectionCommandsTest, SetWritesAllFieldsOrNone) {
  const std::vector<std::string> names = {
      "number", "client",       "phone",   "address", "citystatezip", "clientaddress", "clientcitystatezip",
      "agent",  "listingagent", "company", "general", "notes"};
  std::vector<std::string> words = {"set", "1000", "date=2026-05-31 14:05"};
  for (const std::string& name : names) words.push_back(name + "=the " + name);
  Out(words);
  const std::string fields = Out({"fields"});
  for (const std::string& name : names) EXPECT_THAT(fields, HasSubstr(name + " "));
  EXPECT_THAT(fields, HasSubstr("date "));
  EXPECT_EQ(Cli({"set", "1000", "client=New", "colour=red"}).exit, 2);
  EXPECT_EQ(Cli({"set", "1000", "client=New", "date=soon"}).exit, 2);
  const tests::CliRun nothing = Cli({"set", "1000"});
  EXPECT_EQ(nothing.exit, 2);
  EXPECT_NE(nothing.err, "");
  EXPECT_EQ(Cli({"set", "4711", "client=New"}).exit, 1);

  std::string expected = "2026-05-31T14:05:00";
  for (const std::string& name : names) expected += "|the " + name;
  EXPECT_EQ(
      m_Device.Visits().Ask("SELECT InspectionDate, InspectionNum, ClientName, ClientPhone, DwellingAddress, "
                            "CityStateZip, ClientAddress, ClientCityStateZip, ClientAgent, ListingAgent, "
                            "RealEstateCompany, GeneralInformation, PrivateNotes FROM Inspection"),
      expected);
  Out({"set", "1000", "date=", "client=", "phone=-5"});
  EXPECT_EQ(m_Device.Visits().Ask("SELECT InspectionDate, ClientName, ClientPhone FROM Inspection"),
            "NULL||-5");
}

TEST_F(InspectionCommandsTest, WhatCannotBeTakenBackAsksAndTakesYesForAnAnswer) {
  const tests::CliRun nameless = Cli({"apply-type", "1000", ""});
  EXPECT_EQ(nameless.exit, 1);
  EXPECT_THAT(nameless.err, HasSubstr("An empty name is no inspection type. \"types\" shows"));
  Out({"apply-type", "1000", "House"});  // the first type without a question
  Out({"steps", "1000"});
  const std::vector<Text> before = Outline(1000);
  Out({"apply-type", "1000", "House"});
  EXPECT_EQ(Cli({"apply-type", "1000", "Castle", "--yes"}).exit, 1);
  struct Case {
    std::vector<std::string> command;
    const char* asks;
  };
  for (auto [command, asks] :
       {Case{{"apply-type", "1000", "Condo"}, "Data Alert: Warning! Changing the Doc Type"},
        Case{{"defaults", "1000"}, "Caution: "}, Case{{"delete", "1000"}, "Caution: "}}) {
    const tests::CliRun run = Cli(command);
    EXPECT_EQ(run.exit, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, ::testing::StartsWith(asks));
    EXPECT_THAT(run.err, HasSubstr("--yes"));
    command[1] = "4711";
    command.push_back("--yes");
    EXPECT_EQ(Cli(command).exit, 1);
  }
  EXPECT_EQ(Outline(1000), before);

  const tests::CliRun defaults = Cli({"defaults", "1000", "--yes"});
  EXPECT_EQ(defaults.exit, 0);
  EXPECT_THAT(defaults.err, HasSubstr("Alert: Done!"));
  EXPECT_THAT(Outline(1000), ::testing::Contains(u"  20.2|Gutters|Good|Copper;|"));
  EXPECT_EQ(Cli({"--yes", "apply-type", "1000", "Condo"}).exit, 0);
  EXPECT_THAT(Outline(1000), ElementsAre(u"70 Kitchen (Incomplete)"));
  const tests::CliRun deleted = Cli({"--yes", "delete", "1000"});
  EXPECT_EQ(deleted.exit, 0);
  EXPECT_THAT(deleted.err, HasSubstr("Warning: Are you sure you want to delete this inspection?"));
  EXPECT_EQ(RowCounts(), u"Inspection 1, Category 0, Step 0, Field 0");
}

TEST_F(InspectionCommandsTest, ReportGoesWhereItIsToldAndReplacesOnlyWhatItMay) {
  Out({"new", "--type", "House", "number=7/8"});
  Cli({"--yes", "defaults", "1001"});
  const std::filesystem::path target = m_Device.Root() / "My Documents/Inspection_7_8.rtf";
  EXPECT_EQ(Out({"report", "1001", "--layout", "4 Column"}), target.string() + "\n");
  const std::string content = tests::ContentOf(target);
  EXPECT_THAT(content, ::testing::StartsWith("{\\rtf1"));
  const tests::CliRun again = Cli({"report", "1001", "--layout", "3 Column"});
  EXPECT_EQ(again.exit, 1);
  EXPECT_EQ(again.out, "");
  EXPECT_THAT(again.err, HasSubstr("already exists"));
  EXPECT_EQ(tests::ContentOf(target), content);
  EXPECT_EQ(Cli({"report", "1001", "--layout", "3 Column", "--yes"}).exit, 0);
  EXPECT_NE(tests::ContentOf(target), content);
}

TEST_F(InspectionCommandsTest, ReportIsOfTheKindThatIsAskedFor) {
  Out({"new", "--type", "House"});
  const std::string target = m_Device.Root() / "other.rtf";
  const auto report = [&](std::vector<std::string> words) {
    words.insert(words.begin(), {"report", "1001", "--out", target});
    return Cli(std::move(words));
  };
  for (const std::string layout :
       {"4 Column", "3 Column", "2 Column", "2 Column French", "Full Narrative", "1 Column"})
    EXPECT_EQ(report({"--layout", layout}).out, target + "\n");
  for (const std::string kind : {"summary", "major-systems"})
    EXPECT_EQ(report({"--kind", kind}).out, target + "\n");
  EXPECT_THAT(tests::ContentOf(target), HasSubstr("SUMMARY REPORT"));
  EXPECT_EQ(report({"--layout", "5 Column"}).exit, 2);
  EXPECT_EQ(report({"--kind", "poem"}).exit, 2);
  EXPECT_EQ(Cli({"report", "4711", "--layout", "4 Column"}).exit, 1);
  for (const auto& [place, says] : {std::pair{target + "/below", "other.rtf"},
                                    {m_Device.Root().string(), "Give the file a name in that folder"}}) {
    const tests::CliRun refused = Cli({"report", "1001", "--layout", "4 Column", "--out", place});
    EXPECT_EQ(refused.exit, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err, HasSubstr(says));
  }
}

TEST_F(InspectionCommandsTest, ReportSkipsCategoriesByTitleOrKey) {
  Out({"new", "--type", "House"});
  Cli({"--yes", "defaults", "1001"});
  m_Device.Visits().Run("UPDATE Step SET Comments = 'Seen.'");
  const std::string target = m_Device.Root() / "other.rtf";
  const std::string cellar =
      m_Device.Visits().Ask("SELECT CategoryID FROM Category WHERE CategoryTitle = 'Cellar'");
  const auto holds = [&](std::vector<std::string> skipped) {
    skipped.insert(skipped.begin(), {"report", "1001", "--layout", "1 Column", "--out", target});
    Out(std::move(skipped));
    const std::string report = tests::ContentOf(target);
    return std::pair(report.find("Gutters") != std::string::npos, report.find("Sump") != std::string::npos);
  };
  EXPECT_EQ(holds({}), std::pair(true, true));
  EXPECT_EQ(holds({"--skip", "Attic", cellar}), std::pair(true, false));
  EXPECT_EQ(holds({"--skip", "Roof", "--skip", cellar}), std::pair(false, false));
  const tests::CliRun unknown =
      Cli({"report", "1001", "--layout", "1 Column", "--out", target, "--skip", "roof"});
  EXPECT_EQ(unknown.exit, 1);
  EXPECT_THAT(unknown.err, HasSubstr("There is no category \"roof\""));
}

}  // namespace
}  // namespace inspector::cli
