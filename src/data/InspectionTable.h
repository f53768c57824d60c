// Table Inspection: one row per inspection.
#pragma once

#include "data/TableRecordset.h"

namespace inspector::data {

// MERGE_Inspection has the same columns but the last.
class InspectionTable : public TableRecordset {
public:
  explicit InspectionTable(Databases& databases, TextView tableName = u"Inspection")
      : TableRecordset(databases, *FindLayout(tableName), tableName, InspectionTable::Members(*this)) {}

  std::int32_t m_InspectionID = 0;
  Text m_DwellingAddress;
  Text m_ClientName;
  Text m_ClientAddress;
  Text m_ClientCityStateZip;
  Text m_GeneralInformation;
  device::CalendarTime m_InspectionDate;
  Text m_DocType;
  std::int32_t m_Reserve8 = 0;
  std::int32_t m_Reserve9 = 0;
  std::int32_t m_Reserve10 = 0;
  Text m_InspectionNum;
  Text m_ClientPhone;
  Text m_CityStateZip;
  Text m_ClientAgent;
  Text m_ListingAgent;
  std::int32_t m_InspectionTypeID = 0;
  Text m_RealEstateCompany;
  Text m_PrivateNotes;

private:
  static std::vector<BoundMember> Members(InspectionTable& row) {
    return {&row.m_InspectionID,       &row.m_DwellingAddress,    &row.m_ClientName,     &row.m_ClientAddress,
            &row.m_ClientCityStateZip, &row.m_GeneralInformation, &row.m_InspectionDate, &row.m_DocType,
            &row.m_Reserve8,           &row.m_Reserve9,           &row.m_Reserve10,      &row.m_InspectionNum,
            &row.m_ClientPhone,        &row.m_CityStateZip,       &row.m_ClientAgent,    &row.m_ListingAgent,
            &row.m_InspectionTypeID,   &row.m_RealEstateCompany,  &row.m_PrivateNotes};
  }
};

}  // namespace inspector::data
