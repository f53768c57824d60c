// The spell checker beside two libraries, each with its own dictionary of American English: words checked a
// second, loading, and how many misspellings are understood.
//
//   SpellBench DICTIONARY.dct WORDLIST MISSPELLINGS.tsv
#include <aspell.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <hunspell/hunspell.hxx>
#include <random>
#include <string>
#include <vector>

#include "device/CodePage.h"
#include "device/DevicePaths.h"
#include "spell/SpellChecker.h"
#include "spell/Suggestions.h"

namespace {

using inspector::device::FromUtf8;
using inspector::device::Text;
using inspector::device::ToUtf8;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kWords = 500'000;
constexpr int kRepetitions = 5;
constexpr std::size_t kFirstOnes = 5;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

double Seconds(const std::function<void()>& run) {
  const auto begin = Clock::now();
  run();
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

double Best(const std::function<void()>& run) {
  double best = Seconds(run);
  for (int n = 1; n < kRepetitions; ++n) best = std::min(best, Seconds(run));
  return best;
}

std::vector<std::string> Lines(const std::string& path) {
  std::ifstream file(path);
  if (!file) Fail(path + " cannot be read.");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

// One that checks and suggests, by whatever means. Words are UTF-8; a text is checked in the form in which
// who uses the speller has it.
struct Speller {
  const char* name;
  std::function<std::size_t(const std::vector<std::string>&, const std::vector<std::u16string_view>&)>
      countMisspelt;
  std::function<std::vector<std::string>(const std::string&)> suggest;
};

template <typename Word, typename Check>
std::size_t CountWrong(const std::vector<Word>& text, Check check) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [&](const Word& word) { return !check(word); }));
}

// Words as they come in a text: the n-th commonest as often as 1/n says, whichever words these are; one in
// twenty with a slip. Always the same.
std::vector<std::string> MakeText(std::vector<std::string> list) {
  std::mt19937 random(1);
  std::shuffle(list.begin(), list.end(), random);
  std::uniform_real_distribution<double> exponent(0, std::log(static_cast<double>(list.size())));
  std::vector<std::string> text;
  while (text.size() < kWords) {
    std::string word = list[static_cast<std::size_t>(std::exp(exponent(random))) - 1];
    if (random() % 20 == 0) word[random() % word.size()] = static_cast<char>('a' + random() % 26);
    text.push_back(std::move(word));
  }
  return text;
}

void CompareChecks(const std::vector<Speller>& spellers, const std::vector<std::string>& list) {
  const std::vector<std::string> text = MakeText(list);
  Text whole;  // as a text lies in memory
  for (const std::string& word : text) whole += FromUtf8(word) + u' ';
  std::vector<std::u16string_view> same;
  for (std::size_t at = 0; at < whole.size(); at = whole.find(u' ', at) + 1)
    same.push_back(std::u16string_view(whole).substr(at, whole.find(u' ', at) - at));
  double own = 0;
  for (const Speller& speller : spellers) {
    std::size_t wrong = 0;
    const double seconds = Best([&] { wrong = speller.countMisspelt(text, same); });
    if (own == 0) own = seconds;
    std::printf("Checking, %s: %.2f million words a second, %.1f %% misspelt; ratio %.1f\n", speller.name,
                static_cast<double>(text.size()) / seconds / 1e6,
                100.0 * static_cast<double>(wrong) / static_cast<double>(text.size()), seconds / own);
  }
}

void CompareSuggestions(const std::vector<Speller>& spellers, const std::vector<std::string>& pairs) {
  for (const Speller& speller : spellers) {
    std::vector<double> times;
    std::size_t first = 0;
    std::size_t among = 0;
    for (const std::string& pair : pairs) {
      const std::size_t tab = pair.find('\t');
      const std::string meant = pair.substr(tab + 1);
      std::vector<std::string> found;
      times.push_back(Seconds([&] { found = speller.suggest(pair.substr(0, tab)); }));
      const auto at = std::find(found.begin(), found.end(), meant);
      first += at == found.begin() && at != found.end();
      among += at - found.begin() < static_cast<std::ptrdiff_t>(kFirstOnes) && at != found.end();
    }
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    const auto percent = [&pairs](std::size_t count) {
      return 100.0 * static_cast<double>(count) / static_cast<double>(pairs.size());
    };
    std::printf("Suggesting, %s: right word first %.1f %%, among five %.1f %%, median %.2f ms\n",
                speller.name, percent(first), percent(among), 1e3 * times[times.size() / 2]);
  }
}

