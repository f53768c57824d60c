#include "exchange/InspectionExport.h"

#include "device/Format.h"
#include "exchange/ExportContent.h"
#include "exchange/ExportFormat.h"
#include "reports/ReportPlace.h"
#include "reports/ReportRun.h"

namespace inspector::exchange {
namespace {

using device::Format;
using reports::CollectResult;

// Empty when the content is whole.
Text Collect(data::Workspace& workspace, std::int32_t inspectionID, ExportContent& content) {
  switch (CollectExport(workspace, inspectionID, content)) {
    case CollectResult::Failed:
      return Format(
          u"The inspection %d could not be read whole, so nothing was exported. Check the databases and try "
          u"again.",
          inspectionID);
    case CollectResult::NoSuchInspection:
      return Format(u"There is no inspection %d. Choose one from the list of inspections.", inspectionID);
    case CollectResult::Done:
      break;
  }
  return {};
}

// False when the person would rather mend the values first.
bool ConfirmFaults(device::Prompts& prompts, const std::vector<Text>& faults) {
  if (faults.empty()) return true;
  Text question = faults.size() == 1 ? Text(u"One value will not arrive as it is:\n\n")
                                     : Format(u"%d values will not arrive as they are:\n\n", faults.size());
  for (const Text& fault : faults) question += fault + u"\n";
  return device::ConfirmLoss(prompts, question + u"\nWrite the file as it stands?");
}

device::SaveQuestion Question(data::Workspace& workspace, const ExportContent& content) {
  Text folder = workspace.Options().m_DefaultPath;
  if (folder.empty()) folder = u"\\My Documents\\";
  if (folder.back() != u'\\' && folder.back() != u'/') folder += folder.front() == u'/' ? u'/' : u'\\';
  return {reports::ReportFileName(u"Export_", content.documentNumber, u".rtf"), folder,
          u"Rich Text Format (*.rtf)|*.rtf|", u"rtf"};
}

Text WhyNot(data::Workspace& workspace, std::int32_t inspectionID, const ExportContent& content,
            const std::filesystem::path& target) {
  reports::ReportPictures pictures(workspace.GetMachine(), workspace.Options().m_DefaultPictCardPath, false);
  return reports::ReportPlace(workspace, inspectionID, content.documentNumber, pictures).WhyNot(target);
}

ExportResult WriteFile(const device::Machine& machine, const std::filesystem::path& target,
                       const ExportContent& content) {
  const std::size_t count = content.categories.size();
  const auto progress = machine.prompts.OpenProgress(u"Exporting Inspection...", true);
  if (progress) {
    progress->SetRange(0, static_cast<int>(count));
    progress->SetPosition(1);  // on purpose: it ends one beyond the range
  }
  const auto output = machine.files.Create(target);
  bool isWritten = output->Write(content.beginning);
  for (std::size_t n = 0; n < count; ++n) {
    if (progress && progress->Cancelled()) return ExportResult::Cancelled;
    if (progress) progress->SetStatus(Format(u"Category %d of %d", n + 1, count));
    isWritten = isWritten && output->Write(content.categories[n]);
    if (progress) progress->Step();
  }
  if (progress && progress->Cancelled()) return ExportResult::Cancelled;
  if (isWritten && output->Commit()) return ExportResult::Written;
  const std::string error = output->Error();
  device::ShowError(
      machine.prompts,
      Format(u"%s could not be written%s%s. Free some space on the disk or choose another "
             u"place, and export again. Nothing was left half-written.",
             device::FromUtf8(target.native()), error.empty() ? u"" : u": ", device::FromUtf8(error)));
  return ExportResult::Failed;
}

// "3 fields of forms".
Text Counted(int count, TextView one, TextView several) {
  return count == 1 ? Format(u"1 %s", one) : Format(u"%d %s", count, several);
}

std::vector<Text> NotesOn(const ExportContent& content) {
  std::vector<Text> missing;
  if (content.hasPrivateNotes) missing.push_back(u"the private notes");
  if (content.formFields > 0)
    missing.push_back(Counted(content.formFields, u"field of a form", u"fields of forms"));
  if (content.pictures > 0)
    missing.push_back(Counted(content.pictures, u"picture (only its name)", u"pictures (only their names)"));
  std::vector<Text> notes;
  if (!missing.empty()) {
    Text list;
    for (std::size_t n = 0; n < missing.size(); ++n)
      list += (n == 0 ? u"" : n + 1 < missing.size() ? u", " : u" and ") + missing[n];
    notes.push_back(Format(u"Not in the file: %s.", list));
  }
  if (content.records > kUsualRecords)
    notes.push_back(Format(u"The file has %d records. Older readers stop after %d of them.", content.records,
                           kUsualRecords));
  return notes;
}

}  // namespace

ExportOutcome ExportInspection(data::Workspace& workspace, const ExportRequest& request) {
  const device::Machine& machine = workspace.GetMachine();
  const auto refuse = [&](const Text& why) {
    device::ShowError(machine.prompts, why);
    return ExportOutcome{};
  };
  ExportContent content;
  if (const Text problem = Collect(workspace, request.inspectionID, content); !problem.empty())
    return refuse(problem);
  if (!ConfirmFaults(machine.prompts, content.faults)) return {ExportResult::Cancelled, {}, 0, {}};
  const auto target =
      request.target ? request.target : machine.prompts.AskSavePath(Question(workspace, content));
  if (!target) return {ExportResult::Cancelled, {}, 0, {}};
  if (const Text problem = WhyNot(workspace, request.inspectionID, content, *target); !problem.empty())
    return refuse(problem);
  const ExportResult result = WriteFile(machine, *target, content);
  if (result != ExportResult::Written) return {result, {}, 0, {}};
  return {result, *target, content.records, NotesOn(content)};
}

}  // namespace inspector::exchange
