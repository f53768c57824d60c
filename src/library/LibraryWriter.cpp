#include "library/LibraryWriter.h"

#include <charconv>

#include "library/LibraryTables.h"

namespace inspector::library {
namespace {

using device::ToUtf8;

constexpr char kHexDigits[] = "0123456789abcdef";

// Everything that a person would not see, or an editor might eat, is written as its number: control
// characters and separators, the soft hyphen, blanks of odd widths, marks of writing direction, private
// characters and the byte order mark.
bool IsWrittenAsNumber(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD ||
         (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
         (unit >= 0x2060 && unit <= 0x206F) || (unit >= 0xE000 && unit <= 0xF8FF) || unit == 0xFEFF ||
         unit >= 0xFFF0;
}

void WriteNumber(std::string& out, char16_t unit) {
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kHexDigits[(unit >> shift) & 0xF]);
}

void WriteText(std::string& out, TextView text) {
  out.push_back('"');
  std::size_t plain = 0;  // where the run of units that stand for themselves begins
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    const bool isEscaped = unit == u'"' || unit == u'\\' || IsWrittenAsNumber(unit);
    if (!isEscaped) continue;
    out += ToUtf8(text.substr(plain, at - plain));
    plain = at + 1;
    switch (unit) {
      case u'"':
      case u'\\':
        out.push_back('\\');
        out.push_back(static_cast<char>(unit));
        break;
      case u'\n':
        out += "\\n";
        break;
      case u'\r':
        out += "\\r";
        break;
      case u'\t':
        out += "\\t";
        break;
      default:
        WriteNumber(out, unit);
    }
  }
  out += ToUtf8(text.substr(plain));
  out.push_back('"');
}

template <typename Number>
void WriteDecimal(std::string& out, Number number) {
  char digits[32];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

// The shortest digits that read back as the same number, with a mark that it is no whole one.
void WriteReal(std::string& out, double number) {
  const std::size_t start = out.size();
  WriteDecimal(out, number);
  if (out.find_first_of(".en", start) == std::string::npos) out += ".0";
}

void WriteBytes(std::string& out, const data::ByteArray& bytes) {
  out.push_back('"');
  for (const std::uint8_t byte : bytes) {
    out.push_back(kHexDigits[byte >> 4]);
    out.push_back(kHexDigits[byte & 0xF]);
  }
  out.push_back('"');
}

void WriteValue(std::string& out, const data::RawValue& value, data::ValueType type) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    if (type == data::ValueType::YesNo)
      out += *number != 0 ? "true" : "false";
    else
      WriteDecimal(out, *number);
  } else if (const auto* real = std::get_if<double>(&value)) {
    WriteReal(out, *real);
  } else if (const auto* text = std::get_if<Text>(&value)) {
    WriteText(out, *text);
  } else if (const auto* bytes = std::get_if<data::ByteArray>(&value)) {
    WriteBytes(out, *bytes);
  }
}

}  // namespace

void WriteLibraryRow(const data::TableLayout& table, const data::RawRow& row,
                     const std::vector<LinkList>& links, std::string& lines) {
  lines += "\n[[" + ToUtf8(table.name) + "]]\n";
  std::string nulls;
  for (std::size_t at = 0; at < row.size(); ++at) {
    const data::ColumnLayout& column = table.columns[at];
    if (StaysOnDevice(table, column.name)) continue;
    const std::string key = ToUtf8(column.name);
    if (std::holds_alternative<std::monostate>(row[at])) {
      nulls += (nulls.empty() ? "\"" : ", \"") + key + "\"";
      continue;
    }
    const bool isAlwaysWritten = table.name == kOptions || column.name == u"ID";
    if (!isAlwaysWritten && row[at] == data::NeutralValue(column.type)) continue;
    lines += key + " = ";
    WriteValue(lines, row[at], column.type);
    lines.push_back('\n');
  }
  for (const auto& [key, keys] : links) {
    if (keys.empty()) continue;
    lines += ToUtf8(key) + " = [";
    for (std::size_t at = 0; at < keys.size(); ++at) {
      if (at > 0) lines += ", ";
      WriteDecimal(lines, keys[at]);
    }
    lines += "]\n";
  }
  if (!nulls.empty()) lines += ToUtf8(kNulls) + " = [" + nulls + "]\n";
}

}  // namespace inspector::library
