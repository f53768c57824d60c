// The inspection report in Rich Text: a first page, then one section per category.
#pragma once

#include "reports/ReportContent.h"
#include "reports/ReportLayout.h"
#include "reports/RtfWriter.h"

namespace inspector::reports {

// One object per report. Content, layout, output and pictures outlive it.
class CFullNarrativeRTFFile : public RtfWriter {
public:
  CFullNarrativeRTFFile(device::OutputFile& output, ReportPictures& pictures, const ReportContent& content,
                        const ReportLayout& layout, RtfSettings settings, RowStyle style);

  // All of it. Returns early when the person wishes to stop or the disk fails.
  void WriteReport(ReportProgress& progress);

protected:
  void WriteDocumentHeader() override;
  void WriteFirstSectionTitle(TextView title) override;

private:
  void WriteTitleBlock();
  // A label, ": \tab " and an escaped value.
  void WriteField(TextView label, TextView value);
  void WriteHousePhoto();
  void WriteFirstPageEnd();
  void WriteNarrowFirstPageEnd();
  void WriteWideFirstPageEnd();

  const ReportContent& m_Content;
  const ReportLayout& m_Layout;
  const RowStyle m_Style;
};

}  // namespace inspector::reports
