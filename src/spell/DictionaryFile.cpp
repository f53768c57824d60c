#include "spell/DictionaryFile.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "spell/Letters.h"

namespace inspector::spell {
namespace {

LoadResult Failed(std::string message = {}) {
  return {LoadResult::Outcome::Failed, std::move(message)};
}

// The words of the messages are fixed.
LoadResult OutOfMemory(std::uint64_t bytes) {
  return Failed("out of memory: can't allocate " + std::to_string(bytes) + " bytes\n");
}

}  // namespace

// One word, or the beginning that several words share.
struct DictionaryFile::Entry {
  EntryCase letterCase = EntryCase::Lower;
  std::uint32_t set = 0;
  const std::uint8_t* capitals = nullptr;  // of a mixed one: how many, and the places of each
  const std::uint8_t* codes = nullptr;
  std::size_t codeCount = 0;
};

// The entries of one slot.
class DictionaryFile::Chain {
public:
  Chain(const DictionaryFile& file, std::uint32_t slot) : m_SetCount(file.m_SetCount) {
    const std::uint8_t* const at = file.m_SlotTable + slot * kSlotBytes;
    const std::uint16_t size = Read16(at);
    const std::uint32_t offset = Read32(at + 2);
    if (size == kEmptySlot || offset > file.m_StoreSize || size > file.m_StoreSize - offset) {
      m_IsBroken = size != kEmptySlot;
      return;
    }
    m_At = file.m_Store + offset;
    m_End = m_At + size;
    m_Size = size;
    m_Said = Read16(at + 6);
  }

  // False at the end, or where what follows is no entry.
  bool Next(Entry& entry) {
    if (m_At == m_End) return false;
    m_IsBroken = !ReadEntry(entry);
    if (m_IsBroken) m_At = m_End;
    m_Count += m_IsBroken ? 0 : 1;
    return !m_IsBroken;
  }
  // In bytes; chains of a sound file share none.
  std::size_t Size() const { return m_Size; }
  bool IsBroken() const { return m_IsBroken || m_Count != m_Said; }

private:
  std::size_t Left() const { return static_cast<std::size_t>(m_End - m_At); }

  bool ReadEntry(Entry& entry) {
    if (Left() < 3) return false;
    const std::uint8_t head = *m_At++;
    entry.letterCase = static_cast<EntryCase>(head >> kCaseShift);
    entry.codeCount = head & kCodeCountMask;
    if (entry.codeCount == kLongWord) entry.codeCount = *m_At++;
    if (Left() < 2) return false;
    entry.set = *m_At++;
    if (entry.set >= kShortSets) entry.set = kShortSets + ((entry.set - kShortSets) << 8 | *m_At++);
    entry.capitals = m_At;
    if (entry.letterCase == EntryCase::Mixed) {
      if (Left() < 1 || Left() < 1u + *m_At) return false;
      m_At += 1 + *m_At;
    }
    entry.codes = m_At;
    if (entry.codeCount == 0 || Left() < entry.codeCount || entry.set >= m_SetCount) return false;
    m_At += entry.codeCount;
    return true;
  }

  const std::uint8_t* m_At = nullptr;
  const std::uint8_t* m_End = nullptr;
  std::size_t m_Size = 0;
  std::uint32_t m_SetCount;
  unsigned m_Count = 0;
  unsigned m_Said = 0;
  bool m_IsBroken = false;
};

// A word that is asked for, compressed once for all beginnings of it: that of `length` characters has the
// codes up to there, and where a pair would reach beyond it, its last character alone.
struct DictionaryFile::Typed {
  std::string_view word;
  WordCase letterCase = WordCase::Lower;
  std::array<std::uint8_t, kMostWordBytes> singles;  // a code for each character
  std::array<std::uint8_t, kMostWordBytes> codes;
  std::array<std::uint32_t, kMostWordBytes + 1> hashes;  // by the number of characters
  std::array<std::int16_t, kMostWordBytes + 1> counts;   // of codes; kInsidePair where a pair would be cut
  static constexpr std::int16_t kInsidePair = -1;

