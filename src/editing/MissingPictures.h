// Whether the pictures of a step are there, and photographs those that they should be: one of which nothing
// but its name is left counts as missing. One that breaks off further on is found by the report.
#pragma once

#include <unordered_map>

#include "data/StepTable.h"
#include "data/Workspace.h"
#include "editing/CardPictures.h"

namespace inspector::editing {

// Looks for each file once, however many steps name it, and reads the card's folder once; make a new one
// when the disk may have changed.
class MissingPictures {
public:
  explicit MissingPictures(data::Workspace& workspace);

  // The step's own picture, or one that a tag of its comments names, is not there. A tag that names nothing
  // is no picture.
  bool IsLackedBy(const data::StepTable& step);
  // The step's own picture alone.
  bool IsLackedOn(const data::StepTable& step) {
    return !step.m_BitmapPath.empty() && IsMissing(step.m_BitmapPath);
  }

private:
  bool IsMissing(const Text& path);
  bool IsLackedBy(TextView comment);

  const device::Machine& m_Machine;
  CardPictures m_Card;
  std::unordered_map<Text, bool> m_Missing;  // by path
};

}  // namespace inspector::editing
