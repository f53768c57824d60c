// What is left to do in a visit.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "data/CategoryTable.h"
#include "data/StepTable.h"
#include "data/Workspace.h"
#include "editing/Materials.h"
#include "editing/MissingPictures.h"
#include "editing/StepSheet.h"

namespace inspector::editing {

// In place of a count, when there is none.
constexpr device::TextView kNotReadWhole = u"The visit could not be read whole; there may be more to do.";

struct UnfinishedStep {
  std::int32_t categoryID = 0;
  std::int32_t stepID = 0;  // 0 for a category whose steps are not made yet
  Text categoryTitle;
  Text stepNumber;
  Text title;
  bool needsRating = false;
  bool needsComment = false;  // its rating asks for one
  bool hasGap = false;        // its comments have a gap to fill
  bool hasGapInMaterials = false;
  bool lacksPicture = false;     // a tag, or the step's picture, names a file that is not there
  bool lacksOwnPicture = false;  // the latter

  bool IsAny() const { return needsRating || needsComment || hasGap || hasGapInMaterials || lacksPicture; }
  // The page of its sheet where that is done; nothing where any will do.
  std::optional<StepSheet::Page> Where() const;
  // "No rating, a picture is missing"
  Text Reasons() const;
};

// Where a person is: a step of a category, or a category as a whole.
struct PlaceInVisit {
  std::int32_t categoryID = 0;
  std::int32_t stepID = 0;
};

// Categories that are marked as not present, and forms, leave nothing to do.
class Unfinished {
public:
  Unfinished(data::Workspace& workspace, std::int32_t inspectionID);

  // Reads the whole visit. False when it could not all be read; what was found stays.
  bool Refresh();

  // In the order of categories and steps.
  const std::vector<UnfinishedStep>& Steps() const { return m_Steps; }
  int Count() const { return static_cast<int>(m_Steps.size()); }
  struct Left {
    bool unopened = false;  // its steps are not made yet
    int steps = 0;
  };
  // Reads only what counting needs; Steps() stay as they are. Nothing when it could not all be read.
  std::optional<std::map<std::int32_t, Left>> CountByCategory();
  // The first one after the place, beginning anew after the last; nothing when all is done.
  std::optional<UnfinishedStep> NextAfter(const PlaceInVisit& place) const;

private:
  bool ReadChoices();
  bool NeedsComment(const data::StepTable& step) const;
  static bool HasGap(const data::StepTable& step);
  bool MayFillMaterials(const data::StepTable& step);
  bool AddCategory(const data::CategoryTable& category);
  bool CountIn(const data::CategoryTable& category, Left& left);

  data::Workspace& m_Workspace;
  std::int32_t m_InspectionID;
  MaterialOffers m_Offers;
  std::set<std::pair<Text, Text>> m_Prompting;                    // (rating type, choice)
  std::optional<MissingPictures> m_Pictures;                      // as it is since the last refresh
  std::vector<std::int32_t> m_Categories;                         // in their order
  std::map<std::int32_t, std::vector<std::int32_t>> m_StepOrder;  // of each category
  std::vector<UnfinishedStep> m_Steps;
};

}  // namespace inspector::editing
