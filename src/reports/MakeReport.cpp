#include "reports/MakeReport.h"

#include <algorithm>

#include "data/InspectionTable.h"
#include "data/InspectionTypeTable.h"
#include "data/StepTable.h"
#include "device/DefaultHome.h"
#include "device/FileIdentity.h"
#include "device/Format.h"
#include "reports/MediaType.h"
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
  return std::any_of(others.begin(), others.end(),
                     [&](const auto& other) { return device::IsSamePlace(file, other); });
}

bool BeginsLike(const std::filesystem::path& name, const std::filesystem::path& other) {
  const Text begin = device::FromUtf8(other.filename().native());
  return device::EqualIgnoringCase(
      device::TextView(device::FromUtf8(name.filename().native())).substr(0, begin.size()), begin);
}

// One that the program needs, or that a person may want back: what is kept of a database has its name with
// something behind it.
bool IsOwnFile(data::Workspace& workspace, const std::filesystem::path& file) {
  const std::filesystem::path& registry = workspace.GetMachine().registry.Path();
  const std::filesystem::path home = registry.parent_path();
  const std::filesystem::path records = home / PageRecord::kFolder;
  if (IsOneOf(file, {registry, home / device::kLogFile, records})) return true;
  std::error_code notThere;
  if (std::filesystem::is_directory(file, notThere)) return false;  // and so none of those below
  const std::filesystem::path folder = device::WholePath(file).parent_path();
  if (device::IsSamePlace(folder, records)) return true;
  data::Databases& databases = workspace.GetDatabases();
  const std::filesystem::path files[] = {databases.Template().File(), databases.Inspection().File()};
  return std::any_of(std::begin(files), std::end(files), [&](const std::filesystem::path& database) {
    return device::IsSamePlace(file, database) ||
           (BeginsLike(file, database) && device::IsSamePlace(folder, database.parent_path()));
  });
}

// Of whatever program it is.
bool IsDatabase(const device::Machine& machine, const std::filesystem::path& file) {
  constexpr std::string_view kBegin("SQLite format 3", 16);
  char begin[kBegin.size()];
  const auto content = machine.files.OpenForReading(file);
  return content != nullptr && content->Read(begin, sizeof begin) == sizeof begin &&
         std::string_view(begin, sizeof begin) == kBegin;
}

bool HasContentOfPicture(const device::Machine& machine, const std::filesystem::path& file) {
  const auto content = machine.files.OpenForReading(file);
  return content != nullptr && IsPicture(*content);
}

bool HasNameOfPicture(const std::filesystem::path& file) {
  constexpr TextView kEnds[] = {u".jpg", u".jpeg", u".png", u".gif", u".bmp", u".2bp", u".webp"};
  const Text end = device::FromUtf8(file.extension().native());
  return std::any_of(std::begin(kEnds), std::end(kEnds),
                     [&](TextView each) { return device::EqualIgnoringCase(end, each); });
}

using AllPictures = std::function<std::optional<std::vector<std::filesystem::path>>()>;

// Why a report must not go there; empty when it may.
Text WhyNotThere(data::Workspace& workspace, const std::filesystem::path& file,
                 const ReportPictures& pictures, const AllPictures& allPictures) {
  const Text name = device::FromUtf8(file.native());
  // Also what is not there at the moment: it would be taken for what its name says.
  if (IsOwnFile(workspace, file))
    return device::Format(
        u"%s is a database of this program, or a file that it needs. Give the report another name.", name);
  std::error_code error;
  const bool isThere = std::filesystem::exists(file, error);
  if (pictures.IsCardFolder(file) ||
      (!isThere && pictures.IsCardFolder(device::WholePath(file).parent_path())))
    return device::Format(
        u"%s is in the folder of the camera's card. One more entry there would change which pictures the "
        u"numbers in comments mean. Choose another folder.",
        name);
  if (std::filesystem::is_directory(file, error)) return {};
  if (HasNameOfPicture(file))
    return device::Format(u"%s has the name of a picture. Give the report another name.", name);
  if (!isThere) return {};
  if (IsDatabase(workspace.GetMachine(), file))
    return device::Format(u"%s is a database, and would be lost. Give the report another name.", name);
  const auto all = allPictures();
  if (!all) return u"The comments of the inspection could not be read. Nothing was written.";
  if (HasContentOfPicture(workspace.GetMachine(), file) || IsOneOf(file, *all))
    return device::Format(u"%s is a picture, and would be lost. Give the report another name.", name);
  return {};
}

// With tags, of all its steps, those that this report leaves out as well. Nothing when they could not all be
// read.
std::optional<std::vector<Text>> CommentsOf(data::Workspace& workspace, std::int32_t inspectionID) {
  const data::ReadScope reading(workspace.InspectionConnection());
  std::vector<Text> comments;
  data::StepTable steps(workspace.GetDatabases());
  steps.OpenSQL(
      device::Format(u"SELECT Step.* FROM Category INNER JOIN Step ON Category.CategoryID = Step.CategoryID "
                     u"WHERE (Category.InspectionID = %d) AND (Step.Comments LIKE \"%%***%%\")",
                     inspectionID));
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (steps.GetRecord(n)) comments.push_back(steps.m_Comments);
    if (steps.Failed()) return std::nullopt;
  }
  return steps.Failed() ? std::nullopt : std::optional(std::move(comments));
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
  const AllPictures allPictures = [&]() -> std::optional<std::vector<std::filesystem::path>> {
    const auto comments = CommentsOf(workspace, request.inspectionID);
    if (!comments) return std::nullopt;
    return pictures.FilesOf(content.header.documentNumber, *comments);
  };
  if (const Text problem = WhyNotThere(workspace, target->path, pictures, allPictures); !problem.empty())
    return Refuse(machine.prompts, problem);
  // Every new database begins with the same keys.
  const Text inspection =
      device::Format(u"%d of %s", request.inspectionID,
                     device::FromUtf8(device::IdentityOf(workspace.GetDatabases().Inspection().File())));
  ReportRun run(machine, *target, Text(format->ProgressTitle()), format->Parts(content));
  pictures.StopWhen([&run] { return run.Progress().IsCancelled(); });
  format->Write({content, pictures, options, request.choices, inspection, allPictures}, run);
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
