#include "data/UniqueIDTable.h"

#include <algorithm>

#include "device/Format.h"

namespace inspector::data {
namespace {

constexpr std::int32_t kFirstInspectionKey = 1000;
constexpr std::int32_t kFirstTemplateKey = 25000;

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
    m_NextID = m_Kind == DatabaseKind::Inspection ? kFirstInspectionKey : kFirstTemplateKey;
    return KeyRange(m_NextID);
  }
  if (!found) {
    PrepareNew();
    m_SequenceName = Text(sequenceName);
  }
  if (m_Kind == DatabaseKind::Inspection) {
    m_NextID = found ? Following(m_NextID, 1) : kFirstInspectionKey;
  } else {
    m_NextID = found && m_NextID >= 0 ? Following(m_NextID, 1) : kFirstTemplateKey;
  }
  const KeyRange keys(m_NextID);
  m_NextID = Following(m_NextID, count - 1);
  Write();
  return keys;
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
