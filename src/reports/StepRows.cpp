#include "reports/StepRows.h"

#include "editing/PictureTags.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

// In a cell without a rating column the rating leads the sentence. Two choices are no judgement.
Text LeadIn(TextView rating) {
  if (rating.empty() || rating == u"Comments" || rating == u"Data") return {};
  return Text(rating).append(u". ");
}

}  // namespace

void EndCell(RtfWriter& writer, const RowStyle& style, std::string_view mark) {
  if (style.spaceSteps) writer.Write("\\par");
  writer.Write(mark);
}

void WriteStepCells(RtfWriter& writer, const RowStyle& style, const ReportStep& step) {
  writer.WriteText(step.number);
  EndCell(writer, style, "\\cell\\ql ");
  writer.WriteEscaped(step.title);
  EndCell(writer, style, "\\cell\\ql ");
}

void BeginRatingLook(RtfWriter& writer, const ReportStep& step) {
  if (step.isBold) writer.Write("\\b ");
  if (step.isRed) writer.Write("\\cf6 ");
}

void EndRatingLook(RtfWriter& writer, const ReportStep& step, std::string_view boldOff) {
  if (step.isBold) writer.Write(boldOff);
  if (step.isRed) writer.Write("\\cf0 ");
}

void WriteRating(RtfWriter& writer, const RowStyle& style, TextView rating) {
  if (!style.hideRatings) writer.WriteEscaped(rating);
}

void WriteMaterialsAndComments(RtfWriter& writer, const ReportStep& step) {
  const Text words = editing::StripTags(step.comments);
  writer.WriteEscaped(step.materials);
  if (!step.materials.empty() && !words.empty()) writer.Write("  ");
  writer.WriteEscaped(words);
}

void WriteFinding(RtfWriter& writer, const RowStyle& style, const ReportStep& step) {
  BeginRatingLook(writer, step);
  WriteRating(writer, style, LeadIn(step.rating));
  WriteMaterialsAndComments(writer, step);
  EndRatingLook(writer, step, "\\b0 ");
}

void WriteRowPictures(RtfWriter& writer, const ReportStep& step) {
  if (editing::FindFirstTag(step.comments).empty()) return;
  writer.Write("\\pard");
  writer.WriteTagPictures(step.comments, NameOf(step));
  writer.Write("\\par");
}

}  // namespace inspector::reports
