#include "cli/CommandGroups.h"
#include "cli/Listing.h"
#include "device/Format.h"
#include "exchange/InspectionExport.h"
#include "exchange/InspectionImport.h"
#include "exchange/InspectionMerge.h"

namespace inspector::cli {
namespace {

using device::Text;

const CommandOption kOut{"--out", "FILE", "where to write; replaces without asking", false};

ExitCode RunExport(Session& session, const Input& input) {
  exchange::ExportRequest request;
  request.inspectionID = input.Number(0);
  if (input.Has(kOut.name)) {
    request.target = TypedFile(session, u"after --out", input.options.at(kOut.name));
    if (!request.target) return ExitCode::Usage;
  }
  if (!session.SelectInspection(request.inspectionID)) return ExitCode::Failed;
  const exchange::ExportOutcome outcome = exchange::ExportInspection(session.Workspace(), request);
  for (const Text& note : outcome.notes) session.Note(note);
  if (outcome.result == exchange::ExportResult::Cancelled) session.Note(u"Nothing was exported.");
  if (outcome.result != exchange::ExportResult::Written) return ExitCode::Failed;
  session.Out() << outcome.file.string() << "\n";
  return ExitCode::Done;
}

ExitCode RunImport(Session& session, const Input& input) {
  const auto file = TypedFile(session, u"to import", input.arguments[0]);
  if (!file) return ExitCode::Usage;
  const exchange::ImportOutcome outcome = exchange::ImportInspectionFile(session.Workspace(), *file);
  for (const Text& note : outcome.notes) session.Note(note);
  if (outcome.result != exchange::ImportResult::Staged) return ExitCode::Failed;
  for (const std::int32_t key : outcome.inspections) session.Out() << key << "\n";
  return outcome.inspections.empty() ? ExitCode::Failed : ExitCode::Done;
}

ExitCode RunStaged(Session& session, const Input& input) {
  const auto staged = exchange::ReadStaged(session.Workspace().GetDatabases());
  if (!staged) return ExitCode::Failed;
  Listing listing({"id", "number", "client", "address", "categories", "steps"});
  for (const exchange::StagedInspection& each : *staged)
    listing.Add(
        {each.inspectionID, each.documentNumber, each.client, each.address, each.categories, each.steps});
  listing.Print(session.Out(), input.Has("--json"));
  return ExitCode::Done;
}

ExitCode RunDiscard(Session& session, const Input& input) {
  const auto staged = exchange::FindStaged(session.Workspace().GetDatabases(), input.Number(0));
  if (!staged) {
    session.Fail(device::Format(u"There is no imported inspection %d. \"staged\" shows those there are.",
                                input.Number(0)));
    return ExitCode::Failed;
  }
  return exchange::DiscardStaged(session.Workspace(), *staged) ? ExitCode::Done : ExitCode::Failed;
}

void PrintLines(Session& session, const std::vector<Text>& lines) {
  for (const Text& line : lines) session.Out() << device::ToUtf8(line) << "\n";
}

ExitCode RunMerge(Session& session, const Input& input) {
  inspection::CInspectorDoc& document = session.Document();
  const std::int32_t target = input.Number(0);
  const std::int32_t staged = input.Number(1);
  if (input.Has("--dry-run")) {
    const auto preview = exchange::PreviewMerge(document, target, staged);
    if (!preview) return ExitCode::Failed;
    PrintLines(session, Described(*preview));
    return ExitCode::Done;
  }
  const exchange::MergeOutcome outcome = exchange::MergeInspection(document, target, staged);
  if (outcome.result != exchange::MergeResult::Merged) return ExitCode::Failed;
  PrintLines(session, Described(outcome.done));
  return ExitCode::Done;
}

}  // namespace

std::vector<Command> ExchangeCommands() {
  return {
      {"export",
       "write an inspection into one file, for import on another device, and print where it is",
       {{"ID", "the inspection's key, as \"list\" shows it", Argument::Kind::Number, false}},
       {kOut},
       "The file holds the header, the categories and the steps. Fields of forms, picture files and private "
       "notes do not travel. Without --out it lies in the folder of the option DefaultPath and is called "
       "Export_ and the document number. Asks before it writes values that cannot arrive as they are.",
       RunExport},
      {"import",
       "read an export file into the staging tables and print the staged inspection's key",
       {{"FILE", "the export file", Argument::Kind::Text, false}},
       {},
       "Shows everything that it reads on standard error. All of the file is staged or nothing; \"merge\" "
       "takes what is staged into an inspection.",
       RunImport},
      {"staged",
       "list the inspections that were imported and not merged yet",
       {},
       {JsonOption()},
       "",
       RunStaged},
      {"discard",
       "delete an inspection that was imported and is not to be merged",
       {{"STAGED", "the key of the imported one, as \"staged\" shows it", Argument::Kind::Number, false}},
       {},
       "Asks first.",
       RunDiscard},
      {"merge",
       "take an imported inspection's categories and steps into an inspection, and say what that did",
       {{"TARGET", "the inspection's key, as \"list\" shows it", Argument::Kind::Number, false},
        {"STAGED", "the key of the imported one, as \"staged\" shows it", Argument::Kind::Number, false}},
       {{"--dry-run", "", "only say what it would do", false}},
       "Categories and steps go together by their titles. What is missing is added, a step without findings "
       "is filled, all others stay as they are. The imported inspection is gone afterwards; its header is "
       "never taken over.",
       RunMerge},
  };
}

}  // namespace inspector::cli
