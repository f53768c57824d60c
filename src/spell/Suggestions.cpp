#include "spell/Suggestions.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "device/CodePage.h"
#include "spell/EditCost.h"
#include "spell/SoundKey.h"

namespace inspector::spell {
namespace {

constexpr std::size_t kFurthestLength = 3;
constexpr int kJoined = -170;       // a blank or a hyphen in the middle of a word: nothing is likelier
constexpr int kSplit = 100;         // a blank left out
constexpr int kClingingPart = -30;  // ... beside a short word that often runs into its neighbours
constexpr int kShortPart = 60;      // ... beside other letters, one or two, which much can be cut into
constexpr int kName = 70;           // a small letter where a name has a capital
constexpr int kPossessive = 60;     // a word that is in the dictionary for its "'s" only
constexpr int kSoundsAlike = 35;    // off, for the same sound
constexpr int kCommonStep = 14;     // off, for each doubling of how often it is written
constexpr int kCommonMost = 60;

constexpr std::string_view kClinging[] = {"a",  "an", "as", "at", "be", "by", "in", "is",
                                          "it", "no", "of", "on", "or", "so", "to", "up"};

// What an edit may cost altogether: longer words hold more slips.
int MostCost(std::size_t letters) {
  return letters <= 3 ? 160 : letters <= 5 ? 210 : letters <= 8 ? 260 : 320;
}

bool HasCapital(std::string_view word) {
  return std::any_of(word.begin(), word.end(), Letters::IsCapital);
}

std::string InCaseOf(std::string_view typed, std::string word) {
  switch (Letters::CaseOf(typed)) {
    case WordCase::Upper:
      return Letters::UpperAll(word);
    case WordCase::Capitalised:
    case WordCase::Single:
      if (!HasCapital(word)) {
        const auto first = std::find_if(word.begin(), word.end(), Letters::IsLetter);
        if (first != word.end()) *first = Letters::Upper(*first);
      }
      return word;
    case WordCase::Lower:
    case WordCase::Mixed:
      break;
  }
  return word;
}

}  // namespace

// One misspelt word.
class Suggestions::Search {
public:
  Search(const Suggestions& suggestions, TextView misspelt)
      : m_Checker(suggestions.m_Checker),
        m_Common(suggestions.m_Common),
        m_Table(*suggestions.m_Table),
        m_Typed(WordBytes(misspelt)),
        m_Lower(Letters::LowerAll(m_Typed)),
        m_Cost(m_Lower),
        m_Most(MostCost(m_Lower.size())),
        m_Sound(SoundKey(m_Lower)),
        m_Letters(WordTable::LettersOf(m_Lower)) {}

  std::vector<Text> Run(std::size_t most) {
    // The likeliest come first, for the sake of the limit.
    ConsiderJoined();
    ConsiderSplit();
    m_Table.ForEachSounding(m_Sound,
                            [this](std::string_view word) { Consider(word, m_Most + EditCost::kSlip); });
    const auto considerLike = [this](std::size_t length) {
      m_Table.ForEachLike(m_Letters, length, [this](std::string_view word) { Consider(word, m_Most); });
    };
    const std::size_t length = m_Lower.size();
    considerLike(length);
    for (std::size_t more = 1; more <= kFurthestLength; ++more) {
      considerLike(length + more);
      if (length > more) considerLike(length - more);
    }
    for (const Text& word : m_Checker.Accepted().Words())
      if (word.size() <= kMostWordBytes) Consider(WordBytes(word), m_Most);
    return Best(most);
  }

private:
  void Add(std::string word, int cost) {
    const auto [at, isNew] = m_Found.emplace(std::move(word), cost);
    if (!isNew) {
      at->second = std::min(at->second, cost);
      return;
    }
    m_Best.insert(cost);
    if (m_Best.size() > kMost) m_Best.erase(std::prev(m_Best.end()));
  }

