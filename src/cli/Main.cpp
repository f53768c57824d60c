#include <iostream>

#include "cli/CommandLine.h"

int main(int count, char** words) {
  return inspector::cli::RunCommandLine({words + 1, words + count}, std::cout, std::cerr);
}
