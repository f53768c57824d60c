// The one place that knows which storages there are.
#pragma once

#include <memory>

#include "server/Settings.h"
#include "server/Storage.h"

namespace inspector::server {

bool HasStorage(const Settings& settings);
// Opens the storage that the settings name, and makes it where it is missing. On a fault there is none.
Fault OpenStorage(const Settings& settings, std::unique_ptr<Storage>& storage);

}  // namespace inspector::server
