#include "editing/VisitScript.h"

#include <toml++/toml.h>

#include <algorithm>

#include "data/FieldTable.h"
#include "data/OptionFields.h"
#include "data/StartUp.h"
#include "device/Format.h"
#include "device/OwnerRecord.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "editing/Defaults.h"
#include "editing/StepEditing.h"
#include "inspection/HeaderFields.h"

namespace inspector::editing {
namespace {

using device::Format;
using device::FromUtf8;

constexpr std::uint64_t kLargestScript = 4 << 20;

Text TextOf(const toml::table& table, std::string_view key) {
  return FromUtf8(table[key].value_or(std::string_view()));
}

// Calls `visit` for each table of an array of tables; stops at the first that returns false.
template <typename Visit>
bool ForEachTable(const toml::table& parent, std::string_view key, Visit visit) {
  const toml::array* rows = parent[key].as_array();
  if (!rows) return true;
  for (const toml::node& node : *rows)
    if (const toml::table* row = node.as_table(); row && !visit(*row)) return false;
  return true;
}

template <typename Visit>
bool ForEachText(const toml::table& parent, std::string_view key, Visit visit) {
  const toml::array* texts = parent[key].as_array();
  if (!texts) return true;
  for (const toml::node& node : *texts)
    if (const auto text = node.value<std::string_view>(); text && !visit(FromUtf8(*text))) return false;
  return true;
}

bool IsUntouched(const data::InspectionTable& row) {
  const auto fields = inspection::HeaderFields();
  return row.m_InspectionTypeID == -1 && row.m_DocType.empty() &&
         std::all_of(fields.begin(), fields.end(), [&row](const inspection::HeaderField& field) {
           return !field.text || (row.*field.text).empty();
         });
}

}  // namespace

bool IsUnused(data::Databases& databases) {
  data::InspectionTable rows(databases);
  const data::ReadScope reading(databases.Inspection());
  rows.Open();
  if (rows.Failed()) return false;
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (!rows.GetRecord(n) || !IsUntouched(rows)) return false;
  return true;
}

struct VisitScript::Content {
  toml::table table;
  std::filesystem::path folder;

