// The screens of a visit's findings, and the ways between them: categories, steps, forms, review, what is
// left.
#pragma once

#include <functional>

#include "device/ui/Screen.h"
#include "editing/Unfinished.h"
#include "editing/ui/QtEditingDialogs.h"
#include "inspection/InspectorDoc.h"

namespace inspector::editing::ui {
class CCategoryView;
class CStepListView;
class CFieldFormView;
class CStepPropertySheet;
class CUnfinishedView;
}  // namespace inspector::editing::ui

namespace inspector::app {

class ReviewScreen;

class VisitScreens {
public:
  // `bring` shows a screen; false when the present one could not be left. The screens belong to `window`.
  VisitScreens(inspection::CInspectorDoc& document, QWidget& window,
               std::function<bool(device::ui::Screen&)> bring);
  VisitScreens(const VisitScreens&) = delete;
  VisitScreens& operator=(const VisitScreens&) = delete;

  std::vector<device::ui::Screen*> All() const;
  device::ui::Screen& Categories();
  device::ui::Screen& Review();
  device::ui::Screen& WhatIsLeft();
  // The steps or the form of the document's current category.
  bool IsInCategory(const device::ui::Screen& screen) const;
  // What such a screen shows is still the document's current category.
  bool IsAtCategory(const device::ui::Screen& screen) const;
  bool IsInSheet() const { return m_Sheet != nullptr; }

  // The next step that still needs something after where the person is, opened in its sheet; says so when
  // there is none.
  void OpenNextUnfinished();
  // Shows the category, with a step its row selected. False when there is no such category.
  bool OpenPlace(std::int32_t categoryID, std::int32_t stepID);
  // Where the person is in the current inspection: nothing before one of its categories was opened.
  editing::PlaceInVisit Place() const;
  // Writes what was typed into an open sheet. False when it could not be written.
  bool FlushSheet();
  std::function<void()> onPlaceChanged;
  void EditPickerList(const device::Text& list);
  void EditShortcuts();

private:
  void Connect();
  bool ShowCategory(std::int32_t categoryID);
  void SetPlace(const editing::PlaceInVisit& place);
  // On `page`, where one is given and the step has it.
  bool OpenSheet(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab,
                 std::optional<editing::StepSheet::Page> page = std::nullopt);

  inspection::CInspectorDoc& m_Document;
  QWidget& m_Window;
  std::function<bool(device::ui::Screen&)> m_Bring;
  editing::ui::QtEditingDialogs m_Dialogs;
  editing::ui::CCategoryView* m_Categories;
  editing::ui::CStepListView* m_Steps;
  editing::ui::CFieldFormView* m_Form;
  ReviewScreen* m_Review;
  editing::ui::CUnfinishedView* m_Unfinished;
  editing::ui::CStepPropertySheet* m_Sheet = nullptr;  // while one is open
  editing::PlaceInVisit m_Place;
  std::int32_t m_PlaceInspectionID = -1;  // whose place it is
};

}  // namespace inspector::app
