// The whole command line of the server: from the words typed to the exit code.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace inspector::server {

// 0 done, 1 failed or refused, 2 wrong usage. `words` are the arguments after the program's name.
int RunCommandLine(std::vector<std::string> words, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace inspector::server