  int CommonBonus(const std::string& lower) const {
    const unsigned count = m_Common.Of(lower);
    return std::min(static_cast<int>(kCommonStep * std::log2(1.0 + count)), kCommonMost);
  }

  // What costs more cannot come before the best that were found, whatever is taken off.
  int Limit(int most) const {
    return m_Best.size() < kMost ? most : std::min(most, *m_Best.rbegin() + kSoundsAlike + kCommonMost);
  }

  void Consider(std::string_view word, int most) {
    std::string& lower = m_LowerWord;
    lower.assign(word);
    std::transform(lower.begin(), lower.end(), lower.begin(), Letters::Lower);
    int cost = m_Cost.Of(lower, Limit(most));
    if (cost == EditCost::kTooMuch) return;
    if (SoundKey(lower) == m_Sound) cost -= std::min(kSoundsAlike, cost / 2);
    if (lower != word && m_Typed == m_Lower && lower != m_Lower) cost += kName;
    if (lower.ends_with("'s") && !m_Lower.ends_with('s')) cost += kPossessive;
    cost -= CommonBonus(lower);
    Add(std::string(word), cost);
  }

  void ConsiderJoined() {
    std::string joined = m_Lower;
    std::erase_if(joined, [](char byte) { return byte == ' ' || byte == '-'; });
    if (joined.size() != m_Lower.size() && m_Checker.Check(device::FromCodePage(joined)))
      Add(joined, kJoined);
  }

  void ConsiderSplit() {
    for (std::size_t at = 1; at < m_Lower.size(); ++at) {
      const std::string first = m_Lower.substr(0, at);
      const std::string second = m_Lower.substr(at);
      if (!Letters::IsLetter(first.back()) || !Letters::IsLetter(second.front())) continue;
      if (!IsSplitPart(first) || !IsSplitPart(second)) continue;
      const int parts = PartCost(first) + PartCost(second);
      const int common = std::min(CommonBonus(first), CommonBonus(second));
      Add(first + " " + second, kSplit + parts - common);
    }
  }
  static int PartCost(std::string_view part) {
    if (std::find(std::begin(kClinging), std::end(kClinging), part) != std::end(kClinging))
      return kClingingPart;
    return part.size() <= 2 ? kShortPart : 0;
  }
  bool IsSplitPart(const std::string& part) const {
    if (part.size() == 1 && part != "a") return false;
    return m_Checker.Check(device::FromCodePage(part));
  }

  std::vector<Text> Best(std::size_t most) const {
    std::vector<std::pair<int, std::string>> ranked;
    for (const auto& [word, cost] : m_Found) ranked.emplace_back(cost, word);
    std::sort(ranked.begin(), ranked.end());
    std::vector<Text> best;
    for (const auto& [cost, word] : ranked) {
      if (best.size() >= most) break;
      Text shown = device::FromCodePage(InCaseOf(m_Typed, word));
      if (std::find(best.begin(), best.end(), shown) == best.end()) best.push_back(std::move(shown));
    }
    return best;
  }

  const SpellChecker& m_Checker;
  const WordCounts& m_Common;
  const WordTable& m_Table;
  std::string m_Typed;
  std::string m_Lower;
  EditCost m_Cost;
  int m_Most;
  std::string m_Sound;
  WordTable::LetterSet m_Letters;
  std::string m_LowerWord;
  std::map<std::string, int> m_Found;
  std::multiset<int> m_Best;  // the lowest costs so far
};

std::vector<Text> Suggestions::For(TextView misspelt, std::size_t most) {
  if (!m_Checker.HasDictionary() || misspelt.empty() || misspelt.size() > kMostWordBytes) return {};
  if (!m_Table || m_Generation != m_Checker.Generation()) {
    m_Table = std::make_unique<WordTable>(m_Checker.Dictionary());
    m_Generation = m_Checker.Generation();
  }
  return Search(*this, misspelt).Run(most);
}

}  // namespace inspector::spell
