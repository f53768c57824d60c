// "Full Narrative": each category as one running text.
#pragma once

#include "reports/ReportLayout.h"

namespace inspector::reports {

class NarrativeLayout : public ReportLayout {
public:
  NarrativeLayout() : ReportLayout(u"Full Narrative", 1, false) {}

  // Every category has its title and block, even without a word in it. What is rated "Omit" is told as well.
  void WriteCategory(RtfWriter& writer, const RowStyle& style, const ReportSection& category,
                     ReportProgress& progress) const override;
};

}  // namespace inspector::reports
