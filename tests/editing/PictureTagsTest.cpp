#include "editing/PictureTags.h"

#include <gtest/gtest.h>

namespace inspector::editing {
namespace {

using device::ToUtf8;

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
  for (const auto& [tag, kind] :
       std::vector<std::pair<Text, TextView>>{{u"***Path=\\a.jpg***", kKnownPicture},
                                              {u"***Picture-12***", kGenericPicture},
                                              {u"***Picture-1 Path=***", kKnownPicture},
                                              {u"***path=\\a.jpg***", kError},
                                              {u"***picture-1***", kError},
                                              {u"******", kError}})
    EXPECT_EQ(ClassifyTag(tag), kind) << ToUtf8(tag);
}

TEST(PictureTagsTest, TheScalingIsWhatTheTagSays) {
  for (const auto& [tag, scaling] : std::vector<std::pair<Text, int>>{
           {u"***Picture-1***", 100},
           {u"***Picture-1;Scaling=50***", 50},
           {u"***Picture-2;Scaling=abc***", 0},
           {u"***Picture-2;Scaling= -7%***", -7},
           {u"***Picture-2;Scaling=***", 0},
           {u"***Picture-2;scaling=50***", 100},
           {u"***Path=a;Note=3;Scaling=40;Scaling=60***", 40},
           {u"***Path=a;Sc*aling=30***", 30},  // asterisks are dropped first
           {u"***Picture-1;Scaling=99999999999***", 2147483647},
       })
    EXPECT_EQ(GetTagScaling(tag), scaling) << ToUtf8(tag);
}

TEST(PictureTagsTest, AKnownPictureHasItsPath) {
  for (const auto& [tag, path] : std::vector<std::pair<Text, Text>>{
           {u"***Path=\\Storage Card\\house.jpg;Scaling=50***", u"\\Storage Card\\house.jpg"},
           {u"***Path=C:\\pics\\a.jpg***", u"\\Storage Card\\pics\\a.jpg"},
           {u"***Path=C:\\C:\\a.jpg***", u"\\Storage Card\\\\Storage Card\\a.jpg"},
           {u"***Path=D:\\C:\\a.jpg***", u"D:\\C:\\a.jpg"},
           {u"***my Path=a Path=b.jpg***", u"my a b.jpg"},
           {u"***;Path=a***", u""},
           {u"***Path=***", u""},
           {u"Path=", u""},  // too short to have lost its asterisks
       })
    EXPECT_EQ(GetKnownPicturePath(tag, u"\\Storage Card\\"), path) << ToUtf8(tag);
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

}  // namespace
}  // namespace inspector::editing
