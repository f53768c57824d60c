#include "reports/WebReport.h"

#include "reports/WebPageWriter.h"

namespace inspector::reports {

device::SaveQuestion WebReport::Question(const ReportHeader& header) const {
  return {ReportFileName(u"Inspection_", header.documentNumber, u".html"), u"\\My Documents\\",
          u"Web page (*.html)|*.html|", u"html"};
}

void WebReport::Write(const ReportSource& source, ReportRun& run) const {
  WebPageWriter page(run.Create(), source.pictures, source.content, source.options.m_HideRatings != 0);
  page.WritePage(run.Progress());
}

}  // namespace inspector::reports
