#include <charconv>

#include "cli/CommandGroups.h"

namespace inspector::cli {

std::int32_t Input::Number(std::size_t index) const {
  const std::string& text = arguments[index];
  std::int32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

CommandOption JsonOption() {
  return {"--json", "", "print a JSON array of objects, for programs", false};
}

Argument AtLeastOne(Argument repeated) {
  repeated.atLeastOne = true;
  return repeated;
}

Assignment ParseAssignment(const std::string& typed) {
  const std::size_t equals = typed.find('=');
  if (equals == std::string::npos) return {device::FromUtf8(typed), std::nullopt};
  return {device::FromUtf8(typed.substr(0, equals)), device::FromUtf8(typed.substr(equals + 1))};
}

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> kCommands = [] {
    std::vector<Command> all;
    for (const auto& group : {SetUpCommands(), InspectionCommands(), StepCommands(), ReportCommands(),
                              SettingCommands(), LibraryCommands(), SyncCommands(), PageCommands()})
      all.insert(all.end(), group.begin(), group.end());
    return all;
  }();
  return kCommands;
}

}  // namespace inspector::cli
