#include "app/VisitScreens.h"

#include "app/ReviewScreen.h"
#include "editing/CategoryOpening.h"
#include "editing/ui/CategoryView.h"
#include "editing/ui/FieldFormView.h"
#include "editing/ui/PickerEditorDialog.h"
#include "editing/ui/ShortcutEditorDialog.h"
#include "editing/ui/StepListView.h"
#include "editing/ui/StepPropertySheet.h"
#include "editing/ui/UnfinishedView.h"

namespace inspector::app {

using device::ui::Screen;

VisitScreens::VisitScreens(inspection::CInspectorDoc& document, QWidget& window,
                           std::function<bool(Screen&)> bring)
    : m_Document(document),
      m_Window(window),
      m_Bring(std::move(bring)),
      m_Categories(new editing::ui::CCategoryView(document, m_Dialogs, &window)),
      m_Steps(new editing::ui::CStepListView(document, m_Dialogs, &window)),
      m_Form(new editing::ui::CFieldFormView(document, m_Dialogs, &window)),
      m_Review(new ReviewScreen(document, &window)),
      m_Unfinished(new editing::ui::CUnfinishedView(document, &window)) {
  m_Dialogs.SetWindow(&window);
  Connect();
}

void VisitScreens::Connect() {
  m_Dialogs.onOpenStepProperties = [this](std::int32_t categoryID, std::int32_t stepID,
                                          std::optional<int> tab) {
    return OpenSheet(categoryID, stepID, tab);
  };
  m_Dialogs.onOpenPickerEditor = [this](const device::Text& list) { EditPickerList(list); };
  m_Categories->onOpen = [this](editing::CategoryList::Screen screen) {
    SetPlace({m_Document.Categories().m_CategoryID, 0});
    m_Bring(screen == editing::CategoryList::Screen::Form ? static_cast<Screen&>(*m_Form) : *m_Steps);
  };
  m_Review->onOpen = [this](std::int32_t categoryID, std::int32_t stepID) {
    OpenSheet(categoryID, stepID, std::nullopt);
    m_Review->OnShow();
  };
  m_Unfinished->onOpen = [this](const editing::UnfinishedStep& step) {
    if (step.stepID == 0) {
      if (ShowCategory(step.categoryID)) return;
      if (!m_Document.Categories().Failed())
        m_Document.GetWorkspace().InspectionConnection().ReportVanishedRow(u"Category");
      m_Unfinished->OnShow();
      return;
    }
    OpenSheet(step.categoryID, step.stepID, std::nullopt, step.Where());
    m_Unfinished->OnShow();
  };
}

std::vector<Screen*> VisitScreens::All() const {
  return {m_Categories, m_Steps, m_Form, m_Review, m_Unfinished};
}

Screen& VisitScreens::Categories() {
  return *m_Categories;
}

Screen& VisitScreens::Review() {
  return *m_Review;
}

Screen& VisitScreens::WhatIsLeft() {
  return *m_Unfinished;
}

bool VisitScreens::IsInCategory(const Screen& screen) const {
  return &screen == static_cast<Screen*>(m_Steps) || &screen == static_cast<Screen*>(m_Form);
}

bool VisitScreens::IsAtCategory(const Screen& screen) const {
  const bool isForm = &screen == static_cast<Screen*>(m_Form);
  return m_Document.Categories().m_CategoryID == (isForm ? m_Form->CategoryID() : m_Steps->CategoryID());
}

bool VisitScreens::OpenSheet(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab,
                             std::optional<editing::StepSheet::Page> page) {
  editing::ui::CStepPropertySheet sheet(m_Document, &m_Window);
  sheet.onStepShown = [&] {
    SetPlace({sheet.Logic().CategoryID(), sheet.Logic().StepID()});
    if (m_Steps->CategoryID() == sheet.Logic().CategoryID()) m_Steps->Follow(sheet.Logic().StepID());
  };
  if (!sheet.OpenStep(categoryID, stepID, tab)) {
    m_Document.GetWorkspace().InspectionConnection().ReportVanishedRow(u"Step");
    return false;
  }
  if (page) sheet.ShowPage(*page);
  m_Sheet = &sheet;
  const bool accepted = sheet.exec() == QDialog::Accepted;
  m_Sheet = nullptr;
  sheet.Flush();  // a program that ends leaves the sheet without closing it
  // Once whoever opened this one has shown what it changed.
  if (sheet.WantsNextUnfinished())
    QMetaObject::invokeMethod(
        &m_Window, [this] { OpenNextUnfinished(); }, Qt::QueuedConnection);
  return accepted;
}

bool VisitScreens::ShowCategory(std::int32_t categoryID) {
  m_Document.FinishDocTypeChange();
  data::CategoryTable& categories = m_Document.Categories();
  const std::int32_t former = categories.m_CategoryID;
  if (!m_Document.SelectCategory(categoryID)) return false;
  SetPlace({categoryID, 0});
  if (m_Bring(categories.m_Type == editing::kFormCategory ? static_cast<Screen&>(*m_Form) : *m_Steps))
    return true;
  // The present screen could not be left: its commands are for its category.
  m_Document.SelectCategory(former);
  return false;
}

bool VisitScreens::OpenPlace(std::int32_t categoryID, std::int32_t stepID) {
  if (!ShowCategory(categoryID)) return false;
  SetPlace({categoryID, stepID});
  if (stepID > 0) m_Steps->SelectStep(stepID);
  return true;
}

editing::PlaceInVisit VisitScreens::Place() const {
  return m_PlaceInspectionID == m_Document.Inspection().m_InspectionID ? m_Place : editing::PlaceInVisit();
}

void VisitScreens::SetPlace(const editing::PlaceInVisit& place) {
  m_Place = place;
  m_PlaceInspectionID = m_Document.Inspection().m_InspectionID;
  if (onPlaceChanged) onPlaceChanged();
}

bool VisitScreens::FlushSheet() {
  return !m_Sheet || m_Sheet->Flush();
}

void VisitScreens::OpenNextUnfinished() {
  m_Document.FinishDocTypeChange();
  editing::Unfinished unfinished(m_Document.GetWorkspace(), m_Document.Inspection().m_InspectionID);
  const bool isWhole = unfinished.Refresh();
  const std::optional<editing::UnfinishedStep> next = unfinished.NextAfter(Place());
  if (!next) {
    device::Alert(m_Document.GetWorkspace().GetPrompts(),
                  device::Text(isWhole ? u"Nothing is left to do in this visit." : editing::kNotReadWhole));
    return;
  }
  if (!ShowCategory(next->categoryID) || next->stepID == 0) return;
  m_Steps->SelectStep(next->stepID);
  OpenSheet(next->categoryID, next->stepID, std::nullopt, next->Where());
  m_Steps->OnShow();
}

void VisitScreens::EditPickerList(const device::Text& list) {
  editing::ui::PickerEditorDialog editor(m_Document.GetWorkspace(), list, &m_Window);
  editor.exec();
}

void VisitScreens::EditShortcuts() {
  editing::ui::ShortcutEditorDialog editor(m_Document.GetWorkspace(), &m_Window);
  editor.exec();
}

}  // namespace inspector::app
