// The small printf of the program's fixed texts and SQL texts: %d, %s, %c, %02x and %%.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <type_traits>

#include "device/Text.h"

namespace inspector::device {

// One argument of Format: a number (%d, %c as a code unit, %02x) or a text (%s).
class FormatArgument {
public:
  template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  FormatArgument(Integer value) : m_Number(static_cast<std::int64_t>(value)) {}
  FormatArgument(TextView text) : m_Text(text), m_IsText(true) {}
  FormatArgument(const Text& text) : m_Text(text), m_IsText(true) {}
  FormatArgument(const char16_t* text) : m_Text(text), m_IsText(true) {}

  bool IsText() const { return m_IsText; }
  std::int64_t Number() const { return m_Number; }
  TextView String() const { return m_Text; }

private:
  std::int64_t m_Number = 0;
  TextView m_Text;
  bool m_IsText = false;
};

// Fills `format`. A %s that stands directly between two double quotes is a value inside a statement: its
// own double quotes are doubled, so that no value can end the statement's string. An argument of the wrong
// kind, or a missing one, asserts and is written as nothing. A % before anything else stands for itself.
Text FormatList(TextView format, std::initializer_list<FormatArgument> arguments);

// The same for a sentence that a person reads: values between quotes stand as they are.
Text PhraseList(TextView format, std::initializer_list<FormatArgument> arguments);

template <typename... Arguments>
Text Phrase(TextView format, const Arguments&... arguments) {
  return PhraseList(format, {FormatArgument(arguments)...});
}

template <typename... Arguments>
Text Format(TextView format, const Arguments&... arguments) {
  return FormatList(format, {FormatArgument(arguments)...});
}

}  // namespace inspector::device
