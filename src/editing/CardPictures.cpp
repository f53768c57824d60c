#include "editing/CardPictures.h"

#include <algorithm>
#include <system_error>

#include "editing/PictureTags.h"

namespace inspector::editing {
namespace {

constexpr int kMostPasses = 101;

bool IsCardPicture(TextView name) {
  return device::Contains(name, u".JPG") || device::Contains(name, u".jpg");
}

}  // namespace

std::vector<Text> NumberCardPictures(const std::vector<Text>& entries) {
  std::vector<Text> names;
  const Text* previous = nullptr;
  std::size_t current = 0;
  for (int pass = 1; pass <= kMostPasses && !entries.empty(); ++pass) {
    const Text& name = entries[current];
    if (IsCardPicture(name)) names.push_back(name);
    if (previous != nullptr && name == *previous) break;
    previous = &name;
    if (current + 1 < entries.size()) ++current;  // at the end the last entry stays, and counts once more
  }
  std::sort(names.begin(), names.end());
  return names;
}

CardPictures::CardPictures(device::Files& files, const device::DevicePaths& paths, Text folder)
    : m_Files(files), m_Paths(paths), m_Folder(std::move(folder)) {}

Text CardPictures::Find(int number) {
  if (!m_Names) m_Names = NumberCardPictures(ListEntries());
  if (number < 1 || static_cast<std::size_t>(number) > m_Names->size()) return Text(kError);
  return m_Folder + (*m_Names)[static_cast<std::size_t>(number) - 1];
}

// What follows the last slash is the beginning of a name, as in a search for "folder*".
std::size_t CardPictures::NameBegin() const {
  const std::size_t slash = m_Folder.find_last_of(u"\\/");
  return slash == Text::npos ? 0 : slash + 1;
}

std::filesystem::path CardPictures::HostFolder() const {
  const TextView folder = TextView(m_Folder).substr(0, NameBegin());
  std::error_code error;
  const std::filesystem::path typed = m_Paths.ResolveTyped(folder);
  const bool isOnHost = folder.starts_with(u'/') && std::filesystem::is_directory(typed, error);
  return isOnHost ? typed : m_Paths.Resolve(folder);
}

std::vector<Text> CardPictures::ListEntries() const {
  const TextView prefix = TextView(m_Folder).substr(NameBegin());
  std::vector<Text> entries = m_Files.ListEntries(HostFolder());
  std::erase_if(entries, [prefix](const Text& entry) {
    return !device::EqualIgnoringCase(TextView(entry).substr(0, prefix.size()), prefix);
  });
  return entries;
}

}  // namespace inspector::editing
