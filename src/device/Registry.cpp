#include "device/Registry.h"

#include <toml++/toml.h>

#include <exception>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "device/Format.h"

namespace inspector::device {
namespace {

constexpr std::uint64_t kLargestFile = 16u << 20;
constexpr char kHexDigits[] = "0123456789abcdef";

Text PathText(const std::filesystem::path& path) {
  return FromUtf8(path.native());
}

// Keys and values compare without regard to case; the exact spelling comes first.
toml::node* Find(toml::table& table, const std::string& name) {
  if (toml::node* const node = table.get(name)) return node;
  const Text wanted = FromUtf8(name);
  for (auto&& [key, node] : table) {
    if (EqualIgnoringCase(FromUtf8(key.str()), wanted)) return &node;
  }
  return nullptr;
}

std::optional<std::vector<std::uint8_t>> BytesOfHex(TextView digits) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(digits.size() / 2);
  int high = -1;
  for (const char16_t unit : digits) {
    if (unit == u' ' || unit == u'\n' || unit == u'\r') continue;  // a person may break long values
    const std::string_view all(kHexDigits, 16);
    const std::size_t digit = unit < 0x80 ? all.find(static_cast<char>(FoldCase(unit))) : all.npos;
    if (digit == all.npos) return std::nullopt;
    if (high < 0) {
      high = static_cast<int>(digit);
    } else {
      bytes.push_back(static_cast<std::uint8_t>(high * 16 + static_cast<int>(digit)));
      high = -1;
    }
  }
  if (high >= 0) return std::nullopt;
  return bytes;
}

// Fills `table` from the file; a missing file has none. What goes wrong is put into `error`.
bool Load(Files& files, const std::filesystem::path& file, toml::table& table, Text& error) {
  const std::optional<std::string> content = ReadWhole(files, file, kLargestFile);
  if (!content) {
    if (!files.Exists(file)) return true;
    error = Format(u"The file %s cannot be read. Check its permissions, or move it away.", PathText(file));
    return false;
  }
  try {
    table = toml::parse(std::string_view(*content));
    return true;
  } catch (const toml::parse_error& fault) {
    error = Format(u"The file %s is damaged in line %d: %s Correct it, or move it away.", PathText(file),
                   fault.source().begin.line, FromUtf8(std::string(fault.description()) + "."));
  } catch (const std::exception& fault) {
    error = Format(u"The file %s cannot be understood: %s. Correct it, or move it away.", PathText(file),
                   FromUtf8(fault.what()));
  }
  return false;
}

// The table as text that reads as the table again; nothing when there is none, because the library's
// formatter does not get every text right (line breaks in single quotes, an apostrophe in a key).
std::optional<std::string> LinesOf(const toml::table& table) {
  using Layout = toml::format_flags;
  // Single-quoted strings come first: they spare a person the doubled backslashes of paths.
  for (const Layout layout : {Layout::allow_literal_strings | Layout::allow_unicode_strings,
                              Layout::allow_unicode_strings, Layout::none}) {
    std::ostringstream lines;
    lines << toml::toml_formatter(table, layout) << '\n';
    std::string text = lines.str();
    try {
      if (toml::parse(std::string_view(text)) == table) return text;
    } catch (const std::exception&) {
      continue;
    }
  }
  return std::nullopt;
}

}  // namespace

Registry::Registry(Files& files, std::filesystem::path file) : m_Files(files), m_File(std::move(file)) {}

bool Registry::Open(const Text& key) {
  m_LastError.clear();
  std::error_code error;
  const std::filesystem::path folder = m_File.parent_path();
  if (!folder.empty()) std::filesystem::create_directories(folder, error);
  if (error) {
    m_LastError = Format(u"The folder %s cannot be made: %s. Choose another, or check the permissions.",
                         PathText(folder), FromUtf8(error.message()));
    return false;
  }
  toml::table table;
  if (!Load(m_Files, m_File, table, m_LastError)) return false;
  const toml::node* const node = Find(table, ToUtf8(key));
  if (node != nullptr) return node->is_table() || FailNoTable(key);
  table.insert(ToUtf8(key), toml::table());
  return Store(LinesOf(table));
}

bool Registry::FailNoTable(const Text& key) {
  m_LastError = Format(u"In the file %s the key %s is no table. Correct it, or move the file away.",
                       PathText(m_File), key);
  return false;
}

std::optional<Text> Registry::Read(const Text& key, const Text& value) const {
  m_LastError.clear();
  toml::table table;
  if (!Load(m_Files, m_File, table, m_LastError)) return std::nullopt;
  toml::node* const node = Find(table, ToUtf8(key));
  if (node == nullptr || !node->is_table()) return std::nullopt;
  const toml::node* const content = Find(*node->as_table(), ToUtf8(value));
  if (content == nullptr || !content->is_string()) return std::nullopt;
  return FromUtf8(content->as_string()->get());
}

std::optional<std::vector<std::uint8_t>> Registry::ReadBinary(const Text& key, const Text& value) const {
  const std::optional<Text> digits = Read(key, value);
  if (!digits) return std::nullopt;
  return BytesOfHex(*digits);
}

bool Registry::Write(const Text& key, const Text& value, const Text& content) {
  m_LastError.clear();
  toml::table table;
  if (!Load(m_Files, m_File, table, m_LastError)) return false;
  const std::string keyName = ToUtf8(key);
  toml::node* node = Find(table, keyName);
  if (node == nullptr) node = &table.insert(keyName, toml::table()).first->second;
  if (!node->is_table()) return FailNoTable(key);
  toml::table& values = *node->as_table();
  std::string text = ToUtf8(content);
  if (toml::node* const old = Find(values, ToUtf8(value)); old != nullptr && old->is_string()) {
    // Rewriting loses a person's comments, so it is not done for nothing.
    if (old->as_string()->get() == text) return true;
    *old->as_string() = std::move(text);
  } else {
    values.insert_or_assign(ToUtf8(value), std::move(text));
  }

  return Store(LinesOf(table));
}

bool Registry::Store(const std::optional<std::string>& lines) {
  if (!lines) {
    m_LastError = Format(u"What was to be kept in the file %s cannot be written as text.", PathText(m_File));
    return false;
  }
  const std::unique_ptr<OutputFile> file = m_Files.Create(m_File);
  if (file->Write(*lines) && file->Commit()) return true;
  m_LastError = Format(
      u"The file %s cannot be written: %s. What stood there still counts. Free some space on the "
      u"disk, or check the permissions of the folder, and try again.",
      PathText(m_File), FromUtf8(file->Error()));
  return false;
}

bool Registry::WriteBinary(const Text& key, const Text& value, const std::vector<std::uint8_t>& content) {
  Text digits;
  digits.reserve(content.size() * 2);
  for (const std::uint8_t byte : content) {
    digits.push_back(static_cast<char16_t>(kHexDigits[byte >> 4]));
    digits.push_back(static_cast<char16_t>(kHexDigits[byte & 15]));
  }
  return Write(key, value, digits);
}

}  // namespace inspector::device
