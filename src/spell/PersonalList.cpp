#include "spell/PersonalList.h"

#include <algorithm>

#include "device/CodePage.h"
#include "spell/WordLines.h"

namespace inspector::spell {
namespace {

constexpr std::uint64_t kMostListBytes = 16u << 20;

Text KeyOf(TextView word) {
  Text key = device::Folded(word);
  std::replace(key.begin(), key.end(), kTypographicApostropheUnit, u'\'');
  return key;
}

}  // namespace

bool PersonalList::Load(device::Files& files, const std::filesystem::path& path, Separation separation) {
  const std::optional<std::string> content = device::ReadWhole(files, path, kMostListBytes);
  if (!content) return false;
  const std::string_view ends = separation == Separation::Lines ? "\r\n" : "\r\n \t";
  ForEachLine(*content, ends, [this](std::string_view line) {
    if (const std::string_view word = WithoutBlanks(line); !word.empty()) Accept(device::FromCodePage(word));
  });
  return true;
}

void PersonalList::Accept(TextView word) {
  if (!word.empty() && m_Words.insert(KeyOf(word)).second) m_InOrder.emplace_back(word);
}

bool PersonalList::Accepts(TextView word) const {
  return !m_Words.empty() && m_Words.contains(KeyOf(word));
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
