#include "editing/Placeholders.h"

#include <algorithm>
#include <iterator>

#include "data/PickersTable.h"
#include "device/Format.h"
#include "device/TextMarks.h"

namespace inspector::editing {
namespace {

// "(a,b,c)": up to each comma, the last one up to the parenthesis.
void AddAlternatives(TextView name, std::vector<Text>& choices) {
  std::vector<Text> alternatives = device::Split(name.substr(1), u',');
  Text& last = alternatives.back();
  last.resize(std::min(last.find(u')'), last.size()));
  std::move(alternatives.begin(), alternatives.end(), std::back_inserter(choices));
}

}  // namespace

std::optional<Placeholder> FindPlaceholder(TextView text, std::size_t from) {
  const std::optional<device::TextRange> range = device::FindCaretRange(text, from);
  if (!range) return std::nullopt;
  return Placeholder{range->at, range->length, Text(text.substr(range->at + 1, range->length - 2))};
}

bool HasUnfilledGap(TextView text) {
  std::size_t from = 0;
  while (const std::optional<Placeholder> gap = FindPlaceholder(text, from)) {
    if (device::IsGapName(gap->name)) return true;
    from = gap->at + 1;
  }
  return false;
}

ReplacementQuestion QuestionFor(data::Databases& databases, TextView name) {
  ReplacementQuestion question;
  if (name.empty()) {
    question.prompt = u"Replace ^ with:";
    return question;
  }
  question.prompt = device::Format(u"Replace ^%s^ with:", name);
  question.offersChoices = true;
  data::PickersTable picker(databases);
  picker.OpenSQL(device::Format(
      u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"%s\" ORDER BY PickerChoice;", name));
  for (int n = 0; n < picker.RecordCount(); ++n)
    if (picker.GetRecord(n)) question.choices.push_back(picker.m_PickerChoice);
  if (name.starts_with(u'(')) AddAlternatives(name, question.choices);
  return question;
}

std::optional<Text> FillPlaceholders(data::Databases& databases, SheetDialogs& dialogs, TextView text) {
  Text filled(text);
  std::size_t from = 0;
  while (const std::optional<Placeholder> gap = FindPlaceholder(filled, from)) {
    ReplacementQuestion question = QuestionFor(databases, gap->name);
    question.before = filled.substr(0, gap->at);
    question.after = filled.substr(gap->at + gap->length);
    const std::optional<Text> words = dialogs.AskReplacement(question);
    if (!words) return std::nullopt;
    filled.replace(gap->at, gap->length, *words);
    from = gap->at + words->size();
  }
  return filled;
}

bool IsFilledFrom(TextView filled, TextView prepared, bool withWords) {
  // Where the words of the next gap end at the earliest; npos for none where some are needed.
  const auto leastOf = [withWords](TextView rest) {
    const std::size_t word = withWords ? rest.find_first_not_of(u" \t\r\n") : 0;
    return withWords && word != TextView::npos ? word + 1 : word;
  };
  std::optional<Placeholder> gap = FindPlaceholder(prepared);
  if (!gap) return filled == prepared;
  if (!filled.starts_with(prepared.substr(0, gap->at))) return false;
  filled.remove_prefix(gap->at);
  std::size_t end = gap->at + gap->length;
  // Between two gaps the first place will do; only the last piece has to stand at the end.
  while ((gap = FindPlaceholder(prepared, end))) {
    const TextView between = prepared.substr(end, gap->at - end);
    const std::size_t least = leastOf(filled);
    const std::size_t found = least == TextView::npos ? least : filled.find(between, least);
    if (found == TextView::npos) return false;
    filled.remove_prefix(found + between.size());
    end = gap->at + gap->length;
  }
  const TextView last = prepared.substr(end);
  return filled.ends_with(last) && leastOf(filled.substr(0, filled.size() - last.size())) != TextView::npos;
}

}  // namespace inspector::editing
