// The summary in Rich Text: what deserves attention, in rows of two cells.
#pragma once

#include "reports/ReportContent.h"
#include "reports/ReportRun.h"
#include "reports/RtfWriter.h"
#include "reports/StepRows.h"

namespace inspector::reports {

// One object per report. Content, output and pictures outlive it.
class CSummaryRTFFile : public RtfWriter {
public:
  CSummaryRTFFile(device::OutputFile& output, ReportPictures& pictures, const ReportContent& content,
                  RtfSettings settings, RowStyle style, bool isFrench);

  // All of it. Returns early when the person wishes to stop or the disk fails.
  void WriteReport(ReportProgress& progress);

protected:
  // Up to the first title, which comes with it: a report without any has none.
  void WriteDocumentHeader() override;
  void WriteFirstSectionTitle(TextView title) override;
  void WriteTitle(TextView title);
  // Number and title of the step in the first cell, what was found in the second.
  void WriteRow(const ReportStep& step);
  const ReportContent& Content() const { return m_Content; }

private:
  void WriteCategory(const ReportSection& category, ReportProgress& progress);
  void WritePrologue();
  void WritePageHeader();
  void WriteCompany();
  void WriteFooter();
  void WriteTitleBlock();

  const ReportContent& m_Content;
  const RowStyle m_Style;
  const bool m_IsFrench;
};

}  // namespace inspector::reports
