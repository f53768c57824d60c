#include "data/OptionsTable.h"

#include <algorithm>

#include "data/InspectionTypeTable.h"

namespace inspector::data {
namespace {

constexpr std::array<double, 5> kFourColumnWidths = {0.6, 1.28, 1.12, 1.0, 1.75};
constexpr std::array<double, 5> kOtherWidths = {0.73, 1.23, 4.19, 0, 0};

}  // namespace

std::vector<BoundMember> OptionsTable::Members(OptionsTable& row) {
  auto& width = row.m_ColumnWidth;
  auto& label = row.m_HeaderLabel;
  return {&row.m_ShowStepNumbers,
          &row.m_BlankLineBetweenComments,
          &row.m_OmitPictures,
          &row.m_Reserve3,
          &row.m_FinePrint,
          &row.m_DefinitionOfTerms,
          &row.m_FooterText,
          &row.m_InspectorEntry,
          &row.m_DataVersion,
          &row.m_SummaryDisclaimer,
          &width[0],
          &width[1],
          &width[2],
          &width[3],
          &width[4],
          &row.m_OptionsID,
          &row.m_ReportIcon,
          &row.m_ReportFontSize,
          &row.m_UserName,
          &row.m_Pswrd,
          &row.m_IPAddress,
          &row.m_Port,
          &row.m_StepSpacing,
          &row.m_PrintTOC,
          &row.m_DefaultPath,
          &label[0],
          &label[1],
          &label[2],
          &label[3],
          &label[4],
          &label[5],
          &label[6],
          &label[7],
          &row.m_NextPictNumber,
          &row.m_HideRatings,
          &row.m_Reserve35,
          &row.m_Reserve36,
          &row.m_Reserve37,
          &row.m_DefStepTab,
          &row.m_ReportFontName,
          &row.m_DefaultPictCardPath};
}

void OptionsTable::Load() {
  const bool opened = Open() && !Failed();
  if (!GetRecord(0) && opened && !Failed()) PrepareNew();
  FollowRules();
}

void OptionsTable::FollowRules() {
  Repair();
  if (std::all_of(m_ColumnWidth.begin(), m_ColumnWidth.end(), [](double width) { return width == 0; }))
    RepairColumnWidths();
}

bool OptionsTable::Repair() {
  const bool badSize = m_ReportFontSize != 10 && m_ReportFontSize != 12;
  const bool badSpacing = m_StepSpacing != 1 && m_StepSpacing != 2;
  if (badSize) m_ReportFontSize = 12;
  if (badSpacing) m_StepSpacing = 2;
  return badSize || badSpacing;
}

bool OptionsTable::Write() {
  const int rows = RecordCount();
  if (!TableRecordset::Write()) return false;
  // The members hold what has just been written, so reading the new row changes none of them.
  return RecordCount() == rows || GetRecord(rows);
}

void OptionsTable::RepairColumnWidths() {
  InspectionTypeTable types(GetDatabases());
  const bool isFourColumn =
      types.Open() && types.GetRecord(0) && device::EqualIgnoringCase(types.m_Layout, u"4 Column");
  m_ColumnWidth = isFourColumn ? kFourColumnWidths : kOtherWidths;
}

}  // namespace inspector::data
