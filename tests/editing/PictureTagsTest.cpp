#include "editing/PictureTags.h"

#include "editing/PictureAttachment.h"
#include "editing/PictureTagText.h"
#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

TEST(PictureTagsTest, WordsAndTagsArePartedInTheirOrder) {
  for (const auto& [text, words, tags] : std::vector<std::tuple<Text, Text, std::vector<Text>>>{
           {u"", u"", {}},
           {u"No tag, ** only two.", u"No tag, ** only two.", {}},
           {u"a ***x*** b ***y***", u"a  b ", {u"***x***", u"***y***"}},
           {u"one ***x*** then open ***y", u"one  then open ***y", {u"***x***"}},
           {u"******", u"", {u"******"}},
           {u"****x****", u"*", {u"****x***"}},
           // Once for both places.
           {u"***a***1***b***2***a***3", u"123", {u"***a***", u"***b***"}},
           // What stood apart becomes a tag when the one between goes.
           {u"***a***.****a*****.end***", u".", {u"***a***", u"***.end***"}},
       }) {
    SCOPED_TRACE(ToUtf8(text));
    EXPECT_EQ(StripTags(text), words);
    EXPECT_EQ(DistinctTags(text), tags);
    EXPECT_EQ(FindFirstTag(text), tags.empty() ? Text() : tags[0]);
  }
}

TEST(PictureTagsTest, TheKindGoesByTheWordsInTheTag) {
  ExpectEach<Text, TextView>({{u"***Path=\\a.jpg***", kKnownPicture},
                              {u"***Picture-12***", kGenericPicture},
                              {u"***Picture-1 Path=***", kKnownPicture},
                              {u"***path=\\a.jpg***", kError},
                              {u"***picture-1***", kError},
                              {u"******", kError}},
                             ClassifyTag);
}

TEST(PictureTagsTest, TheScalingIsWhatTheTagSays) {
  ExpectEach<Text, int>({{u"***Picture-1***", 100},
                         {u"***Picture-1;Scaling=50***", 50},
                         {u"***Picture-2;Scaling=abc***", 0},
                         {u"***Picture-2;Scaling= -7%***", -7},
                         {u"***Picture-2;Scaling=***", 0},
                         {u"***Picture-2;scaling=50***", 100},
                         {u"***Path=a;Note=3;Scaling=40;Scaling=60***", 40},
                         {u"***Path=a;Sc*aling=30***", 30},  // asterisks are dropped first
                         {u"***Picture-1;Scaling=99999999999***", 2147483647}},
                        GetTagScaling);
}

TEST(PictureTagsTest, AKnownPictureHasItsPath) {
  ExpectEach<Text, Text>({{u"***Path=\\Storage Card\\house.jpg;Scaling=50***", u"\\Storage Card\\house.jpg"},
                          {u"***Path=C:\\pics\\a.jpg***", u"\\Storage Card\\pics\\a.jpg"},
                          {u"***Path=C:\\C:\\a.jpg***", u"\\Storage Card\\\\Storage Card\\a.jpg"},
                          {u"***Path=D:\\C:\\a.jpg***", u"D:\\C:\\a.jpg"},
                          {u"***my Path=a Path=b.jpg***", u"my a b.jpg"},
                          {u"***;Path=a***", u""},
                          {u"***Path=***", u""},
                          {u"Path=", u""}},
                         [](const Text& tag) { return GetKnownPicturePath(tag, u"\\Storage Card\\"); });
}

TEST(PictureTagsTest, AGenericPictureHasItsNumber) {
  for (const auto& [tag, number, scaling] : std::vector<std::tuple<Text, int, int>>{
           {u"***Picture-12;Scaling=100***", 12, 100},
           {u"***Picture-3***", 3, 100},
           {u"***Picture-2b;Scaling=50%***", 2, 50},
           {u"***Picture- +5;Scaling=010***", 5, 10},
           {u"***Picture--1***", -1, 100},
           {u"***Picture-;Scaling=55***", 0, 55},
           // The scaling goes, and what was hidden behind it is read as the number.
           {u"***;Scaling=55Picture-7***", 0, 557},
           {u"***;Scaling=55.Picture-7***", 0, 55},
           {u"***;Scaling=55 Picture-7***", 7, 55},
       }) {
    const GenericPicture picture = ReadGenericPicture(tag);
    EXPECT_EQ(std::pair(picture.number, picture.scaling), std::pair(number, scaling)) << ToUtf8(tag);
  }
}

