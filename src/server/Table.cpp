#include "server/Table.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "server/InspectionEntry.h"

namespace inspector::server {
namespace {

// What a device has sent must not move the cursor of a terminal or break a row.
std::string Shown(const Table::Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  device::Text text = device::FromUtf8(std::get<std::string>(value));
  std::replace_if(text.begin(), text.end(), IsControl, u' ');
  return device::ToUtf8(text);
}

std::size_t Width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](unsigned char c) { return (c & 0xC0) != 0x80; }));
}

nlohmann::ordered_json InJson(const std::vector<std::string>& headings,
                              const std::vector<Table::Value>& row) {
  nlohmann::ordered_json object = nlohmann::ordered_json::object();
  for (std::size_t at = 0; at < row.size(); ++at)
    std::visit([&](const auto& value) { object[headings[at]] = value; }, row[at]);
  return object;
}

std::string Dump(const nlohmann::ordered_json& value) {
  return value.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

void Table::Print(std::ostream& out, bool asJson) const {
  if (asJson) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const auto& row : m_Rows) array.push_back(InJson(m_Headings, row));
    out << Dump(array) << '\n';
    return;
  }
  std::vector<std::vector<std::string>> lines = {m_Headings};
  for (const auto& row : m_Rows) {
    std::vector<std::string>& line = lines.emplace_back();
    for (const Value& value : row) line.push_back(Shown(value));
  }
  std::vector<std::size_t> widths(m_Headings.size());
  for (const auto& line : lines)
    for (std::size_t at = 0; at < line.size(); ++at) widths[at] = std::max(widths[at], Width(line[at]));
  for (const auto& line : lines) {
    std::string shown;
    for (std::size_t at = 0; at < line.size(); ++at)
      shown += line[at] + std::string(widths[at] - Width(line[at]) + 2, ' ');
    out << shown.substr(0, shown.find_last_not_of(' ') + 1) << '\n';
  }
}

void Table::PrintUpright(std::ostream& out, bool asJson) const {
  const auto& row = m_Rows.front();
  if (asJson) {
    out << Dump(InJson(m_Headings, row)) << '\n';
    return;
  }
  std::size_t widest = 0;
  for (const std::string& heading : m_Headings) widest = std::max(widest, heading.size());
  for (std::size_t at = 0; at < row.size(); ++at)
    out << m_Headings[at] << std::string(widest - m_Headings[at].size() + 2, ' ') << Shown(row[at]) << '\n';
}

}  // namespace inspector::server
