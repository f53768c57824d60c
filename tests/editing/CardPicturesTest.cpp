#include "editing/CardPictures.h"

#include <chrono>

#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

std::vector<Text> Numbered(int count) {
  std::vector<Text> names;
  for (int i = 1; i <= count; ++i) names.push_back(u"p" + device::Decimal(1000 + i) + u".jpg");
  return names;
}

TEST(CardPicturesTest, TheLastEntryCountsTwiceInAnyOrder) {
  struct Case {
    const char* what;
    std::vector<Text> entries;
    std::vector<Text> names;
  };
  const std::vector<Case> cases = {
      {"no folder", {}, {}},
      {"one picture", {u"a.jpg"}, {u"a.jpg", u"a.jpg"}},
      {"capitals sort first", {u"c.jpeg", u"b.JPG", u"A.jpg"}, {u"A.jpg", u"A.jpg", u"b.JPG"}},
      {"the last is no picture", {u"b.jpg", u"a.jpg", u"readme"}, {u"a.jpg", u"b.jpg"}},
      {"two spellings only", {u"a.Jpg", u"b.jPG", u"c.jpeg", u"d.jpg.bak"}, {u"d.jpg.bak", u"d.jpg.bak"}},
      {"a name twice in a row ends the list", {u"a.jpg", u"a.jpg", u"z.jpg"}, {u"a.jpg", u"a.jpg"}},
      {"a name twice apart does not", {u"a.jpg", u"b", u"a.jpg"}, {u"a.jpg", u"a.jpg", u"a.jpg"}},
  };
  for (const Case& one : cases) EXPECT_EQ(NumberCardPictures(one.entries), one.names) << one.what;
}

TEST(CardPicturesTest, OnlyTheFirst101EntriesAreLookedAt) {
  EXPECT_EQ(NumberCardPictures(Numbered(99)).size(), 100U);
  EXPECT_EQ(NumberCardPictures(Numbered(100)).size(), 101U);
  EXPECT_EQ(NumberCardPictures(Numbered(101)), Numbered(101));
  EXPECT_EQ(NumberCardPictures(Numbered(5000)), Numbered(101));
}

TEST(CardPicturesTest, ANumberNamesTheSameFileTillTheReportIsDone) {
  tests::TemporaryFolder home;
  tests::FaultyFiles files;
  const device::DevicePaths paths(home.Path());
  home.Put("Storage Card/b.jpg");
  files.List(home / "Storage Card", {u"z.jpg", u"b.jpg"});

  CardPictures card(files, paths, u"\\storage card\\");
  EXPECT_EQ(card.Find(1), u"\\storage card\\b.jpg");
  files.List(home / "Storage Card", {u"a.jpg", u"z.jpg", u"b.jpg"});  // the camera took another one meanwhile
  EXPECT_EQ(card.Find(1), u"\\storage card\\b.jpg");
  EXPECT_EQ(card.Find(3), u"\\storage card\\z.jpg");
  for (const int number : {4, 0, -1}) EXPECT_EQ(card.Find(number), u"ERROR") << number;

  CardPictures missing(files, paths, u"\\No Card\\");
  EXPECT_EQ(missing.Find(1), u"ERROR");
}

TEST(CardPicturesTest, TheNewestIsOneThatTheSettingMeans) {
  tests::TemporaryFolder home;
  device::HostFiles files;
  const device::DevicePaths paths(home.Path());
  std::filesystem::create_directories(home / "Empty/folder.jpg");
  const auto now = std::filesystem::file_time_type::clock::now();
  int age = 0;
  for (const char* name :
       {"Card/.roof.jpg", "Card/notes.txt", "Card/new.PNG", "Card/IMG_2.jpg", "Card/IMG_1.jpg"})
    std::filesystem::last_write_time(home.Put(name), now - std::chrono::hours(++age));
  const auto newest = [&](const Text& setting) {
    const CardPictures::Newest found = CardPictures(files, paths, setting).FindNewest();
    return found.file.empty() ? found.problem : device::FromUtf8(found.file.filename().native());
  };
  EXPECT_EQ(newest(u"\\card\\"), u"new.PNG");
  EXPECT_EQ(newest(u"\\Card"), u"new.PNG") << "its last slash was forgotten";
  EXPECT_EQ(newest(u"\\Card\\img_"), u"IMG_2.jpg");
  EXPECT_EQ(newest(u"\\Card\\DSC"), u"There is no picture yet whose path begins with \\Card\\DSC.");
  EXPECT_EQ(newest(u"\\Empty\\"), u"There is no picture in the folder \\Empty\\ yet.");
  EXPECT_EQ(newest(u"\\None\\"), u"The folder \\None\\ is not there. Is the camera's card in this device?");
  EXPECT_EQ(newest(u""),
            u"The folder of the camera's card is not known yet. Enter it in the options, under Pictures.");
}

TEST(CardPicturesTest, TheFolderIsPutBeforeTheNameAsItIs) {
  tests::TemporaryFolder home;
  device::HostFiles files;
  const device::DevicePaths paths(home.Path());
  home.Put("Card/in.jpg");
  home.Put("Card.jpg");
  home.Put("cardinal.jpg");
  CardPictures withoutSlash(files, paths, u"\\Card");
  EXPECT_EQ(withoutSlash.Find(1), u"\\CardCard.jpg");
  EXPECT_EQ(withoutSlash.Find(2), u"\\Cardcardinal.jpg");

  const Text onHost = device::FromUtf8((home / "Card").native()) + u"/";
  CardPictures typed(files, device::DevicePaths(home / "elsewhere"), onHost);
  EXPECT_EQ(typed.Find(1), onHost + u"in.jpg");
}

}  // namespace
}  // namespace inspector::editing
