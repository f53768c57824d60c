#include <charconv>

#include "cli/CommandGroups.h"
#include "device/Format.h"

namespace inspector::cli {

std::optional<std::int32_t> ParseNumber(std::string_view typed) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(typed.data(), typed.data() + typed.size(), number);
  return error == std::errc() && end == typed.data() + typed.size() ? std::optional(number) : std::nullopt;
}

std::int32_t Input::Number(std::size_t index) const {
  return ParseNumber(arguments[index]).value_or(0);
}

CommandOption JsonOption() {
  return {"--json", "", "print a JSON array of objects, for programs", false};
}

Argument AtLeastOne(Argument repeated) {
  repeated.atLeastOne = true;
  return repeated;
}

std::optional<std::filesystem::path> TypedFile(Session& session, device::TextView which,
                                               const std::string& name) {
  if (name.empty()) {
    session.Fail(device::Format(u"The file %s has no name.", which));
    return std::nullopt;
  }
  const device::Text text = device::FromUtf8(name);
  if (device::ToUtf8(text) == name) return session.GetMachine().paths.ResolveTyped(text);
  // In another encoding; the host knows names by their bytes.
  std::error_code error;
  if (name.front() != '\\') return std::filesystem::current_path(error) / name;
  session.Fail(device::Format(
      u"The name %s holds letters in another encoding than UTF-8. Give it a name of plain letters.", which));
  return std::nullopt;
}

Assignment ParseAssignment(const std::string& typed) {
  const std::size_t equals = typed.find('=');
  if (equals == std::string::npos) return {device::FromUtf8(typed), std::nullopt};
  return {device::FromUtf8(typed.substr(0, equals)), device::FromUtf8(typed.substr(equals + 1))};
}

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> kCommands = [] {
    std::vector<Command> all;
    for (const auto& group :
         {SetUpCommands(), InspectionCommands(), StepCommands(), ReportCommands(), SettingCommands(),
          LibraryCommands(), ExchangeCommands(), SyncCommands(), SpellCommands(), PageCommands()})
      all.insert(all.end(), group.begin(), group.end());
    return all;
  }();
  return kCommands;
}

}  // namespace inspector::cli
