// What the program asks of the system's threads.
#pragma once

namespace inspector::device {

// The calling thread yields to those of the screens from now on. Passed over where the system refuses.
void LowerThreadPriority();

}  // namespace inspector::device
