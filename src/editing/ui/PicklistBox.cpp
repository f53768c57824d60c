#include "editing/ui/PicklistBox.h"

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <algorithm>

#include "device/Format.h"
#include "device/ListColumns.h"
#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {
namespace {

constexpr int kDevicePixels = 150;
constexpr int kLetters = 100;  // of each comment can be read: many begin alike
constexpr int kMostLines = 5;
constexpr int kMargin = 6;

// As many lines as that takes in the list's width.
class SomeLines : public QStyledItemDelegate {
public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    const int width = std::max(parent() ? static_cast<QWidget*>(parent())->window()->width() - 40 : 0, 100);
    const int lines = 1 + kLetters * option.fontMetrics.averageCharWidth() / width;
    return {0, std::max(std::clamp(lines, 2, kMostLines) * option.fontMetrics.lineSpacing() + kMargin,
                        device::kSmallestTarget)};
  }

protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->features |= QStyleOptionViewItem::WrapText;
    option->textElideMode = Qt::ElideRight;
  }
};

}  // namespace

// Only what is shown becomes a text of Qt's.
class PicklistBox::Entries : public QAbstractListModel {
public:
  using QAbstractListModel::QAbstractListModel;

  void Set(const std::vector<LibraryComment>& comments) {
    beginResetModel();
    m_Comments = comments;
    m_Rows.clear();
    Text group;
    for (std::size_t n = 0; n < comments.size(); ++n) {
      if (comments[n].group != group) {
        group = comments[n].group;
        if (!group.empty() || n > 0) m_Rows.push_back({n, true});
      }
      m_Rows.push_back({n, false});
    }
    endResetModel();
  }

  // -1 when it is not among them.
  int RowOf(TextView text) const {
    const auto row = std::find_if(m_Rows.begin(), m_Rows.end(), [&](const Row& each) {
      return !each.isHeading && m_Comments[each.comment].text == text;
    });
    return row == m_Rows.end() ? -1 : static_cast<int>(row - m_Rows.begin());
  }
  const Text& TextAt(int row) const { return m_Comments[m_Rows[static_cast<std::size_t>(row)].comment].text; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(m_Rows.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    const Row& row = m_Rows[static_cast<std::size_t>(index.row())];
    const LibraryComment& comment = m_Comments[row.comment];
    if (role == Qt::DisplayRole && row.isHeading) return device::ui::ToQString(GroupHeading(comment.group));
    if (role == Qt::DisplayRole) return device::ui::ToDisplay(comment.text).replace(u'\n', u' ');
    if (role == Qt::ToolTipRole && !row.isHeading) return device::ui::ToDisplay(comment.text);
    return {};
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    const bool isHeading = index.isValid() && m_Rows[static_cast<std::size_t>(index.row())].isHeading;
    return isHeading ? Qt::NoItemFlags : QAbstractListModel::flags(index);
  }

private:
  struct Row {
    std::size_t comment;  // of a heading, the first below it
    bool isHeading;
  };
  std::vector<LibraryComment> m_Comments;
  std::vector<Row> m_Rows;
};

PicklistBox::PicklistBox(QWidget* parent) : DropDown(parent, kDevicePixels), m_Entries(new Entries(this)) {
  setModel(m_Entries);
  setItemDelegate(new SomeLines(this));
  if (auto* const list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
}

void PicklistBox::SetComments(const std::vector<LibraryComment>& comments) {
  const Text chosen = Chosen();
  m_Entries->Set(comments);
  setCurrentIndex(chosen.empty() ? -1 : m_Entries->RowOf(chosen));
}

Text PicklistBox::Chosen() const {
  return currentIndex() < 0 ? Text() : m_Entries->TextAt(currentIndex());
}

void PicklistBox::showPopup() {
  if (onOpen) onOpen();
  DropDown::showPopup();
  QWidget* const list = view()->parentWidget();
  const QRect room = window()->frameGeometry();
  list->setGeometry(room.left() + kMargin, list->y(), room.width() - 2 * kMargin, list->height());
}

}  // namespace inspector::editing::ui
