// The whole command line: from the words typed to the exit code.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace inspector::cli {

// 0 done, 1 failed or refused, 2 wrong usage. `words` are the arguments after the program's name.
int RunCommandLine(std::vector<std::string> words, std::ostream& out, std::ostream& err);

}  // namespace inspector::cli
