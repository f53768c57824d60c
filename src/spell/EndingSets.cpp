#include "spell/EndingSets.h"

#include <algorithm>
#include <map>
#include <queue>
#include <unordered_map>

#include "spell/DictionaryFormat.h"
#include "spell/Letters.h"

namespace inspector::spell {
namespace {

constexpr std::size_t kLongestEnding = 7;
constexpr std::size_t kShortestStem = 2;
// Every ending costs the checker a look at a word that ends so.
constexpr std::size_t kMostUsed = 200;
// A set that fewer stems share costs more than it saves.
constexpr std::size_t kFewestStems = 3;
// What an entry takes besides its letters, and what a letter takes on average, in tenths of a byte.
constexpr int kEntryCost = 20;
constexpr int kLetterCost = 58;

constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

int EntryCost(std::size_t letters) {
  return kEntryCost + static_cast<int>(letters) * kLetterCost / 10;
}

using Set = std::vector<std::size_t>;

class Division {
public:
  explicit Division(std::vector<std::string> words) : m_Words(std::move(words)) {
    std::sort(m_Words.begin(), m_Words.end());
    m_IsTaken.resize(m_Words.size());
  }

  EndingSets Make() {
    ChooseEndings();
    CollectStems();
    Take([this](const Stem& stem) { return Open(stem); });
    KeepCommonSets();
    Take([this](const Stem& stem) { return BestKnown(Open(stem)); });
    return Result();
  }

private:
  // A beginning, with the words that continue it by an ending.
  struct Stem {
    std::string_view text;
    std::vector<std::pair<std::size_t, std::size_t>> words;  // ending, word; ascending
    Set taken;
  };

  // Calls `visit(stem, ending, word)` for every way to cut a word.
  template <typename Visit>
  void ForEachCut(Visit visit) const {
    for (std::size_t n = 0; n < m_Words.size(); ++n) {
      const std::string_view word = m_Words[n];
      for (std::size_t length = 0; length <= kLongestEnding && length < word.size(); ++length) {
        if (length > 0 && Letters::IsCapital(word[word.size() - length])) break;
        if (length > 0 && word.size() - length < kShortestStem) break;
        visit(word.substr(0, word.size() - length), word.substr(word.size() - length), n);
      }
    }
  }

  // An ending counts where its stem has others.
  void ChooseEndings() {
    std::unordered_map<std::string_view, unsigned> continued;
    ForEachCut([&](std::string_view stem, std::string_view, std::size_t) { ++continued[stem]; });
    std::unordered_map<std::string_view, std::size_t> uses;
    ForEachCut([&](std::string_view stem, std::string_view ending, std::size_t) {
      // Long endings and long stems save more.
      if (continued[stem] > 1) uses[ending] += stem.size() + ending.size();
    });
    std::vector<std::pair<std::string_view, std::size_t>> ranked(uses.begin(), uses.end());
    std::sort(ranked.begin(), ranked.end(), [](const auto& one, const auto& other) {
      return one.second != other.second ? one.second > other.second : one.first < other.first;
    });
    ranked.resize(std::min(ranked.size(), kMostUsed));
    m_Endings.emplace_back();
    for (const auto& [ending, count] : ranked)
      if (!ending.empty()) m_Endings.emplace_back(ending);
    for (std::size_t n = 0; n < m_Endings.size(); ++n) m_EndingNumbers[m_Endings[n]] = n;
  }

  void CollectStems() {
    std::unordered_map<std::string_view, std::size_t> numbers;
    ForEachCut([&](std::string_view stem, std::string_view ending, std::size_t word) {
      const auto number = m_EndingNumbers.find(ending);
      if (number == m_EndingNumbers.end()) return;
      const auto [at, isNew] = numbers.try_emplace(stem, m_Stems.size());
      if (isNew) m_Stems.push_back({stem, {}, {}});
      m_Stems[at->second].words.emplace_back(number->second, word);
    });
    for (Stem& stem : m_Stems) std::sort(stem.words.begin(), stem.words.end());
  }

  // The endings of words that nobody has taken yet.
  Set Open(const Stem& stem) const {
    Set open;
    for (const auto& [ending, word] : stem.words)
      if (!m_IsTaken[word]) open.push_back(ending);
    return open;
  }

  // What it saves to store these words as one entry.
  int Gain(const Stem& stem, const Set& set) const {
    if (set.empty()) return 0;
    int gain = -EntryCost(stem.text.size());
    for (const std::size_t ending : set) gain += EntryCost(stem.text.size() + m_Endings[ending].size());
    return gain;
  }

