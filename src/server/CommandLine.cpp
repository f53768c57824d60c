#include "server/CommandLine.h"

#include <pwd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <ctime>
#include <functional>

#include "server/OfficeCommands.h"
#include "server/OpenStorage.h"
#include "server/Serve.h"

namespace inspector::server {
namespace {

constexpr const char* kFooter = R"(Setting an office up:
  inspector-syncd user add ana --office north --data /var/lib/inspector-syncd
  inspector-syncd inspection add number=2026-014 client="Ana Ruiz" \
      address="12 Elm Street" --office north --data /var/lib/inspector-syncd
  inspector-syncd serve --data /var/lib/inspector-syncd --listen 192.168.1.10:7020
Users, inspections and history may be worked on while the server runs. Without a command
it serves.)";

constexpr const char* kEverywhere =
    "Every command takes --data DIR or --config FILE, which say where the data is.";

constexpr const char* kFields =
    R"(Fields have the names of the device's columns, or those of its command line, in any case:
  InspectionNum       number              CityStateZip        citystatezip
  DwellingAddress     address             ClientAgent         agent
  ClientName          client              ListingAgent        listingagent
  ClientAddress       clientaddress       RealEstateCompany   company
  ClientCityStateZip  clientcitystatezip  InspectionDate      date, 2026-05-31 or 5/31/2026
  GeneralInformation  general             InspectionTypeID    type, -1 for none
  DocType             doctype
Every command takes --data DIR or --config FILE, which say where the data is.)";

// What was typed, wherever it stood.
struct Typed {
  std::string data;
  std::string config;
  std::string listen;
  std::string status;
  int maxSessions = 0;
  int maxPerAddress = 0;
  bool logJson = false;
  bool checkConfig = false;

  std::string name;
  std::string office;
  std::string number;
  std::string file;
  std::string period;
  std::vector<std::string> fields;
  int version = 0;
  bool unnumbered = false;
  bool dryRun = false;
  bool json = false;
};

std::string PersonAtTheTerminal() {
  const passwd* const entry = getpwuid(geteuid());
  return entry != nullptr ? entry->pw_name : std::to_string(geteuid());
}

// Adds what was typed to what the file says.
Settings ReadAll(const CLI::App& app, const Typed& typed, std::vector<std::string>& faults) {
  Settings settings;
  if (!typed.config.empty()) ReadSettings(typed.config, settings, faults);
  if (!typed.data.empty()) settings.data = typed.data;
  const auto place = [&faults](const std::string& option, const std::string& text) {
    const auto read = ReadHostAndPort(text);
    if (!read) faults.push_back(option + ": \"" + text + "\" is not HOST:PORT.");
    return read;
  };
  if (!typed.listen.empty())
    if (const auto read = place("--listen", typed.listen)) settings.listen = *read;
  if (!typed.status.empty()) settings.status = place("--status", typed.status);
  if (app.count("--max-sessions") > 0) settings.maxSessions = typed.maxSessions;
  if (app.count("--max-per-address") > 0) settings.maxPerAddress = typed.maxPerAddress;
  if (typed.logJson) settings.logJson = true;
  CheckSettings(settings, faults);
  return settings;
}

using Command = std::function<ExitCode(CommandRun&)>;

class Commands {
public:
  Commands(CLI::App& app, Typed& typed) : m_App(app), m_Typed(typed) {}

  // The command that was chosen; none when it is to serve.
  const Command& Chosen() const { return m_Chosen; }
  // It may be the first of all, where there is no data yet.
  bool ChosenBegins() const { return m_ChosenBegins; }

  void AddAll();

private:
  CLI::App* Add(CLI::App& parent, const char* name, const char* help, Command command) {
    CLI::App* const added = parent.add_subcommand(name, help);
    added->fallthrough();
    added->callback([this, command = std::move(command)] { m_Chosen = command; });
    return added;
  }
  CLI::App& Group(const char* name, const char* help) {
    CLI::App* const group = m_App.add_subcommand(name, help);
    group->fallthrough()->require_subcommand(1);
    return *group;
  }
  void Begins(CLI::App* command) {
    command->parse_complete_callback([this] { m_ChosenBegins = true; });
  }
  void Office(CLI::App* command) {
    command->add_option("--office", m_Typed.office, "The office it belongs to")
        ->required()
        ->type_name("OFFICE");
  }
  void Json(CLI::App* command) { command->add_flag("--json", m_Typed.json, "For programs"); }
  void Fields(CLI::App* command, const char* help) {
    command->add_option("FIELD=VALUE", m_Typed.fields, help);
    command->footer(kFields);
  }
  void AddUsers();
  void AddInspections();
  void AddHistory();

