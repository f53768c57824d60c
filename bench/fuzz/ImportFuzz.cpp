// Any bytes as an export file: they must be cut without loss, every field must become a column, and what a
// column has become must survive being written and read once more.
#include <cstdlib>

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "device/CodePage.h"
#include "exchange/ExportFile.h"

namespace {

using namespace inspector;
using exchange::ExportField;
using exchange::FieldForm;

void MustHold(bool holds) {
  if (!holds) std::abort();
}

// Never opened: only the members of rows are used.
class NobodysPrompts : public device::Prompts {
public:
  device::Answer Show(const device::Message&) override { return device::Answer::Ok; }
  std::optional<device::Text> AskText(const device::TextQuestion&) override { return std::nullopt; }
  std::optional<std::filesystem::path> AskSavePath(const device::SaveQuestion&) override {
    return std::nullopt;
  }
  std::optional<device::DatabasePaths> AskDatabasePaths(const device::DatabasePaths&) override {
    return std::nullopt;
  }
  std::unique_ptr<device::ProgressWindow> OpenProgress(const device::Text&, bool) override { return nullptr; }
};

struct Rows {
  NobodysPrompts prompts;
  device::SystemClock clock;
  device::FaultLog faults{prompts, clock, "/dev/null"};
  data::Databases databases{"/dev/null", "/dev/null", faults, clock};
  data::InspectionTable inspection{databases, u"MERGE_Inspection"};
  data::CategoryTable category{databases, u"MERGE_Category"};
  data::StepTable step{databases, u"MERGE_Step"};
};

void TakeAll(data::TableRecordset& row, std::span<const ExportField> fields,
             const std::vector<device::TextView>& parts) {
  for (std::size_t n = 0; n < fields.size(); ++n)
    exchange::TakeField(row, fields[n], exchange::PartAt(parts, n + 1));
  for (std::size_t n = 0; n < fields.size(); ++n) {
    const device::Text text = exchange::FieldText(row, fields[n]);
    exchange::TakeField(row, fields[n], text);
    // A date takes its time along; it is put back by the field behind it.
    if (fields[n].written == fields[n].read && fields[n].read != FieldForm::Date)
      MustHold(exchange::FieldText(row, fields[n]) == text || fields[n].read == FieldForm::Time);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static Rows rows;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const exchange::ExportRecords found = exchange::RecordsOf(bytes);
  std::size_t at = 0;
  for (const std::string_view record : found.records) {
    MustHold(!record.empty() && record == bytes.substr(at, record.size()));
    at += record.size() + 1;
    exchange::IsHeader(record);
    const device::Text text = device::FromCodePage(record);
    MustHold(device::ToCodePage(text) == record);
    const std::vector<device::TextView> parts = exchange::RecordParts(text);
    device::Text joined(parts.front());
    for (std::size_t n = 1; n < parts.size(); ++n) joined.append(1, exchange::kFieldEnd).append(parts[n]);
    MustHold(joined == text && exchange::TagOf(record) == parts.front());
    if (parts.front() == exchange::kInspectionTag)
      TakeAll(rows.inspection, exchange::InspectionFields(), parts);
    if (parts.front() == exchange::kCategoryTag) TakeAll(rows.category, exchange::CategoryFields(), parts);
    if (parts.front() == exchange::kStepTag) TakeAll(rows.step, exchange::StepFields(), parts);
  }
  MustHold(at <= bytes.size() + 1);
  return 0;
}
