#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <deque>

#include "cli/Command.h"
#include "device/DefaultHome.h"

namespace inspector::cli {
namespace {

// A text may begin with a hyphen ("- loose", "-5 C") and be no option, or be the name of a command ("new").
// Such words are shielded from the parser by a character that nobody types, and freed from it afterwards.
// "--unknown" stays an error; after "--" everything is text.
constexpr char kShield = '\x01';

std::string Unshielded(std::string word) {
  if (word.starts_with(kShield)) word.erase(0, 1);
  return word;
}

std::string WhyNoNumber(const std::string& typed) {
  const std::string word = Unshielded(typed);
  return ParseNumber(word) ? "" : word + " is no number";
}

// Where CLI11 puts what it parsed for one command.
struct Slot {
  const Command* command = nullptr;
  CLI::App* app = nullptr;
  std::deque<std::string> single;
  std::vector<std::string> repeated;
  std::deque<std::pair<const CommandOption*, std::string>> values;
  std::deque<std::pair<const CommandOption*, std::vector<std::string>>> lists;
  std::deque<std::pair<const CommandOption*, bool>> flags;
};

void Describe(CLI::App& parent, const Command& command, Slot& slot) {
  slot.command = &command;
  slot.app = parent.add_subcommand(command.name, command.summary);
  slot.app->fallthrough();
  slot.app->footer(command.details);
  for (const Argument& argument : command.arguments) {
    if (argument.repeated) {
      slot.app->add_option(argument.name, slot.repeated, argument.help);
      continue;
    }
    CLI::Option* option =
        slot.app->add_option(argument.name, slot.single.emplace_back(), argument.help)->required();
    if (argument.kind == Argument::Kind::Number) option->check(WhyNoNumber, "NUMBER");
  }
  for (const CommandOption& option : command.options) {
    if (option.value.empty()) {
      slot.app->add_flag(option.name, slot.flags.emplace_back(&option, false).second, option.help)
          ->disable_flag_override();
    } else if (option.repeated) {
      slot.app
          ->add_option(option.name, slot.lists.emplace_back(&option, std::vector<std::string>()).second,
                       option.help)
          ->type_name(option.value);
    } else {
      CLI::Option* added =
          slot.app->add_option(option.name, slot.values.emplace_back(&option, "").second, option.help);
      added->type_name(option.value)->required(option.required);
    }
  }
}

void ShieldTexts(std::vector<std::string>& words) {
  std::vector<std::string> known = {"--home", "--yes", "--help", "-h", "--version"};
  std::vector<std::string> names;
  for (const Command& command : AllCommands()) {
    names.push_back(command.name);
    for (const CommandOption& option : command.options) known.push_back(option.name);
  }
  bool hasCommand = false;
  bool isHome = false;
  const auto end = std::find(words.begin(), words.end(), "--");
  std::for_each(end, words.end(), [](std::string& word) { word.insert(word.begin(), kShield); });
  for (auto it = words.begin(); it != end; ++it) {
    std::string& word = *it;
    const bool isCommand = !isHome && std::find(names.begin(), names.end(), word) != names.end();
    isHome = word == "--home";
    if (isCommand && hasCommand) word.insert(word.begin(), kShield);
    hasCommand = hasCommand || isCommand;
    if (!word.starts_with('-')) continue;
    const bool isKnown = std::find(known.begin(), known.end(), word.substr(0, word.find('='))) != known.end();
    const bool isMistyped = word.starts_with("--") && word.find(' ') == std::string::npos && word.size() > 2;
    if (!isKnown && !isMistyped) word.insert(word.begin(), kShield);
  }
  if (end != words.end()) words.erase(end);
}

// The word that stands where a command is expected, when it is none.
std::string UnknownCommand(const std::vector<std::string>& words) {
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (*word == "--home" && word + 1 != words.end()) {
      ++word;
      continue;
    }
    if (word->starts_with('-')) continue;
    const auto isNamed = [&](const Command& command) { return command.name == *word; };
    return std::any_of(AllCommands().begin(), AllCommands().end(), isNamed) ? "" : Unshielded(*word);
  }
  return "";
}

Input Collect(const Slot& slot) {
  Input input;
  for (const std::string& word : slot.single) input.arguments.push_back(Unshielded(word));
  for (const std::string& word : slot.repeated) input.repeated.push_back(Unshielded(word));
  for (const auto& [option, value] : slot.values)
    if (slot.app->count(option->name) > 0) input.options[option->name] = Unshielded(value);
  for (const auto& [option, values] : slot.lists)
    for (const std::string& value : values) input.lists[option->name].push_back(Unshielded(value));
  for (const auto& [option, given] : slot.flags)
    if (given) input.options[option->name] = "";
  return input;
}

}  // namespace

int RunCommandLine(std::vector<std::string> words, std::ostream& out, std::ostream& err) {
  CLI::App app("Records a home inspection and writes its report.", "inspector-cli");
  app.require_subcommand(1);
  app.set_version_flag("--version", INSPECTOR_VERSION);
  SessionSettings settings;
  std::string home;
  app.add_option("--home", home, "device root (default: $INSPECTOR_HOME, else the XDG data folder)")
      ->type_name("DIR");
  app.add_flag("--yes", settings.yes, "answer every question with Yes")->disable_flag_override();
  std::deque<Slot> slots;
  for (const Command& command : AllCommands()) Describe(app, command, slots.emplace_back());

  try {
    ShieldTexts(words);
    if (const std::string unknown = UnknownCommand(words); !unknown.empty()) {
      err << "There is no command \"" << unknown << "\".\nRun with --help for those there are.\n";
      return static_cast<int>(ExitCode::Usage);
    }
    std::reverse(words.begin(), words.end());
    app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    const int code = app.exit(error, out, err);
    if (!out.flush()) return static_cast<int>(ExitCode::Failed);
    return static_cast<int>(code == 0 ? ExitCode::Done : ExitCode::Usage);
  }

  if (app.count("--home") > 0 && home.empty()) {
    err << "inspector-cli: --home needs a folder\n";
    return static_cast<int>(ExitCode::Usage);
  }
  settings.home = home.empty() ? device::DefaultHome() : std::filesystem::path(Unshielded(home));
  for (const Slot& slot : slots) {
    if (!slot.app->parsed()) continue;
    std::error_code notThere;
    const bool needsHome = slot.command->needsDocument || slot.command->name == "check";
    if (!home.empty() && needsHome && !std::filesystem::is_directory(settings.home, notThere)) {
      // A name that was mistyped must not become a device.
      err << "inspector-cli: There is no folder " << settings.home.string()
          << ". Correct the name after --home, or make a device there with \"init\".\n";
      return static_cast<int>(ExitCode::Failed);
    }
    Session session(settings, out, err);
    if (slot.command->needsDocument && !session.OpenDocument()) return static_cast<int>(ExitCode::Failed);
    ExitCode code = slot.command->run(session, Collect(slot));
    out.flush();
    if (!out) session.Fail(u"The output could not be written.");
    // A fault that the fixed behaviour passed over still ends the run with a failure.
    if (code == ExitCode::Done && (!out || session.GetMachine().faults.Count() > 0)) code = ExitCode::Failed;
    return static_cast<int>(code);
  }
  return static_cast<int>(ExitCode::Usage);
}

}  // namespace inspector::cli
