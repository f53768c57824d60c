#include "exchange/InspectionImport.h"

#include <algorithm>
#include <array>

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"
#include "device/CodePage.h"
#include "device/Format.h"
#include "exchange/ExportFile.h"

namespace inspector::exchange {
namespace {

using device::Format;

// Show what is read. After the person has had enough of them, those that are left of this file do not come.
class ReadingAlerts {
public:
  explicit ReadingAlerts(device::Prompts& prompts) : m_Prompts(prompts) {}

  void Show(std::string_view bytes) {
    if (!m_IsSilent) Tell(device::FromCodePage(bytes));
  }
  void ShowRecord(std::string_view record) {
    Show("vtBuffer = ");
    Show(record);
  }

private:
  void Tell(const Text& text) {
    const device::Message message{text,
                                  u"Alert",
                                  device::Buttons::Ok,
                                  device::Icon::Information,
                                  false,
                                  u"Don't show this again for this file"};
    m_IsSilent = m_Prompts.Show(message) == device::Answer::OkForAll;
  }

  device::Prompts& m_Prompts;
  bool m_IsSilent = false;
};

// The three tables, and where the next rows belong.
class Staging {
public:
  explicit Staging(data::Databases& databases) : m_Databases(databases) {}

  // Makes those that are missing. The names of those that cannot be had.
  std::vector<Text> Open() {
    std::vector<Text> failed;
    for (data::TableRecordset* const table :
         std::initializer_list<data::TableRecordset*>{&m_Inspection, &m_Category, &m_Step})
      if (!table->Open() || table->Failed() || !table->IsWhole()) failed.push_back(table->TableName());
    return failed;
  }

  // Takes the keys of all rows at once.
  void TakeKeys(const std::vector<std::string_view>& records) {
    std::array<int, std::size(kKinds)> counts{};
    for (const std::string_view record : records)
      if (const Kind* const kind = FindKind(TagOf(record))) ++counts[static_cast<std::size_t>(kind - kKinds)];
    data::UniqueIDTable uniqueIDs(m_Databases, data::DatabaseKind::Inspection);
    for (std::size_t n = 0; n < std::size(kKinds); ++n)
      m_Keys[n] = uniqueIDs.TakeIDs(kKinds[n].sequence, counts[n]);
  }

  // False when a row could not be written, which has been reported. Records of other tags are passed over.
  bool Add(std::string_view bytes) {
    const Text record = device::FromCodePage(bytes);
    const std::vector<TextView> parts = RecordParts(record);
    const Kind* const kind = FindKind(parts[0]);
    if (!kind) return true;
    return (this->*kind->add)(parts, m_Keys[static_cast<std::size_t>(kind - kKinds)].Next());
  }

  ImportOutcome& Outcome() { return m_Outcome; }
  int Strays() const { return m_Strays; }

private:
  using Parts = std::vector<TextView>;
  struct Kind {
    TextView tag;
    TextView sequence;
    bool (Staging::*add)(const Parts&, std::int32_t);
  };
  static const Kind kKinds[3];

  static const Kind* FindKind(TextView tag) {
    const auto* const found =
        std::find_if(std::begin(kKinds), std::end(kKinds), [=](const Kind& each) { return each.tag == tag; });
    return found == std::end(kKinds) ? nullptr : found;
  }

  static void Take(data::TableRecordset& row, std::span<const ExportField> fields, const Parts& parts) {
    row.PrepareNew();
    for (std::size_t n = 0; n < fields.size(); ++n) TakeField(row, fields[n], PartAt(parts, n + 1));
  }

  bool AddInspection(const Parts& parts, std::int32_t key) {
    Take(m_Inspection, InspectionFields(), parts);
    m_Inspection.m_InspectionID = m_CurrentInspection = key;
    m_Outcome.inspections.push_back(key);
    return m_Inspection.Write();
  }
  bool AddCategory(const Parts& parts, std::int32_t key) {
    Take(m_Category, CategoryFields(), parts);
    m_Category.m_CategoryID = m_CurrentCategory = key;
    m_Category.m_InspectionID = m_CurrentInspection;
    m_Strays += m_CurrentInspection == kNoParent;
    ++m_Outcome.categories;
    return m_Category.Write();
  }
  bool AddStep(const Parts& parts, std::int32_t key) {
    Take(m_Step, StepFields(), parts);
    m_Step.m_StepID = key;
    m_Step.m_CategoryID = m_CurrentCategory;
    m_Strays += m_CurrentCategory == kNoParent;
    ++m_Outcome.steps;
    return m_Step.Write();
  }

