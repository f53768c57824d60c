// What a fuzzer defines, and what it says when something does not hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace inspector::fuzz {

inline void Expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "It does not hold that %s.\n", what);
  std::abort();
}

}  // namespace inspector::fuzz
