// The pieces that the rows of steps are made of in Rich Text.
#pragma once

#include "reports/ReportContent.h"
#include "reports/RtfWriter.h"

namespace inspector::reports {

struct RowStyle {
  bool hideRatings = false;
  bool spaceSteps = false;  // an empty line at the end of each cell
};

// "\par" where cells are spaced, then `mark`, which begins with "\cell".
void EndCell(RtfWriter& writer, const RowStyle& style, std::string_view mark);
// Number and title, each in its cell.
void WriteStepCells(RtfWriter& writer, const RowStyle& style, const ReportStep& step);
// Bold and red begin with the rating and run on to the end of the comments.
void BeginRatingLook(RtfWriter& writer, const ReportStep& step);
void EndRatingLook(RtfWriter& writer, const ReportStep& step, std::string_view boldOff);
// The escaped rating, unless ratings are hidden.
void WriteRating(RtfWriter& writer, const RowStyle& style, TextView rating);
// Materials and words of the comments, two blanks between them.
void WriteMaterialsAndComments(RtfWriter& writer, const ReportStep& step);
// All that a two-column row says in its last cell, up to the cell's end: rating, materials, comments.
void WriteFinding(RtfWriter& writer, const RowStyle& style, const ReportStep& step);
// After a row: the pictures that its comments name. Inside a paragraph of their own; otherwise readers clip
// them into the next row.
void WriteRowPictures(RtfWriter& writer, const ReportStep& step);

}  // namespace inspector::reports
