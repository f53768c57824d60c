#include "app/ReportCommand.h"

#include "device/RowSource.h"
#include "device/ui/ChoiceDialog.h"
#include "reports/MakeReport.h"
#include "reports/ReportLayout.h"
#include "reports/ui/SelectCategoriesPage.h"

namespace inspector::app {
namespace {

class LayoutRows : public device::RowSource {
public:
  int RowCount() const override { return static_cast<int>(reports::Layouts().size()); }
  device::ListRow ShownRow(int row) override {
    return {{device::Text(reports::Layouts()[static_cast<std::size_t>(row)]->Name())},
            device::CheckImage::None,
            device::RowTone::Normal};
  }
};

int RowOfLayout(device::TextView name) {
  const auto layouts = reports::Layouts();
  for (std::size_t row = 0; row < layouts.size(); ++row)
    if (device::EqualIgnoringCase(layouts[row]->Name(), name)) return static_cast<int>(row);
  return 0;
}

}  // namespace

device::Text WriteReport(inspection::CInspectorDoc& document, QWidget& window) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  reports::ReportRequest request;
  request.inspectionID = document.Inspection().m_InspectionID;
  reports::CategorySelection categories(workspace, request.inspectionID);
  if (categories.Failed()) return {};
  reports::ui::CSelectCategoriesPage page(categories, &window);
  if (page.exec() != QDialog::Accepted) return {};
  request.format = u"inspection";
  request.choices.deselected = categories.Deselected();
  LayoutRows layouts;
  device::ui::ChoiceDialog dialog(QStringLiteral("Inspection Report"), QStringLiteral("Choose the layout:"),
                                  layouts, {{u"Layout", 240}}, &window);
  dialog.Choose(RowOfLayout(reports::LayoutOf(workspace, request.inspectionID)));
  if (dialog.exec() != QDialog::Accepted || dialog.Chosen() < 0) return {};
  request.choices.layout =
      device::Text(reports::Layouts()[static_cast<std::size_t>(dialog.Chosen())]->Name());
  const reports::ReportOutcome outcome = reports::MakeReport(workspace, request);
  device::Text notes;
  for (const device::Text& note : outcome.notes) notes += (notes.empty() ? u"" : u"\n") + note;
  if (!notes.empty()) device::Alert(workspace.GetPrompts(), notes);
  if (outcome.result != reports::ReportResult::Written) return {};
  return device::FromUtf8(outcome.file.string());
}

}  // namespace inspector::app
