// Whether a word is spelt as a dictionary or the inspector spells it. One for a run of the program.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "device/DevicePaths.h"
#include "device/Files.h"
#include "spell/DictionaryFile.h"
#include "spell/PersonalList.h"

namespace inspector::spell {

// The folders that may hold a dictionary and a personal list, in the order in which they are tried. Paths of
// the device.
inline constexpr TextView kDictionaryFolders[] = {
    u"/Program Files/Brindlecove", u"/Program Files/Quenlith Inspector v5", u"/Program Files/Marrowtide"};
inline constexpr TextView kDictionaryName = u"spell.dct";
inline constexpr TextView kPersonalListName = u"newwords.txt";

// Belongs to one thread.
class SpellChecker {
public:
  SpellChecker(device::Files& files, const device::DevicePaths& paths) : m_Files(files), m_Paths(paths) {}

  // The first dictionary of the three folders that loads, and the personal list beside it. Failed when none
  // does: then checking is not available, and nothing is to be shown. What must be written to the standard
  // error output is collected in the message. With MustStop the search has ended there.
  LoadResult FindDictionary();

  // A dictionary of any name. It replaces the one before, unless it fails.
  LoadResult Load(const std::filesystem::path& path);
  // A list in addition to those before. False when there is none.
  bool LoadPersonal(const std::filesystem::path& path,
                    PersonalList::Separation separation = PersonalList::Separation::Lines);

  bool HasDictionary() const { return m_Dictionary.IsLoaded(); }
  // Changes with each dictionary, for what is derived from one.
  int Generation() const { return m_Generation; }
  const DictionaryFile& Dictionary() const { return m_Dictionary; }

  // Whether the word, as it stands, is spelt correctly. Without a dictionary only accepted words are.
  bool Check(TextView word) const;

  // Accepts the word from now on, whatever its case, and appends it to the personal list: the first of the
  // three folders whose file can be opened or made. False when it could not be stored; it is accepted all the
  // same.
  bool Add(TextView word);
  // Accepts without storing.
  void Accept(TextView word) { m_Accepted.Accept(word); }
  // "Ignore All": the word is no fault any more, whatever its case, but nothing to suggest either.
  void Ignore(TextView word) { m_Ignored.Accept(word); }
  const PersonalList& Accepted() const { return m_Accepted; }

  // Whether a character belongs to words: the letters A to Z, and what the dictionary adds.
  bool IsWordCharacter(char16_t unit) const;

private:
  void MergeWordCharacters();

  device::Files& m_Files;
  const device::DevicePaths& m_Paths;
  DictionaryFile m_Dictionary;
  int m_Generation = 0;
  PersonalList m_Accepted;
  PersonalList m_Ignored;             // nothing of it is stored
  std::string m_ExtraWordCharacters;  // in the code page; those of earlier dictionaries stay
  mutable std::string m_Word;         // in the code page, so that a check allocates nothing
};

}  // namespace inspector::spell
