#include "reports/ReportContent.h"

#include <algorithm>

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "editing/Materials.h"
#include "editing/RatingFlags.h"

namespace inspector::reports {
namespace {

ReportLabels LabelsOf(const data::OptionsTable& options) {
  const auto& own = options.m_HeaderLabel;
  if (own[0].empty()) return {};
  return {own[0], own[1], own[2], own[3], own[4], own[5], own[6], own[7]};
}

ReportHeader HeaderOf(const data::InspectionTable& inspection) {
  ReportHeader header;
  header.documentNumber = inspection.m_InspectionNum;
  header.date = device::FormatDate(inspection.m_InspectionDate);
  header.dwellingAddress = {inspection.m_DwellingAddress, inspection.m_CityStateZip};
  header.clientName = inspection.m_ClientName;
  header.clientAddress = {inspection.m_ClientAddress, inspection.m_ClientCityStateZip};
  header.clientAgent = inspection.m_ClientAgent;
  header.realEstateCompany = inspection.m_RealEstateCompany;
  return header;
}

class Collector {
public:
  Collector(data::Workspace& workspace, const StepSelection& selection, const std::vector<Text>& deselected)
      : m_Databases(workspace.GetDatabases()),
        m_Flags(workspace),
        m_Selection(selection),
        m_Deselected(deselected) {}

  // False when something could not be read.
  bool Read(std::int32_t inspectionID, std::vector<ReportSection>& sections) {
    const bool isRead = m_Selection.sections == StepSelection::Sections::Categories
                            ? ReadCategories(inspectionID, sections)
                            : ReadMajorSystems(inspectionID, sections);
    return isRead && !m_Flags.Failed();
  }

private:
  bool ReadCategories(std::int32_t inspectionID, std::vector<ReportSection>& sections) {
    data::CategoryTable table(m_Databases);
    table.OpenSQL(device::Format(
        u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
        inspectionID));
    if (table.Failed()) return false;
    for (int n = 0; n < table.RecordCount(); ++n) {
      if (!table.GetRecord(n)) return false;
      ReportSection& category = sections.emplace_back();
      category.categoryID = table.m_CategoryID;
      category.title = table.m_CategoryTitle;
      category.isSkipped = table.m_NotPresentFlag != 0 || IsDeselected(category.title);
      if (!category.isSkipped && !ReadStepsOf(category)) return false;
    }
    return true;
  }

  bool IsDeselected(const Text& title) const {
    return std::find(m_Deselected.begin(), m_Deselected.end(), title) != m_Deselected.end();
  }

  bool ReadStepsOf(ReportSection& category) {
    constexpr TextView kQuery =
        u"SELECT %s.* FROM %s INNER JOIN Category ON %s.CategoryID = Category.CategoryID WHERE "
        u"((((%s.Comments)>\" \") OR ((%s.Materials)>\" \") OR ((%s.InspectResult)>\" \") )AND "
        u"((Category.CategoryID)=%d)) ORDER BY StepNumber;";
    const Text& name = m_Steps.TableName();
    if (!OpenSteps(device::Format(kQuery, name, name, name, name, name, name, category.categoryID)))
      return false;
    category.steps.reserve(static_cast<std::size_t>(m_Steps.RecordCount()));
    for (int n = 0; n < m_Steps.RecordCount(); ++n) {
      if (!m_Steps.GetRecord(n)) return false;
      category.steps.push_back(CurrentStep());
    }
    return true;
  }

  bool ReadMajorSystems(std::int32_t inspectionID, std::vector<ReportSection>& sections) {
    constexpr TextView kQuery =
        u"SELECT Step.* FROM (Category INNER JOIN Inspection ON Category.InspectionID = "
        u"Inspection.InspectionID) INNER JOIN Step ON Category.CategoryID = Step.CategoryID WHERE "
        u"(((Inspection.InspectionID)= %d)) ORDER BY Step.MajorSystem, Step.StepNumber, Step.StepID;";
    if (!OpenSteps(device::Format(kQuery, inspectionID))) return false;
    for (int n = 0; n < m_Steps.RecordCount(); ++n) {
      if (!m_Steps.GetRecord(n)) return false;
      if (sections.empty() || sections.back().title != m_Steps.m_MajorSystem)
        sections.emplace_back().title = m_Steps.m_MajorSystem;
      sections.back().steps.push_back(CurrentStep());
    }
    return true;
  }

  bool OpenSteps(const Text& query) { return m_Steps.OpenSQL(query) && !m_Steps.Failed(); }

  ReportStep CurrentStep() {
    ReportStep step;
    step.number = m_Steps.m_StepNumber;
    step.title = m_Steps.m_StepTitle;
    step.rating = m_Steps.m_InspectResult;
    step.materials = editing::MaterialsForDisplay(m_Steps.m_Materials);
    step.comments = m_Steps.m_Comments;
    step.isBold = m_Flags.IsBold(m_Steps.m_RatingType, step.rating);
    step.isRed = m_Flags.IsRed(m_Steps.m_RatingType, step.rating);
    step.isSummary = m_Flags.IsSummary(m_Steps.m_RatingType, step.rating);
    step.isReported = m_Selection.isReported(step);
    return step;
  }

  data::Databases& m_Databases;
  editing::RatingFlags m_Flags;
  const StepSelection& m_Selection;
  const std::vector<Text>& m_Deselected;
  data::StepTable m_Steps{m_Databases};
};

}  // namespace

CollectResult CollectReport(data::Workspace& workspace, std::int32_t inspectionID,
                            const StepSelection& selection, const std::vector<Text>& deselected,
                            ReportContent& content) {
  const data::OptionsTable& options = workspace.Options();
  const data::ReadScope reading(workspace.InspectionConnection());
  data::InspectionTable inspection(workspace.GetDatabases());
  const bool isThere =
      inspection.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  if (!isThere || inspection.Failed()) return CollectResult::Failed;
  if (inspection.RecordCount() == 0) return CollectResult::NoSuchInspection;
  if (!inspection.GetRecord(0)) return CollectResult::Failed;

  content.company = ReadCompany(workspace);
  content.companyLines = content.company.Lines();
  content.header = HeaderOf(inspection);
  content.header.inspector = content.company.inspector;
  content.labels = LabelsOf(options);
  content.finePrint = options.m_FinePrint;
  content.definitionOfTerms = options.m_DefinitionOfTerms;
  content.generalInformation = inspection.m_GeneralInformation;
  content.footer = options.m_FooterText;
  content.summaryDisclaimer = options.m_SummaryDisclaimer;
  Collector collector(workspace, selection, deselected);
  return collector.Read(inspectionID, content.sections) ? CollectResult::Done : CollectResult::Failed;
}

}  // namespace inspector::reports
