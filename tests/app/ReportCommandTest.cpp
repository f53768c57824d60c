#include "app/ReportCommand.h"

#include "device/ui/ListView.h"
#include "device/ui/Theme.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using device::Text;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using tests::Part;

class ReportCommandTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    for (const auto* category : {u"Roof", u"Safety", u"Cellar"}) m_Device.OpenCategory(category);
    m_Device.RunInVisits(
        "UPDATE Step SET Comments = 'Seen.'; UPDATE Category SET NotPresentFlag = 1 WHERE CategoryTitle = "
        "'Safety'");
  }
  // In the dialog: the kind, and what else `act` does. Then the report is written and `button` pressed.
  Text Write(const char* kind, const std::function<void(QDialog&)>& act, const QString& button) {
    m_Person.Expect("reportDialog", [=, this](QDialog& dialog) {
      tests::Choose(Part<QComboBox>(dialog, "reportKind"), kind);
      if (act) act(dialog);
      m_Person.ExpectPress("reportWritten", button);
      dialog.accept();
    });
    return WriteReport(Document(), m_Window, [this](const std::filesystem::path& file) {
      m_Opened.push_back(file);
      return m_HasPrograms;
    });
  }

  QWidget m_Window;
  tests::ScriptedDialogs m_Person;
  std::vector<std::filesystem::path> m_Opened;
  bool m_HasPrograms = true;
};

TEST_F(ReportCommandTest, HoldsWhatWasChosenAndRemembersIt) {
  const auto rows = [](QDialog & page) -> auto& {
    return Part<device::ui::ListView>(page, "categories");
  };
  const std::filesystem::path target = m_Device.Root() / "report.rtf";
  const Text written = Write(
      "Inspection report",
      [&](QDialog& dialog) {
        m_Person.ExpectPress("selectCategoriesPage", QStringLiteral("Cancel"));
        tests::PressButton(dialog, "reportCategories");
        m_Person.Expect("selectCategoriesPage", [&](QDialog& page) {
          const auto caption = [&] { return Part<QLabel>(page, "caption").text().toStdString(); };
          EXPECT_EQ(caption(), "4 of 4 categories go into the report");
          tests::PressButton(page, "noneButton");
          rows(page).onClick(1, 0);  // Attic, Roof, Safety, Cellar, Checklist
          rows(page).onClick(2, 0);
          EXPECT_EQ(caption(), "1 of 4 categories go into the report")
              << "what is not present cannot be chosen";
          page.accept();
        });
        tests::PressButton(dialog, "reportCategories");
        EXPECT_EQ(Part<QPushButton>(dialog, "reportCategories").text(),
                  QStringLiteral("&Categories: 1 of 4..."));
        tests::Choose(Part<QComboBox>(dialog, "reportLayout"), "1 Column");
        EXPECT_FALSE(Part<QComboBox>(dialog, "reportRating").isEnabled());
        Part<QCheckBox>(dialog, "reportPictures").click();
        Part<QLineEdit>(dialog, "reportTarget").setText(QString::fromStdString(target));
      },
      QStringLiteral("Show in folder"));
  EXPECT_EQ(written, device::FromUtf8(target.string()));
  EXPECT_THAT(m_Opened, ElementsAre(m_Device.Root()));
  const std::string report = tests::ContentOf(target);
  EXPECT_THAT(report, HasSubstr("Shingles"));
  EXPECT_THAT(report, Not(HasSubstr("Alarms")));
  EXPECT_THAT(report, Not(HasSubstr("Sump")));

  m_Person.Expect("reportDialog", [](QDialog& dialog) {
    EXPECT_EQ(Part<QComboBox>(dialog, "reportLayout").currentText(), QStringLiteral("1 Column"));
    EXPECT_FALSE(Part<QCheckBox>(dialog, "reportPictures").isChecked());
    EXPECT_EQ(Part<QPushButton>(dialog, "reportCategories").text(), QStringLiteral("&Categories: 4 of 4..."))
        << "what was left out is forgotten";
    dialog.reject();
  });
  EXPECT_EQ(WriteReport(Document(), m_Window), u"");
}

