#include "editing/PictureTags.h"

#include <algorithm>

#include "device/TextMarks.h"

namespace inspector::editing {
namespace {

using device::Contains;
using device::ReplaceAll;

constexpr TextView kMark = device::kTagMark;
constexpr TextView kScaling = u";Scaling=";
constexpr TextView kPath = u"Path=";
constexpr TextView kPicture = u"Picture-";
constexpr TextView kDesktopDrive = u"C:\\";
constexpr int kFullSize = 100;

// The first tag, after removing it wherever it stands.
Text TakeFirstTag(Text& text) {
  Text tag = FindFirstTag(text);
  if (!tag.empty()) text = ReplaceAll(std::move(text), tag, {});
  return tag;
}

}  // namespace

Text FindFirstTag(TextView text) {
  const std::optional<device::TextRange> range = device::FindTagRange(text);
  return range ? Text(text.substr(range->at, range->length)) : Text();
}

Text StripTags(TextView text) {
  Text rest(text);
  while (!TakeFirstTag(rest).empty()) {
  }
  return rest;
}

std::vector<Text> DistinctTags(TextView text) {
  std::vector<Text> tags;
  Text rest(text);
  for (Text tag = TakeFirstTag(rest); !tag.empty(); tag = TakeFirstTag(rest)) tags.push_back(std::move(tag));
  return tags;
}

TextView ClassifyTag(TextView tag) {
  if (Contains(tag, kPath)) return kKnownPicture;
  if (Contains(tag, kPicture)) return kGenericPicture;
  return kError;
}

int GetTagScaling(TextView tag) {
  Text body(tag);
  std::erase(body, u'*');
  const std::size_t found = body.find(kScaling);
  if (found == Text::npos) return kFullSize;
  return device::LeadingInteger(TextView(body).substr(found + kScaling.size()));
}

Text GetKnownPicturePath(TextView tag, TextView cardFolder) {
  Text path(tag);
  if (Contains(path, Text(kPath).append(kDesktopDrive))) path = ReplaceAll(path, kDesktopDrive, cardFolder);
  if (path.size() < 2 * kMark.size()) return {};
  path = path.substr(kMark.size(), path.size() - 2 * kMark.size());
  path.resize(std::min(path.find(u';'), path.size()));
  return ReplaceAll(path, kPath, {});
}

GenericPicture ReadGenericPicture(TextView tag) {
  Text body = ReplaceAll(ReplaceAll(Text(tag), kPicture, {}), kMark, {});
  GenericPicture picture;
  picture.scaling = GetTagScaling(body);
  // "***Picture-;Scaling=50***" has no number, and the 50 must not be taken for one.
  body = ReplaceAll(body, Text(kScaling) + device::Decimal(picture.scaling), {});
  picture.number = device::LeadingInteger(body);
  return picture;
}

}  // namespace inspector::editing
