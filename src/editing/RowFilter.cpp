#include "editing/RowFilter.h"

#include <algorithm>

namespace inspector::editing {
namespace {

bool HoldsWords(TextView text, const std::vector<Text>& words) {
  return std::all_of(words.begin(), words.end(), [&](const Text& word) {
    const auto equal = [](char16_t left, char16_t right) {
      return device::FoldCase(left) == device::FoldCase(right);
    };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), equal) != text.end();
  });
}

}  // namespace

std::vector<int> FilteredRecords(data::TableRecordset& rows, TextView words,
                                 const std::function<Text()>& textOfRecord) {
  std::vector<int> records;
  records.reserve(static_cast<std::size_t>(rows.RecordCount()));
  const std::vector<Text> wanted = device::Split(words, u' ');
  const bool all = words.find_first_not_of(u' ') == TextView::npos;
  const data::ReadScope reading(rows.GetConnection());
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (all || (rows.GetRecord(n) && HoldsWords(textOfRecord(), wanted))) records.push_back(n);
  return records;
}

}  // namespace inspector::editing
