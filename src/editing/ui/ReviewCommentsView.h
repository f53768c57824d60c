// The commented steps of the visit, filtered by rating.
#pragma once

#include <QWidget>
#include <functional>

#include "device/RowSource.h"
#include "editing/CommentReview.h"

class QComboBox;

namespace inspector::device::ui {
class ListView;
}

namespace inspector::editing::ui {

class CReviewCommentsView : public QWidget, private device::RowSource {
public:
  CReviewCommentsView(data::Workspace& workspace, std::int32_t inspectionID, QWidget* parent = nullptr);

  // Reads the list anew, with the filter that is chosen, and stays at the step that was opened last.
  void Refill();

  std::function<void(std::int32_t categoryID, std::int32_t stepID)> onOpen;

private:
  int RowCount() const override { return m_Review.RowCount(); }
  device::ListRow ShownRow(int row) override;

  CommentReview m_Review;
  QComboBox* m_Filter;
  device::ui::ListView* m_List;
};

}  // namespace inspector::editing::ui
