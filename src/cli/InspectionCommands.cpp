#include "cli/CommandGroups.h"
#include "cli/Listing.h"
#include "data/InspectionTypeTable.h"
#include "device/Format.h"
#include "editing/Defaults.h"
#include "inspection/HeaderFields.h"
#include "inspection/InspectionOverview.h"

namespace inspector::cli {
namespace {

using device::Format;
using device::Text;

const Argument kInspection{"ID", "the inspection's key, as \"list\" shows it", Argument::Kind::Number, false};

struct HeaderValue {
  const inspection::HeaderField* field;
  Text value;
};

// The fields as typed, checked before anything is written. Nothing when one is wrong: that has been said.
std::optional<std::vector<HeaderValue>> ParseHeader(Session& session, const std::vector<std::string>& typed) {
  std::vector<HeaderValue> values;
  data::InspectionTable trial(session.Workspace().GetDatabases());
  for (const std::string& each : typed) {
    const Assignment assignment = ParseAssignment(each);
    const inspection::HeaderField* field = inspection::FindHeaderField(assignment.name);
    if (!field || !assignment.value) {
      session.Fail(Format(u"%s is no FIELD=VALUE. \"fields\" lists the fields.", device::FromUtf8(each)));
      return std::nullopt;
    }
    if (!inspection::SetHeaderField(trial, *field, *assignment.value)) {
      session.Fail(Format(u"%s is no date. Write it as 2026-05-31 14:05.", *assignment.value));
      return std::nullopt;
    }
    values.push_back({field, *assignment.value});
  }
  return values;
}

void SetHeader(data::InspectionTable& inspection, const std::vector<HeaderValue>& values) {
  for (const HeaderValue& each : values) inspection::SetHeaderField(inspection, *each.field, each.value);
}

bool KnowsType(Session& session, const Text& type) {
  if (inspection::HasInspectionType(session.Workspace().GetDatabases(), type)) return true;
  if (type.empty())
    return session.Fail(u"An empty name is no inspection type. \"types\" shows those there are.");
  return session.Fail(Format(u"There is no inspection type %s. \"types\" shows those there are.", type));
}

ExitCode RunTypes(Session& session, const Input& input) {
  Listing listing({"id", "name", "layout"});
  data::InspectionTypeTable types(session.Workspace().GetDatabases());
  types.Open();
  for (int n = 0; n < types.RecordCount(); ++n)
    if (types.GetRecord(n)) listing.Add({types.m_ID, types.m_InspectionType, types.m_Layout});
  listing.Print(session.Out(), input.Has("--json"));
  return ExitCode::Done;
}

ExitCode RunList(Session& session, const Input& input) {
  Listing listing({"id", "number", "client", "address", "type"});
  data::Databases& databases = session.Workspace().GetDatabases();
  const data::ReadScope reading(databases.Inspection());
  data::InspectionTable rows(databases);
  rows.Open();
  for (int n = 0; n < rows.RecordCount(); ++n) {
    if (!rows.GetRecord(n)) continue;
    listing.Add({rows.m_InspectionID, rows.m_InspectionNum, rows.m_ClientName, rows.m_DwellingAddress,
                 rows.m_DocType});
  }
  listing.Print(session.Out(), input.Has("--json"));
  return ExitCode::Done;
}

ExitCode RunFields(Session& session, const Input&) {
  for (const inspection::HeaderField& field : inspection::HeaderFields()) {
    const std::string name = device::ToUtf8(field.name);
    session.Out() << name << std::string(20 - name.size(), ' ') << device::ToUtf8(field.caption) << "\n";
  }
  return ExitCode::Done;
}

ExitCode RunNew(Session& session, const Input& input) {
  const auto values = ParseHeader(session, input.repeated);
  if (!values) return ExitCode::Usage;
  const auto typed = input.options.find("--type");
  const Text type = typed == input.options.end() ? Text() : device::FromUtf8(typed->second);
  if (typed != input.options.end() && !KnowsType(session, type)) return ExitCode::Failed;
  const auto key = session.Document().CreateInspection(
      [&](data::InspectionTable& inspection) { SetHeader(inspection, *values); }, type);
  if (!key) return ExitCode::Failed;
  session.Out() << *key << "\n";
  return ExitCode::Done;
}

ExitCode RunSet(Session& session, const Input& input) {
  const auto values = ParseHeader(session, input.repeated);
  if (!values) return ExitCode::Usage;
  if (values->empty()) {
    session.Fail(u"There is nothing to set. Name a field as FIELD=VALUE; \"fields\" lists them.");
    return ExitCode::Usage;
  }
  if (!session.SelectInspection(input.Number(0))) return ExitCode::Failed;
  SetHeader(session.Document().Inspection(), *values);
  return session.Document().SaveHeader() ? ExitCode::Done : ExitCode::Failed;
}

ExitCode RunApplyType(Session& session, const Input& input) {
  const Text type = input.Argument(1);
  if (!session.SelectInspection(input.Number(0))) return ExitCode::Failed;
  inspection::CInspectorDoc& document = session.Document();
  // The library may have lost the type that the inspection has; asking for it again changes nothing.
  if ((type.empty() || type != document.Inspection().m_DocType) && !KnowsType(session, type))
    return ExitCode::Failed;
  switch (inspection::ConfirmDocTypeChange(document, type)) {
    case inspection::DocTypeChoice::Same:
      return ExitCode::Done;
    case inspection::DocTypeChoice::Refused:
      return ExitCode::Failed;
    case inspection::DocTypeChoice::Change:
      break;
  }
  document.ChangeDocType(type);
  return document.FinishDocTypeChange() ? ExitCode::Done : ExitCode::Failed;
}

ExitCode RunMakeCategories(Session& session, const Input& input) {
  return session.SelectInspection(input.Number(0)) && inspection::MakeLackingCategories(session.Document())
             ? ExitCode::Done
             : ExitCode::Failed;
}

ExitCode RunDefaults(Session& session, const Input& input) {
  if (!session.SelectInspection(input.Number(0))) return ExitCode::Failed;
  return editing::ApplyDefaults(session.Document()) == editing::DefaultsResult::Done ? ExitCode::Done
                                                                                     : ExitCode::Failed;
}

ExitCode RunDelete(Session& session, const Input& input) {
  if (!session.SelectInspection(input.Number(0))) return ExitCode::Failed;
  inspection::InspectionOverview overview(session.Document());
  overview.Refill();
  return overview.OnDelete(overview.RowOf(input.Number(0)), 1) ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace

std::vector<Command> InspectionCommands() {
  const Argument fields{"FIELD=VALUE", "header fields; \"fields\" lists them", Argument::Kind::Text, true};
  return {
      {"types", "list the inspection types", {}, {JsonOption()}, "", RunTypes},
      {"list", "list the inspections", {}, {JsonOption()}, "", RunList},
      {"fields", "list the header fields that new and set take", {}, {}, "", RunFields, false},
      {"new",
       "create an inspection and print its key",
       {fields},
       {{"--type", "NAME", "the inspection type", false}},
       "Prints nothing but the key on standard output and never asks.",
       RunNew},
      {"set",
       "set header fields of an inspection",
       {kInspection, AtLeastOne(fields)},
       {},
       "A date is written as 2026-05-31 14:05. An empty value clears a field.",
       RunSet},
      {"apply-type",
       "choose an inspection's type; replaces its categories and steps",
       {kInspection, {"NAME", "the type's name", Argument::Kind::Text, false}},
       {},
       "Asks when the inspection has a type already. Choosing the same type changes nothing.",
       RunApplyType},
      {"make-categories",
       "make the categories of an inspection that has a type but none yet",
       {kInspection},
       {},
       "For one that came from the office's server, which sends the type but no categories.",
       RunMakeCategories},
      {"defaults",
       "give every step without a rating its default material and rating",
       {kInspection},
       {},
       "Asks first.",
       RunDefaults},
      {"delete",
       "delete an inspection with its categories and steps",
       {kInspection},
       {},
       "Asks twice.",
       RunDelete},
  };
}

}  // namespace inspector::cli
