// A command of the command line as data: parsing, help, man page and completion are all made from it.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Session.h"
#include "device/Text.h"

namespace inspector::cli {

enum class ExitCode { Done = 0, Failed = 1, Usage = 2 };

struct Argument {
  enum class Kind { Text, Number };
  std::string name;  // "STEPID"
  std::string help;
  Kind kind = Kind::Text;
  bool repeated = false;                  // any number of them; only the last argument
  bool atLeastOne = false;                // of a repeated one; the command itself says so when none is given
  std::vector<std::string> choices = {};  // for the completion, where there are few
};

struct CommandOption {
  std::string name;   // "--layout"
  std::string value;  // "NAME"; empty for a flag
  std::string help;
  bool required = false;
  std::vector<std::string> choices = {};  // for the completion, where there are few
  bool repeated = false;                  // takes any number of values
};

// The whole text is the number: " 7" or "0x7" read as another one would be another inspection's key.
std::optional<std::int32_t> ParseNumber(std::string_view typed);

// What was typed after the command's name. Texts are UTF-8, as they came.
struct Input {
  std::vector<std::string> arguments;  // single ones in their order
  std::vector<std::string> repeated;
  std::map<std::string, std::string> options;             // those that were given; a flag holds an empty text
  std::map<std::string, std::vector<std::string>> lists;  // the values of repeated options, likewise

  bool Has(const std::string& option) const { return options.contains(option); }
  device::Text Argument(std::size_t index) const { return device::FromUtf8(arguments[index]); }
  std::int32_t Number(std::size_t index) const;
};

struct Command {
  std::string name;
  std::string summary;
  std::vector<Argument> arguments;
  std::vector<CommandOption> options;
  std::string details;  // for the man page; may be empty
  // Commands without a document are those that must work without databases.
  std::function<ExitCode(Session&, const Input&)> run;
  bool needsDocument = true;
};

// All commands, in the order of the help.
const std::vector<Command>& AllCommands();

}  // namespace inspector::cli
