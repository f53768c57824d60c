// What the Comments page of the sheet does with the comment of the current step.
#pragma once

#include "editing/CommentPicklist.h"
#include "editing/PictureTagText.h"
#include "editing/Shortcuts.h"
#include "editing/StepSheet.h"

namespace inspector::editing {

// Whatever changes the comment is done in the sheet's draft and handed back, in the order in which it was
// done, so that a text field can do the same as steps that undo takes back. The caret moves behind a
// comment that was inserted; with a picture's tag it stays at the words where it was.
class CommentEditing {
public:
  CommentEditing(StepSheet& sheet, SheetDialogs& dialogs) : m_Sheet(sheet), m_Dialogs(dialogs) {}

  // To be called when the sheet shows another step: its picklist, caret at the beginning.
  void ShowStep();
  // Where the text field had its selection when it lost the focus.
  void SaveSelection(const TextSelection& selection) { m_Selection = selection; }

  const TextSelection& Selection() const { return m_Selection; }

  CommentPicklist& Picklist() { return *m_Picklist; }

  // Fills the placeholders of a prepared comment, then puts it at the caret. Nothing when that is cancelled.
  std::optional<TextChange> Insert(TextView comment);
  // What the word that ends at `wordEnd` of `line` stands for, its placeholders filled one after the other.
  // Nothing when it is no shortcut, or when that is cancelled: then the word stays as it was typed.
  std::optional<TextChange> ExpandWord(TextView line, std::size_t wordEnd);
  // The "Comment Picker" dialog: what it deletes goes from the picklist, what it chooses is inserted one
  // after the other. A comment whose placeholders are cancelled is left out.
  std::vector<TextChange> OpenPicker();
  // The comments of a ticked material, offered in the same dialog without deleting.
  std::vector<TextChange> OfferMaterialComments(std::int32_t materialID);
  // The selected part of the comment, or all of it.
  CommentPicklist::Result AddToPicklist();

  // The tag of the camera's next picture.
  std::optional<TextChange> AddCameraPicture();
  TextChange AddKnownPicture(TextView devicePath);

private:
  std::vector<TextChange> InsertAll(const std::vector<Text>& comments);
  TextChange Apply(TextChange change);

  StepSheet& m_Sheet;
  SheetDialogs& m_Dialogs;
  TextSelection m_Selection;
  std::optional<CommentPicklist> m_Picklist;
  std::optional<Shortcuts> m_Shortcuts;  // as they were when the first word was finished
};

}  // namespace inspector::editing