  data::Databases& m_Databases;
  data::InspectionTable m_Inspection{m_Databases, u"MERGE_Inspection"};
  data::CategoryTable m_Category{m_Databases, u"MERGE_Category"};
  data::StepTable m_Step{m_Databases, u"MERGE_Step"};
  std::array<data::KeyRange, 3> m_Keys{data::KeyRange(0), data::KeyRange(0), data::KeyRange(0)};
  std::int32_t m_CurrentInspection = kNoParent;
  std::int32_t m_CurrentCategory = kNoParent;
  int m_Strays = 0;
  ImportOutcome m_Outcome;
};

const Staging::Kind Staging::kKinds[3] = {
    {kInspectionTag, u"Inspection", &Staging::AddInspection},
    {kCategoryTag, u"MERGE_InspectionCategory", &Staging::AddCategory},
    {kStepTag, u"MERGE_Step", &Staging::AddStep},
};

ImportResult StageAll(data::Workspace& workspace, Staging& staging,
                      const std::vector<std::string_view>& records) {
  constexpr std::size_t kStatuses = 100;
  const std::size_t count = records.size();
  const auto progress = workspace.GetPrompts().OpenProgress(u"Importing Inspection...", true);
  if (progress) {
    progress->SetRange(0, static_cast<int>(count) - 1);
    progress->SetPosition(1);
  }
  data::Transaction transaction(workspace.InspectionConnection());
  if (!transaction.IsOpen()) return ImportResult::Failed;
  staging.TakeKeys(records);
  for (std::size_t n = 0; n < count; ++n) {
    if (progress && progress->Cancelled()) return ImportResult::Cancelled;
    if (progress && n % (count / kStatuses + 1) == 0)
      progress->SetStatus(Format(u"Record %d of %d", n + 1, count));
    if (!staging.Add(records[n])) return ImportResult::Failed;
    if (progress) progress->Step();
  }
  if (progress && progress->Cancelled()) return ImportResult::Cancelled;
  return transaction.Commit() ? ImportResult::Staged : ImportResult::Failed;
}

std::vector<Text> NotesOn(const ExportRecords& content, const ImportOutcome& outcome, int strays) {
  std::vector<Text> notes;
  if (content.isCutShort)
    notes.push_back(
        u"The file breaks off in its last record, which may lack its end. Compare it with the device that it "
        u"comes from.");
  if (content.hasRest)
    notes.push_back(
        Format(u"An empty record stands behind record %d. What follows it in the file was not read.",
               content.records.size()));
  if (outcome.inspections.empty())
    notes.push_back(u"The file holds no inspection, so there is nothing to merge.");
  if (strays > 0)
    notes.push_back(Format(
        u"Categories before any inspection, or steps before any category, belong to nothing: %d. They cannot "
        u"be merged.",
        strays));
  return notes;
}

Text NameOf(const std::filesystem::path& file) {
  return device::FromUtf8(file.native());
}

Text WhyNotRead(const std::filesystem::path& file, ReadResult result) {
  std::error_code error;
  switch (result) {
    case ReadResult::TooLarge:
      return Format(u"%s is larger than %d MiB, so it is no export file. Nothing was imported.", NameOf(file),
                    kMostFileBytes / 1024 / 1024);
    case ReadResult::Broken:
      return Format(u"%s could not be read to its end. Copy it anew and try again. Nothing was imported.",
                    NameOf(file));
    case ReadResult::NotOpened:
    case ReadResult::Read:
      break;
  }
  if (std::filesystem::is_directory(file, error))
    return Format(u"%s is a folder. Choose a file in it.", NameOf(file));
  if (!std::filesystem::exists(file, error))
    return Format(u"%s is not there. Nothing was imported.", NameOf(file));
  return Format(u"%s cannot be read. Check whether you may. Nothing was imported.", NameOf(file));
}

Text WhyNoExport(const std::filesystem::path& file, const std::string& bytes) {
  return Format(bytes.empty() ? u"%s is empty. Export it anew. Nothing was imported."
                              : u"%s does not begin as an export file does. Nothing was imported.",
                NameOf(file));
}

// "file" as it was chosen, if it was.
ImportOutcome Import(data::Workspace& workspace, const std::optional<std::filesystem::path>& file) {
  device::Prompts& prompts = workspace.GetPrompts();
  device::Alert(prompts, u"Attempting to open as CE/PPC");
  ReadingAlerts alerts(prompts);
  std::string bytes;
  Text problem;
  if (file) {
    const ReadResult result = ReadExportFile(workspace.GetMachine().files, *file, bytes);
    if (result != ReadResult::Read) {
      bytes.clear();
      problem = WhyNotRead(*file, result);
      device::Alert(prompts, u"File failed to open!");
    }
  }
  const ExportRecords content = RecordsOf(bytes);
  if (file && problem.empty()) {
    for (const std::string_view record : content.records) alerts.ShowRecord(record);
    alerts.ShowRecord({});  // the read that finds nothing, or the record of length 0
  }
  const std::string_view first = content.records.empty() ? std::string_view() : content.records.front();
  alerts.Show(first);
  if (!IsHeader(first)) {
    device::Alert(prompts, u"Invalid Import File.");
    if (!file) return {ImportResult::Cancelled, {}, 0, 0, {}};
    device::ShowError(prompts, problem.empty() ? WhyNoExport(*file, bytes) : problem);
    return {};
  }
  Staging staging(workspace.GetDatabases());
  if (const std::vector<Text> failed = staging.Open(); !failed.empty()) {
    Text list = u"The following tables failed to open:\r\r";
    for (const Text& table : failed) list += u"* " + table + u"\r";
    device::Alert(prompts, list);
    return {};
  }
  const ImportResult result = StageAll(workspace, staging, content.records);
  if (result == ImportResult::Cancelled) device::Alert(prompts, u"Cancelled. Nothing was imported.");
  if (result != ImportResult::Staged) return {result, {}, 0, 0, {}};
  ImportOutcome outcome = std::move(staging.Outcome());
  outcome.result = result;
  outcome.notes = NotesOn(content, outcome, staging.Strays());
  return outcome;
}

}  // namespace

ImportOutcome ImportInspectionFile(data::Workspace& workspace, const std::filesystem::path& file) {
  return Import(workspace, file);
}

ImportOutcome ImportInspectionFile(data::Workspace& workspace) {
  Text folder = workspace.Options().m_DefaultPath;
  if (folder.empty()) folder = u"\\My Documents\\";
  return Import(workspace, workspace.GetPrompts().AskOpenPath({folder, u"Rich Text Format (*.rtf)|*.rtf|"}));
}

}  // namespace inspector::exchange
