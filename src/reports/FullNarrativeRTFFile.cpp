#include "reports/FullNarrativeRTFFile.h"

namespace inspector::reports {
namespace {

constexpr int kFullSize = 100;

// Explained on the first page when the office has no definitions of its own.
constexpr std::string_view kDefinitions =
    "\\b Functional \\b0\\tab Performing its function and its condition is appropriate for its age "
    "\\tab\\tab and "
    "use.\\par\\par "
    "\\b Lacks Maintenance \\b0\\tab FUNCTIONAL, but is in need of normal maintenance and upkeep. Left as it "
    "is, it "
    "will wear out early.\\par\\par"
    "\\b Marginal \\b0\\tab Performing some or all of its functions, but WORN, AGED OR POORLY INSTALLED. "
    "Plan for its "
    "repair or replacement.\\par\\par"
    "\\b Non-Functional \\b0\\tab NOT PERFORMING its function at the time of the visit. A qualified "
    "contractor should "
    "repair or replace it.\\par\\par"
    "\\b Hazardous \\b0\\tab An imminent THREAT AND DANGER TO LIFE, health or property. Have it put right "
    "without "
    "delay.\\par\\par"
    "\\b Comments \\b0\\tab Used when other terms are not applicable. GENERAL REMARKS on the component stand "
    "under "
    "this term.\\par\\par"
    "\\b Data \\b0\\tab INFORMATION ONLY. A fact about the component, such as its age, size or location, "
    "without a "
    "judgement.\\par\\par"
    "\\b N/A \\b0\\tab NOT APPLICABLE. The component does not exist in this dwelling or lies outside the "
    "agreed "
    "visit.\\par\\par"
    "\\b NV \\b0\\tab NOT VISIBLE. The component was covered, locked or out of reach, and no opinion on it "
    "is given.";

}  // namespace

CFullNarrativeRTFFile::CFullNarrativeRTFFile(device::OutputFile& output, ReportPictures& pictures,
                                             const ReportContent& content, const ReportLayout& layout,
                                             RtfSettings settings, RowStyle style)
    : RtfWriter(output, pictures, std::move(settings)),
      m_Content(content),
      m_Layout(layout),
      m_Style(style) {}

void CFullNarrativeRTFFile::WriteReport(ReportProgress& progress) {
  WriteDocumentHeader();
  for (const ReportSection& category : m_Content.sections) {
    if (HasFailed()) return;
    if (!category.isSkipped) m_Layout.WriteCategory(*this, m_Style, category, progress);
    if (progress.IsCancelled() || !progress.PartDone()) return;
  }
  WriteDocumentEnd();
}

void CFullNarrativeRTFFile::WriteDocumentHeader() {
  WriteOpening();
  WriteTitleBlock();
}

void CFullNarrativeRTFFile::WriteField(TextView label, TextView value) {
  WriteText(label);
  Write(": \\tab ");
  WriteEscaped(value);
}

void CFullNarrativeRTFFile::WriteTitleBlock() {
  const ReportHeader& header = m_Content.header;
  const ReportLabels& labels = m_Content.labels;
  Write("\\pard \\s15\\ql\\widctlpar\\tql\\tx1800\\tx3686\\tx5314{\\cs17\\fs20\\par ");
  WriteField(labels.documentNumber, header.documentNumber);
  Write("\\tab ");
  WriteField(m_Layout.IsFrench() ? u"Inspecteur" : u"Inspector", header.inspector);
  Write("\\par\\par ");
  WriteField(labels.date, header.date);
  Write("\\par\\par ");
  WriteField(m_Layout.IsFrench() ? TextView(u"Adresse") : TextView(labels.dwellingAddress),
             header.dwellingAddress[0]);
  Write("\\par\\tab ");
  WriteEscaped(header.dwellingAddress[1]);
  Write("\\par\\par ");
  WriteField(labels.clientName, header.clientName);
  if (!header.clientAddress[0].empty()) {
    Write("\\par\\tab ");
    WriteEscaped(header.clientAddress[0]);
    Write("\\par\\tab ");
    WriteEscaped(header.clientAddress[1]);
  }
  if (!header.clientAgent.empty()) {
    Write("\\par\\par ");
    WriteField(labels.clientAgent, header.clientAgent);
  }
  if (!header.realEstateCompany.empty()) {
    Write("\\tab ");
    WriteField(labels.realEstateCompany, header.realEstateCompany);
  }
  WriteHousePhoto();
  WriteFirstPageEnd();
}

void CFullNarrativeRTFFile::WriteHousePhoto() {
  Write("\\par\\par\\qc ");
  const Text photo = ReportPictures::HousePhotoPath(m_Content.header.documentNumber);
  if (!WritePicture(photo, kFullSize) && Pictures().Exists(photo)) Pictures().NoteUnreadable(photo);
  Write(" \\par \\ql  \\par ");
}

void CFullNarrativeRTFFile::WriteFirstPageEnd() {
  if (m_Layout.Columns() < 3) {
    WriteNarrowFirstPageEnd();
  } else {
    WriteWideFirstPageEnd();
  }
}

void CFullNarrativeRTFFile::WriteNarrowFirstPageEnd() {
  Write("\\pard\\ql\\fs16 ");
  WriteEscaped(m_Content.finePrint);
  Write("\\par}\\page\\pard \\s15\\ql\\widctlpar\\tql\\tx2160\\tx3150\\tx4410{\\cs17\\fs24\\par\\par\\par");
  if (!m_Content.definitionOfTerms.empty()) {
    Write("\\b DEFINITION OF TERMS \\b0\\par\\par ");
    WriteEscaped(m_Content.definitionOfTerms);
    Write("\\par\\par");
  }
  Write("\\pard\\ql");
  if (m_Content.HasGeneralInformation()) {
    Write(m_Layout.IsFrench() ? "\\b INFORMATION GENERALE" : "\\b GENERAL INFORMATION");
    Write("\\b0\\par\\par\\pard\\ql ");
    WriteEscaped(m_Content.generalInformation);
  }
  Write("\\par\\par\\fs28\\qc\\b  \\b0\\par\\ql\\par}\\pard ");
}

void CFullNarrativeRTFFile::WriteWideFirstPageEnd() {
  Write("{\\cs17\\fs20\\par ");
  WriteEscaped(m_Content.finePrint);
  Write("}\\par}\\page\\pard \\s15\\ql\\widctlpar\\tql\\tx2160\\tx3150\\tx4410{\\cs17\\fs24\\par ");
  if (m_Content.definitionOfTerms.empty()) {
    Write(kDefinitions);
  } else {
    WriteEscaped(m_Content.definitionOfTerms);
  }
  Write("\\par\\par");
  if (m_Content.HasGeneralInformation()) {
    Write("\\b GENERAL INFORMATION \\b0\\par\\par\\par ");
    WriteEscaped(m_Content.generalInformation);
    Write("\\par");
  }
  Write("\\par}\\pard ");
}

void CFullNarrativeRTFFile::WriteFirstSectionTitle(TextView title) {
  // In the page header, so that the brand of the first page gives way to it.
  WriteSectionBreak();
  Write("{\\header \\pard\\plain \\s15\\qr\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\fs16");
  WritePageField();
  Write("\\s15\\qc\\widctlpar\\tqc\\tx4320\\tqr\\tx8640 {\\cs17\\b\\fs28 ");
  WriteEscaped(title);
  Write("} \\par }");
}

}  // namespace inspector::reports
