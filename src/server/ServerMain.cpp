#include <iostream>

#include "server/CommandLine.h"

int main(int count, char** words) {
  return inspector::server::RunCommandLine({words + 1, words + count}, std::cin, std::cout, std::cerr);
}
