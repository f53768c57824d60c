#include "cli/Listing.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/TerminalText.h"

namespace inspector::cli {
namespace {

using device::Text;

constexpr std::size_t kWidestCell = 60;

// One line, without control characters, cut where a table would become unreadable.
Text Cell(const Listing::Value& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return device::Decimal(*number);
  Text text;
  for (const char16_t unit : std::get<Text>(value)) text += unit < u' ' ? u' ' : unit;
  text = ForTerminal(std::move(text));
  if (text.size() > kWidestCell) text = Text(device::Shortened(text, kWidestCell - 3)) + u"...";
  return text;
}

}  // namespace

void Listing::Add(std::vector<Value> values, std::vector<Value> shown) {
  m_Shown.push_back(shown.empty() ? values : std::move(shown));
  m_Values.push_back(std::move(values));
}

void Listing::Print(std::ostream& out, bool asJson) const {
  if (asJson)
    PrintJson(out);
  else
    PrintTable(out);
}

void Listing::PrintJson(std::ostream& out) const {
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  for (const auto& values : m_Values) {
    nlohmann::ordered_json row = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < m_Names.size(); ++i) {
      if (const auto* number = std::get_if<std::int32_t>(&values[i]))
        row[m_Names[i]] = *number;
      else
        row[m_Names[i]] = device::ToUtf8(std::get<Text>(values[i]));
    }
    rows.push_back(std::move(row));
  }
  out << rows.dump(2) << "\n";
}

void Listing::PrintTable(std::ostream& out) const {
  std::vector<std::vector<Text>> lines;
  std::vector<Text> heading;
  for (const std::string& name : m_Names) {
    std::string capitals;
    for (const char letter : name)
      capitals += static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    heading.push_back(device::FromUtf8(capitals));
  }
  lines.push_back(std::move(heading));
  for (const auto& row : m_Shown) {
    std::vector<Text> cells;
    std::transform(row.begin(), row.end(), std::back_inserter(cells), Cell);
    lines.push_back(std::move(cells));
  }
  std::vector<std::size_t> widths(m_Names.size(), 0);
  for (const auto& cells : lines)
    for (std::size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], cells[i].size());
  for (const auto& cells : lines) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      line += device::ToUtf8(cells[i]);
      if (i + 1 < cells.size()) line += std::string(widths[i] - cells[i].size() + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << "\n";
  }
}

}  // namespace inspector::cli
