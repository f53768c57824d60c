#include "reports/MakeReport.h"

#include "data/InspectionTable.h"
#include "data/InspectionTypeTable.h"
#include "device/FileIdentity.h"
#include "device/Format.h"
#include "reports/ReportLayout.h"
#include "reports/ReportPlace.h"

namespace inspector::reports {
namespace {

ReportOutcome Refuse(device::Prompts& prompts, const Text& why) {
  device::ShowError(prompts, why);
  return {};
}

Text UnknownLayout(const Text& name) {
  Text known;
  for (const ReportLayout* const layout : Layouts()) {
    known += (known.empty() ? u"\"" : u", \"") + Text(layout->Name()) + u"\"";
  }
  return device::Phrase(u"There is no report layout \"%s\". Choose one of %s.", name, known);
}

// Empty when the content is whole.
Text Collect(data::Workspace& workspace, const ReportRequest& request, const ReportFormat& format,
             ReportContent& content) {
  switch (CollectReport(workspace, request.inspectionID, format.Selection(request.choices),
                        request.choices.deselected, content)) {
    case CollectResult::Failed:
      return device::Format(
          u"The inspection %d could not be read whole, so no report was made. Check the databases and try "
          u"again.",
          request.inspectionID);
    case CollectResult::NoSuchInspection:
      return device::Format(u"There is no inspection %d. Choose one from the list of inspections.",
                            request.inspectionID);
    case CollectResult::Done:
      break;
  }
  return {};
}

// Nothing when the person cancels.
std::optional<ReportTarget> TargetOf(const device::Machine& machine, const ReportRequest& request,
                                     const ReportFormat& format, const ReportHeader& header) {
  if (request.target) return ReportTarget{*request.target, false, request.mayReplace};
  const device::SaveQuestion question = format.Question(header);
  if (format.Used().folder)
    return ReportTarget{machine.paths.Resolve(question.folder + question.suggestedName), true};
  const auto chosen = machine.prompts.AskSavePath(question);
  if (!chosen) return std::nullopt;
  return ReportTarget{*chosen, false};
}

}  // namespace

ReportOutcome MakeReport(data::Workspace& workspace, const ReportRequest& request) {
  const device::Machine& machine = workspace.GetMachine();
  const ReportFormat* const format = FindFormat(request.format);
  if (format == nullptr)
    return Refuse(machine.prompts, device::Phrase(u"There is no report \"%s\".", request.format));
  if (format->Used().layout && FindLayout(request.choices.layout) == nullptr)
    return Refuse(machine.prompts, UnknownLayout(request.choices.layout));
  ReportContent content;
  if (const Text problem = Collect(workspace, request, *format, content); !problem.empty())
    return Refuse(machine.prompts, problem);
  if (request.target && format->Used().ownFolder)
    return Refuse(machine.prompts,
                  u"These pages lie in the program's own folder, because they refer to each other by it. "
                  u"Make the web pages in a folder to put them elsewhere.");
  const auto target = TargetOf(machine, request, *format, content.header);
  if (!target) return {ReportResult::Cancelled, {}, {}};

  const data::OptionsTable& options = workspace.Options();
  ReportPictures pictures(machine, options.m_DefaultPictCardPath,
                          request.choices.pictures && options.m_OmitPictures == 0);
  const ReportPlace place(workspace, request.inspectionID, content.header.documentNumber, pictures);
  if (const Text problem = place.WhyNot(target->path); !problem.empty())
    return Refuse(machine.prompts, problem);
  // Every new database begins with the same keys.
  const Text inspection =
      device::Format(u"%d of %s", request.inspectionID,
                     device::FromUtf8(device::IdentityOf(workspace.GetDatabases().Inspection().File())));
  ReportRun run(machine, *target, Text(format->ProgressTitle()), format->Parts(content));
  pictures.StopWhen([&run] { return run.Progress().IsCancelled(); });
  format->Write(
      {content, pictures, options, request.choices, inspection, [&place] { return place.AllPictures(); }},
      run);
  const ReportResult result = run.Finish();
  if (result != ReportResult::Written) return {result, {}, {}};
  std::vector<Text> notes = pictures.Notes();
  if (request.choices.pictures && format->Used().pictures && options.m_OmitPictures != 0)
    notes.push_back(u"The report has no pictures, because the options leave them out.");
  return {result, target->path, std::move(notes)};
}

Text LayoutOf(data::Workspace& workspace, std::int32_t inspectionID) {
  data::InspectionTable inspection(workspace.GetDatabases());
  inspection.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  data::InspectionTypeTable type(workspace.GetDatabases());
  if (inspection.GetRecord(0))
    type.OpenSQL(
        device::Format(u"SELECT * FROM InspectionType WHERE ID = %d", inspection.m_InspectionTypeID));
  const ReportLayout* const layout = type.GetRecord(0) ? FindLayout(type.m_Layout) : nullptr;
  return Text((layout != nullptr ? layout : Layouts().front())->Name());
}

}  // namespace inspector::reports
