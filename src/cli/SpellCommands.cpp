#include <algorithm>
#include <iostream>
#include <iterator>

#include "cli/CommandGroups.h"
#include "device/Format.h"
#include "editing/Shortcuts.h"
#include "editing/VisitTexts.h"
#include "spell/Suggestions.h"
#include "spell/TextCheck.h"

namespace inspector::cli {
namespace {

using device::Format;
using device::Text;
using device::TextView;

constexpr std::uint64_t kMostFileBytes = 64u << 20;
constexpr std::size_t kMostSuggestions = 5;
constexpr TextView kByteOrderMark = u"\uFEFF";

// Where a place of a text is, counted from 1: a line feed ends a line, a character is what a person calls
// one.
class Position {
public:
  explicit Position(TextView text) : m_Text(text) {}
  // Places must be asked for in ascending order.
  std::string At(std::size_t place) {
    for (; m_At < place; ++m_At) {
      if (m_Text[m_At] == u'\n') {
        ++m_Line;
        m_Column = 1;
      } else if (!device::IsHighSurrogate(m_Text[m_At])) {
        ++m_Column;
      }
    }
    return std::to_string(m_Line) + ":" + std::to_string(m_Column);
  }

private:
  TextView m_Text;
  std::size_t m_At = 0;
  int m_Line = 1;
  int m_Column = 1;
};

class Proofreader {
public:
  explicit Proofreader(Session& session)
      : m_Session(session), m_Checker(session.GetMachine().files, session.GetMachine().paths) {}

  // False without a dictionary, which has been said.
  bool Start() {
    const spell::LoadResult result = m_Checker.FindDictionary();
    // What is to be said has its line end.
    if (!result.message.empty())
      m_Session.Note(device::FromUtf8(result.message.substr(0, result.message.size() - 1)));
    if (result.Code() == 0) return true;
    if (result.outcome == spell::LoadResult::Outcome::Failed)
      m_Session.Fail(u"There is no dictionary on this device. \"init\" puts one there.");
    return false;
  }

  // False when something could not be read.
  bool Prepare() {
    data::Databases& databases = m_Session.Workspace().GetDatabases();
    const auto library = editing::TextsOfLibrary(databases);
    if (!library) return false;
    spell::WordCounts common;
    for (const Text& text : *library) common.Add(text);
    m_Suggestions = std::make_unique<spell::Suggestions>(m_Checker, std::move(common));
    m_Check = std::make_unique<spell::TextCheck>(m_Checker, editing::Shortcuts(databases).Names());
    return true;
  }

  void Print(const std::string& where, TextView text) {
    Position position(text);
    for (const spell::MisspeltWord& word : m_Check->FindMisspelt(text)) {
      m_Session.Out() << where << position.At(word.range.at) << ": " << device::ToUtf8(word.word) << ":";
      const char* between = " ";
      for (const Text& suggestion : m_Suggestions->For(word.word, kMostSuggestions)) {
        m_Session.Out() << between << device::ToUtf8(suggestion);
        between = ", ";
      }
      m_Session.Out() << "\n";
      m_FoundAny = true;
    }
  }

  ExitCode Result() const { return m_FoundAny ? ExitCode::Failed : ExitCode::Done; }

private:
  Session& m_Session;
  spell::SpellChecker m_Checker;
  std::unique_ptr<spell::Suggestions> m_Suggestions;
  std::unique_ptr<spell::TextCheck> m_Check;
  bool m_FoundAny = false;
};

// Nothing when it cannot be read, which has been said.
std::optional<Text> ReadText(Session& session, const std::string& name) {
  std::optional<std::string> bytes;
  if (name == "-") {
    bytes.emplace(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } else {
    const auto file = TypedFile(session, u"to check", name);
    if (!file) return std::nullopt;
    bytes = device::ReadWhole(session.GetMachine().files, *file, kMostFileBytes);
  }
  if (!bytes) {
    session.Fail(Format(u"%s cannot be read.", device::FromUtf8(name)));
    return std::nullopt;
  }
  Text text = device::FromUtf8(*bytes);
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return text;
}

std::string Place(const std::vector<Text>& where) {
  std::string place;
  for (const Text& part : where) place += device::ToUtf8(part) + ": ";
  std::replace_if(
      place.begin(), place.end(), [](char byte) { return byte == '\r' || byte == '\n'; }, ' ');
  return place;
}

ExitCode CheckVisit(Session& session, std::int32_t key) {
  Proofreader reader(session);
  if (!session.SelectInspection(key) || !reader.Start() || !reader.Prepare()) return ExitCode::Failed;
  const auto texts = editing::TextsOfVisit(session.Document());
  if (!texts) return ExitCode::Failed;
  for (const editing::VisitText& text : *texts) reader.Print(Place(text.where), text.text);
  return reader.Result();
}

ExitCode CheckFile(Session& session, const std::string& name) {
  Proofreader reader(session);
  if (!reader.Start() || !reader.Prepare()) return ExitCode::Failed;
  const std::optional<Text> text = ReadText(session, name);
  if (!text) return ExitCode::Failed;
  reader.Print("", *text);
  return reader.Result();
}

ExitCode RunSpell(Session& session, const Input& input) {
  const bool isVisit = input.Has("--inspection");
  if (input.repeated.size() + isVisit != 1) {
    session.Fail(u"Give one file, \"-\" for the standard input, or --inspection.");
    return ExitCode::Usage;
  }
  if (!isVisit) return CheckFile(session, input.repeated.front());
  const std::string& typed = input.options.at("--inspection");
  const std::optional<std::int32_t> key = ParseNumber(typed);
  if (!key) {
    session.Fail(Format(u"%s is no key of an inspection. \"list\" shows them.", device::FromUtf8(typed)));
    return ExitCode::Usage;
  }
  return CheckVisit(session, *key);
}

}  // namespace

std::vector<Command> SpellCommands() {
  return {
      {"spell",
       "find misspelt words in a file or in an inspection",
       {{"FILE", "a text in UTF-8; \"-\" for the standard input", Argument::Kind::Text, true}},
       {{"--inspection", "ID", "check all texts of this inspection", false}},
       "Prints \"line:column: word: suggestions\" for each word that neither the dictionary nor the personal "
       "list has; for an inspection with category, step and field before it. Ends with 1 when there is one. "
       "Picture tags, gaps, figures, addresses and the names of shortcuts are no words.",
       RunSpell},
  };
}

}  // namespace inspector::cli
