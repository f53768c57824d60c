// What a test adds to the small library of a visit. Keys follow the highest there is.
#pragma once

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::tests {

using device::Text;

class LibraryAdditions {
public:
  explicit LibraryAdditions(data::Databases& databases) : m_Databases(databases) {}

  std::int32_t AddMaterial(std::int32_t step, const Text& material, bool isDefault = false);
  // The new comment's key.
  std::int32_t AddCommentToStep(std::int32_t step, const Text& comment, const Text& group = u"");
  void AddPicker(const Text& list, const Text& choice);
  void AddShortcut(const Text& shortCut, const Text& expanded);

private:
  data::Databases& m_Databases;
};

}  // namespace inspector::tests
