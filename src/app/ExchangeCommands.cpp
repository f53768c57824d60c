#include "app/ExchangeCommands.h"

#include "device/Format.h"
#include "exchange/InspectionExport.h"
#include "exchange/InspectionImport.h"
#include "exchange/ui/SyncDialog.h"

namespace inspector::app {

using device::Text;

bool Synchronise(inspection::CInspectorDoc& document, QWidget& window) {
  document.FinishDocTypeChange();
  exchange::ui::SyncDialog dialog(document.GetWorkspace(), &window);
  dialog.exec();
  return dialog.HasRun();
}

Text ExportCurrent(inspection::CInspectorDoc& document) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  const exchange::ExportOutcome outcome =
      exchange::ExportInspection(workspace, {document.Inspection().m_InspectionID, std::nullopt});
  if (outcome.result != exchange::ExportResult::Written) return {};
  const Text file = device::FromUtf8(outcome.file.native());
  Text told = u"The inspection is exported:\n" + file;
  for (const Text& note : outcome.notes) told += u"\n\n" + note;
  workspace.GetPrompts().Show({.text = told, .title = u"Export", .icon = device::Icon::Information});
  return file;
}

bool ImportFile(inspection::CInspectorDoc& document) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  const exchange::ImportOutcome outcome = exchange::ImportInspectionFile(workspace);
  if (outcome.result != exchange::ImportResult::Staged) return false;
  Text told = device::Format(
      u"Imported: %d categories with %d steps. They wait until they are merged: select the inspection that "
      u"is to "
      u"take them in the list, and press Merge.",
      outcome.categories, outcome.steps);
  for (const Text& note : outcome.notes) told += u"\n\n" + note;
  workspace.GetPrompts().Show({.text = told, .title = u"Import", .icon = device::Icon::Information});
  return true;
}

}  // namespace inspector::app
