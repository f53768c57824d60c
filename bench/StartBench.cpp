// What a start of the application costs over the toolkit below it: from the start of the process to the end
// of the first paint with 10,000 inspections, against a bare window of the same size. And the most memory
// that a visit takes in which 50 pictures of 12 megapixels are shown one after the other.
//
// Each figure comes from a process of its own, this program started again with another first argument.
#include <sys/wait.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <vector>

#include "ScaleData.h"
#include "ScreenRun.h"
#include "app/Program.h"
#include "device/Format.h"
#include "device/LastPlace.h"
#include "editing/StepList.h"

namespace inspector::bench {
namespace {

constexpr int kRuns = 15;
constexpr double kAllowedRatio = 3;
constexpr long kAllowedMemory = 150 * 1024;  // KiB
constexpr int kPatience = 10'000;            // milliseconds for one picture

double Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

long PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return std::atol(line.c_str() + 6);
  Fail("no VmHWM");
}

// What a process tells of itself.
struct Told {
  double whole = 0;  // milliseconds from its start
  double own = 0;    // the same from the beginning of main
  long memory = 0;   // KiB, at most
};

Told Measure(const std::string& what, const std::string& folder) {
  int ends[2];
  if (pipe(ends) != 0) Fail("no pipe");
  const std::string start = std::to_string(Now());
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    execl("/proc/self/exe", "StartBench", what.c_str(), start.c_str(), folder.c_str(), nullptr);
    _exit(1);
  }
  close(ends[1]);
  Told told;
  FILE* const output = fdopen(ends[0], "r");
  const int read = std::fscanf(output, "%lf %lf %ld", &told.whole, &told.own, &told.memory);
  std::fclose(output);
  int status = 0;
  if (waitpid(child, &status, 0) != child || status != 0 || read != 3) Fail(what + " did not end well");
  return told;
}

void Tell(double start, double main) {
  std::printf("%f %f %ld\n", Now() - start, Now() - main, PeakMemory());
  std::fflush(stdout);
}

int ShowBareWindow(WatchedApplication& application, double start, double main) {
  QMainWindow window;
  window.setCentralWidget(new QLabel(QStringLiteral("Inspector")));
  // As large as the application's window is at its first start.
  window.resize(QSize(1280, 800).boundedTo(window.screen()->availableSize()));
  application.onFirstPaint = [&] {
    Tell(start, main);
    QMetaObject::invokeMethod(&application, &QApplication::quit, Qt::QueuedConnection);
  };
  window.show();
  return QApplication::exec();
}

int StartProgram(WatchedApplication& application, const std::string& folder, double start, double main) {
  application.onFirstPaint = [&] {
    Tell(start, main);
    QMetaObject::invokeMethod(&application, &QApplication::quit, Qt::QueuedConnection);
  };
  return app::RunProgram(application, {folder});
}

// The pictures of this process are soft from left to right; what has one colour, or words in its middle, is
// none.
bool ShowsPicture(const QImage& image) {
  const int row = image.height() / 3;
  return !image.isNull() &&
         image.pixelColor(image.width() * 2 / 5, row) != image.pixelColor(image.width() * 3 / 5, row);
}

template <typename Condition>
void WaitFor(const char* what, const Condition& condition) {
  QElapsedTimer waiting;
  for (waiting.start(); !condition();) {
    if (waiting.elapsed() > kPatience) Fail(std::string(what) + " does not appear");
    Wait(10);
  }
}

void WaitForThumbnails(const QDialog& sheet, int count) {
  auto& strip = Part<QListWidget>(sheet, "commentPictures");
  WaitFor("a thumbnail", [&] {
    int shown = 0;
    for (int n = 0; n < strip.count(); ++n)
      shown += ShowsPicture(strip.item(n)->icon().pixmap(64, 48).toImage()) ? 1 : 0;
    return shown == count;
  });
}

