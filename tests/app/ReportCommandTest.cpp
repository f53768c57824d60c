#include "app/ReportCommand.h"

#include "device/ui/ListView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

class ReportCommandTest : public VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    for (const auto* category : {u"Roof", u"Safety", u"Cellar"}) m_Device.OpenCategory(category);
    m_Device.RunInVisits(
        "UPDATE Step SET Comments = 'Seen.'; UPDATE Category SET NotPresentFlag = 1 WHERE CategoryTitle = "
        "'Safety'");
  }
  static void ChooseKind(QDialog& dialog, const char* kind) {
    Choose(Part<QComboBox>(dialog, "reportKind"), kind);
  }
  // In the dialog: the kind, where to, and what else `act` does. Then the report is written.
  Text Write(
      const char* kind, const std::string& target, const QString& button,
      const std::function<void(QDialog&)>& act = [](QDialog&) {}) {
    m_Person.Expect("reportDialog", [=, this](QDialog& dialog) {
      ChooseKind(dialog, kind);
      if (!target.empty()) Fill(dialog, "reportTarget", m_Device.Root() / target);
      act(dialog);
      m_Person.ExpectPress("reportWritten", button);
      dialog.accept();
    });
    return WriteReport(Document(), m_Window, [this](const std::filesystem::path& file) {
      m_Opened.push_back(file);
      return m_HasPrograms;
    });
  }
  // Nothing is written; `act` looks at the dialog.
  void Look(const std::function<void(QDialog&)>& act) {
    m_Person.Expect("reportDialog", [act](QDialog& dialog) {
      act(dialog);
      dialog.reject();
    });
    EXPECT_EQ(WriteReport(Document(), m_Window), u"");
  }

  QWidget m_Window;
  ScriptedDialogs m_Person;
  std::vector<std::filesystem::path> m_Opened;
  bool m_HasPrograms = true;
};

TEST_F(ReportCommandTest, HoldsWhatWasChosenAndRemembersIt) {
  Write("Inspection report", "report.rtf", QStringLiteral("Show in folder"), [this](QDialog& dialog) {
    m_Person.ExpectPress("selectCategoriesPage", QStringLiteral("Cancel"));
    PressButton(dialog, "reportCategories");
    m_Person.Expect("selectCategoriesPage", [](QDialog& page) {
      EXPECT_EQ(Words(page, "caption"), "4 of 4 categories go into the report");
      PressButton(page, "noneButton");
      // Of Attic, Roof, Safety, Cellar, Checklist: what is not present cannot be chosen.
      for (const int row : {1, 2}) Part<device::ui::ListView>(page, "categories").onClick(row, 0);
      EXPECT_EQ(Words(page, "caption"), "1 of 4 categories go into the report");
      page.accept();
    });
    PressButton(dialog, "reportCategories");
    EXPECT_EQ(Words(dialog, "reportCategories"), "&Categories: 1 of 4...");
    Choose(Part<QComboBox>(dialog, "reportLayout"), "1 Column");
    EXPECT_FALSE(Part<QComboBox>(dialog, "reportRating").isEnabled());
    Part<QCheckBox>(dialog, "reportPictures").click();
  });
  EXPECT_THAT(m_Opened, ElementsAre(m_Device.Root()));
  const std::string report = ContentOf(m_Device.Root() / "report.rtf");
  EXPECT_THAT(report, HasSubstr("Shingles"));
  for (const char* leftOut : {"Alarms", "Sump"}) EXPECT_THAT(report, Not(HasSubstr(leftOut)));
  Look([](QDialog& dialog) {
    EXPECT_EQ(Part<QComboBox>(dialog, "reportLayout").currentText(), QStringLiteral("1 Column"));
    EXPECT_FALSE(Part<QCheckBox>(dialog, "reportPictures").isChecked());
    EXPECT_EQ(Words(dialog, "reportCategories"), "&Categories: 4 of 4...")
        << "what was left out is forgotten";
  });
}

TEST_F(ReportCommandTest, WhatIsOpenedIsWhatCanBeRead) {
  m_Device.Put("report.html", "of last week");
  Look([this](QDialog& dialog) {
    ChooseKind(dialog, "Web page in one file");
    Fill(dialog, "reportTarget", m_Device.Root() / "report.html");
    Prompts().Queue(u"Caution", Answer::No);
    dialog.accept();
  });
  EXPECT_EQ(ContentOf(m_Device.Root() / "report.html"), "of last week");
  Prompts().Queue(u"Caution", Answer::Yes);
  Write("Web page in one file", "report.html", QStringLiteral("Open"));
  Write("Web pages in a folder", "pages", QStringLiteral("Open"));
  Write("Web pages on the device", "", QStringLiteral("Open"));
  m_HasPrograms = false;
  Write("Plain text", "report.txt", QStringLiteral("Open"));
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"has no program that opens"));
  ASSERT_EQ(m_Opened.size(), 4u);
  EXPECT_EQ(m_Opened[0], m_Device.Root() / "report.html");
  EXPECT_EQ(m_Opened[1], m_Device.Root() / "pages/index.htm");
  // A copy, whose frames name what lies beside them.
  EXPECT_THAT(ContentOf(m_Opened[2]), HasSubstr("src=\"toc.htm\""));
  EXPECT_THAT(ContentOf(m_Device.Root() / "Program Files/Brindlecove/index.htm"),
              HasSubstr("src=\"file:///Program Files\\Brindlecove\\toc.htm\""));
  EXPECT_THAT(ContentOf(m_Opened[2].parent_path() / "inspection.htm"), HasSubstr("Shingles"));
}

TEST_F(ReportCommandTest, ANameKeepsItsPlaceThroughEveryKind) {
  Look([this](QDialog& dialog) {
    const auto nameAs = [&](const char* kind) {
      ChooseKind(dialog, kind);
      return Words(dialog, "reportTarget");
    };
    nameAs("Inspection report");
    Fill(dialog, "reportTarget", "sub/Elm St. 12.rtf");
    EXPECT_EQ(nameAs("Plain text"), "sub/Elm St. 12.txt");
    EXPECT_THAT(nameAs("Web pages in a folder"), Not(HasSubstr("Elm")));
    EXPECT_EQ(nameAs("Web page in one file"), "sub/Elm St. 12.html");
    Prompts().QueueSavePath(std::nullopt);
    PressButton(dialog, "reportBrowse");
    EXPECT_EQ(Prompts().SaveQuestions().back().folder,
              FromUtf8((m_Device.Root() / "My Documents/sub/").native()))
        << "where it would be written";
  });
}

}  // namespace
}  // namespace inspector::app
