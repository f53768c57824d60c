// The text field of a comment.
#pragma once

#include <functional>
#include <optional>

#include "device/ui/LinesEdit.h"
#include "editing/CommentText.h"

namespace inspector::editing::ui {

// Shows stored text, whose lines end in "\r\n", and gives it back that way. What `onWordFinished` makes of a
// word is a step of its own for undo. Pictures that are pasted or dropped go to `onPictures`.
class CommentBox : public device::ui::LinesEdit {
public:
  explicit CommentBox(QWidget* parent = nullptr);

  // Forgets what undo could take back.
  void Load(TextView stored);
  Text Stored() const;
  TextSelection StoredSelection() const;
  // Does again what was done to `before`, the text as it is shown now. `selection` counts in the text that
  // comes out.
  void Apply(Text before, const std::vector<TextChange>& changes, const TextSelection& selection);
  // Puts another text in the place of the whole, for undo one step.
  void Replace(TextView stored);

  std::function<void()> onEdited;
  // A word that ends at `wordEnd` of its line was finished; may ask the person.
  std::function<std::optional<TextChange>(TextView line, std::size_t wordEnd)> onWordFinished;
  std::function<void()> onLeft;  // the field loses the focus
  std::function<void(const QMimeData& pictures)> onPictures;

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

private:
  void ExpandFinishedWord(const QString& typed);
  bool HasPictures(const QMimeData& source) const;

  Text m_Loaded;          // as it is stored, while nothing was changed
  QString m_LoadedShown;  // the same as it is shown
  bool m_IsLoading = false;
};

}  // namespace inspector::editing::ui
