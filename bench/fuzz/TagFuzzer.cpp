// Any text as a comment: its tags must be found where they stand, and words without tags must stay.
#include "Fuzzer.h"
#include "editing/PictureTags.h"

namespace inspector::fuzz {
namespace {

using device::Text;
using device::TextView;

// As the bytes of UTF-16, so that every unit can come up, halves of characters too.
Text TextOf(const std::uint8_t* bytes, std::size_t size) {
  Text text;
  for (std::size_t at = 0; at + 1 < size; at += 2)
    text += static_cast<char16_t>(bytes[at] | static_cast<char16_t>(bytes[at + 1]) << 8);
  return text;
}

void TryTag(TextView tag) {
  const TextView kind = editing::ClassifyTag(tag);
  Expect(kind == editing::kKnownPicture || kind == editing::kGenericPicture || kind == editing::kError,
         "a tag is of one of the three kinds");
  editing::GetTagScaling(tag);
  editing::GetKnownPicturePath(tag, u"\\Storage Card\\");
  editing::ReadGenericPicture(tag);
}

void TryAll(const Text& text) {
  const Text first = editing::FindFirstTag(text);
  Expect(first.empty() || device::Contains(text, first), "a tag stands in its text");
  const Text words = editing::StripTags(text);
  Expect(editing::FindFirstTag(words).empty(), "no tag is left");
  Expect(words.size() <= text.size() && (!first.empty() || words == text), "words without tags stay");
  const std::vector<Text> tags = editing::DistinctTags(text);
  Expect(first.empty() == tags.empty() && (tags.empty() || tags.front() == first),
         "the first tag is the first");
  for (const Text& tag : tags) TryTag(tag);
  TryTag(text);
}

}  // namespace
}  // namespace inspector::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  inspector::fuzz::TryAll(inspector::fuzz::TextOf(bytes, size));
  return 0;
}
