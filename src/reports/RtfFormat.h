// What all reports in Rich Text have in common as formats.
#pragma once

#include "reports/ReportFormat.h"
#include "reports/RtfWriter.h"
#include "reports/StepRows.h"

namespace inspector::reports {

class RtfFormat : public ReportFormat {
public:
  // `prefix` begins the file's name: "Inspection_".
  RtfFormat(TextView name, TextView title, Uses uses, TextView prefix)
      : ReportFormat(name, title, uses), m_Prefix(prefix) {}

  device::SaveQuestion Question(const ReportHeader& header) const override {
    return {ReportFileName(m_Prefix, header.documentNumber, u".rtf"), u"\\My Documents\\",
            u"Rich Text Format (*.rtf)|*.rtf|", u"rtf"};
  }
  TextView ProgressTitle() const override { return u"Exporting RTF..."; }

protected:
  static RtfSettings SettingsOf(const ReportSource& source, int columns) {
    return {source.options.m_ReportFontName, source.options.m_ReportFontSize, columns,
            source.options.m_ColumnWidth,    source.content.companyLines,     source.content.footer};
  }
  static RowStyle StyleOf(const data::OptionsTable& options) {
    return {options.m_HideRatings != 0, options.m_StepSpacing == 2};
  }

private:
  TextView m_Prefix;
};

}  // namespace inspector::reports
