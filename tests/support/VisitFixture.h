// A tablet with a small library of the test's own, and the visits made with it.
#pragma once

#include "data/StepTable.h"
#include "inspection/InspectorDoc.h"
#include "support/Shell.h"
#include "support/StartedMachine.h"

namespace inspector::tests {

// As a value of a statement.
inline std::string Quoted(const Text& text) {
  return "'" + ToUtf8(device::ReplaceAll(text, u"'", u"''")) + "'";
}

// What a test adds to the small library of a visit. Keys follow the highest there is.
struct LibraryAdditions {
  data::Databases& databases;

  void AddMaterial(int step, const Text& material) {
    Add("MaterialTemplate (StepID, Material, MaterialOrder, ID)",
        std::to_string(step) + ", " + Quoted(material) + ", count(*) + 1");
  }
  // The new comment's key.
  std::int32_t AddCommentToStep(int step, const Text& comment, const Text& group = u"") {
    Add("Comments (Comments, GroupName, ID)", Quoted(comment) + ", " + Quoted(group));
    const std::string key = Shell(databases.Template().File()).Ask("SELECT max(ID) FROM Comments");
    const std::string link = std::to_string(step) + ", " + key;
    Run("INSERT INTO StepComment VALUES (" + link + ", replace('" + link + "', ', ', '-'))");
    return std::stoi(key);
  }
  void AddPicker(const Text& list, const Text& choice) {
    Add("Pickers (PickerName, PickerChoice, ID)", Quoted(list) + ", " + Quoted(choice));
  }
  void AddShortcut(const Text& shortCut, const Text& expanded) {
    Add("ExpandedText (ShortCut, Expanded, ID)", Quoted(shortCut) + ", " + Quoted(expanded));
  }

private:
  // `table` with its columns, the key last; the rows have no gaps in a test.
  void Add(const std::string& table, const std::string& values) {
    const std::string name = table.substr(0, table.find(' '));
    Run("INSERT INTO " + table + " SELECT " + values + ", count(*) + 1 FROM " + name);
  }
  void Run(const std::string& sql) { EXPECT_TRUE(databases.Template().ExecuteNative(sql)) << sql; }
};

// Two fresh databases in a temporary folder, started as the application starts. Its library:
//
//   "House"   Roof (20)      20.1 Shingles   materials Asphalt (default, two comments), Wood, Wood Siding,
//   Other:
//                            20.2 Gutters    "Roof-Drainage*", default material Copper without comments
//                            20.3 Notes      no rating type
//             Cellar (9)     9.1 Sump        rating type without a default
//             Safety (30)    30.1 Alarms     excluded from the defaults
//             Checklist (99) a form with two fields
//             Attic (15)     no steps
//   "Condo"   Kitchen (70)   70.1 Sink
//
// "Condition" offers Good (default), Poor (bold, red, summary, prompts) and Good "as new"; "Presence" offers
// Yes and No without a default. House has the default comments "[*Scope]Seen from the ground." and
// "[*Age]Built in 1968."; its category Roof has "[*Roof]Walked on.".
class VisitDevice : StartedMachine {
public:
  VisitDevice();
  ~VisitDevice();

  // Closes everything and lets go of the locks; Open starts again on the same files.
  void Close();
  void Open();

  data::Workspace& GetWorkspace() { return *m_Workspace; }
  data::Databases& Databases() { return m_Workspace->GetDatabases(); }
  inspection::CInspectorDoc& Document() { return *m_Document; }
  ScriptedPrompts& Prompts() { return m_Prompts; }
  device::FaultLog& Faults() { return m_Faults; }
  FaultyFiles& Disk() { return m_Files; }
  const std::filesystem::path& Root() const { return m_Folder.Path(); }
  // A file below the root.
  void Put(const std::filesystem::path& name, std::string_view content = "") const {
    m_Folder.Put(name, content);
  }

  // A new inspection of that type, current in the document, with these categories opened.
  std::int32_t Visit(const Text& type, const std::vector<Text>& opened = {});
  // The key of a category of the current inspection, with its steps or fields created.
  std::int32_t OpenCategory(const Text& title);
  // The key of the step with this number in the current inspection; its category must have been opened.
  std::int32_t StepKey(const Text& number);
  // "number|title|result|materials|comments" of a step, as stored.
  Text Finding(std::int32_t stepID);

  // Changes columns of a stored step as another program could: "Comments = 'Loose.', InspectResult = ''".
  void Enter(const Text& stepNumber, const std::string& columns) {
    RunInVisits("UPDATE Step SET " + columns + " WHERE StepID = " + std::to_string(StepKey(stepNumber)));
  }
  LibraryAdditions Library() { return {Databases()}; }

  // One line per category of the inspection: "number title (status)", then one per step or field of it.
  std::vector<Text> Outline(std::int32_t inspectionID);
  // How many rows each table has: "Inspection 1, Category 5, Step 0, Field 0".
  Text RowCounts();
  using StartedMachine::Run, StartedMachine::RunInLibrary, StartedMachine::RunInVisits;

  // Another program that has the Inspection database open.
  Shell Visits() const { return Shell(m_Folder / "My Documents/Inspection_Data.cdb"); }

private:
  std::unique_ptr<inspection::CInspectorDoc> m_Document;
};

// Statements that make every such change fail, as on a full disk, and end that: "UPDATE ON Step WHEN ...".
inline std::string NoRoomFor(const std::string& change) {
  return "CREATE TRIGGER Full BEFORE " + change + " BEGIN SELECT RAISE(FAIL, 'no room'); END";
}
constexpr const char* kRoomAgain = "DROP TRIGGER Full";

class VisitTest : public ::testing::Test {
protected:
  data::Databases& Data() { return m_Device.Databases(); }
  inspection::CInspectorDoc& Document() { return m_Device.Document(); }
  ScriptedPrompts& Prompts() { return m_Device.Prompts(); }
  // What another program finds in the Inspection database.
  std::string InVisits(const std::string& sql) { return m_Device.Visits().Ask(sql); }

  // "number|title|result|materials|comments" of the step with this number in the current inspection.
  Text Finding(const Text& number) { return m_Device.Finding(m_Device.StepKey(number)); }

  VisitDevice m_Device;
};

// A visit of the type "House" whose roof has been opened.
class RoofTest : public VisitTest {
protected:
  const std::int32_t m_House = m_Device.Visit(u"House");
  const std::int32_t m_Roof = m_Device.OpenCategory(u"Roof");
  const std::int32_t m_Shingles = m_Device.StepKey(u"20.1");
  const std::int32_t m_Gutters = m_Device.StepKey(u"20.2");
};

// The table is gone, so that every statement about it fails, until the scope ends.
class MissingTable {
public:
  MissingTable(VisitDevice& device, std::string table) : m_Device(device), m_Table(std::move(table)) {
    m_Device.RunInLibrary("ALTER TABLE " + m_Table + " RENAME TO Gone");
  }
  ~MissingTable() { m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO " + m_Table); }
  MissingTable(const MissingTable&) = delete;
  MissingTable& operator=(const MissingTable&) = delete;

private:
  VisitDevice& m_Device;
  std::string m_Table;
};

}  // namespace inspector::tests
