// Kills inspector-cli at random moments of its work and looks at what is left: both databases must be intact,
// every change that was acknowledged must be there, and every action must be there whole or not at all.
//
//   inspector_kill PROGRAM [KILLS [SEED]]
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>

#include "kill/Tablet.h"

namespace inspector::tests {
namespace {

const std::vector<std::string> kTypes = {"Full House Inspection", "Condominium Inspection"};

// Rows of two fields.
std::vector<std::pair<std::string, std::string>> Pairs(const std::string& text) {
  std::vector<std::pair<std::string, std::string>> pairs;
  std::istringstream rows(text);
  for (std::string row; std::getline(rows, row);)
    pairs.emplace_back(row.substr(0, row.find('|')), row.substr(row.find('|') + 1));
  return pairs;
}

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// One kind of work. Each has an inspection of its own, so that it knows what must be there.
class Work {
public:
  explicit Work(Tablet& tablet) : m_Tablet(tablet) {}
  virtual ~Work() = default;

  // Brings the tablet into a known state and chooses the next command.
  virtual std::vector<std::string> Prepare() = 0;
  // Looks at what is there. `done`: the command ended with 0. True when its effect is there.
  virtual bool Check(const Ending& ending, bool done) = 0;

protected:
  Tablet& m_Tablet;
};

// An action that changes an inspection as a whole.
class OnWhole : public Work {
public:
  explicit OnWhole(Tablet& tablet) : Work(tablet), m_Key(tablet.New(kTypes[0])) {}

  bool Check(const Ending&, bool done) override {
    const bool isThere = m_Tablet.Rows(m_Key) != m_Before;
    m_Tablet.Expect(isThere || !done, "what was done is gone");
    m_Tablet.Expect(!isThere || m_Tablet.Content(m_Key) == m_Whole, "it was done in part");
    return isThere;
  }

protected:
  std::string m_Key;
  std::string m_Before;
  std::string m_Whole;  // its content when all is done
};

class ApplyType : public OnWhole {
public:
  explicit ApplyType(Tablet& tablet) : OnWhole(tablet) {
    for (const std::string& type : kTypes) m_OfTypes.push_back(tablet.Content(tablet.New(type)));
  }

  std::vector<std::string> Prepare() override {
    const std::string mine = "InspectionID = " + m_Key;
    // Some steps, so that there is something to delete, and a general text that does not grow for ever.
    m_Tablet.Ask("UPDATE Inspection SET GeneralInformation = '' WHERE " + mine +
                 "; DELETE FROM Step WHERE StepID < 0; INSERT INTO Step (StepID, CategoryID, StepNumber, "
                 "InspectResult) SELECT -CategoryID, CategoryID, '0', 'Omit' FROM Category WHERE " +
                 mine);
    m_Before = m_Tablet.Rows(m_Key);
    const std::size_t next = m_Tablet.Ask("SELECT DocType FROM Inspection WHERE " + mine) == kTypes[0];
    m_Whole = m_OfTypes[next];
    return {"apply-type", m_Key, kTypes[next], "--yes"};
  }

private:
  std::vector<std::string> m_OfTypes;
};

class Defaults : public OnWhole {
public:
  explicit Defaults(Tablet& tablet) : OnWhole(tablet) {
    tablet.Run({"defaults", m_Key, "--yes"});
    m_Whole = tablet.Content(m_Key);
  }

  std::vector<std::string> Prepare() override {
    const std::string mine =
        "CategoryID IN (SELECT CategoryID FROM Category WHERE InspectionID = " + m_Key + ")";
    m_Tablet.Ask(m_Tablet.Random(2)
                     ? "DELETE FROM Step WHERE " + mine
                     : "UPDATE Step SET InspectResult = '', Materials = '', Comments = '' WHERE " + mine);
    m_Tablet.Ask("UPDATE Category SET CompleteFlag = 0 WHERE " + mine);
    m_Before = m_Tablet.Rows(m_Key);
    return {"defaults", m_Key, "--yes"};
  }
};

class Rate : public Work {
public:
  explicit Rate(Tablet& tablet) : Work(tablet), m_Key(tablet.New(kTypes[0])) {
    tablet.Run({"defaults", m_Key, "--yes"});
    for (const auto& [type, choice] : Pairs(tablet.AskTemplates(
             "SELECT RatingType, ChoiceName FROM RatingType JOIN RatingChoices ON RatingTypeID = "
             "RatingType.ID")))
      m_Choices[type].push_back(choice);
    for (const auto& [step, result] : Pairs(Results())) m_Results[step] = result;
  }