TEST(PictureTagTextTest, PicturesAreTakenOutScaledAndMoved) {
  const Text path = u"***Path=\\a.jpg;Scaling=50***";
  const auto eaves = [](const Text& first, const Text& second) {
    return u"Eaves " + first + u" and ridge " + second + u". ***odd***";
  };
  const Text text = eaves(u"***Picture-1***", path);
  EXPECT_EQ(WithoutPicture(text, u"***Picture-1***"), u"Eaves and ridge " + path + u". ***odd***");
  EXPECT_EQ(WithScaling(text, path, 75), eaves(u"***Picture-1***", u"***Path=\\a.jpg;Scaling=75***"));
  EXPECT_EQ(WithScaling(text, u"***Picture-1***", 25), eaves(u"***Picture-1;Scaling=25***", path));
  EXPECT_EQ(WithPictureMoved(text, 0, 1), eaves(path, u"***Picture-1***"));
  EXPECT_EQ(WithPictureMoved(text, 1, 0), eaves(path, u"***Picture-1***"));
  EXPECT_EQ(WithPictureMoved(text, 0, 2), text) << "the last tag names no picture";
  for (const TextView none : {u"***Picture-2***", u"Picture-1", u""})
    EXPECT_EQ(WithoutPicture(WithScaling(text, none, 10), none), text);
}

TEST(PictureTagTextTest, ARepeatedTagIsOnePicture) {
  const Text text = u"A ***Picture-1*** B ***Picture-1*** C ***Picture-2***";
  EXPECT_EQ(WithPictureMoved(text, 1, 0), u"A ***Picture-2*** B ***Picture-1*** C ***Picture-1***");
  EXPECT_EQ(WithoutPicture(text, u"***Picture-1***"), u"A B C ***Picture-2***");
  EXPECT_EQ(WithPictureMoved(u"***Picture-2**** x ***Picture-1***", 1, 0),
            u"***Picture-1**** x ***Picture-2***");
}

class AttachmentTest : public ::testing::Test, protected ScriptedMachine {};

TEST_F(AttachmentTest, ANameCanStandInATag) {
  for (const auto& [original, name] : std::vector<std::pair<Text, Text>>{
           {u"roof.JPG", u"roof.jpg"},
           {u"IMG 0012.png", u"IMG 0012.jpg"},
           {u"no extension", u"no extension.jpg"},
           {u"C:\\a;b*c.jpg", u"C--a-b-c.jpg"},
           {u"PatPath=h=x.gif", u"PatPath-h-x.jpg"},
           {u"***Path=a;Scaling=5***.bmp", u"---Path-a-Scaling-5---.jpg"},
           {u"a\nb\"<>|?/.jpg", u"a-b------.jpg"},
           {u" .. .jpg", u"Picture.jpg"},
           {u".jpg", u"Picture.jpg"},
           {u"", u"Picture.jpg"},
           {Text(59, u'x') + u"\U0001F3E0.jpg", Text(59, u'x') + u".jpg"},
       }) {
    const Text made = AttachmentName(original, {});
    EXPECT_EQ(made, name) << ToUtf8(original);
    const Text tag = FindFirstTag(KnownPictureTag(AttachmentFolder(-7) + made, 40));
    EXPECT_EQ(GetKnownPicturePath(tag, u"\\Card\\"), u"\\My Documents\\Pictures\\-7\\" + made);
    EXPECT_EQ(GetTagScaling(tag), 40);
  }
  EXPECT_EQ(AttachmentName(u"Roof.png", {u"ROOF.JPG", u"roof-2.jpg"}), u"Roof-3.jpg");
}

TEST_F(AttachmentTest, CopiesStandInTheInspectionsOwnFolder) {
  const Text folder = u"\\My Documents\\Pictures\\1000\\";
  const std::filesystem::path onHost = m_Folder / "My Documents/Pictures/1000";
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"roof.jpg", "one"), folder + u"roof.jpg");
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"roof.jpg", "two"), folder + u"roof-2.jpg");
  m_Files.FailWrite(1);
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"wall.jpg", "three"), std::nullopt);
  EXPECT_EQ(m_Faults.Count(), 1);
  const std::map<std::string, std::string> stored = {{"roof.jpg", "one"}, {"roof-2.jpg", "two"}};
  EXPECT_EQ(FilesBelow(onHost), stored);
  EXPECT_EQ(PicturePathOf(m_Paths, onHost / "roof.jpg"), folder + u"roof.jpg");
  for (const std::string& elsewhere : {std::string("/elsewhere"), m_Folder.Path().native() + "x"})
    EXPECT_EQ(PicturePathOf(m_Paths, elsewhere + "/a.jpg"), FromUtf8(elsewhere + "/a.jpg"));
}

TEST_F(AttachmentTest, PicturesOfACommentTellWhetherTheyAreThere) {
  for (const char* there : {"Card/a.jpg", "Pictures/roof.jpg"}) m_Folder.Put(there, "x");
  CardPictures card(m_Files, m_Paths, u"\\Card\\");
  const Text comment =
      u"***Picture-1;Scaling=30*** ***Picture-9*** ***Path=\\pictures\\ROOF.jpg*** ***Path=\\no.jpg*** "
      u"***odd***";
  EXPECT_EQ(Joined(PicturesOfComment(comment, card, m_Machine),
                   [](const CommentPicture& picture) {
                     return picture.path + (picture.missing ? u" missing " : u" ") + Decimal(picture.scaling);
                   }),
            u"\\Card\\a.jpg 30| missing 100|\\pictures\\ROOF.jpg 100|\\no.jpg missing 100")
      << "a tag of another kind names no picture";
}

}  // namespace
}  // namespace inspector::editing
