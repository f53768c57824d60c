#include <cstdlib>

#include "cli/CommandGroups.h"
#include "data/DatabaseFile.h"
#include "data/FreshDatabase.h"
#include "data/KeyReport.h"
#include "data/RowDump.h"
#include "data/StructureReport.h"
#include "device/Format.h"
#include "editing/VisitScript.h"
#include "library/Library.h"
#include "spell/InstalledDictionaries.h"

namespace inspector::cli {
namespace {

using device::Format;
using device::FromUtf8;
using device::Text;

constexpr device::TextView kSampleValue = u"SampleVisit";

std::filesystem::path FolderFrom(const char* variable, const char* usual) {
  const char* chosen = std::getenv(variable);
  return chosen && *chosen ? chosen : usual;
}

std::filesystem::path AssetsFolder() {
  return FolderFrom("INSPECTOR_ASSETS", INSPECTOR_ASSETS);
}

// True when the file is there afterwards.
bool CreateIfMissing(Session& session, const Text& devicePath, data::DatabaseKind kind) {
  device::Machine& machine = session.GetMachine();
  if (devicePath.empty()) {
    return session.Fail(
        Format(u"The path of a database is empty in %s. Remove the line there: then the usual "
               u"place is taken.",
               FromUtf8(machine.registry.Path().string())));
  }
  const std::filesystem::path file = machine.paths.ResolveStored(devicePath);
  if (machine.files.Exists(file)) return true;
  if (const Text problem = data::CreateFreshDatabase(file, kind, machine.faults); !problem.empty())
    return session.Fail(problem);
  session.Out() << "Created " << file.string() << "\n";
  return true;
}

// A row as a new database has it, or one without any values, is nobody's own.
bool AreSet(const std::vector<data::RawRow>& options, const data::TableLayout& layout) {
  const data::RawRow untouched = data::NeutralRow(layout);
  for (const data::RawRow& row : options)
    for (std::size_t at = 0; at < row.size(); ++at) {
      const bool isNeutral = std::holds_alternative<std::monostate>(row[at]) || row[at] == untouched[at];
      if (!isNeutral && layout.columns[at].name != u"DataVersion") return true;
    }
  return false;
}

bool AddStarterLibrary(Session& session) {
  const std::filesystem::path folder = AssetsFolder() / "library";
  data::Connection& connection = session.Workspace().TemplateConnection();
  const data::TableLayout& layout = *data::FindLayout(u"Options");
  data::Transaction transaction(connection);
  std::vector<data::RawRow> options;
  if (!transaction.IsOpen() || !data::ReadRawRows(connection, layout, options)) return false;
  if (const Text problem = library::ImportLibrary(session.Workspace(), folder); !problem.empty())
    return session.Fail(problem);
  // The library brings options along; they are no replacement for an inspector's own.
  if (AreSet(options, layout) && !data::ReplaceRawRows(connection, layout, options)) return false;
  if (!transaction.Commit()) return false;
  session.Out() << "Added the starter library\n";
  return true;
}

// The visit, then the files, the owner and the options that go with it: none of them without the visit.
bool PlaySampleVisit(Session& session, const editing::VisitScript& script, bool isUnused, Text& problem) {
  data::Transaction transaction(session.Workspace().InspectionConnection());
  const auto key = transaction.IsOpen() ? script.Play(session.Document(), problem) : std::nullopt;
  if (!key || !script.CopyFiles(session.GetMachine(), problem) ||
      (isUnused && !script.SetUpDevice(session.Workspace(), problem)) || !transaction.Commit())
    return false;
  session.Out() << "Added the sample visit, inspection " << *key << "\n";
  return true;
}

enum class SampleWish { Anywhere, OnUnusedDevice };

bool AddSampleVisit(Session& session, SampleWish wish) {
  device::Machine& machine = session.GetMachine();
  const bool isAsked = wish == SampleWish::Anywhere;
  if (machine.registry.Read(Text(data::kStartUpKey), Text(kSampleValue))) {
    if (isAsked) session.Out() << "The sample visit was added before\n";
    return true;
  }
  Text problem;
  const auto script =
      editing::VisitScript::Read(machine.files, AssetsFolder() / "sample" / "visit.toml", problem);
  if (!script) return session.Fail(problem);

  data::Databases& databases = session.Workspace().GetDatabases();
  data::InspectionTable found(databases);
  found.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionNum = \"%s\"", script->DocumentNumber()));
  if (found.RecordCount() == 0) {
    const bool isUnused = editing::IsUnused(databases);
    if (!isAsked && !isUnused) return true;
    if (!PlaySampleVisit(session, *script, isUnused, problem)) {
      if (problem.empty()) problem = u"The sample visit could not be added.";
      if (isAsked) return session.Fail(problem);
      session.Note(problem);  // an office's own library need not offer what the visit asks for
      return true;
    }
  }
  if (!machine.registry.Write(Text(data::kStartUpKey), Text(kSampleValue), script->DocumentNumber()))
    return session.Fail(machine.registry.LastError());
  return true;
}

// A device without them does everything but check spelling, so it is no failure.
void PlaceDictionaries(Session& session) {
  device::Machine& machine = session.GetMachine();
  std::vector<std::filesystem::path> placed;
  const Text problem = spell::InstalledDictionaries(machine.files, machine.paths)
                           .Place(FolderFrom("INSPECTOR_DICTIONARIES", INSPECTOR_DICTIONARIES), placed);
  if (!placed.empty())
    session.Out() << "Placed the dictionaries in " << placed.front().parent_path().string() << "\n";
  if (!problem.empty()) session.Note(problem);
}

