#include "device/ui/RowDelegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

#include "device/ui/ListModel.h"
#include "device/ui/Theme.h"

namespace inspector::device::ui {
namespace {

constexpr int kCheckSize = 24;
constexpr int kMargins = 8;        // beside the words of a cell
constexpr double kSmallest = 0.5;  // of the size of a cell's words
constexpr double kReadable = 0.8;  // of the usual size, whatever a cell has
constexpr double kSmaller = 0.96;  // one step towards it
constexpr int kLongestName = 40;   // letters: what is longer is read as a text, at one size
constexpr QChar kMayEnd(0x200B);   // a line may end here

bool EndsPiece(QChar letter) {
  return letter == u'-' || letter == u'/';
}

int WidthOfLongestWord(const QString& text, const QFontMetrics& metrics) {
  int longest = 0;
  qsizetype begin = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const bool isOutside = text[at].isSpace() || text[at] == kMayEnd;
    if (!isOutside && !EndsPiece(text[at]) && at + 1 < text.size()) continue;
    longest = std::max(longest, metrics.horizontalAdvance(text.mid(begin, at + !isOutside - begin)));
    begin = at + 1;
  }
  return longest;
}

// A word that is wider than its cell would be cut: it may go on in the next line, at any letter.
QString BreakLongWords(const QString& text, const QFontMetrics& metrics, int width) {
  QString broken;
  QString word;
  for (const QChar letter : text) {
    const bool ends = letter.isSpace();
    const bool begins = !letter.isLowSurrogate() && !letter.isMark();  // not what belongs to the one before
    if (!ends && begins && !word.isEmpty() && metrics.horizontalAdvance(word + letter) > width) {
      broken += kMayEnd;
      word.clear();
    }
    word = ends ? QString() : word + letter;
    broken += letter;
    if (EndsPiece(letter)) {  // between digits a hyphen does not do so by itself
      broken += kMayEnd;
      word.clear();
    }
  }
  return broken;
}

}  // namespace

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (m_PointSize > 0) {
    option->font.setPointSizeF(m_PointSize);
    option->fontMetrics = QFontMetrics(option->font);
  }
  switch (static_cast<RowTone>(index.data(ListModel::ToneRole).toInt())) {
    case RowTone::Normal:
      break;
    case RowTone::Attention:
      option->palette.setColor(QPalette::Text, AttentionColour(option->palette));
      break;
    case RowTone::Muted:
      option->palette.setColor(QPalette::Text, option->palette.color(QPalette::Disabled, QPalette::Text));
      break;
    case RowTone::Heading:
      option->font.setBold(true);
      option->fontMetrics = QFontMetrics(option->font);
      option->backgroundBrush = option->palette.button();
      break;
  }
  if (const QString remark = index.data(ListModel::RemarkRole).toString(); !remark.isEmpty())
    option->text += QChar(QChar::LineSeparator) + remark;
  Decorate(*option, index);
  FitWords(*option);
}

// Until no word is wider; not at all when that would take too small a size.
void RowDelegate::ShrinkWords(QStyleOptionViewItem& option, int width) {
  QFont font = option.font;
  const double least = std::max(font.pointSizeF() * kSmallest, kUsualPoints * kReadable);
  while (WidthOfLongestWord(option.text, QFontMetrics(font)) > width) {
    if (font.pointSizeF() * kSmaller < least) return;
    font.setPointSizeF(font.pointSizeF() * kSmaller);
  }
  option.font = font;
  option.fontMetrics = QFontMetrics(font);
}

void RowDelegate::FitWords(QStyleOptionViewItem& option) {
  const bool hasDecoration = option.features & QStyleOptionViewItem::HasDecoration;
  const int taken = hasDecoration ? option.decorationSize.width() + kMargins : 0;
  const int width = option.rect.width() - kMargins - taken;
  if (width <= 0 || option.fontMetrics.horizontalAdvance(option.text) <= width) return;
  if (option.text.size() <= kLongestName) ShrinkWords(option, width);
  option.text = BreakLongWords(option.text, option.fontMetrics, width);
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  painter->save();
  // A hair line between rows, in place of a grid that would cut the row into cells.
  QColor line = option.palette.color(QPalette::Text);
  line.setAlpha(40);
  painter->setPen(line);
  painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  painter->restore();

  const auto check = static_cast<CheckImage>(index.data(ListModel::CheckImageRole).toInt());
  if (check == CheckImage::None) return;
  QStyleOptionViewItem box = option;
  box.rect = QRect(0, 0, kCheckSize, kCheckSize);
  box.rect.moveCenter(option.rect.center());
  box.state = QStyle::State_Enabled | (check == CheckImage::Ticked ? QStyle::State_On : QStyle::State_Off);
  const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, option.widget);
}

}  // namespace inspector::device::ui
