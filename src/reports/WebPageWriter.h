// A page for the browsers of today: HTML in UTF-8, written front to back, with its pictures inside.
#pragma once

#include "reports/ReportContent.h"
#include "reports/ReportPictures.h"
#include "reports/ReportRun.h"

namespace inspector::reports {

// One object per page. All that it is given outlives it. Failed writes stay in the output.
class WebPageWriter {
public:
  WebPageWriter(device::OutputFile& output, ReportPictures& pictures, const ReportContent& content,
                bool hideRatings);

  // Returns early when the person wishes to stop.
  void WritePage(ReportProgress& progress);

private:
  void WriteHead();
  void WriteTitle();
  void WriteEnd();
  void WriteFields();
  void WriteContents();
  void WriteAttention();
  void WriteAttentionOf(const ReportSection& category);
  void WriteText(TextView id, TextView title, const Text& words);
  // False when the person wishes to stop.
  bool WriteCategory(const ReportSection& category, ReportProgress& progress);
  void WriteStep(const ReportStep& step, TextView anchor);
  void WritePictures(const ReportStep& step);
  bool WritePicture(TextView path, int scaling, TextView description);
  void WriteRating(const ReportStep& step);
  // Paragraphs end at an empty line, lines within one by "<br>".
  void WriteParagraphs(TextView words);

  bool IsShown(const ReportSection& section) const;
  bool HasGeneralInformation() const;
  bool NeedsAttention(const ReportStep& step) const;

  // Tags, which are ASCII.
  void Put(std::string_view markup) { m_Output.Write(markup); }
  void PutNumber(std::size_t number) { Put(std::to_string(number)); }
  // What a person has written; line ends become `lineEnd`.
  void PutWords(TextView words, TextView lineEnd = u" ");
  // What a heading or a link is called, which is never nothing.
  void PutName(TextView name);

  device::OutputFile& m_Output;
  ReportPictures& m_Pictures;
  const ReportContent& m_Content;
  const bool m_HideRatings;
};

}  // namespace inspector::reports
