// The layouts that write one row, or one block, per step.
#pragma once

#include <string_view>

#include "reports/ReportLayout.h"

namespace inspector::reports {

class RowLayout : public ReportLayout {
public:
  using ReportLayout::ReportLayout;

  // Title and heading stand before the first step, so a category without any has neither. A step that is
  // rated "Omit" calls for them but has no row.
  void WriteCategory(RtfWriter& writer, const RowStyle& style, const ReportSection& category,
                     ReportProgress& progress) const final;

protected:
  virtual void WriteHeading(RtfWriter& writer) const = 0;
  virtual void WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const = 0;
};

class FourColumnLayout : public RowLayout {
public:
  FourColumnLayout() : RowLayout(u"4 Column", 4, false) {}

protected:
  void WriteHeading(RtfWriter& writer) const override;
  void WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const override;
};

class ThreeColumnLayout : public RowLayout {
public:
  ThreeColumnLayout() : RowLayout(u"3 Column", 3, false) {}

protected:
  void WriteHeading(RtfWriter& writer) const override;
  void WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const override;
};

class TwoColumnLayout : public RowLayout {
public:
  TwoColumnLayout(TextView name, bool isFrench, std::string_view heading)
      : RowLayout(name, 2, isFrench), m_Heading(heading) {}

protected:
  void WriteHeading(RtfWriter& writer) const override;
  void WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const override;

private:
  std::string_view m_Heading;
};

// Paragraphs in place of a table.
class OneColumnLayout : public RowLayout {
public:
  OneColumnLayout() : RowLayout(u"1 Column", 1, false) {}

protected:
  void WriteHeading(RtfWriter&) const override {}
  void WriteStep(RtfWriter& writer, const RowStyle& style, const ReportStep& step) const override;
};

}  // namespace inspector::reports
