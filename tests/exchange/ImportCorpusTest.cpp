// Files that taught the fuzzer of bench/fuzz something, given to the same function: it ends the test when
// something does not hold.
#include <algorithm>

#include "support/TestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace inspector::exchange {
namespace {

TEST(ImportCorpusTest, EveryFileIsRead) {
  const auto files = FilesBelow(INSPECTOR_SOURCE_DIR "/tests/corpus/import");
  EXPECT_GE(files.size(), 12u);
  for (const auto& [name, bytes] : files) {
    SCOPED_TRACE(name);
    // Cut anywhere, too.
    for (std::size_t size = 0; size <= bytes.size(); ++size)
      EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.data()), size), 0);
  }
}

}  // namespace
}  // namespace inspector::exchange
