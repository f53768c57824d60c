
#include "cli/CommandGroups.h"
#include "cli/TerminalText.h"
#include "device/Format.h"
#include "exchange/ServerSettings.h"
#include "exchange/SyncList.h"
#include "exchange/SyncSession.h"

namespace inspector::cli {
namespace {

using device::Text;

constexpr const char* kNone = "none";

// "1000,1003": every part is a key. Nothing when one is none.
std::optional<std::vector<std::int32_t>> ParseKeys(const std::string& typed) {
  std::vector<std::int32_t> keys;
  for (const Text& part : device::Split(device::FromUtf8(typed), u',')) {
    const std::optional<std::int32_t> key = ParseNumber(device::ToUtf8(part));
    if (!key) return std::nullopt;
    keys.push_back(*key);
  }
  return keys;
}

ExitCode RunSync(Session& session, const Input& input) {
  exchange::SyncRequest request;
  const auto receive = input.options.find("--receive");
  const std::string period = receive == input.options.end() ? "today" : receive->second;
  request.receive = protocol::PeriodOf(period);
  if (!request.receive && period != kNone) {
    session.Fail(
        device::Phrase(u"\"%s\" is no period. --receive takes \"today\", \"week\", \"all\" or \"none\".",
                       device::FromUtf8(period)));
    return ExitCode::Usage;
  }
  if (const auto send = input.options.find("--send"); send != input.options.end()) {
    const auto keys = ParseKeys(send->second);
    if (!keys) {
      session.Fail(
          device::Phrase(u"\"%s\" is no list of keys. --send takes keys as \"list\" shows them, with a "
                         u"comma between two of them.",
                         device::FromUtf8(send->second)));
      return ExitCode::Usage;
    }
    request.send = exchange::InOrderOfList(session.Workspace().GetDatabases(), *keys);
  }
  if (!exchange::SyncSession::HasServer(session.Workspace().Options())) {
    session.Fail(
        u"The options name no server yet. Set IPAddress, Port, UserName and Pswrd with \"options "
        u"NAME=VALUE\".");
    return ExitCode::Failed;
  }
  const data::OptionsTable& options = session.Workspace().Options();
  if (const Text problem = exchange::WhyNotSent(options.m_UserName, options.m_Pswrd); !problem.empty()) {
    session.Fail(problem);
    return ExitCode::Failed;
  }
  exchange::SyncSession sync(session.Workspace(), std::move(request));
  sync.Run();
  session.Out() << device::ToUtf8(ForTerminal(Described(sync.Report()))) << "\n";
  return sync.Report().IsWhole() ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace

std::vector<Command> SyncCommands() {
  return {
      {"sync",
       "exchange headers of inspections with the office's server",
       {},
       {{"--receive",
         "PERIOD",
         "which inspections to receive: today, week, all or none (default: today)",
         false,
         {"today", "week", "all", "none"}},
        {"--send", "ID,ID,...",
         "the keys of the inspections to send, as \"list\" shows them; each goes once, in that order",
         false}},
       "The server, the user name and the password are those of the options IPAddress, Port, UserName and "
       "Pswrd. Only headers travel: no categories, steps or pictures. An inspection whose number this device "
       "knows is updated, another one is added. What was received, sent and left out is printed; the exit "
       "code "
       "is 1 when that is not everything.",
       RunSync}};
}

}  // namespace inspector::cli
