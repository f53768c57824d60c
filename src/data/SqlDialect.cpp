#include "data/SqlDialect.h"

#include <algorithm>

#include "data/SqlExpression.h"
#include "data/SqlParser.h"
#include "data/TableLayout.h"

namespace inspector::data {
namespace {

using device::EqualIgnoringCase;
using device::ToUtf8;

struct ResolvedColumn {
  std::string sql;
  bool isText = false;
};

// Writes one parsed statement in SQLite's words.
class Emitter {
public:
  Emitter(SqlCatalog& catalog, const SqlStatement& statement, const std::vector<SqlValue>& values)
      : m_Catalog(catalog), m_Statement(statement), m_Values(values) {}

  SqlTranslation Run() {
    for (const TextView table : m_Statement.tables) {
      if (!m_Catalog.ColumnsOf(RealTableName(table))) return Missing(table);
    }
    const TextView selected = RealTableName(m_Statement.selected);
    m_Result.table = Text(selected);
    if (!m_Catalog.ColumnsOf(selected)) return Missing(selected);

    const bool isQuery = m_Statement.kind == SqlStatement::Kind::Select;
    m_Result.sql = isQuery ? "SELECT " + RowId(selected) + " FROM " : "DELETE FROM ";
    for (std::size_t i = 0; i < m_Statement.tables.size(); ++i)
      m_Result.sql += (i ? ", " : "") + QuotedName(RealTableName(m_Statement.tables[i]));
    EmitConditions();
    if (isQuery) EmitOrder(selected);
    if (!m_Problem.empty()) {
      m_Result.outcome = SqlTranslation::Outcome::NotUnderstood;
      m_Result.table = m_Problem;
      return m_Result;
    }
    m_Result.outcome = isQuery ? SqlTranslation::Outcome::Query : SqlTranslation::Outcome::Change;
    return m_Result;
  }

private:
  SqlTranslation Missing(TextView table) {
    m_Result.outcome = SqlTranslation::Outcome::TableMissing;
    m_Result.table = Text(RealTableName(table));
    return m_Result;
  }

  static std::string RowId(TextView table) { return QuotedName(table) + "._rowid_"; }

  std::optional<ResolvedColumn> Find(TextView table, TextView column) const {
    const TextView real = RealTableName(table);
    const std::vector<StoredColumn>* stored = m_Catalog.ColumnsOf(real);
    if (!stored) return std::nullopt;
    auto found = std::find_if(stored->begin(), stored->end(),
                              [&](const StoredColumn& each) { return EqualIgnoringCase(each.name, column); });
    if (found == stored->end()) {
      const TableLayout* layout = FindLayout(real);
      if (!layout) return std::nullopt;
      const auto named =
          std::find_if(layout->columns.begin(), layout->columns.end(),
                       [&](const ColumnLayout& each) { return EqualIgnoringCase(each.name, column); });
      const auto ordinal = static_cast<std::size_t>(named - layout->columns.begin());
      if (named == layout->columns.end() || ordinal >= stored->size()) return std::nullopt;
      found = stored->begin() + static_cast<std::ptrdiff_t>(ordinal);
    }
    const bool isText = found->type == StoredType::String || found->type == StoredType::LongString;
    return ResolvedColumn{QuotedName(real) + "." + QuotedName(found->name), isText};
  }

  std::optional<ResolvedColumn> Resolve(const SqlExpression& column) const {
    if (!column.table.empty()) {
      const bool isThere = std::any_of(
          m_Statement.tables.begin(), m_Statement.tables.end(),
          [&](TextView each) { return EqualIgnoringCase(RealTableName(each), RealTableName(column.table)); });
      return isThere ? Find(column.table, column.name) : std::nullopt;
    }
    if (auto found = Find(m_Statement.selected, column.name)) return found;
    for (const TextView table : m_Statement.tables)
      if (auto found = Find(table, column.name)) return found;
    return std::nullopt;
  }

