// The bytes of an export file, read from the databases at one moment, and what of the inspection a reader of
// it will not get as it is.
#pragma once

#include <string>
#include <vector>

#include "reports/ReportContent.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

struct ExportContent {
  Text documentNumber;
  std::string beginning;                // header, company and inspection
  std::vector<std::string> categories;  // each with its steps
  int records = 0;
  // Values that hold one of the two bytes that end fields and records, or characters that the code page
  // lacks, or a date that is none: where they stand and what becomes of them, each in words.
  std::vector<Text> faults;
  // What does not travel.
  bool hasPrivateNotes = false;
  int formFields = 0;
  int pictures = 0;  // different ones that steps and their comments name, and the house's
};

// Failed: a database could not be read, which has been reported.
reports::CollectResult CollectExport(data::Workspace& workspace, std::int32_t inspectionID,
                                     ExportContent& content);

}  // namespace inspector::exchange
