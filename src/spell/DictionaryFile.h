// A compiled dictionary: read in one go, and asked as it lies in the file. docs/dictionary-format.md has the
// layout.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/Files.h"
#include "spell/WordCodes.h"

namespace inspector::spell {

// What became of reading a dictionary.
struct LoadResult {
  enum class Outcome {
    Loaded,
    Failed,    // there is none, or it is none
    MustStop,  // the program must not go on with such a file: whoever runs it stores what is being typed,
               // writes the message and ends
  };
  Outcome outcome = Outcome::Failed;
  std::string message;  // for the standard error output, with its line end; empty where nothing is said

  // As the tools have it: 0 or -1.
  int Code() const { return outcome == Outcome::Loaded ? 0 : -1; }
};

// Whatever the bytes of a file are, no question reads outside of them or goes on for ever: a chain has an end
// by its size, and what makes no sense ends the search in it.
class DictionaryFile {
public:
  using WordSink = std::function<void(std::string_view word)>;

  DictionaryFile() = default;
  // The codes point into the bytes.
  DictionaryFile(const DictionaryFile&) = delete;
  DictionaryFile& operator=(const DictionaryFile&) = delete;

  // Takes the place of what was loaded before, unless it fails.
  LoadResult Load(device::Files& files, const std::filesystem::path& path);

  bool IsLoaded() const { return m_Bytes != nullptr; }
  // A word in the code page, with its capitals. An entry without capitals accepts lower case, Capitalised and
  // UPPER case; one with capitals accepts itself and UPPER case.
  bool Accepts(std::string_view word) const;
  // Whether a character code counts as part of a word.
  bool IsWordCharacter(std::uint8_t code) const {
    return (m_Bytes[kWordCharacterAt + code / 8] >> code % 8 & 1) != 0;
  }
  // Every word with its capitals, in the order of the file, which is none.
  void ForEachWord(const WordSink& sink) const;
  // What is wrong in a file that loads, in words for who builds dictionaries; empty when nothing is.
  std::vector<std::string> FindFaults() const;

  std::uint32_t Slots() const { return m_Slots; }
  std::size_t Size() const { return m_Size; }

private:
  struct Entry;
  struct Typed;
  class Chain;

  LoadResult Read(device::InputFile& file, std::uint64_t size);
  // False when the tables of endings do not fit into the store.
  bool ReadEndings();
  void AddEnding(std::string_view ending, std::uint8_t number);
  bool HasStem(const Typed& typed, std::size_t length, std::uint8_t ending) const;
  bool Matches(const Entry& entry, const Typed& typed, std::size_t length) const;
  bool SetHas(std::uint32_t set, std::uint8_t ending) const {
    return (m_Sets[static_cast<std::size_t>(set) * kSetBytes + ending / 8] >> ending % 8 & 1) != 0;
  }
  // Calls onWord(slot, word) for every word, and onFault(slot, words) for what makes no sense; after that the
  // rest of the chain is passed over.
  template <typename Word, typename Fault>
  void Walk(Word onWord, Fault onFault) const;
  // The word of an entry without its ending; false when a code has no meaning.
  bool StemOf(const Entry& entry, std::string& stem) const;

  static constexpr std::size_t kSetBytes = 32;  // a bit for each ending
  static constexpr int kNoEnding = -1;

  std::unique_ptr<std::uint8_t[]> m_Bytes;  // header, tables, slots, filters, store
  std::size_t m_Size = 0;
  WordCodes m_Codes;
  std::uint32_t m_Slots = 0;
  const std::uint8_t* m_SlotTable = nullptr;
  const std::uint8_t* m_Filters = nullptr;
  const std::uint8_t* m_Store = nullptr;
  std::uint32_t m_StoreSize = 0;

  std::vector<std::string> m_Endings;
  std::uint32_t m_SetCount = 0;
  std::vector<std::uint8_t> m_Sets;
  std::size_t m_Width = 0;  // of a node below
  // The endings from their last character to their first: of each node, the next one by the code of a
  // character (0 for none), and the ending that is complete there.
  std::vector<std::uint16_t> m_Next;
  std::vector<std::int16_t> m_EndingAt;
};

}  // namespace inspector::spell
