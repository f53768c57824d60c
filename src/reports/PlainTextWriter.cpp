#include "reports/PlainTextWriter.h"

#include <algorithm>

#include "device/CodePage.h"

namespace inspector::reports {
namespace {

// The next line of the text, without its end; `text` goes on behind it.
TextView TakeLine(TextView& text) {
  const auto isEnd = [](char16_t unit) { return (unit == u'\r') | (unit == u'\n'); };
  const std::size_t end = std::min(device::FindUnit(text, isEnd), text.size());
  const TextView line = text.substr(0, end);
  text.remove_prefix(end);
  if (text.starts_with(u"\r\n")) {
    text.remove_prefix(2);
  } else if (!text.empty()) {
    text.remove_prefix(1);
  }
  return line;
}

TextView WithoutBlanksAtEnd(TextView line) {
  return line.substr(0, line.find_last_not_of(u' ') + 1);
}

void WrapLine(TextView line, std::size_t width, std::vector<Text>& lines) {
  line = WithoutBlanksAtEnd(line);
  do {
    std::size_t end = line.size();
    if (end > width) {
      end = line.rfind(u' ', width);
      if (end == TextView::npos || WithoutBlanksAtEnd(line.substr(0, end)).empty()) end = width;
    }
    lines.emplace_back(WithoutBlanksAtEnd(line.substr(0, end)));
    line.remove_prefix(end);
    if (!line.empty()) line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
  } while (!line.empty());
}

}  // namespace

std::vector<Text> WrapLines(TextView words, std::size_t width) {
  std::vector<Text> lines;
  Text line;
  do {
    line = TakeLine(words);
    std::replace_if(
        line.begin(), line.end(), [](char16_t unit) { return unit < u' ' || unit == 0x7F; }, u' ');
    WrapLine(line, width, lines);
  } while (!words.empty());
  return lines;
}

void PlainTextWriter::WriteLine(TextView line) {
  std::string bytes;
  device::AppendCodePage(bytes, line);
  m_Output.Write(bytes.append("\r\n"));
}

void PlainTextWriter::WriteCentred(TextView words) {
  for (const Text& line : WrapLines(words, kColumns))
    WriteLine(Text((kColumns - line.size()) / 2, u' ') + line);
}

void PlainTextWriter::WriteTitle(TextView words, char16_t rule) {
  std::size_t width = 0;
  for (const Text& line : WrapLines(words, kColumns)) {
    WriteLine(line);
    width = std::max(width, line.size());
  }
  WriteLine(Text(width, rule));
}

void PlainTextWriter::WriteLabelled(TextView label, TextView words, std::size_t column) {
  Text line;
  for (const Text& part : WrapLines(label, kColumns)) {
    if (!line.empty()) WriteLine(line);
    line = part;
  }
  if (line.size() >= column) {
    WriteLine(line);
    line.clear();
  }
  for (const Text& part : WrapLines(words, kColumns - column)) {
    if (!part.empty()) line.resize(column, u' ');
    WriteLine(line + part);
    line.clear();
  }
}

void PlainTextWriter::WriteWrapped(TextView words, std::size_t indent) {
  for (const Text& line : WrapLines(words, kColumns - indent))
    WriteLine(line.empty() ? line : Text(indent, u' ') + line);
}

}  // namespace inspector::reports
