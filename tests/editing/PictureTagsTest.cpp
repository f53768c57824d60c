#include "editing/PictureTags.h"

#include <gtest/gtest.h>

namespace inspector::editing {
namespace {

using device::ToUtf8;

TEST(PictureTagsTest, WordsAndTagsArePartedInTheirOrder) {
  struct Case {
    Text text;
    Text words;
    std::vector<Text> tags;
  };
  const std::vector<Case> cases = {
      {u"", u"", {}},
      {u"No tag, ** only two.", u"No tag, ** only two.", {}},
      {u"a ***x*** b ***y***", u"a  b ", {u"***x***", u"***y***"}},
      {u"Left ***Picture-3;Scaling=50*** right", u"Left  right", {u"***Picture-3;Scaling=50***"}},
      {u"one ***x*** then open ***y", u"one  then open ***y", {u"***x***"}},
      {u"******", u"", {u"******"}},
      {u"****x****", u"*", {u"****x***"}},
      // Once for both places.
      {u"***a***1***b***2***a***3", u"123", {u"***a***", u"***b***"}},
      // What stood apart becomes a tag when the one between goes.
      {u"***a***.****a*****.end***", u".", {u"***a***", u"***.end***"}},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(StripTags(one.text), one.words) << ToUtf8(one.text);
    EXPECT_EQ(DistinctTags(one.text), one.tags) << ToUtf8(one.text);
    EXPECT_EQ(FindFirstTag(one.text), one.tags.empty() ? Text() : one.tags[0]) << ToUtf8(one.text);
  }
}

TEST(PictureTagsTest, TheKindGoesByTheWordsInTheTag) {
  EXPECT_EQ(ClassifyTag(u"***Path=\\a.jpg***"), kKnownPicture);
  EXPECT_EQ(ClassifyTag(u"***Picture-12***"), kGenericPicture);
  EXPECT_EQ(ClassifyTag(u"***Picture-1 Path=***"), kKnownPicture);
  EXPECT_EQ(ClassifyTag(u"***path=\\a.jpg***"), kError);
  EXPECT_EQ(ClassifyTag(u"***picture-1***"), kError);
  EXPECT_EQ(ClassifyTag(u"******"), kError);
}

TEST(PictureTagsTest, TheScalingIsWhatTheTagSays) {
  const std::vector<std::pair<Text, int>> cases = {
      {u"***Picture-1***", 100},
      {u"***Picture-1;Scaling=50***", 50},
      {u"***Picture-2;Scaling=abc***", 0},
      {u"***Picture-2;Scaling= -7%***", -7},
      {u"***Picture-2;Scaling=***", 0},
      {u"***Picture-2;scaling=50***", 100},
      {u"***Path=a;Note=3;Scaling=40;Scaling=60***", 40},
      {u"***Path=a;Sc*aling=30***", 30},  // asterisks are dropped first
      {u"***Picture-1;Scaling=99999999999***", 2147483647},
  };
  for (const auto& [tag, scaling] : cases) EXPECT_EQ(GetTagScaling(tag), scaling) << ToUtf8(tag);
}

TEST(PictureTagsTest, AKnownPictureHasItsPath) {
  const std::vector<std::pair<Text, Text>> cases = {
      {u"***Path=\\Storage Card\\house.jpg;Scaling=50***", u"\\Storage Card\\house.jpg"},
      {u"***Path=C:\\pics\\a.jpg***", u"\\Storage Card\\pics\\a.jpg"},
      {u"***Path=C:\\C:\\a.jpg***", u"\\Storage Card\\\\Storage Card\\a.jpg"},
      {u"***Path=D:\\C:\\a.jpg***", u"D:\\C:\\a.jpg"},
      {u"***my Path=a Path=b.jpg***", u"my a b.jpg"},
      {u"***;Path=a***", u""},
      {u"***Path=***", u""},
      {u"Path=", u""},  // too short to have lost its asterisks
  };
  for (const auto& [tag, path] : cases)
    EXPECT_EQ(GetKnownPicturePath(tag, u"\\Storage Card\\"), path) << ToUtf8(tag);
}

TEST(PictureTagsTest, AGenericPictureHasItsNumber) {
  struct Case {
    Text tag;
    int number;
    int scaling;
  };
  const std::vector<Case> cases = {
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
  };
  for (const Case& one : cases) {
    const GenericPicture picture = ReadGenericPicture(one.tag);
    EXPECT_EQ(picture.number, one.number) << ToUtf8(one.tag);
    EXPECT_EQ(picture.scaling, one.scaling) << ToUtf8(one.tag);
  }
}

}  // namespace
}  // namespace inspector::editing
