#include "reports/ReportForm.h"

#include <algorithm>

#include "data/InspectionTable.h"
#include "device/Format.h"
#include "editing/Ratings.h"
#include "reports/ReportLayout.h"

namespace inspector::reports {
namespace {

const Text kKey = u"HKEY_CURRENT_USER\\Software\\Brindlecove\\Inspector\\Report";
const Text kKind = u"Kind";
const Text kLayout = u"Layout";
const Text kRating = u"Rating";
const Text kPictures = u"Pictures";
const Text kFolder = u"Folder";
const Text kYes = u"yes";
const Text kNo = u"no";

// With its slash; empty when the name says nothing of one.
Text FolderOf(const Text& target) {
  return target.substr(0, target.find_last_of(u"/\\") + 1);
}

Text WithSlash(const Text& folder) {
  return folder.ends_with(u'/') || folder.ends_with(u'\\') ? folder : folder + u'/';
}

bool EndsWith(TextView target, TextView end) {
  return target.size() > end.size() &&
         device::EqualIgnoringCase(target.substr(target.size() - end.size()), end);
}

// "visit.HTML", but not "Elm St. 12" or "J.Smith".
bool HasExtension(TextView target) {
  const auto formats = Formats();
  return EndsWith(target, u".htm") ||
         std::any_of(formats.begin(), formats.end(), [&](const ReportFormat* format) {
           return !format->Used().folder && EndsWith(target, u"." + format->Question({}).defaultExtension);
         });
}

}  // namespace

ReportForm::ReportForm(data::Workspace& workspace, std::int32_t inspectionID)
    : m_Workspace(workspace),
      m_InspectionID(inspectionID),
      m_Kind(Formats().front()),
      m_Categories(workspace, inspectionID) {
  data::InspectionTable inspection(workspace.GetDatabases());
  inspection.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  m_Failed = !inspection.GetRecord(0);
  m_Header.documentNumber = inspection.m_InspectionNum;

  const device::Registry& registry = workspace.GetMachine().registry;
  if (const auto* const last = FindFormat(registry.Read(kKey, kKind).value_or(u""))) m_Kind = last;
  const ReportLayout* const layout = FindLayout(registry.Read(kKey, kLayout).value_or(u""));
  m_Choices.layout = layout != nullptr ? Text(layout->Name()) : LayoutOf(workspace, inspectionID);
  const std::vector<Text> ratings = editing::RatingsFor(workspace.GetDatabases(), inspectionID);
  m_Ratings.insert(m_Ratings.end(), ratings.begin(), ratings.end());
  const Text rating = registry.Read(kKey, kRating).value_or(u"");
  if (std::find(m_Ratings.begin(), m_Ratings.end(), rating) != m_Ratings.end()) m_Choices.rating = rating;
  m_Choices.pictures = registry.Read(kKey, kPictures) != kNo;
  m_LastFolder = registry.Read(kKey, kFolder).value_or(u"");
  // One that was removed, or whose card is out, is not made anew.
  std::error_code error;
  if (!std::filesystem::is_directory(workspace.GetMachine().paths.ResolveTyped(m_LastFolder), error))
    m_LastFolder.clear();
}

void ReportForm::ChooseKind(const ReportFormat& kind) {
  m_Kind = &kind;
  if (kind.Used().folder) return;
  // The name stays, with the end of another kind of file.
  const Text end = EndOf(kind);
  if (EndsWith(m_OwnFile, m_OwnEnd))
    m_OwnFile.replace(m_OwnFile.size() - m_OwnEnd.size(), m_OwnEnd.size(), end);
  m_OwnEnd = end;
}

Text ReportForm::EndOf(const ReportFormat& kind) const {
  return u"." + kind.Question(m_Header).defaultExtension;
}

// One for files and one for folders, so that a look at another kind forgets neither.
Text& ReportForm::OwnTarget() {
  return m_Kind->Used().folder ? m_OwnFolder : m_OwnFile;
}

Text ReportForm::Suggestion() const {
  const device::SaveQuestion question = m_Kind->Question(m_Header);
  const bool isElsewhere = !m_LastFolder.empty() && !m_Kind->Used().folder;
  return (isElsewhere ? m_LastFolder : question.folder) + question.suggestedName;
}

Text ReportForm::Target() const {
  const Text& own = m_Kind->Used().folder ? m_OwnFolder : m_OwnFile;
  return own.empty() || m_Kind->Used().ownFolder ? Suggestion() : own;
}

void ReportForm::ChooseTarget(const Text& target) {
  if (m_Kind->Used().ownFolder) return;
  OwnTarget() = target == Suggestion() ? Text() : target;
  if (!m_Kind->Used().folder) m_OwnEnd = EndOf(*m_Kind);
}

void ReportForm::ChooseAgreedTarget(const std::filesystem::path& target) {
  ChooseTarget(device::FromUtf8(target.native()));
  m_Agreed = target;
}

std::optional<device::SaveQuestion> ReportForm::SaveQuestion() const {
  if (m_Kind->Used().folder) return std::nullopt;
  device::SaveQuestion question = m_Kind->Question(m_Header);
  if (Target() == question.folder + question.suggestedName) return question;
  const std::filesystem::path file = Resolved();
  question.folder = device::FromUtf8(file.parent_path().native()) + u"/";
  question.suggestedName = device::FromUtf8(file.filename().native());
  return question;
}

// It says where the file lies, on the host or on the device.
bool ReportForm::IsWhole(TextView target) {
  return target.starts_with(u'/') || target.starts_with(u'\\') || target.starts_with(u"~/");
}

bool ReportForm::NamesFolder(const Text& target) const {
  if (target.ends_with(u'/') || target.ends_with(u'\\') || target == u"~" || target == u"..") return true;
  std::error_code error;
  return IsWhole(target) &&
         std::filesystem::is_directory(m_Workspace.GetMachine().paths.ResolveTyped(target), error);
}

Text ReportForm::WhyNot(TextView target) {
  if (target.empty()) return u"Say where the report is to be written.";
  const bool isElsewhere = target.starts_with(u"file:") || (target.size() > 1 && target[1] == u':');
  return isElsewhere ? u"Give the file by its folder and name, as in /home/ana/visit.rtf or \\My "
                       u"Documents\\visit.rtf."
                     : u"";
}

// What a person types without saying where lies with the other documents, and gets the end that it lacks.
std::filesystem::path ReportForm::Resolved() const {
  Text target = Target();
  // A folder means the usual name in it.
  if (!m_Kind->Used().folder && NamesFolder(target)) {
    target = WithSlash(target) + m_Kind->Question(m_Header).suggestedName;
  }
  if (!IsWhole(target)) target = u"\\My Documents\\" + target;
  if (!m_Kind->Used().folder && !HasExtension(target)) target += EndOf(*m_Kind);
  return m_Workspace.GetMachine().paths.ResolveTyped(target);
}

ReportOutcome ReportForm::Make() {
  const device::Machine& machine = m_Workspace.GetMachine();
  ReportRequest request{m_InspectionID, Text(m_Kind->Name()), m_Choices, std::nullopt};
  request.choices.deselected = m_Categories.Deselected();
  const bool isFolder = m_Kind->Used().folder;
  // A folder that was suggested goes by the device's own rules.
  if (!isFolder || Target() != Suggestion()) request.target = Resolved();
  if (!isFolder && *request.target != m_Agreed && machine.files.Exists(*request.target) &&
      !device::ConfirmLoss(machine.prompts, device::Format(u"%s already exists. Do you want to replace it?",
                                                           device::FromUtf8(request.target->native()))))
    return {ReportResult::Cancelled, {}, {}};
  ReportOutcome outcome = MakeReport(m_Workspace, request);
  if (outcome.result == ReportResult::Written) Remember();
  return outcome;
}

void ReportForm::Remember() {
  const device::Machine& machine = m_Workspace.GetMachine();
  if (!machine.registry.Write(kKey, kKind, Text(m_Kind->Name())) ||
      !machine.registry.Write(kKey, kLayout, m_Choices.layout) ||
      !machine.registry.Write(kKey, kRating, m_Choices.rating) ||
      !machine.registry.Write(kKey, kPictures, m_Choices.pictures ? kYes : kNo) ||
      (!m_OwnFile.empty() && !m_Kind->Used().folder &&
       !machine.registry.Write(kKey, kFolder,
                               NamesFolder(m_OwnFile) ? WithSlash(m_OwnFile) : FolderOf(m_OwnFile))))
    machine.faults.Report(machine.registry.LastError());
}

}  // namespace inspector::reports
