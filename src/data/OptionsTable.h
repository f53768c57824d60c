// Table Options: the one row of settings, texts and header labels.
#pragma once

#include <array>

#include "data/TableRecordset.h"

namespace inspector::data {

// Widths are inches, the font size is points (10 or 12), StepSpacing is 1 or 2.
class OptionsTable : public TableRecordset {
public:
  explicit OptionsTable(Databases& databases)
      : TableRecordset(databases, *FindLayout(u"Options"), OptionsTable::Members(*this)) {}

  // Reads the row and repairs what is out of range, in memory only. Without a row the next Write adds one;
  // when the row cannot be read, Write does nothing.
  void Load();
  // There is only one row: after it was added, a second Write updates it.
  bool Write();
  // An unknown font size becomes 12, an unknown spacing 2. True when something was.
  bool Repair();
  // That, and five widths of 0 become those of the first type's layout.
  void FollowRules();

  std::int32_t m_ShowStepNumbers = 0;
  std::int32_t m_BlankLineBetweenComments = 0;
  std::int32_t m_OmitPictures = 0;
  std::int32_t m_Reserve3 = 0;
  Text m_FinePrint;
  Text m_DefinitionOfTerms;
  Text m_FooterText;
  Text m_InspectorEntry;  // "name; licence"
  Text m_DataVersion;
  Text m_SummaryDisclaimer;
  std::array<double, 5> m_ColumnWidth{};
  std::int32_t m_OptionsID = 0;
  ByteArray m_ReportIcon = ByteArray(1, 0);
  std::int32_t m_ReportFontSize = 0;
  Text m_UserName;
  Text m_Pswrd;
  Text m_IPAddress;
  std::int32_t m_Port = 0;
  std::int32_t m_StepSpacing = 0;
  std::int32_t m_PrintTOC = 0;
  Text m_DefaultPath;
  // Dwelling address, client address, client's agent, doc type, real estate company, document number,
  // client name, date.
  std::array<Text, 8> m_HeaderLabel;
  std::int32_t m_NextPictNumber = 0;
  std::int32_t m_HideRatings = 0;
  std::int32_t m_Reserve35 = 0;
  std::int32_t m_Reserve36 = 0;
  std::int32_t m_Reserve37 = 0;
  std::int32_t m_DefStepTab = 0;
  Text m_ReportFontName;
  Text m_DefaultPictCardPath;

private:
  static std::vector<BoundMember> Members(OptionsTable& row);
  void RepairColumnWidths();
};

}  // namespace inspector::data
