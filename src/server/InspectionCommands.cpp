#include <algorithm>
#include <map>

#include "device/Files.h"
#include "server/CsvFile.h"
#include "server/InspectionEntry.h"
#include "server/OfficeCommands.h"
#include "server/Periods.h"
#include "server/Table.h"

namespace inspector::server {
namespace {

constexpr std::uint64_t kLargestImport = 256 * 1024 * 1024;
constexpr std::size_t kProblemsTold = 20;

ExitCode TellAll(const CommandRun& run, const std::vector<std::string>& problems) {
  for (std::size_t at = 0; at < std::min(problems.size(), kProblemsTold); ++at)
    run.err << problems[at] << '\n';
  if (problems.size() > kProblemsTold) run.err << "... and " << problems.size() - kProblemsTold << " more.\n";
  return ExitCode::Failed;
}

// Reads the words of a command that needs a number.
std::optional<Change> Read(const CommandRun& run, const std::vector<std::string>& words) {
  std::vector<std::string> problems;
  Change change = ReadChange(words, problems);
  if (problems.empty() && change.number.empty())
    problems.emplace_back("Which inspection? Give InspectionNum=NUMBER.");
  if (problems.empty()) return change;
  TellAll(run, problems);
  return std::nullopt;
}

// An office may be entered work for before it has users, but a mistyped one must not pass unseen.
void MentionNewOffice(const CommandRun& run, const std::string& office) {
  Fault fault;
  if (!run.KnowsOffice(office, fault) && fault.empty())
    run.err << "\"" << office << "\" is a new office. Nobody sees its inspections until it has a user.\n";
}

ExitCode Apply(CommandRun& run, const std::string& office, const std::vector<Change>& changes,
               ChangeKind kind, Applied& applied) {
  if (const std::string why = WhyNoName(device::FromUtf8(office)); !why.empty()) {
    run.err << why << '\n';
    return ExitCode::Usage;
  }
  if (changes.empty() || changes[0].expect != Change::Expect::Existing) MentionNewOffice(run, office);
  return run.Tell(run.storage.Apply(office, changes, kind, run.Here(), applied));
}

std::string Day(const device::CalendarTime& day) {
  return device::ToIso(day).substr(0, 10);
}

std::vector<std::string> AllNames() {
  std::vector<std::string> names(kTextNames.begin(), kTextNames.end());
  names.emplace_back(kDateName);
  names.emplace_back(kTypeName);
  return names;
}

std::vector<Table::Value> AllValues(const OfficeInspection& inspection) {
  std::vector<Table::Value> values;
  for (const Text& text : inspection.texts) values.emplace_back(device::ToUtf8(text));
  values.emplace_back(Day(inspection.day));
  values.emplace_back(std::int64_t{inspection.type});
  return values;
}

bool Matches(const OfficeInspection& inspection, const Change& wanted) {
  if (!wanted.number.empty() && wanted.number != inspection.Number()) return false;
  for (std::size_t at = 1; at < kTexts; ++at)
    if (wanted.texts[at] && *wanted.texts[at] != inspection.texts[at]) return false;
  return (!wanted.day || *wanted.day == inspection.day) && (!wanted.type || *wanted.type == inspection.type);
}

// The changes that a table asks for; every problem with its line.
std::vector<Change> ReadTable(const std::vector<CsvRow>& rows, std::vector<std::string>& problems) {
  std::vector<Change> changes;
  if (rows.empty()) {
    problems.emplace_back("The file is empty; its first line should name the fields.");
    return changes;
  }
  std::vector<Field> fields;
  bool hasNumber = false;
  for (const std::string& name : rows[0].values) {
    std::string problem;
    const auto field = FindField(name, problem);
    if (!field) problems.push_back("line 1: " + problem);
    fields.push_back(field.value_or(Field{FieldKind::OfText}));
    hasNumber = hasNumber || (field && field->kind == FieldKind::OfText && field->text == 0);
  }
  if (problems.empty() && !hasNumber) problems.emplace_back("line 1: there is no column InspectionNum.");
  if (!problems.empty()) return changes;

  std::map<Text, int> lines;  // of the numbers so far
  for (std::size_t at = 1; at < rows.size(); ++at) {
    const CsvRow& row = rows[at];
    const std::string line = "line " + std::to_string(row.line) + ": ";
    if (row.values.size() != fields.size()) {
      problems.push_back(line + std::to_string(row.values.size()) + " values where there are " +
                         std::to_string(fields.size()) + " fields.");
      continue;
    }
    Change& change = changes.emplace_back();
    for (std::size_t column = 0; column < fields.size(); ++column) {
      const std::string& value = row.values[column];
      // A cell without a date or a type says nothing about it.
      if (fields[column].kind != FieldKind::OfText && value.empty()) continue;
      if (const std::string why = Enter(change, fields[column], value); !why.empty())
        problems.push_back(line + why);
    }
    if (change.number.empty()) problems.push_back(line + "there is no number.");
    const auto [first, isNew] = lines.emplace(change.number, row.line);
    if (!isNew)
      problems.push_back(line + "the number is that of line " + std::to_string(first->second) + ".");
  }
  return changes;
}

}  // namespace

ExitCode AddInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words) {
  auto change = Read(run, words);
  if (!change) return ExitCode::Failed;
  change->expect = Change::Expect::New;
  Applied applied;
  return Apply(run, office, {*change}, ChangeKind::Added, applied);
}

