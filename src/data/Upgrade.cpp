#include "data/Upgrade.h"

#include <functional>

#include "data/CategoryCommentTable.h"
#include "data/CategoryStepTable.h"
#include "data/CategoryTable.h"
#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/ExpandedTextTable.h"
#include "data/FieldTable.h"
#include "data/FieldTemplateTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTable.h"
#include "data/InspectionTypeCategoryTable.h"
#include "data/InspectionTypeCommentTable.h"
#include "data/InspectionTypeTable.h"
#include "data/MaterialCommentTable.h"
#include "data/MaterialTemplateTable.h"
#include "data/PickersTable.h"
#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"
#include "data/StartUp.h"
#include "data/StepCommentTable.h"
#include "data/StepTable.h"
#include "data/StepTemplateTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;

using MakeTable = std::function<std::unique_ptr<TableRecordset>(Databases&)>;

template <typename Table, typename... Arguments>
MakeTable Maker(Arguments... arguments) {
  return [=](Databases& databases) -> std::unique_ptr<TableRecordset> {
    return std::make_unique<Table>(databases, arguments...);
  };
}

const std::vector<MakeTable>& TablesInOrder() {
  static const std::vector<MakeTable> kTables = {
      Maker<InspectionTable>(),
      Maker<CategoryTable>(),
      Maker<StepTable>(),
      Maker<FieldTable>(),
      Maker<CategoryCommentTable>(),
      Maker<CategoryStepTable>(),
      Maker<CategoryTemplateTable>(),
      Maker<CommentsTable>(),
      Maker<InspectionTypeTable>(),
      Maker<InspectionTypeCategoryTable>(),
      Maker<InspectionTypeCommentTable>(),
      Maker<MaterialCommentTable>(),
      Maker<MaterialTemplateTable>(),
      Maker<PickersTable>(),
      Maker<RatingChoicesTable>(),
      Maker<RatingTypeTable>(),
      Maker<StepCommentTable>(),
      Maker<StepTemplateTable>(),
      Maker<FieldTemplateTable>(),
      Maker<UniqueIDTable>(DatabaseKind::Inspection),
      Maker<UniqueIDTable>(DatabaseKind::Template),
      Maker<ExpandedTextTable>(),
  };
  return kTables;
}

constexpr char kBeforeUpgrade[] = ".before-5.0";
constexpr std::size_t kBlock = 1 << 16;  // bytes that are copied at a time
constexpr TextView kCancelled = u"The copy was cancelled.";

constexpr TextView kQuestion =
    u"Warning! The Structure you are using needs to be updated in order to work with this version of "
    u"Inspector.  Tap OK to automatically update your data files. \r\r Do you wish to proceed?";

bool IsCurrent(TextView version) {
  return device::EqualIgnoringCase(version, kDataVersion);
}

UpgradeResult Say(Workspace& workspace, const Text& problem) {
  device::ShowError(workspace.GetPrompts(), problem);
  return UpgradeResult::Failed;
}

}  // namespace

Text ReadDataVersion(Databases& databases) {
  OptionsTable options(databases);
  return options.Open() && options.GetRecord(0) ? options.m_DataVersion : Text();
}

Text KeepCopy(Connection& connection, device::Files& files, const std::string& suffix,
              std::filesystem::path* copy, device::ProgressWindow* progress) {
  const std::filesystem::path& file = connection.File();
  const std::filesystem::path journal = file.string() + "-wal";
  std::error_code noJournal;
  connection.ExecuteNative("PRAGMA wal_checkpoint(TRUNCATE)");
  Transaction quiet(connection);  // nobody writes while the bytes are copied
  const auto waiting = std::filesystem::file_size(journal, noJournal);
  const bool isWhole = noJournal || waiting == 0;
  std::filesystem::path target = file.string() + suffix;
  for (int number = 2; files.Exists(target); ++number)
    target = file.string() + suffix + "-" + std::to_string(number);
  const Text name = device::FromUtf8(target.string());
  if (!quiet.IsOpen() || !isWhole)
    return Format(
        u"The database %s cannot be copied before it is changed, because another program is using it. It was "
        u"left as it is. Close that program, then try again.",
        device::FromUtf8(file.string()));
  const auto output = files.Create(target);
  std::vector<char> block(kBlock);
  std::int64_t count = 0;
  bool written = true;
  for (std::int64_t at = 0; written; at += count) {
    count = connection.ReadFile(at, block.data(), static_cast<int>(block.size()));
    if (count <= 0) break;
    if (progress && progress->Cancelled()) return Text(kCancelled);
    if (progress) progress->Step();
    written = output->Write(std::string_view(block.data(), static_cast<std::size_t>(count)));
  }
  if (count < 0) {
    return Format(
        u"The database %s cannot be read to the end. It was left as it is. Check the disk, or put your last "
        u"good copy in its place.",
        device::FromUtf8(file.string()));
  }
  if (!written || !output->Commit()) {
    return Format(
        u"No copy of the database could be kept as %s: %s. The database was left as it is. Free some space "
        u"or choose another folder, then try again.",
        name, device::FromUtf8(output->Error()));
  }
  if (copy) *copy = target;
  return progress && progress->Cancelled() ? Text(kCancelled) : Text();
}

