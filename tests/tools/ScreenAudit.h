// Looks at a window with the eyes of a person who hears it, who has a large finger, and who reads large text.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace inspector::tests {

// The faults of a window that stands on a screen of this size, each with the control that has it:
//
// a control without a name to be read out; a target too small for a finger; a way of the Tab key that jumps;
// words that are cut; what must be scrolled sideways; what lies outside of what it is in.
std::vector<std::string> FaultsOf(QWidget& window, const QSize& screen);

}  // namespace inspector::tests
