#include "CommandLineFixture.h"
#include "data/OptionFields.h"

namespace inspector::cli {
namespace {

using SettingCommandsTest = CommandLineTest;

// What is shown can be typed again.
TEST_F(SettingCommandsTest, OptionsAreReadBackAsTheyWereSet) {
  const std::vector<std::string> settings = {"StepSpacing=1",
                                             "ReportFontName=Arial",
                                             "ReportFontSize=10",
                                             "HideRatings=TRUE",
                                             "ColumnWidth2=1.25",
                                             "NextPictNumber=15",
                                             "InspectorEntry=Marguerite Osgood; No. = 4417",
                                             "FinePrint=one\r\ntwo",
                                             "FooterText=",
                                             "DefaultPath=\\My Documents\\"};
  std::string typed = "options Pswrd=secret";
  for (const std::string& setting : settings) typed += " '" + setting + "'";
  EXPECT_EQ(Out(typed), "");
  const std::string all = Out("options");
  for (const std::string& setting : settings) {
    EXPECT_EQ(Out("options " + setting.substr(0, setting.find('='))), setting + "\n");
    EXPECT_THAT(all, HasSubstr(setting + "\n"));
  }
  for (const Text& name : data::OptionNames()) EXPECT_THAT(all, HasSubstr(ToUtf8(name) + "="));
  EXPECT_THAT(all, HasSubstr("Pswrd=(set)\n")) << "a password is not shown among all";
  EXPECT_EQ(Out("options stepspacing=2 hideratings=no StepSpacing HideRatings"),
            "StepSpacing=2\nHideRatings=FALSE\n");
}

TEST_F(SettingCommandsTest, WrongOptionsChangeNothing) {
  for (const std::string wrong : {"Walk=1", "StepSpacing=many", "HideRatings=perhaps", "ColumnWidth1=-1",
                                  "Walk", "dataversion=4.0", "OptionsID=7"})
    ExpectRefused(2, "options ReportFontName=Wrong " + wrong);
  EXPECT_EQ(Out("options ReportFontName").find("Wrong"), std::string::npos);
  ExpectDone("options StepSpacing=7", "it was set to 2");
  EXPECT_EQ(Out("options StepSpacing"), "StepSpacing=2\n");
}

TEST_F(SettingCommandsTest, OwnerIsReadBackAsItWasSet) {
  EXPECT_EQ(Out("owner"), "name=\ncompany=\naddress=\nphone=\n");
  Out("owner 'name=Zoë = Osgood' company=Oak 'address=27 Mill Road\nSuite 3' phone=1;2");
  EXPECT_EQ(Out("owner"), "name=Zoë = Osgood\ncompany=Oak\naddress=27 Mill Road\r\nSuite 3\nphone=1;2\n");
  Out("owner 'address=27 Mill Road\r\nSuite 4' company=");
  EXPECT_EQ(Out("owner ADDRESS company"), "address=27 Mill Road\r\nSuite 4\ncompany=\n");
  ExpectRefused(1, "owner name=" + std::string(36, 'x'));
  ExpectRefused(2, "owner company=New colour=red");
  EXPECT_EQ(Out("owner name company"), "name=Zoë = Osgood\ncompany=\n");
}

}  // namespace
}  // namespace inspector::cli
