#include "app/ExchangeCommands.h"

#include "device/Format.h"
#include "device/ui/ChoiceDialog.h"
#include "exchange/InspectionExport.h"
#include "exchange/InspectionImport.h"
#include "exchange/InspectionMerge.h"
#include "exchange/ui/SyncDialog.h"

namespace inspector::app {

using device::Text;
using device::TextView;

namespace {

constexpr std::size_t kNamesInLine = 3;  // of the main window; the preview has had all of them

class StagedRows : public device::RowSource {
public:
  explicit StagedRows(const std::vector<exchange::StagedInspection>& staged) : m_Staged(staged) {}

  static std::vector<device::ListColumn> Columns() {
    return {{u"Client Name", 80}, {u"Address", 90}, {u"Doc #", 70}};
  }
  int RowCount() const override { return static_cast<int>(m_Staged.size()); }
  device::ListRow ShownRow(int row) override {
    const exchange::StagedInspection& each = m_Staged[static_cast<std::size_t>(row)];
    return {{each.client, each.address, each.documentNumber}};
  }

private:
  const std::vector<exchange::StagedInspection>& m_Staged;
};

Text Joined(const std::vector<Text>& sentences, TextView between) {
  Text joined;
  for (const Text& sentence : sentences) joined += (joined.empty() ? Text() : Text(between)) + sentence;
  return joined;
}

}  // namespace

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

Text MergeImported(inspection::CInspectorDoc& document, std::int32_t targetInspectionID, QWidget& window) {
  document.FinishDocTypeChange();
  device::Prompts& prompts = document.GetWorkspace().GetPrompts();
  auto staged = exchange::ReadStaged(document.GetWorkspace().GetDatabases());
  if (!staged) return {};
  if (staged->empty()) {
    device::Alert(prompts, u"There is no imported inspection to merge. Import one first: Exchange, Import.");
    return {};
  }
  StagedRows rows(*staged);
  device::ui::ChoiceDialog dialog(QStringLiteral("Merge Inspections"),
                                  QStringLiteral("Choose the imported inspection to take in:"), rows,
                                  StagedRows::Columns(), &window);
  dialog.Offer(QStringLiteral("&Delete"), "deleteImported", [&](int row) {
    if (!exchange::DiscardStaged(document.GetWorkspace(), (*staged)[static_cast<std::size_t>(row)])) return;
    staged->erase(staged->begin() + row);
  });
  if (staged->size() == 1) dialog.Choose(0);
  if (dialog.exec() != QDialog::Accepted || dialog.Chosen() < 0) return {};
  const std::int32_t chosen = (*staged)[static_cast<std::size_t>(dialog.Chosen())].inspectionID;
  const auto preview = exchange::PreviewMerge(document, targetInspectionID, chosen);
  if (!preview) return {};
  const device::Answer answer =
      prompts.Show({.text = u"This merge will do:\n\n" + Joined(Described(*preview), u"\n"),
                    .title = u"Merge Inspections",
                    .buttons = device::Buttons::OkCancel});
  if (answer != device::Answer::Ok) return {};
  const exchange::MergeOutcome outcome = exchange::MergeInspection(document, targetInspectionID, chosen);
  if (outcome.result != exchange::MergeResult::Merged) return {};
  std::vector<Text> told = Described(outcome.done, kNamesInLine);
  told.insert(told.begin(), u"Merged.");
  return Joined(told, u" ");
}

}  // namespace inspector::app
