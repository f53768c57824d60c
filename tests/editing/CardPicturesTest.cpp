#include "editing/CardPictures.h"

#include <chrono>

#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

class CardPicturesTest : public ::testing::Test, protected ScriptedMachine {
protected:
  CardPictures Card(const Text& setting) { return {m_Files, m_Paths, setting}; }
};

TEST_F(CardPicturesTest, TheLastEntryCountsTwiceInAnyOrder) {
  const std::vector<std::tuple<const char*, std::vector<Text>, std::vector<Text>>> cases = {
      {"no folder", {}, {}},
      {"one picture", {u"a.jpg"}, {u"a.jpg", u"a.jpg"}},
      {"capitals sort first", {u"c.jpeg", u"b.JPG", u"A.jpg"}, {u"A.jpg", u"A.jpg", u"b.JPG"}},
      {"the last is no picture", {u"b.jpg", u"a.jpg", u"readme"}, {u"a.jpg", u"b.jpg"}},
      {"two spellings only", {u"a.Jpg", u"b.jPG", u"c.jpeg", u"d.jpg.bak"}, {u"d.jpg.bak", u"d.jpg.bak"}},
      {"a name twice in a row ends the list", {u"a.jpg", u"a.jpg", u"z.jpg"}, {u"a.jpg", u"a.jpg"}},
      {"a name twice apart does not", {u"a.jpg", u"b", u"a.jpg"}, {u"a.jpg", u"a.jpg", u"a.jpg"}},
  };
  for (const auto& [what, entries, names] : cases) EXPECT_EQ(NumberCardPictures(entries), names) << what;
}

TEST_F(CardPicturesTest, OnlyTheFirst101EntriesAreLookedAt) {
  std::vector<Text> names;
  for (int n = 0; n < 5000; ++n) names.push_back(u"p" + Decimal(1000 + n) + u".jpg");
  const auto first = [&names](int count) { return std::vector<Text>(names.begin(), names.begin() + count); };
  EXPECT_EQ(NumberCardPictures(first(100)).size(), 101U);
  EXPECT_EQ(NumberCardPictures(names), first(101));
}

TEST_F(CardPicturesTest, ANumberNamesTheSameFileTillTheReportIsDone) {
  m_Folder.Put("Storage Card/b.jpg");
  m_Files.List(m_Folder / "Storage Card", {u"z.jpg", u"b.jpg"});
  CardPictures card = Card(u"\\storage card\\");
  EXPECT_EQ(card.Find(1), u"\\storage card\\b.jpg");
  m_Files.List(m_Folder / "Storage Card", {u"a.jpg", u"z.jpg", u"b.jpg"});  // the camera took another one
  EXPECT_EQ(card.Find(1), u"\\storage card\\b.jpg");
  EXPECT_EQ(card.Find(3), u"\\storage card\\z.jpg");
  for (const int number : {4, 0, -1}) EXPECT_EQ(card.Find(number), u"ERROR") << number;
  EXPECT_EQ(Card(u"\\No Card\\").Find(1), u"ERROR");
}

TEST_F(CardPicturesTest, TheNewestIsOneThatTheSettingMeans) {
  std::filesystem::create_directories(m_Folder / "Empty/folder.jpg");
  const auto now = std::filesystem::file_time_type::clock::now();
  int age = 0;
  for (const char* name :
       {"Card/.roof.jpg", "Card/notes.txt", "Card/new.PNG", "Card/IMG_2.jpg", "Card/IMG_1.jpg"})
    std::filesystem::last_write_time(m_Folder.Put(name), now - std::chrono::hours(++age));
  for (const auto& [setting, expected] : std::vector<std::pair<Text, Text>>{
           {u"\\card\\", u"new.PNG"},
           {u"\\Card", u"new.PNG"},  // its last slash was forgotten
           {u"\\Card\\img_", u"IMG_2.jpg"},
           {u"\\Card\\DSC", u"There is no picture yet whose path begins with \\Card\\DSC."},
           {u"\\Empty\\", u"There is no picture in the folder \\Empty\\ yet."},
           {u"\\None\\", u"The folder \\None\\ is not there. Is the camera's card in this device?"},
           {u"",
            u"The folder of the camera's card is not known yet. Enter it in the options, under Pictures."}}) {
    const CardPictures::Newest found = Card(setting).FindNewest();
    EXPECT_EQ(found.problem + FromUtf8(found.file.filename().native()), expected);
  }
}

TEST_F(CardPicturesTest, TheFolderIsPutBeforeTheNameAsItIs) {
  for (const char* name : {"Card/in.jpg", "Card.jpg", "cardinal.jpg"}) m_Folder.Put(name);
  EXPECT_EQ(Card(u"\\Card").Find(1), u"\\CardCard.jpg") << "without a slash it begins a name";
  EXPECT_EQ(Card(u"\\Card").Find(2), u"\\Cardcardinal.jpg");
  const Text onHost = FromUtf8((m_Folder / "Card").native()) + u"/";
  EXPECT_EQ(Card(onHost).Find(1), onHost + u"in.jpg") << "as typed by a person";
}

}  // namespace
}  // namespace inspector::editing
