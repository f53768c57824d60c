// Plain text in lines that every printer and mail program shows whole.
#pragma once

#include "device/Files.h"
#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// Lines of at most kColumns characters, each one byte of the code page, ended by CR LF. A failed write stays
// in the output, which outlives the writer.
class PlainTextWriter {
public:
  static constexpr std::size_t kColumns = 78;

  explicit PlainTextWriter(device::OutputFile& output) : m_Output(output) {}

  void WriteBlankLine() { WriteLine({}); }
  void WriteCentred(TextView words);
  // In capitals as they come, underlined with `rule`.
  void WriteTitle(TextView words, char16_t rule);
  void WriteRule(char16_t rule) { WriteLine(Text(kColumns, rule)); }
  // The words after a label, all their lines below each other. `column` is where they begin, from 0; a label
  // that reaches so far stands in a line of its own.
  void WriteLabelled(TextView label, TextView words, std::size_t column);
  // Broken between words, and inside one that is longer than a line. Ends of lines stay; tabs and control
  // characters become blanks.
  void WriteWrapped(TextView words, std::size_t indent);

private:
  void WriteLine(TextView line);

  device::OutputFile& m_Output;
};

// What WriteWrapped makes of a text: lines of at most `width` characters, without blanks at their ends.
std::vector<Text> WrapLines(TextView words, std::size_t width);

}  // namespace inspector::reports
