// The export file: how one inspection stands in it. Writer and reader share these tables.
//
//   file    = header company inspection (category step*)*
//   record  = tag FT (field FT)* RT          FT is the byte 0xA4, RT the byte 0xA7
//
// Texts are in the device's code page. There are no line ends, lengths, escapes or quotes: a value that holds
// one of the two bytes is written as it stands, and a reader cuts it there.
#pragma once

#include <span>

#include "data/TableRecordset.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

inline constexpr char16_t kFieldEnd = u'\u00A4';
inline constexpr char16_t kRecordEnd = u'\u00A7';
inline constexpr char kRecordEndByte = '\xA7';  // in the code page

inline constexpr TextView kHeaderTag = u"Brindlecove Export File";  // no fields
inline constexpr TextView kCompanyTag = u"INSPECTIONCOMPANY";       // one field, not read
inline constexpr TextView kInspectionTag = u"INSPECTION";
inline constexpr TextView kCategoryTag = u"CATEGORY";
inline constexpr TextView kStepTag = u"STEP";

// What older readers take of a file, all its records together.
inline constexpr int kUsualRecords = 1000;

// How a column becomes the text of a field, and the other way round.
enum class FieldForm {
  String,   // as stored
  YesNo,    // "TRUE" or "FALSE"; read as true only where it is "TRUE"
  Integer,  // decimal; read as the number that the text begins with, else 0. A yes/no column is 0 or -1
  Date,     // "7/3/2002", the day of a date column; read as no date where it is no day
  Time      // "9:5", the time of its day; stands behind the date, and is read as 0:00 where it is no time
};

struct ExportField {
  int ordinal;
  TextView caption;  // for people
  FieldForm written;
  FieldForm read;
};

// In the order of the file. Behind the last field of an inspection stands the inspector's text, which is no
// column and is not read.
std::span<const ExportField> InspectionFields();
std::span<const ExportField> CategoryFields();
std::span<const ExportField> StepFields();

// The text of a field, from the row that was read.
Text FieldText(const data::TableRecordset& row, const ExportField& field);
// The column from the text of a field.
void TakeField(data::TableRecordset& row, const ExportField& field, TextView text);

}  // namespace inspector::exchange
