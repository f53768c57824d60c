#include "device/Files.h"

#include <sys/stat.h>

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

namespace fs = std::filesystem;

TEST(FilesTest, OnlyOrdinaryFilesAreOpened) {
  TemporaryFolder folder;
  const fs::path file = folder.Put("picture.jpg", "0123456789");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  HostFiles files;
  const fs::path noName = file.native() + std::string("\0.txt", 5);
  for (const fs::path& other :
       {folder.Path(), folder / "pipe", fs::path("/dev/zero"), folder / "missing", noName})
    EXPECT_EQ(files.OpenForReading(other), nullptr) << other;  // and does not wait for a writer of the pipe
  EXPECT_FALSE(files.Exists(noName));
  EXPECT_TRUE(files.Exists(folder.Path()));

  const auto input = files.OpenForReading(file);
  ASSERT_NE(input, nullptr);
  EXPECT_EQ(input->Size(), 10u);
  char buffer[8] = {};
  EXPECT_EQ(input->Read(buffer, 8), 8);
  EXPECT_EQ(std::string_view(buffer, 8), "01234567");
  EXPECT_EQ(input->Read(buffer, 8), 2);
  EXPECT_EQ(input->Read(buffer, 8), 0);
}

TEST(FilesTest, WholeFilesAreReadUpToALimit) {
  TemporaryFolder folder;
  HostFiles files;
  const std::string large(200000, 'x');
  EXPECT_EQ(ReadWhole(files, folder.Put("large", large), 200000), large);
  EXPECT_EQ(ReadWhole(files, folder / "large", 199999), std::nullopt);
  EXPECT_EQ(ReadWhole(files, folder.Put("empty"), 0), "");
  EXPECT_EQ(ReadWhole(files, folder / "missing", 10), std::nullopt);
  // Says that it has no bytes, and has some.
  EXPECT_GT(ReadWhole(files, "/proc/self/maps", 1 << 20).value_or("").size(), 100u);
  EXPECT_EQ(ReadWhole(files, "/proc/self/maps", 100), std::nullopt);

  FaultyFiles faulty;
  faulty.FailRead(1);
  EXPECT_EQ(ReadWhole(faulty, folder / "large", 200000), std::nullopt);
}

TEST(FilesTest, EntriesAreListedInAscendingCodeUnits) {
  TemporaryFolder folder;
  // As UTF-8 bytes the house would come last; as code units it begins with a surrogate.
  for (const char* name : {"b.jpg", "B.jpg", "a.jpg", "\xC3\xA9.jpg", "\xF0\x9F\x8F\xA0.jpg",
                           "\xEF\xBD\x9E.jpg", ".hidden", "10.jpg", "9.jpg", "raw \xFF.jpg", "z/inside.jpg"})
    folder.Put(name);
  HostFiles files;
  EXPECT_EQ(files.ListEntries(folder.Path()),
            (std::vector<Text>{u".hidden", u"10.jpg", u"9.jpg", u"B.jpg", u"a.jpg", u"b.jpg",
                               u"raw \uFFFD.jpg", u"z", u"\u00E9.jpg", u"\U0001F3E0.jpg", u"\uFF5E.jpg"}));
  EXPECT_TRUE(files.ListEntries(folder / "missing").empty());
  EXPECT_TRUE(files.ListEntries(folder / "a.jpg").empty());
}

}  // namespace
}  // namespace inspector::device
