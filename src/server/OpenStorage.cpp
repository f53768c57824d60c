#include "server/OpenStorage.h"

#include "server/SqliteStorage.h"

namespace inspector::server {

bool HasStorage(const Settings& settings) {
  std::error_code error;
  return std::filesystem::exists(SqliteStorage::FileIn(settings.data), error);
}

Fault OpenStorage(const Settings& settings, std::unique_ptr<Storage>& storage) {
  std::unique_ptr<SqliteStorage> opened;
  Fault fault = SqliteStorage::Open(settings.data, opened);
  storage = std::move(opened);
  return fault;
}

}  // namespace inspector::server
