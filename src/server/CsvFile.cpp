#include "server/CsvFile.h"

#include <algorithm>

#include "device/CodePage.h"

namespace inspector::server {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsUtf8(std::string_view bytes) {
  // What is not comes back longer, or with signs in place of bytes.
  return bytes.find(kReplacement) == std::string_view::npos &&
         device::ToUtf8(device::FromUtf8(bytes)) == bytes;
}

char SeparatorOf(std::string_view content) {
  const std::string_view first = content.substr(0, content.find('\n'));
  const auto count = [first](char sign) { return std::count(first.begin(), first.end(), sign); };
  return std::max({',', ';', '\t'}, [&](char left, char right) { return count(left) < count(right); });
}

class Reader {
public:
  explicit Reader(std::string_view content) : m_Rest(content), m_Separator(SeparatorOf(content)) {}

  bool HasMore() const { return !m_Rest.empty(); }
  CsvRow Row(std::string& problem) {
    CsvRow row{m_Line, {}};
    for (bool isLast = false; !isLast && problem.empty();) {
      row.values.push_back(m_Rest.starts_with('"') ? Quoted(problem) : Plain());
      isLast = EndsLine(problem);
    }
    return row;
  }

private:
  std::string Plain() {
    const std::size_t end =
        std::min(m_Rest.find_first_of(std::string{m_Separator, '\r', '\n'}), m_Rest.size());
    std::string value(m_Rest.substr(0, end));
    m_Rest.remove_prefix(end);
    return value;
  }
  std::string Quoted(std::string& problem) {
    std::string value;
    const int begin = m_Line;
    for (;;) {
      m_Rest.remove_prefix(1);
      const std::size_t end = m_Rest.find('"');
      if (end == std::string_view::npos) {
        problem = "line " + std::to_string(begin) + ": a quote is not closed.";
        return value;
      }
      m_Line += static_cast<int>(
          std::count(m_Rest.begin(), m_Rest.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
      value += m_Rest.substr(0, end);
      m_Rest.remove_prefix(end + 1);
      if (!m_Rest.starts_with('"')) return value;
      value += '"';
    }
  }
  // Takes what follows a value. True at the end of the row.
  bool EndsLine(std::string& problem) {
    if (m_Rest.starts_with(m_Separator)) {
      m_Rest.remove_prefix(1);
      return false;
    }
    if (m_Rest.empty()) return true;
    if (m_Rest.front() != '\r' && m_Rest.front() != '\n') {
      if (problem.empty()) problem = "line " + std::to_string(m_Line) + ": words follow a closing quote.";
      return true;
    }
    m_Rest.remove_prefix(m_Rest.starts_with("\r\n") ? 2 : 1);
    ++m_Line;
    return true;
  }

  std::string_view m_Rest;
  char m_Separator;
  int m_Line = 1;
};

}  // namespace

std::vector<CsvRow> ReadCsv(std::string_view content, std::string& problem) {
  std::string converted;
  if (content.starts_with(kByteOrderMark)) {
    content.remove_prefix(kByteOrderMark.size());
  } else if (!IsUtf8(content)) {
    converted = device::ToUtf8(device::FromCodePage(content));
    content = converted;
  }
  std::vector<CsvRow> rows;
  for (Reader reader(content); reader.HasMore() && problem.empty();) {
    CsvRow row = reader.Row(problem);
    if (row.values.size() > 1 || !row.values.front().empty()) rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace inspector::server
