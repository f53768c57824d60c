// Writing picture tags into a comment, and changing those that are there.
#pragma once

#include <optional>
#include <vector>

#include "data/Workspace.h"
#include "device/Text.h"
#include "editing/CardPictures.h"

namespace inspector::editing {

// " ***Picture-12;Scaling=100***": the picture that the camera takes next. Counts the number up in the
// options. Nothing when that could not be written, or the number would be used twice.
std::optional<Text> TakeCameraTag(data::Workspace& workspace);

// " ***Path=\My Documents\Pictures\1000\roof.jpg;Scaling=100***". Numbers point at other files as soon as the
// card is changed; a path does not.
Text KnownPictureTag(TextView devicePath, int scaling = 100);

// One picture of a comment, as it stands beside the text.
struct CommentPicture {
  Text tag;
  Text path;            // empty for a tag that names no picture
  int scaling = 100;    // percent
  bool missing = true;  // there is no such file
};

// In the order of the report.
std::vector<CommentPicture> PicturesOfComment(TextView text, CardPictures& card,
                                              const device::Machine& machine);

// Each returns the text with the change; a tag that is not there changes nothing.
// Takes the tag out wherever it stands, with the blank that was put before it.
Text WithoutPicture(TextView text, TextView tag);
Text WithScaling(TextView text, TextView tag, int scaling);
// Pictures change places, the words stay where they are. `from` and `to` count the pictures from 0.
Text WithPictureMoved(TextView text, std::size_t from, std::size_t to);

}  // namespace inspector::editing
