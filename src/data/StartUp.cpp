#include "data/StartUp.h"

#include "data/StructureReport.h"
#include "data/Upgrade.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

using device::DatabasePaths;
using device::Machine;

Text ReadPath(const Machine& machine, const Text& value, TextView otherwise) {
  if (auto stored = machine.registry.Read(Text(kStartUpKey), value)) return *stored;
  if (!machine.registry.Write(Text(kStartUpKey), value, Text(otherwise)))
    machine.faults.Report(machine.registry.LastError());
  return Text(otherwise);
}

bool WritePaths(const Machine& machine, TextView key, const DatabasePaths& paths) {
  return machine.registry.Write(Text(key), u"TemplatePath", paths.templatePath) &&
         machine.registry.Write(Text(key), u"InspectionPath", paths.inspectionPath);
}

enum class Found { Both, NotBoth, NoFile, SameFile };

Found FindDatabases(const Machine& machine, const DatabasePaths& paths) {
  const std::filesystem::path templates = machine.paths.ResolveStored(paths.templatePath);
  const std::filesystem::path inspections = machine.paths.ResolveStored(paths.inspectionPath);
  if (!machine.files.Exists(templates) || !machine.files.Exists(inspections)) return Found::NotBoth;
  std::error_code ignored;
  for (const std::filesystem::path& path : {templates, inspections})
    if (std::filesystem::is_directory(path, ignored)) return Found::NoFile;
  return std::filesystem::equivalent(templates, inspections, ignored) ? Found::SameFile : Found::Both;
}

// A person who is asked again should know why.
void TellWhyNot(const Machine& machine, const DatabasePaths& paths, Found found) {
  if (found == Found::NoFile) {
    std::error_code ignored;
    const bool isTemplate =
        std::filesystem::is_directory(machine.paths.ResolveStored(paths.templatePath), ignored);
    device::ShowError(machine.prompts,
                      device::Format(u"%s is not a file but a folder. Name the database file itself.",
                                     isTemplate ? paths.templatePath : paths.inspectionPath));
  }
  if (found == Found::SameFile)
    device::ShowError(machine.prompts,
                      device::Format(u"Both paths lead to the database %s. Templates and inspections are two "
                                     u"files: correct one of the paths.",
                                     paths.templatePath));
}

// A table that is missing reads as empty, and a missing column is not stored: that must not go unnoticed.
void ReportMissing(const Machine& machine, Connection& connection, DatabaseKind kind) {
  const std::vector<Text> findings = FindMissingStructure(connection, kind);
  if (findings.empty()) return;
  Text list;
  for (const Text& finding : findings) list += (list.empty() ? u"" : u"; ") + finding;
  machine.faults.Report(
      device::Format(u"The database %s is not whole (%s). What belongs there is neither shown nor "
                     u"stored. Put your last good copy in its place.",
                     device::FromUtf8(connection.File().string()), list));
}

// Empty when each file is what it should be.
Text DescribeOtherKind(const Machine& machine, Databases& databases) {
  constexpr DatabaseKind kBoth[] = {DatabaseKind::Template, DatabaseKind::Inspection};
  std::vector<Text> problems;
  for (const DatabaseKind kind : kBoth)
    if (Text problem = DescribeOtherKind(databases.Get(kind), kind); !problem.empty())
      problems.push_back(device::FromUtf8(databases.Get(kind).File().string()) + u": " + problem);
  if (problems.empty()) return {};
  if (problems.size() == 1)
    return problems.front() + u" Nothing was changed. Put your last good copy in its place.";
  return device::Format(
      u"%s The two paths are exchanged: correct them in %s, or give the files their right names. Nothing was "
      u"changed.",
      problems.front(), device::FromUtf8(machine.registry.Path().string()));
}

StartUp Refuse(const Machine& machine, const Text& problem) {
  if (!problem.empty()) device::ShowError(machine.prompts, problem);
  return {StartUpResult::Refused, nullptr};
}

}  // namespace

std::optional<DatabasePaths> ReadDatabasePaths(const Machine& machine) {
  if (!machine.registry.Open(Text(kStartUpKey))) {
    device::ShowError(machine.prompts, machine.registry.LastError());
    return std::nullopt;
  }
  return DatabasePaths{ReadPath(machine, u"TemplatePath", kDefaultTemplatePath),
                       ReadPath(machine, u"InspectionPath", kDefaultInspectionPath)};
}

StartUp StartData(const Machine& machine) {
  std::optional<DatabasePaths> paths = ReadDatabasePaths(machine);
  if (!paths) return {};
  for (Found found; (found = FindDatabases(machine, *paths)) != Found::Both;) {
    TellWhyNot(machine, *paths, found);
    const std::optional<DatabasePaths> chosen = machine.prompts.AskDatabasePaths(*paths);
    if (!chosen) return {};
    paths = chosen;
    if (!WritePaths(machine, kStartUpKey, *paths)) machine.faults.Report(machine.registry.LastError());
  }

  auto workspace = std::make_unique<Workspace>(machine, *paths);
  if (const Text problem = workspace->LockFiles(); !problem.empty()) return Refuse(machine, problem);
  Databases& databases = workspace->GetDatabases();
  if (const Text problem = databases.Open(); !problem.empty()) return Refuse(machine, problem);
  for (Connection* connection : {&databases.Template(), &databases.Inspection()})
    if (const Text problem = connection->FindDamage(); !problem.empty()) return Refuse(machine, problem);

  if (const Text problem = DescribeOtherKind(machine, databases); !problem.empty())
    return Refuse(machine, problem);

  UpgradeResult result = UpgradeStructure(*workspace);
  if (result == UpgradeResult::Sound) result = CheckOptionsStructure(*workspace);
  if (result == UpgradeResult::Fatal) return {StartUpResult::Terminated, nullptr};
  if (result != UpgradeResult::Sound) return {};
  for (const DatabaseKind kind : {DatabaseKind::Template, DatabaseKind::Inspection})
    if (const Text column = FindGap(databases.Get(kind), kind); !column.empty())
      return Refuse(machine, device::Format(
                                 u"The database %s lacks the column %s, and with it all columns behind have "
                                 u"another place. Nothing was changed. Put your last good copy in its place.",
                                 device::FromUtf8(databases.Get(kind).File().string()), column));
  for (const DatabaseKind kind : {DatabaseKind::Template, DatabaseKind::Inspection})
    ReportMissing(machine, databases.Get(kind), kind);
  if (!workspace->TemplateConnection().PrepareForWriting() ||
      !workspace->InspectionConnection().PrepareForWriting())
    return {};
  workspace->Options();
  return {StartUpResult::Ready, std::move(workspace)};
}

OptionsSaved SaveOptions(Workspace& workspace, const DatabasePaths& paths) {
  const Machine& machine = workspace.GetMachine();
  if (!workspace.Options().Write()) return OptionsSaved::Failed;
  workspace.Options().FollowRules();
  if (!WritePaths(machine, kOptionsKey, paths)) {
    machine.faults.Report(machine.registry.LastError());
    return OptionsSaved::Failed;
  }
  const DatabasePaths& inUse = workspace.PathsInUse();
  if (paths.templatePath == inUse.templatePath && paths.inspectionPath == inUse.inspectionPath)
    return OptionsSaved::Done;
  machine.prompts.Show(
      {u"The path(s) for the data files have been changed and you are required to quit before "
       u"proceeding.\n\nInspector will now quit.",
       u"Inspector", device::Buttons::Ok, device::Icon::Exclamation});
  return OptionsSaved::MustQuit;
}

}  // namespace inspector::data
