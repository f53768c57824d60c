// Making a report of the current inspection from the screen.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>

#include "inspection/InspectorDoc.h"

namespace inspector::app {

// Opens a file, or a folder, in the program that the system has for it. False when it has none.
using OpenFile = std::function<bool(const std::filesystem::path&)>;
bool OpenInSystem(const std::filesystem::path& file);

// Asks which report, makes it, and offers to open it. What was written stands in the text that comes back,
// empty when nothing was.
device::Text WriteReport(inspection::CInspectorDoc& document, QWidget& window,
                         const OpenFile& open = OpenInSystem);

}  // namespace inspector::app
