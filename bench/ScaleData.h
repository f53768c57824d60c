// The library and the visits of somebody who has used the program for years: more than any screen may mind.
#pragma once

#include "Tablet.h"

namespace inspector::bench {

constexpr int kInspections = 10'000;
constexpr int kCategories = 60;
constexpr int kStepsInCategory = 300;
constexpr int kMaterialsInStep = 10;
constexpr int kComments = 5'000;
constexpr int kManyComments = 20'000;
constexpr int kPictures = 50;
// Of the large visit: these have never been opened, so that their steps are still to be made.
constexpr int kUnopenedCategories = 10;
// The step whose comment is as long as this has every comment of the library in its picklist.
constexpr int kLongComment = 10 * 1024;  // characters

// A visit whose categories and steps are those above.
struct LargeVisit {
  std::int32_t inspectionID = 0;
  std::int32_t categoryID = 0;  // the first
  std::int32_t stepID = 0;      // its first, with the long comment
};

// The address by which the large visit is found among the others.
constexpr TextView kLargeAddress = u"1 Endless Row";

// Inspections of the starter library's first type, and after them the large one.
LargeVisit FillToScale(Tablet& tablet);
// The same inspections without a category.
void FillWithHeaders(Tablet& tablet);
// Prepared comments until the library holds `count` of these, all of them offered for the step of the long
// comment.
void AddComments(Engine& templates, int count);
// A picture of 12 megapixels for each of the first steps: as the step's own and in its comment. Every fifth
// is stored as a progressive JPEG. The files are in the tablet's root folder: p0.jpg, p1.jpg...
void AddPictures(Tablet& tablet, const LargeVisit& visit);

}  // namespace inspector::bench
