#include "cli/CommandGroups.h"
#include "data/OptionFields.h"
#include "device/Format.h"
#include "device/OwnerRecord.h"

namespace inspector::cli {
namespace {

using device::EqualIgnoringCase;
using device::Format;
using device::Text;
using device::TextView;
using device::ToUtf8;

constexpr TextView kOwnerValue = u"Owner";
constexpr TextView kPassword = u"Pswrd";

void Print(Session& session, TextView name, const Text& value) {
  session.Out() << ToUtf8(name) << "=" << ToUtf8(value) << "\n";
}

ExitCode RunOptions(Session& session, const Input& input) {
  data::OptionsTable& options = session.Workspace().Options();
  if (input.repeated.empty()) {
    for (const Text& name : data::OptionNames()) {
      const Text value = *data::OptionText(options, name);
      Print(session, name, name == kPassword && !value.empty() ? Text(u"(set)") : value);
    }
    return ExitCode::Done;
  }
  bool changed = false;
  std::vector<Text> asked;
  for (const std::string& typed : input.repeated) {
    const Assignment assignment = ParseAssignment(typed);
    if (!assignment.value) {
      if (!data::OptionText(options, assignment.name)) {
        session.Fail(Format(u"There is no option %s. \"options\" lists them.", assignment.name));
        return ExitCode::Usage;
      }
      asked.push_back(assignment.name);
      continue;
    }
    switch (data::SetOption(options, assignment.name, *assignment.value)) {
      case data::OptionSet::UnknownName:
        session.Fail(Format(u"There is no option %s. \"options\" lists them.", assignment.name));
        return ExitCode::Usage;
      case data::OptionSet::BadValue:
        session.Fail(Format(u"%s does not take %s.", assignment.name, *assignment.value));
        return ExitCode::Usage;
      case data::OptionSet::Repaired:
        session.Note(Format(u"%s does not take %s; it was set to %s.", assignment.name, *assignment.value,
                            *data::OptionText(options, assignment.name)));
        break;
      case data::OptionSet::Done:
        break;
    }
    changed = true;
  }
  if (changed) {
    data::Transaction transaction(session.Workspace().TemplateConnection());
    if (!transaction.IsOpen() || !options.Write() || !transaction.Commit()) return ExitCode::Failed;
  }
  for (const Text& name : asked) Print(session, name, *data::OptionText(options, name));
  return ExitCode::Done;
}

struct OwnerField {
  TextView name;
  Text device::OwnerRecord::*text;
  std::size_t limit;  // 16-bit units
};

constexpr OwnerField kOwnerFields[] = {
    {u"name", &device::OwnerRecord::name, 35},
    {u"company", &device::OwnerRecord::company, 35},
    {u"address", &device::OwnerRecord::address, 185},
    {u"phone", &device::OwnerRecord::phone, 125},
};

// The record's lines end with carriage return and line feed; a terminal gives a line feed alone.
Text WithDeviceLineEnds(Text text) {
  return device::ReplaceAll(device::ReplaceAll(std::move(text), u"\r\n", u"\n"), u"\n", u"\r\n");
}

ExitCode RunOwner(Session& session, const Input& input) {
  device::Registry& registry = session.GetMachine().registry;
  device::OwnerRecord owner;
  if (const auto block = registry.ReadBinary(Text(data::kOwnerKey), Text(kOwnerValue)))
    owner = device::OwnerRecord::Decode(*block);
  bool changed = false;
  std::vector<const OwnerField*> asked;
  for (const std::string& typed : input.repeated) {
    const Assignment assignment = ParseAssignment(typed);
    const OwnerField* found = nullptr;
    for (const OwnerField& field : kOwnerFields)
      if (EqualIgnoringCase(field.name, assignment.name)) found = &field;
    if (!found) {
      session.Fail(
          Format(u"The owner has no %s. There are: name, company, address, phone.", assignment.name));
      return ExitCode::Usage;
    }
    if (!assignment.value) {
      asked.push_back(found);
      continue;
    }
    const Text value = WithDeviceLineEnds(device::StripLeadingControls(*assignment.value));
    if (value.size() > found->limit) {
      session.Fail(Format(u"The owner's %s takes at most %d characters.", found->name, found->limit));
      return ExitCode::Failed;
    }
    owner.*found->text = value;
    changed = true;
  }
  if (changed && !registry.WriteBinary(Text(data::kOwnerKey), Text(kOwnerValue), owner.Encode())) {
    session.Fail(registry.LastError());
    return ExitCode::Failed;
  }
  if (input.repeated.empty())
    for (const OwnerField& field : kOwnerFields) asked.push_back(&field);
  for (const OwnerField* field : asked) Print(session, field->name, owner.*field->text);
  return ExitCode::Done;
}

}  // namespace

std::vector<Command> SettingCommands() {
  const Argument settings{"NAME[=VALUE]", "what to read or set; all are shown without any",
                          Argument::Kind::Text, true};
  return {
      {"options",
       "read and set options",
       {settings},
       {},
       "Yes/no options take and show TRUE or FALSE. docs/data-model.md says what each is for.",
       RunOptions},
      {"owner",
       "read and set the device owner: name, company, address, phone",
       {settings},
       {},
       "The address may have several lines; the phone is \"phone;fax\".",
       RunOwner},
  };
}

}  // namespace inspector::cli
