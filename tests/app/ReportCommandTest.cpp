#include "app/ReportCommand.h"

#include <gmock/gmock.h>

#include <QDialog>
#include <QLabel>

#include "device/ui/ListView.h"
#include "support/ScriptedDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using ReportCommandTest = tests::VisitTest;
using ::testing::HasSubstr;
using ::testing::Not;

TEST_F(ReportCommandTest, HoldsTheCategoriesThatWereChosenAndNothingElseIsAsked) {
  m_Device.Visit(u"House");
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Safety");
  m_Device.OpenCategory(u"Cellar");
  m_Device.RunInVisits(
      "UPDATE Step SET Comments = 'Seen.'; UPDATE Category SET NotPresentFlag = 1 WHERE CategoryTitle = "
      "'Safety'");
  QWidget window;
  tests::ScriptedDialogs person;
  const auto rows = [](QDialog & page) -> auto& {
    return *static_cast<device::ui::ListView*>(page.findChild<QTableView*>(QStringLiteral("categories")));
  };
  person.ExpectPress("selectCategoriesPage", QStringLiteral("Cancel"));
  EXPECT_EQ(WriteReport(Document(), window), u"");
  person.Expect("selectCategoriesPage", [&](QDialog& page) {
    const auto caption = [&] {
      return page.findChild<QLabel*>(QStringLiteral("caption"))->text().toStdString();
    };
    EXPECT_EQ(caption(), "4 of 4 categories go into the report");
    tests::PressButton(page, "noneButton");
    rows(page).onClick(1, 0);  // Attic, Roof, Safety, Cellar, Checklist
    rows(page).onClick(2, 0);
    EXPECT_EQ(caption(), "1 of 4 categories go into the report") << "what is not present cannot be chosen";
    page.accept();
  });
  person.Expect("choiceDialog", [](QDialog& dialog) {
    static_cast<device::ui::ListView*>(dialog.findChild<QTableView*>(QStringLiteral("choiceList")))
        ->SelectRow(0);
    dialog.accept();
  });
  const std::filesystem::path target = m_Device.Root() / "report.rtf";
  Prompts().QueueSavePath(target);
  EXPECT_EQ(WriteReport(Document(), window), device::FromUtf8(target.string()));
  const std::string report = tests::ContentOf(target);
  EXPECT_THAT(report, HasSubstr("Shingles"));
  EXPECT_THAT(report, Not(HasSubstr("Alarms")));
  EXPECT_THAT(report, Not(HasSubstr("Sump")));
}

}  // namespace
}  // namespace inspector::app
