#include "editing/ui/CategoryView.h"

#include <QAction>
#include <QApplication>

#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {
namespace {

constexpr int kMarkColumn = 0;
constexpr int kTitleColumn = 1;  // so that Enter opens and Space marks

}  // namespace

CCategoryView::CCategoryView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent)
    : ListScreen(parent), m_List(document, dialogs) {
  Build(m_List, CategoryList::Columns(), QStringLiteral("categories"));
  m_Rows->onClick = [this](int row, int column) { OnRow(row, column); };
  m_Make = AddCommand("makeCategories", QStringLiteral("&Make Categories"),
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M), [this] {
                        m_List.MakeCategories();
                        OnShow();
                      });
  m_Duplicate =
      AddCommand("duplicate", QStringLiteral("&Duplicate..."), QKeySequence(Qt::CTRL | Qt::Key_D), [this] {
        ShowMarked();
        m_List.Duplicate();
        ShowRows();
        ShowCopy();
      });
  m_Rename = AddCommand("rename", QStringLiteral("&Rename..."), QKeySequence(Qt::Key_F2), [this] {
    ShowMarked();
    m_List.Rename();
    ShowRows();
  });
  m_NotPresent = AddCommand("notPresent", device::ui::ToQString(m_List.ToggleCaption()),
                            QKeySequence(Qt::CTRL | Qt::Key_T), [this] {
                              ShowMarked();
                              m_List.TogglePresence();
                              Refresh();
                            });
  AddCommand("defaults", QStringLiteral("D&efaults"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D), [this] {
    m_List.ApplyDefaults();
    ShowRows();
  });
  FollowState();
}

void CCategoryView::OnShow() {
  if (const std::int32_t shown = m_List.InspectionID(); shown != m_InspectionID) {
    m_InspectionID = shown;
    ClearSearch();
    m_Rows->SelectRow(-1);
    m_Rows->setCurrentIndex({});
  }
  m_List.Show();
  ShowRows();
  const int top = m_List.TopRow();
  m_Rows->ScrollToTop(top);
  const int row = m_List.RowToShow();
  m_Rows->setCurrentIndex(m_Rows->Model().index(row < 0 ? top : row, kTitleColumn));
  m_Rows->SelectRow(row < 0 ? top : row);
  m_Rows->setFocus();
}

void CCategoryView::OnSearch(const device::Text& words) {
  m_List.SetFilter(words);
  ShowRows();
}

void CCategoryView::OnRow(int row, int column) {
  if (column == kMarkColumn && QApplication::keyboardModifiers() & Qt::ControlModifier) {
    m_List.MarkToo(row);
    Refresh();
    return;
  }
  const CategoryList::Screen screen = m_List.Click(row, column, m_Rows->TopRow());
  if (screen != CategoryList::Screen::None) {
    if (onOpen) onOpen(screen);
    return;
  }
  Refresh();
}

// What is done to a category out of sight would not be noticed.
void CCategoryView::ShowMarked() {
  if (const int row = m_List.MarkedRow(); row >= 0) m_Rows->SelectRow(row);
}

// The first one, also where a search would hide it.
void CCategoryView::ShowCopy() {
  if (m_List.FirstCopy() < 0) return;
  if (m_List.RowOf(m_List.FirstCopy()) < 0) ClearSearch();
  m_Rows->SelectRow(m_List.RowOf(m_List.FirstCopy()));
}

void CCategoryView::ShowRows() {
  m_Rows->Refill();
  FollowState();
}

void CCategoryView::Refresh() {
  m_Rows->Model().RefreshAll();
  FollowState();
}

void CCategoryView::FollowState() {
  ShowCaptions(m_List.Caption(), m_List.LeftCaption());
  const bool lacks = m_List.LacksCategories();
  m_Make->setVisible(lacks);
  SetEmptyText(lacks ? QStringLiteral("No categories yet. Make Categories makes those of the Doc Type.")
                     : QStringLiteral("No categories. Choose a Doc Type in the header."));
  const bool marked = m_List.HasMarks();
  for (QAction* action : {m_Duplicate, m_Rename, m_NotPresent}) action->setEnabled(marked);
  m_NotPresent->setText(device::ui::ToQString(m_List.ToggleCaption()));
}

}  // namespace inspector::editing::ui
