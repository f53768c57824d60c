// What a tap and a keystroke cost with more inspections, categories, steps and comments than anybody has:
// the processor time of the window's thread until everything is painted, without the waiting for the disk;
// and the syncs, those that an action waits for and those that come of it later.
#include <sys/syscall.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <vector>

#include "ScaleData.h"
#include "ScreenRun.h"
#include "editing/StepList.h"

namespace {

std::atomic<int> syncs = 0;       // that an action waits for
std::atomic<int> laterSyncs = 0;  // that timers make while one is measured
bool isMeasuring = false;
int timersWorking = 0;

void CountSync() {
  ++(timersWorking > 0 ? laterSyncs : syncs);
}

}  // namespace

// In place of the library's: whatever this process syncs, through SQLite or by itself, comes by here.
extern "C" int fsync(int descriptor) {
  CountSync();
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}
extern "C" int fdatasync(int descriptor) {
  CountSync();
  return static_cast<int>(syscall(SYS_fdatasync, descriptor));
}

namespace inspector::bench {
namespace {

using editing::StepList;

constexpr double kAllowedAction = 50;  // milliseconds
constexpr double kAllowedKeystroke = 16;
constexpr int kAllowedSyncs = 1;
constexpr int kRounds = 5;
constexpr int kTicks = 40;
constexpr int kMoves = kStepsInCategory - 1;
constexpr int kTitle = 1;        // column of the category list
constexpr int kPainting = 12;    // milliseconds: the toolkit paints five after it was asked to
constexpr int kFollowUp = 2500;  // milliseconds, after which nothing more comes of an action
constexpr QSize kTablet(1280, 800);

double ThreadMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// One kind of action: what each took.
class Meter {
public:
  Meter(std::string what, double allowed) : m_What(std::move(what)), m_Allowed(allowed) {}

  // Between the two lies the action, with what it opens.
  void Begin() {
    isMeasuring = true;
    m_SyncsBefore = syncs;
    m_LaterBefore = laterSyncs;
    m_Before = ThreadMilliseconds();
  }
  void End(int wait = kPainting) {
    Wait(wait);
    m_Times.push_back(ThreadMilliseconds() - m_Before);
    m_Syncs.push_back(syncs - m_SyncsBefore);
    m_Later = std::max(m_Later, laterSyncs - m_LaterBefore);
    isMeasuring = false;
  }
  template <typename Action>
  void Take(const Action& action) {
    Begin();
    action();
    End();
  }
  // With everything that comes of it later.
  template <typename Action>
  void TakeToTheEnd(const Action& action) {
    Begin();
    action();
    End(kFollowUp);
  }

  // The limit of time holds for the slowest of them.
  bool Print() const {
    std::vector<double> times = m_Times;
    std::sort(times.begin(), times.end());
    const int most = *std::max_element(m_Syncs.begin(), m_Syncs.end());
    const auto more =
        std::count_if(m_Syncs.begin(), m_Syncs.end(), [this](int each) { return each > kAllowedSyncs; });
    const bool allowed = times.back() < m_Allowed && more == 0;
    std::printf("%-44s %3zu times, %5.2f ms, at most %5.2f ms (under %2.0f); %d syncs at most (%d)",
                m_What.c_str(), times.size(), times[times.size() / 2], times.back(), m_Allowed, most,
                kAllowedSyncs);
    if (more > 0) std::printf(", more than that %d times", static_cast<int>(more));
    if (m_Later > 0) std::printf(", %d by a timer", m_Later);
    std::printf("%s\n", allowed ? "" : "  TOO MUCH");
    std::fflush(stdout);
    return allowed;
  }

private:
  std::string m_What;
  double m_Allowed;
  double m_Before = 0;
  int m_SyncsBefore = 0;
  std::vector<double> m_Times;
  std::vector<int> m_Syncs;
  int m_LaterBefore = 0;
  int m_Later = 0;
};

class Person {
public:
  Person(app::CMainFrame& frame, const Tablet& tablet) : m_Frame(frame), m_Tablet(tablet) {}

