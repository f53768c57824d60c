// Runs a program and, if it is still running after a while, kills it as a dead battery would.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace inspector::tests {

using Duration = std::chrono::microseconds;

struct Ending {
  bool killed = false;
  int exit = -1;    // when it ended by itself
  std::string out;  // standard output, as far as it got
  Duration lasted{0};
};

// `words` begin with the program's path; standard input is empty and standard error goes where `log` says.
Ending RunProgram(const std::vector<std::string>& words, const std::string& log, Duration killAfter);

}  // namespace inspector::tests
