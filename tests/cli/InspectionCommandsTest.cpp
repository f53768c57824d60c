#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

using InspectionCommandsTest = CommandLineTest;

TEST_F(InspectionCommandsTest, TypesAndInspectionsForProgramsAndForPeople) {
  EXPECT_EQ(Out("types --json"),
            "[\n  {\n    \"id\": 1,\n    \"name\": \"House\",\n    \"layout\": \"4 Column\"\n  },\n"
            "  {\n    \"id\": 2,\n    \"name\": \"Condo\",\n    \"layout\": \"3 Column\"\n  }\n]\n");
  EXPECT_EQ(Out("types"), "ID  NAME   LAYOUT\n1   House  4 Column\n2   Condo  3 Column\n");
  Out("set 1000 number=7 'client=Élise \"Bo\"\\\nNoor' 'address=418 Juniper Lane'");
  EXPECT_THAT(Out("list --json"), HasSubstr(R"("client": "Élise \"Bo\"\\\nNoor")"));
  EXPECT_THAT(Json("list")[0], SizeIs(5));
  EXPECT_EQ(Out("list"),
            "ID    NUMBER  CLIENT            ADDRESS           TYPE\n"
            "1000  7       Élise \"Bo\"\\ Noor  418 Juniper Lane\n");
  Out("set 1000 'CLIENT=" + std::string(56, 'x') + "\U0001F3E0 and sons'");
  EXPECT_THAT(Out("list"), HasSubstr(std::string(56, 'x') + "...")) << "no half of a pair";
  EXPECT_EQ(Out("categories 1000 --json"), "[]\n");
}

TEST_F(InspectionCommandsTest, NewPrintsNothingButTheKey) {
  EXPECT_EQ(Out("new"), "1001\n");
  EXPECT_EQ(Out("new number=2 --type House client=a=b general=- notes="), "1002\n");
  EXPECT_EQ(InVisits("SELECT ClientName, InspectionNum, DocType, GeneralInformation FROM "
                     "Inspection WHERE InspectionID = 1002"),
            "a=b|2|House|-Seen from the ground.  Built in 1968.");
  ExpectRefused(1, "new --type Castle", "no inspection type Castle");
  ExpectRefused(1, "new --type ''", "no inspection type");
  ExpectRefused(2, "new colour=red", "\"fields\" lists");
  ExpectRefused(2, "new client", "\"fields\" lists");
  ExpectRefused(2, "new date=2026-02-30", "2026-05-31 14:05");
  EXPECT_EQ(RowCounts(), u"Inspection 3, Category 5, Step 0, Field 0");
}

TEST_F(InspectionCommandsTest, SetWritesAllFieldsOrNone) {
  const std::vector<std::string> names = {
      "number", "client",       "phone",   "address", "citystatezip", "clientaddress", "clientcitystatezip",
      "agent",  "listingagent", "company", "general", "notes"};
  const std::string fields = Out("fields");
  EXPECT_THAT(fields, HasSubstr("date "));
  std::string typed = "set 1000 'date=2026-05-31 14:05'";
  std::string expected = "2026-05-31T14:05:00";
  for (const std::string& name : names) {
    EXPECT_THAT(fields, HasSubstr(name + " "));
    typed += " " + name + "=the-" + name;
    expected += "|the-" + name;
  }
  Out(typed);
  ExpectRefused(2, "set 1000 client=New colour=red");
  ExpectRefused(2, "set 1000 client=New date=soon");
  ExpectRefused(2, "set 1000");
  ExpectRefused(1, "set 4711 client=New");
  EXPECT_EQ(InVisits("SELECT InspectionDate, InspectionNum, ClientName, ClientPhone, DwellingAddress, "
                     "CityStateZip, ClientAddress, ClientCityStateZip, ClientAgent, ListingAgent, "
                     "RealEstateCompany, GeneralInformation, PrivateNotes FROM Inspection"),
            expected);
  Out("set 1000 date= client= phone=-5");
  EXPECT_EQ(InVisits("SELECT InspectionDate, ClientName, ClientPhone FROM Inspection"), "NULL||-5");
}

TEST_F(InspectionCommandsTest, WhatCannotBeTakenBackAsksAndTakesYesForAnAnswer) {
  ExpectRefused(1, "apply-type 1000 ''", "An empty name is no inspection type. \"types\" shows");
  ExpectRefused(1, "make-categories 1000", "has no Doc Type yet");
  Out("apply-type 1000 House");  // the first type without a question
  ExpectRefused(1, "make-categories 1000", "has its categories already");
  Out("steps 1000");
  const std::vector<Text> before = Outline(1000);
  Out("apply-type 1000 House");
  ExpectRefused(1, "apply-type 1000 Castle --yes");
  for (const auto& [typed, behind, asks] :
       {std::tuple{"apply-type ", " Condo", "Data Alert: Warning! Changing the Doc Type"},
        {"defaults ", "", "Caution: "},
        {"delete ", "", "Caution: "}}) {
    const std::string command = typed;
    ExpectRefused(1, command + "1000" + behind, asks);
    ExpectRefused(1, command + "1000" + behind, "--yes");
    ExpectRefused(1, command + "4711" + behind + " --yes");
  }
  EXPECT_EQ(Outline(1000), before);

  ExpectDone("defaults 1000 --yes", "Alert: Done!");
  EXPECT_THAT(Outline(1000), ::testing::Contains(u"  20.2|Gutters|Good|Copper;|"));
  ExpectDone("--yes apply-type 1000 Condo", "Data Alert: ");
  EXPECT_THAT(Outline(1000), ElementsAre(u"70 Kitchen (Incomplete)"));
  ExpectDone("--yes delete 1000", "Warning: Are you sure you want to delete this inspection?");
  EXPECT_EQ(RowCounts(), u"Inspection 1, Category 0, Step 0, Field 0");
}

}  // namespace
}  // namespace inspector::cli
