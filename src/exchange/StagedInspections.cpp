#include "exchange/StagedInspections.h"

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "device/Format.h"

namespace inspector::exchange {
namespace {

using device::Format;

std::optional<std::vector<StagedInspection>> Read(data::Databases& databases, const Text& query) {
  const data::ReadScope reading(databases.Inspection());
  data::InspectionTable inspection(databases, u"MERGE_Inspection");
  data::CategoryTable categories(databases, u"MERGE_Category");
  data::StepTable steps(databases, u"MERGE_Step");
  std::vector<StagedInspection> staged;
  inspection.OpenSQL(query);
  for (int n = 0; n < inspection.RecordCount(); ++n) {
    if (!inspection.GetRecord(n)) return std::nullopt;
    const std::int32_t key = inspection.m_InspectionID;
    categories.OpenSQL(Format(u"SELECT * FROM MERGE_Category WHERE InspectionID = %d", key));
    steps.OpenSQL(Format(
        u"SELECT MERGE_Step.* FROM MERGE_Category INNER JOIN MERGE_Step ON MERGE_Category.CategoryID = "
        u"MERGE_Step.CategoryID WHERE (((MERGE_Category.InspectionID)= %d));",
        key));
    if (categories.Failed() || steps.Failed()) return std::nullopt;
    staged.push_back({key, inspection.m_ClientName, inspection.m_DwellingAddress, inspection.m_InspectionNum,
                      categories.RecordCount(), steps.RecordCount()});
  }
  return inspection.Failed() ? std::nullopt : std::optional(std::move(staged));
}

}  // namespace

std::optional<std::vector<StagedInspection>> ReadStaged(data::Databases& databases) {
  return Read(databases, u"SELECT * FROM MERGE_Inspection");
}

bool DiscardStaged(data::Workspace& workspace, const StagedInspection& staged) {
  const Text question = Format(
      u"Delete this imported inspection?\n\nClient Name: %s\nDwelling Address: %s\nDoc #: %s\n\nThe file "
      u"that it "
      u"came from stays, and can be imported again.",
      staged.client, staged.address, staged.documentNumber);
  if (!device::ConfirmCaution(workspace.GetPrompts(), question)) return false;
  data::Databases& databases = workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return false;
  data::CategoryTable categories(databases, u"MERGE_Category");
  data::StepTable steps(databases, u"MERGE_Step");
  categories.OpenSQL(Format(u"SELECT * FROM MERGE_Category WHERE InspectionID = %d", staged.inspectionID));
  if (categories.Failed()) return false;
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (!categories.GetRecord(n)) return false;
    steps.OpenSQL(Format(u"DELETE FROM MERGE_Step WHERE CategoryID = %d", categories.m_CategoryID));
    if (steps.Failed()) return false;
  }
  for (const device::TextView table :
       {device::TextView(u"MERGE_Category"), device::TextView(u"MERGE_Inspection")}) {
    categories.OpenSQL(Format(u"DELETE FROM %s WHERE InspectionID = %d", table, staged.inspectionID));
    if (categories.Failed()) return false;
  }
  return transaction.Commit();
}

std::optional<StagedInspection> FindStaged(data::Databases& databases, std::int32_t inspectionID) {
  auto found =
      Read(databases, Format(u"SELECT * FROM MERGE_Inspection WHERE InspectionID = %d", inspectionID));
  if (!found || found->empty()) return std::nullopt;
  return std::move(found->front());
}

}  // namespace inspector::exchange
