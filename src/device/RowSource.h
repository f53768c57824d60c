// What a list shows, fetched row by row: a list of ten thousand asks for the thirty that are on the screen.
#pragma once

#include <vector>

#include "device/Text.h"

namespace inspector::device {

enum class CheckImage { None, Empty, Ticked };
enum class RowTone {
  Normal,
  Attention,  // something is left to do here
  Muted,      // not to be worked on
  Heading,    // a heading between rows
};

struct ListRow {
  // A cell with a mark of attention beside its words, and what the mark means.
  struct Warning {
    int cell = 0;
    Text words;
  };

  std::vector<Text> cells;              // one per column; missing ones are empty
  CheckImage check = CheckImage::None;  // drawn in the mark column
  RowTone tone = RowTone::Normal;
  std::vector<Warning> warnings = {};
  int remarkedCell = -1;  // a cell with a remark below its words
  Text remark = {};
};

class RowSource {
public:
  virtual ~RowSource() = default;
  virtual int RowCount() const = 0;
  // Called again and again for the rows on the screen. An empty row for what is no longer there.
  virtual ListRow ShownRow(int row) = 0;
};

}  // namespace inspector::device
