// Kills the application while somebody types, and looks at what is left: both databases whole, at most the
// last second of typing gone, and the next start where the person was.
//
//   inspector_screen_kill TYPIST COMMANDS [KILLS [SEED]]
#include <map>
#include <memory>
#include <set>

#include "kill/Tablet.h"

namespace inspector::tests {
namespace {

constexpr long kMayBeLost = 1000;  // milliseconds
constexpr Tablet::Duration kLongest = std::chrono::milliseconds(2400);
constexpr int kTablets = 5;  // at the same time: most of it is waiting

struct Deed {
  long at = 0;
  char kind = 0;
  int first = 0;
  int second = 0;
};

std::vector<Deed> Deeds(const std::string& out) {
  std::vector<Deed> deeds;
  std::istringstream lines(out.substr(0, out.rfind('\n') + 1));
  for (Deed deed; lines >> deed.at >> deed.kind >> deed.first >> deed.second;) deeds.push_back(deed);
  return deeds;
}

class Typing {
public:
  Typing(std::string typist, const std::string& commands, const std::filesystem::path& home, unsigned seed)
      : m_Typist(std::move(typist)), m_Tablet(commands, home, seed) {
    m_Tablet.Run({"new", "--type", "Full House Inspection", "address=418 Juniper Lane"});
  }

  void Kill() {
    const Tablet::Duration after(
        static_cast<long>(m_Tablet.Fraction() * static_cast<double>(kLongest.count())));
    const Tablet::Ending ending =
        m_Tablet.RunAndKill({std::to_string(m_Tablet.Random(1'000'000))}, after, m_Typist);
    m_Tablet.Expect(ending.killed, "the program ended by itself");
    m_Tablet.CheckDatabases();
    const std::vector<Deed> deeds = Deeds(ending.out);
    if (!deeds.empty()) CheckStart(deeds.front());
    CheckComments(deeds);
    FollowPlace(deeds);
  }
  int Letters() const { return m_Letters; }
  int Returns() const { return m_Returns; }

private:
  using Place = std::pair<int, int>;

  void CheckStart(const Deed& first) {
    const bool isTold = first.kind == 's';
    const Place place = isTold ? Place(first.first, first.second) : Place();
    m_Tablet.Expect(m_Places.contains(place), "it did not start where the person was, but at " +
                                                  std::to_string(place.first) + "/" +
                                                  std::to_string(place.second));
    m_Returns += isTold;
  }

  // Of what the person typed everything is there that is older than a second, and nothing else.
  void CheckComments(const std::vector<Deed>& deeds) {
    std::map<int, std::string> typed = m_Comments;
    std::map<int, std::string> sure = m_Comments;
    for (const Deed& deed : deeds) {
      if (deed.kind != 't') continue;
      ++m_Letters;
      typed[deed.first] += static_cast<char>(deed.second);
      if (deed.at <= deeds.back().at - kMayBeLost) sure[deed.first] = typed[deed.first];
    }
    m_Comments.clear();
    std::istringstream rows(m_Tablet.Ask(
        "SELECT StepID, Comments FROM Step JOIN Category USING (CategoryID) WHERE InspectionID = (SELECT "
        "max(InspectionID) FROM Inspection) AND Comments > ''"));
    char bar = 0;
    int step = 0;
    for (std::string comment; rows >> step >> bar >> comment;) m_Comments[step] = comment;
    for (const auto& [key, text] : typed) {
      const std::string& stored = m_Comments[key];
      m_Tablet.Expect(stored.starts_with(sure[key]) && text.starts_with(stored),
                      "it holds \"" + stored + "\" of \"" + text + "\", at least expected: " + sure[key]);
    }
    m_Tablet.Expect(m_Comments.size() == typed.size(), "a comment that nobody typed");
  }

  // Where the person was a second ago, and since.
  void FollowPlace(const std::vector<Deed>& deeds) {
    for (const Deed& deed : deeds) {
      if (deed.kind == 't') continue;
      if (deed.at <= deeds.back().at - kMayBeLost) m_Places.clear();
      m_Places.insert({deed.first, deed.second});
    }
  }

  std::string m_Typist;
  Tablet m_Tablet;
  std::map<int, std::string> m_Comments;  // by step, as stored after the last kill
  std::set<Place> m_Places = {{0, 0}};    // where the next start may open
  int m_Letters = 0;
  int m_Returns = 0;
};

}  // namespace
}  // namespace inspector::tests

int main(int count, char** words) {
  using inspector::tests::Typing;
  const inspector::tests::KillRun run(count, words, 2);
  std::vector<std::unique_ptr<Typing>> typings;
  for (unsigned n = 0; n < inspector::tests::kTablets; ++n)
    typings.push_back(std::make_unique<Typing>(run.programs[0], run.programs[1],
                                               run.folder / std::to_string(n), run.seed + n));
  std::printf("Seed %u\n", run.seed);
  std::fflush(stdout);
  std::vector<std::thread> hands;
  for (const auto& typing : typings)
    hands.emplace_back([&] {
      for (int kill = 0; kill < run.kills / inspector::tests::kTablets; ++kill) typing->Kill();
    });
  int letters = 0;
  int returns = 0;
  for (std::size_t n = 0; n < hands.size(); ++n) {
    hands[n].join();
    letters += typings[n]->Letters();
    returns += typings[n]->Returns();
  }
  std::printf("%d kills, %d letters typed, %d starts where the person was.\n", run.kills, letters, returns);
  std::filesystem::remove_all(run.folder);
  // Otherwise nothing was tested.
  return letters > 5 * run.kills && returns > run.kills / 4 ? 0 : 1;
}
