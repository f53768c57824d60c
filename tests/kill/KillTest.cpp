// Kills inspector-cli at random moments of its work and looks at what is left: both databases must be intact,
// every change that was acknowledged must be there, and every action must be there whole or not at all. What
// whole means is found out on a copy of the tablet, where the same command runs to its end.
//
//   inspector_kill PROGRAM [KILLS [SEED]]
#include <functional>

#include "kill/Tablet.h"

namespace inspector::tests {
namespace {

constexpr const char* kReport = "Reports/Visit.rtf";
constexpr const char* kExported = "\\House.rtf";
constexpr const char* kNothingStaged =
    "DELETE FROM MERGE_Inspection; DELETE FROM MERGE_Category; DELETE FROM MERGE_Step;";
const std::vector<std::string> kTypes = {"Full House Inspection", "Condominium Inspection"};

// What can be found on a tablet, with the keys.
struct Content {
  explicit Content(Tablet& tablet)
      : visits(tablet.Ask("SELECT InspectionID, InspectionNum, DocType, InspectionTypeID, GeneralInformation "
                          "FROM Inspection ORDER BY 1") +
               tablet.Ask("SELECT * FROM Category ORDER BY CategoryID") +
               tablet.Ask("SELECT * FROM Step ORDER BY StepID") +
               tablet.Ask("SELECT * FROM MERGE_Inspection ORDER BY InspectionID") +
               tablet.Ask("SELECT * FROM MERGE_Category ORDER BY CategoryID") +
               tablet.Ask("SELECT * FROM MERGE_Step ORDER BY StepID")),
        report(std::filesystem::exists(tablet.Home() / kReport) ? ContentOf(tablet.Home() / kReport) : "") {}
  bool operator==(const Content&) const = default;

