// What a recordset costs over the engine below it: every row of a table with 100,000 steps, fetched one by
// one by its position (the keyset's filling included), against one plain scan of the same columns.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "UnattendedPrompts.h"
#include "data/Databases.h"
#include "data/FreshDatabase.h"
#include "data/StepTable.h"
#include "device/FaultLog.h"
#include "device/Files.h"
#include "device/Format.h"

namespace inspector::bench {
namespace {

using data::DatabaseKind;
using device::Text;

constexpr int kSteps = 100'000;
constexpr double kAllowedRatio = 2.5;

class Store {
public:
  Store() {
    std::string pattern = std::filesystem::temp_directory_path() / "inspector-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::exit(1);
    m_Folder = pattern;
    const auto templates = m_Folder / "Template_Data.cdb";
    m_File = m_Folder / "Inspection_Data.cdb";
    Expect(data::CreateFreshDatabase(templates, DatabaseKind::Template, m_Faults));
    Expect(data::CreateFreshDatabase(m_File, DatabaseKind::Inspection, m_Faults));
    m_Databases = std::make_unique<data::Databases>(templates, m_File, m_Faults, m_Clock);
    Expect(m_Databases->Open());
    m_Databases->Inspection().PrepareForWriting();
    Fill();
  }
  ~Store() {
    m_Databases.reset();
    std::error_code ignored;
    std::filesystem::remove_all(m_Folder, ignored);
  }

  data::Databases& Databases() { return *m_Databases; }
  const std::filesystem::path& File() const { return m_File; }

private:
  static void Expect(const Text& problem) {
    if (problem.empty()) return;
    std::fprintf(stderr, "%s\n", device::ToUtf8(problem).c_str());
    std::exit(1);
  }

  // Two thirds of the steps are rated, with materials and a comment of two sentences, as in a finished visit.
  void Fill() {
    data::Transaction transaction(m_Databases->Inspection());
    data::StepTable step(*m_Databases);
    for (int i = 0; i < kSteps; ++i) {
      step.PrepareNew();
      step.m_StepID = 1000 + i;
      step.m_StepNumber = device::Format(u"%d.%d", i % 14, i % 9);
      step.m_StepTitle = u"Flashing, penetrations and chimney";
      step.m_CategoryID = 1000 + i / 9;
      step.m_RatingType = u"Condition";
      step.m_StepTemplateID = 100 + i % 120;
      if (i % 3 != 0) {
        step.m_InspectResult = u"Repair";
        step.m_Materials = u"Asphalt shingle;Metal;Other:copper valley;";
        step.m_Comments =
            u"The step flashing at the chimney has come loose on the north side.  Water can enter behind it; "
            u"have a "
            u"roofer refasten and seal it before the next heavy rain.";
      }
      step.Write();
    }
    if (!transaction.Commit()) std::exit(1);
  }

  std::filesystem::path m_Folder;
  std::filesystem::path m_File;
  UnattendedPrompts m_Prompts;
  device::SystemClock m_Clock;
  device::FaultLog m_Faults{m_Prompts, m_Clock, std::filesystem::path("/dev/null")};
  std::unique_ptr<data::Databases> m_Databases;
};

Store& TheStore() {
  static Store store;
  return store;
}

void EveryRowByPosition(benchmark::State& state) {
  data::StepTable steps(TheStore().Databases());
  for (auto _ : state) {
    const data::ReadScope reading(steps.GetConnection());
    steps.OpenSQL(u"SELECT * FROM Step");
    std::size_t units = 0;
    for (int n = 0; n < steps.RecordCount(); ++n) {
      if (!steps.GetRecord(n)) std::exit(1);
      units += steps.m_Comments.size();
    }
    if (steps.RecordCount() != kSteps) std::exit(1);
    benchmark::DoNotOptimize(units);
  }
}

void PlainScan(benchmark::State& state) {
  const std::string file = TheStore().File();
  sqlite3* database = nullptr;
  sqlite3_stmt* scan = nullptr;
  if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
          SQLITE_OK ||
      sqlite3_prepare_v2(database, "SELECT * FROM Step", -1, &scan, nullptr) != SQLITE_OK)
    std::exit(1);
  for (auto _ : state) {
    std::int64_t sum = 0;
    while (sqlite3_step(scan) == SQLITE_ROW) {
      for (const int column : {0, 3, 10, 11, 13, 16}) sum += sqlite3_column_int(scan, column);
      for (const int column : {1, 2, 4, 5, 6, 7, 8, 9, 12, 14, 15}) {
        benchmark::DoNotOptimize(sqlite3_column_text16(scan, column));
        sum += sqlite3_column_bytes16(scan, column);
      }
    }
    sqlite3_reset(scan);
    benchmark::DoNotOptimize(sum);
  }
  sqlite3_finalize(scan);
  sqlite3_close(database);
}

BENCHMARK(PlainScan)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(EveryRowByPosition)->Unit(benchmark::kMillisecond)->Repetitions(5);

// Keeps the best repetition of each benchmark: what disturbs a run only ever makes it slower.
class BestOf : public benchmark::ConsoleReporter {
public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      double& best = run.benchmark_name().starts_with("PlainScan") ? m_Scan : m_Recordset;
      const double time = run.GetAdjustedCPUTime();
      best = best == 0 ? time : std::min(best, time);
    }
  }
  double Ratio() const { return m_Scan > 0 ? m_Recordset / m_Scan : 0; }

private:
  double m_Scan = 0;
  double m_Recordset = 0;
};

}  // namespace
}  // namespace inspector::bench

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  inspector::bench::BestOf reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  if (reporter.Ratio() == 0) return 0;  // only one of the two was asked for
  std::printf("Rows by position / plain scan: %.2f (at most %.1f)\n", reporter.Ratio(),
              inspector::bench::kAllowedRatio);
  return reporter.Ratio() <= inspector::bench::kAllowedRatio ? 0 : 1;
}