  bool Compress(const WordCodes& table) {
    const std::size_t size = word.size();
    for (std::size_t at = 0; at < size; ++at)
      if ((singles[at] = table.CodeOf(word[at])) == kNoCode) return false;
    std::uint32_t hash = kHashStart;
    std::int16_t count = 0;
    hashes[0] = hash;
    counts[0] = 0;
    for (std::size_t at = 0; at < size;) {
      const std::uint8_t pair = at + 1 < size ? table.PairOf(singles[at], singles[at + 1]) : kNoCode;
      const std::uint8_t code = pair == kNoCode ? singles[at] : pair;
      if (pair != kNoCode) counts[++at] = kInsidePair;
      codes[static_cast<std::size_t>(count++)] = code;
      hash = HashStep(hash, code);
      hashes[++at] = hash;
      counts[at] = count;
    }
    return true;
  }
};

LoadResult DictionaryFile::Load(device::Files& files, const std::filesystem::path& path) {
  const std::unique_ptr<device::InputFile> file = files.OpenForReading(path);
  if (!file) return Failed();
  const std::optional<std::uint64_t> size = file->Size();
  if (!size) return Failed();
  return Read(*file, *size);
}

LoadResult DictionaryFile::Read(device::InputFile& file, std::uint64_t size) {
  std::array<std::uint8_t, kHeaderBytes> header;
  const auto read = [&file](std::uint8_t* to, std::size_t count) {
    return file.Read(reinterpret_cast<char*>(to), count) == static_cast<std::int64_t>(count);
  };
  if (!read(header.data(), header.size())) return Failed();
  if (Read32(header.data()) != kMagic) return Failed();
  if (const std::uint32_t version = Read32(header.data() + 4); version != kVersion) {
    return Failed("ispell: wanted dict version " + std::to_string(kVersion) + ", got " +
                  std::to_string(static_cast<std::int32_t>(version)) + "\n");
  }
  const std::uint64_t side = Read32(header.data() + 8);
  const std::uint64_t said = Read32(header.data() + 12);
  const std::uint64_t slots = Read32(header.data() + 16);
  const std::uint64_t store = Read32(header.data() + 20);

  // Of tables that the file does not have, nothing can be said about their length.
  const std::uint64_t rest = size < kHeaderBytes ? 0 : size - kHeaderBytes;
  constexpr std::uint64_t kLargestSide = 1 << 16;
  if (side > kLargestSide) return Failed();
  const std::uint64_t tables = TableBytes(side);
  if (tables > rest) return Failed();
  if (tables != said) return {LoadResult::Outcome::MustStop, "bad dictionary file\n"};
  if (slots > kMostSlots) return Failed();
  const std::uint64_t needed = tables + slots * (kSlotBytes + kFilterBytes) + store;
  if (needed > rest) return Failed();
  if (needed > kMostFileBytes) return OutOfMemory(needed);

  const auto whole = static_cast<std::size_t>(kHeaderBytes + needed);
  std::unique_ptr<std::uint8_t[]> bytes(new (std::nothrow) std::uint8_t[whole]);
  if (!bytes) return OutOfMemory(whole);
  std::copy(header.begin(), header.end(), bytes.get());
  if (!read(bytes.get() + kHeaderBytes, whole - kHeaderBytes)) return Failed();

  m_Bytes = std::move(bytes);
  m_Size = whole;
  const std::uint8_t* at = m_Bytes.get() + kHeaderBytes;
  m_Codes = WordCodes(at, static_cast<std::uint32_t>(side));
  m_Slots = static_cast<std::uint32_t>(slots);
  m_SlotTable = at += tables;
  m_Filters = at += slots * kSlotBytes;
  m_Store = at += slots * kFilterBytes;
  m_StoreSize = static_cast<std::uint32_t>(store);
  if (!ReadEndings()) m_Slots = 0;  // no entry means anything without them
  return {LoadResult::Outcome::Loaded, {}};
}

void DictionaryFile::AddEnding(std::string_view ending, std::uint8_t number) {
  const std::size_t width = m_Width;
  std::size_t node = 0;
  for (std::size_t at = ending.size(); at-- > 0;) {
    const std::uint8_t code = m_Codes.CodeOf(ending[at]);
    if (code >= width) return;  // nobody can type it
    std::size_t next = m_Next[node * width + code];
    if (next == 0) {
      next = m_EndingAt.size();
      m_Next[node * width + code] = static_cast<std::uint16_t>(next);
      m_Next.resize(m_Next.size() + width);
      m_EndingAt.push_back(kNoEnding);
    }
    node = next;
  }
  m_EndingAt[node] = number;
}

bool DictionaryFile::ReadEndings() {
  m_Endings.clear();
  m_Sets.clear();
  m_SetCount = 0;
  m_Width = std::min<std::size_t>(m_Codes.Side(), kCodes);
  m_Next.assign(m_Width, 0);
  m_EndingAt.assign(1, kNoEnding);
  const std::uint8_t* at = m_Store;
  const std::uint8_t* const end = m_Store + m_StoreSize;
  const auto left = [&] { return static_cast<std::size_t>(end - at); };
  if (left() < 4) return false;
  const std::size_t endings = Read16(at);
  const std::uint32_t sets = Read16(at + 2);
  at += 4;
  if (endings > kMostEndings || sets > kMostSets) return false;
  for (std::size_t n = 0; n < endings; ++n) {
    if (left() < 1 || left() < 1u + *at) return false;
    m_Endings.emplace_back(reinterpret_cast<const char*>(at) + 1, *at);
    AddEnding(m_Endings.back(), static_cast<std::uint8_t>(n));
    at += 1 + *at;
  }
  m_Sets.assign(sets * kSetBytes, 0);
  for (std::uint32_t set = 0; set < sets; ++set) {
    if (left() < 1 || left() < 1u + *at) return false;
    for (std::size_t n = *at++; n > 0; --n, ++at)
      if (*at < endings) m_Sets[set * kSetBytes + *at / 8] |= static_cast<std::uint8_t>(1u << *at % 8);
  }
  m_SetCount = sets;
  return true;
}

bool DictionaryFile::Accepts(std::string_view word) const {
  if (m_Slots == 0 || word.empty() || word.size() > kMostWordBytes) return false;
  Typed typed;
  typed.word = word;
  if (!typed.Compress(m_Codes)) return false;
  typed.letterCase = Letters::CaseOf(word);
  const std::size_t width = m_Width;
  std::size_t node = 0;
  for (std::size_t length = word.size(); length > 0; --length) {
    const std::int16_t ending = m_EndingAt[node];
    if (ending != kNoEnding && HasStem(typed, length, static_cast<std::uint8_t>(ending))) return true;
    const std::uint8_t code = typed.singles[length - 1];
    if (code >= width || (node = m_Next[node * width + code]) == 0) return false;
  }
  return false;
}

bool DictionaryFile::HasStem(const Typed& typed, std::size_t length, std::uint8_t ending) const {
  std::uint32_t hash = typed.hashes[length];
  std::size_t count = static_cast<std::size_t>(typed.counts[length]);
  std::uint8_t last = 0;
  if (typed.counts[length] == Typed::kInsidePair) {
    last = typed.singles[length - 1];
    hash = HashStep(typed.hashes[length - 1], last);
    count = static_cast<std::size_t>(typed.counts[length - 1]) + 1;
  } else {
    last = typed.codes[count - 1];
  }
  hash = HashEnd(hash);
  const std::uint32_t slot = SlotOf(hash, m_Slots);
  if ((Read16(m_Filters + slot * kFilterBytes) & FilterBitOf(hash)) == 0) return false;
  Chain chain(*this, slot);
  for (Entry entry; chain.Next(entry);) {
    if (entry.codeCount == count && entry.codes[count - 1] == last && SetHas(entry.set, ending) &&
        std::memcmp(entry.codes, typed.codes.data(), count - 1) == 0 && Matches(entry, typed, length))
      return true;
  }
  return false;
}

// The letters are the same; may they be written so?
bool DictionaryFile::Matches(const Entry& entry, const Typed& typed, std::size_t length) const {
  switch (typed.letterCase) {
    case WordCase::Lower:
      return entry.letterCase == EntryCase::Lower;
    case WordCase::Capitalised:
      return entry.letterCase == EntryCase::Lower || entry.letterCase == EntryCase::Capitalised;
    case WordCase::Single:
    case WordCase::Upper:
      return true;
    case WordCase::Mixed:
      break;
  }
  if (entry.letterCase == EntryCase::Upper) {
    const std::string_view stem = typed.word.substr(0, length);
    const std::string_view ending = typed.word.substr(length);
    return std::none_of(stem.begin(), stem.end(), Letters::IsSmall) &&
           std::none_of(ending.begin(), ending.end(), Letters::IsCapital);
  }
  if (entry.letterCase != EntryCase::Mixed) return false;
  const std::uint8_t* place = entry.capitals + 1;
  const std::uint8_t* const end = place + entry.capitals[0];
  for (std::size_t at = 0; at < typed.word.size(); ++at) {
    if (!Letters::IsCapital(typed.word[at])) continue;
    if (place == end || *place != at) return false;
    ++place;
  }
  return place == end;
}

bool DictionaryFile::StemOf(const Entry& entry, std::string& stem) const {
  stem.clear();
  for (std::size_t n = 0; n < entry.codeCount; ++n)
    if (!m_Codes.AppendDecoded(entry.codes[n], stem)) return false;
  switch (entry.letterCase) {
    case EntryCase::Lower:
      break;
    case EntryCase::Capitalised: {
      const auto first = std::find_if(stem.begin(), stem.end(), Letters::IsSmall);
      if (first == stem.end()) return false;
      *first = Letters::Upper(*first);
      break;
    }
    case EntryCase::Upper:
      std::transform(stem.begin(), stem.end(), stem.begin(), Letters::Upper);
      break;
    case EntryCase::Mixed:
      for (std::size_t n = 1; n <= entry.capitals[0]; ++n) {
        if (entry.capitals[n] >= stem.size()) return false;
        stem[entry.capitals[n]] = Letters::Upper(stem[entry.capitals[n]]);
      }
      break;
  }
  return true;
}

template <typename Word, typename Fault>
void DictionaryFile::Walk(Word onWord, Fault onFault) const {
  std::string word;
  std::size_t seen = 0;
  for (std::uint32_t slot = 0; slot < m_Slots; ++slot) {
    Chain chain(*this, slot);
    // A few bytes that all slots share would be words without end.
    if ((seen += chain.Size()) > m_StoreSize) return onFault(slot, "the chain shares bytes with others");
    for (Entry entry; chain.Next(entry);) {
      if (!StemOf(entry, word)) {
        onFault(slot, "an entry holds a code without meaning");
        break;
      }
      const std::size_t stem = word.size();
      for (std::size_t ending = 0; ending < m_Endings.size(); ++ending) {
        if (!SetHas(entry.set, static_cast<std::uint8_t>(ending))) continue;
        word.resize(stem);
        word += m_Endings[ending];
        onWord(slot, word);
      }
    }
    if (chain.IsBroken()) onFault(slot, "the chain does not fit into the word store");
  }
}

void DictionaryFile::ForEachWord(const WordSink& sink) const {
  Walk([&sink](std::uint32_t, const std::string& word) { sink(word); }, [](std::uint32_t, const char*) {});
}

std::vector<std::string> DictionaryFile::FindFaults() const {
  if (m_Slots == 0) return {"no words: there is no slot, or the endings do not fit into the word store"};
  std::vector<std::string> faults;
  const auto add = [&faults](std::uint32_t slot, const char* what) {
    faults.push_back("slot " + std::to_string(slot) + ": " + what);
  };
  Walk(
      [&](std::uint32_t slot, const std::string& word) {
        if (!Accepts(word)) add(slot, "an entry is not found under its own hash");
      },
      add);
  return faults;
}

}  // namespace inspector::spell
