// What happens in the server, one line for each event on standard error, for people or for programs.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "device/Calendar.h"

namespace inspector::server {

// May be used from any thread. What came from a device stays within its quotes: a line break in a name begins
// no line.
class ServerLog {
public:
  enum class Form { Words, Json };
  using Value = std::variant<std::string, std::int64_t>;
  using Fields = std::initializer_list<std::pair<const char*, Value>>;
  // Gets whole lines with their ends.
  using Sink = std::function<void(std::string_view line)>;

  ServerLog(device::Clock& clock, Form form, Sink sink)
      : m_Clock(clock), m_Form(form), m_Sink(std::move(sink)) {}

  void Info(std::string_view event, Fields fields = {}) { Write("info", event, fields); }
  void Warning(std::string_view event, Fields fields = {}) { Write("warning", event, fields); }
  void Error(std::string_view event, Fields fields = {}) { Write("error", event, fields); }

private:
  void Write(std::string_view level, std::string_view event, Fields fields);

  device::Clock& m_Clock;
  Form m_Form;
  Sink m_Sink;
  std::mutex m_Mutex;
};

// In one write, so that lines of several threads or processes do not mix.
void WriteToStandardError(std::string_view line);

}  // namespace inspector::server
