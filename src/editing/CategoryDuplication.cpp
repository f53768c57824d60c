#include "editing/CategoryDuplication.h"

#include "data/StepTemplateTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/NumberedTitle.h"
#include "inspection/InspectionRows.h"

namespace inspector::editing {
namespace {

using device::Format;

// A step's number under another category: "20.07a" becomes "21.07a".
Text UnderCategory(const Text& stepNumber, const Text& categoryNumber) {
  const std::size_t dot = stepNumber.find(u'.');
  return categoryNumber + u"." + (dot == Text::npos ? stepNumber : stepNumber.substr(dot + 1));
}

}  // namespace

CategoryDuplication::CategoryDuplication(data::Workspace& workspace, const data::CategoryTable& source)
    : m_Workspace(workspace),
      m_Databases(workspace.GetDatabases()),
      m_Source(m_Databases),
      m_Copy(m_Databases) {
  data::CopyColumns(source, m_Source);
}

std::optional<int> CategoryDuplication::CountOfTemplate() {
  data::CategoryTable same(m_Databases);
  same.OpenSQL(Format(u"SELECT * FROM %s WHERE ((InspectionID = %d) AND (CategoryTemplateID = %d))",
                      same.TableName(), m_Source.m_InspectionID, m_Source.m_CategoryTemplateID));
  return same.Failed() ? std::nullopt : std::optional(same.RecordCount());
}

std::optional<EditingDialogs::CategoryCopies> CategoryDuplication::Suggest() {
  const std::optional<int> count = CountOfTemplate();
  if (!count) return std::nullopt;
  return EditingDialogs::CategoryCopies{NumberedTitle(BaseNameOf(m_Source.m_CategoryTitle), *count + 1)};
}

// As it is stored now: another program may have changed or deleted it while the dialog was open.
bool CategoryDuplication::ReadSource() {
  const std::int32_t key = m_Source.m_CategoryID;
  m_Source.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryID = %d", key));
  if (m_Source.Failed()) return false;
  if (m_Source.GetRecord(0)) return true;
  m_Databases.Inspection().ReportVanishedRow(m_Source.TableName());
  return false;
}

bool CategoryDuplication::Make(const EditingDialogs::CategoryCopies& wanted) {
  m_LeftOut.clear();
  m_IsCancelled = false;
  const bool made = MakeAll(wanted);
  if (m_IsCancelled)
    device::Alert(m_Workspace.GetPrompts(),
                  Format(u"Cancelled. %s was not duplicated.", m_Source.m_CategoryTitle));
  if (!made) return false;
  for (const int step : m_LeftOut)
    device::Alert(
        m_Workspace.GetPrompts(),
        Format(u"Incorrect number of  StepTemplate records for this step. ERROR INFO: i = %d", step));
  return true;
}

// All or nothing.
bool CategoryDuplication::MakeAll(const EditingDialogs::CategoryCopies& wanted) {
  const Text baseName = BaseNameOf(m_Source.m_CategoryTitle);
  const data::ReadScope reading(m_Databases.Template());
  data::Transaction transaction(m_Databases.Inspection());
  if (!transaction.IsOpen() || !ReadSource()) return false;
  const auto progress = m_Workspace.GetPrompts().OpenProgress(u"Duplicate Category", true);
  progress->SetRange(0, wanted.copies);
  const std::optional<int> count = CountOfTemplate();
  if (!count) return false;
  Text title = device::StripLeadingControls(wanted.name);
  m_LastNumber = device::LeadingInteger(m_Source.m_CategoryNumber);
  for (int made = 0, number = *count + 1; made < wanted.copies; ++made) {
    m_IsCancelled = progress->Cancelled();
    if (m_IsCancelled) return false;
    progress->SetStatus(title);
    if (!MakeCopy(title, wanted.withData)) return false;
    progress->Step();
    if (made == 0) m_FirstCopy = m_Copy.m_CategoryID;
    title = NumberedTitle(baseName, ++number);
  }
  return transaction.Commit();
}

// The numbers up to the last one found are taken by now.
bool CategoryDuplication::FindFreeNumber() {
  data::CategoryTable taken(m_Databases);
  do {
    ++m_LastNumber;
    taken.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryNumber = %d", m_LastNumber));
  } while (!taken.Failed() && taken.RecordCount() > 0);
  return !taken.Failed();
}

bool CategoryDuplication::MakeCopy(const Text& title, bool withData) {
  if (!FindFreeNumber()) return false;
  m_Copy.PrepareNew();
  m_Copy.m_CategoryID = data::NextInspectionID(m_Databases, u"InspectionCategory");
  m_Copy.m_CategoryTitle = title;
  m_Copy.m_CategoryNumber = Format(u"%d", m_LastNumber);
  m_Copy.m_InspectionID = m_Source.m_InspectionID;
  m_Copy.m_CategoryTemplateID = m_Source.m_CategoryTemplateID;
  m_Copy.m_Type = m_Source.m_Type;
  if (withData) {
    m_Copy.m_Remarks = m_Source.m_Remarks;
    m_Copy.m_CommentText = m_Source.m_CommentText;
    m_Copy.m_CompleteFlag = m_Source.m_CompleteFlag;
    m_Copy.m_NotPresentFlag = m_Source.m_NotPresentFlag;
  }
  if (!m_Copy.Write()) return false;
  if (withData)
    return CopySteps(m_Copy.m_CategoryID) &&
           inspection::DuplicateFields(m_Databases, m_Source.m_CategoryID, m_Copy.m_CategoryID);
  return CreateSteps(m_Databases, m_Copy.m_CategoryTemplateID, m_Copy.m_CategoryID).has_value();
}

// Nothing when that cannot be told: a finding must not stay behind because a read failed.
std::optional<bool> CategoryDuplication::HasTemplate(std::int32_t stepTemplateID) {
  data::StepTemplateTable templates(m_Databases);
  templates.OpenSQL(Format(u"SELECT * FROM StepTemplate WHERE ID = %d", stepTemplateID));
  return templates.Failed() ? std::nullopt : std::optional(templates.RecordCount() > 0);
}

bool CategoryDuplication::CopySteps(std::int32_t targetCategory) {
  data::StepTable steps(m_Databases);
  steps.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", steps.TableName(),
                       m_Source.m_CategoryID));
  data::UniqueIDTable uniqueIDs(m_Databases, data::DatabaseKind::Inspection);
  data::KeyRange keys = uniqueIDs.TakeIDs(u"Step", steps.RecordCount());
  data::StepTable copy(m_Databases);
  for (int i = 0; i < steps.RecordCount(); ++i) {
    if (!steps.GetRecord(i)) return false;
    const std::optional<bool> hasTemplate = HasTemplate(steps.m_StepTemplateID);
    if (!hasTemplate) return false;
    if (!*hasTemplate) {
      m_LeftOut.push_back(i);
      continue;
    }
    copy.PrepareNew();
    data::CopyColumns(steps, copy);
    copy.m_StepID = keys.Next();
    copy.m_CategoryID = targetCategory;
    copy.m_StepNumber = UnderCategory(steps.m_StepNumber, m_Copy.m_CategoryNumber);
    if (!copy.Write()) return false;
  }
  return !steps.Failed();
}

}  // namespace inspector::editing
