#include "reports/ReportPlace.h"

#include <algorithm>

#include "data/StepTable.h"
#include "device/DefaultHome.h"
#include "device/FileIdentity.h"
#include "device/Format.h"
#include "inspection/InspectionRows.h"
#include "reports/MediaType.h"
#include "reports/PageRecord.h"

namespace inspector::reports {
namespace {

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
  if (device::IsSamePlace(file.parent_path(), records)) return true;
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

// Nothing when they could not all be read.
std::optional<std::vector<Text>> CommentsOf(data::Workspace& workspace, std::int32_t inspectionID) {
  const data::ReadScope reading(workspace.InspectionConnection());
  std::vector<Text> comments;
  data::StepTable steps(workspace.GetDatabases());
  steps.OpenSQL(device::Format(inspection::kStepsOfInspection, inspectionID));
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (steps.GetRecord(n)) comments.insert(comments.end(), {steps.m_Comments, steps.m_SummaryComment});
    if (steps.Failed()) return std::nullopt;
  }
  return steps.Failed() ? std::nullopt : std::optional(std::move(comments));
}

}  // namespace

Text ReportPlace::WhyNot(const std::filesystem::path& named) const {
  const Text name = device::FromUtf8(named.native());
  // What is written to a link appears where it leads, under the name that is there.
  std::error_code noLink;
  const std::filesystem::path file =
      std::filesystem::is_symlink(named, noLink) ? device::WholePath(named) : named;
  // Also what is not there at the moment: it would be taken for what its name says.
  if (IsOwnFile(m_Workspace, file))
    return device::Format(u"%s is a database of this program, or a file that it needs. Choose another name.",
                          name);
  std::error_code error;
  const bool isThere = std::filesystem::exists(file, error);
  if (m_Pictures.IsCardFolder(file) ||
      (!isThere && m_Pictures.IsCardFolder(device::WholePath(file).parent_path())))
    return device::Format(
        u"%s is in the folder of the camera's card. One more entry there would change which pictures the "
        u"numbers in comments mean. Choose another folder.",
        name);
  if (std::filesystem::is_directory(file, error)) return {};
  if (HasNameOfPicture(file))
    return device::Format(u"%s has the name of a picture. Choose another name.", name);
  if (!isThere) return {};
  if (IsDatabase(m_Workspace.GetMachine(), file))
    return device::Format(u"%s is a database, and would be lost. Choose another name.", name);
  const auto all = AllPictures();
  if (!all) return u"The comments of the inspection could not be read. Nothing was written.";
  if (HasContentOfPicture(m_Workspace.GetMachine(), file) || IsOneOf(file, *all))
    return device::Format(u"%s is a picture, and would be lost. Choose another name.", name);
  return {};
}

std::optional<std::vector<std::filesystem::path>> ReportPlace::AllPictures() const {
  const auto comments = CommentsOf(m_Workspace, m_InspectionID);
  if (!comments) return std::nullopt;
  return m_Pictures.FilesOf(m_DocumentNumber, *comments);
}

}  // namespace inspector::reports
