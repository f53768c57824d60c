// What an inspection from another device costs. First: the import of 1,000 and of 20,000 records against
// inserts of the same rows alone, prepared once and in one transaction. Second: a merge of 10,000 steps
// against one of 1,000, per step: into an inspection without any, into one that has them all without
// findings, and of steps that all have one title.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <vector>

#include "Tablet.h"
#include "device/CodePage.h"
#include "device/Format.h"
#include "exchange/ExportFormat.h"
#include "exchange/InspectionImport.h"
#include "exchange/InspectionMerge.h"

namespace inspector::bench {
namespace {

constexpr double kAllowedImportRatio = 3;
constexpr double kAllowedGrowth = 1.3;
constexpr int kRounds = 9;

template <typename Work>
double Milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

struct Shape {
  const char* name;
  bool isThere;     // the target has a step of each title, without findings
  bool isOneTitle;  // in place of one for each step
};

// A file of a house with so many steps, nine to a category, two thirds of them with findings.
std::string ExportBytes(int steps, bool isOneTitle) {
  std::string bytes;
  const auto record = [&](std::initializer_list<TextView> fields) {
    for (const TextView field : fields) device::AppendCodePage(bytes, Text(field) + exchange::kFieldEnd);
    bytes += exchange::kRecordEndByte;
  };
  record({exchange::kHeaderTag});
  record({exchange::kCompanyTag, u"<InspectionCompany />"});
  record({exchange::kInspectionTag, u"12 Elm Street", u"Ana Ruiz"});
  for (int n = 0; n < steps; ++n) {
    const int category = n / 9;
    if (n % 9 == 0)
      record({exchange::kCategoryTag, isOneTitle ? Text(u"Roof") : device::Format(u"Category %d", category),
              device::Decimal(category), u"", u"", u"FALSE", u"FALSE", u"7", u"0"});
    const bool isFound = n % 3 != 0;
    record({exchange::kStepTag, device::Format(u"%d.%d", category, n % 9),
            isOneTitle ? Text(u"Flashing") : device::Format(u"Flashing, penetrations and chimney %d", n),
            isFound ? u"Repair" : u"",
            isFound ? u"The step flashing at the chimney has come loose on the north side. "
                      u"Water can enter behind it; have a roofer refasten and seal it."
                    : u"",
            isFound ? u"Asphalt shingle;Metal;Other:copper valley;" : u"", u"Condition", u"", u"", u"120",
            u"FALSE", u"Roofing", u"0", u"", u"", u"FALSE"});
  }
  return bytes;
}

std::filesystem::path Put(Tablet& tablet, const std::string& bytes) {
  const std::filesystem::path file = tablet.Folder() / "house.rtf";
  std::ofstream(file, std::ios::binary) << bytes;
  return file;
}

std::int32_t Import(Tablet& tablet, const std::filesystem::path& file) {
  const exchange::ImportOutcome outcome = exchange::ImportInspectionFile(tablet.GetWorkspace(), file);
  MustBe(outcome.result == exchange::ImportResult::Staged && outcome.inspections.size() == 1, "the import");
  return outcome.inspections.front();
}

// The staged steps, and inserting them again with the engine alone.
class PlainInserts {
public:
  explicit PlainInserts(const std::filesystem::path& file) {
    if (sqlite3_open(file.c_str(), &m_Database) != SQLITE_OK) Fail("no engine");
    Run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
  }
  ~PlainInserts() { sqlite3_close(m_Database); }
  PlainInserts(const PlainInserts&) = delete;
  PlainInserts& operator=(const PlainInserts&) = delete;

