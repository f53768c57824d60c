// Kills the application while somebody types, and looks at what is left: both databases whole, and at most
// the last second of typing gone.
//
//   inspector_screen_kill TYPIST COMMANDS [KILLS [SEED]]
#include <map>
#include <memory>

#include "kill/Tablet.h"

namespace inspector::tests {
namespace {

constexpr long kMayBeLost = 1000;  // milliseconds
constexpr Tablet::Duration kLongest = std::chrono::milliseconds(2400);
constexpr int kTablets = 5;  // at the same time: most of it is waiting

struct Letter {
  long at = 0;
  int step = 0;
  int letter = 0;
};

std::vector<Letter> Letters(const std::string& out) {
  std::vector<Letter> letters;
  std::istringstream lines(out.substr(0, out.rfind('\n') + 1));
  for (Letter letter; lines >> letter.at >> letter.step >> letter.letter;) letters.push_back(letter);
  return letters;
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
    CheckComments(Letters(ending.out));
  }
  std::size_t Count() const { return m_Count; }

private:
  // Of what the person typed everything is there that is older than a second, and nothing else.
  void CheckComments(const std::vector<Letter>& letters) {
    m_Count += letters.size();
    std::map<int, std::string> typed = m_Comments;
    std::map<int, std::string> sure = m_Comments;
    for (const Letter& letter : letters) {
      typed[letter.step] += static_cast<char>(letter.letter);
      if (letter.at <= letters.back().at - kMayBeLost) sure[letter.step] = typed[letter.step];
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

  std::string m_Typist;
  Tablet m_Tablet;
  std::map<int, std::string> m_Comments;  // by step, as stored after the last kill
  std::size_t m_Count = 0;                // of letters typed
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
  std::size_t letters = 0;
  for (std::size_t n = 0; n < hands.size(); ++n) {
    hands[n].join();
    letters += typings[n]->Count();
  }
  std::printf("%d kills, %zu letters typed.\n", run.kills, letters);
  std::filesystem::remove_all(run.folder);
  return letters > 5 * static_cast<std::size_t>(run.kills) ? 0 : 1;  // otherwise nothing was tested
}
