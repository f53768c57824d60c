#include "reports/InspectionReport.h"

#include "device/Format.h"
#include "reports/FullNarrativeRTFFile.h"
#include "reports/ReportLayout.h"

namespace inspector::reports {
namespace {

device::SaveQuestion AskWhere(const Text& documentNumber) {
  return {ReportFileName(u"Inspection_", documentNumber, u".rtf"), u"\\My Documents\\",
          u"Rich Text Format (*.rtf)|*.rtf|", u"rtf"};
}

RtfSettings SettingsOf(const data::OptionsTable& options, const ReportContent& content, int columns) {
  return {options.m_ReportFontName, options.m_ReportFontSize, columns,
          options.m_ColumnWidth,    content.companyLines,     content.footer};
}

Text UnknownLayout(const Text& name) {
  Text known;
  for (const ReportLayout* const layout : Layouts()) {
    known += (known.empty() ? u"\"" : u", \"") + Text(layout->Name()) + u"\"";
  }
  return device::Format(u"There is no report layout \"%s\". Choose one of %s.", name, known);
}

}  // namespace

ReportOutcome WriteInspectionReport(data::Workspace& workspace, const ReportRequest& request) {
  device::Prompts& prompts = workspace.GetPrompts();
  const ReportLayout* const layout = FindLayout(request.layout);
  if (layout == nullptr) {
    device::ShowError(prompts, UnknownLayout(request.layout));
    return {};
  }
  ReportContent content;
  switch (CollectReport(workspace, request.inspectionID, request.deselected, content)) {
    case CollectResult::Failed:
      device::ShowError(prompts,
                        device::Format(u"The inspection %d could not be read whole, so no report was made. "
                                       u"Check the databases and try again.",
                                       request.inspectionID));
      return {};
    case CollectResult::NoSuchInspection:
      device::ShowError(prompts,
                        device::Format(u"There is no inspection %d. Choose one from the list of inspections.",
                                       request.inspectionID));
      return {};
    case CollectResult::Done:
      break;
  }

  const data::OptionsTable& options = workspace.Options();
  ReportPictures pictures(workspace.GetMachine(), options.m_DefaultPictCardPath,
                          request.pictures && options.m_OmitPictures == 0);
  const RowStyle style{options.m_HideRatings != 0, options.m_StepSpacing == 2};
  ReportOutcome outcome =
      RunReport(workspace.GetMachine(), request.target,
                {workspace.GetDatabases().Template().File(), workspace.GetDatabases().Inspection().File()},
                AskWhere(content.header.documentNumber), static_cast<int>(content.categories.size()),
                [&](device::OutputFile& output, ReportProgress& progress) {
                  CFullNarrativeRTFFile file(output, pictures, content, *layout,
                                             SettingsOf(options, content, layout->Columns()), style);
                  file.WriteReport(progress);
                });
  if (outcome.result == ReportResult::Written) outcome.notes = pictures.Notes();
  return outcome;
}

}  // namespace inspector::reports
