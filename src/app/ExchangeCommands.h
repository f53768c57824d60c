// Exchanging inspections with the office and with other devices, from the screen.
#pragma once

#include <QWidget>

#include "inspection/InspectorDoc.h"

namespace inspector::app {

// The dialog of the synchronisation. True when rows of inspections may have been changed or added.
bool Synchronise(inspection::CInspectorDoc& document, QWidget& window);

// Writes the current inspection into a file that another device can import. What was written stands in the
// text that comes back, empty when nothing was.
device::Text ExportCurrent(inspection::CInspectorDoc& document);

// Asks for a file and stages the inspection that it holds, to be merged later. True when one was.
bool ImportFile(inspection::CInspectorDoc& document);

// Asks which of the imported inspections, says what the merge will do, and merges it into the one with that
// key. What it did stands in the text that comes back, empty when nothing was done.
device::Text MergeImported(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                           QWidget& window);

}  // namespace inspector::app
