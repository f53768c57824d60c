// The pictures of the camera's card, by their numbers.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "device/DevicePaths.h"
#include "device/Files.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// The names that picture numbers count, in ascending code units: those of `entries` that hold ".JPG" or
// ".jpg"
// (".Jpg" is none). The last entry counts twice, and only 101 are looked at. Both are kept on purpose: the
// numbers that stand in stored comments were given this way.
std::vector<Text> NumberCardPictures(const std::vector<Text>& entries);

// The folder is read once, when its first picture is asked for.
class CardPictures {
public:
  // `folder` is put before a name as it is, so it ends with its slash.
  CardPictures(device::Files& files, const device::DevicePaths& paths, Text folder);

  const Text& Folder() const { return m_Folder; }
  // Where that folder is on this machine.
  std::filesystem::path HostFolder() const;
  // The folder and the name of picture `number`, counted from 1; "ERROR" when there is none.
  Text Find(int number);
  // The picture of any format that was written last. Here a folder without its last slash is the folder; else
  // what follows the last slash is what the names begin with, as for the numbers.
  struct Newest {
    std::filesystem::path file;  // empty when there is none
    Text problem;                // why, in words for a person
  };
  Newest FindNewest() const;

private:
  std::size_t NameBegin() const;
  std::filesystem::path OnHost(TextView folder) const;
  std::vector<Text> ListEntries() const;

  device::Files& m_Files;
  const device::DevicePaths& m_Paths;
  Text m_Folder;
  std::optional<std::vector<Text>> m_Names;
};

}  // namespace inspector::editing
