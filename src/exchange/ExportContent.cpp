#include "exchange/ExportContent.h"

#include <set>

#include "data/CategoryTable.h"
#include "data/FieldTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "device/CodePage.h"
#include "device/Format.h"
#include "editing/PictureTags.h"
#include "exchange/ExportFormat.h"
#include "reports/ReportCompany.h"
#include "reports/ReportPictures.h"

namespace inspector::exchange {
namespace {

using device::Format;
using reports::CollectResult;

// Records one after the other into the bytes of a part.
class Records {
public:
  explicit Records(ExportContent& content) : m_Content(content) {}

  // `owner` is what a person knows the record by.
  void Begin(std::string& out, TextView tag, Text owner) {
    m_Out = &out;
    m_Owner = std::move(owner);
    End(tag, kFieldEnd);
    ++m_Content.records;
  }
  void Add(TextView caption, TextView value) {
    Check(caption, value);
    End(value, kFieldEnd);
  }
  void AddAll(const data::TableRecordset& row, std::span<const ExportField> fields) {
    for (const ExportField& field : fields) Add(field.caption, FieldText(row, field));
  }
  void Finish() { End({}, kRecordEnd); }

private:
  void End(TextView text, char16_t end) {
    device::AppendCodePage(*m_Out, text);
    device::AppendCodePage(*m_Out, TextView(&end, 1));
  }
  void Check(TextView caption, TextView value) {
    if (value.find(kFieldEnd) != TextView::npos || value.find(kRecordEnd) != TextView::npos)
      m_Content.faults.push_back(
          Format(u"%s, %s: holds \u00A4 or \u00A7, where a reader cuts it.", m_Owner, caption));
    if (!device::FitsCodePage(value))
      m_Content.faults.push_back(Format(u"%s, %s: holds characters that become \"?\".", m_Owner, caption));
  }

  ExportContent& m_Content;
  std::string* m_Out = nullptr;
  Text m_Owner;
};

// The element that the company's only field is. Values are not escaped, on purpose.
Text CompanyElement(const reports::ReportCompany& company) {
  Text element = u"<InspectionCompany";
  const auto add = [&](TextView name, TextView value) {
    element.append(u" ").append(name).append(u"= \"").append(value).append(u"\"");
  };
  const auto [name, street, cityStateZip] = company.Lines();
  add(u"Name", name);
  add(u"ContactName", company.InspectorName());
  add(u"Address", street);
  add(u"CSZ", cityStateZip);
  add(u"Phone_Work", company.phone);
  add(u"Phone_Fax", company.fax);
  add(u"Email", u"Not currently supported.");
  return element + u" />";
}

// "Step 20.1 Shingles".
Text Named(TextView kind, TextView number, TextView title) {
  Text name(kind);
  for (const TextView part : {number, title})
    if (!part.empty()) name.append(u" ").append(part);
  return name;
}

class Collector {
public:
  Collector(data::Workspace& workspace, ExportContent& content)
      : m_Workspace(workspace), m_Content(content), m_Records(content) {}

  void AddBeginning(const data::InspectionTable& inspection) {
    const reports::ReportCompany company = reports::ReadCompany(m_Workspace);
    std::string& out = m_Content.beginning;
    m_Records.Begin(out, kHeaderTag, {});
    m_Records.Finish();
    m_Records.Begin(out, kCompanyTag, u"The company");
    m_Records.Add(u"owner's record", CompanyElement(company));
    m_Records.Finish();
    m_Records.Begin(out, kInspectionTag, u"The inspection");
    m_Records.AddAll(inspection, InspectionFields());
    if (inspection.HasUnreadDate())
      m_Content.faults.push_back(u"The inspection, date: what is stored there is none; it stays empty.");
    m_Records.Add(u"inspector", company.inspector);
    m_Records.Finish();
  }

  // False when something could not be read.
  bool AddCategories(std::int32_t inspectionID) {
    data::CategoryTable categories(m_Workspace.GetDatabases());
    categories.OpenSQL(
        Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
               inspectionID));
    if (categories.Failed()) return false;
    for (int n = 0; n < categories.RecordCount(); ++n) {
      if (!categories.GetRecord(n)) return false;
      std::string& out = m_Content.categories.emplace_back();
      m_Records.Begin(out, kCategoryTag,
                      Named(u"Category", categories.m_CategoryNumber, categories.m_CategoryTitle));
      m_Records.AddAll(categories, CategoryFields());
      m_Records.Finish();
      if (!AddSteps(categories.m_CategoryID, out) || !CountFields(categories.m_CategoryID)) return false;
    }
    const Text house = reports::ReportPictures::HousePhotoPath(m_Content.documentNumber);
    if (reports::ReportPictures(m_Workspace.GetMachine(), m_Workspace.Options().m_DefaultPictCardPath, true)
            .Exists(house))
      m_Pictures.insert(house);
    m_Content.pictures = static_cast<int>(m_Pictures.size());
    return true;
  }

private:
  bool AddSteps(std::int32_t categoryID, std::string& out) {
    m_Steps.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", m_Steps.TableName(),
                           categoryID));
    if (m_Steps.Failed()) return false;
    for (int n = 0; n < m_Steps.RecordCount(); ++n) {
      if (!m_Steps.GetRecord(n)) return false;
      m_Records.Begin(out, kStepTag, Named(u"Step", m_Steps.m_StepNumber, m_Steps.m_StepTitle));
      m_Records.AddAll(m_Steps, StepFields());
      m_Records.Finish();
      for (const Text* const words : {&m_Steps.m_Comments, &m_Steps.m_SummaryComment})
        for (Text& tag : editing::DistinctTags(*words)) m_Pictures.insert(std::move(tag));
      if (!m_Steps.m_BitmapPath.empty()) m_Pictures.insert(m_Steps.m_BitmapPath);
    }
    return true;
  }

  bool CountFields(std::int32_t categoryID) {
    m_Fields.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d", m_Fields.TableName(), categoryID));
    m_Content.formFields += m_Fields.RecordCount();
    return !m_Fields.Failed();
  }

  data::Workspace& m_Workspace;
  ExportContent& m_Content;
  Records m_Records;
  data::StepTable m_Steps{m_Workspace.GetDatabases()};
  data::FieldTable m_Fields{m_Workspace.GetDatabases()};
  std::set<Text> m_Pictures;
};

}  // namespace

CollectResult CollectExport(data::Workspace& workspace, std::int32_t inspectionID, ExportContent& content) {
  const data::ReadScope reading(workspace.InspectionConnection());
  data::InspectionTable inspection(workspace.GetDatabases());
  const bool isThere =
      inspection.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  if (!isThere || inspection.Failed()) return CollectResult::Failed;
  if (inspection.RecordCount() == 0) return CollectResult::NoSuchInspection;
  if (!inspection.GetRecord(0)) return CollectResult::Failed;
  content.documentNumber = inspection.m_InspectionNum;
  content.hasPrivateNotes = !inspection.m_PrivateNotes.empty();
  Collector collector(workspace, content);
  collector.AddBeginning(inspection);
  return collector.AddCategories(inspectionID) ? CollectResult::Done : CollectResult::Failed;
}

}  // namespace inspector::exchange
