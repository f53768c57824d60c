#include "cli/CommandGroups.h"
#include "device/Format.h"
#include "library/Library.h"

namespace inspector::cli {
namespace {

using device::Text;

ExitCode RunLibrary(Session& session, const Input& input) {
  const Text action = input.Argument(0);
  // An unset variable of a script must not fill the folder that the script runs in.
  if (input.Argument(1).empty()) {
    session.Fail(u"The folder has no name.");
    return ExitCode::Usage;
  }
  const std::filesystem::path folder = session.GetMachine().paths.ResolveTyped(input.Argument(1));
  Text problem;
  if (action == u"export") {
    problem = library::ExportLibrary(session.Workspace(), folder);
  } else if (action == u"import") {
    std::filesystem::path copy;
    problem = library::ImportLibrary(session.Workspace(), folder, &copy);
    if (problem.empty() && !copy.empty())
      session.Note(device::Format(u"The library before is kept in %s", device::FromUtf8(copy.string())));
  } else {
    session.Fail(device::Format(u"%s is neither \"export\" nor \"import\".", action));
    return ExitCode::Usage;
  }
  if (problem.empty()) return ExitCode::Done;
  session.Fail(problem);
  return ExitCode::Failed;
}

}  // namespace

std::vector<Command> LibraryCommands() {
  return {
      {"library",
       "write the library to a folder of TOML files, or replace it by one",
       {{"ACTION", "\"export\" or \"import\"", Argument::Kind::Text, false, false, {"export", "import"}},
        {"DIR", "the folder", Argument::Kind::Text, false}},
       {},
       "An import replaces the library whole or not at all, and keeps a copy of the database beside it.",
       RunLibrary},
  };
}

}  // namespace inspector::cli
