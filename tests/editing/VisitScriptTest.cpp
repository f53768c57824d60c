#include "editing/VisitScript.h"

#include "data/OptionFields.h"
#include "data/StartUp.h"
#include "device/OwnerRecord.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

class VisitScriptTest : public VisitTest {
protected:
  std::unique_ptr<VisitScript> Read(std::string_view content) {
    m_Scripts.Put("visit.toml", content);
    return VisitScript::Read(Machine().files, m_Scripts / "visit.toml", m_Problem);
  }
  const device::Machine& Machine() { return m_Device.GetWorkspace().GetMachine(); }
  std::optional<std::int32_t> Play(std::string_view content) {
    const auto script = Read(content);
    EXPECT_TRUE(script) << ToUtf8(m_Problem);
    return script ? script->Play(Document(), m_Problem) : std::nullopt;
  }
  bool SetUpDevice(std::string_view content) {
    return Read(content)->SetUpDevice(m_Device.GetWorkspace(), m_Problem);
  }
  // The owner's name and the inspector's entry.
  Text WhoseDevice() {
    const auto owner = Machine().registry.ReadBinary(Text(data::kOwnerKey), u"Owner");
    EXPECT_TRUE(owner.has_value());
    return device::OwnerRecord::Decode(*owner).name + u"|" +
           m_Device.GetWorkspace().Options().m_InspectorEntry;
  }

  TemporaryFolder m_Scripts;
  Text m_Problem;
};

constexpr std::string_view kVisit = R"(type = "House"
defaults = true
header = { number = "7", client = "Halvorsen", general = "Dry day." }
[[category]]
title = "Roof"
not_present = true
step = [{ number = "20.1", rating = "Poor", materials = ["Wood", "Other:Slate"], comments = ["One.", "Two."] }]
[[category]]
title = "Checklist"
field = [{ label = "Stove off", value = "Yes" }]
)";

TEST_F(VisitScriptTest, PlaysIntoTheUntouchedInspectionElseIntoANewOne) {
  for (const std::int32_t key : {1000, 1001}) {
    EXPECT_EQ(Play(kVisit), key);
    EXPECT_EQ(Joined(m_Device.Outline(key), u"\n"),
              u"15 Attic (Complete)\n20 Roof (Not Present)\n"
              u"  20.1|Shingles|Poor|Wood;Other:Slate;|One.  Two.\n  20.2|Gutters|Good|Copper;|\n"
              u"  20.3|Notes|||\n30 Safety (Incomplete)\n9 Cellar (Incomplete)\n  9.1|Sump|||\n"
              u"99 Checklist (Complete)\n  Stove off=Yes\n  Doors locked=");
    EXPECT_EQ(Document().Inspection().m_ClientName + Document().Inspection().m_GeneralInformation,
              u"HalvorsenDry day.  Seen from the ground.  Built in 1968.");
  }
}

TEST_F(VisitScriptTest, RefusesWhatTheLibraryDoesNotOfferAndLeavesNothing) {
  const Text counts = m_Device.RowCounts();
  const auto category = [](const std::string& title, const std::string& content) {
    return "[[category]]\ntitle = \"" + title + "\"\n" + content;
  };
  for (const auto& [script, name] : std::vector<std::pair<std::string, Text>>{
           {"[header]\ncolour = \"red\"", u"colour"},
           {"[header]\ndate = \"soon\"", u"date"},
           {category("Pool", ""), u"Pool"},
           {category("Roof", "[[category.step]]\nnumber = \"20.9\""), u"20.9"},
           {category("Roof", "[[category.step]]\nnumber = \"20.1\"\nrating = \"Superb\""), u"Superb"},
           {category("Roof", "[[category.step]]\nnumber = \"20.2\"\nmaterials = [\"Gold\"]"), u"Gold"},
           {category("Checklist", "[[category.field]]\nlabel = \"Cat fed\""), u"Cat fed"}}) {
    SCOPED_TRACE(script);
    m_Problem.clear();
    EXPECT_EQ(Play("type = \"House\"\n" + script), std::nullopt);
    EXPECT_TRUE(device::Contains(m_Problem, name)) << ToUtf8(m_Problem);
    EXPECT_EQ(m_Device.RowCounts(), counts);
    EXPECT_EQ(Document().Inspection().m_DocType, u"") << "the document does not hold what was rolled back";
  }
  EXPECT_EQ(Read("type = "), nullptr);
  EXPECT_TRUE(device::Contains(m_Problem, u"line 1")) << ToUtf8(m_Problem);
  EXPECT_EQ(VisitScript::Read(Machine().files, m_Scripts / "none.toml", m_Problem), nullptr);
}

TEST_F(VisitScriptTest, SetsUpOnlyADeviceThatNobodyHasSetUp) {
  EXPECT_TRUE(IsUnused(Data()));
  EXPECT_TRUE(
      SetUpDevice("[owner]\nname = \"Marguerite\"\n[options]\nInspectorEntry = \"M; 4417\"\n"
                  "NextPictNumber = 15\nHideRatings = true"));
  m_Device.Open();
  EXPECT_EQ(WhoseDevice(), u"Marguerite|M; 4417");
  EXPECT_EQ(m_Device.GetWorkspace().Options().m_NextPictNumber, 15);
  EXPECT_NE(m_Device.GetWorkspace().Options().m_HideRatings, 0);
  EXPECT_TRUE(SetUpDevice("[owner]\nname = \"Someone\"\n[options]\nInspectorEntry = \"Someone\""));
  EXPECT_EQ(WhoseDevice(), u"Marguerite|M; 4417");
  m_Device.GetWorkspace().Options().m_InspectorEntry.clear();
  EXPECT_FALSE(SetUpDevice("[options]\nColour = 1"));
  EXPECT_TRUE(device::Contains(m_Problem, u"Colour"));

  Document().Inspection().m_PrivateNotes = u"Ask about the roof.";
  ASSERT_TRUE(Document().Inspection().Write());
  EXPECT_FALSE(IsUnused(Data())) << "somebody works here already";
}

TEST_F(VisitScriptTest, CopiesFilesOnceAndWhole) {
  const std::string whole(200'000, 'x');
  const auto script = Read("[[file]]\nfrom = \"house.jpg\"\nto = \"\\\\Storage Card\\\\House.jpg\"");
  for (const std::string& content : {whole, std::string("other")}) {
    m_Scripts.Put("house.jpg", content);
    EXPECT_TRUE(script->CopyFiles(Machine(), m_Problem));
    EXPECT_EQ(ContentOf(m_Device.Root() / "Storage Card/House.jpg"), whole) << "never replaced";
  }
  EXPECT_FALSE(Read("[[file]]\nfrom = \"none.jpg\"\nto = \"\\\\None.jpg\"")->CopyFiles(Machine(), m_Problem));
  EXPECT_FALSE(std::filesystem::exists(m_Device.Root() / "None.jpg"));
}

}  // namespace
}  // namespace inspector::editing
