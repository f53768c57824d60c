#include "kill/KilledProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace inspector::tests {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void Become(std::vector<char*>& words, const std::string& log, int output) {
  const int input = open("/dev/null", O_RDONLY);
  const int errors = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  execv(words[0], words.data());
  _exit(127);
}

// Reads until the other end is closed or the time is over. True when it was closed.
bool ReadUntil(int descriptor, Clock::time_point end, std::string& text) {
  for (;;) {
    pollfd waiting{descriptor, POLLIN, 0};
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(end - Clock::now()).count();
    if (left <= 0) return false;
    const timespec rest = {left / 1'000'000'000, left % 1'000'000'000};
    if (ppoll(&waiting, 1, &rest, nullptr) <= 0) continue;
    char block[256];
    const ssize_t count = read(descriptor, block, sizeof block);
    if (count <= 0) return true;
    text.append(block, static_cast<std::size_t>(count));
  }
}

}  // namespace

Ending RunProgram(const std::vector<std::string>& words, const std::string& log, Duration killAfter) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) std::abort();

  const auto start = Clock::now();
  const pid_t process = fork();
  if (process < 0) std::abort();
  if (process == 0) Become(arguments, log, ends[1]);
  close(ends[1]);

  Ending ending;
  if (!ReadUntil(ends[0], start + killAfter, ending.out)) {
    kill(process, SIGKILL);
    ReadUntil(ends[0], Clock::time_point::max(), ending.out);  // what it wrote before
  }
  close(ends[0]);
  int status = 0;
  waitpid(process, &status, 0);
  ending.lasted = std::chrono::duration_cast<Duration>(Clock::now() - start);
  ending.killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  if (WIFEXITED(status)) ending.exit = WEXITSTATUS(status);
  return ending;
}

}  // namespace inspector::tests
