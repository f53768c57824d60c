#include "editing/ui/StepListView.h"

#include <QAction>
#include <QMenu>

#include "device/ui/TextConversion.h"
#include "editing/ui/StepListDelegate.h"
#include "editing/ui/StepListHeader.h"

namespace inspector::editing::ui {

using device::ui::ToQString;

CStepListView::CStepListView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent)
    : ListScreen(parent), m_List(document, dialogs) {
  Build(m_List, StepList::Columns(), QStringLiteral("steps"));
  m_Rows->SetHeader(new StepListHeader(m_Rows));
  m_Rows->setItemDelegate(new StepListDelegate(m_Rows));
  SetEmptyText(QStringLiteral("No steps here."));
  m_Rows->onClick = [this](int row, int column) { OnRow(row, column); };
  m_Rows->onSelect = [this](int row) { OnSelect(row); };
  m_Properties = AddCommand("stepProperties", QStringLiteral("Step &Properties..."),
                            QKeySequence(Qt::ALT | Qt::Key_Return), [this] {
                              m_List.OpenStep(m_Rows->SelectedRow());
                              ShowRows();
                            });
  m_Duplicate = AddCommand("duplicateStep", QStringLiteral("&Duplicate Step"),
                           QKeySequence(Qt::CTRL | Qt::Key_D), [this] { DuplicateStep(); });
  AddCommand("stepDefaults", QStringLiteral("D&efaults"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D),
             [this] {
               m_List.ApplyDefaults();
               ShowRows();
             });
  FollowState();
}

QString CStepListView::Title() const {
  return ToQString(m_List.CategoryTitle());
}

void CStepListView::OnShow() {
  if (m_List.CategoryID() != m_CategoryID) ClearSearch();
  m_List.Show();
  ShowRows();
  if (m_List.CategoryID() != m_CategoryID) {
    m_CategoryID = m_List.CategoryID();
    m_StepID = -1;
    m_Rows->SelectRow(-1);
    m_Rows->setCurrentIndex(m_Rows->Model().index(0, 0));
    m_Rows->scrollToTop();
  }
  m_Rows->setFocus();
}

bool CStepListView::SelectStep(std::int32_t stepID) {
  if (m_List.RowOf(stepID) < 0) ClearSearch();
  const int row = m_List.RowOf(stepID);
  m_Rows->SelectRow(row);
  return row >= 0;
}

// By the key: rows may have moved, or the search may have hidden some.
void CStepListView::SelectAgain() {
  const int row = m_List.RowOf(m_StepID);
  if (row != m_Rows->SelectedRow()) m_Rows->SelectRow(row);
}

void CStepListView::OnSelect(int row) {
  FollowState();
  if (const auto step = m_List.RowAt(row)) m_StepID = step->stepID;
}

void CStepListView::OnSearch(const device::Text& words) {
  m_List.SetFilter(words);
  ShowRows();
}

void CStepListView::OnRow(int row, int column) {
  if (column == StepList::kRating)
    OfferRatings(row);
  else if (m_List.Click(row, column))
    ShowRows();
}

void CStepListView::OfferRatings(int row) {
  const auto step = m_List.RowAt(row);
  if (!step) return;
  const std::vector<device::Text> entries = m_List.RatingEntries(row);
  if (entries.empty()) return;  // told
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("ratingMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(QStringLiteral("Rating of ") + ToQString(step->label));
  for (const device::Text& entry : entries) {
    // The sign of a mnemonic is part of the words here.
    QAction* action = menu->addAction(ToQString(entry).replace(u'&', QLatin1String("&&")));
    action->setCheckable(true);
    action->setChecked(entry == step->rating);
    if (entry == step->rating) menu->setActiveAction(action);
    connect(action, &QAction::triggered, this, [this, stepID = step->stepID, entry] { Rate(stepID, entry); });
  }
  const QRect cell = m_Rows->visualRect(m_Rows->Model().index(row, StepList::kRating));
  menu->popup(m_Rows->viewport()->mapToGlobal(cell.bottomLeft()));
}

// By the key: rows may have moved while the menu was open.
void CStepListView::Rate(std::int32_t stepID, const device::Text& entry) {
  m_List.ChangeRating(m_List.RowOf(stepID), entry);
  ShowRows();
}

void CStepListView::DuplicateStep() {
  const std::optional<std::int32_t> copy = m_List.DuplicateStep(m_Rows->SelectedRow());
  ShowRows();
  if (copy) SelectStep(*copy);
}

void CStepListView::ShowRows() {
  m_Rows->Refill();
  SelectAgain();
  FollowState();
}

void CStepListView::FollowState() {
  ShowCaptions(m_List.Caption(), m_List.LeftCaption());
  const bool selected = m_Rows->SelectedRow() >= 0;
  m_Properties->setEnabled(selected);
  m_Duplicate->setEnabled(selected);
}

}  // namespace inspector::editing::ui
