#include "reports/NarrativeLayout.h"

#include "editing/PictureTags.h"

namespace inspector::reports {

void NarrativeLayout::WriteCategory(RtfWriter& writer, const RowStyle&, const ReportSection& category,
                                    ReportProgress& progress) const {
  Text narrative;
  for (std::size_t i = 0; i < category.steps.size(); ++i) {
    if (i > 0) narrative.push_back(u' ');
    narrative.append(category.steps[i].comments);
    if (!progress.StepDone()) return;
  }
  writer.WriteSectionTitle(category.title);
  writer.Write("\\par\\par \\pard ");
  writer.WriteEscaped(editing::StripTags(narrative));
  writer.Write("\\par\\par ");
  writer.WriteTagPictures(narrative, category.title);
}

}  // namespace inspector::reports
