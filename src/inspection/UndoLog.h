// Taking back the last action of this run that changed a whole visit: delete, duplicate, defaults, a change
// of type.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "data/RowSnapshot.h"
#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

// Everything that belongs to some inspections: their rows, categories, steps and fields. Before Take, that of
// inspections that do not exist.
class InspectionSnapshot {
public:
  explicit InspectionSnapshot(std::vector<std::int32_t> inspections);

  const std::vector<std::int32_t>& Inspections() const { return m_Inspections; }
  // False on a failure, which has been reported.
  bool Take(data::Connection& connection);
  // Replaces what the inspections have now. Inside the caller's transaction.
  bool PutBack(data::Connection& connection) const;
  bool operator==(const InspectionSnapshot& other) const { return m_Tables == other.m_Tables; }

private:
  std::vector<std::int32_t> m_Inspections;
  std::vector<data::RowSnapshot> m_Tables;
};

// Remembers the last of the actions that an UndoRecording was around. A document has one or none; without one
// nothing is recorded and nothing costs.
class UndoLog {
public:
  explicit UndoLog(CInspectorDoc& document);
  ~UndoLog();
  UndoLog(const UndoLog&) = delete;
  UndoLog& operator=(const UndoLog&) = delete;

  // The action that can be taken back, as the menu names it; empty when there is none.
  const Text& Action() const;
  // Takes it back in one transaction and makes the inspection and category current that were so before it, as
  // far as they are there. Asks first when something was entered since. False when nothing was changed.
  bool Undo();
  // Another action can be taken back now, or none.
  std::function<void()> onChanged;

private:
  friend class UndoRecording;
  struct Entry {
    Text action;
    std::int32_t currentInspection = -1;
    std::int32_t currentCategory = -1;
    InspectionSnapshot before;
    InspectionSnapshot after;
  };
  void Remember(std::optional<Entry> entry);
  void GoTo(std::int32_t inspectionID, std::int32_t categoryID);

  CInspectorDoc& m_Document;
  std::optional<Entry> m_Entry;
};

// Around one action. An action that was refused or failed leaves what could be taken back before it.
//
//   UndoRecording recording(document, u"Defaults", {inspectionID});
//   if (action worked) recording.Done();
class UndoRecording {
public:
  // The action changes, or deletes, these inspections.
  UndoRecording(CInspectorDoc& document, TextView action, std::vector<std::int32_t> inspections);

  void Done();
  // The action made this inspection: taking it back deletes it.
  void Made(std::int32_t inspectionID);

private:
  CInspectorDoc& m_Document;
  std::optional<UndoLog::Entry> m_Entry;  // none without a log, and when it could not be read
};

}  // namespace inspector::inspection
