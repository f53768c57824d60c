// The numbers of a dictionary file. docs/dictionary-format.md tells what they mean; DictionaryFile reads
// them, DictionaryBuilder writes them, and nobody else knows them. All numbers in the file are little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace inspector::spell {

inline constexpr std::uint32_t kMagic = 0x4C505349;  // "ISPL"
inline constexpr std::uint32_t kVersion = 3;

// Header.
inline constexpr std::size_t kHeaderBytes = 56;
inline constexpr std::size_t kWordCharacterAt = 24;
inline constexpr std::size_t kWordCharacterBytes = 32;
inline constexpr std::uint32_t kMostSlots = 65535;  // what 16 bits count

// Compression tables; the table of letter pairs follows these.
inline constexpr std::size_t kCodes = 256;
inline constexpr std::size_t kDecodeBytes = 2 * kCodes;
inline constexpr std::size_t kEncodeBytes = 256;
// All of them, for a table of pairs of `side` by `side`.
inline constexpr std::uint64_t TableBytes(std::uint64_t side) {
  return kDecodeBytes + kEncodeBytes + side * side;
}
inline constexpr std::uint8_t kNoCode = 255;  // a character that no word has; a pair without a code

// Hash table.
inline constexpr std::size_t kSlotBytes = 8;
inline constexpr std::size_t kFilterBytes = 2;
inline constexpr std::uint16_t kEmptySlot = 65535;

// Entries of the word store.
enum class EntryCase : std::uint8_t { Lower = 0, Capitalised = 1, Upper = 2, Mixed = 3 };
inline constexpr unsigned kCaseShift = 6;
inline constexpr std::uint8_t kCodeCountMask = 0x3F;
inline constexpr std::uint8_t kLongWord = 0x3F;  // the number of codes is in the next byte
// Sets of endings below this number take one byte, the others two.
inline constexpr std::uint32_t kShortSets = 240;
inline constexpr std::uint32_t kMostSets = kShortSets + 16 * 256;
inline constexpr std::size_t kMostEndings = 255;

// What a word may have at most, in bytes of the code page.
inline constexpr std::size_t kMostWordBytes = 256;
// Whole files: nobody's list of words needs more, and a device has no memory to spare.
inline constexpr std::uint64_t kMostFileBytes = 256u << 20;

inline std::uint16_t Read16(const std::uint8_t* at) {
  return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}
inline std::uint32_t Read32(const std::uint8_t* at) {
  return Read16(at) | static_cast<std::uint32_t>(Read16(at + 2)) << 16;
}
inline void Append16(std::string& out, std::uint32_t value) {
  out.push_back(static_cast<char>(value & 0xFF));
  out.push_back(static_cast<char>(value >> 8 & 0xFF));
}
inline void Append32(std::string& out, std::uint32_t value) {
  Append16(out, value & 0xFFFF);
  Append16(out, value >> 16);
}

// The hash of a compressed word: a step for each code, and an end. The high bits choose the slot, the low
// four the bit of its filter.
inline constexpr std::uint32_t kHashStart = 0x811C9DC5;
inline std::uint32_t HashStep(std::uint32_t hash, std::uint8_t code) {
  return (hash ^ code) * 0x01000193u;
}
inline std::uint32_t HashEnd(std::uint32_t hash) {
  hash ^= hash >> 15;
  hash *= 0x85EBCA6Bu;
  return hash ^ hash >> 13;
}
inline std::uint32_t SlotOf(std::uint32_t hash, std::uint32_t slots) {
  return static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) * slots >> 32);
}
inline std::uint16_t FilterBitOf(std::uint32_t hash) {
  return static_cast<std::uint16_t>(1u << (hash & 15));
}

}  // namespace inspector::spell
