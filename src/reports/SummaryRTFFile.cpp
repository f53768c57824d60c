#include "reports/SummaryRTFFile.h"

namespace inspector::reports {

CSummaryRTFFile::CSummaryRTFFile(device::OutputFile& output, ReportPictures& pictures,
                                 const ReportContent& content, RtfSettings settings, RowStyle style,
                                 bool isFrench)
    : RtfWriter(output, pictures, std::move(settings)),
      m_Content(content),
      m_Style(style),
      m_IsFrench(isFrench) {}

void CSummaryRTFFile::WriteReport(ReportProgress& progress) {
  for (const ReportSection& category : m_Content.sections) {
    WriteCategory(category, progress);
    if (HasFailed() || progress.IsCancelled() || !progress.PartDone()) return;
  }
  if (!HasTitle()) WriteSectionTitle(u"NO SUMMARY ITEMS WERE FOUND");
  WriteDocumentEnd();
}

void CSummaryRTFFile::WriteCategory(const ReportSection& category, ReportProgress& progress) {
  bool isBegun = false;
  for (const ReportStep& step : category.steps) {
    if (step.isReported) {
      if (!isBegun) {
        WriteSectionTitle(category.title);
        BeginTableRow();
        isBegun = true;
      }
      WriteRow(step);
      WriteRowPictures(*this, step);
    }
    if (!progress.StepDone() || HasFailed()) return;
  }
}

void CSummaryRTFFile::WriteRow(const ReportStep& step) {
  BeginTableRow();
  WriteText(step.number);
  Write(". ");
  WriteEscaped(step.title);
  EndCell(*this, m_Style, "\\cell\\ql ");
  WriteFinding(*this, m_Style, step);
  EndCell(*this, m_Style, "\\cell\\row");
}

void CSummaryRTFFile::WriteFirstSectionTitle(TextView title) {
  WriteDocumentHeader();
  WriteTitle(title);
}

void CSummaryRTFFile::WriteTitle(TextView title) {
  Write("\\pard\\s15\\ql\\widctlpar\\tqc\\tx5040\\tqr\\tx10080{\\cs17\\fs24\\b\\ul ");
  WriteEscaped(title);
  Write("\\b0\\ul0\\par\\par}\\pard ");
}

void CSummaryRTFFile::WriteDocumentHeader() {
  WritePrologue();
  WritePageHeader();
  WriteCompany();
  WriteFooter();
  WriteTitleBlock();
}

void CSummaryRTFFile::WritePrologue() {
  Write("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times}}");
  WriteColourTable();
  Write(
      "\\margr720\\margl1440"
      "{\\stylesheet"
      "{\\nowidctlpar\\widctlpar\\adjustright \\fs20\\cgrid \\snext0 Normal;}"
      "{\\*\\cs10 \\additive Default Paragraph Font;}"
      "{\\s15\\nowidctlpar\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\adjustright \\fs20\\cgrid \\sbasedon0 "
      "\\snext15 header;}"
      "{\\s16\\nowidctlpar\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\adjustright \\fs20\\cgrid \\sbasedon0 "
      "\\snext16 footer;}"
      "}");
}

void CSummaryRTFFile::WritePageHeader() {
  Write("\\sectd{\\header \\pard\\plain\\qr\\s15\\widctlpar\\tqc\\tx5040\\tqr\\tx10080{\\cs17\\b\\fs20 ");
  WriteEscaped(m_Content.header.date);
  Write(
      "\\fs28\\tab SUMMARY REPORT\\b0}{\\cs17\\fs20\\b\\tab Page: }"
      "{\\field{\\*\\fldinst {\\cs17\\fs20\\b  PAGE }}{\\fldrslt {\\cs17 1}}}{\\cs17 \\b0\\par\\par}\\pard ");
}

void CSummaryRTFFile::WriteCompany() {
  constexpr std::string_view kCentred = "\\pard\\s15\\qc\\widctlpar\\tqc\\tx5040\\tqr\\tx10080";
  const auto writeLine = [this](std::string_view opening, TextView line, std::string_view closing) {
    Write(opening);
    WriteEscaped(line);
    Write(closing);
  };
  const ReportCompany& company = m_Content.company;
  writeLine("\\s15\\ql\\widctlpar\\tqc\\tx5040\\tqr\\tx10080{\\cs17\\b\\fs24\\tab ", company.name,
            "\\b0}\\par");
  Write(kCentred);
  writeLine("{\\cs17\\b\\fs24 ", company.address[0], "\\b0}\\par");
  if (!company.address[1].empty()) {
    Write(kCentred);
    // Of one point, on purpose: it has always been too small to read.
    writeLine("{\\cs17\\b\\fs2 ", company.address[1], "\\b0}\\par");
  }
  if (!company.address[2].empty())
    writeLine("\\pard \\s15\\qc\\widctlpar\\tqc\\tx5040\\tqr\\tx10080{\\cs17\\b\\fs24 ", company.address[2],
              "\\b0}\\par ");
  Write(kCentred);
  writeLine("{\\cs17\\b\\fs24 ", company.address[3], "\\b0}\\par");
  writeLine("{\\cs17\\b\\fs24 ", company.phone, "");
  if (!company.fax.empty()) writeLine(" Fax#: ", company.fax, "");
  Write("\\b0}\\par\\par}\\pard");
}

void CSummaryRTFFile::WriteFooter() {
  // No blank ends the size, on purpose.
  Write("{\\footer \\pard\\plain \\qc\\widctlpar\\tx5040\\tqr\\tx10080 {\\fs20");
  WriteEscaped(m_Content.footer);
  Write("\\par }\\pard\\plain\\s15\\qc\\widctlpar\\tqc\\tx5040\\tqr\\tx10080\\par}");
}

void CSummaryRTFFile::WriteTitleBlock() {
  constexpr std::string_view kTabs = "\\pard \\s15\\ql\\widctlpar\\tqc\\tx5040\\tql\\tx5846";
  const ReportHeader& header = m_Content.header;
  const ReportLabels& labels = m_Content.labels;
  const auto writeField = [this](TextView label, TextView value) {
    WriteText(label);
    Write(": ");
    WriteEscaped(value);
  };
  Write(kTabs);
  Write("{\\cs17\\fs24 ");
  writeField(m_IsFrench ? TextView(u"No d'inspection") : TextView(labels.documentNumber),
             header.documentNumber);
  Write("}");
  if (!header.clientName.empty()) {
    Write("{\\cs17\\fs24\\tab\\tab ");
    writeField(labels.clientName, header.clientName);
    Write("}");
  }
  Write("\\par ");
  Write(kTabs);
  Write("{\\cs17\\fs24 ");
  writeField(labels.dwellingAddress, header.dwellingAddress[0]);
  Write(m_IsFrench ? "\\tab\\tab Inspecteur:  " : "\\tab\\tab Inspector:  ");
  WriteEscaped(header.inspector);
  Write("\\par                 ");
  WriteEscaped(header.dwellingAddress[1]);
  if (!m_Content.summaryDisclaimer.empty()) {
    Write("\\par\\par}{\\cs17\\fs20");
    WriteEscaped(m_Content.summaryDisclaimer);
  }
  Write("\\par\\par}");
}

}  // namespace inspector::reports