// Step after step: its picture, its thumbnail, then the same file attached to its comment a second time, as
// a copy of the size that reports need.
void LookAtPictures(QDialog& sheet, const std::filesystem::path& folder) {
  auto& pages = Part<QTabWidget>(sheet, "pages");
  auto& comment = Part<QPlainTextEdit>(sheet, "commentBox");
  const auto page = [&](const char* name) { pages.setCurrentWidget(&Part<QWidget>(sheet, name)); };
  for (int n = 0; n < kPictures; ++n) {
    page("picturePage");
    WaitFor("a picture", [&] { return ShowsPicture(Part<QWidget>(sheet, "preview").grab().toImage()); });
    page("commentsPage");
    WaitForThumbnails(sheet, 1);
    auto* const file = new QMimeData;
    file->setUrls({QUrl::fromLocalFile(
        QString::fromStdString((folder / ("p" + std::to_string(n) + ".jpg")).string()))});
    QApplication::clipboard()->setMimeData(file);
    Press(comment, Qt::Key_V, {}, Qt::ControlModifier);
    WaitForThumbnails(sheet, 2);
    Part<QAbstractButton>(sheet, "nextButton").click();
  }
}

int ShowPictures(WatchedApplication& application, const std::string& folder, double start, double main) {
  RunVisit(application, folder, [&](app::CMainFrame& frame) {
    OpenLargeVisit(frame);
    ClickCell(Rows(frame), 0, 1);
    InDialog([&] { ClickCell(Rows(frame), 0, editing::StepList::kPicture); },
             [&](QDialog& sheet) { LookAtPictures(sheet, folder); });
  });
  Tell(start, main);
  return 0;
}

Told Median(std::vector<Told> runs) {
  const auto middle = runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2);
  Told median;
  for (double Told::*const figure : {&Told::whole, &Told::own}) {
    std::nth_element(runs.begin(), middle, runs.end(),
                     [&](const Told& a, const Told& b) { return a.*figure < b.*figure; });
    median.*figure = (*middle).*figure;
  }
  median.memory = std::max_element(runs.begin(), runs.end(), [](const Told& a, const Told& b) {
                    return a.memory < b.memory;
                  })->memory;
  return median;
}

// In turns: what disturbs the machine disturbs both.
bool CompareStarts(const char* what, const std::string& folder) {
  std::vector<Told> bare;
  std::vector<Told> program;
  for (int run = 0; run <= kRuns; ++run) {
    const Told one = Measure("bare", folder);
    const Told other = Measure("start", folder);
    if (run == 0) continue;  // fills the caches of files
    bare.push_back(one);
    program.push_back(other);
  }
  const Told yardstick = Median(bare);
  const Told start = Median(program);
  const double ratio = start.whole / yardstick.whole;
  std::printf("First paint, %s / bare window: %.1f ms / %.1f ms = %.2f (at most %.1f)\n", what, start.whole,
              yardstick.whole, ratio, kAllowedRatio);
  std::printf("  from main: %.1f ms / %.1f ms; memory: %.1f MiB / %.1f MiB\n", start.own, yardstick.own,
              static_cast<double>(start.memory) / 1024, static_cast<double>(yardstick.memory) / 1024);
  return ratio <= kAllowedRatio;
}

void Remember(const std::filesystem::path& folder, const device::LastPlace& place) {
  device::HostFiles files;
  device::Registry registry(files, folder / "registry.toml");
  MustBe(device::WriteLastPlace(registry, place), "the last place");
}

int MeasureAll() {
  bool allowed = true;
  {
    Tablet tablet;
    FillWithHeaders(tablet);
    tablet.Close();
    allowed = CompareStarts("10,000 inspections without steps", tablet.Folder().string()) && allowed;
  }
  Tablet tablet;
  const LargeVisit visit = FillToScale(tablet);
  tablet.Close();
  const std::string folder = tablet.Folder().string();
  allowed = CompareStarts("10,000 inspections with steps", folder) && allowed;
  Remember(folder, {visit.inspectionID, visit.categoryID, -1});
  allowed = CompareStarts("the same, back in a category of 300 steps", folder) && allowed;
  Remember(folder, {});
  AddPictures(tablet, visit);
  const long memory = Measure("pictures", folder).memory;
  std::printf("Most memory with %d pictures: %.1f MiB (at most %ld)\n", kPictures,
              static_cast<double>(memory) / 1024, kAllowedMemory / 1024);
  return allowed && memory <= kAllowedMemory ? 0 : 1;
}

}  // namespace
}  // namespace inspector::bench

int main(int count, char** words) {
  using namespace inspector::bench;
  const double main = Now();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (count < 4) {
    // Pictures are made with the toolkit, but without its windows.
    return MeasureAll();
  }
  const std::string what = words[1];
  const double start = std::atof(words[2]);
  WatchedApplication application(count, words);
  if (what == "bare") return ShowBareWindow(application, start, main);
  if (what == "start") return StartProgram(application, words[3], start, main);
  return ShowPictures(application, words[3], start, main);
}
