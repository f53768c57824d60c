#include "spell/PersonalList.h"

#include <algorithm>

#include "device/CodePage.h"

namespace inspector::spell {
namespace {

constexpr std::uint64_t kMostListBytes = 16u << 20;

Text Folded(TextView word) {
  Text folded(word);
  std::transform(folded.begin(), folded.end(), folded.begin(), [](char16_t unit) {
    return unit == kTypographicApostropheUnit ? u'\'' : device::FoldCase(unit);
  });
  return folded;
}

std::string_view WithoutBlanks(std::string_view line) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  return begin == line.npos ? "" : line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace

bool PersonalList::Load(device::Files& files, const std::filesystem::path& path, Separation separation) {
  const std::optional<std::string> content = device::ReadWhole(files, path, kMostListBytes);
  if (!content) return false;
  const std::string_view ends = separation == Separation::Lines ? "\r\n" : "\r\n \t";
  std::string_view rest = *content;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
    if (const std::string_view word = WithoutBlanks(rest.substr(0, end)); !word.empty())
      Accept(device::FromCodePage(word));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return true;
}

void PersonalList::Accept(TextView word) {
  if (!word.empty() && m_Words.insert(Folded(word)).second) m_InOrder.emplace_back(word);
}

bool PersonalList::Accepts(TextView word) const {
  return !m_Words.empty() && m_Words.contains(Folded(word));
}

bool PersonalList::Append(device::Files& files, const std::vector<std::filesystem::path>& paths,
                          TextView word) {
  std::string line = device::ToCodePage(word);
  std::replace_if(
      line.begin(), line.end(), [](char byte) { return byte == '\r' || byte == '\n'; }, ' ');
  for (const std::filesystem::path& path : paths)
    if (const auto file = files.OpenForAppending(path)) return file->AppendLine(line);
  return false;
}

}  // namespace inspector::spell
