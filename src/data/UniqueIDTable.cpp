#include "data/UniqueIDTable.h"

#include <algorithm>

#include "data/KeySequences.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

// After the highest key comes the lowest.
std::int32_t Following(std::int32_t key, int steps) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(key) + static_cast<std::uint32_t>(steps));
}

const TableLayout& LayoutOf(DatabaseKind kind) {
  const auto layouts = AllLayouts();
  return *std::find_if(layouts.begin(), layouts.end(), [kind](const TableLayout& layout) {
    return layout.name == u"UniqueID" && layout.database == kind;
  });
}

}  // namespace

UniqueIDTable::UniqueIDTable(Databases& databases, DatabaseKind kind)
    : TableRecordset(databases, LayoutOf(kind), UniqueIDTable::Members(*this)), m_Kind(kind) {}

std::int32_t UniqueIDTable::NextID(TextView sequenceName) {
  return TakeIDs(sequenceName, 1).Next();
}

KeyRange UniqueIDTable::TakeIDs(TextView sequenceName, int count) {
  if (count <= 0) return KeyRange(0);
  const bool isThere =
      OpenSQL(device::Format(u"SELECT * FROM UniqueID WHERE TableName = \"%s\"", sequenceName));
  const bool found = GetRecord(0);
  if (isThere && Failed()) {
    // A second row for the sequence would hand out every key again, for good.
    m_NextID = FirstKey(m_Kind);
    return KeyRange(m_NextID);
  }
  if (!found) {
    PrepareNew();
    m_SequenceName = Text(sequenceName);
  }
  const bool goesOn = found && (m_Kind == DatabaseKind::Inspection || m_NextID >= 0);
  const std::int32_t first = goesOn ? Following(m_NextID, 1) : FirstKey(m_Kind);
  m_NextID = Following(first, count - 1);
  if (Write()) RefuseUsedKeys(sequenceName, first, m_NextID);
  return KeyRange(first);
}

// An older program, another tool or damage may have left the counter anywhere.
void UniqueIDTable::RefuseUsedKeys(TextView sequenceName, std::int32_t first, std::int32_t last) {
  const KeySequence* const sequence = FindKeySequence(m_Kind, sequenceName);
  if (!sequence) return;
  const std::int32_t end = first <= last ? last : INT32_MAX;
  std::optional<std::int32_t> used = FindKeyInUse(GetConnection(), *sequence, first, end);
  if (!used && end != last) used = FindKeyInUse(GetConnection(), *sequence, INT32_MIN, last);
  if (used) GetConnection().ReportUsedKey(sequence->uses.front().table, *used);
}

bool UniqueIDTable::CreateTable() {
  if (!TableRecordset::CreateTable()) return false;
  if (m_Kind == DatabaseKind::Template) return true;
  UniqueIDTable counters(GetDatabases(), DatabaseKind::Template);
  if (!counters.Open()) return true;
  for (int n = 0; n < counters.RecordCount(); ++n) {
    if (!counters.GetRecord(n)) continue;
    PrepareNew();
    m_SequenceName = counters.m_SequenceName;
    m_NextID = counters.m_NextID;
    Write();
  }
  return true;
}

std::int32_t NextInspectionID(Databases& databases, TextView sequenceName) {
  return UniqueIDTable(databases, DatabaseKind::Inspection).NextID(sequenceName);
}

}  // namespace inspector::data
