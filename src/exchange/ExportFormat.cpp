#include "exchange/ExportFormat.h"

#include <algorithm>

#include "device/Calendar.h"
#include "protocol/Wire.h"

namespace inspector::exchange {
namespace {

using enum FieldForm;

constexpr ExportField kInspection[] = {
    {1, u"Dwelling Address", String, String},
    {2, u"Client Name", String, String},
    {3, u"Client Address", String, String},
    {4, u"Client City/State/Zip", String, String},
    {5, u"General Information", String, String},
    {6, u"Date", Date, Date},
    {6, u"Time", Time, Time},
    {7, u"Doc Type", String, String},
    {8, u"Reserve 8", YesNo, YesNo},
    {9, u"Reserve 9", YesNo, YesNo},
    {10, u"Reserve 10", Integer, Integer},
    {11, u"Doc #", String, String},
    {12, u"Client Phone", String, String},
    {13, u"City/State/Zip", String, String},
    {14, u"Client's Agent", String, String},
    {15, u"Listing Agent", String, String},
    {16, u"type's key", Integer, Integer},
    {17, u"Real Estate Company", String, String},
};

constexpr ExportField kCategory[] = {
    {1, u"title", String, String},
    {2, u"number", String, String},
    {3, u"remarks", String, String},
    {4, u"comment text", String, String},
    {5, u"complete", YesNo, YesNo},
    {6, u"not present", YesNo, YesNo},
    {8, u"template's key", Integer, Integer},
    {9, u"kind", Integer, Integer},
};

constexpr ExportField kStep[] = {
    {1, u"number", String, String},
    {2, u"title", String, String},
    {4, u"rating", String, String},
    {5, u"comments", String, String},
    {6, u"materials", String, String},
    {7, u"rating type", String, String},
    {8, u"Reserve 8", String, String},
    {9, u"material note", String, String},
    {10, u"template's key", Integer, Integer},
    {11, u"Reserve 11", YesNo, YesNo},
    {12, u"major system", String, String},
    {13, u"information", Integer, Integer},  // the one yes/no column that goes out as a number, on purpose
    {14, u"summary comment", String, String},
    {15, u"picture", String, String},
    // What is written here is never the beginning of a number: every step arrives with FALSE, on purpose.
    {16, u"picture before comments", YesNo, Integer},
};

const data::BoundMember& MemberOf(const data::TableRecordset& row, const ExportField& field) {
  return row.Columns()[static_cast<std::size_t>(field.ordinal)].member;
}

template <typename Value>
Value& ValueOf(const data::TableRecordset& row, const ExportField& field) {
  return **std::get_if<Value*>(&MemberOf(row, field));
}

// "9:5". Nothing that is no time of day.
bool ParseTime(TextView text, device::CalendarTime& time) {
  const std::size_t colon = text.find(u':');
  const auto number = [](TextView digits) {
    const bool isNumber =
        !digits.empty() && digits.size() <= 2 &&
        std::all_of(digits.begin(), digits.end(), [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
    return isNumber ? device::LeadingInteger(digits) : -1;
  };
  if (colon == TextView::npos) return false;
  time.hour = number(text.substr(0, colon));
  time.minute = number(text.substr(colon + 1));
  return device::IsValid(time);
}

}  // namespace

std::span<const ExportField> InspectionFields() {
  return kInspection;
}

std::span<const ExportField> CategoryFields() {
  return kCategory;
}

std::span<const ExportField> StepFields() {
  return kStep;
}

Text FieldText(const data::TableRecordset& row, const ExportField& field) {
  switch (field.written) {
    case String:
      return ValueOf<Text>(row, field);
    case YesNo:
      return ValueOf<std::int32_t>(row, field) != 0 ? u"TRUE" : u"FALSE";
    case Integer:
      return device::Decimal(ValueOf<std::int32_t>(row, field));
    case Date:
      return device::FormatDate(ValueOf<device::CalendarTime>(row, field));
    case Time:
      return device::FormatTime(ValueOf<device::CalendarTime>(row, field));
  }
  return {};
}

void TakeField(data::TableRecordset& row, const ExportField& field, TextView text) {
  switch (field.read) {
    case String:
      ValueOf<Text>(row, field) = Text(text);
      break;
    case YesNo:
      ValueOf<std::int32_t>(row, field) = text == u"TRUE" ? -1 : 0;
      break;
    case Integer: {
      const int number = device::LeadingInteger(text);
      const bool isYesNo =
          row.Columns()[static_cast<std::size_t>(field.ordinal)].type == data::ValueType::YesNo;
      ValueOf<std::int32_t>(row, field) = isYesNo && number != 0 ? -1 : number;
      break;
    }
    case Date:
      ValueOf<device::CalendarTime>(row, field) =
          protocol::DateFromWire(text).value_or(device::CalendarTime{});
      break;
    case Time: {
      auto& stored = ValueOf<device::CalendarTime>(row, field);
      device::CalendarTime time = stored;
      if (ParseTime(text, time)) stored = time;
      break;
    }
  }
}

}  // namespace inspector::exchange
