#include "data/SqlTokens.h"

#include <charconv>

namespace inspector::data {
namespace {

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}
bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
// No statement calculates, so everything else may stand in a value that somebody left without quotes.
bool IsWordUnit(char16_t unit) {
  return !IsBlank(unit) && TextView(u"()=<>,;.*\"'").find(unit) == TextView::npos;
}

std::optional<SqlValue> ParseNumber(TextView text) {
  std::string ascii;
  for (const char16_t unit : text) {
    if (unit >= 0x80) return std::nullopt;
    ascii += static_cast<char>(unit);
  }
  const char* const end = ascii.data() + ascii.size();
  std::int64_t whole = 0;
  if (const auto parsed = std::from_chars(ascii.data(), end, whole);
      parsed.ec == std::errc() && parsed.ptr == end)
    return whole;
  double real = 0;
  if (const auto parsed = std::from_chars(ascii.data(), end, real);
      parsed.ec == std::errc() && parsed.ptr == end)
    return real;
  return std::nullopt;
}

class Tokeniser {
public:
  explicit Tokeniser(TextView statement) : m_Statement(statement) {
    m_Result.tokens.reserve(64);
    m_Result.shape.reserve(statement.size());
  }

  std::optional<SqlTokens> Run() {
    while (true) {
      while (m_At < m_Statement.size() && IsBlank(m_Statement[m_At])) ++m_At;
      if (m_At == m_Statement.size()) break;
      const char16_t unit = m_Statement[m_At];
      if (unit == u'"' || unit == u'\'') {
        if (!TakeQuoted(unit)) return std::nullopt;
      } else if (IsDigit(unit) ||
                 (unit == u'-' && m_At + 1 < m_Statement.size() && IsDigit(m_Statement[m_At + 1]))) {
        TakeNumber();
      } else if (IsWordUnit(unit)) {
        std::size_t end = m_At;
        while (end < m_Statement.size() && IsWordUnit(m_Statement[end])) ++end;
        Add(SqlToken::Kind::Word, end - m_At);
      } else {
        const TextView two = m_Statement.substr(m_At, 2);
        Add(SqlToken::Kind::Symbol, two == u"<=" || two == u">=" || two == u"<>" ? 2 : 1);
      }
    }
    m_Result.tokens.push_back({});
    return std::move(m_Result);
  }

private:
  void Add(SqlToken::Kind kind, std::size_t length) {
    const TextView text = m_Statement.substr(m_At, length);
    m_Result.tokens.push_back({kind, text, 0});
    m_Result.shape += device::ToUtf8(text);
    m_Result.shape += ' ';
    m_At += length;
  }

  void AddValue(SqlValue value, std::string_view mark) {
    m_Result.tokens.push_back({SqlToken::Kind::Value, {}, m_Result.values.size()});
    m_Result.values.push_back(std::move(value));
    m_Result.shape += mark;
  }

  bool TakeQuoted(char16_t quote) {
    Text content;
    for (std::size_t at = m_At + 1; at < m_Statement.size(); ++at) {
      if (m_Statement[at] != quote) {
        content += m_Statement[at];
      } else if (at + 1 < m_Statement.size() && m_Statement[at + 1] == quote) {
        content += quote;
        ++at;
      } else {
        m_At = at + 1;
        AddValue(device::ToUtf8(content), content.empty() ? "\"e " : "\"s ");
        return true;
      }
    }
    return false;
  }

  void TakeNumber() {
    std::size_t end = m_At + 1;
    while (end < m_Statement.size() && (IsWordUnit(m_Statement[end]) || m_Statement[end] == u'.')) ++end;
    if (auto number = ParseNumber(m_Statement.substr(m_At, end - m_At))) {
      m_At = end;
      AddValue(std::move(*number), "\"n ");
    } else {
      Add(SqlToken::Kind::Word, end - m_At);  // 4a, 10-B, 3.1.2
    }
  }

  TextView m_Statement;
  std::size_t m_At = 0;
  SqlTokens m_Result;
};

}  // namespace

std::optional<SqlTokens> Tokenise(TextView statement) {
  return Tokeniser(statement).Run();
}

}  // namespace inspector::data
