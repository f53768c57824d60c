#include "reports/RowLayouts.h"

#include "editing/PictureTags.h"
#include "reports/ReportWords.h"

namespace inspector::reports {

void RowLayout::WriteCategory(RtfWriter& writer, const RowStyle& style, const ReportSection& category,
                              ReportProgress& progress) const {
  if (category.steps.empty()) return;
  writer.WriteSectionTitle(category.title);
  WriteHeading(writer);
  for (const ReportStep& step : category.steps) {
    if (!step.IsOmitted()) WriteStep(writer, style, step);
    if (!progress.StepDone() || writer.HasFailed()) return;
  }
}

void FourColumnLayout::WriteHeading(RtfWriter& writer) const {
  writer.BeginTableRow();
  writer.Write(
      "\\b Step #\\cell Component\\cell Material Type\\par\\cell Rating\\cell Comments\\cell\\b0\\row");
}

void FourColumnLayout::WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const {
  writer.BeginTableRow();
  WriteStepCells(writer, style, step);
  writer.WriteEscaped(step.materials);
  EndCell(writer, style, "\\cell ");
  BeginRatingLook(writer, step);
  WriteRating(writer, style, step.rating);
  EndCell(writer, style, "\\cell\\ql ");
  writer.WriteEscaped(editing::StripTags(step.comments));
  EndRatingLook(writer, step, "\\b0");
  EndCell(writer, style, "\\cell\\row");
  WriteRowPictures(writer, step);
}

void ThreeColumnLayout::WriteHeading(RtfWriter& writer) const {
  writer.BeginTableRow();
  writer.Write("\\b Step #\\cell Component\\par\\cell Rating\\cell Comments\\cell\\b0\\row");
}

void ThreeColumnLayout::WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const {
  writer.BeginTableRow();
  WriteStepCells(writer, style, step);
  BeginRatingLook(writer, step);
  WriteRating(writer, style, step.rating);
  EndCell(writer, style, "\\cell\\ql ");
  WriteMaterialsAndComments(writer, step);
  EndRatingLook(writer, step, "\\b0");
  EndCell(writer, style, "\\cell\\row");
  WriteRowPictures(writer, step);
}

void TwoColumnLayout::WriteHeading(RtfWriter& writer) const {
  writer.BeginTableRow();
  writer.Write(m_Heading);
}

void TwoColumnLayout::WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const {
  writer.BeginTableRow();
  WriteStepCells(writer, style, step);
  WriteFinding(writer, style, step);
  EndCell(writer, style, "\\cell\\row");
  WriteRowPictures(writer, step);
}

void OneColumnLayout::WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const {
  writer.Write("\\fs20 \\b ");
  writer.WriteEscaped(step.title);
  writer.Write("\\b0\\par ");
  if (!style.hideRatings) {
    writer.Write("\\i ");
    writer.WriteEscaped(step.rating);
    writer.Write("\\i0 \\par ");
  }
  for (const Text& piece : {step.materials, editing::StripTags(step.comments)}) {
    if (piece.empty()) continue;
    writer.WriteEscaped(piece);
    writer.Write("\\par ");
  }
  if (!editing::FindFirstTag(step.comments).empty()) {
    writer.WriteTagPictures(step.comments, NameOf(step));
    writer.Write("\\par ");
  }
}

}  // namespace inspector::reports
