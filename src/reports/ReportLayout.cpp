#include "reports/ReportLayout.h"

#include "reports/NarrativeLayout.h"
#include "reports/RowLayouts.h"

namespace inspector::reports {

std::span<const ReportLayout* const> Layouts() {
  static const FourColumnLayout fourColumns;
  static const ThreeColumnLayout threeColumns;
  static const TwoColumnLayout twoColumns(u"2 Column", false,
                                          "\\b Step #\\cell Component\\par\\cell Comments\\cell\\b0\\row");
  static const TwoColumnLayout french(u"2 Column French", true,
                                      "\\b Etape\\cell Composante\\par\\cell Commentaires\\cell\\b0\\row");
  static const NarrativeLayout narrative;
  static const OneColumnLayout oneColumn;
  static const ReportLayout* const layouts[] = {&fourColumns, &threeColumns, &twoColumns,
                                                &french,      &narrative,    &oneColumn};
  return layouts;
}

const ReportLayout* FindLayout(TextView name) {
  for (const ReportLayout* const layout : Layouts()) {
    if (device::EqualIgnoringCase(layout->Name(), name)) return layout;
  }
  return nullptr;
}

}  // namespace inspector::reports