  std::string visits;
  std::string report;
};

// One kind of work, on a visit of its own.
struct Work {
  const char* name;
  // Brings the tablet into a state in which there is something to do, and chooses the next command.
  std::function<std::vector<std::string>(Tablet&)> prepare;
  double lasts = 0;  // microseconds
  int rounds = 0;
  int kills = 0;
  int effects = 0;  // the change was made before the kill
};

std::vector<Work> EveryWork(Tablet& tablet) {
  const auto visit = [&tablet] { return std::stoi(tablet.Run({"new", "--type", kTypes[0]})); };
  const auto where = [](int key) { return " WHERE InspectionID = " + std::to_string(key); };
  const auto applyType = [key = visit(), where](Tablet& on) -> std::vector<std::string> {
    // Some steps, so that there is something to delete, and a general text that does not grow for ever.
    on.Ask("UPDATE Inspection SET GeneralInformation = ''" + where(key) +
           "; DELETE FROM Step WHERE StepID < 0; INSERT INTO Step (StepID, CategoryID, StepNumber, "
           "InspectResult) SELECT -CategoryID, CategoryID, '0', 'Omit' FROM Category" +
           where(key));
    const std::size_t next = on.Ask("SELECT DocType FROM Inspection" + where(key)) == kTypes[0];
    return {"apply-type", std::to_string(key), kTypes[next], "--yes"};
  };
  const auto defaults = [key = visit(), where](Tablet& on) -> std::vector<std::string> {
    const std::string mine = " WHERE CategoryID IN (SELECT CategoryID FROM Category" + where(key) + ")";
    on.Ask((on.Random(2) ? "DELETE FROM Step"
                         : "UPDATE Step SET InspectResult = '', Materials = '', Comments = ''") +
           mine + "; UPDATE Category SET CompleteFlag = 0" + mine);
    return {"defaults", std::to_string(key), "--yes"};
  };
  const int rated = visit();
  tablet.Run({"defaults", std::to_string(rated), "--yes"});
  const auto rate = [key = rated, where](Tablet& on) -> std::vector<std::string> {
    const std::string step = on.OneOf(on.Ask("SELECT StepID FROM Step JOIN Category USING (CategoryID)" +
                                             where(key) + " AND RatingType > ''"));
    const auto column = [&](const std::string& name) {
      return on.Ask("SELECT " + name + " FROM Step WHERE StepID = " + step);
    };
    return {"rate", step,
            on.OneOf(on.AskTemplates("SELECT ChoiceName FROM RatingChoices JOIN RatingType ON RatingTypeID = "
                                     "RatingType.ID WHERE RatingType = '" +
                                     column("RatingType") + "' AND ChoiceName <> '" +
                                     column("InspectResult") + "' UNION SELECT ''"))};
  };
  const auto report = [](Tablet& on) -> std::vector<std::string> {
    if (on.Random(2)) std::filesystem::remove(on.Home() / kReport);
    return {"report",   "1000",
            "--layout", on.Random(2) ? "4 Column" : "Full Narrative",
            "--out",    "\\Reports\\Visit.rtf"};
  };
  const auto exportHouse = [](Tablet& on) -> std::vector<std::string> {
    if (on.Random(2)) std::filesystem::remove(on.Home() / kReport);
    return {"export", "1000", "--out", "\\Reports\\Visit.rtf", "--yes"};
  };
  const auto importHouse = [](Tablet& on) -> std::vector<std::string> {
    if (on.Random(2)) on.Ask(kNothingStaged);
    return {"import", kExported};
  };
  const auto merge = [key = visit(), where](Tablet& on) -> std::vector<std::string> {
    // Into nothing, or into steps that are there.
    const std::string mine = " WHERE CategoryID IN (SELECT CategoryID FROM Category" + where(key) + ");";
    on.Ask(std::string("BEGIN;") + kNothingStaged +
           (on.Random(2) ? "UPDATE Step SET InspectResult = '', Comments = '', Materials = ''" + mine
                         : "DELETE FROM Step" + mine + "DELETE FROM Category" + where(key) + ";") +
           "COMMIT");
    on.Run({"import", kExported});
    return {"merge", std::to_string(key), on.Ask("SELECT InspectionID FROM MERGE_Inspection")};
  };
  tablet.Run({"export", "1000", "--out", kExported, "--yes"});
  const auto create = [](Tablet&) -> std::vector<std::string> { return {"new", "--type", kTypes[1]}; };
  std::filesystem::create_directories(tablet.Home() / "Reports");
  return {{"apply-type", applyType}, {"defaults", defaults}, {"report", report},
          {"new", create},           {"rate", rate},         {"export", exportHouse},
          {"import", importHouse},   {"merge", merge}};
}

// Works till the program is caught at it.
void Kill(Tablet& tablet, Work& work) {
  for (bool isKilled = false; !isKilled; ++work.rounds) {
    tablet.Expect(work.rounds < 20 * (work.kills + 20), std::string(work.name) + " cannot be caught at work");
    const std::vector<std::string> command = work.prepare(tablet);
    const Content before(tablet);
    Tablet done = tablet.Copy();
    const auto lasted = static_cast<double>(done.RunAndKill(command, std::chrono::minutes(1)).lasted.count());
    if (work.lasts == 0) work.lasts = lasted;
    const Content whole(done);

    // Start-up is the duller half.
    const double share = tablet.Random(2) ? 0.4 + 0.7 * tablet.Fraction() : 1.1 * tablet.Fraction();
    const Tablet::Ending ending =
        tablet.RunAndKill(command, Tablet::Duration(static_cast<long>(share * work.lasts)));
    // Now and then the program itself is the first to open what was left.
    if (tablet.Random(4) == 0) tablet.Run({"check"});
    tablet.CheckDatabases();
    const Content now(tablet);
    tablet.Expect(now == before || now == whole, "it was done in part");
    // Also what has a hidden name.
    for (const auto& file : std::filesystem::directory_iterator(tablet.Home() / "Reports")) {
      const std::string content = ContentOf(file);
      tablet.Expect(content == before.report || content == whole.report, "half a report");
      if (content != now.report) std::filesystem::remove(file);
    }
    tablet.Expect(now == whole || (ending.killed && ending.out.empty()), "what was acknowledged is gone");
    isKilled = ending.killed;
    work.kills += isKilled;
    work.effects += isKilled && now != before;
    // On a machine that has become slower nothing would ever be done before the kill.
    if (!isKilled) work.lasts = 0.8 * work.lasts + 0.2 * static_cast<double>(ending.lasted.count());
    if (now == before) work.lasts *= 1.01;
  }
}

}  // namespace
}  // namespace inspector::tests

int main(int count, char** words) {
  const inspector::tests::KillRun run(count, words, 1);
  inspector::tests::Tablet tablet(run.programs[0], run.folder / "tablet", run.seed);
  std::vector<inspector::tests::Work> works = inspector::tests::EveryWork(tablet);
  for (int kill = 0; kill < run.kills; ++kill)
    Kill(tablet, works[static_cast<std::size_t>(kill) % works.size()]);
  for (const auto& work : works)
    std::printf("%-10s %4d kills, %3d after the change was made; %d runs ended before\n", work.name,
                work.kills, work.effects, work.rounds - work.kills);
  std::printf("%d kills with seed %u: nothing lost, nothing by halves.\n", run.kills, run.seed);
  std::filesystem::remove_all(run.folder);
}