namespace {

// What takes long in an upgrade, and can be stopped: then nothing has happened.
UpgradeResult KeepBoth(Workspace& workspace) {
  const device::Machine& machine = workspace.GetMachine();
  std::vector<std::filesystem::path> copies;
  Connection* const both[] = {&workspace.GetDatabases().Template(), &workspace.GetDatabases().Inspection()};
  auto progress = machine.prompts.OpenProgress(u"Keeping a copy...", true);
  std::uintmax_t blocks = 0;
  for (const Connection* connection : both) {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(connection->File(), unknown);
    if (!unknown) blocks += (size + kBlock - 1) / kBlock;
  }
  progress->SetRange(0, static_cast<int>(blocks));
  for (Connection* connection : both) {
    progress->SetStatus(device::FromUtf8(connection->File().filename().string()));
    const Text problem =
        KeepCopy(*connection, machine.files, kBeforeUpgrade, &copies.emplace_back(), progress.get());
    if (problem.empty()) continue;
    const bool isCancelled = progress->Cancelled();
    progress.reset();  // before a box asks for a tap
    for (const std::filesystem::path& copy : copies)
      if (!copy.empty()) machine.files.Remove(copy);
    if (!isCancelled) return Say(workspace, problem);
    device::Alert(machine.prompts, u"Cancelled. Nothing was changed.");
    return UpgradeResult::Refused;
  }
  return UpgradeResult::Sound;
}

}  // namespace

UpgradeResult UpgradeStructure(Workspace& workspace) {
  Databases& databases = workspace.GetDatabases();
  const device::Machine& machine = workspace.GetMachine();
  const int faults = machine.faults.Count();
  const Text version = ReadDataVersion(databases);
  if (machine.faults.Count() > faults) return UpgradeResult::Failed;  // unreadable is not old
  if (IsCurrent(version)) return UpgradeResult::Sound;
  if (!device::ConfirmUpdate(machine.prompts, Text(kQuestion))) return UpgradeResult::Refused;

  if (const UpgradeResult kept = KeepBoth(workspace); kept != UpgradeResult::Sound) return kept;
  const auto progress = machine.prompts.OpenProgress(u"Updating Structure...", false);
  progress->SetRange(0, static_cast<int>(TablesInOrder().size()));
  for (const MakeTable& make : TablesInOrder()) {
    const auto table = make(databases);
    progress->SetStatus(Format(u"Checking %s...", table->TableName()));
    if (table->CheckStructure(machine.prompts) == TableRecordset::StructureResult::Fatal)
      return UpgradeResult::Fatal;
    progress->Step();
  }
  OptionsTable options(databases);
  if (options.CheckStructure(machine.prompts) == TableRecordset::StructureResult::Fatal)
    return UpgradeResult::Fatal;
  if (!CreateIndexes(databases.Template(), DatabaseKind::Template) ||
      !CreateIndexes(databases.Inspection(), DatabaseKind::Inspection))
    return UpgradeResult::Failed;
  options.Load();
  options.m_DataVersion = Text(kDataVersion);
  Transaction transaction(databases.Template());
  return options.Write() && transaction.Commit() ? UpgradeResult::Sound : UpgradeResult::Failed;
}

UpgradeResult CheckOptionsStructure(Workspace& workspace) {
  Databases& databases = workspace.GetDatabases();
  OptionsTable options(databases);
  const std::vector<StoredColumn>* stored = databases.Template().ColumnsOf(options.TableName());
  if (!stored || stored->size() < options.Columns().size()) {
    if (const Text problem = KeepCopy(databases.Template(), workspace.GetMachine().files, kBeforeUpgrade);
        !problem.empty())
      return Say(workspace, problem);
  }
  const bool sound = options.CheckStructure(workspace.GetPrompts()) == TableRecordset::StructureResult::Sound;
  return sound ? UpgradeResult::Sound : UpgradeResult::Fatal;
}

}  // namespace inspector::data
