// Gives a fuzzer every file of the folders that are named, where no libFuzzer does it.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Fuzzer.h"

int main(int count, char** words) {
  std::vector<std::filesystem::path> files;
  for (int at = 1; at < count; ++at)
    for (const auto& entry : std::filesystem::directory_iterator(words[at])) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const auto& file : files) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    std::printf("%s\n", file.c_str());  // the last one is the one that it stopped at
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  return files.empty() ? 1 : 0;
}