  // Takes the stems that save most, each with what `choose` finds for it, until none saves anything.
  template <typename Choose>
  void Take(Choose choose) {
    struct Candidate {
      int gain;
      std::size_t stem;
      bool operator<(const Candidate& other) const {
        return gain != other.gain ? gain < other.gain : stem > other.stem;
      }
    };
    std::priority_queue<Candidate> queue;
    for (std::size_t n = 0; n < m_Stems.size(); ++n) {
      if (!m_Stems[n].taken.empty() || m_Stems[n].words.size() < 2) continue;
      const int gain = Gain(m_Stems[n], choose(m_Stems[n]));
      if (gain > 0) queue.push({gain, n});
    }
    while (!queue.empty()) {
      const Candidate best = queue.top();
      queue.pop();
      Stem& stem = m_Stems[best.stem];
      Set set = choose(stem);
      const int gain = Gain(stem, set);
      if (set.size() < 2 || gain <= 0) continue;
      if (gain < best.gain) {  // others have taken words of it since
        queue.push({gain, best.stem});
        continue;
      }
      Mark(stem, set, true);
      stem.taken = std::move(set);
    }
  }

  void Mark(const Stem& stem, const Set& set, bool isTaken) {
    for (const auto& [ending, word] : stem.words)
      if (std::binary_search(set.begin(), set.end(), ending)) m_IsTaken[word] = isTaken;
  }

  void KeepCommonSets() {
    std::map<Set, std::size_t> uses;
    for (const Stem& stem : m_Stems)
      if (!stem.taken.empty()) ++uses[stem.taken];
    std::vector<std::pair<std::size_t, const Set*>> ranked;
    for (const auto& [set, count] : uses)
      if (count >= kFewestStems) ranked.emplace_back(count, &set);
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& one, const auto& other) { return one.first > other.first; });
    ranked.resize(std::min<std::size_t>(ranked.size(), kMostSets - 1));
    for (const auto& [count, set] : ranked) m_Known[set->front()].push_back(*set);
    std::map<Set, bool> isKnown;
    for (const auto& [first, sets] : m_Known)
      for (const Set& set : sets) isKnown[set] = true;
    for (Stem& stem : m_Stems) {
      if (stem.taken.empty() || isKnown.contains(stem.taken)) continue;
      Mark(stem, stem.taken, false);
      stem.taken.clear();
    }
  }

  // The largest known set within these endings.
  Set BestKnown(const Set& open) const {
    const Set* best = nullptr;
    for (const std::size_t first : open) {
      const auto sets = m_Known.find(first);
      if (sets == m_Known.end()) continue;
      for (const Set& set : sets->second) {
        if ((!best || set.size() > best->size()) &&
            std::includes(open.begin(), open.end(), set.begin(), set.end()))
          best = &set;
      }
    }
    return best ? *best : Set();
  }

  EndingSets Result() const {
    EndingSets result;
    // Sets that many stems have come first, since small numbers take less room.
    std::map<Set, std::size_t> uses;
    for (const Stem& stem : m_Stems)
      if (!stem.taken.empty()) ++uses[stem.taken];
    uses[Set{0}] = static_cast<std::size_t>(std::count(m_IsTaken.begin(), m_IsTaken.end(), false));
    std::vector<std::pair<std::size_t, Set>> ranked;
    for (const auto& [set, count] : uses) ranked.emplace_back(count, set);
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& one, const auto& other) { return one.first > other.first; });
    std::map<Set, std::size_t> numbers;
    std::vector<std::size_t> endings(m_Endings.size(), kNobody);
    for (auto& [count, set] : ranked) {
      numbers[set] = result.sets.size();
      Set renamed;
      for (const std::size_t ending : set) {
        if (endings[ending] == kNobody) {
          endings[ending] = result.endings.size();
          result.endings.push_back(m_Endings[ending]);
        }
        renamed.push_back(endings[ending]);
      }
      std::sort(renamed.begin(), renamed.end());
      result.sets.push_back(std::move(renamed));
    }
    for (const Stem& stem : m_Stems)
      if (!stem.taken.empty()) result.stems.push_back({std::string(stem.text), numbers[stem.taken]});
    for (std::size_t n = 0; n < m_Words.size(); ++n)
      if (!m_IsTaken[n]) result.stems.push_back({m_Words[n], numbers[Set{0}]});
    return result;
  }

  std::vector<std::string> m_Words;
  std::vector<bool> m_IsTaken;
  std::vector<std::string> m_Endings;  // the first is empty
  std::unordered_map<std::string_view, std::size_t> m_EndingNumbers;
  std::vector<Stem> m_Stems;
  std::map<std::size_t, std::vector<Set>> m_Known;  // by their first ending
};

}  // namespace

EndingSets DivideWords(std::vector<std::string> words) {
  return Division(std::move(words)).Make();
}

}  // namespace inspector::spell
