#include "device/ui/ListModel.h"

#include "device/ui/TextConversion.h"

namespace inspector::device::ui {
namespace {

constexpr qsizetype kLongestCell = 2000;  // letters

// Null where there is none.
const Text* WarningOf(const ListRow& row, int cell) {
  for (const ListRow::Warning& warning : row.warnings)
    if (warning.cell == cell) return &warning.words;
  return nullptr;
}

// More than any screen shows at once.
constexpr std::size_t kMostRowsKept = 256;

}  // namespace

ListModel::ListModel(RowSource& source, std::vector<ListColumn> columns, QObject* parent)
    : QAbstractTableModel(parent),
      m_Source(source),
      m_Columns(std::move(columns)),
      m_RowCount(source.RowCount()) {}

void ListModel::Reset() {
  beginResetModel();
  m_Fetched.clear();
  m_RowCount = m_Source.RowCount();
  endResetModel();
}

void ListModel::RefreshAll() {
  if (m_Source.RowCount() != m_RowCount) {
    Reset();
    return;
  }
  m_Fetched.clear();
  if (m_RowCount > 0) Q_EMIT dataChanged(index(0, 0), index(m_RowCount - 1, columnCount() - 1));
}

void ListModel::RefreshRow(int row) {
  m_Fetched.erase(row);
  if (row >= 0 && row < m_RowCount) Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_RowCount;
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_Columns.size());
}

const ListRow& ListModel::Fetch(int row) const {
  if (const auto found = m_Fetched.find(row); found != m_Fetched.end()) return found->second;
  if (m_Fetched.size() >= kMostRowsKept) m_Fetched.clear();
  return m_Fetched.emplace(row, m_Source.ShownRow(row)).first->second;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ListColumn& column = m_Columns[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: {
      const ListRow& row = Fetch(index.row());
      if (column.isMark) {
        if (role == Qt::DisplayRole || row.check == CheckImage::None) return {};
        return row.check == CheckImage::Ticked ? QStringLiteral("marked") : QStringLiteral("not marked");
      }
      const auto n = static_cast<std::size_t>(index.column());
      const QString words =
          n < row.cells.size() ? Shortened(ToQString(row.cells[n]), kLongestCell) : QString();
      if (role == Qt::DisplayRole) return words;
      QStringList spoken(words);
      if (const Text* const warning = WarningOf(row, index.column())) spoken.append(ToQString(*warning));
      if (row.remarkedCell == index.column()) spoken.append(ToQString(row.remark));
      return spoken.join(QStringLiteral(", "));
    }
    case RemarkRole:
      return Fetch(index.row()).remarkedCell == index.column()
                 ? Shortened(ToQString(Fetch(index.row()).remark), kLongestCell)
                 : QString();
    case WarnedRole:
      return WarningOf(Fetch(index.row()), index.column()) != nullptr;
    case Qt::ToolTipRole:
      if (const Text* const warning = WarningOf(Fetch(index.row()), index.column()))
        return ToQString(*warning);
      return {};
    case Qt::TextAlignmentRole:
      return QVariant::fromValue<Qt::Alignment>(
          Qt::AlignVCenter | (column.align == ListColumn::Align::Centre ? Qt::AlignHCenter : Qt::AlignLeft));
    case CheckImageRole:
      return static_cast<int>(column.isMark ? Fetch(index.row()).check : CheckImage::None);
    case ToneRole:
      return static_cast<int>(Fetch(index.row()).tone);
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ListColumn& column = m_Columns[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return ToQString(column.heading);
  if (role == Qt::AccessibleTextRole)
    return column.isMark ? QStringLiteral("Marked") : ToQString(column.heading);
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue<Qt::Alignment>(
        Qt::AlignVCenter | (column.align == ListColumn::Align::Centre ? Qt::AlignHCenter : Qt::AlignLeft));
  return {};
}

}  // namespace inspector::device::ui
