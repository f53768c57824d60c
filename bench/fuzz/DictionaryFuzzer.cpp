// Any bytes as a dictionary, and any text as a list of words: what the first says must end and stay within
// it, and of the second a dictionary must come that has these words and no other.
#include <algorithm>
#include <set>

#include "Fuzzer.h"
#include "device/CodePage.h"
#include "spell/DictionaryBuilder.h"
#include "spell/TextCheck.h"

namespace inspector::fuzz {
namespace {

class MemoryFile : public device::InputFile {
public:
  explicit MemoryFile(std::string_view bytes) : m_Bytes(bytes), m_Size(bytes.size()) {}

  std::int64_t Read(char* buffer, std::size_t size) override {
    const std::size_t count = m_Bytes.copy(buffer, size);
    m_Bytes.remove_prefix(count);
    return static_cast<std::int64_t>(count);
  }
  std::optional<std::uint64_t> Size() override { return m_Size; }

private:
  std::string_view m_Bytes;
  std::uint64_t m_Size;
};

class MemoryFiles : public device::HostFiles {
public:
  explicit MemoryFiles(std::string_view bytes) : m_Bytes(bytes) {}
  std::unique_ptr<device::InputFile> OpenForReading(const std::filesystem::path&) override {
    return std::make_unique<MemoryFile>(m_Bytes);
  }

private:
  std::string_view m_Bytes;
};

void TryFile(std::string_view bytes) {
  MemoryFiles files(bytes);
  spell::DictionaryFile dictionary;
  const bool isLoaded = dictionary.Load(files, "spell.dct").Code() == 0;
  Expect(isLoaded == dictionary.IsLoaded(), "what fails is not loaded");
  if (!isLoaded) return;
  Expect(dictionary.Size() <= bytes.size(), "a dictionary is no larger than its file");
  constexpr int kMostAsked = 2000;
  int asked = 0;
  dictionary.ForEachWord([&](std::string_view word) {
    if (++asked <= kMostAsked) dictionary.Accepts(word);
  });
  // The bytes themselves are words as good as any.
  for (std::size_t at = 0; at < std::min<std::size_t>(bytes.size(), 600); at += 3)
    dictionary.Accepts(bytes.substr(at, at % 20));
}

void TryList(std::string_view list) {
  spell::DictionaryBuilder builder;
  builder.AddLines(list);
  std::string problem;
  const std::optional<std::string> bytes = builder.Build(problem);
  Expect(bytes || !problem.empty(), "who builds nothing says why");
  if (!bytes) return;
  MemoryFiles files(*bytes);
  const device::DevicePaths paths("/");
  spell::SpellChecker checker(files, paths);
  Expect(checker.Load("spell.dct").Code() == 0, "what was built can be loaded");
  const spell::DictionaryFile& dictionary = checker.Dictionary();
  std::set<std::string> words;
  dictionary.ForEachWord([&](std::string_view word) {
    Expect(words.emplace(word).second, "each word is there once");
    Expect(dictionary.Accepts(word), "what is there is accepted");
  });
  Expect(words.size() == builder.Words(), "all words are there, and no other");
  Expect(dictionary.FindFaults().empty(), "what was built is sound");

  const device::Text text = device::FromUtf8(list);
  std::size_t end = 0;
  for (const spell::MisspeltWord& word : spell::TextCheck(checker).FindMisspelt(text)) {
    Expect(word.range.at >= end && word.range.length > 0 && word.range.End() <= text.size(),
           "misspelt words follow each other in the text");
    Expect(text.compare(word.range.at, word.range.length, word.word) == 0, "a word is what stands there");
    end = word.range.End();
  }
}

}  // namespace
}  // namespace inspector::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(bytes), size);
  if (input.starts_with("ISPL"))
    inspector::fuzz::TryFile(input);
  else
    inspector::fuzz::TryList(input);
  return 0;
}
