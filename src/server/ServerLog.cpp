#include "server/ServerLog.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

namespace inspector::server {
namespace {

std::string InJson(const nlohmann::ordered_json& value) {
  return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

void ServerLog::Write(std::string_view level, std::string_view event, Fields fields) {
  const std::lock_guard lock(m_Mutex);
  const std::string time = device::ToIso(m_Clock.Now());
  std::string line;
  if (m_Form == Form::Json) {
    nlohmann::ordered_json object = {{"time", time}, {"level", level}, {"event", event}};
    for (const auto& [name, value] : fields)
      std::visit([&object, key = name](const auto& known) { object[key] = known; }, value);
    line = InJson(object);
  } else {
    line = time + ' ' + std::string(level) + ": " + std::string(event);
    for (const auto& [name, value] : fields) {
      line += std::string(" ") + name + '=';
      std::visit([&line](const auto& known) { line += InJson(known); }, value);
    }
  }
  m_Sink(line + '\n');
}

void WriteToStandardError(std::string_view line) {
  while (!line.empty()) {
    const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    if (written <= 0) return;  // nobody listens: a log that is lost stops no device
    line.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace inspector::server
