#include "reports/Base64Writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace inspector::reports {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kBlock = 3 * 64 * 1024;  // whole groups of three bytes

// Two letters for every 12 bits: half as many lookups as one by one.
const std::array<std::array<char, 2>, 4096>& Pairs() {
  static const auto pairs = [] {
    std::array<std::array<char, 2>, 4096> made{};
    for (std::size_t n = 0; n < made.size(); ++n) made[n] = {kLetters[n >> 6], kLetters[n & 63]};
    return made;
  }();
  return pairs;
}

// `bytes` holds whole groups, or is the end.
void Encode(std::string_view bytes, std::string& letters) {
  const auto& pairs = Pairs();
  letters.resize((bytes.size() + 2) / 3 * 4);
  char* out = letters.data();
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    std::uint32_t group = 0;
    for (std::size_t n = 0; n < 3; ++n)
      group = group << 8 | (at + n < bytes.size() ? static_cast<unsigned char>(bytes[at + n]) : 0U);
    out = std::copy_n(pairs[group >> 12].data(), 2, out);
    out = std::copy_n(pairs[group & 0xFFF].data(), 2, out);
  }
  const std::size_t missing = (3 - bytes.size() % 3) % 3;
  std::fill_n(letters.end() - static_cast<std::ptrdiff_t>(missing), missing, '=');
}

}  // namespace

bool WriteBase64(device::InputFile& input, std::string_view begun, device::OutputFile& output) {
  std::vector<char> block(kBlock);
  std::string letters;
  std::size_t filled = begun.copy(block.data(), block.size());
  while (true) {
    const std::int64_t count = input.Read(block.data() + filled, block.size() - filled);
    if (count > 0) filled += static_cast<std::size_t>(count);
    Encode({block.data(), filled}, letters);
    const bool isWritten = output.Write(letters);
    if (filled < block.size() || !isWritten) return count >= 0;
    filled = 0;
  }
}

}  // namespace inspector::reports
