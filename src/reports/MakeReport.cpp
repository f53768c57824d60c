#include "reports/MakeReport.h"

#include <algorithm>

#include "data/InspectionTable.h"
#include "data/InspectionTypeTable.h"
#include "device/Format.h"
#include "reports/PageRecord.h"
#include "reports/ReportLayout.h"

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

bool IsOneOf(const std::filesystem::path& file, const std::vector<std::filesystem::path>& others) {
  return std::any_of(others.begin(), others.end(), [&](const auto& other) {
    std::error_code notThere;
    return std::filesystem::equivalent(file, other, notThere);
  });
}

// Files that the program needs, or that a person may want back.
std::vector<std::filesystem::path> OwnFiles(data::Workspace& workspace) {
  const std::filesystem::path& registry = workspace.GetMachine().registry.Path();
  std::vector<std::filesystem::path> files = {registry, registry.parent_path() / "inspector.log",
                                              registry.parent_path() / PageRecord::kFile};
  data::Databases& databases = workspace.GetDatabases();
  for (const std::filesystem::path& database : {databases.Template().File(), databases.Inspection().File()})
    for (const char* const end : {"", ".lock", ".before-import", "-wal", "-journal"})
      files.emplace_back(database.native() + end);
  return files;
}

bool HasNameOfPicture(const std::filesystem::path& file) {
  constexpr TextView kEnds[] = {u".jpg", u".jpeg", u".png", u".gif", u".bmp", u".2bp", u".webp"};
  const Text end = device::FromUtf8(file.extension().native());
  return std::any_of(std::begin(kEnds), std::end(kEnds),
                     [&](TextView each) { return device::EqualIgnoringCase(end, each); });
}

// Why a report must not replace this file; empty when it may.
Text WhyNotReplace(data::Workspace& workspace, ReportPictures& pictures, const ReportContent& content,
                   const std::filesystem::path& file) {
  std::error_code notThere;
  if (!std::filesystem::exists(file, notThere) || std::filesystem::is_directory(file, notThere)) return {};
  if (IsOneOf(file, OwnFiles(workspace)))
    return device::Format(
        u"%s is a database of this program, or a file beside it. Give the report another name.",
        device::FromUtf8(file.native()));
  if (HasNameOfPicture(file) || IsOneOf(file, pictures.FilesOf(content)))
    return device::Format(u"%s is a picture, and would be lost. Give the report another name.",
                          device::FromUtf8(file.native()));
  return {};
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
                  u"These pages lie in the program's own folder, by which they name each other. Make "
                  u"the web pages in a folder to put them elsewhere.");
  const auto target = TargetOf(machine, request, *format, content.header);
  if (!target) return {ReportResult::Cancelled, {}, {}};

  const data::OptionsTable& options = workspace.Options();
  ReportPictures pictures(machine, options.m_DefaultPictCardPath,
                          request.choices.pictures && options.m_OmitPictures == 0);
  if (const Text problem = WhyNotReplace(workspace, pictures, content, target->path); !problem.empty())
    return Refuse(machine.prompts, problem);
  const Text inspection =
      device::Format(u"%d of %s", request.inspectionID,
                     device::FromUtf8(workspace.GetDatabases().Inspection().File().native()));
  ReportRun run(machine, *target, Text(format->ProgressTitle()), format->Parts(content));
  pictures.StopWhen([&run] { return run.Progress().IsCancelled(); });
  format->Write({content, pictures, options, request.choices, inspection}, run);
  const ReportResult result = run.Finish();
  if (result != ReportResult::Written) return {result, {}, {}};
  return {result, target->path, pictures.Notes()};
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