  std::vector<std::string> Prepare() override {
    const auto step =
        std::next(m_Results.begin(), static_cast<std::ptrdiff_t>(m_Tablet.Random(m_Results.size())));
    m_Step = step->first;
    std::vector<std::string> choices =
        m_Choices[m_Tablet.Ask("SELECT RatingType FROM Step WHERE StepID = " + m_Step)];
    choices.push_back("");
    std::erase(choices, step->second);
    m_Choice = choices[m_Tablet.Random(choices.size())];
    return {"rate", m_Step, m_Choice};
  }

  bool Check(const Ending&, bool done) override {
    const std::string now = m_Tablet.Ask("SELECT InspectResult FROM Step WHERE StepID = " + m_Step);
    if (done) m_Tablet.Expect(now == m_Choice, "an acknowledged rating is gone");
    m_Tablet.Expect(now == m_Choice || now == m_Results[m_Step], "a step holds a rating that nobody gave");
    m_Results[m_Step] = now;
    std::string expected;
    for (const auto& [step, result] : m_Results)
      expected += (expected.empty() ? "" : "\n") + step + "|" + result;
    m_Tablet.Expect(Results() == expected, "an earlier rating has changed");
    m_Tablet.Expect(
        m_Tablet.Ask("SELECT count(*) FROM Category WHERE InspectionID = " + m_Key +
                     " AND CategoryID IN (SELECT CategoryID FROM Step) AND CompleteFlag = EXISTS (SELECT 1 "
                     "FROM Step WHERE Step.CategoryID = Category.CategoryID AND InspectResult = '')") == "0",
        "a complete flag does not fit its steps");
    return now == m_Choice;
  }

private:
  std::string Results() {
    return m_Tablet.Ask(
        "SELECT StepID, InspectResult FROM Step JOIN Category USING (CategoryID) WHERE InspectionID = " +
        m_Key + " AND RatingType > '' ORDER BY CAST(StepID AS TEXT)");
  }

  std::string m_Key;
  std::map<std::string, std::vector<std::string>> m_Choices;
  std::map<std::string, std::string> m_Results;
  std::string m_Step;
  std::string m_Choice;
};

class New : public Work {
public:
  explicit New(Tablet& tablet) : Work(tablet) { m_Whole = tablet.Content(tablet.New(kTypes[1])); }

  std::vector<std::string> Prepare() override {
    m_Number = "K" + std::to_string(++m_Count);
    return {"new", "--type", kTypes[1], "number=" + m_Number};
  }

  bool Check(const Ending& ending, bool done) override {
    const std::string key =
        m_Tablet.Ask("SELECT InspectionID FROM Inspection WHERE InspectionNum = '" + m_Number + "'");
    m_Tablet.Expect(!done || !ending.out.empty(), "a key was not printed");
    m_Tablet.Expect(ending.out.empty() || ending.out == key + "\n",
                    "the inspection of a printed key is not there");
    if (!key.empty()) {
      m_Tablet.Expect(m_Tablet.Content(key) == m_Whole, "an inspection was created in part");
      ++m_There;
    }
    m_Tablet.Expect(m_Tablet.Ask("SELECT count(*) FROM Inspection WHERE InspectionNum LIKE 'K%'") ==
                        std::to_string(m_There),
                    "an earlier inspection is gone");
    return !key.empty();
  }

private:
  std::string m_Whole;
  std::string m_Number;
  int m_Count = 0;
  int m_There = 0;
};

class Report : public Work {
public:
  explicit Report(Tablet& tablet) : Work(tablet), m_Folder(tablet.Home() / "Reports") {
    for (const char* layout : {"4 Column", "Full Narrative"}) {
      const std::filesystem::path file = tablet.Home() / (std::string(layout) + ".rtf");
      tablet.Run({"report", "1000", "--layout", layout, "--out", file});
      m_Whole.emplace_back(layout, ContentOf(file));
    }
    std::filesystem::create_directories(m_Folder);
  }

  std::vector<std::string> Prepare() override {
    if (m_Tablet.Random(2)) std::filesystem::remove(Target());
    m_Before = std::filesystem::exists(Target()) ? ContentOf(Target()) : "";
    m_Next = m_Tablet.Random(m_Whole.size());
    return {"report", "1000", "--layout", m_Whole[m_Next].first, "--out", Target()};
  }

