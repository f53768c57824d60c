// The dictionaries on the device: "spell.dct", which the checker loads, and beside it one for each language,
// of which it is a copy.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "device/DevicePaths.h"
#include "device/Files.h"
#include "device/Text.h"

namespace inspector::spell {

using device::Text;
using device::TextView;

// What a person calls a language ("American English"); the name of its file where it is none of ours.
Text LanguageName(TextView file);

class InstalledDictionaries {
public:
  InstalledDictionaries(device::Files& files, const device::DevicePaths& paths)
      : m_Files(files), m_Paths(paths) {}

  // Copies the dictionaries of a folder of the host that the device lacks, and takes American English where
  // no folder has a "spell.dct" yet. What is there is never replaced. Returns what went wrong, empty when
  // nothing did; `placed` receives the files that were made.
  Text Place(const std::filesystem::path& from, std::vector<std::filesystem::path>& placed);

  // The files beside the "spell.dct" in use, without their extension, in ascending order.
  std::vector<Text> Languages();
  // The one that "spell.dct" is a copy of; nothing when it is none of them.
  std::optional<Text> Chosen();
  // Copies it over "spell.dct". Returns what went wrong, empty when nothing did: then the checker is to load
  // anew.
  Text Choose(TextView language);

private:
  // That of the first "spell.dct", else the first of all.
  Text Folder();
  std::filesystem::path PathOf(TextView folder, TextView name);
  Text Copy(const std::filesystem::path& from, const std::filesystem::path& to);

  device::Files& m_Files;
  const device::DevicePaths& m_Paths;
};

}  // namespace inspector::spell
