#include "exchange/ServerSettings.h"

#include <algorithm>

#include "device/CodePage.h"
#include "device/Format.h"

namespace inspector::exchange {
bool IsServerPort(const Text& typed) {
  const bool isNumber = !typed.empty() && std::all_of(typed.begin(), typed.end(), [](char16_t unit) {
    return unit >= u'0' && unit <= u'9';
  });
  const int port = device::LeadingInteger(typed);
  return isNumber && port >= kLowestPort && port <= kHighestPort;
}

ServerSettings ReadServerSettings(data::Workspace& workspace) {
  const data::OptionsTable& options = workspace.Options();
  return {options.m_IPAddress, device::Decimal(options.m_Port), options.m_UserName, options.m_Pswrd};
}

Text WhyNotSent(TextView userName, TextView password) {
  for (const auto& [value, what] : {std::pair{userName, TextView(u"user name")}, {password, u"password"}}) {
    const bool ends = std::any_of(value.begin(), value.end(), [](char16_t unit) { return unit < u' '; });
    if (ends || !device::FitsCodePage(Text(value)))
      return device::Format(
          u"The %s has a character that the connection to the server has no room for. Ask the office for "
          u"another one.",
          what);
  }
  return {};
}

Text WhyNot(const ServerSettings& settings) {
  if (settings.address.size() > static_cast<std::size_t>(kMostAddressLetters))
    return device::Format(u"The address of the server takes at most %d characters.", kMostAddressLetters);
  if (settings.password.size() > static_cast<std::size_t>(kMostPasswordLetters))
    return device::Format(u"The password takes at most %d characters.", kMostPasswordLetters);
  if (!IsServerPort(settings.port))
    return device::Format(u"The port is a number from %d to %d.", kLowestPort, kHighestPort);
  return WhyNotSent(settings.userName, settings.password);
}

bool WriteServerSettings(data::Workspace& workspace, const ServerSettings& settings) {
  data::OptionsTable& options = workspace.Options();
  options.m_IPAddress = settings.address;
  options.m_Port = device::LeadingInteger(settings.port);
  options.m_UserName = settings.userName;
  options.m_Pswrd = settings.password;
  if (options.Write()) return true;
  workspace.ForgetOptions();
  return false;
}

}  // namespace inspector::exchange