TEST_F(ReportCommandTest, WhatIsOpenedIsWhatCanBeRead) {
  m_Device.Put("report.html");
  Prompts().Queue(u"Caution", device::Answer::Yes);
  const auto at = [this](const char* name) {
    return [=, this](QDialog& dialog) {
      dialog.findChild<QLineEdit*>(QStringLiteral("reportTarget"))
          ->setText(QString::fromStdString(m_Device.Root() / name));
    };
  };
  Write("Web page in one file", at("report.html"), QStringLiteral("Open"));
  Write("Web pages in a folder", at("pages"), QStringLiteral("Open"));
  Write("Web pages on the device", nullptr, QStringLiteral("Open"));
  ASSERT_EQ(m_Opened.size(), 3u);
  EXPECT_EQ(m_Opened[0], m_Device.Root() / "report.html");
  EXPECT_EQ(m_Opened[1], m_Device.Root() / "pages/index.htm");
  // A copy, whose frames name what lies beside them.
  EXPECT_THAT(tests::ContentOf(m_Opened[2]), HasSubstr("src=\"toc.htm\""));
  EXPECT_THAT(tests::ContentOf(m_Device.Root() / "Program Files/Brindlecove/index.htm"),
              HasSubstr("src=\"file:///Program Files\\Brindlecove\\toc.htm\""));
  EXPECT_THAT(tests::ContentOf(m_Opened[2].parent_path() / "inspection.htm"), HasSubstr("Shingles"));

  m_HasPrograms = false;
  Write("Plain text", at("report.txt"), QStringLiteral("Open"));
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"has no program that opens"));
}

TEST_F(ReportCommandTest, ANameKeepsItsPlaceThroughEveryKind) {
  m_Person.Expect("reportDialog", [this](QDialog& dialog) {
    auto& target = Part<QLineEdit>(dialog, "reportTarget");
    const auto nameAs = [&](const char* kind) {
      tests::Choose(Part<QComboBox>(dialog, "reportKind"), kind);
      return target.text().toStdString();
    };
    nameAs("Inspection report");
    target.setText(QStringLiteral("sub/Elm St. 12.rtf"));
    EXPECT_EQ(nameAs("Plain text"), "sub/Elm St. 12.txt");
    EXPECT_THAT(nameAs("Web pages in a folder"), Not(HasSubstr("Elm")));
    EXPECT_EQ(nameAs("Web page in one file"), "sub/Elm St. 12.html");
    Prompts().QueueSavePath(std::nullopt);
    tests::PressButton(dialog, "reportBrowse");
    EXPECT_EQ(Prompts().SaveQuestions().back().folder,
              device::FromUtf8((m_Device.Root() / "My Documents/sub/").native()))
        << "where it would be written";
    dialog.reject();
  });
  EXPECT_EQ(WriteReport(Document(), m_Window), u"");
}

// On a handheld that is held either way.
TEST_F(ReportCommandTest, EverythingCanBeReachedWithLargeText) {
  device::ui::ApplyTheme(*qApp, {device::ui::Colours::Light, 200});
  m_Person.Expect("reportDialog", [this](QDialog& dialog) {
    m_Person.Expect("selectCategoriesPage", [](QDialog& page) {
      EXPECT_LE(page.minimumSizeHint().width(), 480);
      EXPECT_LE(page.minimumSizeHint().height(), 480);
      page.reject();
    });
    tests::PressButton(dialog, "reportCategories");
    EXPECT_LE(dialog.minimumSizeHint().width(), 480);
    EXPECT_LE(dialog.minimumSizeHint().height(), 480);
    dialog.reject();
  });
  EXPECT_EQ(WriteReport(Document(), m_Window), u"");
  device::ui::ApplyTheme(*qApp, {});
}

}  // namespace
}  // namespace inspector::app
