// Taking back the last action of this run that changed a whole visit: delete, duplicate, defaults, a change
// of type.
#pragma once

#include <optional>
#include <vector>

#include "data/RowSnapshot.h"
#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

// Everything that belongs to one inspection: its row, categories, steps and fields. Before Take, that of one
// that does not exist.
class InspectionSnapshot {
public:
  explicit InspectionSnapshot(std::int32_t inspectionID);

  std::int32_t InspectionID() const { return m_InspectionID; }
  // False on a failure, which has been reported.
  bool Take(data::Connection& connection);
  // Replaces what the inspection has now. Inside the caller's transaction.
  bool PutBack(data::Connection& connection) const;
  bool operator==(const InspectionSnapshot& other) const { return m_Tables == other.m_Tables; }

private:
  std::int32_t m_InspectionID;
  std::vector<data::RowSnapshot> m_Tables;
};

// One action at a time is remembered. Around an action:
//
//   undoLog.Before(u"Defaults", inspectionID);
//   if (action worked) undoLog.Done(); else undoLog.Forget();
class UndoLog {
public:
  explicit UndoLog(CInspectorDoc& document) : m_Document(document) {}

  // What can be taken back afterwards is what this inspection has now. For a copy that is to be made, its key
  // is only known to Done.
  void Before(TextView action, std::int32_t inspectionID);
  // The action has been done; `created` is the inspection that it made, when it made one.
  void Done(std::optional<std::int32_t> created = std::nullopt);
  void Forget();

  // The action that can be taken back, as the menu names it; empty when there is none.
  const Text& Action() const;
  // Takes it back in one transaction and shows the inspection again. Asks first when something was entered in
  // it since. False when nothing was changed.
  bool Undo();

private:
  struct Entry {
    Text action;
    InspectionSnapshot before;
    std::optional<InspectionSnapshot> after;  // none until the action is done
  };

  CInspectorDoc& m_Document;
  std::optional<Entry> m_Entry;
};

}  // namespace inspector::inspection