  CLI::App& m_App;
  Typed& m_Typed;
  Command m_Chosen;
  bool m_ChosenBegins = false;
};

void Commands::AddAll() {
  CLI::App* const serve = m_App.add_subcommand("serve", "Serve devices until SIGTERM");
  serve->fallthrough()->footer("All options of the program are options of this command.");
  AddUsers();
  AddInspections();
  AddHistory();
  CLI::App* const backUp =
      Add(m_App, "backup", "Write a whole copy of the data into a new file, also while the server runs",
          [this](CommandRun& run) { return BackUp(run, m_Typed.file); });
  backUp->add_option("FILE", m_Typed.file)->required();
}

void Commands::AddUsers() {
  CLI::App& group = Group("user", "Who may log in: add, remove, passwd, list");
  const auto withName = [this](CLI::App* command) {
    command->add_option("NAME", m_Typed.name, "The name that the device is set to")->required();
    return command;
  };
  CLI::App* const add = withName(
      Add(group, "add", "A new user; the password is asked for, or read from the first line of the input",
          [this](CommandRun& run) { return AddUser(run, m_Typed.name, m_Typed.office); }));
  Office(add);
  Begins(add);
  withName(Add(group, "remove", "The user may not log in any more; what was sent stays",
               [this](CommandRun& run) { return RemoveUser(run, m_Typed.name); }));
  withName(Add(group, "passwd", "Another password, asked for or read from the input",
               [this](CommandRun& run) { return ChangePassword(run, m_Typed.name); }));
  Json(Add(group, "list", "All users with their offices, last logins and failed ones since",
           [](CommandRun& run) { return ListUsers(run); }));
}

void Commands::AddInspections() {
  CLI::App& group = Group("inspection", "The work of an office: add, set, list, show, remove, import");
  CLI::App* const add = Add(group, "add", "A new inspection", [this](CommandRun& run) {
    return AddInspection(run, m_Typed.office, m_Typed.fields);
  });
  CLI::App* const set = Add(group, "set", "Change fields of an inspection", [this](CommandRun& run) {
    return SetInspection(run, m_Typed.office, m_Typed.fields);
  });
  CLI::App* const list = Add(group, "list", "Inspections by date and number", [this](CommandRun& run) {
    return ListInspections(run, m_Typed.office, protocol::PeriodOf(m_Typed.period), m_Typed.fields);
  });
  CLI::App* const show = Add(group, "show", "All fields of an inspection", [this](CommandRun& run) {
    return ShowInspection(run, m_Typed.office, m_Typed.fields);
  });
  CLI::App* const remove =
      Add(group, "remove", "Offer an inspection no more; its history stays",
          [this](CommandRun& run) { return RemoveInspection(run, m_Typed.office, m_Typed.number); });
  CLI::App* const import =
      Add(group, "import", "Add inspections, and change those that are there, from a CSV file",
          [this](CommandRun& run) {
            return ImportInspections(run, m_Typed.office, m_Typed.file, m_Typed.dryRun);
          });
  for (CLI::App* const command : {add, set, list, show, remove, import}) Office(command);
  Fields(add, "Fields of the new inspection, InspectionNum among them");
  Fields(set, "InspectionNum, which says which, and the fields to change");
  Fields(list, "Only those with these values");
  Fields(show, "InspectionNum=NUMBER, or the number alone");
  for (CLI::App* const command : {add, import}) Begins(command);
  for (CLI::App* const command : {list, show}) Json(command);
  list->add_option("--period", m_Typed.period, "Only those that a device gets for it")
      ->check(CLI::IsMember({"today", "week", "all"}));
  remove->add_option("NUMBER", m_Typed.number)->required();
  import
      ->add_option("FILE", m_Typed.file,
                   "The first line names the fields; comma, semicolon or tab between them")
      ->required();
  import->add_flag("--dry-run", m_Typed.dryRun, "Only look whether it could be imported");
  import->footer(std::string("All lines are imported, or none.\n") + kFields);
}

