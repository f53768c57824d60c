#include <algorithm>

#include "server/InspectionEntry.h"
#include "server/OfficeCommands.h"
#include "server/Table.h"

namespace inspector::server {
namespace {

constexpr std::array kKindNames = {"added", "set", "imported", "pushed", "restored", "removed"};

std::string Day(const OfficeInspection& inspection) {
  return device::ToIso(inspection.day).substr(0, 10);
}

// What one version changed of the one before, as the command line would set it.
std::string Difference(const OfficeInspection& before, const OfficeInspection& after) {
  std::string changed;
  const auto add = [&changed](std::string_view name, const std::string& value) {
    changed += (changed.empty() ? "" : "; ") + std::string(name) + "=" + value;
  };
  for (std::size_t at = 1; at < kTexts; ++at)
    if (before.texts[at] != after.texts[at]) add(kTextNames[at], device::ToUtf8(after.texts[at]));
  if (before.day != after.day) add(kDateName, Day(after));
  if (before.type != after.type) add(kTypeName, std::to_string(after.type));
  return changed;
}

}  // namespace

ExitCode ShowHistory(CommandRun& run, const std::string& office, const std::string& number) {
  std::vector<Version> versions;
  if (const Fault fault = run.storage.History(office, device::FromUtf8(number), versions); !fault.empty())
    return run.Tell(fault);
  if (versions.empty()) {
    return run.Tell(number.empty()
                        ? "Nothing has come without a number."
                        : "The office \"" + office + "\" has never had an inspection \"" + number + "\".");
  }
  Table table({"Version", "When", "Who", "Where", "What", "Changes"});
  OfficeInspection before;
  for (const Version& version : versions) {
    table.Add({std::int64_t{version.number}, device::ToIso(version.origin.when), version.origin.who,
               version.origin.where, kKindNames[static_cast<std::size_t>(version.kind)],
               Difference(before, version.inspection)});
    // What came without a number has nothing to do with what came before it.
    if (!number.empty()) before = version.inspection;
  }
  table.Print(run.out, run.asJson);
  return ExitCode::Done;
}

ExitCode Restore(CommandRun& run, const std::string& office, const std::string& number, int version,
                 bool unnumbered) {
  std::vector<Version> versions;
  const Text key = device::FromUtf8(number);
  if (const Fault fault = run.storage.History(office, unnumbered ? Text() : key, versions); !fault.empty())
    return run.Tell(fault);
  const auto found = std::find_if(versions.begin(), versions.end(),
                                  [version](const Version& one) { return one.number == version; });
  if (found == versions.end())
    return run.Tell("There is no version " + std::to_string(version) + "; history shows which there are.");
  Change change;
  change.number = key;
  // What came from a device can go back to one; a number that somebody types may not.
  if (const std::string why = unnumbered ? Enter(change, {FieldKind::OfText}, number) : ""; !why.empty()) {
    run.err << why << '\n';
    return ExitCode::Usage;
  }
  // A number that is taken is another house.
  change.expect = unnumbered ? Change::Expect::New : Change::Expect::Either;
  for (std::size_t at = 1; at < kTexts; ++at) change.texts[at] = found->inspection.texts[at];
  change.day = found->inspection.day;
  change.type = found->inspection.type;
  Applied applied;
  return run.Tell(
      run.storage.Apply(office, std::span(&change, 1), ChangeKind::Restored, run.Here(), applied));
}

ExitCode BackUp(CommandRun& run, const std::string& file) {
  return run.Tell(run.storage.BackUp(file));
}

}  // namespace inspector::server
