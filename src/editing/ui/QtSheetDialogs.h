// The dialogs of the "Step Properties" sheet on the screen.
#pragma once

#include <QWidget>

#include "editing/SheetDialogs.h"

namespace inspector::editing::ui {

// Stand over `parent`, which outlives this.
class QtSheetDialogs : public SheetDialogs {
public:
  explicit QtSheetDialogs(QWidget& parent) : m_Parent(parent) {}

  std::optional<Text> AskReplacement(const ReplacementQuestion& question) override;
  bool PickComments(CommentPicker& picker) override;
  std::optional<std::filesystem::path> AskPictureFile(const std::filesystem::path& folder,
                                                      const Text& filter) override;

private:
  QWidget& m_Parent;
};

}  // namespace inspector::editing::ui
