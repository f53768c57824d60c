// The "Comment Picker" dialog: prepared comments under the headings of their groups, to be found by typing,
// chosen and deleted.
#pragma once

#include <vector>

#include "device/WordFilter.h"
#include "editing/CommentLibrary.h"

namespace inspector::editing {

// Comments of one group must stand together. Nothing is written here: what was chosen and deleted is read
// afterwards.
class CommentPicker {
public:
  static constexpr TextView kPrompt = u"Select the text to be inserted";

  explicit CommentPicker(std::vector<LibraryComment> comments, bool mayDelete);

  bool MayDelete() const { return m_MayDelete; }

  // The rows to be shown: "<<Group>>" before the comments of a group that has a name; of a folded group only
  // that. Filtering shows what it finds in folded groups, too.
  struct Row {
    bool isHeading = false;
    std::size_t index = 0;  // of the group or of the comment
  };
  const std::vector<Row>& Rows() const { return m_Rows; }
  Text TextOf(const Row& row) const;
  bool IsFolded(const Row& heading) const { return m_Groups[heading.index].folded; }
  bool IsChosen(const Row& row) const;

  void SetFilter(TextView typed);
  void ToggleGroup(std::size_t group);
  // Comments are inserted in the order in which they were chosen; choosing one again takes it back.
  void ToggleChoice(std::size_t comment);
  void Delete(std::size_t comment);

  std::vector<Text> Chosen() const;
  const std::vector<Text>& Deleted() const { return m_Deleted; }

private:
  struct Group {
    Text name;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool folded = false;
  };

  void Arrange();

  std::vector<LibraryComment> m_Comments;
  std::vector<Text> m_Searchable;  // comment and group, as the filter compares them
  std::vector<char> m_Accepted;    // by the filter, and not deleted
  std::vector<char> m_IsDeleted;
  std::vector<Group> m_Groups;
  std::vector<Row> m_Rows;
  std::vector<std::size_t> m_Chosen;
  std::vector<Text> m_Deleted;
  device::WordFilter m_Filter;
  bool m_MayDelete;
};

}  // namespace inspector::editing
