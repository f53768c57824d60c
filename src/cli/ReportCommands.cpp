#include "cli/CommandGroups.h"
#include "device/Format.h"
#include "reports/CategorySelection.h"
#include "reports/InspectionReport.h"
#include "reports/ReportLayout.h"

namespace inspector::cli {
namespace {

using device::Text;

Text LayoutNames() {
  Text names;
  const auto layouts = reports::Layouts();
  for (std::size_t i = 0; i < layouts.size(); ++i) {
    const device::TextView joint = i == 0 ? u"" : i + 1 < layouts.size() ? u", " : u" or ";
    names += device::Format(u"%s\"%s\"", joint, layouts[i]->Name());
  }
  return names;
}

std::vector<std::string> LayoutChoices() {
  std::vector<std::string> names;
  for (const reports::ReportLayout* const layout : reports::Layouts())
    names.push_back(device::ToUtf8(layout->Name()));
  return names;
}

// What --skip names, as the titles that a report goes by. False when there is no such category.
bool TakeSkipped(Session& session, const Input& input, reports::ReportRequest& request) {
  const auto skipped = input.lists.find("--skip");
  if (skipped == input.lists.end()) return true;
  reports::CategorySelection categories(session.Workspace(), request.inspectionID);
  for (const std::string& category : skipped->second) {
    if (categories.LeaveOut(device::FromUtf8(category))) continue;
    session.Fail(device::Format(u"There is no category \"%s\" in this inspection. \"categories\" shows them.",
                                device::FromUtf8(category)));
    return false;
  }
  request.deselected = categories.Deselected();
  return !categories.Failed();
}

ExitCode RunReport(Session& session, const Input& input) {
  reports::ReportRequest request;
  request.inspectionID = input.Number(0);
  request.layout = device::FromUtf8(input.options.at("--layout"));
  if (!reports::FindLayout(request.layout)) {
    session.Fail(device::Format(u"There is no layout \"%s\". It must be %s.", request.layout, LayoutNames()));
    return ExitCode::Usage;
  }
  if (input.Has("--out")) {
    if (input.options.at("--out").empty()) {
      session.Fail(u"The file after --out has no name.");
      return ExitCode::Usage;
    }
    request.target = session.GetMachine().paths.ResolveTyped(device::FromUtf8(input.options.at("--out")));
  }
  if (!session.SelectInspection(request.inspectionID) || !TakeSkipped(session, input, request))
    return ExitCode::Failed;
  const reports::ReportOutcome outcome = reports::WriteInspectionReport(session.Workspace(), request);
  for (const Text& note : outcome.notes) session.Note(note);
  if (outcome.result == reports::ReportResult::Cancelled) session.Note(u"The report was not written.");
  if (outcome.result != reports::ReportResult::Written) return ExitCode::Failed;
  session.Out() << outcome.file.string() << "\n";
  return ExitCode::Done;
}

}  // namespace

std::vector<Command> ReportCommands() {
  return {
      {"report",
       "write the inspection report and print where it is",
       {{"ID", "the inspection's key", Argument::Kind::Number, false}},
       {{"--layout", "NAME", device::ToUtf8(LayoutNames()), true, LayoutChoices()},
        {"--out", "FILE", "where to write; replaces without asking", false},
        {"--skip", "CATEGORY", "leave these categories out, by title or key", false, {}, true}},
       "Without --out the file is Inspection_NUMBER.rtf in \"My Documents\" on the device. A path that "
       "begins with a "
       "backslash lies on the device.",
       RunReport},
  };
}

}  // namespace inspector::cli
