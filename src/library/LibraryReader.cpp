#include "library/LibraryReader.h"

#include <toml++/toml.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <utility>

#include "device/Format.h"
#include "library/LibraryTables.h"

namespace inspector::library {
namespace {

using data::ValueType;
using device::Format;
using device::FromUtf8;

int LineOf(const toml::node& node) {
  return static_cast<int>(node.source().begin.line);
}

std::optional<std::int32_t> IntegerOf(const toml::node& node) {
  if (!node.is_integer()) return std::nullopt;
  const std::int64_t number = node.as_integer()->get();
  if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max())
    return std::nullopt;
  return static_cast<std::int32_t>(number);
}

// Pairs of hexadecimal digits; blanks and line breaks between them serve a person's eyes.
std::optional<data::ByteArray> BytesOf(std::string_view digits) {
  data::ByteArray bytes;
  int high = -1;
  for (const char digit : digits) {
    if (digit == ' ' || digit == '\r' || digit == '\n') continue;
    const char small = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
    const std::size_t value = std::string_view("0123456789abcdef").find(small);
    if (value == std::string_view::npos) return std::nullopt;
    if (high >= 0) bytes.push_back(static_cast<std::uint8_t>(high * 16 + static_cast<int>(value)));
    high = high >= 0 ? -1 : static_cast<int>(value);
  }
  return high < 0 ? std::optional(bytes) : std::nullopt;
}

std::optional<data::RawValue> ValueOf(const toml::node& node, ValueType type) {
  switch (type) {
    case ValueType::Integer:
      if (const auto number = IntegerOf(node)) return *number;
      break;
    case ValueType::YesNo:
      if (node.is_boolean()) return node.as_boolean()->get() ? -1 : 0;
      break;
    case ValueType::Double:
      if (node.is_floating_point()) return node.as_floating_point()->get();
      if (node.is_integer()) return static_cast<double>(node.as_integer()->get());
      break;
    case ValueType::Date:
      break;  // no library table has one
    case ValueType::String:
      if (node.is_string()) return FromUtf8(node.as_string()->get());
      break;
    case ValueType::Binary:
      if (!node.is_string()) break;
      if (auto bytes = BytesOf(node.as_string()->get())) return std::move(*bytes);
      break;
  }
  return std::nullopt;
}

TextView Wanted(ValueType type) {
  switch (type) {
    case ValueType::Integer:
      return u"a whole number of at most 32 bits";
    case ValueType::YesNo:
      return u"true or false";
    case ValueType::Double:
      return u"a number";
    case ValueType::Binary:
      return u"a text of hexadecimal digits, two for each byte";
    default:
      return u"a text in quotes";
  }
}

// What is wrong, and where. No line: nothing is.
struct Problem {
  int line = 0;
  Text what;
};

// Reads one row with the keys that stand on it.
class RowReader {
public:
  RowReader(const data::TableLayout& table, const toml::table& source) : m_Table(table), m_Source(source) {}

  Problem Read(std::vector<LibraryRow>& rows) {
    m_Row.table = &m_Table;
    m_Row.values = data::NeutralRow(m_Table);
    m_Row.isNamed.assign(m_Table.columns.size(), false);
    m_Row.line = LineOf(m_Source);
    for (auto&& [key, node] : m_Source)
      if (const Problem problem = ReadKey(FromUtf8(key.str()), node); problem.line > 0) return problem;
    // The NULLs come after all keys, the links after the ID: the keys are not in the order of the file here.
    if (m_Nulls)
      if (const Problem problem = ReadNulls(); problem.line > 0) return problem;
    const std::size_t place = rows.size();
    rows.push_back(std::move(m_Row));
    for (const LinkShorthand& shorthand : LinkShorthands())
      if (const Problem problem = ReadLinks(shorthand, place, rows); problem.line > 0) return problem;
    return {};
  }

private:
  Problem ReadKey(const Text& key, const toml::node& node) {
    if (key == kNulls) {
      m_Nulls = &node;
      return {};
    }
    if (FindShorthand(m_Table.name, key)) return {};
    const std::optional<std::size_t> column = FindColumn(key);
    if (!column) return {LineOf(node), UnknownKey(key)};
    const ValueType type = m_Table.columns[*column].type;
    std::optional<data::RawValue> value = ValueOf(node, type);
    if (!value)
      return {LineOf(node), Format(u"the key %s of [[%s]] takes %s.", key, m_Table.name, Wanted(type))};
    m_Row.values[*column] = std::move(*value);
    m_Row.isNamed[*column] = true;
    return {};
  }

