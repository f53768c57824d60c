// What reports cost. Those full of photographs, 20 and 200 of 1 MiB, over the disk below them: Rich Text
// against ready-made hexadecimal of the same size written to the same folder, the web page against base64 and
// dd, all synced, and how much memory they take. Those of words, 400 steps, over reading the same rows once.
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

#include "ReportVisit.h"

namespace inspector::bench {
namespace {

constexpr int kRuns = 7;
constexpr double kAllowedRatio = 1.3;
constexpr double kAllowedWebRatio = 1.5;
constexpr double kAllowedFormatRatio = 3;
constexpr int kPlain = 7400;  // a visit of 400 steps
constexpr int kShort = 7100;  // and one of 100 with few words, as much as web pages with frames can hold
constexpr long kAllowedMemory = 40 * 1024;  // KiB

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

// Keeps nothing: what the disk costs is another question, and so is what the system costs that gives memory
// and takes it back, so that the room of one file is the next one's.
class MemoryFiles : public device::HostFiles {
public:
  std::unique_ptr<device::OutputFile> Create(const std::filesystem::path& target) override {
    if (target.extension() == ".toml") return HostFiles::Create(target);
    return std::make_unique<Output>(m_Rooms);
  }

private:
  class Output : public device::OutputFile {
  public:
    explicit Output(std::vector<std::string>& rooms) : m_Rooms(rooms) {
      if (rooms.empty()) return;
      m_Content = std::move(rooms.back());
      m_Content.clear();
      rooms.pop_back();
    }
    ~Output() override { m_Rooms.push_back(std::move(m_Content)); }

    bool Write(std::string_view bytes) override {
      m_Content += bytes;
      return true;
    }
    bool Commit() override { return !m_Content.empty(); }
    std::string Error() const override { return {}; }

  private:
    std::vector<std::string>& m_Rooms;
    std::string m_Content;
  };

  std::vector<std::string> m_Rooms;
};

// All rows that a report is about, each once, as every part of the program reads rows.
std::size_t ReadRows(data::Databases& databases, int inspectionID) {
  const data::ReadScope reading(databases.Inspection());
  std::size_t letters = 0;
  data::InspectionTable inspection(databases);
  inspection.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  if (inspection.GetRecord(0)) letters += inspection.m_InspectionNum.size();
  data::CategoryTable categories(databases);
  data::StepTable steps(databases);
  categories.OpenSQL(device::Format(u"SELECT * FROM Category WHERE InspectionID = %d", inspectionID));
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (!categories.GetRecord(n)) std::exit(1);
    steps.OpenSQL(device::Format(u"SELECT * FROM Step WHERE CategoryID = %d ORDER BY StepNumber",
                                 categories.m_CategoryID));
    for (int row = 0; row < steps.RecordCount(); ++row) {
      if (!steps.GetRecord(row)) std::exit(1);
      letters += steps.m_Comments.size();
    }
  }
  return letters;
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
  device::HostFiles files;
  Visit visit(folder.Path(), files);
  visit.AddInspectionsWithPictures();
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

void WebAgainstBase64(benchmark::State& state) {
  const TemporaryFolder folder;
  device::HostFiles files;
  Visit visit(folder.Path(), files);
  visit.AddInspectionsWithPictures();
  const auto target = folder.Path() / "report.html";
  const std::string command = "cat '" + folder.Path().string() + "'/p*.jpg | base64 -w0 | dd of='" +
                              target.string() + "' bs=64k conv=fsync status=none";
  visit.WriteReport(kManyPictures, target, u"web");
  for (auto _ : state) {
    double page = std::numeric_limits<double>::max();
    double other = page;
    for (int run = 0; run < 2 * kRuns; ++run) {
      std::filesystem::remove(target);
      ::sync();
      if (run % 2 == 0) {
        other = std::min(other, Seconds([&] {
                           if (std::system(command.c_str()) != 0) std::exit(1);
                         }));
      } else {
        page = std::min(page, Seconds([&] { visit.WriteReport(kManyPictures, target, u"web"); }));
      }
    }
    state.counters["page_s"] = page;
    state.counters["base64_dd_s"] = other;
    state.counters["ratio"] = page / other;
    state.counters["peak_KiB"] = static_cast<double>(PeakMemory());
    if (page > kAllowedWebRatio * other) Complain("slower than 1.5 times base64 and dd");
    if (PeakMemory() > kAllowedMemory) Complain("more than 40 MiB of memory");
  }
}

void FormatsAgainstRows(benchmark::State& state) {
  const TemporaryFolder folder;
  MemoryFiles files;
  Visit visit(folder.Path(), files);
  Text words;
  for (int n = 0; n < 10; ++n) words += u"The flashing has come loose at the chimney. ";
  visit.AddPlainInspection(kPlain, 400, words);
  visit.AddPlainInspection(kShort, 100, u"Loose at the chimney.");
  const auto best = [](const auto& work) {
    double seconds = std::numeric_limits<double>::max();
    for (int run = 0; run < 10 * kRuns; ++run) seconds = std::min(seconds, Seconds(work));
    return seconds;
  };
  for (auto _ : state) {
    for (const auto& [format, layout] :
         std::initializer_list<std::pair<Text, Text>>{{u"inspection", u"4 Column"},
                                                      {u"inspection", u"3 Column"},
                                                      {u"inspection", u"2 Column"},
                                                      {u"inspection", u"1 Column"},
                                                      {u"inspection", u"Full Narrative"},
                                                      {u"summary", u"4 Column"},
                                                      {u"major-systems", u"4 Column"},
                                                      {u"text", u""},
                                                      {u"web", u""},
                                                      {u"html", u""}}) {
      const int inspection = format == u"html" ? kShort : kPlain;
      const double rows =
          best([&] { benchmark::DoNotOptimize(ReadRows(visit.GetWorkspace().GetDatabases(), inspection)); });
      const double report =
          best([&] { visit.WriteReport(inspection, folder.Path() / "pages", format, layout); });
      state.counters[device::ToUtf8(format + u" " + layout)] = report / rows;
      if (report > kAllowedFormatRatio * rows) Complain("slower than 3 times reading the rows");
    }
  }
}

BENCHMARK(FormatsAgainstRows)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(WebAgainstBase64)->Iterations(1)->Unit(benchmark::kSecond);
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
