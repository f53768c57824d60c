#include "spell/SpellSession.h"

#include <algorithm>

namespace inspector::spell {
namespace {

// Of the sentence on each side of the word: what a line of a dialog has room for.
constexpr std::size_t kMostAround = 90;

bool IsLineEnd(char16_t unit) {
  return unit == u'\r' || unit == u'\n';
}

bool EndsSentence(char16_t unit) {
  return unit == u'.' || unit == u'!' || unit == u'?';
}

// Where the sentence begins that has this place in it.
std::size_t SentenceBegin(TextView text, std::size_t at) {
  const std::size_t furthest = at - std::min(at, kMostAround);
  std::size_t begin = at;
  for (; begin > furthest; --begin) {
    if (IsLineEnd(text[begin - 1])) return begin;
    if (text[begin - 1] == u' ' && begin > 1 && EndsSentence(text[begin - 2])) return begin;
  }
  // Cut between two words, where there are any.
  while (begin > 0 && begin < at && text[begin - 1] != u' ') ++begin;
  return begin;
}

std::size_t SentenceEnd(TextView text, std::size_t at) {
  const std::size_t furthest = std::min(text.size(), at + kMostAround);
  std::size_t end = at;
  for (; end < furthest; ++end) {
    if (IsLineEnd(text[end])) return end;
    if (EndsSentence(text[end]) && (end + 1 == text.size() || text[end + 1] == u' ')) return end + 1;
  }
  while (end < text.size() && end > at && text[end] != u' ') --end;
  return end;
}

}  // namespace

SpellSession::SpellSession(SpellChecker& checker, Suggestions& suggestions,
                           const std::vector<Text>& shortcuts, std::vector<SpellText> texts)
    : m_Checker(checker), m_Suggestions(suggestions), m_Check(checker, shortcuts), m_Texts(std::move(texts)) {
  if (m_Texts.empty()) return;
  Enter(0);
  Advance();
}

void SpellSession::Enter(std::size_t text) {
  m_Text = text;
  m_Content = m_Texts[text].read();
  m_Misspelt = m_Check.FindMisspelt(m_Content);
  m_Next = 0;
  m_Grown = 0;
}

void SpellSession::Advance() {
  m_Current.reset();
  while (true) {
    for (; m_Next < m_Misspelt.size(); ++m_Next) {
      MisspeltWord word = m_Misspelt[m_Next];
      word.range.at += m_Grown;
      if (m_Checker.Check(word.word)) continue;  // by an answer since
      const auto with = m_ReplaceAll.find(word.word);
      if (with != m_ReplaceAll.end() && Put(word, with->second)) continue;
      m_Current = ErrorAt(word);
      ++m_Next;
      return;
    }
    if (m_Text + 1 >= m_Texts.size()) return;
    Enter(m_Text + 1);
  }
}

bool SpellSession::Put(const MisspeltWord& word, TextView with) {
  Text changed = m_Content;
  changed.replace(word.range.at, word.range.length, with);
  if (!m_Texts[m_Text].store(changed)) return false;
  m_Content = std::move(changed);
  m_Grown += with.size() - word.range.length;
  ++m_Replaced;
  return true;
}

SpellingError SpellSession::ErrorAt(const MisspeltWord& word) const {
  const std::size_t begin = SentenceBegin(m_Content, word.range.at);
  const std::size_t end = SentenceEnd(m_Content, word.range.End());
  return {m_Text,
          word.range,
          word.word,
          m_Content.substr(begin, end - begin),
          {word.range.at - begin, word.range.length}};
}

bool SpellSession::Replace(TextView with) {
  if (!Put({m_Current->range, m_Current->word}, with)) return false;
  Advance();
  return true;
}

bool SpellSession::ReplaceAll(TextView with) {
  const Text word = m_Current->word;
  if (!Put({m_Current->range, word}, with)) return false;
  m_ReplaceAll[word] = with;
  Advance();
  return !m_Current || m_Current->word != word;
}

void SpellSession::IgnoreAll() {
  m_Checker.Ignore(m_Current->word);
  Advance();
}

bool SpellSession::Add() {
  const bool isStored = m_Checker.Add(m_Current->word);
  Advance();
  return isStored;
}

}  // namespace inspector::spell
