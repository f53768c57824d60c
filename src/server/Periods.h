// Which days a device means when it asks for today or this week.
#pragma once

#include <optional>

#include "server/Storage.h"

namespace inspector::server {

// A week goes from Monday to Sunday. Nothing for all.
std::optional<DayRange> DaysOf(protocol::Period period, const device::CalendarTime& today);

}  // namespace inspector::server