  ResolvedColumn ResolveOrFail(const SqlExpression& column) {
    if (auto found = Resolve(column)) return *found;
    if (m_Problem.empty())
      m_Problem = Text(column.table) + (column.table.empty() ? u"" : u".") + Text(column.name);
    return {"NULL", false};
  }

  void EmitConditions() {
    const char* before = " WHERE ";
    const auto emit = [&](const SqlExpression& condition) {
      m_Result.sql += before;
      EmitCondition(condition);
      before = " AND ";
    };
    for (const SqlExpression& condition : m_Statement.joins) emit(condition);
    if (m_Statement.where) emit(*m_Statement.where);
  }

  void EmitCondition(const SqlExpression& condition) {
    using Kind = SqlExpression::Kind;
    switch (condition.kind) {
      case Kind::And:
      case Kind::Or:
        m_Result.sql += '(';
        EmitCondition(condition.operands[0]);
        m_Result.sql += condition.kind == Kind::And ? " AND " : " OR ";
        EmitCondition(condition.operands[1]);
        m_Result.sql += ')';
        break;
      case Kind::Not:
        m_Result.sql += "(NOT ";
        EmitCondition(condition.operands[0]);
        m_Result.sql += ')';
        break;
      case Kind::Comparison:
        EmitComparison(condition);
        break;
      case Kind::Nothing:
        m_Problem = u"a condition is missing";
        break;
      default:
        m_Result.sql += '(';
        EmitOperand(condition);
        m_Result.sql += " IS TRUE)";
    }
  }

  bool IsText(const SqlExpression& operand) const {
    if (operand.kind != SqlExpression::Kind::Column) return false;
    const auto found = Resolve(operand);
    return found && found->isText;
  }

  void EmitComparison(const SqlExpression& comparison) {
    using Kind = SqlExpression::Kind;
    const SqlExpression& left = comparison.operands[0];
    const SqlExpression& right = comparison.operands[1];
    const std::string symbol = ToUtf8(comparison.name);

    if (right.kind == Kind::True || right.kind == Kind::False) {
      const bool equal = symbol == "=";
      const bool holds = (right.kind == Kind::True) == equal;
      m_Result.sql += '(';
      EmitOperand(left);
      m_Result.sql += holds ? " IS TRUE)" : " IS NOT TRUE)";
      return;
    }
    if (IsText(left) && right.kind == Kind::Value &&
        !std::holds_alternative<std::string>(m_Values[right.value])) {
      // As a number, which an empty text is not, nor is "2 b".
      const std::string column = ResolveOrFail(left).sql;
      m_Result.sql += "(" + column + " GLOB '*[0-9]*' AND " + column + " NOT GLOB '*[^-+.0-9 ]*' AND CAST(" +
                      column + " AS NUMERIC) " + symbol + " ";
      EmitOperand(right);
      m_Result.sql += ')';
      return;
    }
    if (IsText(left) && right.kind == Kind::Column && right.table.empty()) {
      // A single word is a value that stands without quotes: statements name the table of a second column.
      m_Result.sql += "(ifnull(" + ResolveOrFail(left).sql + ", '') " + symbol + " '";
      for (const char byte : ToUtf8(right.name)) m_Result.sql += byte == '\'' ? "''" : std::string(1, byte);
      m_Result.sql += "')";
      return;
    }
    // An equal, non-empty text is never NULL, and without the wrapping an index serves.
    const bool mayBeNull = !(symbol == "=" && (right.kind == Kind::Column || IsNonEmptyText(right)));
    m_Result.sql += '(';
    // Another program may have stored a text as bytes, which LIKE does not look into and which sort behind
    // every text.
    const bool readsWords = IsText(left) && symbol != "=" && symbol != "<>";
    if (readsWords) m_Result.sql += "CAST(";
    EmitOperand(left, mayBeNull);
    m_Result.sql += (readsWords ? " AS TEXT) " : " ") + symbol + " ";
    EmitOperand(right, mayBeNull);
    m_Result.sql += ')';
  }

