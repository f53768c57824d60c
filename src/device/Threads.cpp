#include "device/Threads.h"

#include <sys/resource.h>
#include <unistd.h>

namespace inspector::device {

void LowerThreadPriority() {
  constexpr int kBelowNormal = 5;
  // On Linux a thread's own number names it alone.
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kBelowNormal);
}

}  // namespace inspector::device