  void DoEverything() {
    m_Frame.resize(kTablet);
    OpenLargeVisit(m_Frame);
    GoThroughCategories();
    MakeStepsOfCategories();
    RateInList();
    GoThroughSteps();
    TickMaterials();
    for (const int comments : {kComments, kManyComments}) FindComments(comments);
    WriteComment("10 KiB", 0);
    WriteComment("10 KiB and 5 pictures", 5);
  }
  bool IsAllowed() const { return m_IsAllowed; }

private:
  void Print(const Meter& meter) { m_IsAllowed = meter.Print() && m_IsAllowed; }
  void BackToCategories() { Part<QAbstractButton>(m_Frame, "backButton").click(); }

  void GoThroughCategories() {
    Meter open("Opening a category", kAllowedAction);
    Meter back("Back to the categories", kAllowedAction);
    for (int row = 0; row < kCategories - kUnopenedCategories; ++row) {
      open.Take([&] { ClickCell(Rows(m_Frame), row, kTitle); });
      MustBe(Rows(m_Frame).Model().rowCount() == kStepsInCategory, "opening a category");
      back.Take([&] { BackToCategories(); });
    }
    open.TakeToTheEnd([&] { ClickCell(Rows(m_Frame), 0, kTitle); });
    back.TakeToTheEnd([&] { BackToCategories(); });
    Print(open);
    Print(back);
  }

  void MakeStepsOfCategories() {
    Meter change("The first change of a run", kAllowedAction);
    Meter first("Opening a category for the first time", kAllowedAction);
    for (int row = kCategories - kUnopenedCategories; row < kCategories; ++row) {
      const auto action = [&] { ClickCell(Rows(m_Frame), row, kTitle); };
      (row == kCategories - kUnopenedCategories ? change : first).Take(action);
      MustBe(Rows(m_Frame).Model().rowCount() == kStepsInCategory, "making the steps of a category");
      BackToCategories();
    }
    Print(change);
    Print(first);
    ClickCell(Rows(m_Frame), 0, kTitle);
    QApplication::processEvents();
  }

  void Rate(int row, const char* rating) {
    ClickCell(Rows(m_Frame), row, StepList::kRating);
    auto& menu = Part<QMenu>(*m_Frame.CurrentScreen(), "ratingMenu");
    for (QAction* entry : menu.actions())
      if (entry->text() == QLatin1String(rating)) entry->trigger();
    menu.close();
    delete &menu;
  }

  void RateInList() {
    Meter rate("Rating in the list", kAllowedAction);
    for (int row = 0; row < kStepsInCategory; ++row)
      rate.Take([&] { Rate(row, row % 2 == 0 ? "Lacks Maintenance" : "Marginal"); });
    rate.TakeToTheEnd([&] { Rate(0, "Functional"); });
    Print(rate);
    MustBe(Rows(m_Frame).Model().index(0, StepList::kRating).data() == QStringLiteral("Functional"),
           "rating");
  }

  void InSheet(StepList::Column page, const std::function<void(QDialog&)>& inside) {
    InDialog([&] { ClickCell(Rows(m_Frame), 0, page); }, inside);
    QApplication::processEvents();
  }

  void GoThroughSteps() {
    Meter open("Opening a step", kAllowedAction);
    for (int round = 0; round < kRounds; ++round) {
      open.Begin();
      InSheet(StepList::kComments, [&](QDialog&) { open.End(); });
    }
    Print(open);
    for (const auto& [page, what] : {std::pair{StepList::kMaterials, "From step to step, materials"},
                                     std::pair{StepList::kComments, "From step to step, comments"}}) {
      Meter move(what, kAllowedAction);
      InSheet(page, [&](QDialog& sheet) {
        for (int n = 0; n < kMoves; ++n)
          move.Take([&] { Part<QAbstractButton>(sheet, "nextButton").click(); });
      });
      Print(move);
    }
    Meter changed("From step to step, the comment changed", kAllowedAction);
    InSheet(StepList::kComments, [&](QDialog& sheet) {
      for (int n = 0; n < kMoves; ++n) {
        Type(Part<QPlainTextEdit>(sheet, "commentBox"), u'x');
        changed.Take([&] { Part<QAbstractButton>(sheet, "nextButton").click(); });
      }
    });
    Print(changed);
    Meter rate("Rating in the sheet", kAllowedAction);
    InSheet(StepList::kComments, [&](QDialog& sheet) {
      auto& rating = Part<QComboBox>(sheet, "rating");
      for (int n = 0; n < kTicks; ++n)
        rate.Take([&] {
          rating.setFocus();
          Press(rating, Qt::Key_Down);  // opens the list
          Press(*rating.view(), n % 2 == 0 ? Qt::Key_Down : Qt::Key_Up);
          Press(*rating.view(), Qt::Key_Return);
        });
      MustBe(rating.currentIndex() >= 0, "rating in the sheet");
    });
    Print(rate);
  }

