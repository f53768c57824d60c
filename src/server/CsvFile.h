// Tables as other programs export them: comma, semicolon or tab between values, quotes where a value has one
// of these or a line end.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace inspector::server {

struct CsvRow {
  int line = 0;  // where it begins, counted from 1
  std::vector<std::string> values;
};

// The rows in UTF-8; a file that is none is read as Windows-1252, which spreadsheets still write. The sign
// between values is the one that is most frequent in the first line. Empty lines are passed over. Sets
// `problem` when a quote is left open or stands in the middle of a value.
std::vector<CsvRow> ReadCsv(std::string_view content, std::string& problem);

}  // namespace inspector::server
