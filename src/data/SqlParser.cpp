#include "data/SqlParser.h"

namespace inspector::data {
namespace {

using device::EqualIgnoringCase;
using Kind = SqlExpression::Kind;

// Brackets may come from a value that a statement took without quotes; they must not exhaust the stack.
constexpr int kDeepest = 100;

class Parser {
public:
  explicit Parser(const SqlTokens& tokens) : m_Tokens(tokens.tokens) {}

  std::optional<SqlStatement> Run() {
    if (TakeWord(u"SELECT")) {
      ParseSelected();
      Expect(TakeWord(u"FROM"));
      ParseTables(0);
      if (m_Statement.selected.empty() && !m_Statement.tables.empty())
        m_Statement.selected = m_Statement.tables.front();
    } else {
      m_Statement.kind = SqlStatement::Kind::Delete;
      Expect(TakeWord(u"DELETE") && TakeWord(u"FROM"));
      m_Statement.selected = TakeName();
      m_Statement.tables.push_back(m_Statement.selected);
    }
    if (TakeWord(u"WHERE")) m_Statement.where = ParseOr(0);
    if (m_Statement.kind == SqlStatement::Kind::Select && TakeWord(u"ORDER")) {
      Expect(TakeWord(u"BY"));
      do m_Statement.order.push_back(ParseColumn());
      while (TakeSymbol(u","));
    }
    TakeSymbol(u";");
    Expect(Current().kind == SqlToken::Kind::End);
    if (m_Failed) return std::nullopt;
    return std::move(m_Statement);
  }

private:
  const SqlToken& Current() const { return m_Tokens[m_At]; }
  void Advance() {
    if (Current().kind != SqlToken::Kind::End) ++m_At;
  }
  void Expect(bool holds) { m_Failed = m_Failed || !holds; }

  bool IsWord(TextView word) const {
    return Current().kind == SqlToken::Kind::Word && EqualIgnoringCase(Current().text, word);
  }
  bool IsSymbol(TextView symbol) const {
    return Current().kind == SqlToken::Kind::Symbol && Current().text == symbol;
  }
  bool TakeWord(TextView word) {
    if (!IsWord(word)) return false;
    Advance();
    return true;
  }
  bool TakeSymbol(TextView symbol) {
    if (!IsSymbol(symbol)) return false;
    Advance();
    return true;
  }
  TextView TakeName() {
    if (Current().kind != SqlToken::Kind::Word) {
      m_Failed = true;
      return {};
    }
    const TextView name = Current().text;
    Advance();
    return name;
  }

  // "*" or "Table.*"
  void ParseSelected() {
    if (TakeSymbol(u"*")) return;
    m_Statement.selected = TakeName();
    Expect(TakeSymbol(u".") && TakeSymbol(u"*"));
  }

  void ParseTables(int depth) {
    if (depth > kDeepest) {
      m_Failed = true;
      return;
    }
    if (TakeSymbol(u"(")) {
      ParseTables(depth + 1);
      Expect(TakeSymbol(u")"));
    } else {
      m_Statement.tables.push_back(TakeName());
    }
    while (!m_Failed && TakeWord(u"INNER")) {
      Expect(TakeWord(u"JOIN"));
      ParseTables(depth + 1);
      Expect(TakeWord(u"ON"));
      m_Statement.joins.push_back(ParseOr(depth + 1));
    }
  }

  SqlExpression Combine(Kind kind, SqlExpression left, SqlExpression right) {
    SqlExpression whole;
    whole.kind = kind;
    whole.operands.push_back(std::move(left));
    whole.operands.push_back(std::move(right));
    return whole;
  }

  SqlExpression ParseOr(int depth) {
    SqlExpression left = ParseAnd(depth);
    while (!m_Failed && TakeWord(u"OR")) left = Combine(Kind::Or, std::move(left), ParseAnd(depth));
    return left;
  }

  SqlExpression ParseAnd(int depth) {
    SqlExpression left = ParseNot(depth);
    while (!m_Failed && TakeWord(u"AND")) left = Combine(Kind::And, std::move(left), ParseNot(depth));
    return left;
  }

  SqlExpression ParseNot(int depth) {
    if (!TakeWord(u"NOT")) return ParseComparison(depth);
    SqlExpression negated;
    negated.kind = Kind::Not;
    if (depth > kDeepest)
      m_Failed = true;
    else
      negated.operands.push_back(ParseNot(depth + 1));
    return negated;
  }

  SqlExpression ParseComparison(int depth) {
    SqlExpression left = ParseOperand(depth);
    for (const TextView symbol : {u"=", u"<>", u"<=", u">=", u"<", u">", u"LIKE"}) {
      if (!TakeSymbol(symbol) && !TakeWord(symbol)) continue;
      SqlExpression comparison = Combine(Kind::Comparison, std::move(left), ParseOperand(depth));
      comparison.name = symbol;
      return comparison;
    }
    return left;
  }

  SqlExpression ParseOperand(int depth) {
    SqlExpression operand;
    if (depth > kDeepest) {
      m_Failed = true;
    } else if (TakeSymbol(u"(")) {
      operand = ParseOr(depth + 1);
      Expect(TakeSymbol(u")"));
    } else if (Current().kind == SqlToken::Kind::Value) {
      operand.kind = Kind::Value;
      operand.value = Current().value;
      Advance();
    } else if (TakeWord(u"TRUE")) {
      operand.kind = Kind::True;
    } else if (TakeWord(u"FALSE")) {
      operand.kind = Kind::False;
    } else if (Current().kind == SqlToken::Kind::Word && !IsWord(u"AND") && !IsWord(u"OR")) {
      operand = ParseColumn();
    }
    // Anything else leaves an operand of kind Nothing: a value that was filled in empty.
    return operand;
  }

  SqlExpression ParseColumn() {
    SqlExpression column;
    column.kind = Kind::Column;
    column.name = TakeName();
    if (TakeSymbol(u".")) {
      column.table = column.name;
      column.name = TakeName();
    }
    return column;
  }

  const std::vector<SqlToken>& m_Tokens;
  std::size_t m_At = 0;
  bool m_Failed = false;
  SqlStatement m_Statement;
};

}  // namespace

std::optional<SqlStatement> ParseSql(const SqlTokens& tokens) {
  return Parser(tokens).Run();
}

bool IsDefinition(const SqlTokens& tokens) {
  if (tokens.tokens.size() < 3) return false;
  const TextView first = tokens.tokens[0].text;
  return (EqualIgnoringCase(first, u"CREATE") || EqualIgnoringCase(first, u"ALTER")) &&
         EqualIgnoringCase(tokens.tokens[1].text, u"TABLE");
}

}  // namespace inspector::data
