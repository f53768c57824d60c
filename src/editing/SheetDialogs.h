// What the "Step Properties" sheet asks a person beyond the plain boxes of Prompts. Screens and tests each
// bring their own.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

class CommentPicker;

struct ReplacementQuestion {
  Text prompt;
  bool offersChoices = false;  // without, there is only the text to type
  std::vector<Text> choices;   // of the picker in their order, then the alternatives of a list
  Text before;                 // what stands around the gap, to show which one it is
  Text after;
};

class SheetDialogs {
public:
  virtual ~SheetDialogs() = default;
  // What to put in the place of a placeholder; nothing when the person cancels.
  virtual std::optional<Text> AskReplacement(const ReplacementQuestion& question) = 0;
  // Shows the prepared comments. The person's choice and what is to be deleted stand in the picker
  // afterwards; false on Cancel.
  virtual bool PickComments(CommentPicker& picker) = 0;
  // A graphic file that exists, on the host; `folder` is shown first.
  virtual std::optional<std::filesystem::path> AskPictureFile(const std::filesystem::path& folder,
                                                              const Text& filter) = 0;
};

}  // namespace inspector::editing
