// What the step list shows and does: the steps of the current category with their rating and what is done.
#pragma once

#include <map>
#include <vector>

#include "device/ListColumns.h"
#include "device/RowSource.h"
#include "device/WordFilter.h"
#include "editing/EditingDialogs.h"
#include "editing/Materials.h"
#include "editing/MissingPictures.h"
#include "editing/Ratings.h"
#include "inspection/InspectorDoc.h"

namespace inspector::editing {

// Rows are counted from 0 in the order of the list, over those that the filter leaves. Every row is fetched
// when it is asked for.
class StepList : public device::RowSource {
public:
  StepList(inspection::CInspectorDoc& document, EditingDialogs& dialogs);

  // "Steps:", "Rating", "Materials", "Comments", "Picture", "Info".
  static std::vector<device::ListColumn> Columns();
  enum Column { kStep, kRating, kMaterials, kComments, kPicture, kInfo };

  // To be called on every showing: makes the steps of the document's current category when it has none, and
  // reads them. False when that failed.
  bool Show();
  Text Caption() const;
  Text CategoryTitle() const { return m_Document.Categories().m_CategoryTitle; }
  void SetFilter(TextView words);

  enum class Attention { None, NotRated, CommentAsked };
  struct Row {
    std::int32_t stepID = 0;
    Text label;      // "20.07. Title", or the title alone, by the option
    Text rating;     // empty while not rated
    Text materials;  // "Complete", "Incomplete", or "None": nothing to tick
    Text comments;   // "Complete" or "Incomplete"
    Text picture;
    bool gapInMaterials = false;
    bool gapInComments = false;
    bool lacksPicture = false;  // one that the step or its comments name is not there
    bool hasMaterials = false;  // so has the sheet a page for them
    bool hasInfo = false;
    Attention attention = Attention::None;
  };
  int RowCount() const override { return static_cast<int>(m_Shown.size()); }
  std::optional<Row> RowAt(int row);
  // Words for the cells: "Not rated" in place of an empty rating. A comment that the rating asks for, a
  // gap that is not filled and a picture that is missing are marks beside the words of their columns.
  device::ListRow ShownRow(int row) override;
  // The row of a step, -1 when it is not among those shown.
  int RowOf(std::int32_t stepID) const;
  // "3 of 12 steps to rate".
  Text LeftCaption();
  std::int32_t CategoryID() const { return m_Document.Categories().m_CategoryID; }

  // The entries of a row's drop-down: the choices of its type and "<clear>", or "<no ratings>" alone. None
  // when they could not be read.
  std::vector<Text> RatingEntries(int row);
  // Rates the step with an entry of the drop-down; "<clear>" empties, the others are stored. Opens the sheet
  // on its comments when the choice asks for a comment. False when nothing was written.
  bool ChangeRating(int row, TextView entry);

  // On a column with a page of the sheet: opens it there. On the step itself: on the page of the option. On
  // the rating: nothing, that is the drop-down's. True when the sheet was opened.
  bool Click(int row, int column);
  // On the page that the option asks for.
  bool OpenStep(int row);

  // Default materials and ratings for all steps of the category.
  bool ApplyDefaults();
  // Asks for a name and adds a copy of the step without its findings. The key of the copy, or nothing.
  std::optional<std::int32_t> DuplicateStep(int row);

private:
  void Refill();
  void FilterRows();
  bool Read(int row);
  const std::vector<RatingChoice>* Choices(const Text& ratingType);  // none when they cannot be read
  Attention AttentionFor(const data::StepTable& step);
  bool OpenColumn(int row, int column);
  bool OpenSheet(const Row& step, std::optional<int> tab);

  inspection::CInspectorDoc& m_Document;
  EditingDialogs& m_Dialogs;
  data::Databases& m_Databases;
  data::StepTable m_List;    // not the document's own: showing a row must not move the sheet
  std::vector<int> m_Shown;  // records of m_List
  device::WordFilter m_Filter;
  std::optional<MissingPictures> m_Pictures;            // as they were when the steps were read
  std::map<Text, std::vector<RatingChoice>> m_Choices;  // by rating type, since the last Show
  MaterialOffers m_Offers;                              // as it is since the last Show
};

}  // namespace inspector::editing
