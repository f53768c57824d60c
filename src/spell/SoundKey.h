// What a word sounds like, roughly: "fonetik" and "phonetic" have the same key.
#pragma once

#include <string>
#include <string_view>

namespace inspector::spell {

// Of a word in the code page. Consonants by their sound; vowels count at the beginning only. By English ears;
// empty for what has no letters.
std::string SoundKey(std::string_view word);

// The letter without its accent, small; other characters are themselves.
char PlainLetter(char byte);

}  // namespace inspector::spell