ExitCode SetInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words) {
  auto change = Read(run, words);
  if (!change) return ExitCode::Failed;
  change->expect = Change::Expect::Existing;
  Applied applied;
  return Apply(run, office, {*change}, ChangeKind::Set, applied);
}

ExitCode ListInspections(CommandRun& run, const std::string& office, std::optional<protocol::Period> period,
                         const std::vector<std::string>& words) {
  std::vector<std::string> problems;
  const Change wanted = ReadChange(words, problems);
  if (!problems.empty()) return TellAll(run, problems);
  Fault fault;
  if (!run.KnowsOffice(office, fault))
    return run.Tell(fault.empty() ? "There is no office \"" + office + "\"." : fault);
  std::vector<OfficeInspection> inspections;
  const auto days = period ? DaysOf(*period, run.clock.Now()) : std::nullopt;
  if (fault = run.storage.List(office, days, inspections); !fault.empty()) return run.Tell(fault);
  std::erase_if(inspections, [&wanted](const auto& inspection) { return !Matches(inspection, wanted); });
  if (run.asJson) {
    Table table(AllNames());
    for (const OfficeInspection& inspection : inspections) table.Add(AllValues(inspection));
    table.Print(run.out, true);
    return ExitCode::Done;
  }
  Table table({"Number", "Date", "Type", "Client", "Address", "City"});
  for (const OfficeInspection& inspection : inspections) {
    const auto text = [&inspection](int ordinal) { return device::ToUtf8(inspection.OfOrdinal(ordinal)); };
    table.Add({text(protocol::kNumberOrdinal), Day(inspection.day), std::int64_t{inspection.type}, text(2),
               text(1), text(13)});
  }
  table.Print(run.out, false);
  return ExitCode::Done;
}

ExitCode ShowInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words) {
  const auto change = Read(run, words);
  if (!change) return ExitCode::Failed;
  std::optional<OfficeInspection> inspection;
  if (const Fault fault = run.storage.Find(office, change->number, inspection); !fault.empty())
    return run.Tell(fault);
  if (!inspection) return run.Tell("There is no inspection \"" + device::ToUtf8(change->number) + "\".");
  Table table(AllNames());
  table.Add(AllValues(*inspection));
  table.PrintUpright(run.out, run.asJson);
  return ExitCode::Done;
}

ExitCode RemoveInspection(CommandRun& run, const std::string& office, const std::string& number) {
  return run.Tell(run.storage.Remove(office, device::FromUtf8(number), run.Here()));
}

ExitCode ImportInspections(CommandRun& run, const std::string& office, const std::string& file,
                           bool isTrial) {
  device::HostFiles files;
  const auto content = device::ReadWhole(files, file, kLargestImport);
  if (!content) return run.Tell(file + " cannot be read.");
  std::string problem;
  const std::vector<CsvRow> rows = ReadCsv(*content, problem);
  if (!problem.empty()) return run.Tell(file + ", " + problem);
  std::vector<std::string> problems;
  const std::vector<Change> changes = ReadTable(rows, problems);
  if (!problems.empty()) {
    run.err << file << ": nothing is imported.\n";
    return TellAll(run, problems);
  }
  if (isTrial) {
    run.out << changes.size() << " inspections can be imported.\n";
    return ExitCode::Done;
  }
  Applied applied;
  const ExitCode code = Apply(run, office, changes, ChangeKind::Imported, applied);
  if (code == ExitCode::Done)
    run.out << applied.added << " added, " << applied.changed << " changed, " << applied.same
            << " as they were.\n";
  return code;
}

}  // namespace inspector::server
