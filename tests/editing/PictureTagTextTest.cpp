#include "editing/PictureTagText.h"

#include "editing/PictureAttachment.h"
#include "editing/PictureTags.h"
#include "support/Lines.h"
#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

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

class AttachmentTest : public ::testing::Test, protected tests::ScriptedMachine {};

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
    EXPECT_EQ(made, name) << device::ToUtf8(original);
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
  EXPECT_EQ(tests::FilesBelow(onHost), stored);
  EXPECT_EQ(PicturePathOf(m_Paths, onHost / "roof.jpg"), folder + u"roof.jpg");
  for (const std::string& elsewhere : {std::string("/elsewhere"), m_Folder.Path().native() + "x"})
    EXPECT_EQ(PicturePathOf(m_Paths, elsewhere + "/a.jpg"), device::FromUtf8(elsewhere + "/a.jpg"));
}

TEST_F(AttachmentTest, PicturesOfACommentTellWhetherTheyAreThere) {
  for (const char* there : {"Card/a.jpg", "Pictures/roof.jpg"}) m_Folder.Put(there, "x");
  CardPictures card(m_Files, m_Paths, u"\\Card\\");
  const Text comment =
      u"***Picture-1;Scaling=30*** ***Picture-9*** ***Path=\\pictures\\ROOF.jpg*** ***Path=\\no.jpg*** "
      u"***odd***";
  EXPECT_EQ(tests::Joined(PicturesOfComment(comment, card, m_Machine),
                          [](const CommentPicture& picture) {
                            return picture.path + (picture.missing ? u" missing " : u" ") +
                                   device::Decimal(picture.scaling);
                          }),
            u"\\Card\\a.jpg 30| missing 100|\\pictures\\ROOF.jpg 100|\\no.jpg missing 100")
      << "a tag of another kind names no picture";
}

}  // namespace
}  // namespace inspector::editing
