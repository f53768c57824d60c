// What becomes of each staged category and step when an inspection takes them in. Nothing is written.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

struct StepMerge {
  int staged = 0;       // row among the staged category's steps, in the order of their numbers
  int target = 0;       // row among the target category's steps as they were stored; new ones follow
  bool isNew = false;   // a new row with the staged one's columns
  bool isTaken = true;  // false: the target has findings and stays as it is
};

struct CategoryMerge {
  int staged = 0;  // row among the staged categories, in their order
  int target = 0;  // row among the target's categories as they were stored; new ones follow
  bool isNew = false;
  bool isTaken = true;  // false: the target is complete, and keeps its title, numbers and flags
  int newSteps = 0;
  std::vector<StepMerge> steps{};
};

// The rules, for each staged category in the order of number and title, and for each of its steps in the
// order of their numbers:
//  - it goes to the first category of the target (step of that category) with exactly its title; without one
//    it becomes a new one, which later ones of the same title find;
//  - a category takes over the staged one's columns while its complete flag is false;
//  - a step does while rating, comments and materials are all empty texts.
// Both are done once for a new row, though the rule is to do them twice there: what the first pass has
// copied, the second would copy again or, the row being no longer empty or incomplete, leave alone.
struct MergePlan {
  std::vector<CategoryMerge> categories;
  int addedCategories = 0;
  int takenCategories = 0;  // that were there and take over the staged columns
  int addedSteps = 0;
  int filledSteps = 0;  // that were there, had no findings, and get something
  int sameSteps = 0;    // with the same findings as the target had or got before
  // What is dropped, by name: "Roof: Shingles".
  std::vector<Text> completeCategories;  // other numbers or words for them
  std::vector<Text> occupiedSteps;       // with something to say, where the target had findings before
  std::vector<Text> repeatedSteps;       // likewise, where one of the same title came before
  std::vector<Text> repeatedCategories;  // the last one's number and words count
  // What the target had beside findings, and has no more: "Roof: Shingles (summary comment, picture)".
  std::vector<Text> replacedWords;
  // Stay complete, although they get a step without a rating.
  std::vector<Text> unratedSteps;
};

// The queries by which a plan's rows are counted.
inline constexpr TextView kStagedCategories =
    u"SELECT * FROM MERGE_Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle";
inline constexpr TextView kStagedSteps = u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber";
inline constexpr TextView kTargetCategories = u"SELECT * FROM Category WHERE InspectionID = %d";
inline constexpr TextView kTargetSteps = u"SELECT * FROM %s WHERE CategoryID = %d";

// Reads at one moment; inside the caller's transaction if there is one. Nothing when something could not be
// read, which has been reported.
std::optional<MergePlan> ReadMergePlan(data::Databases& databases, std::int32_t targetInspectionID,
                                       std::int32_t stagedInspectionID);

}  // namespace inspector::exchange
