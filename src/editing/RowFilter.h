// Which rows of a list a search leaves.
#pragma once

#include <functional>
#include <vector>

#include "data/TableRecordset.h"
#include "device/WordFilter.h"

namespace inspector::editing {

using device::Text;

// The records of an open query, in their order, whose text the filter accepts. `textOfRecord` gives the text
// of the record last read. An empty filter reads none.
std::vector<int> FilteredRecords(data::TableRecordset& rows, const device::WordFilter& filter,
                                 const std::function<Text()>& textOfRecord);

}  // namespace inspector::editing