  bool PlayField(data::Databases& databases, std::int32_t categoryID, const toml::table& field,
                 Text& problem) const;
  bool PlayStep(data::Workspace& workspace, std::int32_t categoryID, const toml::table& step,
                Text& problem) const;
  bool PlayCategory(inspection::CInspectorDoc& document, const toml::table& category, Text& problem) const;
  bool PlayHeader(inspection::CInspectorDoc& document, Text& problem) const;
  std::optional<std::int32_t> Play(inspection::CInspectorDoc& document, Text& problem) const;
};

VisitScript::VisitScript(std::unique_ptr<Content> content) : m_Content(std::move(content)) {}
VisitScript::~VisitScript() = default;

std::unique_ptr<VisitScript> VisitScript::Read(device::Files& files, const std::filesystem::path& file,
                                               Text& problem) {
  const std::optional<std::string> text = device::ReadWhole(files, file, kLargestScript);
  if (!text) {
    problem = Format(u"The visit %s cannot be read.", FromUtf8(file.string()));
    return nullptr;
  }
  try {
    auto content = std::make_unique<Content>();
    content->table = toml::parse(*text, file.string());
    content->folder = file.parent_path();
    return std::unique_ptr<VisitScript>(new VisitScript(std::move(content)));
  } catch (const toml::parse_error& error) {
    problem = Format(u"The visit %s cannot be understood: %s, line %d.", FromUtf8(file.string()),
                     FromUtf8(error.description()), error.source().begin.line);
    return nullptr;
  }
}

Text VisitScript::DocumentNumber() const {
  const toml::table* header = m_Content->table["header"].as_table();
  return header ? TextOf(*header, "number") : Text();
}

bool VisitScript::CopyFiles(const device::Machine& machine, Text& problem) const {
  return ForEachTable(m_Content->table, "file", [&](const toml::table& file) {
    const std::filesystem::path source = m_Content->folder / file["from"].value_or(std::string());
    const std::filesystem::path target = machine.paths.Resolve(TextOf(file, "to"));
    if (machine.files.Exists(target)) return true;
    const auto input = machine.files.OpenForReading(source);
    const auto output = machine.files.Create(target);
    std::vector<char> block(1 << 16);
    std::int64_t count = 0;
    bool written = input != nullptr;
    while (written && (count = input->Read(block.data(), block.size())) > 0)
      written = output->Write(std::string_view(block.data(), static_cast<std::size_t>(count)));
    if (written && count == 0 && output->Commit()) return true;
    problem = Format(u"%s cannot be copied to %s. %s", FromUtf8(source.string()), FromUtf8(target.string()),
                     FromUtf8(output->Error()));
    return false;
  });
}

bool VisitScript::SetUpDevice(data::Workspace& workspace, Text& problem) const {
  const toml::table* owner = m_Content->table["owner"].as_table();
  if (owner && !workspace.GetMachine().registry.ReadBinary(Text(data::kOwnerKey), u"Owner")) {
    const device::OwnerRecord record{TextOf(*owner, "name"), TextOf(*owner, "company"),
                                     TextOf(*owner, "address"), TextOf(*owner, "phone")};
    device::Registry& registry = workspace.GetMachine().registry;
    if (!registry.WriteBinary(Text(data::kOwnerKey), u"Owner", record.Encode())) {
      problem = registry.LastError();
      return false;
    }
  }
  const toml::table* options = m_Content->table["options"].as_table();
  data::OptionsTable& row = workspace.Options();
  if (!options || !row.m_InspectorEntry.empty()) return true;
  for (const auto& [key, node] : *options) {
    const Text name = FromUtf8(key.str());
    Text value = FromUtf8(node.value_or(std::string()));
    if (const auto flag = node.value_exact<bool>())
      value = *flag ? u"TRUE" : u"FALSE";
    else if (const auto number = node.value_exact<std::int64_t>())
      value = device::Decimal(static_cast<int>(*number));
    if (data::SetOption(row, name, value) != data::OptionSet::Done) {
      problem = Format(u"The visit sets an option that cannot be set: %s", name);
      return false;
    }
  }
  return row.Write();
}

bool VisitScript::Content::PlayHeader(inspection::CInspectorDoc& document, Text& problem) const {
  data::InspectionTable& row = document.Inspection();
  const toml::table* header = table["header"].as_table();
  if (!header) return true;
  for (const auto& [key, node] : *header) {
    const inspection::HeaderField* field = inspection::FindHeaderField(FromUtf8(key.str()));
    if (field && inspection::SetHeaderField(row, *field, FromUtf8(node.value_or(std::string())))) continue;
    problem = Format(u"The visit has a header field that cannot be set: %s", FromUtf8(key.str()));
    return false;
  }
  return true;
}

bool VisitScript::Content::PlayField(data::Databases& databases, std::int32_t categoryID,
                                     const toml::table& entry, Text& problem) const {
  const Text label = TextOf(entry, "label");
  data::FieldTable field(databases);
  field.OpenSQL(
      Format(u"SELECT * FROM Field WHERE (CategoryID = %d) AND (FieldLabel = \"%s\")", categoryID, label));
  if (field.RecordCount() == 0 || !field.GetRecord(0)) {
    problem = Format(u"The visit fills in a field that the form does not have: %s", label);
    return false;
  }
  field.m_AssignedValue = TextOf(entry, "value");
  return field.Write();
}

bool VisitScript::Content::PlayStep(data::Workspace& workspace, std::int32_t categoryID,
                                    const toml::table& entry, Text& problem) const {
  const Text number = TextOf(entry, "number");
  data::StepTable step(workspace.GetDatabases());
  step.OpenSQL(
      Format(u"SELECT * FROM Step WHERE (CategoryID = %d) AND (StepNumber = \"%s\")", categoryID, number));
  if (step.RecordCount() == 0 || !step.GetRecord(0)) {
    problem = Format(u"The visit has a step that the category does not have: %s", number);
    return false;
  }
  StepEditing editing(workspace);
  const auto done = [&](StepEditing::Result result, const Text& what) {
    if (result != StepEditing::Result::Done) problem = Format(u"Step %s does not take: %s", number, what);
    return result == StepEditing::Result::Done;
  };
  if (const auto rating = entry["rating"].value<std::string_view>())
    if (!done(editing.Rate(step.m_StepID, FromUtf8(*rating)), FromUtf8(*rating))) return false;
  return ForEachText(
             entry, "materials",
             [&](const Text& text) { return done(editing.AddMaterial(step.m_StepID, text), text); }) &&
         ForEachText(entry, "comments", [&](const Text& text) {
           return done(editing.AppendComment(step.m_StepID, text), text);
         });
}

bool VisitScript::Content::PlayCategory(inspection::CInspectorDoc& document, const toml::table& entry,
                                        Text& problem) const {
  data::Workspace& workspace = document.GetWorkspace();
  data::Databases& databases = workspace.GetDatabases();
  const Text title = TextOf(entry, "title");
  data::CategoryTable category(databases);
  category.OpenSQL(Format(u"SELECT * FROM Category WHERE (InspectionID = %d) AND (CategoryTitle = \"%s\")",
                          document.Inspection().m_InspectionID, title));
  if (category.RecordCount() == 0 || !category.GetRecord(0)) {
    problem = Format(u"The visit has a category that its type does not have: %s", title);
    return false;
  }
  const std::int32_t categoryID = category.m_CategoryID;
  if (!OpenCategory(databases, category)) return false;
  if (!ForEachTable(
          entry, "field",
          [&](const toml::table& each) { return PlayField(databases, categoryID, each, problem); }) ||
      !ForEachTable(entry, "step",
                    [&](const toml::table& each) { return PlayStep(workspace, categoryID, each, problem); }))
    return false;
  const std::optional<bool> complete = IsComplete(databases, categoryID);
  if (!complete || !category.GetRecord(0)) return false;
  category.m_CompleteFlag = *complete ? -1 : 0;
  category.m_NotPresentFlag = entry["not_present"].value_or(false) ? -1 : 0;
  return category.Write();
}

std::optional<std::int32_t> VisitScript::Play(inspection::CInspectorDoc& document, Text& problem) const {
  const std::optional<std::int32_t> key = m_Content->Play(document, problem);
  // After the rollback: the document may hold an inspection that is not there.
  if (!key) document.Reopen();
  return key;
}

std::optional<std::int32_t> VisitScript::Content::Play(inspection::CInspectorDoc& document,
                                                       Text& problem) const {
  data::Databases& databases = document.GetWorkspace().GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return std::nullopt;

  data::InspectionTable& row = document.Inspection();
  const bool reuse = row.RecordCount() == 1 && document.SetCurrentInspection(0) && IsUntouched(row);
  if (!reuse && !document.CreateInspection()) return std::nullopt;
  const std::int32_t key = row.m_InspectionID;

  const auto play = [&] {
    if (!PlayHeader(document, problem)) return false;
    inspection::DocTypeState state{key, row.m_InspectionTypeID, row.m_DocType, row.m_GeneralInformation};
    if (!inspection::ApplyDocType(databases, state, TextOf(table, "type"))) return false;
    row.m_InspectionTypeID = state.inspectionTypeID;
    row.m_DocType = state.docType;
    row.m_GeneralInformation = state.generalInformation;
    if (!row.Write()) return false;
    const bool visited = ForEachTable(table, "category", [&](const toml::table& category) {
      return PlayCategory(document, category, problem);
    });
    // Defaults come last: they leave every step alone that has been rated by then.
    return visited && (!table["defaults"].value_or(false) ||
                       ApplyDefaultsSilently(databases, key) == inspection::RunResult::Done);
  };
  const bool played = play() && transaction.Commit();
  document.LoadCategories();
  return played ? std::optional(key) : std::nullopt;
}

}  // namespace inspector::editing
