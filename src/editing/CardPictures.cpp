#include "editing/CardPictures.h"

#include <algorithm>
#include <system_error>

#include "device/Format.h"
#include "editing/PictureTags.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr int kMostPasses = 101;

bool IsCardPicture(TextView name) {
  return device::Contains(name, u".JPG") || device::Contains(name, u".jpg");
}

// One that can be attached. Hidden files are none: some systems put one beside each picture.
bool IsPicture(TextView name) {
  constexpr TextView kEndings[] = {u".jpg", u".jpeg", u".png", u".gif", u".bmp", u".2bp"};
  return !name.starts_with(u'.') &&
         std::any_of(std::begin(kEndings), std::end(kEndings), [name](TextView ending) {
           return name.size() > ending.size() &&
                  device::EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
         });
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
  return OnHost(TextView(m_Folder).substr(0, NameBegin()));
}

std::filesystem::path CardPictures::OnHost(TextView folder) const {
  std::error_code error;
  const std::filesystem::path typed = m_Paths.ResolveTyped(folder);
  const bool isOnHost = folder.starts_with(u'/') && std::filesystem::is_directory(typed, error);
  return isOnHost ? typed : m_Paths.Resolve(folder);
}

CardPictures::Newest CardPictures::FindNewest() const {
  std::error_code error;
  if (m_Folder.empty())
    return {{},
            u"The folder of the camera's card is not known yet. Enter it in the options, under Pictures."};
  TextView prefix = TextView(m_Folder).substr(NameBegin());
  std::filesystem::path folder = HostFolder();
  if (const auto whole = OnHost(m_Folder); !prefix.empty() && std::filesystem::is_directory(whole, error)) {
    folder = whole;
    prefix = {};
  }
  if (!std::filesystem::is_directory(folder, error))
    return {{}, Format(u"The folder %s is not there. Is the camera's card in this device?", m_Folder)};
  Newest newest;
  std::filesystem::file_time_type latest;
  for (const Text& name : m_Files.ListEntries(folder)) {
    if (!IsPicture(name) || !device::EqualIgnoringCase(TextView(name).substr(0, prefix.size()), prefix))
      continue;
    const std::filesystem::path file = folder / device::ToUtf8(name);
    const auto time = std::filesystem::last_write_time(file, error);
    if (error || !std::filesystem::is_regular_file(file, error) || (!newest.file.empty() && time < latest))
      continue;
    newest.file = file;
    latest = time;
  }
  if (newest.file.empty())
    newest.problem = prefix.empty() ? Format(u"There is no picture in the folder %s yet.", m_Folder)
                                    : Format(u"There is no picture yet whose path begins with %s.", m_Folder);
  return newest;
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
