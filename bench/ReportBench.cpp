// What a report full of photographs costs over the disk below it: 20 and 200 pictures of 1 MiB, against
// ready-made hexadecimal of the same size written to the same folder, both synced. And how much memory it
// takes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>

#include "UnattendedPrompts.h"
#include "data/CategoryTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTable.h"
#include "data/StartUp.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "reports/MakeReport.h"

namespace inspector::bench {
namespace {

using device::Text;

constexpr std::size_t kPictureSize = 1024 * 1024;
constexpr int kFewPictures = 20;
constexpr int kManyPictures = 200;
constexpr int kRuns = 7;
constexpr double kAllowedRatio = 1.3;
constexpr long kAllowedMemory = 40 * 1024;  // KiB

// A device on which one inspection has a picture in each of its steps.
class Visit {
public:
  explicit Visit(std::filesystem::path folder) : m_Folder(std::move(folder)) {
    const device::DatabasePaths databases{Text(data::kDefaultTemplatePath),
                                          Text(data::kDefaultInspectionPath)};
    std::filesystem::create_directories(m_Folder / "My Documents");
    Expect(data::CreateFreshDatabase(m_Paths.Resolve(databases.templatePath), data::DatabaseKind::Template,
                                     m_Faults));
    Expect(data::CreateFreshDatabase(m_Paths.Resolve(databases.inspectionPath),
                                     data::DatabaseKind::Inspection, m_Faults));
    m_Workspace = std::make_unique<data::Workspace>(m_Machine, databases);
    Expect(m_Workspace->GetDatabases().Open());
    PutPictures();
    AddInspection(kFewPictures);
    AddInspection(kManyPictures);
  }

  const std::filesystem::path& Folder() const { return m_Folder; }

  // The inspection's id is the number of its pictures.
  void WriteReport(int pictures, const std::filesystem::path& target) {
    const auto outcome =
        reports::MakeReport(*m_Workspace, {pictures, u"inspection", {.layout = u"4 Column"}, target});
    if (outcome.result != reports::ReportResult::Written || !outcome.notes.empty()) std::exit(1);
  }

private:
  static void Expect(const Text& problem) {
    if (problem.empty()) return;
    std::fprintf(stderr, "%s\n", device::ToUtf8(problem).c_str());
    std::exit(1);
  }

  void PutPictures() {
    std::minstd_rand random(1);
    std::string bytes(kPictureSize, '\0');
    for (int i = 0; i < kManyPictures; ++i) {
      for (char& byte : bytes) byte = static_cast<char>(random());
      std::ofstream(m_Folder / ("p" + std::to_string(i) + ".jpg"), std::ios::binary) << bytes;
    }
  }

  void AddInspection(int pictures) {
    data::Transaction transaction(m_Workspace->InspectionConnection());
    data::InspectionTable inspection(m_Workspace->GetDatabases());
    inspection.PrepareNew();
    inspection.m_InspectionID = pictures;
    inspection.m_InspectionNum = u"H-104";
    inspection.Write();
    data::CategoryTable category(m_Workspace->GetDatabases());
    category.PrepareNew();
    category.m_CategoryID = pictures;
    category.m_InspectionID = pictures;
    category.m_CategoryTitle = u"Roof";
    category.Write();
    data::StepTable step(m_Workspace->GetDatabases());
    for (int i = 0; i < pictures; ++i) {
      step.PrepareNew();
      step.m_CategoryID = pictures;
      step.m_StepNumber = device::Decimal(i);
      step.m_StepTitle = u"Flashing, penetrations and chimney";
      step.m_InspectResult = u"Repair";
      step.m_Comments = device::Format(u"The flashing has come loose. ***Path=\\p%d.jpg;Scaling=50***", i);
      step.Write();
    }
    if (!transaction.Commit()) std::exit(1);
  }

  std::filesystem::path m_Folder;
  UnattendedPrompts m_Prompts;
  device::SystemClock m_Clock;
  device::HostFiles m_Files;
  device::DevicePaths m_Paths{m_Folder};
  device::Registry m_Registry{m_Files, m_Folder / "registry.toml"};
  device::FaultLog m_Faults{m_Prompts, m_Clock, m_Folder / "faults.log"};
  device::Machine m_Machine{m_Paths, m_Files, m_Registry, m_Prompts, m_Clock, m_Faults};
  std::unique_ptr<data::Workspace> m_Workspace;
};

class TemporaryFolder {
public:
  TemporaryFolder() {
    // Beside the working folder rather than in a temporary one, which may be memory instead of a disk.
    std::string pattern = std::filesystem::current_path() / "inspector-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::exit(1);
    m_Path = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_Path, ignored);
  }
  const std::filesystem::path& Path() const { return m_Path; }

private:
  std::filesystem::path m_Path;
};

// As plain as a program can do it: the digits are there, the disk takes them.
void WriteHex(const std::filesystem::path& target, std::uintmax_t size) {
  static const std::string digits(kPictureSize, 'f');
  const int descriptor = ::open(target.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0666);
  while (size > 0) {
    const ssize_t count = ::write(descriptor, digits.data(), std::min<std::uintmax_t>(digits.size(), size));
    if (count <= 0) std::exit(1);
    size -= static_cast<std::uintmax_t>(count);
  }
  if (::fsync(descriptor) != 0) std::exit(1);
  ::close(descriptor);
}

template <typename Work>
double Seconds(const Work& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

long PeakMemory() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

bool g_Failed = false;

void Complain(const char* what) {
  std::fprintf(stderr, "Too much: %s\n", what);
  g_Failed = true;
}

// Both in turn, each starting with a synced disk. The best run of each counts: what other programs do
// meanwhile only makes a run longer.
void ReportAgainstHex(benchmark::State& state) {
  const int pictures = static_cast<int>(state.range(0));
  const TemporaryFolder folder;
  Visit visit(folder.Path());
  const auto target = folder.Path() / "report.rtf";
  visit.WriteReport(pictures, target);  // the pictures are in memory from here on, as after taking them
  const std::uintmax_t size = std::filesystem::file_size(target);
  for (auto _ : state) {
    double report = std::numeric_limits<double>::max();
    double hex = report;
    for (int run = 0; run < 2 * kRuns; ++run) {
      std::filesystem::remove(target);
      ::sync();
      if (run % 2 == 0) {
        hex = std::min(hex, Seconds([&] { WriteHex(target, size); }));
      } else {
        report = std::min(report, Seconds([&] { visit.WriteReport(pictures, target); }));
      }
    }
    state.counters["report_s"] = report;
    state.counters["hex_s"] = hex;
    state.counters["ratio"] = report / hex;
    state.counters["peak_KiB"] = static_cast<double>(PeakMemory());
    if (pictures == kManyPictures && report > kAllowedRatio * hex) Complain("slower than 1.3 times the hex");
    if (PeakMemory() > kAllowedMemory) Complain("more than 40 MiB of memory");
  }
}

BENCHMARK(ReportAgainstHex)->Arg(kFewPictures)->Arg(kManyPictures)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace

bool HasFailed() {
  return g_Failed;
}

}  // namespace inspector::bench

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return inspector::bench::HasFailed() ? 1 : 0;
}
