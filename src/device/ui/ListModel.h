// A RowSource as Qt's lists want it: rows are fetched when they come onto the screen.
#pragma once

#include <QAbstractTableModel>
#include <unordered_map>
#include <vector>

#include "device/ListColumns.h"
#include "device/RowSource.h"

namespace inspector::device::ui {

// Keeps the rows shown last, because Qt asks several times for each. Neither source nor columns are owned by
// others: the source outlives the model.
class ListModel : public QAbstractTableModel {
public:
  enum Role { CheckImageRole = Qt::UserRole, ToneRole, WarnedRole, RemarkRole };

  ListModel(RowSource& source, std::vector<ListColumn> columns, QObject* parent = nullptr);

  const std::vector<ListColumn>& Columns() const { return m_Columns; }
  // The source holds other rows now.
  void Reset();
  // The source holds the same number of rows, with other content. Selection and place stay.
  void RefreshAll();
  void RefreshRow(int row);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
  const ListRow& Fetch(int row) const;

  RowSource& m_Source;
  std::vector<ListColumn> m_Columns;
  int m_RowCount = 0;
  mutable std::unordered_map<int, ListRow> m_Fetched;
};

}  // namespace inspector::device::ui
