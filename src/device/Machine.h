// What a program run has of the machine around it, handed from the composition root to whoever needs it.
#pragma once

#include "device/Calendar.h"
#include "device/DevicePaths.h"
#include "device/FaultLog.h"
#include "device/Files.h"
#include "device/Prompts.h"
#include "device/Registry.h"

namespace inspector::device {

// References only: the composition root owns the objects and outlives everything built on them.
struct Machine {
  const DevicePaths& paths;
  Files& files;
  Registry& registry;
  Prompts& prompts;
  Clock& clock;
  FaultLog& faults;
};

}  // namespace inspector::device
