#include "editing/VisitTexts.h"

#include "data/CommentsTable.h"
#include "data/FieldTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "inspection/HeaderFields.h"

namespace inspector::editing {
namespace {

using device::Format;
using Kind = VisitText::Kind;

class VisitReader {
public:
  explicit VisitReader(inspection::CInspectorDoc& document)
      : m_Document(document), m_Databases(document.GetWorkspace().GetDatabases()) {}

  void ReadHeader() {
    const data::InspectionTable& inspection = m_Document.Inspection();
    for (const auto& [kind, name] : {std::pair{Kind::General, u"general"}, {Kind::Notes, u"notes"}}) {
      const inspection::HeaderField& field = *inspection::FindHeaderField(name);
      Add(kind, inspection.m_InspectionID, {Text(field.caption)}, inspection.*field.text);
    }
  }

  bool ReadCategories() {
    data::CategoryTable categories(m_Databases);
    categories.OpenSQL(Format(u"SELECT * FROM Category WHERE InspectionID = %d Order By CategoryNumber",
                              m_Document.Inspection().m_InspectionID));
    for (int n = 0; n < categories.RecordCount(); ++n) {
      if (!categories.GetRecord(n)) continue;
      m_CategoryID = categories.m_CategoryID;
      const bool isRead = categories.m_Type == kFormCategory ? ReadFields(categories.m_CategoryTitle)
                                                             : ReadSteps(categories.m_CategoryTitle);
      if (!isRead) return false;
    }
    return !categories.Failed();
  }

  std::vector<VisitText> Take() { return std::move(m_Texts); }

private:
  bool ReadSteps(const Text& category) {
    data::StepTable steps(m_Databases);
    steps.OpenSQL(Format(u"SELECT * FROM Step WHERE CategoryID = %d Order By StepNumber", m_CategoryID));
    for (int n = 0; n < steps.RecordCount(); ++n) {
      if (!steps.GetRecord(n)) continue;
      const Text step = Format(u"%s %s", steps.m_StepNumber, steps.m_StepTitle);
      Add(Kind::Comments, steps.m_StepID, {category, step, u"Comments"}, steps.m_Comments);
      Add(Kind::Summary, steps.m_StepID, {category, step, u"Summary"}, steps.m_SummaryComment);
      Add(Kind::MaterialNote, steps.m_StepID, {category, step, u"Materials"}, steps.m_MaterialNote);
    }
    return !steps.Failed();
  }

  bool ReadFields(const Text& category) {
    data::FieldTable fields(m_Databases);
    fields.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By SequenceNumber",
                          fields.TableName(), m_CategoryID));
    for (int n = 0; n < fields.RecordCount(); ++n)
      if (fields.GetRecord(n))
        Add(Kind::Field, fields.m_ID, {category, fields.m_FieldLabel}, fields.m_AssignedValue);
    return !fields.Failed();
  }

  void Add(Kind kind, std::int32_t id, std::vector<Text> where, const Text& text) {
    if (!text.empty()) m_Texts.push_back({kind, id, m_CategoryID, std::move(where), text});
  }

  inspection::CInspectorDoc& m_Document;
  data::Databases& m_Databases;
  std::int32_t m_CategoryID = 0;
  std::vector<VisitText> m_Texts;
};

}  // namespace

std::optional<std::vector<VisitText>> TextsOfVisit(inspection::CInspectorDoc& document) {
  const data::ReadScope reading(document.GetWorkspace().InspectionConnection());
  VisitReader reader(document);
  reader.ReadHeader();
  if (!reader.ReadCategories()) return std::nullopt;
  return reader.Take();
}

std::optional<std::vector<Text>> TextsOfLibrary(data::Databases& databases) {
  const data::ReadScope reading(databases.Template());
  data::CommentsTable comments(databases);
  comments.Open();
  std::vector<Text> texts;
  for (int n = 0; n < comments.RecordCount(); ++n)
    if (comments.GetRecord(n)) texts.push_back(comments.m_Comments);
  if (comments.Failed()) return std::nullopt;
  return texts;
}

}  // namespace inspector::editing
