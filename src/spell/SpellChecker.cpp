#include "spell/SpellChecker.h"

#include <algorithm>

#include "device/CodePage.h"
#include "device/Format.h"

namespace inspector::spell {
namespace {

bool IsPlainLetter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

}  // namespace

LoadResult SpellChecker::FindDictionary() {
  LoadResult found;
  std::string messages;
  for (const TextView folder : kDictionaryFolders) {
    found = Load(m_Paths.Resolve(device::Format(u"%s/%s", folder, kDictionaryName)));
    messages += found.message;
    if (found.outcome == LoadResult::Outcome::Loaded)
      LoadPersonal(m_Paths.Resolve(device::Format(u"%s/%s", folder, kPersonalListName)));
    if (found.outcome != LoadResult::Outcome::Failed) break;
  }
  found.message = std::move(messages);
  return found;
}

LoadResult SpellChecker::Load(const std::filesystem::path& path) {
  LoadResult result = m_Dictionary.Load(m_Files, path);
  if (result.outcome == LoadResult::Outcome::Loaded) {
    MergeWordCharacters();
    ++m_Generation;
  }
  return result;
}

bool SpellChecker::LoadPersonal(const std::filesystem::path& path, PersonalList::Separation separation) {
  return m_Accepted.Load(m_Files, path, separation);
}

bool SpellChecker::Check(TextView word) const {
  // One unit is one byte in the code page.
  if (word.size() > kMostWordBytes) return false;
  AssignWordBytes(m_Word, word);
  return m_Dictionary.Accepts(m_Word) || m_Accepted.Accepts(word) || m_Ignored.Accepts(word);
}

bool SpellChecker::Add(TextView word) {
  std::vector<std::filesystem::path> lists;
  for (const TextView folder : kDictionaryFolders)
    lists.push_back(m_Paths.Resolve(device::Format(u"%s\\%s", folder, kPersonalListName)));
  m_Accepted.Accept(word);
  return PersonalList::Append(m_Files, lists, word);
}

void SpellChecker::MergeWordCharacters() {
  for (unsigned code = 0; code < 256; ++code) {
    const char character = static_cast<char>(code);
    const bool isKnown =
        IsPlainLetter(code) || m_ExtraWordCharacters.find(character) != m_ExtraWordCharacters.npos;
    if (m_Dictionary.IsWordCharacter(static_cast<std::uint8_t>(code)) && !isKnown)
      m_ExtraWordCharacters.push_back(character);
  }
}

bool SpellChecker::IsWordCharacter(char16_t unit) const {
  if (IsPlainLetter(unit)) return true;
  if (!device::FitsCodePage({&unit, 1})) return false;
  return m_ExtraWordCharacters.find(device::ToCodePage({&unit, 1}).front()) != m_ExtraWordCharacters.npos;
}

}  // namespace inspector::spell
