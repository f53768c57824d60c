// The letters of the device's code page: their small and capital forms, byte by byte.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "device/Text.h"

namespace inspector::spell {

using device::Text;
using device::TextView;

// Which letters of a word are capitals.
enum class WordCase {
  Lower,        // none
  Capitalised,  // the first letter, and it is not the only one
  Upper,        // all
  Mixed,        // some others
  Single,       // the first letter, and it is the only one: capitalised and upper case at once
};

class Letters {
public:
  // A letter without another form (the sharp s, the ordinal signs) counts as no letter for the case of a
  // word.
  static bool IsCapital(char byte) { return Table().lower[Index(byte)] != Index(byte); }
  static bool IsSmall(char byte) { return Table().upper[Index(byte)] != Index(byte); }
  static bool IsLetter(char byte) { return Table().isLetter[Index(byte)]; }
  static char Lower(char byte) { return static_cast<char>(Table().lower[Index(byte)]); }
  static char Upper(char byte) { return static_cast<char>(Table().upper[Index(byte)]); }

  static std::string LowerAll(std::string_view word);
  static std::string UpperAll(std::string_view word);
  static WordCase CaseOf(std::string_view word);

private:
  struct Tables {
    Tables();
    std::array<std::uint8_t, 256> lower{};
    std::array<std::uint8_t, 256> upper{};
    std::array<bool, 256> isLetter{};
  };
  static const Tables& Table();
  static std::uint8_t Index(char byte) { return static_cast<std::uint8_t>(byte); }
};

// A word as the dictionary and the personal list know it: in the code page, with the typographic apostrophe
// as the plain one.
void AssignWordBytes(std::string& bytes, TextView word);
std::string WordBytes(TextView word);

inline constexpr char kApostrophe = '\'';
inline constexpr char kTypographicApostrophe = '\x92';
inline constexpr char16_t kTypographicApostropheUnit = 0x2019;

}  // namespace inspector::spell
