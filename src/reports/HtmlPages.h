// The two pages that a visit becomes: what was found, and the table of contents that leads into it.
#pragma once

#include "reports/HtmlElements.h"
#include "reports/PagePictures.h"
#include "reports/ReportContent.h"

namespace inspector::reports {

class HtmlPages {
public:
  // Begins with the company, the house and the client. Content and pictures outlive the pages. Without
  // ratings the rows have their short form, with the materials before the comments.
  HtmlPages(const ReportContent& content, PagePictures& pictures, bool hideRatings);

  // One that is skipped leaves no trace; one without steps has its title and its link, but no table. False
  // when the person wishes to stop.
  bool AddCategory(const ReportSection& category, ReportProgress& progress);
  // After the last category.
  void AddEnd();

  const HtmlPage& Inspection() const { return m_Inspection; }
  const HtmlPage& Contents() const { return m_Contents; }

private:
  void AddHeader();
  void AddTextBlock(TextView title, const Text& words);
  void AddHeading(HtmlTable& table) const;
  void AddStep(HtmlTable& table, const ReportStep& step);
  void AddPictures(HtmlTable& table, const ReportStep& step);
  Text FullRow(TextView content) const;

  const ReportContent& m_Content;
  PagePictures& m_Pictures;
  const bool m_IsShort;
  HtmlPage m_Inspection{u"Inspection Report"};
  HtmlPage m_Contents{u"Contents"};
};

}  // namespace inspector::reports
