#include "device/HostOutputFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <numeric>

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

namespace fs = std::filesystem;
using Staging = HostOutputFile::Staging;

// Both ways of keeping a file apart until it is whole must look the same from outside.
class HostOutputFileTest : public testing::TestWithParam<Staging> {
protected:
  HostOutputFile Create(const fs::path& target) { return HostOutputFile(target, GetParam()); }
  bool Save(const fs::path& target, std::string_view content) {
    auto file = Create(target);
    return file.Write(content) && file.Commit();
  }
  std::vector<Text> Entries() { return HostFiles().ListEntries(m_Folder.Path()); }

  TemporaryFolder m_Folder;
};

INSTANTIATE_TEST_SUITE_P(, HostOutputFileTest, testing::Values(Staging::Unnamed, Staging::Hidden),
                         [](const auto& test) {
                           return test.param == Staging::Unnamed ? "Unnamed" : "Hidden";
                         });

TEST_P(HostOutputFileTest, TheFileAppearsWholeOrNotAtAll) {
  const fs::path target = m_Folder.Put("report.rtf", "old");
  EXPECT_TRUE(Create(target).Write("half a rep"));
  EXPECT_EQ(ContentOf(target), "old");

  auto file = Create(target);
  EXPECT_TRUE(file.Write("new"));
  EXPECT_EQ(ContentOf(target), "old");
  EXPECT_TRUE(file.Commit());
  EXPECT_FALSE(file.Write("more"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ContentOf(target), "new");
  EXPECT_EQ(file.Error(), "");
  EXPECT_THAT(Entries(), ElementsAre(u"report.rtf"));
}

TEST_P(HostOutputFileTest, PiecesOfAnySizeComeInOrder) {
  std::vector<std::size_t> sizes(700);
  std::iota(sizes.begin(), sizes.end(), 0);
  sizes.insert(sizes.end(), {65535, 1, 65536, 65537, 300000, 0});
  sizes.insert(sizes.end(), 70000, 1);
  std::string expected;
  auto file = Create(m_Folder / "pieces");
  for (int round = 0; round < 3; ++round) {
    for (const std::size_t size : sizes) {
      const std::string piece(size, static_cast<char>('a' + (size + expected.size()) % 26));
      ASSERT_TRUE(file.Write(piece));
      expected += piece;
    }
  }
  ASSERT_TRUE(file.Commit());
  EXPECT_TRUE(ContentOf(m_Folder / "pieces") == expected);
}

TEST_P(HostOutputFileTest, MissingFoldersAreMadeAndDoNotOutliveAFailure) {
  EXPECT_TRUE(Create(m_Folder / "a/b/c/report.rtf").Write("x"));
  EXPECT_TRUE(Entries().empty());
  {
    auto file = Create(m_Folder / "a/b/report.rtf");
    m_Folder.Put("a/somebody else's");
  }
  EXPECT_TRUE(fs::exists(m_Folder / "a/somebody else's"));
  EXPECT_FALSE(fs::exists(m_Folder / "a/b"));
  EXPECT_TRUE(Save(m_Folder / "a/b/c/report.rtf", "x"));
  EXPECT_EQ(ContentOf(m_Folder / "a/b/c/report.rtf"), "x");
}

TEST_P(HostOutputFileTest, PermissionsOfTheTargetAreKept) {
  const mode_t before = umask(027);
  EXPECT_TRUE(Save(m_Folder / "new", "x"));
  const fs::path target = m_Folder.Put("old", "x");
  EXPECT_EQ(chmod(target.c_str(), 0606), 0);
  EXPECT_TRUE(Save(target, "y"));
  umask(before);
  EXPECT_EQ(static_cast<int>(fs::status(m_Folder / "new").permissions()), 0640);
  EXPECT_EQ(static_cast<int>(fs::status(target).permissions()), 0606);
}

TEST_P(HostOutputFileTest, LinksAreWrittenThrough) {
  m_Folder.Put("real/report.rtf", "old");
  fs::create_symlink("real/report.rtf", m_Folder / "second");
  fs::create_symlink(m_Folder / "second", m_Folder / "first");
  EXPECT_TRUE(Save(m_Folder / "first", "new"));
  EXPECT_TRUE(fs::is_symlink(m_Folder / "first") && fs::is_symlink(m_Folder / "second"));
  EXPECT_EQ(ContentOf(m_Folder / "real/report.rtf"), "new");

  fs::create_symlink("real/not yet", m_Folder / "dangling");
  EXPECT_TRUE(Save(m_Folder / "dangling", "new"));
  EXPECT_EQ(ContentOf(m_Folder / "real/not yet"), "new");
}

TEST_P(HostOutputFileTest, WhatIsNoFileIsRefusedWithWords) {
  m_Folder.Put("file");
  ASSERT_EQ(mkfifo((m_Folder / "pipe").c_str(), 0600), 0);
  fs::create_symlink("circle", m_Folder / "circle");
  const std::vector<Text> before = Entries();
  const std::pair<fs::path, const char*> kCases[] = {
      {m_Folder.Path(), "Is a directory"},
      {m_Folder / "new/", "Is a directory"},
      {m_Folder / "pipe", "Not an ordinary file"},
      {"/dev/null", "Not an ordinary file"},
      {m_Folder / "circle", "Too many levels of symbolic links"},
      {m_Folder / "file/report.rtf", "Not a directory"},
      {m_Folder / std::string(256, 'x'), "File name too long"},
      {(m_Folder / "a").native() + std::string("\0b", 2), "Invalid argument"},
      {"", "No such file or directory"}};
  for (const auto& [target, error] : kCases) {
    auto file = Create(target);
    EXPECT_EQ(file.Error(), error) << target;
    EXPECT_FALSE(file.Write("x") || file.Commit()) << target;
  }
  EXPECT_EQ(Entries(), before);
  EXPECT_TRUE(Save(m_Folder / std::string(255, 'x'), "the longest name"));
}

TEST_P(HostOutputFileTest, AWriteProtectedTargetIsLeftAlone) {
  const fs::path target = m_Folder.Put("report.rtf", "old");
  const bool superuser = geteuid() == 0;  // for whom nothing is write-protected
  constexpr uid_t kUser = 65534;
  if (superuser) {
    for (const fs::path& path : {m_Folder.Path(), target}) ASSERT_EQ(chown(path.c_str(), kUser, kUser), 0);
    ASSERT_EQ(seteuid(kUser), 0);
  }
  fs::permissions(target, fs::perms::owner_read);
  auto file = Create(target);
  EXPECT_FALSE(file.Write("new"));
  EXPECT_EQ(file.Error(), "Permission denied");
  EXPECT_EQ(ContentOf(target), "old");
  EXPECT_TRUE(!superuser || seteuid(0) == 0);
}

TEST_P(HostOutputFileTest, AFullDiskLeavesWhatWasThere) {
  const fs::path target = m_Folder.Put("report.rtf", "old");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{100000, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  {
    auto file = Create(target);
    bool written = true;
    for (int i = 0; i < 200; ++i) written = file.Write(std::string(1000, 'x')) && written;
    EXPECT_FALSE(written || file.Write("x") || file.Commit());  // not even what would still fit
    EXPECT_EQ(file.Error(), "File too large");
  }
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(ContentOf(target), "old");
  EXPECT_THAT(Entries(), ElementsAre(u"report.rtf"));
}

TEST_P(HostOutputFileTest, TwoWritersOfOneTargetDoNotMeet) {
  auto first = Create(m_Folder / "report.rtf");
  auto second = Create(m_Folder / "report.rtf");
  EXPECT_TRUE(first.Write("first") && second.Write("second"));
  EXPECT_TRUE(second.Commit() && first.Commit());
  EXPECT_EQ(ContentOf(m_Folder / "report.rtf"), "first");
  EXPECT_THAT(Entries(), ElementsAre(u"report.rtf"));
}

TEST_P(HostOutputFileTest, WhatAKilledRunLeavesIsRemovedByTheNext) {
  const fs::path target = m_Folder / "report.rtf";
  const pid_t gone = RunUntilKilled([this, &target] {
    auto file = Create(target);
    file.Write("half");
    raise(SIGKILL);
  });
  const int probe = open(m_Folder.Path().c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  const bool needsName = GetParam() == Staging::Hidden || probe < 0;
  if (probe >= 0) close(probe);
  EXPECT_EQ(Entries().size(), needsName ? 1u : 0u);
  const std::string prefix = ".report.rtf.";
  const std::string id = std::to_string(gone);
  m_Folder.Put(prefix + id + "-7.unfinished");
  // Not to be removed: locked from elsewhere, of a process that runs, of another target, and no such name.
  const std::string locked = prefix + id + "-8.unfinished";
  std::vector<Text> expected = {u"report.rtf"};
  for (const std::string& name :
       {locked, prefix + std::to_string(getppid()) + "-0.unfinished", prefix + "bak." + id + "-0.unfinished",
        ".other.rtf." + id + "-0.unfinished", prefix + id + "-7.txt", prefix + id,
        prefix + id + ".unfinished"}) {
    m_Folder.Put(name);
    expected.push_back(FromUtf8(name));
  }
  const int lock = open((m_Folder / locked).c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);

  EXPECT_TRUE(Save(target, "whole"));
  close(lock);
  EXPECT_THAT(Entries(), testing::UnorderedElementsAreArray(expected));
}

}  // namespace
}  // namespace inspector::device
