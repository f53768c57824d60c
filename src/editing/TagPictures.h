// Which picture files the tags of a text name.
#pragma once

#include <vector>

#include "editing/CardPictures.h"

namespace inspector::editing {

struct TagPicture {
  Text tag;
  Text path;  // empty for a tag of no known kind, "ERROR" for a number that the card does not have
  int scaling = 100;
};

// One picture for each distinct tag of the text, in their order.
std::vector<TagPicture> PicturesOf(TextView text, CardPictures& card);

}  // namespace inspector::editing
