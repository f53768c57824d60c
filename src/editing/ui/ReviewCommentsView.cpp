#include "editing/ui/ReviewCommentsView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "device/ui/ListView.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {

CReviewCommentsView::CReviewCommentsView(data::Workspace& workspace, std::int32_t inspectionID,
                                         QWidget* parent)
    : QWidget(parent), m_Review(workspace, inspectionID) {
  setObjectName(QStringLiteral("reviewCommentsView"));
  m_Filter = new device::ui::DropDown(this);
  m_Filter->setObjectName(QStringLiteral("ratingFilter"));
  m_Filter->setAccessibleName(tr("Show ratings"));
  for (const Text& filter : m_Review.Filters()) m_Filter->addItem(device::ui::ToQString(filter));
  auto* caption = new QLabel(tr("&Show"), this);
  caption->setBuddy(m_Filter);
  m_List = new device::ui::ListView(*this, {{u"Step", 40}, {u"Rating", 60}, {u"Comments", 140}}, this);
  m_List->setObjectName(QStringLiteral("commentedSteps"));
  m_List->setAccessibleName(tr("Commented steps"));
  m_List->onClick = [this](int row, int) {
    const CommentReview::Row step = m_Review.RowAt(row);
    if (step.stepID == 0) return;
    m_Review.Remember(step.stepID);
    if (onOpen) onOpen(step.categoryID, step.stepID);
  };
  connect(m_Filter, &QComboBox::activated, this, [this] {
    m_List->SelectRow(-1);
    Refill();
  });
  auto* top = new QHBoxLayout;
  top->addWidget(caption);
  top->addWidget(m_Filter, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(m_List, 1);
  Refill();
}

void CReviewCommentsView::Refill() {
  const bool isRead = m_Review.SetFilter(device::ui::FromQString(m_Filter->currentText()));
  m_List->SetEmptyText(isRead ? tr("No step has a comment here.") : tr("The comments could not be read."));
  // A step that the filter leaves out by now makes room for the one after it.
  const int former = std::max(m_List->SelectedRow(), 0);
  m_List->Refill();
  // So that the row comes to stand at the top, in lists of usual length.
  m_List->verticalScrollBar()->setValue(m_List->verticalScrollBar()->value() + 10000);
  m_List->SelectRow(std::min(m_Review.RememberedRow().value_or(former), RowCount() - 1));
}

device::ListRow CReviewCommentsView::ShownRow(int row) {
  const CommentReview::Row step = m_Review.RowAt(row);
  // Line ends become blanks: a row is to be read at a glance.
  const Text words = device::ReplaceAll(device::ReplaceAll(step.comments, u"\r", u" "), u"\n", u" ");
  return {{step.stepNumber, step.result, words}, device::CheckImage::None, device::RowTone::Normal};
}

}  // namespace inspector::editing::ui
