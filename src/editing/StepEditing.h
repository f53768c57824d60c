// One finding: rating, comment and material of a step, written at once.
#pragma once

#include <optional>

#include "data/StepTable.h"
#include "data/Workspace.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// Each call is one transaction: the step, then the complete flag of its category.
class StepEditing {
public:
  explicit StepEditing(data::Workspace& workspace) : m_Workspace(workspace) {}

  enum class Result { Done, NoSuchStep, NotOffered, Failed };

  // `rating` must be a choice of the step's type; an empty one clears. `promptsForComment` tells whether the
  // choice asks for an explanation.
  Result Rate(std::int32_t stepID, TextView rating, bool* promptsForComment = nullptr);

  // Appends a comment, after the separator when there is text. An empty comment changes nothing.
  Result AppendComment(std::int32_t stepID, TextView comment);

  struct MaterialNote {
    bool hasComments = false;  // the library has some for the material
    Text lost;                 // what stood among the materials and is none of the step's any more
  };
  // Ticks a material that the step offers, by its exact text or, where it has gaps, by the text with the gaps
  // filled; or puts the words into the free box, replacing what stood there. Words with a ";" are not
  // offered: they would read as two materials.
  Result AddMaterial(std::int32_t stepID, TextView material, MaterialNote* note = nullptr);

  // Between two comments: a blank line or two blanks, by the option.
  Text CommentSeparator();

private:
  bool Find(data::StepTable& step, std::int32_t stepID);
  Result WriteStep(data::StepTable& step, data::Transaction& transaction);

  data::Workspace& m_Workspace;
};

}  // namespace inspector::editing
