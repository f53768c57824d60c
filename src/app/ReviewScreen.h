// The review of the comments as a screen of the main window; the review itself belongs to one inspection.
#pragma once

#include <QVBoxLayout>

#include "device/ui/Screen.h"
#include "editing/ui/ReviewCommentsView.h"
#include "inspection/InspectorDoc.h"

namespace inspector::app {

class ReviewScreen : public device::ui::Screen {
public:
  ReviewScreen(inspection::CInspectorDoc& document, QWidget* parent)
      : Screen(parent), m_Document(document), m_Layout(new QVBoxLayout(this)) {
    m_Layout->setContentsMargins(0, 0, 0, 0);
  }

  QString Title() const override { return QStringLiteral("Review Comments"); }
  void OnShow() override {
    m_Document.FinishDocTypeChange();
    const std::int32_t key = m_Document.Inspection().m_InspectionID;
    if (m_View && key == m_InspectionID) return m_View->Refill();
    delete m_View;
    m_InspectionID = key;
    m_View = new editing::ui::CReviewCommentsView(m_Document.GetWorkspace(), key, this);
    m_View->onOpen = [this](std::int32_t categoryID, std::int32_t stepID) {
      if (onOpen) onOpen(categoryID, stepID);
    };
    m_Layout->addWidget(m_View);
  }

  std::function<void(std::int32_t categoryID, std::int32_t stepID)> onOpen;

private:
  inspection::CInspectorDoc& m_Document;
  QVBoxLayout* m_Layout;
  editing::ui::CReviewCommentsView* m_View = nullptr;  // owned by Qt, as child
  std::int32_t m_InspectionID = -1;
};

}  // namespace inspector::app
