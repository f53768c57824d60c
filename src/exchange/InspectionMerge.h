// Folding a staged inspection into one that is there.
#pragma once

#include <optional>
#include <vector>

#include "exchange/MergePlan.h"
#include "exchange/StagedInspections.h"
#include "inspection/InspectorDoc.h"

namespace inspector::exchange {

struct MergePreview {
  MergePlan plan;
  StagedInspection staged;  // its header is dropped
  bool isTooMuchToUndo = false;
};

// What a merge would do, without doing it. Nothing when one of the two inspections is not there, which has
// been told, or something could not be read, which has been reported.
std::optional<MergePreview> PreviewMerge(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                                         std::int32_t stagedInspectionID);
// The same in sentences, which are true before a merge and after it: what is added, filled, replaced and left
// out. At most so many names in each.
std::vector<Text> Described(const MergePreview& preview, std::size_t mostNames = std::string::npos);

enum class MergeResult { Merged, Cancelled, Failed };

struct MergeOutcome {
  MergeResult result = MergeResult::Failed;
  MergePreview done;  // what was done
  // The target is the document's current inspection. Its categories have been read again and its category
  // is current again; lists that show them have to be filled anew.
  bool isOpenOne = false;
};

// Merges categories and steps as MergePlan says, and deletes the staged inspection. One transaction, which
// Cancel and failures take back. The document's log of actions, where it has one, can undo it: the staged
// inspection is then there again. Every failure has been told when this returns Failed.
MergeOutcome MergeInspection(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                             std::int32_t stagedInspectionID);

}  // namespace inspector::exchange
