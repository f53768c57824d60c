#include "data/OptionFields.h"

#include <algorithm>
#include <charconv>

#include "device/Format.h"

namespace inspector::data {
namespace {

using device::EqualIgnoringCase;

const ColumnDef* FindColumn(const OptionsTable& options, TextView name) {
  const auto layout = FindLayout(u"Options")->columns;
  for (const ColumnDef& column : options.Columns())
    if (EqualIgnoringCase(layout[static_cast<std::size_t>(column.ordinal)].name, name)) return &column;
  return nullptr;
}

// What the program keeps for itself: a version that is not true would have the structure upgraded anew.
bool IsProgramsOwn(TextView column) {
  return column == u"DataVersion" || column == u"OptionsID";
}

std::optional<bool> ParseYesNo(TextView value) {
  for (const TextView yes : {u"TRUE", u"YES", u"1", u"-1"})
    if (EqualIgnoringCase(value, yes)) return true;
  for (const TextView no : {u"FALSE", u"NO", u"0"})
    if (EqualIgnoringCase(value, no)) return false;
  return std::nullopt;
}

template <typename Number>
std::optional<Number> ParseNumber(TextView value) {
  const std::string bytes = device::ToUtf8(value);
  Number number{};
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
  if (error != std::errc() || end != bytes.data() + bytes.size()) return std::nullopt;
  return number;
}

}  // namespace

std::vector<Text> OptionNames() {
  std::vector<Text> names;
  for (const ColumnLayout& column : FindLayout(u"Options")->columns) names.emplace_back(column.name);
  return names;
}

std::optional<Text> OptionText(const OptionsTable& options, TextView name) {
  const ColumnDef* column = FindColumn(options, name);
  if (!column) return std::nullopt;
  switch (column->type) {
    case ValueType::String:
      return *std::get<Text*>(column->member);
    case ValueType::YesNo:
      return *std::get<std::int32_t*>(column->member) ? u"TRUE" : u"FALSE";
    case ValueType::Double: {
      char digits[40];
      const auto written = std::to_chars(digits, digits + sizeof digits, *std::get<double*>(column->member));
      return device::FromUtf8(std::string_view(digits, static_cast<std::size_t>(written.ptr - digits)));
    }
    case ValueType::Binary:
      return device::Format(u"%d bytes", std::get<ByteArray*>(column->member)->size());
    default:
      return device::Decimal(*std::get<std::int32_t*>(column->member));
  }
}

OptionSet SetOption(OptionsTable& options, TextView name, TextView value) {
  const ColumnDef* column = FindColumn(options, name);
  if (!column) return OptionSet::UnknownName;
  if (IsProgramsOwn(FindLayout(u"Options")->columns[static_cast<std::size_t>(column->ordinal)].name))
    return OptionSet::BadValue;
  switch (column->type) {
    case ValueType::String:
      *std::get<Text*>(column->member) = device::StripLeadingControls(value);
      return OptionSet::Done;
    case ValueType::YesNo: {
      const std::optional<bool> flag = ParseYesNo(value);
      if (flag) *std::get<std::int32_t*>(column->member) = *flag ? -1 : 0;
      return flag ? OptionSet::Done : OptionSet::BadValue;
    }
    case ValueType::Double: {
      const std::optional<double> number = ParseNumber<double>(value);
      if (!number || !(*number >= 0 && *number <= 100)) return OptionSet::BadValue;  // inches; "nan" is none
      *std::get<double*>(column->member) = *number;
      return OptionSet::Done;
    }
    case ValueType::Integer: {
      const std::optional<std::int32_t> number = ParseNumber<std::int32_t>(value);
      if (!number) return OptionSet::BadValue;
      *std::get<std::int32_t*>(column->member) = *number;
      return options.Repair() ? OptionSet::Repaired : OptionSet::Done;
    }
    default:
      return OptionSet::BadValue;
  }
}

}  // namespace inspector::data
