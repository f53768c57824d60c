#include "server/ServerLog.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

namespace inspector::server {
namespace {

// The control characters from U+007F to U+009F, which JSON lets stand and a terminal obeys, are written as
// those before the blank.
std::string InJson(const nlohmann::ordered_json& value) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::string dumped = value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  std::string shown;
  for (std::size_t at = 0; at < dumped.size(); ++at) {
    const auto byte = static_cast<unsigned char>(dumped[at]);
    const auto next = static_cast<unsigned char>(at + 1 < dumped.size() ? dumped[at + 1] : 0);
    const bool isHigh = byte == 0xC2 && next >= 0x80 && next < 0xA0;  // U+0080 to U+009F in UTF-8
    const unsigned code = isHigh ? next : byte;
    if (!isHigh && byte != 0x7F) {
      shown += dumped[at];
      continue;
    }
    shown.append("\\u00").append(1, kDigits[code >> 4]).append(1, kDigits[code & 0xF]);
    at += isHigh;
  }
  return shown;
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
