#include "device/ui/ListView.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QScroller>
#include <algorithm>
#include <utility>

#include "device/ui/RowDelegate.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"

namespace inspector::device::ui {
namespace {

constexpr int kHeadingMargins = 8;
constexpr double kSmallestHeading = 0.45;  // of the size of the text
constexpr int kLowList = 240;

int HeadingHeight(const QFontMetrics& metrics) {
  return std::max(32, metrics.lineSpacing() + 14);
}

int ShortRowHeight(const QFontMetrics& metrics) {
  return std::max(kSmallestTarget, 2 * metrics.lineSpacing() + 10);
}

}  // namespace

ListView::ListView(RowSource& source, std::vector<ListColumn> columns, QWidget* parent)
    : QTableView(parent), m_Model(new ListModel(source, std::move(columns), this)) {
  setModel(m_Model);
  setItemDelegate(new RowDelegate(this));
  // Only the rows on the screen are measured: measuring a row fetches it.
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { FitVisibleRows(); });
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { FitVisibleRows(); });
  connect(m_Model, &QAbstractItemModel::dataChanged, this, [this] { FitVisibleRows(); });
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setWordWrap(true);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  SetHeader(new QHeaderView(Qt::Horizontal, this));
  QScroller::grabGesture(viewport(), QScroller::TouchGesture);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (onSelect) onSelect(SelectedRow());
  });
  connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    if (onOpen) onOpen(index.row());
  });
  LayOut();
}

void ListView::SetHeader(QHeaderView* header) {
  header->setSectionResizeMode(QHeaderView::Fixed);
  header->setHighlightSections(false);
  header->setMinimumSectionSize(1);
  header->setSectionsClickable(false);
  header->setFocusPolicy(Qt::NoFocus);
  setHorizontalHeader(header);
}

void ListView::Refill() {
  const int row = SelectedRow();
  const int column = UsualColumn();
  const int top = verticalScrollBar()->value();
  {
    const QSignalBlocker quiet(selectionModel());
    m_Model->Reset();
    if (row >= 0 && row < m_Model->rowCount()) {
      MakeCurrent(row, column);  // selectRow would leave the column
    }
  }
  verticalScrollBar()->setValue(top);
  LayOut();
  viewport()->update();
}