  void TakeRows() {
    for (Table& table : m_Tables) {
      sqlite3_stmt* const select = Prepare("SELECT * FROM " + table.name);
      table.columns = sqlite3_column_count(select);
      table.values.clear();
      while (sqlite3_step(select) == SQLITE_ROW)
        for (int n = 0; n < table.columns; ++n)
          table.values.push_back(sqlite3_value_dup(sqlite3_column_value(select, n)));
      sqlite3_finalize(select);
    }
  }
  void Insert() {
    Run("BEGIN IMMEDIATE");
    for (const Table& table : m_Tables) {
      std::string places = "?";
      for (int n = 1; n < table.columns; ++n) places += ", ?";
      sqlite3_stmt* const insert = Prepare("INSERT INTO " + table.name + " VALUES (" + places + ")");
      for (std::size_t at = 0; at < table.values.size();) {
        for (int n = 1; n <= table.columns; ++n) sqlite3_bind_value(insert, n, table.values[at++]);
        if (sqlite3_step(insert) != SQLITE_DONE) Fail("an insert");
        sqlite3_reset(insert);
      }
      sqlite3_finalize(insert);
    }
    Run("COMMIT");
  }
  void Clear() {
    Run("DELETE FROM MERGE_Inspection; DELETE FROM MERGE_Category; DELETE FROM MERGE_Step;"
        "PRAGMA wal_checkpoint(TRUNCATE)");
  }
  void Drop() {
    for (Table& table : m_Tables)
      for (sqlite3_value* const value : table.values) sqlite3_value_free(value);
  }
  void Run(const std::string& sql) {
    if (sqlite3_exec(m_Database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
      Fail(sql + ": " + sqlite3_errmsg(m_Database));
  }

private:
  struct Table {
    std::string name;
    int columns = 0;
    std::vector<sqlite3_value*> values{};
  };
  sqlite3_stmt* Prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(m_Database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) Fail(sql);
    return statement;
  }

  sqlite3* m_Database = nullptr;
  Table m_Tables[3] = {{"MERGE_Inspection"}, {"MERGE_Category"}, {"MERGE_Step"}};
};

bool MeasureImport(int records) {
  Tablet tablet;
  PlainInserts engine(tablet.InspectionFile());
  const std::filesystem::path file = Put(tablet, ExportBytes((records - 3) * 9 / 10, false));
  std::vector<double> imports;
  std::vector<double> inserts;
  for (int round = 0; round < kRounds; ++round) {
    imports.push_back(Milliseconds([&] { Import(tablet, file); }));
    if (round == 0) engine.TakeRows();
    engine.Clear();
    inserts.push_back(Milliseconds([&] { engine.Insert(); }));
    engine.Clear();
  }
  engine.Drop();
  const double ratio = Median(imports) / Median(inserts);
  std::printf("Import of %d records / inserts alone: %.2f ms / %.2f ms = %.2f (at most %.1f)\n", records,
              Median(imports), Median(inserts), ratio, kAllowedImportRatio);
  return ratio <= kAllowedImportRatio;
}

// Microseconds for each step.
double MergeTime(int steps, const Shape& shape) {
  Tablet tablet;
  PlainInserts engine(tablet.InspectionFile());
  const std::filesystem::path file = Put(tablet, ExportBytes(steps, shape.isOneTitle));
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    MustBe(tablet.Document().CreateInspection().has_value(), "a new inspection");
    const std::int32_t key = tablet.Document().Inspection().m_InspectionID;
    const auto merge = [&] {
      const std::int32_t staged = Import(tablet, file);
      return Milliseconds([&] {
        MustBe(
            exchange::MergeInspection(tablet.Document(), key, staged).result == exchange::MergeResult::Merged,
            "the merge");
      });
    };
    if (shape.isThere) {
      merge();
      engine.Run("UPDATE Step SET InspectResult = '', Comments = '', Materials = ''");
    }
    times.push_back(merge());
    engine.Run("DELETE FROM Step; DELETE FROM Category; PRAGMA wal_checkpoint(TRUNCATE)");
  }
  return Median(times) * 1000 / steps;
}

bool MeasureMerge(const Shape& shape) {
  const double few = MergeTime(1'000, shape);
  const double many = MergeTime(10'000, shape);
  std::printf("Merge %s, a step of 10,000 / of 1,000: %.1f us / %.1f us = %.2f (at most %.1f)\n", shape.name,
              many, few, many / few, kAllowedGrowth);
  return many / few <= kAllowedGrowth;
}

}  // namespace
}  // namespace inspector::bench

int main() {
  using namespace inspector::bench;
  bool isGood = MeasureImport(1'000);
  isGood = MeasureImport(20'000) && isGood;
  for (const Shape& shape :
       {Shape{"into an empty inspection", false, false}, Shape{"into the same steps", true, false},
        Shape{"of steps with one title", false, true}})
    isGood = MeasureMerge(shape) && isGood;
  return isGood ? 0 : 1;
}