  void TickMaterials() {
    Meter tick("Ticking a material", kAllowedAction);
    InSheet(StepList::kMaterials, [&](QDialog& sheet) {
      for (int n = 0; n < kTicks; ++n)
        tick.Take([&] {
          const std::string box = "material" + std::to_string(n % kMaterialsInStep);
          Part<QAbstractButton>(sheet, box.c_str()).click();
        });
      tick.TakeToTheEnd([&] { Part<QAbstractButton>(sheet, "material0").click(); });
    });
    Print(tick);
  }

  // Every key is pressed in each round; the best of its rounds counts for it.
  void FindComments(int count) {
    {
      Engine templates(m_Tablet.TemplateFile());
      AddComments(templates, count);
    }
    const std::string words = std::to_string(count) + " comments";
    Meter keys("Filtering " + words + ", a key", kAllowedAction);
    InSheet(StepList::kComments, [&](QDialog& sheet) {
      InDialog([&] { Part<QAbstractButton>(sheet, "pickerButton").click(); },
               [&](QDialog& picker) {
                 auto& filter = Part<QLineEdit>(picker, "filterField");
                 filter.setFocus();
                 const auto rows = [&] {
                   return Part<QTableView>(picker, "commentList").model()->rowCount();
                 };
                 MustBe(rows() >= count, "the picker with all comments");
                 for (int round = 0; round < kRounds; ++round) {
                   for (const QChar letter : QStringLiteral("chimney slope 12"))
                     keys.Take([&] { Type(filter, letter); });
                   MustBe(rows() > 0 && rows() < count / 4, "the filter");
                   while (!filter.text().isEmpty()) keys.Take([&] { Press(filter, Qt::Key_Backspace); });
                 }
               });
    });
    Print(keys);
  }

  // The words end now and then, so that shortcuts are looked up.
  void WriteComment(const char* what, int pictures) {
    Meter keys(std::string("A key in a comment of ") + what, kAllowedKeystroke);
    Meter pause(std::string("The pause after it, ") + what, kAllowedAction);
    InSheet(StepList::kComments, [&](QDialog& sheet) {
      auto& comment = Part<QPlainTextEdit>(sheet, "commentBox");
      for (int n = 0; n < pictures; ++n)
        comment.appendPlainText(QStringLiteral(" ***Path=\\none%1.jpg;Scaling=50***").arg(n));
      MustBe(comment.toPlainText().size() > kLongComment * 9 / 10, "a long comment");
      comment.setFocus();
      for (const auto& place : {QTextCursor::Start, QTextCursor::End}) {
        comment.moveCursor(place);
        for (int round = 0; round < kRounds; ++round) {
          for (const QChar letter : QStringLiteral("a loose shingle, "))
            keys.Take([&] { Type(comment, letter); });
          for (int n = 0; n < 5; ++n) keys.Take([&] { Press(comment, Qt::Key_Backspace); });
          keys.Take([&] { Press(comment, Qt::Key_Return, QStringLiteral("\r")); });
        }
      }
      pause.TakeToTheEnd([] {});
    });
    Print(keys);
    Print(pause);
  }

  app::CMainFrame& m_Frame;
  const Tablet& m_Tablet;
  bool m_IsAllowed = true;
};

}  // namespace
}  // namespace inspector::bench

int main(int count, char** words) {
  using namespace inspector::bench;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  Tablet tablet;
  FillToScale(tablet);
  tablet.Close();
  WatchedApplication application(count, words);
  // The person of this program is a timer as well, but began before.
  application.onTimer = [](bool begins) {
    static int outside = 0;
    if (begins)
      isMeasuring || timersWorking > 0 ? ++timersWorking : ++outside;
    else
      timersWorking > 0 ? --timersWorking : --outside;
  };
  bool allowed = false;
  RunVisit(application, tablet.Folder(), [&](inspector::app::CMainFrame& frame) {
    Person person(frame, tablet);
    person.DoEverything();
    allowed = person.IsAllowed();
  });
  return allowed ? 0 : 1;
}
