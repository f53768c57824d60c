// The application with somebody at its screen who types comments and goes from step to step without a rest.
//
//   inspector_typist --home DIR SEED
//
// Each letter (by its number) is a line on standard output, as soon as it stands in the comment of a step,
// with the time in milliseconds: TIME STEP LETTER.
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <random>

#include "app/MainFrame.h"
#include "app/Program.h"
#include "editing/StepList.h"
#include "editing/ui/CategoryView.h"
#include "editing/ui/StepListView.h"
#include "editing/ui/StepPropertySheet.h"
#include "inspection/ui/InspectionOverviewView.h"

namespace inspector::tests {
namespace {

constexpr int kBetweenDeeds = 10;  // milliseconds

void Tell(std::int32_t step, char letter) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const std::string line =
      std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()) + ' ' +
      std::to_string(step) + ' ' + std::to_string(letter) + '\n';
  if (write(STDOUT_FILENO, line.data(), line.size()) < 0) std::abort();
}

class Typist {
public:
  explicit Typist(unsigned seed) : m_Random(seed) { ActSoon(); }

private:
  // A new timer each time: the sheet's own loop runs inside the deed that opened it.
  void ActSoon() {
    QTimer::singleShot(kBetweenDeeds, [this] { Act(); });
  }
  bool Chance(int percent) { return std::uniform_int_distribution(0, 99)(m_Random) < percent; }

  void Act() {
    ActSoon();
    if (!m_Frame) return Begin();
    if (auto* sheet = dynamic_cast<editing::ui::CStepPropertySheet*>(QApplication::activeModalWidget()))
      return ActOn(*sheet);
    m_Step = 0;
    if (auto* steps = dynamic_cast<editing::ui::CStepListView*>(m_Frame->CurrentScreen()))
      return ActOn(*steps);
    if (auto* categories = dynamic_cast<editing::ui::CCategoryView*>(m_Frame->CurrentScreen()))
      return ActOn(*categories);
    if (auto* rows =
            m_Frame->CurrentScreen()->findChild<device::ui::ListView*>(QStringLiteral("inspectionList"))) {
      rows->SelectRow(rows->Model().rowCount() - 1);
      m_Frame->findChild<QAction*>(QStringLiteral("open"))->trigger();
    }
    m_Frame->Bring(m_Frame->Visit().Categories());
  }

  void Begin() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* frame = dynamic_cast<app::CMainFrame*>(window); frame && frame->isVisible()) m_Frame = frame;
  }

  void ActOn(editing::ui::CCategoryView& categories) { Open(categories.Rows(), 1); }
  void ActOn(editing::ui::CStepListView& steps) {
    if (!Chance(30) && steps.Rows().Model().rowCount() > 0)
      return Open(steps.Rows(), editing::StepList::kComments);
    m_Frame->GoBack();
  }
  void Open(device::ui::ListView& rows, int column) {
    const int row = std::uniform_int_distribution(0, rows.Model().rowCount() - 1)(m_Random);
    const QModelIndex cell = rows.Model().index(row, column);
    rows.scrollTo(cell);
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, rows.visualRect(cell).center());
  }

  void ActOn(editing::ui::CStepPropertySheet& sheet) {
    auto& box = *sheet.findChild<QPlainTextEdit*>(QStringLiteral("commentBox"));
    if (m_Step != sheet.Logic().StepID()) {
      m_Step = sheet.Logic().StepID();
      box.moveCursor(QTextCursor::End);
    } else if (Chance(2)) {
      auto* const next = sheet.findChild<QAbstractButton*>(QStringLiteral("nextButton"));
      QTest::mouseClick(next, Qt::LeftButton);
    } else if (Chance(1)) {
      sheet.reject();
    } else {
      const char letter = static_cast<char>('0' + m_Letter++ % 10);
      QTest::keyClick(&box, letter);
      Tell(m_Step, letter);
    }
  }

  std::mt19937 m_Random;
  app::CMainFrame* m_Frame = nullptr;
  std::int32_t m_Step = 0;  // that the sheet showed last
  int m_Letter = 0;
};

}  // namespace
}  // namespace inspector::tests

int main(int count, char** words) {
  if (count != 4) return 2;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(count, words);
  QApplication::setApplicationName(QStringLiteral("Inspector"));
  const inspector::tests::Typist typist(static_cast<unsigned>(std::atoi(words[3])));
  return inspector::app::RunProgram(application, {words[2]});
}
