#include "spell/InstalledDictionaries.h"

#include <algorithm>
#include <utility>

#include "device/Format.h"
#include "spell/DictionaryFormat.h"
#include "spell/SpellChecker.h"

namespace inspector::spell {
namespace {

using device::Format;

constexpr TextView kExtension = u".dct";
constexpr TextView kUsualLanguage = u"american";
constexpr std::pair<TextView, TextView> kLanguageNames[] = {{u"american", u"American English"},
                                                            {u"british", u"British English"},
                                                            {u"canadian", u"Canadian English"},
                                                            {u"french", u"French"}};

// Of the files in a folder, those that hold a language; without their extension.
std::vector<Text> LanguagesIn(device::Files& files, const std::filesystem::path& folder) {
  std::vector<Text> languages;
  for (const Text& entry : files.ListEntries(folder)) {
    const std::size_t stem = entry.size() - std::min(entry.size(), kExtension.size());
    if (stem > 0 && device::EqualIgnoringCase(TextView(entry).substr(stem), kExtension) &&
        !device::EqualIgnoringCase(entry, kDictionaryName))
      languages.push_back(entry.substr(0, stem));
  }
  return languages;
}

Text FileOf(TextView language) {
  return Format(u"%s%s", language, kExtension);
}

}  // namespace

Text LanguageName(TextView file) {
  for (const auto& [name, shown] : kLanguageNames)
    if (device::EqualIgnoringCase(name, file)) return Text(shown);
  return Text(file);
}

std::filesystem::path InstalledDictionaries::PathOf(TextView folder, TextView name) {
  return m_Paths.Resolve(Format(u"%s/%s", folder, name));
}

Text InstalledDictionaries::Folder() {
  for (const TextView folder : kDictionaryFolders)
    if (m_Files.Exists(PathOf(folder, kDictionaryName))) return Text(folder);
  return Text(kDictionaryFolders[0]);
}

Text InstalledDictionaries::Copy(const std::filesystem::path& from, const std::filesystem::path& to) {
  const std::optional<std::string> bytes = device::ReadWhole(m_Files, from, kMostFileBytes);
  if (!bytes) return Format(u"The dictionary %s cannot be read.", device::FromUtf8(from.string()));
  const auto file = m_Files.Create(to);
  if (file->Write(*bytes) && file->Commit()) return {};
  return Format(u"The dictionary %s could not be written: %s", device::FromUtf8(to.string()),
                device::FromUtf8(file->Error()));
}

Text InstalledDictionaries::Place(const std::filesystem::path& from,
                                  std::vector<std::filesystem::path>& placed) {
  const Text folder = Folder();
  const auto place = [&](TextView language, TextView name) {
    const std::filesystem::path to = PathOf(folder, name);
    if (m_Files.Exists(to)) return Text();
    Text problem = Copy(from / device::ToUtf8(FileOf(language)), to);
    if (problem.empty()) placed.push_back(to);
    return problem;
  };
  const std::vector<Text> languages = LanguagesIn(m_Files, from);
  if (languages.empty()) return Format(u"There are no dictionaries in %s.", device::FromUtf8(from.string()));
  for (const Text& language : languages)
    if (Text problem = place(language, FileOf(language)); !problem.empty()) return problem;
  return place(kUsualLanguage, kDictionaryName);
}

std::vector<Text> InstalledDictionaries::Languages() {
  return LanguagesIn(m_Files, m_Paths.Resolve(Folder()));
}

std::optional<Text> InstalledDictionaries::Chosen() {
  const Text folder = Folder();
  const auto inUse = device::ReadWhole(m_Files, PathOf(folder, kDictionaryName), kMostFileBytes);
  if (!inUse) return std::nullopt;
  for (Text& language : Languages())
    if (device::ReadWhole(m_Files, PathOf(folder, FileOf(language)), kMostFileBytes) == inUse)
      return std::move(language);
  return std::nullopt;
}

Text InstalledDictionaries::Choose(TextView language) {
  const Text folder = Folder();
  return Copy(PathOf(folder, FileOf(language)), PathOf(folder, kDictionaryName));
}

}  // namespace inspector::spell
