// Checking texts from their beginning to their end, word by word: what the "Spelling Error" dialog does.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "spell/Suggestions.h"
#include "spell/TextCheck.h"

namespace inspector::spell {

inline constexpr TextView kSpellingErrorTitle = u"Spelling Error";
// What is told when a session has come to its end by itself.
inline constexpr TextView kSpellCheckComplete = u"Spell checking is complete.";
inline constexpr TextView kSpellCheckCompleteTitle = u"Spell Check Complete";

// A text to be checked: a comment, a long text of the header.
struct SpellText {
  Text name;                               // where it belongs, for who reads the dialog
  std::function<Text()> read;              // called once, when the session reaches it
  std::function<bool(const Text&)> store;  // the text with one word replaced: one step to undo. False when it
                                           // could not be stored, which has been told
};

// A misspelt word where it stands.
struct SpellingError {
  std::size_t text = 0;  // which of the texts
  TextRange range;       // in it
  Text word;
  Text sentence;  // around it, in one line, without what is far away
  TextRange inSentence;
};

// Stands at a word, and every answer leads to the next one. Belongs to the thread of its checker, which it
// must not outlive; one session at a time. What was replaced stays when a session is left, so there is no
// Cancel here: the dialog closes.
//
//   for (SpellSession session(checker, suggestions, shortcuts, texts); session.Current();)
//     ... show session.Current(), session.Suggest(); answer by Replace, ReplaceAll, Ignore, IgnoreAll or Add
//   ... show kSpellCheckComplete
class SpellSession {
public:
  // Goes to the first misspelt word. Without a dictionary there is none.
  SpellSession(SpellChecker& checker, Suggestions& suggestions, const std::vector<Text>& shortcuts,
               std::vector<SpellText> texts);

  // Null at the end.
  const SpellingError* Current() const { return m_Current ? &*m_Current : nullptr; }
  const Text& NameOfText() const { return m_Texts[m_Text].name; }  // of the current word
  // For the current word, the likeliest first.
  std::vector<Text> Suggest() { return m_Suggestions.For(m_Current->word); }

  // All of these need a current word. Replacements are not checked. False, and the word stays current, when
  // the text could not be stored; ReplaceAll may then have gone further.
  bool Replace(TextView with);
  // This word and every one to come that is written in the same way.
  bool ReplaceAll(TextView with);
  void Ignore() { Advance(); }
  // This word from now on, in every text, as long as the program runs.
  void IgnoreAll();
  // Into the personal list. False when it could not be stored there; it counts as correct all the same.
  bool Add();

  int Replaced() const { return m_Replaced; }

private:
  void Advance();
  // Reads the text and looks for its misspelt words.
  void Enter(std::size_t text);
  bool Put(const MisspeltWord& word, TextView with);
  SpellingError ErrorAt(const MisspeltWord& word) const;

  SpellChecker& m_Checker;
  Suggestions& m_Suggestions;
  TextCheck m_Check;
  std::vector<SpellText> m_Texts;
  std::map<Text, Text> m_ReplaceAll;

  std::size_t m_Text = 0;
  Text m_Content;                        // of that text, as it is stored
  std::vector<MisspeltWord> m_Misspelt;  // in it, as it was read
  std::size_t m_Next = 0;                // of these
  std::size_t m_Grown = 0;               // by replacements before there, modulo its range
  std::optional<SpellingError> m_Current;
  int m_Replaced = 0;
};

}  // namespace inspector::spell