  bool IsNonEmptyText(const SqlExpression& operand) const {
    if (operand.kind != SqlExpression::Kind::Value) return false;
    const auto* text = std::get_if<std::string>(&m_Values[operand.value]);
    return text && !text->empty();
  }

  void EmitOperand(const SqlExpression& operand, bool nullIsEmpty = false) {
    using Kind = SqlExpression::Kind;
    switch (operand.kind) {
      case Kind::Column: {
        const ResolvedColumn column = ResolveOrFail(operand);
        // The result of a function compares binary whatever its column was declared to do.
        if (nullIsEmpty && column.isText)
          m_Result.sql += "ifnull(" + column.sql + ", '')";
        else
          m_Result.sql += column.sql + (column.isText ? " COLLATE BINARY" : "");
        break;
      }
      case Kind::Value:
        m_Result.sql += '?';
        m_Result.binds.push_back(operand.value);
        break;
      case Kind::Nothing:
        m_Result.sql += "''";  // "CategoryNumber = )": filled with an empty text
        break;
      case Kind::True:
        m_Result.sql += '1';
        break;
      case Kind::False:
        m_Result.sql += '0';
        break;
      default:
        m_Problem = u"condition in place of a value";
    }
  }

  void EmitOrder(TextView selected) {
    // Of all rows of a table an index tells the row ids, too: a tenth of the pages or less.
    if (m_Statement.tables.size() == 1 && !m_Statement.where && m_Statement.order.empty()) {
      m_Result.mustSort = true;
      return;
    }
    m_Result.sql += " ORDER BY ";
    for (const SqlExpression& item : m_Statement.order) {
      EmitOperand(item, true);
      m_Result.sql += ", ";
    }
    for (const TextView table : m_Statement.tables) {
      const TableLayout* layout = FindLayout(table);
      if (layout && layout->isLink && !EqualIgnoringCase(layout->name, selected))
        m_Result.sql += RowId(layout->name) + ", ";
    }
    m_Result.sql += RowId(selected);
  }

  SqlCatalog& m_Catalog;
  const SqlStatement& m_Statement;
  const std::vector<SqlValue>& m_Values;
  SqlTranslation m_Result;
  Text m_Problem;
};

}  // namespace

StoredType StoredTypeOf(std::string_view declaredType) {
  std::string type;
  for (const char byte : declaredType) {
    if (byte == '(') break;
    if (byte >= 'A' && byte <= 'Z')
      type += static_cast<char>(byte - 'A' + 'a');
    else if (byte != ' ' && byte != '\t')
      type += byte;
  }
  const auto is = [&type](std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), type) != names.end();
  };
  if (is({"integer", "int", "long"})) return StoredType::Integer;
  if (is({"double", "float", "real"})) return StoredType::Double;
  if (is({"datetime", "date"})) return StoredType::Date;
  if (is({"bit", "boolean", "bool", "yesno"})) return StoredType::Boolean;
  if (is({"varchar", "nvarchar", "char"})) return StoredType::String;
  if (is({"text", "memo", "ntext"})) return StoredType::LongString;
  if (is({"longvarbinary", "blob"})) return StoredType::LongBinary;
  return StoredType::Unknown;
}

std::string QuotedName(TextView name) {
  std::string quoted = "\"";
  for (const char byte : ToUtf8(name)) {
    if (byte == '"') quoted += '"';
    quoted += byte;
  }
  return quoted + "\"";
}

SqlTranslation TranslateSql(const SqlTokens& tokens, TextView statement, SqlCatalog& catalog) {
  if (IsDefinition(tokens)) {
    SqlTranslation result;
    result.outcome = SqlTranslation::Outcome::Change;
    result.sql = ToUtf8(statement);
    return result;
  }
  const std::optional<SqlStatement> parsed = ParseSql(tokens);
  if (!parsed) return {};
  return Emitter(catalog, *parsed, tokens.values).Run();
}

}  // namespace inspector::data
