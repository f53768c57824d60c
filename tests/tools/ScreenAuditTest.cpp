#include "tools/ScreenAudit.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "cli/CommandLine.h"
#include "support/TestSupport.h"
#include "tools/ScreenWalk.h"

namespace inspector::tools {
namespace {

// Where little has room, the rows have it first.
bool ShowsTwoRows(const QWidget& window) {
  const QList<QTableView*> lists = window.findChildren<QTableView*>();
  return std::all_of(lists.begin(), lists.end(), [](const QTableView* list) {
    return !list->isVisible() || list->model()->rowCount() < 2 ||
           list->visualRect(list->model()->index(1, 0)).bottom() < list->viewport()->height();
  });
}

TEST(ScreenAuditTest, EveryWindowCanBeHeardTouchedReadAndTabbedThrough) {
  const TemporaryFolder home;
  std::ostringstream out;
  std::ostringstream problems;
  ASSERT_EQ(cli::RunCommandLine({"--home", home.Path(), "init", "--sample"}, out, problems), 0)
      << problems.str();
  constexpr ScreenSetting kSettings[] = {{"480x800", {480, 800}},
                                         {"1280x800", {1280, 800}},
                                         {"480x800 with text at 200 %", {480, 800}, {{}, 200}},
                                         {"320x400 with text at 200 %", {320, 400}, {{}, 200}}};
  std::set<std::string> seen;
  const auto look = [&seen](QWidget& window, const std::string& name, const ScreenSetting& setting) {
    seen.insert(name);
    if (setting.size.height() < 800) {
      // A comment under review is as long as it is.
      EXPECT_TRUE(name == "review" || ShowsTwoRows(window)) << name << ", " << setting.name;
      // On a handheld that is held either way.
      const QSize least = window.minimumSizeHint();
      EXPECT_TRUE(!name.starts_with("report") || QSize(480, 480).boundedTo(least) == least) << name;
      return;
    }
    EXPECT_THAT(ScreenAudit(window, setting.size).Faults(), IsEmpty()) << name << ", " << setting.name;
  };
  ASSERT_TRUE(WalkScreens(home.Path(), kSettings, look));
  EXPECT_THAT(seen, IsSupersetOf({"inspections", "header", "categories", "steps", "form", "step-4", "review",
                                  "comment-picker", "pickers", "shortcuts", "report", "report-categories",
                                  "save", "question", "about", "progress", "menu-go"}));
}

}  // namespace
}  // namespace inspector::tools
