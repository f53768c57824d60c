// A tablet with a small library of the test's own, and the visits made with it.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "data/StepTable.h"
#include "data/Workspace.h"
#include "device/DevicePaths.h"
#include "device/FaultLog.h"
#include "device/Registry.h"
#include "inspection/InspectorDoc.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using device::Text;
using device::TextView;

// What an office prepares. Every verb adds rows through the table classes and returns the new key; keys count
// up from 1 in each table, so that the same calls make the same library.
class TemplateLibrary {
public:
  explicit TemplateLibrary(data::Databases& databases) : m_Databases(databases) {}

  struct Choice {
    Text name;
    bool isDefault = false;
    bool isBold = false;
    bool prompts = false;
    bool isSummary = false;
    bool isRed = false;
  };
  std::int32_t AddRatingType(const Text& name, const std::vector<Choice>& choices);

  std::int32_t AddType(const Text& name, const Text& layout = u"");
  struct Category {
    Text title;
    std::int32_t number = 10;
    std::int32_t formType = 0;
    bool excluded = false;
  };
  std::int32_t AddCategory(std::int32_t type, const Category& category);
  struct Step {
    Text number;
    Text title;
    std::int32_t ratingType = 0;
    Text keyword = u"";
    Text info = u"";
  };
  std::int32_t AddStep(std::int32_t category, const Step& step);
  void AddField(std::int32_t category, const Text& label, std::int32_t sequence);
  std::int32_t AddMaterial(std::int32_t step, const Text& material, bool isDefault = false);
  void AddCommentToType(std::int32_t type, const Text& comment);
  void AddCommentToCategory(std::int32_t category, const Text& comment);
  // Also marks the material as having comments.
  void AddCommentToMaterial(std::int32_t material, const Text& comment);
  // The new comment's key.
  std::int32_t AddCommentToStep(std::int32_t step, const Text& comment, const Text& group = u"");
  void AddPicker(const Text& list, const Text& choice);
  void AddShortcut(const Text& shortCut, const Text& expanded);

private:
  std::int32_t AddComment(const Text& comment, const Text& group = u"");

  data::Databases& m_Databases;
  std::int32_t m_RatingTypes = 0;
  std::int32_t m_RatingChoices = 0;
  std::int32_t m_Types = 0;
  std::int32_t m_Categories = 0;
  std::int32_t m_Steps = 0;
  std::int32_t m_Fields = 0;
  std::int32_t m_Materials = 0;
  std::int32_t m_Comments = 0;
  std::int32_t m_Pickers = 0;
  std::int32_t m_Shortcuts = 0;
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
class VisitDevice : ScriptedMachine {
public:
  VisitDevice();
  ~VisitDevice();

  // Closes everything and lets go of the locks; Open starts again on the same files.
  void Close();
  void Open();

  data::Workspace& GetWorkspace() { return *m_Workspace; }
  data::Databases& Databases() { return m_Workspace->GetDatabases(); }
  inspection::CInspectorDoc& Document() { return *m_Document; }
  TemplateLibrary& Library() { return *m_Library; }
  ScriptedPrompts& Prompts() { return m_Prompts; }
  device::FaultLog& Faults() { return m_Faults; }
  const std::filesystem::path& Root() const { return m_Folder.Path(); }

  // A new inspection of that type, current in the document.
  std::int32_t Visit(const Text& type);
  // The key of a category of the current inspection, with its steps or fields created.
  std::int32_t OpenCategory(const Text& title);
  // The key of the step with this number in the current inspection; its category must have been opened.
  std::int32_t StepKey(const Text& number);
  // "number|title|result|materials|comments" of a step, as stored.
  Text Finding(std::int32_t stepID);
  // Changes columns of a stored step as another program could.
  void Store(std::int32_t stepID, const std::function<void(data::StepTable&)>& change);

  // One line per category of the inspection: "number title (status)", then one per step or field of it.
  std::vector<Text> Outline(std::int32_t inspectionID);
  // How many rows each table has: "Inspection 1, Category 5, Step 0, Field 0".
  Text RowCounts();
  // A table that is gone makes every statement about it fail: in another program's words.
  void Run(data::DatabaseKind kind, const std::string& sql);

private:
  void MakeLibrary();

  std::unique_ptr<data::Workspace> m_Workspace;
  std::unique_ptr<inspection::CInspectorDoc> m_Document;
  std::unique_ptr<TemplateLibrary> m_Library;
};

class VisitTest : public ::testing::Test {
protected:
  data::Databases& Data() { return m_Device.Databases(); }
  inspection::CInspectorDoc& Document() { return m_Device.Document(); }
  ScriptedPrompts& Prompts() { return m_Device.Prompts(); }

  VisitDevice m_Device;
};

}  // namespace inspector::tests