void MeasureLoading(const std::string& dictionary, const std::string& wordList) {
  inspector::device::HostFiles files;
  const inspector::device::DevicePaths paths("/");
  std::size_t size = 0;
  const double read = Best([&] {
    std::ifstream file(dictionary, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    size = bytes.size();
  });
  const double load = Best([&] {
    inspector::spell::SpellChecker checker(files, paths);
    if (checker.Load(dictionary).Code() != 0) Fail(dictionary + " is no dictionary.");
  });
  std::size_t plain = 0;
  for (const std::string& line : Lines(wordList)) plain += line.size() + 1;
  std::printf(
      "Loading: %.2f ms (reading the file byte by byte: %.2f ms); size %zu bytes, %.2f of the plain list\n",
      1e3 * load, 1e3 * read, size, static_cast<double>(size) / static_cast<double>(plain));
}

}  // namespace

int main(int count, char** words) {
  if (count != 4) Fail("SpellBench DICTIONARY.dct WORDLIST MISSPELLINGS.tsv");
  inspector::device::HostFiles files;
  const inspector::device::DevicePaths paths("/");
  inspector::spell::SpellChecker checker(files, paths);
  if (checker.Load(words[1]).Code() != 0) Fail("The dictionary cannot be loaded.");
  inspector::spell::Suggestions suggestions(checker);

  AspellConfig* const config = new_aspell_config();
  aspell_config_replace(config, "lang", "en_US");
  aspell_config_replace(config, "encoding", "utf-8");
  AspellCanHaveError* const made = new_aspell_speller(config);
  if (aspell_error_number(made) != 0) Fail(aspell_error_message(made));
  AspellSpeller* const aspell = to_aspell_speller(made);
  Hunspell hunspell("/usr/share/hunspell/en_US.aff", "/usr/share/hunspell/en_US.dic");

  const std::vector<Speller> spellers = {
      {"own",
       [&](const auto&, const std::vector<std::u16string_view>& text) {
         return CountWrong(text, [&](std::u16string_view word) { return checker.Check(word); });
       },
       [&](const std::string& word) {
         std::vector<std::string> found;
         for (const Text& one : suggestions.For(FromUtf8(word))) found.push_back(ToUtf8(one));
         return found;
       }},
      {"aspell",
       [&](const std::vector<std::string>& text, const auto&) {
         return CountWrong(text, [&](const std::string& word) {
           return aspell_speller_check(aspell, word.c_str(), static_cast<int>(word.size())) == 1;
         });
       },
       [&](const std::string& word) {
         std::vector<std::string> found;
         AspellStringEnumeration* const all = aspell_word_list_elements(
             aspell_speller_suggest(aspell, word.c_str(), static_cast<int>(word.size())));
         while (const char* one = aspell_string_enumeration_next(all)) found.emplace_back(one);
         delete_aspell_string_enumeration(all);
         return found;
       }},
      {"hunspell",
       [&](const std::vector<std::string>& text, const auto&) {
         return CountWrong(text, [&](const std::string& word) { return hunspell.spell(word); });
       },
       [&](const std::string& word) { return hunspell.suggest(word); }}};
  suggestions.For(FromUtf8("rooof"));  // the first one makes a table
  MeasureLoading(words[1], words[2]);
  CompareChecks(spellers, Lines(words[2]));
  CompareSuggestions(spellers, Lines(words[3]));
  delete_aspell_speller(aspell);
  delete_aspell_config(config);
}
