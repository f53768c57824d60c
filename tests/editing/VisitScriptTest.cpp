#include "editing/VisitScript.h"

#include "data/OptionFields.h"
#include "data/StartUp.h"
#include "device/OwnerRecord.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

class VisitScriptTest : public tests::VisitTest {
protected:
  std::unique_ptr<VisitScript> Read(std::string_view content) {
    m_Scripts.Put("visit.toml", content);
    return VisitScript::Read(Machine().files, m_Scripts / "visit.toml", m_Problem);
  }
  const device::Machine& Machine() { return m_Device.GetWorkspace().GetMachine(); }
  std::optional<std::int32_t> Play(std::string_view content) {
    const auto script = Read(content);
    EXPECT_TRUE(script) << device::ToUtf8(m_Problem);
    return script ? script->Play(Document(), m_Problem) : std::nullopt;
  }
  std::optional<std::vector<std::uint8_t>> Owner() {
    return Machine().registry.ReadBinary(Text(data::kOwnerKey), u"Owner");
  }

  tests::TemporaryFolder m_Scripts;
  Text m_Problem;
};

constexpr std::string_view kVisit = R"(type = "House"
defaults = true
[header]
number = "7"
client = "Halvorsen"
general = "Dry day."
[[category]]
title = "Roof"
not_present = true
[[category.step]]
number = "20.1"
rating = "Poor"
materials = ["Wood", "Other:Slate"]
comments = ["One.", "Two."]
[[category]]
title = "Checklist"
[[category.field]]
label = "Stove off"
value = "Yes"
)";

TEST_F(VisitScriptTest, PlaysIntoTheUntouchedInspectionElseIntoANewOne) {
  EXPECT_EQ(Play(kVisit), 1000);
  const std::vector<Text> expected = {u"15 Attic (Complete)",
                                      u"20 Roof (Not Present)",
                                      u"  20.1|Shingles|Poor|Wood;Other:Slate;|One.  Two.",
                                      u"  20.2|Gutters|Good|Copper;|",
                                      u"  20.3|Notes|||",
                                      u"30 Safety (Incomplete)",
                                      u"9 Cellar (Incomplete)",
                                      u"  9.1|Sump|||",
                                      u"99 Checklist (Complete)",
                                      u"  Stove off=Yes",
                                      u"  Doors locked="};
  EXPECT_EQ(m_Device.Outline(1000), expected);
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Halvorsen");
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"Dry day.  Seen from the ground.  Built in 1968.");
  EXPECT_EQ(Play(kVisit), 1001);
  EXPECT_EQ(m_Device.Outline(1001), expected);
}

TEST_F(VisitScriptTest, RefusesWhatTheLibraryDoesNotOfferAndLeavesNothing) {
  const Text counts = m_Device.RowCounts();
  struct Case {
    std::string_view script;
    TextView names;
  };
  for (const auto& [script, names] : std::initializer_list<Case>{
           {"type = \"House\"\n[header]\ncolour = \"red\"", u"colour"},
           {"type = \"House\"\n[header]\ndate = \"soon\"", u"date"},
           {"type = \"House\"\n[[category]]\ntitle = \"Pool\"", u"Pool"},
           {"type = \"House\"\n[[category]]\ntitle = \"Roof\"\n[[category.step]]\nnumber = \"20.9\"",
            u"20.9"},
           {"type = \"House\"\n[[category]]\ntitle = \"Roof\"\n[[category.step]]\nnumber = \"20.1\"\nrating "
            "= \"Superb\"",
            u"Superb"},
           {"type = \"House\"\n[[category]]\ntitle = \"Roof\"\n[[category.step]]\nnumber = "
            "\"20.2\"\nmaterials = [\"Gold\"]",
            u"Gold"},
           {"type = \"House\"\n[[category]]\ntitle = \"Checklist\"\n[[category.field]]\nlabel = \"Cat fed\"",
            u"Cat fed"}}) {
    m_Problem.clear();
    EXPECT_EQ(Play(script), std::nullopt) << script;
    EXPECT_TRUE(device::Contains(m_Problem, names)) << device::ToUtf8(m_Problem);
    EXPECT_EQ(m_Device.RowCounts(), counts) << script;
    EXPECT_EQ(Document().Inspection().m_DocType, u"") << "the document does not hold what was rolled back";
  }
  EXPECT_EQ(Read("type = "), nullptr);
  EXPECT_TRUE(device::Contains(m_Problem, u"line 1")) << device::ToUtf8(m_Problem);
  EXPECT_EQ(VisitScript::Read(Machine().files, m_Scripts / "none.toml", m_Problem), nullptr);
}

