#include "cli/CommandGroups.h"
#include "device/DefaultHome.h"

namespace inspector::cli {
namespace {

std::string Synopsis(const Command& command) {
  std::string line = command.name;
  for (const Argument& argument : command.arguments) {
    const std::string name = argument.repeated ? argument.name + " ..." : argument.name;
    line += argument.repeated && !argument.atLeastOne ? " [" + name + "]" : " " + name;
  }
  for (const CommandOption& option : command.options) {
    std::string text = option.name + (option.value.empty() ? "" : " " + option.value);
    if (option.repeated) text += " ...";
    if (!option.required) text = "[" + text + "]";
    line += " " + text;
  }
  return line;
}

// In a man page a backslash and a leading dot or quote mean something.
std::string Roff(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '\\')
      escaped += "\\e";
    else if (letter == '-')
      escaped += "\\-";
    else
      escaped += letter;
  }
  if (!escaped.empty() && (escaped[0] == '.' || escaped[0] == '\'')) escaped.insert(0, "\\&");
  return escaped;
}

ExitCode RunMan(Session& session, const Input&) {
  std::ostream& out = session.Out();
  out << ".TH INSPECTOR\\-CLI 1\n.SH NAME\ninspector\\-cli \\- record a home inspection and write its "
         "report\n"
      << ".SH SYNOPSIS\n.B inspector\\-cli\n[\\-\\-home DIR] [\\-\\-yes] COMMAND ...\n.SH COMMANDS\n";
  for (const Command& command : AllCommands()) {
    out << ".TP\n.B " << Roff(Synopsis(command)) << "\n" << Roff(command.summary) << ".\n";
    if (!command.details.empty()) out << Roff(command.details) << "\n";
    for (const Argument& argument : command.arguments)
      out << ".br\n" << Roff(argument.name) << ": " << Roff(argument.help) << "\n";
    for (const CommandOption& option : command.options)
      out << ".br\n" << Roff(option.name) << ": " << Roff(option.help) << "\n";
  }
  out << ".SH OPTIONS\n.TP\n.B \\-\\-home DIR\nthe device root; by default $INSPECTOR_HOME, else inspector "
         "in the XDG data folder\n.TP\n.B \\-\\-yes\nanswer every question with Yes\n"
      << ".TP\n.B \\-\\-help\nexplain the program, or the command it stands behind\n"
      << ".TP\n.B \\-\\-version\ntell the version\n"
      << ".SH EXIT STATUS\n0 done, 1 failed or refused, 2 wrong usage\n"
      << ".SH FILES\n"
      << device::kRegistryFile << ", " << device::kLogFile
      << ", the folder page-records and \"My Documents\" under the device root\n";
  return ExitCode::Done;
}

std::string Joined(const std::vector<std::string>& words, const std::string& joint) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : joint) + word;
  return line;
}

// Offers words that may hold blanks. The shell quotes them as it does file names.
std::string OfferChoices(const std::vector<std::string>& choices) {
  return "mapfile -t COMPREPLY < <(IFS=$'\\n'; compgen -W $'" + Joined(choices, "\\n") +
         "' -- \"$typed\"); compopt -o filenames 2> /dev/null";
}

constexpr char kOfferFiles[] =
    "mapfile -t COMPREPLY < <(compgen -f -- \"$typed\"); compopt -o filenames 2> /dev/null";
constexpr char kCompletionBegin[] = R"(# bash completion for inspector-cli
_inspector_cli() {
  local current="${COMP_WORDS[COMP_CWORD]}" command="" option="" place=0 word
  local typed="${current//\\/}"
  typed="${typed#[\"\']}"
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ -n $option ]]; then option=""; continue; fi
    case "$word" in
)";
constexpr char kCompletionWords[] = R"() option="$word" ;;
      -*) ;;
      *) if [[ -z $command ]]; then command="$word"; else place=$((place + 1)); fi ;;
    esac
  done
  case "$option" in
    --home) mapfile -t COMPREPLY < <(compgen -d -- "$typed"); compopt -o filenames 2> /dev/null; return ;;
)";
constexpr char kCompletionCommands[] =
    R"(    ?*) return ;;
  esac
  case "$command:$place" in
)";
constexpr char kCompletionEnd[] = R"(  esac
  if [[ -n $command && $current != -* ]]; then
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$typed"); compopt -o filenames 2> /dev/null
  fi
}
complete -F _inspector_cli inspector-cli
)";

ExitCode RunCompletion(Session& session, const Input&) {
  std::ostream& out = session.Out();
  std::vector<std::string> names;
  std::vector<std::string> valued = {"--home"};
  std::string offers;     // for the word behind an option
  std::string arguments;  // for a place of a command
  std::string commands;
  for (const Command& command : AllCommands()) {
    names.push_back(command.name);
    std::string options = "--home --yes --help";
    for (const CommandOption& option : command.options) {
      options += " " + option.name;
      if (!option.value.empty()) valued.push_back(option.name);
      if (option.value == "FILE") offers += "    " + option.name + ") " + kOfferFiles + "; return ;;\n";
      if (!option.choices.empty())
        offers += "    " + option.name + ") " + OfferChoices(option.choices) + "; return ;;\n";
    }
    for (std::size_t at = 0; at < command.arguments.size(); ++at) {
      if (command.arguments[at].choices.empty()) continue;
      arguments += "    " + command.name + ":" + std::to_string(at) + ") " +
                   OfferChoices(command.arguments[at].choices) + "; return ;;\n";
    }
    commands +=
        "    " + command.name + ":*) COMPREPLY=($(compgen -W \"" + options + "\" -- \"$current\")) ;;\n";
  }
  out << kCompletionBegin << "      " << Joined(valued, "|") << kCompletionWords << offers
      << kCompletionCommands << arguments << commands
      << "    *) COMPREPLY=($(compgen -W \"--home --yes --help --version " << Joined(names, " ")
      << "\" -- \"$current\")) ;;\n"
      << kCompletionEnd;
  return ExitCode::Done;
}

}  // namespace

std::vector<Command> PageCommands() {
  return {
      {"man", "print the manual page", {}, {}, "", RunMan, false},
      {"completion", "print the completion for bash", {}, {}, "", RunCompletion, false},
  };
}

}  // namespace inspector::cli
