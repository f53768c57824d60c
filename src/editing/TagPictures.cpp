#include "editing/TagPictures.h"

#include "editing/PictureTags.h"

namespace inspector::editing {
namespace {

TagPicture Resolve(Text tag, CardPictures& card) {
  TagPicture picture;
  const TextView kind = ClassifyTag(tag);
  if (kind == kKnownPicture) {
    picture.path = GetKnownPicturePath(tag, card.Folder());
    picture.scaling = GetTagScaling(tag);
  } else if (kind == kGenericPicture) {
    const GenericPicture generic = ReadGenericPicture(tag);
    picture.path = card.Find(generic.number);
    picture.scaling = generic.scaling;
  }
  picture.tag = std::move(tag);
  return picture;
}

}  // namespace

std::vector<TagPicture> PicturesOf(TextView text, CardPictures& card) {
  std::vector<TagPicture> pictures;
  for (Text& tag : DistinctTags(text)) pictures.push_back(Resolve(std::move(tag), card));
  return pictures;
}

}  // namespace inspector::editing
