#include "tools/ScreenAudit.h"

#include <QDialog>
#include <QPushButton>
#include <QScrollArea>
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

// What is looked for is found: a window with every fault.
TEST(ScreenAuditTest, FindsWhatIsWrong) {
  QDialog dialog;
  dialog.setFixedSize(300, 200);
  const auto place = [&dialog](QWidget* widget, const char* name, const QRect& rect) {
    widget->setParent(&dialog);
    widget->setObjectName(QLatin1String(name));
    widget->setGeometry(rect);
    return widget;
  };
  place(new QLineEdit, "nameless", {0, 60, 100, 48});
  place(new QPushButton(QStringLiteral("OK")), "above", {0, 0, 100, 48});
  place(new QPushButton(QStringLiteral("Far too many words")), "cut", {100, 60, 60, 48});
  place(new QPushButton(QStringLiteral("x")), "small", {100, 120, 32, 48});
  place(new QPushButton(QStringLiteral("y")), "outside", {280, 120, 60, 48});
  auto* area = static_cast<QScrollArea*>(place(new QScrollArea, "wide", {0, 170, 100, 30}));
  auto* words = new QLabel(QStringLiteral("Words that are wider than the area which they are in"));
  area->setWidget(words);
  area->setFocusPolicy(Qt::NoFocus);
  dialog.show();
  QApplication::processEvents();
  std::vector<std::string> found;
  for (const std::string& fault : ScreenAudit(dialog, {250, 800}).Faults())
    found.push_back(fault.substr(0, fault.find_first_of(":\"0123456789")));
  EXPECT_THAT(found,
              UnorderedElementsAre("QDialog  is larger than the screen", "QLineEdit nameless has no name",
                                   "QPushButton above comes after nameless, which lies behind it",
                                   "QPushButton cut cuts ", "QPushButton small is too small a target",
                                   "QPushButton outside lies outside of its surroundings by ",
                                   "QScrollArea wide must be scrolled sideways by "));
}

}  // namespace
}  // namespace inspector::tools
