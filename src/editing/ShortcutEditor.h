// The shortcut editor: abbreviations and what they stand for.
#pragma once

#include <vector>

#include "data/Workspace.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

class ShortcutEditor {
public:
  explicit ShortcutEditor(data::Workspace& workspace) : m_Workspace(workspace) {}

  struct Shortcut {
    std::int32_t id = 0;
    Text shortCut;
    Text expanded;
  };
  // By the abbreviation, without regard to case.
  std::vector<Shortcut> All();

  enum class Result { Done, NotOneWord, NothingToExpand, Taken, Failed };
  // An abbreviation is one word that no other row has, without regard to case.
  Result Add(TextView shortCut, TextView expanded);
  Result Change(std::int32_t id, TextView shortCut, TextView expanded);
  // Asks. False when the person does not want to, or it failed.
  bool Delete(std::int32_t id);

private:
  Result Write(std::optional<std::int32_t> id, TextView shortCut, TextView expanded);

  data::Workspace& m_Workspace;
};

}  // namespace inspector::editing
