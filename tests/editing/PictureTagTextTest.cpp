#include "editing/PictureTagText.h"

#include "editing/PictureAttachment.h"
#include "editing/PictureTags.h"
#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

TEST(PictureTagTextTest, PicturesAreTakenOutScaledAndMoved) {
  const Text text = u"Eaves ***Picture-1*** and ridge ***Path=\\a.jpg;Scaling=50***. ***odd***";
  EXPECT_EQ(WithoutPicture(text, u"***Picture-1***"),
            u"Eaves and ridge ***Path=\\a.jpg;Scaling=50***. ***odd***");
  EXPECT_EQ(WithScaling(text, u"***Path=\\a.jpg;Scaling=50***", 75),
            u"Eaves ***Picture-1*** and ridge ***Path=\\a.jpg;Scaling=75***. ***odd***");
  EXPECT_EQ(WithScaling(text, u"***Picture-1***", 25),
            u"Eaves ***Picture-1;Scaling=25*** and ridge ***Path=\\a.jpg;Scaling=50***. ***odd***");
  for (const auto& [from, to] : {std::pair(0, 1), std::pair(1, 0)})
    EXPECT_EQ(WithPictureMoved(text, static_cast<std::size_t>(from), static_cast<std::size_t>(to)),
              u"Eaves ***Path=\\a.jpg;Scaling=50*** and ridge ***Picture-1***. ***odd***");
  for (const TextView none : {u"***Picture-2***", u"Picture-1", u""}) {
    EXPECT_EQ(WithoutPicture(text, none), text);
    EXPECT_EQ(WithScaling(text, none, 10), text);
  }
  EXPECT_EQ(WithPictureMoved(text, 0, 2), text) << "the last tag names no picture";
}

TEST(PictureTagTextTest, ARepeatedTagIsOnePicture) {
  const Text text = u"A ***Picture-1*** B ***Picture-1*** C ***Picture-2***";
  EXPECT_EQ(WithPictureMoved(text, 1, 0), u"A ***Picture-2*** B ***Picture-1*** C ***Picture-1***");
  EXPECT_EQ(WithoutPicture(text, u"***Picture-1***"), u"A B C ***Picture-2***");
  const Text asterisks = WithPictureMoved(u"***Picture-2**** x ***Picture-1***", 1, 0);
  EXPECT_EQ(asterisks, u"***Picture-1**** x ***Picture-2***");
  EXPECT_EQ(StripTags(asterisks), u"* x ") << "the words stay";
}

class AttachmentTest : public ::testing::Test, protected tests::ScriptedMachine {};

TEST_F(AttachmentTest, ANameCanStandInATag) {
  struct Case {
    Text original;
    Text name;
  };
  for (const auto& [original, name] : std::vector<Case>{
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
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"roof.jpg", "one"),
            u"\\My Documents\\Pictures\\1000\\roof.jpg");
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"roof.jpg", "two"),
            u"\\My Documents\\Pictures\\1000\\roof-2.jpg");
  EXPECT_EQ(tests::ContentOf(m_Folder / "My Documents/Pictures/1000/roof.jpg"), "one");
  EXPECT_EQ(tests::ContentOf(m_Folder / "My Documents/Pictures/1000/roof-2.jpg"), "two");
  m_Files.FailWrite(1);
  EXPECT_EQ(StoreAttachment(m_Machine, 1000, u"wall.jpg", "three"), std::nullopt);
  EXPECT_EQ(m_Faults.Count(), 1);
  EXPECT_EQ(PicturePathOf(m_Paths, m_Folder / "My Documents/Pictures/1000/roof.jpg"),
            u"\\My Documents\\Pictures\\1000\\roof.jpg");
  EXPECT_EQ(PicturePathOf(m_Paths, "/elsewhere/a.jpg"), u"/elsewhere/a.jpg");
  EXPECT_EQ(PicturePathOf(m_Paths, m_Folder.Path().native() + "x/a.jpg"),
            device::FromUtf8(m_Folder.Path().native()) + u"x/a.jpg");
}

TEST_F(AttachmentTest, PicturesOfACommentTellWhetherTheyAreThere) {
  m_Folder.Put("Card/a.jpg", "x");
  m_Folder.Put("Pictures/roof.jpg", "x");
  CardPictures card(m_Files, m_Paths, u"\\Card\\");
  std::vector<Text> lines;
  for (const CommentPicture& picture : PicturesOfComment(
           u"***Picture-1;Scaling=30*** ***Picture-9*** ***Path=\\pictures\\ROOF.jpg*** ***Path=\\no.jpg*** "
           u"***odd***",
           card, m_Machine))
    lines.push_back(picture.path + (picture.missing ? u" missing " : u" ") +
                    device::Decimal(picture.scaling));
  EXPECT_THAT(lines, ElementsAre(u"\\Card\\a.jpg 30", u" missing 100", u"\\pictures\\ROOF.jpg 100",
                                 u"\\no.jpg missing 100"))
      << "a tag of another kind names no picture";
}

}  // namespace
}  // namespace inspector::editing
