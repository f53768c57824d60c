// What the "Step Properties" sheet does: it shows one step of a category after the other and writes each
// back.
#pragma once

#include <optional>
#include <vector>

#include "data/StepTable.h"
#include "editing/Materials.h"
#include "editing/RatingDropDown.h"
#include "editing/SheetDialogs.h"
#include "inspection/InspectorDoc.h"
#include "inspection/UndoLog.h"

namespace inspector::editing {

// What a person changes of a step, beside its materials. As entered; what begins with a control character is
// stored without it.
struct StepDraft {
  Text result;
  Text comments;
  Text summaryComment;
  Text materialNote;
  Text bitmapPath;
  bool pictureBefore = false;

  bool operator==(const StepDraft&) const = default;
};

// Keys, not positions: when another program takes steps away, the others stay reachable, and what was entered
// for a step that is gone stays in the sheet until Discard.
class StepSheet {
public:
  enum class Page { Materials, Comments, Picture, Info };

  explicit StepSheet(inspection::CInspectorDoc& document);

  // Reads the steps of the category and shows the one with this key; of the one shown before, what is not
  // written must have been. False when there is no such step.
  bool Open(std::int32_t categoryID, std::int32_t stepID);
  bool HasStep() const { return m_Current >= 0; }
  data::Workspace& GetWorkspace() { return m_Document.GetWorkspace(); }

  // "%s. %s": step number, title.
  Text Caption() const;
  const Text& Title() const { return m_Step.m_StepTitle; }
  std::int32_t InspectionID() { return m_Document.Inspection().m_InspectionID; }
  std::int32_t StepID() const { return m_Step.m_StepID; }
  std::int32_t CategoryID() const { return m_Step.m_CategoryID; }
  std::int32_t StepTemplateID() const { return m_Step.m_StepTemplateID; }
  // The template's information about the step.
  Text StepInfo();

  // In their order; Materials only when the step's template has materials.
  const std::vector<Page>& Pages() const { return m_Pages; }
  // The page that stands at this place among them; an index beyond the last means the last.
  Page PageAt(int index) const;
  // The option's page, for a sheet that was opened without pointing at a column: 0 to 3 for all four pages in
  // their order. Where that one is missing, the first.
  Page DefaultPage();

  bool IsFirst() const { return m_Current <= 0; }
  bool IsLast() const { return m_Current + 1 >= m_Steps.RecordCount(); }
  // Writes the step back and shows the one before or after it. False, and the same step, when there is none
  // or the step could not be written.
  bool MoveToPrevious();
  bool MoveToNext();
  bool MoveTo(std::int32_t stepID);

  const StepDraft& Draft() const { return m_Draft; }
  void SetComments(Text comments) { m_Draft.comments = std::move(comments); }
  void SetSummaryComment(Text comment) { m_Draft.summaryComment = std::move(comment); }
  void SetMaterialNote(Text note) { m_Draft.materialNote = std::move(note); }
  void SetBitmapPath(Text path) { m_Draft.bitmapPath = std::move(path); }
  void SetPictureBefore(bool before) { m_Draft.pictureBefore = before; }

  const RatingDropDown& Ratings() const { return m_Ratings; }
  void PickRating(std::size_t entry);

  const std::vector<MaterialBox>& Materials() const { return m_Materials->Boxes(); }
  // Ticking the free box asks for the material, one with placeholders for what they stand for. False when the
  // person cancels that or enters nothing: the box stays as it was.
  bool TickMaterial(SheetDialogs& dialogs, std::size_t box, bool ticked);

  bool HasChanges() const;
  // Writes what was changed, with the category's complete flag, in one transaction; columns that were not
  // touched keep what another program has written meanwhile. True when there was nothing to write. To be
  // called a moment after the first key and when the window loses the focus.
  bool SaveNow();
  // The same before another step is shown or the sheet closes. The materials are built anew from the boxes:
  // what the step's template no longer offers goes, which the person is told.
  bool SaveOnLeaving();
  // Drops what could not be written.
  void Discard();
  // What was written since the step was shown can be taken back from now on.
  void LetUndo();

private:
  bool Show(int row, int direction);
  void TakeOver(const data::StepTable& step);
  bool Write(bool withMaterials);

  inspection::CInspectorDoc& m_Document;
  data::StepTable m_Steps;
  data::StepTable m_Step;  // the row as it was read or last written
  int m_Current = -1;
  StepDraft m_Loaded;
  StepDraft m_Draft;
  std::optional<MaterialBoxes> m_Materials;
  Text m_LoadedMaterials;  // as the boxes would have stored them when they were read
  Text m_ReadMaterials;    // as they were
  Text m_Unknown;          // of these, what no box stands for
  Text m_Dropped;          // what is to be told of it when the step is left
  std::vector<Page> m_Pages;
  Text m_RatingType;
  RatingDropDown m_Ratings;
  std::optional<inspection::UndoRecording> m_Recording;  // since the step was shown
};

}  // namespace inspector::editing
