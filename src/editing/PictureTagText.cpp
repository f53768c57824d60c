#include "editing/PictureTagText.h"

#include <algorithm>
#include <limits>

#include "device/Format.h"
#include "editing/PictureTags.h"
#include "editing/TagPictures.h"

namespace inspector::editing {
namespace {

using device::Format;
using device::ReplaceAll;

constexpr TextView kMark = u"***";
constexpr TextView kScaling = u";Scaling=";

struct Place {
  std::size_t at;
  Text tag;
};

// The tags as they stand, from left to right.
std::vector<Place> PlacesOfTags(TextView text) {
  std::vector<Place> places;
  std::size_t from = 0;
  for (Text tag = FindFirstTag(text); !tag.empty(); tag = FindFirstTag(text.substr(from))) {
    const std::size_t at = text.find(tag, from);
    from = at + tag.size();
    places.push_back({at, std::move(tag)});
  }
  return places;
}

std::vector<Text> TagsOfPictures(TextView text) {
  std::vector<Text> tags = DistinctTags(text);
  std::erase_if(tags, [](const Text& tag) { return ClassifyTag(tag) == kError; });
  return tags;
}

}  // namespace

std::optional<Text> TakeCameraTag(data::Workspace& workspace) {
  data::OptionsTable& options = workspace.Options();
  const std::int32_t before = options.m_NextPictNumber;
  // No card has that many; the largest number must not wrap around to one below 1.
  const std::int32_t number = std::clamp(before, 1, std::numeric_limits<std::int32_t>::max() - 1);
  options.m_NextPictNumber = number + 1;
  if (!options.Write()) {
    options.m_NextPictNumber = before;
    return std::nullopt;
  }
  return Format(u" ***Picture-%d;Scaling=100***", number);
}

Text KnownPictureTag(TextView devicePath, int scaling) {
  return Format(u" ***Path=%s;Scaling=%d***", devicePath, scaling);
}

std::vector<CommentPicture> PicturesOfComment(TextView text, CardPictures& card,
                                              const device::Machine& machine) {
  std::vector<CommentPicture> pictures;
  for (TagPicture& found : PicturesOf(text, card)) {
    if (ClassifyTag(found.tag) == kError) continue;  // it names none; its words stay words
    CommentPicture picture;
    picture.scaling = found.scaling;
    if (found.path != kError) picture.path = std::move(found.path);
    picture.missing =
        picture.path.empty() || !machine.files.Exists(machine.paths.ResolvePicture(picture.path));
    picture.tag = std::move(found.tag);
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

Text WithoutPicture(TextView text, TextView tag) {
  if (tag.empty() || FindFirstTag(tag) != tag) return Text(text);
  return ReplaceAll(ReplaceAll(Text(text), u" " + Text(tag), {}), tag, {});
}

Text WithScaling(TextView text, TextView tag, int scaling) {
  if (tag.empty() || FindFirstTag(tag) != tag) return Text(text);
  TextView body = tag.substr(kMark.size(), tag.size() - 2 * kMark.size());
  body = body.substr(0, body.find(kScaling));
  return ReplaceAll(Text(text), tag, Format(u"***%s;Scaling=%d***", body, scaling));
}

Text WithPictureMoved(TextView text, std::size_t from, std::size_t to) {
  std::vector<Place> places = PlacesOfTags(text);
  // A repeated tag is one picture, where it stands first.
  std::vector<Text> order;
  std::erase_if(places, [&order](const Place& place) {
    if (ClassifyTag(place.tag) == kError) return true;
    if (std::find(order.begin(), order.end(), place.tag) != order.end()) return true;
    order.push_back(place.tag);
    return false;
  });
  if (order != TagsOfPictures(text) || from >= order.size() || to >= order.size()) return Text(text);

  Text moved = std::move(order[from]);
  order.erase(order.begin() + static_cast<std::ptrdiff_t>(from));
  order.insert(order.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
  Text result;
  std::size_t end = 0;
  for (std::size_t n = 0; n < places.size(); ++n) {
    result += text.substr(end, places[n].at - end);
    result += order[n];
    end = places[n].at + places[n].tag.size();
  }
  result += text.substr(end);
  // An asterisk beside a tag can join another one; a text where that happens is left alone.
  const std::vector<Text> before = DistinctTags(text);
  const std::vector<Text> after = DistinctTags(result);
  const bool isSame = std::is_permutation(before.begin(), before.end(), after.begin(), after.end());
  return isSame && TagsOfPictures(result) == order ? result : Text(text);
}

}  // namespace inspector::editing