void Commands::AddHistory() {
  CLI::App* const history =
      Add(m_App, "history", "Every version of an inspection: who, when, from where, what",
          [this](CommandRun& run) { return ShowHistory(run, m_Typed.office, m_Typed.number); });
  CLI::App* const restore = Add(
      m_App, "restore", "Make an earlier version of an inspection the present one", [this](CommandRun& run) {
        return Restore(run, m_Typed.office, m_Typed.number, m_Typed.version, m_Typed.unnumbered);
      });
  for (CLI::App* const command : {history, restore}) Office(command);
  history->add_option("NUMBER", m_Typed.number, "Without it: what devices have sent without a number");
  Json(history);
  restore->add_option("NUMBER", m_Typed.number)->required();
  restore->add_option("--version", m_Typed.version, "Which, as history counts")->required()->type_name("N");
  restore->add_flag("--unnumbered", m_Typed.unnumbered, "One that came without a number; it gets this one");
}

}  // namespace

int RunCommandLine(std::vector<std::string> words, std::istream& in, std::ostream& out, std::ostream& err) {
  CLI::App app(
      "The office's end of the synchronisation: devices fetch their inspections here and send them back.",
      "inspector-syncd");
  Typed typed;
  app.footer(kEverywhere);
  app.set_version_flag("--version", INSPECTOR_VERSION);
  app.add_option("--data", typed.data, "The folder where users, inspections and history are kept")
      ->type_name("DIR");
  app.add_option("--config", typed.config, "A configuration file in TOML; options of the command line win")
      ->type_name("FILE");
  app.add_option("--listen", typed.listen, "Where devices connect, 127.0.0.1:7020 unless given")
      ->type_name("HOST:PORT");
  app.add_option("--status", typed.status, "Where the status page is, on this machine; none unless given")
      ->type_name("HOST:PORT");
  app.add_option("--max-sessions", typed.maxSessions, "Devices at once, 2000 unless given")
      ->check(CLI::PositiveNumber);
  app.add_option("--max-per-address", typed.maxPerAddress,
                 "Devices at once from one address, 500 unless given")
      ->check(CLI::PositiveNumber);
  app.add_flag("--log-json", typed.logJson, "Log one JSON object a line");
  app.add_flag("--check-config", typed.checkConfig,
               "Only say whether a server could run with this configuration");
  app.require_subcommand(0, 1);
  Commands commands(app, typed);
  commands.AddAll();
  app.footer(kFooter);

  std::reverse(words.begin(), words.end());  // as CLI11 takes them
  try {
    app.parse(words);
  } catch (const CLI::ParseError& fault) {
    return app.exit(fault, out, err) == 0 ? 0 : static_cast<int>(ExitCode::Usage);
  }
  std::vector<std::string> faults;
  const Settings settings = ReadAll(app, typed, faults);
  for (const std::string& fault : faults) err << fault << '\n';
  if (!faults.empty()) return static_cast<int>(ExitCode::Usage);
  if (typed.checkConfig) {
    out << "The configuration is sound.\n";
    return 0;
  }
  // The server and the commands that look at what it does mean the same days.
  if (!settings.timeZone.empty()) {
    setenv("TZ", settings.timeZone.c_str(), 1);
    tzset();
  }
  if (!PreparePasswords()) {
    err << "The system has no source of random numbers.\n";
    return static_cast<int>(ExitCode::Failed);
  }
  if (!commands.Chosen()) return static_cast<int>(Serve(settings, err));

  std::unique_ptr<Storage> storage;
  if (!commands.ChosenBegins() && !HasStorage(settings)) {
    err << "There is no data in " << settings.data.string() << ".\n";
    return static_cast<int>(ExitCode::Failed);
  }
  if (const Fault fault = OpenStorage(settings, storage); !fault.empty()) {
    err << fault << '\n';
    return static_cast<int>(ExitCode::Failed);
  }
  device::SystemClock clock;
  CommandRun run{*storage, clock, in, out, err, PersonAtTheTerminal(), typed.json, settings.cost};
  return static_cast<int>(commands.Chosen()(run));
}

}  // namespace inspector::server