// Whatever keys are held: setCurrentIndex would add to the selection while Ctrl is down.
void ListView::MakeCurrent(int row, int column) {
  selectionModel()->setCurrentIndex(m_Model->index(row, column),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

// That of the current cell; without one the first that is no mark, because there Enter would mark.
int ListView::UsualColumn() const {
  if (currentIndex().isValid()) return currentIndex().column();
  const auto& columns = m_Model->Columns();
  const auto words =
      std::find_if(columns.begin(), columns.end(), [](const ListColumn& c) { return !c.isMark; });
  return words == columns.end() ? 0 : static_cast<int>(words - columns.begin());
}

int ListView::SelectedRow() const {
  // Of several the one that has the focus.
  const QModelIndex current = currentIndex();
  if (current.isValid() && selectionModel()->isRowSelected(current.row(), {})) return current.row();
  const QModelIndexList rows = selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.first().row();
}

int ListView::SelectedCount() const {
  return static_cast<int>(selectionModel()->selectedRows().size());
}

void ListView::SelectRow(int row) {
  if (row < 0 || row >= m_Model->rowCount()) {
    clearSelection();
    return;
  }
  MakeCurrent(row, UsualColumn());
  executeDelayedItemsLayout();  // rows that were just read have no place before
  scrollTo(m_Model->index(row, 0));
  // Rows that came into sight by it have got their heights, which may have moved this one out.
  updateGeometries();
  scrollTo(m_Model->index(row, 0));
}

int ListView::TopRow() const {
  return std::max(rowAt(0), 0);
}

void ListView::ScrollToTop(int row) {
  if (row < 0 || row >= m_Model->rowCount()) return;
  executeDelayedItemsLayout();
  scrollTo(m_Model->index(row, 0), PositionAtTop);
}

void ListView::LayOut() {
  m_Widths = ScaleColumns(m_Model->Columns(), viewport()->width());
  for (std::size_t n = 0; n < m_Widths.size(); ++n)
    horizontalHeader()->resizeSection(static_cast<int>(n), m_Widths[n]);
  double points = font().pointSizeF();
  SizeRows(points);
  while (height() < kLowList && points > kUsualPoints && !ShowsTwoRows()) {
    points = std::max(points - 1, kUsualPoints);
    SizeRows(points);
  }
  FitVisibleRows();
}

int ListView::UsefulHeight() const {
  return HeadingHeight(fontMetrics()) + 2 * ShortRowHeight(fontMetrics()) + 2 * frameWidth();
}

void ListView::SizeRows(double points) {
  QFont words = font();
  words.setPointSizeF(points);
  if (auto* const delegate = dynamic_cast<RowDelegate*>(itemDelegate())) delegate->SetPointSize(points);
  verticalHeader()->setDefaultSectionSize(ShortRowHeight(QFontMetrics(words)));
  horizontalHeader()->setFixedHeight(HeadingHeight(QFontMetrics(words)));
  FitHeadings(points);
}

bool ListView::ShowsTwoRows() const {
  int needed = horizontalHeader()->height() + 2 * frameWidth();
  for (int row = TopRow(); row < TopRow() + 2; ++row)
    needed += std::max(verticalHeader()->defaultSectionSize(),
                       row < m_Model->rowCount() && isVisible() ? sizeHintForRow(row) : 0);
  return needed <= height();
}

// With large text on a narrow screen the headings take one that is smaller than that of the rows, so that
// none is cut.
void ListView::FitHeadings(double points) {
  // Before it has a place it is as small as no list will be, and every font that might fit would be loaded.
  if (!testAttribute(Qt::WA_Resized)) return;
  const auto fits = [this](const QFontMetrics& metrics) {
    for (std::size_t n = 0; n < m_Widths.size(); ++n) {
      const ListColumn& column = m_Model->Columns()[n];
      // A centred column may be as narrow as a finger: a header with signs draws one where a word has no
      // room.
      if (column.align != ListColumn::Align::Centre &&
          metrics.horizontalAdvance(ToQString(column.heading)) + kHeadingMargins > m_Widths[n])
        return false;
    }
    return true;
  };
  QFont smaller = font();
  const qreal full = font().pointSizeF();
  for (qreal size = points; size >= full * kSmallestHeading; size -= full / 16) {
    smaller.setPointSizeF(size);
    if (fits(QFontMetrics(smaller))) break;
  }
  horizontalHeader()->setFont(smaller);
}

void ListView::FitVisibleRows() {
  if (!isVisible()) return;
  const int usual = verticalHeader()->defaultSectionSize();
  for (int row = TopRow(); row < m_Model->rowCount() && rowViewportPosition(row) < viewport()->height();
       ++row) {
    const int needed = std::max(usual, sizeHintForRow(row));
    if (rowHeight(row) != needed) setRowHeight(row, needed);
  }
}

void ListView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  LayOut();
}

void ListView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) LayOut();
}

void ListView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (m_Model->rowCount() > 0 || m_EmptyText.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(16, 0, -16, 0), Qt::AlignCenter | Qt::TextWordWrap,
                   m_EmptyText);
}

void ListView::Click(int row, int column) {
  if (row >= 0 && column >= 0 && onClick) onClick(row, column);
}

void ListView::mousePressEvent(QMouseEvent* event) {
  m_Pressed.start();
  QTableView::mousePressEvent(event);
}

// The second press of a double click is meant for what the first one was: it may have brought this list here.
void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
  m_IsPassedOver = !m_Pressed.isValid() || m_Pressed.hasExpired(QApplication::doubleClickInterval());
  if (!m_IsPassedOver) QTableView::mouseDoubleClickEvent(event);
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
  if (std::exchange(m_IsPassedOver, false)) return;
  // With Shift or Ctrl a person selects and opens nothing.
  const QModelIndex pressed = currentIndex();
  QTableView::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton || event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier))
    return;
  const int row = rowAt(qRound(event->position().y()));
  if (row >= 0 && row == pressed.row()) Click(row, ColumnAt(m_Widths, qRound(event->position().x())));
}

void ListView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = currentIndex();
  if (current.isValid() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
    onOpen ? onOpen(current.row()) : Click(current.row(), current.column());
    return;
  }
  if (current.isValid() && event->key() == Qt::Key_Space) {
    const auto& columns = m_Model->Columns();
    const auto mark =
        std::find_if(columns.begin(), columns.end(), [](const ListColumn& c) { return c.isMark; });
    if (mark != columns.end()) {
      Click(current.row(), static_cast<int>(mark - columns.begin()));
      return;
    }
  }
  const bool first = event->key() == Qt::Key_Home;
  if ((first || event->key() == Qt::Key_End) && event->modifiers() == Qt::NoModifier) {
    // To another row, not to another column: in that of the marks Enter would mark.
    SelectRow(first ? 0 : m_Model->rowCount() - 1);
    return;
  }
  QTableView::keyPressEvent(event);
}

}  // namespace inspector::device::ui
