#include <fcntl.h>
#include <unistd.h>

#include <iostream>

#include "cli/CommandLine.h"

namespace {

// A stream that the caller has closed would lend its number to the next file that is opened, and what is
// meant for the screen would end up in there. Standard output then refuses to be written, so that the loss
// is noticed.
void OccupyStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    if (open("/dev/null", stream == STDERR_FILENO ? O_WRONLY : O_RDONLY) != stream) _exit(1);
  }
}

}  // namespace

int main(int count, char** words) {
  OccupyStandardStreams();
  return inspector::cli::RunCommandLine({words + 1, words + count}, std::cout, std::cerr);
}