  Problem ReadNulls() {
    if (!m_Nulls->is_array())
      return {LineOf(*m_Nulls), Format(u"the key %s takes a list of keys in quotes.", kNulls)};
    for (const toml::node& node : *m_Nulls->as_array()) {
      if (!node.is_string())
        return {LineOf(node), Format(u"the key %s takes a list of keys in quotes.", kNulls)};
      const Text key = FromUtf8(node.as_string()->get());
      const std::optional<std::size_t> column = FindColumn(key);
      if (!column) return {LineOf(node), UnknownKey(key)};
      if (m_Row.isNamed[*column])
        return {LineOf(node), Format(u"the key %s has a value already and cannot stand in %s.", key, kNulls)};
      m_Row.values[*column] = std::monostate();
      m_Row.isNamed[*column] = true;
    }
    return {};
  }

  Problem ReadLinks(const LinkShorthand& shorthand, std::size_t place, std::vector<LibraryRow>& rows) {
    if (shorthand.owner != m_Table.name) return {};
    const toml::node* const node = m_Source.get(device::ToUtf8(shorthand.key));
    if (!node) return {};
    const auto* const owner = std::get_if<std::int32_t>(&rows[place].values[0]);
    if (!owner || !rows[place].isNamed[0])
      return {LineOf(*node), Format(u"the key %s needs an ID on the same row.", shorthand.key)};
    const std::int32_t id = *owner;
    const auto wrong = [&](const toml::node& where) {
      return Problem{LineOf(where), Format(u"the key %s of [[%s]] takes a list of IDs such as [1, 2].",
                                           shorthand.key, m_Table.name)};
    };
    if (!node->is_array()) return wrong(*node);
    const data::TableLayout& links = *FindLibraryTable(shorthand.links);
    for (const toml::node& element : *node->as_array()) {
      const std::optional<std::int32_t> linked = IntegerOf(element);
      if (!linked) return wrong(element);
      rows.push_back({&links, MakeLink(links, *linked, id), std::vector<bool>(links.columns.size(), true),
                      LineOf(element)});
    }
    return {};
  }

  std::optional<std::size_t> FindColumn(const Text& key) const {
    for (std::size_t at = 0; at < m_Table.columns.size(); ++at)
      if (m_Table.columns[at].name == key && !StaysOnDevice(m_Table, key)) return at;
    return std::nullopt;
  }

  Text UnknownKey(const Text& key) const {
    if (StaysOnDevice(m_Table, key))
      return Format(u"the key %s belongs to the device and is never part of a library.", key);
    for (const data::ColumnLayout& column : m_Table.columns)
      if (device::EqualIgnoringCase(column.name, key))
        return Format(u"[[%s]] has no key %s; it is written %s.", m_Table.name, key, column.name);
    return Format(u"[[%s]] has no key %s.", m_Table.name, key);
  }

  const data::TableLayout& m_Table;
  const toml::table& m_Source;
  LibraryRow m_Row;
  const toml::node* m_Nulls = nullptr;
};

struct SourceRow {
  const data::TableLayout* table;
  const toml::table* source;
};

Text UnknownTable(const Text& name) {
  for (const data::TableLayout* table : LibraryTables())
    if (device::EqualIgnoringCase(table->name, name))
      return Format(u"a library has no table %s; it is written [[%s]].", name, table->name);
  return Format(u"a library has no table %s.", name);
}

// The rows of all tables of the file by their lines, which is how a person reads them.
Problem CollectRows(const toml::table& file, std::vector<SourceRow>& rows) {
  for (auto&& [key, node] : file) {
    const Text name = FromUtf8(key.str());
    const data::TableLayout* const table = FindLibraryTable(name);
    if (!table) return {LineOf(node), UnknownTable(name)};
    const Problem noRows = {LineOf(node),
                            Format(u"a row of %s begins with [[%s]], in double brackets.", name, name)};
    if (!node.is_array()) return noRows;
    for (const toml::node& element : *node.as_array()) {
      if (!element.is_table()) return noRows;
      rows.push_back({table, element.as_table()});
    }
  }
  std::stable_sort(rows.begin(), rows.end(), [](const SourceRow& left, const SourceRow& right) {
    const auto& a = left.source->source().begin;
    const auto& b = right.source->source().begin;
    return std::pair(a.line, a.column) < std::pair(b.line, b.column);
  });
  return {};
}

}  // namespace

Text ReadLibraryFile(std::string_view content, TextView name, std::vector<LibraryRow>& rows) {
  const auto describe = [&](const Problem& problem) {
    return Format(u"%s, line %d: %s", name, problem.line, problem.what);
  };
  try {
    const toml::table file = toml::parse(content);
    std::vector<SourceRow> sources;
    if (const Problem problem = CollectRows(file, sources); problem.line > 0) return describe(problem);
    for (const SourceRow& source : sources)
      if (const Problem problem = RowReader(*source.table, *source.source).Read(rows); problem.line > 0)
        return describe(problem);
    return {};
  } catch (const toml::parse_error& fault) {
    return describe(
        {static_cast<int>(fault.source().begin.line), FromUtf8(std::string(fault.description()) + ".")});
  } catch (const std::exception& fault) {
    return Format(u"%s cannot be understood: %s.", name, FromUtf8(fault.what()));
  }
}

}  // namespace inspector::library
