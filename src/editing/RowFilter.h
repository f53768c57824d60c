// Which rows of a list a search leaves.
#pragma once

#include <functional>
#include <vector>

#include "data/TableRecordset.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// The records of an open query, in their order, whose text holds every word; all when there is no word.
// `textOfRecord` gives the text of the record last read. Without words no record is read.
std::vector<int> FilteredRecords(data::TableRecordset& rows, TextView words,
                                 const std::function<Text()>& textOfRecord);

}  // namespace inspector::editing
