// Table UniqueID: the next key of each sequence. Both databases have one, and they count differently.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

// Keys that were taken together, handed out in their order. After the highest key comes the lowest.
class KeyRange {
public:
  explicit KeyRange(std::int32_t first) : m_Next(static_cast<std::uint32_t>(first)) {}
  std::int32_t Next() { return static_cast<std::int32_t>(m_Next++); }

private:
  std::uint32_t m_Next;
};

class UniqueIDTable : public TableRecordset {
public:
  UniqueIDTable(Databases& databases, DatabaseKind kind);

  // Takes the next key and stores it. Inspection database: 1000 for a new sequence, then counting up.
  // Template database: counting up from any stored value of 0 or more, 25000 for a new or negative one.
  // A failure has been reported; the same key may then be handed out again. So has a key that is in use: the
  // caller's transaction then fails, and nothing is stored under the key of another row.
  std::int32_t NextID(TextView sequenceName);
  // The same for `count` rows that are written in one transaction, at the cost of one. None for 0.
  KeyRange TakeIDs(TextView sequenceName, int count);

  // In the Inspection database the new table takes over every counter of the Template database.
  bool CreateTable() override;

  Text m_SequenceName;
  std::int32_t m_NextID = 0;

private:
  void RefuseUsedKeys(TextView sequenceName, std::int32_t first, std::int32_t last);
  static std::vector<BoundMember> Members(UniqueIDTable& row) { return {&row.m_SequenceName, &row.m_NextID}; }

  DatabaseKind m_Kind;
};

// The next key of a sequence of the Inspection database.
std::int32_t NextInspectionID(Databases& databases, TextView sequenceName);

}  // namespace inspector::data
