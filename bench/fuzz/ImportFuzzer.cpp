// Any bytes as an export file: they must be cut without loss, every field must become a column, and what a
// column has become must survive being written and read once more.
#include "../UnattendedPrompts.h"
#include "Fuzzer.h"
#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "device/CodePage.h"
#include "exchange/ExportFile.h"

namespace inspector::fuzz {
namespace {

using exchange::ExportField;

// Never opened: only the members of rows are used.
struct Rows {
  bench::UnattendedPrompts prompts;
  device::SystemClock clock;
  device::FaultLog faults{prompts, clock, "/dev/null"};
  data::Databases databases{"/dev/null", "/dev/null", faults, clock};
  data::InspectionTable inspection{databases, u"MERGE_Inspection"};
  data::CategoryTable category{databases, u"MERGE_Category"};
  data::StepTable step{databases, u"MERGE_Step"};
};

// From the n-th text of `texts` on.
template <typename Texts>
void Take(data::TableRecordset& row, std::span<const ExportField> fields, const Texts& texts,
          std::size_t first) {
  for (std::size_t n = 0; n < fields.size() && first + n < texts.size(); ++n)
    exchange::TakeField(row, fields[n], texts[first + n]);
}

void TryRow(data::TableRecordset& row, std::span<const ExportField> fields,
            const std::vector<device::TextView>& parts) {
  const auto written = [&] {
    std::vector<device::Text> texts;
    for (const ExportField& field : fields) texts.push_back(exchange::FieldText(row, field));
    return texts;
  };
  Take(row, fields, parts, 1);
  const std::vector<device::Text> once = written();
  Take(row, fields, once, 0);
  const std::vector<device::Text> twice = written();
  for (std::size_t n = 0; n < fields.size(); ++n)
    Expect(once[n] == twice[n] || fields[n].written != fields[n].read, "a column is read as it was written");
}

void TryAll(Rows& rows, std::string_view bytes) {
  const exchange::ExportRecords found = exchange::RecordsOf(bytes);
  std::size_t at = 0;
  for (const std::string_view record : found.records) {
    Expect(!record.empty() && record == bytes.substr(at, record.size()),
           "records stand one behind the other");
    at += record.size() + 1;
    exchange::IsHeader(record);
    const device::Text text = device::FromCodePage(record);
    Expect(device::ToCodePage(text) == record, "every byte is a character");
    const std::vector<device::TextView> parts = exchange::RecordParts(text);
    device::Text joined(parts.front());
    for (std::size_t n = 1; n < parts.size(); ++n) joined.append(1, exchange::kFieldEnd).append(parts[n]);
    Expect(joined == text && exchange::TagOf(record) == parts.front(), "the parts make the record");
    if (parts.front() == exchange::kInspectionTag)
      TryRow(rows.inspection, exchange::InspectionFields(), parts);
    if (parts.front() == exchange::kCategoryTag) TryRow(rows.category, exchange::CategoryFields(), parts);
    if (parts.front() == exchange::kStepTag) TryRow(rows.step, exchange::StepFields(), parts);
  }
  Expect(at <= bytes.size() + 1, "no record reaches beyond the file");
}

}  // namespace
}  // namespace inspector::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static inspector::fuzz::Rows rows;
  inspector::fuzz::TryAll(rows, std::string_view(reinterpret_cast<const char*>(bytes), size));
  return 0;
}
