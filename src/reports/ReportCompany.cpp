#include "reports/ReportCompany.h"

#include <algorithm>

#include "data/StartUp.h"
#include "device/OwnerRecord.h"

namespace inspector::reports {
namespace {

device::OwnerRecord ReadOwner(const device::Machine& machine) {
  const auto block = machine.registry.ReadBinary(Text(data::kOwnerKey), u"Owner");
  if (block) return device::OwnerRecord::Decode(*block);
  if (!machine.registry.LastError().empty()) machine.faults.Report(machine.registry.LastError());
  return {};
}

// Before the first ";", and behind it.
std::array<TextView, 2> Halves(TextView text) {
  const std::size_t end = std::min(text.find(u';'), text.size());
  return {text.substr(0, end), text.substr(std::min(end + 1, text.size()))};
}

Text Trimmed(TextView text) {
  while (!text.empty() && text.front() <= u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() <= u' ') text.remove_suffix(1);
  return Text(text);
}

}  // namespace

std::array<Text, 3> ReportCompany::Lines() const {
  std::array<Text, 3> lines = {name, {}, {}};
  for (const Text& part : address) {
    if (part.empty()) continue;
    if (lines[1].empty()) {
      lines[1] = part;
    } else {
      lines[2] += (lines[2].empty() ? u"" : u", ") + part;
    }
  }
  return lines;
}

Text ReportCompany::InspectorName() const {
  return Trimmed(Halves(inspector)[0]);
}

ReportCompany ReadCompany(data::Workspace& workspace) {
  const device::OwnerRecord owner = ReadOwner(workspace.GetMachine());
  const Text& entry = workspace.Options().m_InspectorEntry;
  const auto [phone, fax] = Halves(owner.phone);
  return {owner.company, device::SplitAddress(owner.address), Text(phone), Text(fax),
          entry.empty() ? owner.name : entry};
}

}  // namespace inspector::reports