TEST_F(VisitScriptTest, SetsUpOnlyADeviceThatNobodyHasSetUp) {
  const auto script = Read(
      "[owner]\nname = \"Marguerite\"\n[options]\nInspectorEntry = \"Marguerite; 4417\"\nNextPictNumber = "
      "15\n"
      "HideRatings = true");
  ASSERT_TRUE(script);
  const auto entry = [this] {
    return *data::OptionText(m_Device.GetWorkspace().Options(), u"InspectorEntry");
  };
  EXPECT_TRUE(IsUnused(Data()));
  EXPECT_TRUE(script->SetUpDevice(m_Device.GetWorkspace(), m_Problem));
  m_Device.Open();
  EXPECT_EQ(entry(), u"Marguerite; 4417");
  EXPECT_EQ(m_Device.GetWorkspace().Options().m_NextPictNumber, 15);
  EXPECT_NE(m_Device.GetWorkspace().Options().m_HideRatings, 0);
  ASSERT_TRUE(Owner().has_value());
  EXPECT_EQ(device::OwnerRecord::Decode(*Owner()).name, u"Marguerite");

  const auto other = Read("[owner]\nname = \"Someone\"\n[options]\nInspectorEntry = \"Someone\"");
  EXPECT_TRUE(other->SetUpDevice(m_Device.GetWorkspace(), m_Problem));
  EXPECT_EQ(entry(), u"Marguerite; 4417");
  EXPECT_EQ(device::OwnerRecord::Decode(*Owner()).name, u"Marguerite");
  m_Device.GetWorkspace().Options().m_InspectorEntry.clear();
  EXPECT_FALSE(Read("[options]\nColour = 1")->SetUpDevice(m_Device.GetWorkspace(), m_Problem));
  EXPECT_TRUE(device::Contains(m_Problem, u"Colour"));

  Document().Inspection().m_PrivateNotes = u"Ask about the roof.";
  ASSERT_TRUE(Document().Inspection().Write());
  EXPECT_FALSE(IsUnused(Data())) << "somebody works here already";
}

TEST_F(VisitScriptTest, CopiesFilesOnceAndWhole) {
  m_Scripts.Put("house.jpg", std::string(200'000, 'x'));
  const auto script = Read("[[file]]\nfrom = \"house.jpg\"\nto = \"\\\\Storage Card\\\\House.jpg\"");
  EXPECT_TRUE(script->CopyFiles(Machine(), m_Problem));
  EXPECT_EQ(tests::ContentOf(m_Device.Root() / "Storage Card/House.jpg"), std::string(200'000, 'x'));
  m_Scripts.Put("house.jpg", "other");
  EXPECT_TRUE(script->CopyFiles(Machine(), m_Problem));
  EXPECT_EQ(tests::ContentOf(m_Device.Root() / "Storage Card/House.jpg").size(), 200'000U)
      << "never replaced";
  EXPECT_FALSE(Read("[[file]]\nfrom = \"none.jpg\"\nto = \"\\\\None.jpg\"")->CopyFiles(Machine(), m_Problem));
  EXPECT_FALSE(std::filesystem::exists(m_Device.Root() / "None.jpg"));
}

}  // namespace
}  // namespace inspector::editing
