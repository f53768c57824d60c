#include "editing/CommentPicker.h"

#include <algorithm>

#include "device/Format.h"

namespace inspector::editing {

CommentPicker::CommentPicker(std::vector<LibraryComment> comments, bool mayDelete)
    : m_Comments(std::move(comments)),
      m_Accepted(m_Comments.size(), 1),
      m_IsDeleted(m_Comments.size(), 0),
      m_MayDelete(mayDelete) {
  m_Searchable.reserve(m_Comments.size());
  for (std::size_t n = 0; n < m_Comments.size(); ++n) {
    const LibraryComment& comment = m_Comments[n];
    m_Searchable.push_back(device::FoldForFilter(comment.text + u"\n" + comment.group));
    if (m_Groups.empty() || m_Groups.back().name != comment.group) m_Groups.push_back({comment.group, n, n});
    m_Groups.back().end = n + 1;
  }
  Arrange();
}

Text CommentPicker::TextOf(const Row& row) const {
  return row.isHeading ? GroupHeading(m_Groups[row.index].name) : m_Comments[row.index].text;
}

bool CommentPicker::IsChosen(const Row& row) const {
  return !row.isHeading && std::find(m_Chosen.begin(), m_Chosen.end(), row.index) != m_Chosen.end();
}

void CommentPicker::SetFilter(TextView typed) {
  device::WordFilter filter(typed);
  const bool narrows = m_Filter.IsNarrowedBy(filter);
  for (std::size_t n = 0; n < m_Comments.size(); ++n)
    if (!m_IsDeleted[n] && (m_Accepted[n] || !narrows)) m_Accepted[n] = filter.AcceptsFolded(m_Searchable[n]);
  m_Filter = std::move(filter);
  Arrange();
}

void CommentPicker::ToggleGroup(std::size_t group) {
  m_Groups[group].folded = !m_Groups[group].folded;
  Arrange();
}

void CommentPicker::ToggleChoice(std::size_t comment) {
  if (std::erase(m_Chosen, comment) == 0) m_Chosen.push_back(comment);
}

void CommentPicker::Delete(std::size_t comment) {
  if (!m_MayDelete || m_IsDeleted[comment]) return;
  m_IsDeleted[comment] = 1;
  m_Accepted[comment] = 0;
  std::erase(m_Chosen, comment);
  m_Deleted.push_back(m_Comments[comment].text);
  Arrange();
}

std::vector<Text> CommentPicker::Chosen() const {
  std::vector<Text> texts;
  for (const std::size_t comment : m_Chosen) texts.push_back(m_Comments[comment].text);
  return texts;
}

void CommentPicker::Arrange() {
  m_Rows.clear();
  for (std::size_t g = 0; g < m_Groups.size(); ++g) {
    const Group& group = m_Groups[g];
    bool hasHeading = group.name.empty() && g == 0;
    for (std::size_t n = group.begin; n < group.end; ++n) {
      if (!m_Accepted[n]) continue;
      if (!hasHeading) m_Rows.push_back({true, g});
      hasHeading = true;
      if (group.folded && m_Filter.IsEmpty()) break;
      m_Rows.push_back({false, n});
    }
  }
}

}  // namespace inspector::editing
