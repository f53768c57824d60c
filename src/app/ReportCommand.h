// Writing the inspection report of the current inspection from the screen.
#pragma once

#include <QWidget>

#include "inspection/InspectorDoc.h"

namespace inspector::app {

// Asks for the categories, the layout and the file. What was written stands in the text that comes back,
// empty when nothing was; what is not in the report has been told in a box.
device::Text WriteReport(inspection::CInspectorDoc& document, QWidget& window);

}  // namespace inspector::app
