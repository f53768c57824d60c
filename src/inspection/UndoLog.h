// Taking back the last action of this run that changed a whole visit: delete, duplicate, defaults, a change
// of type, a merge.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "data/RowSnapshot.h"
#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

// More of them are not kept: they would be held in memory twice.
inline constexpr int kMostRowsForUndo = 20'000;

// What an action may change. Before Take, as if nothing of it were there.
class VisitSnapshot {
public:
  // Everything that belongs to some inspections: their rows, categories, steps and fields.
  static VisitSnapshot OfInspections(std::vector<std::int32_t> inspections);
  // One step, and its category's row for the complete flag.
  static VisitSnapshot OfStep(std::int32_t stepID, std::int32_t categoryID);

  bool IsOf(std::int32_t inspectionID) const;
  // One that was not there when the others were taken.
  void Add(std::int32_t inspectionID);
  // A staged inspection, with its categories and steps. Once, and not of a step's snapshot.
  void AddStaged(std::int32_t inspectionID);
  // The same rows, not taken yet.
  VisitSnapshot Untaken() const;
  // False on a failure, which has been reported.
  bool Take(data::Connection& connection);
  // Replaces what is there now. Inside the caller's transaction.
  bool PutBack(data::Connection& connection) const;
  bool operator==(const VisitSnapshot& other) const { return m_Tables == other.m_Tables; }

private:
  bool IsOfStep() const { return m_StepID != 0; }

  std::vector<std::int32_t> m_Inspections;
  std::int32_t m_StepID = 0;
  std::int32_t m_CategoryID = 0;
  std::optional<std::int32_t> m_Staged;
  // Inspections and categories, or a step and its category; those staged; then what belongs to categories.
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
  // It was done in an inspection that is still there, and is not the current one.
  bool IsElsewhere() const;
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
    VisitSnapshot before;
    VisitSnapshot after;
  };
  void Remember(std::optional<Entry> entry);
  void GoTo(std::int32_t inspectionID, std::int32_t categoryID);

  CInspectorDoc& m_Document;
  std::optional<Entry> m_Entry;
};

// Around one action. An action that was refused or failed leaves what could be taken back before it.
//
//   UndoRecording recording(document, u"Defaults", inspectionID);
//   if (action worked) recording.Done();
class UndoRecording {
public:
  UndoRecording(CInspectorDoc& document, TextView action, VisitSnapshot what);
  // The action changes, or deletes, this inspection.
  UndoRecording(CInspectorDoc& document, TextView action, std::int32_t inspectionID)
      : UndoRecording(document, action, VisitSnapshot::OfInspections({inspectionID})) {}

  // An action after which all is as it was before is not remembered.
  void Done();
  // The action cannot be taken back; nor, once it is done, what came before it.
  void Forgo() { m_Entry.reset(); }
  // The action made this inspection as well: taking it back deletes it.
  void Made(std::int32_t inspectionID);

private:
  CInspectorDoc& m_Document;
  std::optional<UndoLog::Entry> m_Entry;  // none without a log, and when it could not be read
};

}  // namespace inspector::inspection
