// The tags "***...***" inside comments: where a photograph belongs to the words around it.
//
// A tag runs from three asterisks to the next three. "***Path=\Storage Card\a.jpg;Scaling=50***" names a
// file,
// "***Picture-12;Scaling=100***" the twelfth picture of the card. Nothing else is markup, and there is no way
// to write three asterisks as plain text but leaving them unclosed. All words are matched with their case.
#pragma once

#include <vector>

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

inline constexpr TextView kKnownPicture = u"Known Picture";
inline constexpr TextView kGenericPicture = u"Generic Picture";
inline constexpr TextView kError =
    u"ERROR";  // a tag of neither kind, and the path of a picture that is not there

// The first tag with its asterisks; empty when there is none.
Text FindFirstTag(TextView text);
// The words without the tags. Blanks beside a tag stay. What a removed tag joins may form a new one.
Text StripTags(TextView text);
// Every tag once, in the order in which StripTags meets them, which is the order of the pictures. One that
// only the removal of another puts together again counts again.
std::vector<Text> DistinctTags(TextView text);

// kKnownPicture, kGenericPicture or kError.
TextView ClassifyTag(TextView tag);
// Percent; 100 where the tag does not say. What it says is passed on, even 0 or less.
int GetTagScaling(TextView tag);
// A path that begins with "C:\" comes from a desktop: there stands the card's folder instead.
Text GetKnownPicturePath(TextView tag, TextView cardFolder);

struct GenericPicture {
  int number = 0;  // from 1; anything less names no picture
  int scaling = 100;
};
GenericPicture ReadGenericPicture(TextView tag);

}  // namespace inspector::editing
