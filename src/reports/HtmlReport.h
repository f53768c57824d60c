// The visit as a small site of three pages: a frame with the contents, one with what was found, and the page
// that holds both.
#pragma once

#include "reports/HtmlPages.h"
#include "reports/ReportFormat.h"

namespace inspector::reports {

class HtmlReport : public ReportFormat {
public:
  // No page is larger; the readers of old give no more room.
  static constexpr std::size_t kMostPageBytes = 100'096;

  StepSelection Selection(const ReportChoices&) const override { return AllFindings(); }
  int Parts(const ReportContent& content) const override {
    return static_cast<int>(content.sections.size()) + 1;
  }
  void Write(const ReportSource& source, ReportRun& run) const override;

  // The page with both frames, whose pages lie in `folder`, which ends with its slash; empty for beside it.
  static Text FramesPage(TextView folder);

protected:
  HtmlReport(TextView name, TextView title, bool ownFolder)
      : ReportFormat(name, title, {.ownFolder = ownFolder, .folder = true}) {}

  // False: nothing is to be written, and the person knows why.
  virtual bool Prepare(const ReportSource& source, const PageRecord& record, ReportRun& run) const = 0;
  // What stands before "toc.htm" and "inspection.htm" in the frames.
  virtual TextView FrameFolder() const = 0;
};

// In a folder of its own, to be copied to wherever the client wants it.
class HtmlExport : public HtmlReport {
public:
  HtmlExport() : HtmlReport(u"html", u"Web pages in a folder", false) {}

  device::SaveQuestion Question(const ReportHeader& header) const override;
  TextView ProgressTitle() const override { return u"Exporting HTML..."; }

protected:
  bool Prepare(const ReportSource& source, const PageRecord& record, ReportRun& run) const override;
  TextView FrameFolder() const override { return {}; }

private:
  bool MakeFolder(const ReportHeader& header, ReportRun& run) const;
};

// In the program's folder, to be looked at on the device. The pages name each other by their places there.
class HtmlView : public HtmlReport {
public:
  HtmlView() : HtmlReport(u"html-view", u"Web pages on the device", true) {}

  device::SaveQuestion Question(const ReportHeader& header) const override;
  TextView ProgressTitle() const override { return u"Building HTML..."; }

protected:
  bool Prepare(const ReportSource&, const PageRecord&, ReportRun&) const override { return true; }
  TextView FrameFolder() const override { return u"file:///Program Files\\Brindlecove\\"; }
};

}  // namespace inspector::reports
