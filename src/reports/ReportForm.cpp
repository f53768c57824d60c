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
const Text kYes = u"yes";
const Text kNo = u"no";

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
  const std::vector<Text> ratings = Ratings();
  const Text rating = registry.Read(kKey, kRating).value_or(u"");
  if (std::find(ratings.begin(), ratings.end(), rating) != ratings.end()) m_Choices.rating = rating;
  m_Choices.pictures = registry.Read(kKey, kPictures) != kNo;
  Suggest();
}

std::vector<Text> ReportForm::Ratings() {
  std::vector<Text> ratings = editing::AllChoices(m_Workspace.GetDatabases());
  ratings.insert(ratings.begin(), Text(kAllRatings));
  return ratings;
}

void ReportForm::ChooseKind(const ReportFormat& kind) {
  const bool wasFolder = m_Kind->Used().folder;
  m_Kind = &kind;
  // A name that was chosen for a file is none for a folder, nor has it the right end for another kind of
  // file.
  if (m_IsTargetChosen && !wasFolder && !kind.Used().folder) {
    const std::size_t end = m_Target.find_last_of(u"./\\");
    if (end != Text::npos && m_Target[end] == u'.')
      m_Target = m_Target.substr(0, end + 1) + kind.Question(m_Header).defaultExtension;
    return;
  }
  Suggest();
}

void ReportForm::Suggest() {
  const device::SaveQuestion question = m_Kind->Question(m_Header);
  m_Target = question.folder + question.suggestedName;
  m_IsTargetChosen = false;
}

void ReportForm::ChooseTarget(const Text& target) {
  if (target == m_Target) return;
  m_Target = target;
  m_IsTargetChosen = true;
}

void ReportForm::ChooseAgreedTarget(const std::filesystem::path& target) {
  ChooseTarget(device::FromUtf8(target.native()));
  m_Agreed = target;
}

std::optional<device::SaveQuestion> ReportForm::SaveQuestion() const {
  if (m_Kind->Used().folder) return std::nullopt;
  return m_Kind->Question(m_Header);
}

ReportOutcome ReportForm::Make() {
  const device::Machine& machine = m_Workspace.GetMachine();
  ReportRequest request{m_InspectionID, Text(m_Kind->Name()), m_Choices, std::nullopt};
  request.choices.deselected = m_Categories.Deselected();
  const bool isFolder = m_Kind->Used().folder;
  if (m_Target.find_first_not_of(u' ') == Text::npos) {
    device::ShowError(machine.prompts, u"Say where the report is to be written.");
    return {};
  }
  // A folder that was suggested goes by the device's own rules.
  if (!isFolder || m_IsTargetChosen) request.target = machine.paths.ResolveTyped(m_Target);
  if (!isFolder && *request.target != m_Agreed && machine.files.Exists(*request.target) &&
      !device::ConfirmCaution(machine.prompts,
                              device::Format(u"%s already exists. Do you want to replace it?",
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
      !machine.registry.Write(kKey, kPictures, m_Choices.pictures ? kYes : kNo))
    machine.faults.Report(machine.registry.LastError());
}

}  // namespace inspector::reports
