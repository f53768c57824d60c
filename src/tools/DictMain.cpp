// inspector-dict: makes dictionaries of lists of words, shows what is in one, and looks for faults. Needs no
// screens, since the build itself runs it.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "device/CodePage.h"
#include "device/Files.h"
#include "spell/DictionaryBuilder.h"
#include "spell/DictionaryFile.h"

namespace {

using inspector::device::HostFiles;

constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr std::uint64_t kMostListBytes = 256u << 20;

int Fail(const std::string& problem) {
  std::cerr << "inspector-dict: " << problem << "\n";
  return kFailed;
}

// Messages with fixed words bring their line end along.
int Refuse(const std::string& problem) {
  if (!problem.ends_with('\n')) return Fail(problem);
  std::cerr << problem;
  return kFailed;
}

int Build(const std::string& target, const std::vector<std::string>& lists) {
  HostFiles files;
  inspector::spell::DictionaryBuilder builder;
  for (const std::string& list : lists) {
    const std::optional<std::string> words = inspector::device::ReadWhole(files, list, kMostListBytes);
    if (!words) return Fail(list + " cannot be read.");
    builder.AddLines(*words);
  }
  for (const inspector::device::Text& word : builder.Refused())
    std::cerr << "Left out, because the code page or an entry cannot hold it: "
              << inspector::device::ToUtf8(word) << "\n";
  std::string problem;
  const std::optional<std::string> bytes = builder.Build(problem);
  if (!bytes) return Refuse(problem);
  const auto file = files.Create(target);
  if (!file->Write(*bytes) || !file->Commit()) return Fail(target + ": " + file->Error());
  std::cout << target << ": " << builder.Words() << " words, " << bytes->size() << " bytes\n";
  return 0;
}

bool Load(inspector::spell::DictionaryFile& dictionary, const std::string& path) {
  HostFiles files;
  const inspector::spell::LoadResult result = dictionary.Load(files, path);
  if (result.Code() == 0) return true;
  std::cerr << result.message;
  Fail(path + " is no dictionary, or cannot be read.");
  return false;
}

int Dump(const std::string& path) {
  inspector::spell::DictionaryFile dictionary;
  if (!Load(dictionary, path)) return kFailed;
  std::vector<std::string> words;
  dictionary.ForEachWord([&words](std::string_view word) {
    words.push_back(inspector::device::ToUtf8(inspector::device::FromCodePage(word)));
  });
  std::sort(words.begin(), words.end());
  for (const std::string& word : words) std::cout << word << "\n";
  return std::cout.flush() ? 0 : Fail("the words could not be written.");
}

int Check(const std::string& path) {
  inspector::spell::DictionaryFile dictionary;
  if (!Load(dictionary, path)) return kFailed;
  std::size_t words = 0;
  dictionary.ForEachWord([&words](std::string_view) { ++words; });
  const std::vector<std::string> faults = dictionary.FindFaults();
  std::cout << path << ": " << (faults.empty() ? "sound" : "faulty") << ", " << words << " words, "
            << dictionary.Slots() << " slots, " << dictionary.Size() << " bytes\n";
  for (const std::string& fault : faults) std::cout << "  " << fault << "\n";
  return faults.empty() ? 0 : kFailed;
}

}  // namespace

int main(int count, char** words) {
  CLI::App app("Makes and examines the dictionaries of Inspector. Lists of words are UTF-8, one word a line.",
               "inspector-dict");
  app.require_subcommand(1);
  std::string path = "spell.dct";
  std::vector<std::string> lists;
  CLI::App* const build = app.add_subcommand("build", "make a dictionary of lists of words");
  build->add_option("-o,--out", path, "the dictionary to write")->capture_default_str();
  build->add_option("WORDS", lists, "lists of words")->required();
  CLI::App* const dump = app.add_subcommand("dump", "print every word of a dictionary, in order");
  dump->add_option("DICTIONARY", path, "the dictionary")->required();
  CLI::App* const check = app.add_subcommand("check", "look for faults; ends with 1 when there are any");
  check->add_option("DICTIONARY", path, "the dictionary")->required();
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUsage;
  }
  if (build->parsed()) return Build(path, lists);
  return dump->parsed() ? Dump(path) : Check(path);
}
