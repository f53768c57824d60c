#include "editing/FieldForm.h"

#include "device/Format.h"
#include "editing/AddressCaption.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "inspection/HeaderFields.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr TextView kEditList = u"Edit List...";
constexpr TextView kDigits = u"0123456789";

FieldKind KindOf(std::int32_t code) {
  const bool known =
      code >= static_cast<int>(FieldKind::Words) && code <= static_cast<int>(FieldKind::Picker);
  return known ? static_cast<FieldKind>(code) : FieldKind::Words;
}

// Digits with an optional sign and one decimal point or comma.
bool IsNumber(TextView text) {
  if (text.starts_with(u'-') || text.starts_with(u'+')) text.remove_prefix(1);
  const std::size_t point = text.find_first_of(u".,");
  const TextView whole = text.substr(0, point);
  const TextView fraction = point == TextView::npos ? TextView() : text.substr(point + 1);
  return whole.size() + fraction.size() > 0 && whole.find_first_not_of(kDigits) == TextView::npos &&
         fraction.find_first_not_of(kDigits) == TextView::npos;
}

// As FormatDate writes it.
bool IsDate(TextView text) {
  const std::vector<Text> parts = device::Split(text, u'/');
  if (parts.size() != 3) return false;
  for (const Text& part : parts)
    if (part.empty() || part.size() > 4 || part.find_first_not_of(kDigits) != Text::npos) return false;
  return device::IsValid(device::MakeCalendarTime(
      device::LeadingInteger(parts[2]), device::LeadingInteger(parts[0]), device::LeadingInteger(parts[1])));
}

}  // namespace

Text DoubtAbout(FieldKind kind, TextView value) {
  if (value.empty()) return {};
  if (kind == FieldKind::Number && !IsNumber(value)) return u"This is no number.";
  if (kind == FieldKind::Date && !IsDate(value)) return u"This is no date: month/day/year, as 5/28/2026.";
  return {};
}

FieldForm::FieldForm(inspection::CInspectorDoc& document, EditingDialogs& dialogs)
    : m_Document(document),
      m_Dialogs(dialogs),
      m_Databases(document.GetWorkspace().GetDatabases()),
      m_Fields(m_Databases) {}

bool FieldForm::Show() {
  m_Document.FinishDocTypeChange();
  const bool opened = OpenCategory(m_Databases, m_Document.Categories());
  m_CategoryID = m_Document.Categories().m_CategoryID;
  const Text& table = m_Fields.TableName();
  m_Fields.OpenSQL(Format(u"SELECT * FROM %s WHERE %s.CategoryID = %d Order By %s.SequenceNumber", table,
                          table, m_CategoryID, table));
  return opened && !m_Fields.Failed();
}

Text FieldForm::Caption() const {
  return AddressCaption(m_Document.Inspection());
}

std::optional<FieldForm::Field> FieldForm::FieldAt(int field) {
  if (!m_Fields.GetRecord(field)) return std::nullopt;
  const FieldKind kind = KindOf(m_Fields.m_FieldType);
  return Field{m_Fields.m_FieldLabel, kind, m_Fields.m_AssignedValue,
               DoubtAbout(kind, m_Fields.m_AssignedValue)};
}

int FieldForm::EmptyFields() {
  const data::ReadScope reading(m_Databases.Inspection());
  int empty = 0;
  for (int field = 0; field < FieldCount(); ++field)
    if (m_Fields.GetRecord(field) && m_Fields.m_AssignedValue.empty()) ++empty;
  return empty;
}

Text FieldForm::LeftCaption() {
  return Format(u"%d of %d fields empty", EmptyFields(), FieldCount());
}

std::vector<Text> FieldForm::Choices(int field) {
  const std::optional<Field> shown = FieldAt(field);
  if (shown && shown->kind == FieldKind::YesNo) return {u"Yes", u"No"};
  if (!shown || shown->kind != FieldKind::Picker) return {};
  return inspection::PickerChoices(m_Databases, {{}, {}, nullptr, shown->label, shown->label});
}

bool FieldForm::Enter(int field, TextView value) {
  const std::optional<Field> shown = FieldAt(field);
  if (!shown) {
    if (!m_Fields.Failed()) m_Databases.Inspection().ReportVanishedRow(m_Fields.TableName());
    return false;
  }
  if (shown->kind == FieldKind::Picker && value == kEditList) {
    EditList(field);
    return true;
  }
  const Text entered = device::StripLeadingControls(value);
  if (entered == shown->value) return true;
  data::Transaction transaction(m_Databases.Inspection());
  if (!transaction.IsOpen() || !m_Fields.GetRecord(field)) return false;
  m_Fields.m_AssignedValue = entered;
  return m_Fields.Write() && transaction.Commit();
}

void FieldForm::EditList(int field) {
  if (const std::optional<Field> shown = FieldAt(field)) m_Dialogs.OpenPickerEditor(shown->label);
}

bool FieldForm::Leave() {
  data::CategoryTable category(m_Databases);
  category.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryID = %d", m_CategoryID));
  const std::optional<bool> complete = IsComplete(m_Databases, m_CategoryID);
  if (!complete || category.Failed()) return false;
  if (!category.GetRecord(0) || (category.m_CompleteFlag != 0) == *complete) return !category.Failed();
  data::Transaction transaction(m_Databases.Inspection());
  const bool written =
      transaction.IsOpen() && RecomputeComplete(m_Databases, m_CategoryID) && transaction.Commit();
  m_Document.LoadCategories();
  return written;
}

}  // namespace inspector::editing