  bool Check(const Ending& ending, bool done) override {
    // Also what has a hidden name.
    for (const auto& entry : std::filesystem::directory_iterator(m_Folder)) {
      const std::string content = ContentOf(entry.path());
      bool isWhole = false;
      for (const auto& whole : m_Whole) isWhole = isWhole || content == whole.second;
      m_Tablet.Expect(isWhole, entry.path().string() + " is half a report");
    }
    const std::string now = std::filesystem::exists(Target()) ? ContentOf(Target()) : "";
    const bool isNew = now == m_Whole[m_Next].second;
    m_Tablet.Expect(isNew || (now == m_Before && !done && ending.out.empty()),
                    "a report is not what it should be");
    return isNew && now != m_Before;
  }

private:
  std::filesystem::path Target() const { return m_Folder / "Visit.rtf"; }

  std::filesystem::path m_Folder;
  std::vector<std::pair<std::string, std::string>> m_Whole;
  std::string m_Before;
  std::size_t m_Next = 0;
};

// Kills one kind of work again and again, at moments spread over the time that it takes.
class Victim {
public:
  Victim(Tablet& tablet, const char* name, std::unique_ptr<Work> work)
      : m_Tablet(tablet), m_Name(name), m_Work(std::move(work)) {
    for (int i = 0; i < 2; ++i) Round(std::chrono::minutes(1));
    m_Kills = m_Effects = m_Rounds = 0;
  }

  void Kill() {
    for (const int kills = m_Kills; m_Kills == kills;) {
      m_Tablet.Expect(m_Rounds < 20 * (m_Kills + 20), std::string(m_Name) + " cannot be caught at work");
      // Start-up is the duller half.
      const double share = m_Tablet.Random(2) ? 0.4 + 0.7 * m_Tablet.Fraction() : 1.1 * m_Tablet.Fraction();
      Round(Duration(static_cast<long>(share * m_Lasts)));
    }
  }

  void Print() const {
    std::printf("%-10s %4d kills, %3d after the change was made; %d runs ended before; takes %.1f ms\n",
                m_Name, m_Kills, m_Effects, m_Rounds - m_Kills, m_Lasts / 1000);
  }

private:
  void Round(Duration after) {
    ++m_Rounds;
    const std::vector<std::string> command = m_Work->Prepare();
    const Ending ending = m_Tablet.RunAndKill(command, after);
    // Now and then the program itself is the first to open what was left.
    if (m_Tablet.Random(4) == 0) m_Tablet.Run({"check"});
    m_Tablet.CheckDatabases();
    const bool isThere = m_Work->Check(ending, !ending.killed);
    if (ending.killed) {
      ++m_Kills;
      m_Effects += isThere ? 1 : 0;
      // On a machine that has become slower nothing would ever be done before the kill.
      if (!isThere) m_Lasts *= 1.01;
      return;
    }
    const auto lasted = static_cast<double>(ending.lasted.count());
    m_Lasts = m_Lasts == 0 ? lasted : 0.8 * m_Lasts + 0.2 * lasted;
  }

  Tablet& m_Tablet;
  const char* m_Name;
  std::unique_ptr<Work> m_Work;
  double m_Lasts = 0;  // microseconds
  int m_Kills = 0;
  int m_Effects = 0;
  int m_Rounds = 0;
};

int Main(const std::string& program, int kills, unsigned seed) {
  std::string pattern = std::filesystem::temp_directory_path() / "inspector-kill-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  const std::filesystem::path folder = pattern;
  Tablet tablet(program, folder / "tablet", seed);
  std::vector<Victim> victims;
  victims.emplace_back(tablet, "apply-type", std::make_unique<ApplyType>(tablet));
  victims.emplace_back(tablet, "defaults", std::make_unique<Defaults>(tablet));
  victims.emplace_back(tablet, "report", std::make_unique<Report>(tablet));
  victims.emplace_back(tablet, "new", std::make_unique<New>(tablet));
  victims.emplace_back(tablet, "rate", std::make_unique<Rate>(tablet));
  for (int kill = 0; kill < kills; ++kill) victims[static_cast<std::size_t>(kill) % victims.size()].Kill();
  for (const Victim& victim : victims) victim.Print();
  std::printf("%d kills with seed %u: nothing lost, nothing by halves.\n", kills, seed);
  std::filesystem::remove_all(folder);
  return 0;
}

}  // namespace
}  // namespace inspector::tests

int main(int count, char** words) {
  if (count < 2) {
    std::fprintf(stderr, "Usage: inspector_kill PROGRAM [KILLS [SEED]]\n");
    return 2;
  }
  const int kills = count > 2 ? std::atoi(words[2]) : 200;
  const unsigned seed = count > 3 ? static_cast<unsigned>(std::atoi(words[3])) : std::random_device()();
  return inspector::tests::Main(words[1], kills, seed);
}
