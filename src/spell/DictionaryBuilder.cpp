#include "spell/DictionaryBuilder.h"

#include <algorithm>

#include "device/CodePage.h"
#include "spell/CodeTables.h"
#include "spell/DictionaryFormat.h"
#include "spell/EndingSets.h"
#include "spell/Letters.h"
#include "spell/WordCodes.h"
#include "spell/WordLines.h"

namespace inspector::spell {
namespace {

// Chains grow after that, instead of the table: each slot takes ten bytes, and a tablet's cache is small.
constexpr std::size_t kMostBuiltSlots = 16384;
constexpr std::size_t kEntriesPerSlot = 2;

struct BuiltEntry {
  std::uint32_t hash = 0;
  std::string bytes;
  bool operator<(const BuiltEntry& other) const {
    // Short words are asked for most.
    return bytes.size() != other.bytes.size() ? bytes.size() < other.bytes.size() : bytes < other.bytes;
  }
};

EntryCase EntryCaseOf(std::string_view stem) {
  switch (Letters::CaseOf(stem)) {
    case WordCase::Lower:
      return EntryCase::Lower;
    case WordCase::Capitalised:
    case WordCase::Single:
      return EntryCase::Capitalised;
    case WordCase::Upper:
      return EntryCase::Upper;
    case WordCase::Mixed:
      break;
  }
  return EntryCase::Mixed;
}

BuiltEntry MakeEntry(const WordStem& word, const WordCodes& table) {
  std::string codes;
  table.AppendEncoded(word.stem, codes);
  BuiltEntry entry;
  entry.hash = kHashStart;
  for (const char code : codes) entry.hash = HashStep(entry.hash, static_cast<std::uint8_t>(code));
  entry.hash = HashEnd(entry.hash);

  const EntryCase letterCase = EntryCaseOf(word.stem);
  const bool isLong = codes.size() >= kLongWord;
  entry.bytes.push_back(static_cast<char>(static_cast<unsigned>(letterCase) << kCaseShift |
                                          (isLong ? kLongWord : codes.size())));
  if (isLong) entry.bytes.push_back(static_cast<char>(codes.size()));
  if (word.set < kShortSets) {
    entry.bytes.push_back(static_cast<char>(word.set));
  } else {
    entry.bytes.push_back(static_cast<char>(kShortSets + ((word.set - kShortSets) >> 8)));
    entry.bytes.push_back(static_cast<char>((word.set - kShortSets) & 0xFF));
  }
  if (letterCase == EntryCase::Mixed) {
    std::string places;
    for (std::size_t at = 0; at < word.stem.size(); ++at)
      if (Letters::IsCapital(word.stem[at])) places.push_back(static_cast<char>(at));
    entry.bytes.push_back(static_cast<char>(places.size()));
    entry.bytes += places;
  }
  entry.bytes += codes;
  return entry;
}

std::string EndingTables(const EndingSets& sets) {
  std::string bytes;
  Append16(bytes, static_cast<std::uint32_t>(sets.endings.size()));
  Append16(bytes, static_cast<std::uint32_t>(sets.sets.size()));
  for (const std::string& ending : sets.endings) {
    bytes.push_back(static_cast<char>(ending.size()));
    bytes += ending;
  }
  for (const std::vector<std::size_t>& set : sets.sets) {
    bytes.push_back(static_cast<char>(set.size()));
    for (const std::size_t ending : set) bytes.push_back(static_cast<char>(ending));
  }
  return bytes;
}

// Letters of the language, and what else the words have.
std::string WordCharacterSet(const std::set<std::string>& words) {
  std::string set(kWordCharacterBytes, '\0');
  const auto add = [&set](char character) {
    const auto code = static_cast<std::uint8_t>(character);
    set[code / 8] = static_cast<char>(static_cast<std::uint8_t>(set[code / 8]) | 1u << code % 8);
  };
  for (const std::string& word : words) {
    for (const char character : word) {
      add(Letters::Lower(character));
      add(Letters::Upper(character));
      if (character == kApostrophe) add(kTypographicApostrophe);
    }
  }
  return set;
}

bool IsStorable(char16_t unit) {
  return unit > u' ' && unit != 0x7F && unit != 0xA0;
}

}  // namespace

bool DictionaryBuilder::Add(TextView word) {
  std::string bytes = WordBytes(word);
  // 255 codes are the longest word that an entry can hold.
  const bool isStorable = !word.empty() && bytes.size() < kMostWordBytes && device::FitsCodePage(word) &&
                          std::all_of(word.begin(), word.end(), IsStorable);
  if (isStorable)
    m_Words.insert(std::move(bytes));
  else
    m_Refused.emplace_back(word);
  return isStorable;
}

bool DictionaryBuilder::AddLines(std::string_view utf8) {
  bool areAllTaken = true;
  ForEachLine(utf8, "\n", [&](std::string_view line) {
    const std::string_view word = WithoutBlanks(line.substr(0, line.find('#')));
    if (!word.empty()) areAllTaken = Add(device::FromUtf8(word)) && areAllTaken;
  });
  return areAllTaken;
}

std::optional<std::string> DictionaryBuilder::Build(std::string& problem) const {
  const EndingSets sets = DivideWords({m_Words.begin(), m_Words.end()});
  std::vector<std::string> stems;
  std::string others;
  for (const WordStem& word : sets.stems) stems.push_back(Letters::LowerAll(word.stem));
  for (const std::string& ending : sets.endings) others += ending;
  const std::optional<CodeTables> tables = MakeCodeTables(stems, others);
  if (!tables) {
    problem = "the words have more different characters than there are codes";
    return std::nullopt;
  }
  if (tables->bytes.size() != TableBytes(tables->side)) {
    problem = "lexdump used wrong number of bytes\n";  // these words are fixed
    return std::nullopt;
  }
  const WordCodes table(tables->Data(), tables->side);

  const std::size_t slots = std::clamp<std::size_t>(sets.stems.size() / kEntriesPerSlot, 1, kMostBuiltSlots);
  std::vector<std::vector<BuiltEntry>> chains(slots);
  for (const WordStem& word : sets.stems) {
    BuiltEntry entry = MakeEntry(word, table);
    chains[SlotOf(entry.hash, static_cast<std::uint32_t>(slots))].push_back(std::move(entry));
  }

  std::string slotTable;
  std::string filters;
  std::string store = EndingTables(sets);
  for (std::vector<BuiltEntry>& chain : chains) {
    std::sort(chain.begin(), chain.end());
    const std::size_t offset = store.size();
    std::uint16_t filter = 0;
    for (const BuiltEntry& entry : chain) {
      filter = static_cast<std::uint16_t>(filter | FilterBitOf(entry.hash));
      store += entry.bytes;
    }
    const std::size_t size = store.size() - offset;
    if (size >= kEmptySlot) {
      problem = "too many words for " + std::to_string(slots) + " slots";
      return std::nullopt;
    }
    Append16(slotTable, chain.empty() ? kEmptySlot : static_cast<std::uint32_t>(size));
    Append32(slotTable, chain.empty() ? 0 : static_cast<std::uint32_t>(offset));
    Append16(slotTable, static_cast<std::uint32_t>(chain.size()));
    Append16(filters, filter);
  }

  std::string file;
  Append32(file, kMagic);
  Append32(file, kVersion);
  Append32(file, tables->side);
  Append32(file, static_cast<std::uint32_t>(tables->bytes.size()));
  Append32(file, static_cast<std::uint32_t>(slots));
  Append32(file, static_cast<std::uint32_t>(store.size()));
  return file + WordCharacterSet(m_Words) + tables->bytes + slotTable + filters + store;
}

}  // namespace inspector::spell
