// What the steps of a visit cost. First: a type of 14 categories applied, all its steps made and all defaults
// given, against one INSERT ... SELECT of the same rows; and the commits that it takes. Second: one finding
// in a file with 10,000 inspections against one with 10.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "Tablet.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "editing/Defaults.h"
#include "editing/Ratings.h"
#include "editing/StepEditing.h"

namespace inspector::bench {
namespace {

using device::Text;
using device::TextView;

constexpr double kAllowedApplyRatio = 10;
constexpr int kAllowedCommits = 3;
constexpr double kAllowedFindingRatio = 1.3;
constexpr int kCategories = 14;
constexpr int kApplyRounds = 40;
constexpr int kFindingRounds = 400;
constexpr TextView kRatingType = u"Condition";
constexpr int kFewInspections = 10;
constexpr int kManyInspections = 10'000;

// Commits that wrote something, of every connection of this process.
int commits = 0;

int CountCommits(sqlite3* database, const char**, const sqlite3_api_routines*) {
  sqlite3_commit_hook(
      database,
      [](void*) {
        ++commits;
        return 0;
      },
      nullptr);
  return SQLITE_OK;
}

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

bool PrintRatio(const char* what, double time, double yardstick, double allowed) {
  const double ratio = time / yardstick;
  std::printf("%s: %.3f ms / %.3f ms = %.2f (at most %.1f)\n", what, time, yardstick, ratio, allowed);
  return ratio <= allowed;
}

// The first type with the first 14 of its step categories, none of them excluded from the defaults.
void KeepCategories(Engine& templates) {
  templates.Run(
      "DELETE FROM InspectionTypeCategory WHERE InspectionTypeID = 1 AND CategoryID NOT IN (SELECT ID FROM "
      "CategoryTemplate JOIN InspectionTypeCategory ON CategoryID = ID WHERE InspectionTypeID = 1 AND "
      "FormType <> 1 "
      "AND ExcludeFromApplyDefault = 0 ORDER BY CategoryNumber LIMIT " +
      std::to_string(kCategories) + ")");
}

bool MeasureApplying() {
  Tablet tablet;
  Engine engine(tablet.InspectionFile());
  {
    Engine templates(tablet.TemplateFile());
    KeepCategories(templates);
  }
  data::Databases& databases = tablet.GetWorkspace().GetDatabases();
  inspection::CInspectorDoc& document = tablet.Document();
  std::vector<double> whole;
  std::vector<double> insert;
  int mostCommits = 0;
  for (int round = 0; round < kApplyRounds; ++round) {
    MustBe(document.CreateInspection().has_value(), "a new inspection");
    const std::int32_t key = document.Inspection().m_InspectionID;
    const int before = commits;
    whole.push_back(Milliseconds([&] {
      document.ChangeDocType(u"Full House Inspection");
      MustBe(document.FinishDocTypeChange(), "the change of type");
      MustBe(editing::ApplyDefaultsSilently(databases, key) == inspection::RunResult::Done, "the defaults");
    }));
    mostCommits = std::max(mostCommits, commits - before);

    const std::string mine = " FROM Category WHERE InspectionID = " + std::to_string(key);
    const int steps =
        engine.Number("SELECT count(*) FROM Step WHERE CategoryID IN (SELECT CategoryID" + mine + ")");
    if (engine.Number("SELECT count(*)" + mine) != kCategories || steps < 100)
      Fail("not the rows that were meant");
    if (round == 0) std::printf("A type of %d categories with %d steps\n", kCategories, steps);
    engine.Run("CREATE TEMP TABLE Categories AS SELECT *" + mine +
               "; CREATE TEMP TABLE Steps AS SELECT * FROM Step WHERE CategoryID IN (SELECT CategoryID" +
               mine + ")");
    insert.push_back(Milliseconds([&] {
      engine.Run(
          "BEGIN IMMEDIATE; INSERT INTO Category SELECT * FROM temp.Categories; INSERT INTO Step SELECT * "
          "FROM "
          "temp.Steps; COMMIT");
    }));
    engine.Run("DROP TABLE temp.Categories; DROP TABLE temp.Steps");
  }
  std::printf("Commits for type, steps and defaults: %d (at most %d)\n", mostCommits, kAllowedCommits);
  return PrintRatio("Type, steps and defaults / INSERT ... SELECT", Median(whole), Median(insert),
                    kAllowedApplyRatio) &&
         mostCommits <= kAllowedCommits;
}

// `count` inspections, each with the steps of the first one, which has had its defaults; the engine makes the
// others. Returns the steps of the one in the middle.
std::vector<std::int32_t> Fill(Tablet& tablet, int count) {
  MustBe(tablet.Document().CreateInspection({}, u"Full House Inspection").has_value(), "a new inspection");
  const std::int32_t key = tablet.Document().Inspection().m_InspectionID;
  data::Databases& databases = tablet.GetWorkspace().GetDatabases();
  MustBe(editing::ApplyDefaultsSilently(databases, key) == inspection::RunResult::Done, "the defaults");
  Engine engine(tablet.InspectionFile());
  CopyInspection(engine, key, count - 1);

  std::vector<std::int32_t> steps;
  data::StepTable rows(databases);
  rows.OpenSQL(
      device::Format(u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID "
                     u"WHERE (Category.InspectionID = %d) AND (Step.RatingType = \"%s\")",
                     key + count / 2, kRatingType));
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n)) steps.push_back(rows.m_StepID);
  return steps;
}

// Rates step after step, as the visit goes on, and takes the time of each with its commit.
class Visit {
public:
  explicit Visit(int inspections) : m_Steps(Fill(m_Tablet, inspections)) {
    if (m_Steps.size() < 20) Fail("too few steps to rate");
    const auto choices = editing::ChoicesOf(m_Tablet.GetWorkspace().GetDatabases(), kRatingType).value();
    if (choices.size() < 2) Fail("too few ratings");
    m_Ratings = {choices[0].name, choices[1].name};
  }

  void Rate() {
    const std::int32_t step = m_Steps[m_Round % m_Steps.size()];
    const Text& rating = m_Ratings[(m_Round / m_Steps.size()) % m_Ratings.size()];
    ++m_Round;
    m_Times.push_back(Milliseconds(
        [&] { MustBe(m_Editing.Rate(step, rating) == editing::StepEditing::Result::Done, "a rating"); }));
  }
  double Time() const { return Median(m_Times); }

private:
  Tablet m_Tablet;
  std::vector<std::int32_t> m_Steps;
  std::vector<Text> m_Ratings;
  editing::StepEditing m_Editing{m_Tablet.GetWorkspace()};
  std::size_t m_Round = 0;
  std::vector<double> m_Times;
};

bool MeasureFindings() {
  Visit few(kFewInspections);
  Visit many(kManyInspections);
  // In turns: what disturbs the machine disturbs both.
  for (int round = 0; round < kFindingRounds; ++round) {
    few.Rate();
    many.Rate();
  }
  const std::string what = "One finding with " + std::to_string(kManyInspections) + " inspections / with " +
                           std::to_string(kFewInspections);
  return PrintRatio(what.c_str(), many.Time(), few.Time(), kAllowedFindingRatio);
}

}  // namespace
}  // namespace inspector::bench

int main() {
  using namespace inspector::bench;
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(CountCommits));
  const bool applied = MeasureApplying();
  const bool found = MeasureFindings();
  return applied && found ? 0 : 1;
}
