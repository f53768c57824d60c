#include "spell/Letters.h"

#include <algorithm>

#include "device/CodePage.h"

namespace inspector::spell {

Letters::Tables::Tables() {
  for (unsigned byte = 0; byte < 256; ++byte) lower[byte] = upper[byte] = static_cast<std::uint8_t>(byte);
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char one = static_cast<char>(byte);
    const char16_t unit = device::FromCodePage({&one, 1}).front();
    const char16_t folded = device::FoldCase(unit);
    if (folded == unit || !device::FitsCodePage({&folded, 1})) continue;
    const auto small = static_cast<std::uint8_t>(device::ToCodePage({&folded, 1}).front());
    lower[byte] = small;
    upper[small] = static_cast<std::uint8_t>(byte);
    isLetter[byte] = isLetter[small] = true;
  }
  isLetter[0xDF] = true;  // sharp s
}

const Letters::Tables& Letters::Table() {
  static const Tables kTables;
  return kTables;
}

std::string Letters::LowerAll(std::string_view word) {
  std::string all(word);
  std::transform(all.begin(), all.end(), all.begin(), Lower);
  return all;
}

std::string Letters::UpperAll(std::string_view word) {
  std::string all(word);
  std::transform(all.begin(), all.end(), all.begin(), Upper);
  return all;
}

WordCase Letters::CaseOf(std::string_view word) {
  int capitals = 0;
  int small = 0;
  bool beginsWithCapital = false;
  for (const char byte : word) {
    if (IsCapital(byte)) {
      if (capitals++ == 0) beginsWithCapital = small == 0;
    } else if (IsSmall(byte)) {
      ++small;
    }
  }
  if (capitals == 0) return WordCase::Lower;
  if (small == 0) return capitals == 1 ? WordCase::Single : WordCase::Upper;
  return capitals == 1 && beginsWithCapital ? WordCase::Capitalised : WordCase::Mixed;
}

void AssignWordBytes(std::string& bytes, TextView word) {
  bytes.clear();
  device::AppendCodePage(bytes, word);
  std::replace(bytes.begin(), bytes.end(), kTypographicApostrophe, kApostrophe);
}

std::string WordBytes(TextView word) {
  std::string bytes;
  AssignWordBytes(bytes, word);
  return bytes;
}

}  // namespace inspector::spell
