#include "cli/CommandGroups.h"

namespace inspector::cli {
namespace {

std::string Synopsis(const Command& command) {
  std::string line = command.name;
  for (const Argument& argument : command.arguments) {
    const std::string name = argument.repeated ? "[" + argument.name + " ...]" : argument.name;
    line += " " + name;
  }
  for (const CommandOption& option : command.options) {
    std::string text = option.name + (option.value.empty() ? "" : " " + option.value);
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
         "in the "
         "XDG data folder\n.TP\n.B \\-\\-yes\nanswer every question with Yes\n"
      << ".SH EXIT STATUS\n0 done, 1 failed or refused, 2 wrong usage\n"
      << ".SH FILES\nregistry.toml, inspector.log and \"My Documents\" under the device root\n";
  return ExitCode::Done;
}

ExitCode RunCompletion(Session& session, const Input&) {
  std::ostream& out = session.Out();
  out << "# bash completion for inspector-cli\n_inspector_cli() {\n"
         "  local current=\"${COMP_WORDS[COMP_CWORD]}\" command=\"\" word\n"
         "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n    case \"$word\" in\n";
  std::string names;
  for (const Command& command : AllCommands()) names += (names.empty() ? "" : "|") + command.name;
  out << "      " << names << ") command=\"$word\"; break ;;\n    esac\n  done\n  case \"$command\" in\n";
  for (const Command& command : AllCommands()) {
    std::string options = "--help --yes";
    for (const CommandOption& option : command.options) options += " " + option.name;
    out << "    " << command.name << ") COMPREPLY=($(compgen -W \"" << options
        << "\" -- \"$current\") $(compgen -f -- \"$current\")) ;;\n";
  }
  for (char& letter : names)
    if (letter == '|') letter = ' ';
  out << "    *) COMPREPLY=($(compgen -W \"--home --yes --help " << names
      << "\" -- \"$current\")) ;;\n  esac\n}\ncomplete -F _inspector_cli inspector-cli\n";
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