ExitCode RunInit(Session& session, const Input& input) {
  const std::optional<device::DatabasePaths> paths = data::ReadDatabasePaths(session.GetMachine());
  if (!paths || !CreateIfMissing(session, paths->templatePath, data::DatabaseKind::Template) ||
      !CreateIfMissing(session, paths->inspectionPath, data::DatabaseKind::Inspection) ||
      !session.OpenDocument())
    return ExitCode::Failed;
  // Also after a first init that was killed between making the file and filling it.
  if (data::IsEmptyLibrary(session.Workspace().TemplateConnection()) && !AddStarterLibrary(session))
    return ExitCode::Failed;
  PlaceDictionaries(session);
  if (input.Has("--sample") && !AddSampleVisit(session, SampleWish::Anywhere)) return ExitCode::Failed;
  if (input.Has("--sample-if-unused") && !AddSampleVisit(session, SampleWish::OnUnusedDevice))
    return ExitCode::Failed;
  return ExitCode::Done;
}

struct Findings {
  bool isChecked = true;
  std::vector<Text> faults{};
  std::vector<Text> notes{};
};

// A file that is locked, write-protected or on a full disk may be as sound as any.
bool TellsOfFault(const std::filesystem::path& file, const Text& problem) {
  const Text seen = data::ExamineDatabaseFile(file);
  return seen.empty() ? problem == data::DamagedFileMessage(file) : seen != data::ReadOnlyFileMessage(file);
}

Findings FindFaults(Session& session, const std::filesystem::path& file, data::DatabaseKind kind) {
  data::Connection connection(file, session.GetMachine().faults);
  if (const Text problem = connection.OpenForReading(); !problem.empty())
    return {TellsOfFault(file, problem), {problem}};
  const data::ReadScope reading(connection);  // a counter and its keys at one moment
  if (Text problem = data::DescribeOtherKind(connection, kind); !problem.empty())
    return {true, {std::move(problem)}};
  Findings found{true, data::FindStructureFaults(connection, kind)};
  // What a damaged file holds is anybody's guess.
  if (!connection.CheckIntegrity(found.faults)) return found;
  const auto add = [&found](const std::vector<Text>& more) {
    found.faults.insert(found.faults.end(), more.begin(), more.end());
  };
  if (kind == data::DatabaseKind::Template) add(data::FindVersionFaults(connection));
  add(data::FindKeyFaults(connection, kind));
  if (kind == data::DatabaseKind::Inspection) found.notes = data::FindOrphans(connection);
  return found;
}

// What was set; nothing when that failed, which has been reported. A file that is damaged or cannot be opened
// is left to the check.
std::optional<std::vector<Text>> Repair(Session& session, const std::filesystem::path& file,
                                        data::DatabaseKind kind) {
  data::Connection connection(file, session.GetMachine().faults);
  std::vector<Text> findings;
  if (!connection.Open().empty() || !connection.CheckIntegrity(findings)) return std::vector<Text>();
  return data::RepairCounters(connection, kind);
}

// Without the document: opening that asks about an older structure, upgrades it, and adds an inspection.
ExitCode RunCheck(Session& session, const Input& input) {
  const device::Machine& machine = session.GetMachine();
  const std::optional<device::DatabasePaths> paths = data::ReadDatabasePaths(machine);
  if (!paths) return ExitCode::Failed;
  bool sound = true;
  for (const auto& [path, kind] : {std::pair{paths->templatePath, data::DatabaseKind::Template},
                                   std::pair{paths->inspectionPath, data::DatabaseKind::Inspection}}) {
    const std::filesystem::path file = machine.paths.ResolveStored(path);
    std::optional<std::vector<Text>> repaired = std::vector<Text>();
    if (input.Has("--repair")) repaired = Repair(session, file, kind);
    if (!repaired) return ExitCode::Failed;
    const Findings found = FindFaults(session, file, kind);
    session.Out() << file.string() << ": "
                  << (!found.isChecked       ? "not checked"
                      : found.faults.empty() ? "sound"
                                             : "faulty")
                  << "\n";
    for (const std::vector<Text>& lines : {*repaired, found.faults, found.notes})
      for (const Text& line : lines) session.Out() << "  " << device::ToUtf8(line) << "\n";
    sound = sound && found.faults.empty();
  }
  return sound ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace

std::vector<Command> SetUpCommands() {
  return {
      {"init",
       "create what is missing: databases, starter library and dictionaries",
       {},
       {{"--sample", "", "add the sample visit, once", false},
        {"--sample-if-unused", "", "the same, where nobody has recorded anything yet", false}},
       "Never overwrites anything. The databases lie where the registry says, by default in \"My Documents\" "
       "under the device root.",
       RunInit,
       false},
      {"check",
       "check structure, keys and integrity of both databases",
       {},
       {{"--repair", "", "set the counters of new keys behind the keys that are in use", false}},
       "Asks nothing, and without --repair changes neither of them. Says what is wrong, and ends with 1 if "
       "anything is.",
       RunCheck,
       false},
  };
}

}  // namespace inspector::cli
