#include "app/ExchangeCommands.h"

#include "app/MainFrame.h"
#include "device/ui/ListView.h"
#include "exchange/StagedInspections.h"
#include "support/Screens.h"
#include "support/ScriptedServer.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using device::ui::ListView;

class ExchangeCommandsTest : public RoofTest {
protected:
  std::string Clients() { return InVisits("SELECT group_concat(ClientName, '|') FROM Inspection"); }

  QWidget m_Window;
  ScriptedDialogs m_Person;
};

TEST_F(ExchangeCommandsTest, SynchronisesOnceItKnowsTheServer) {
  std::vector<std::string> replies = {
      "CNFM\r", "CNFM\r", "CONT 1\r", "2026-014", "12 Elm Street", "Ana Ruiz", "\4",      "\4", "\4",
      "House",  "\4",     "\4",       "\4",       "\1\1\1\1",      "\4",       "8/1/2026"};
  replies.resize(replies.size() + 13, "CNFM\r");
  ScriptedServer server(replies);
  m_Person.Expect("syncDialog", [&](QDialog& dialog) {
    // Without a server the first OK only asks for it.
    m_Person.Expect("serverSettingsDialog", [&](QDialog& settings) {
      Fill(settings, "addressField", "127.0.0.1");
      Fill(settings, "portField", "9");
      Fill(settings, "userField", "ana");
      Fill(settings, "passwordField", "secret");
      PressButton(settings, "doneButton");
      EXPECT_EQ(Prompts().Last(), "Error: The port is a number from 10 to 10000.");
      EXPECT_TRUE(settings.isVisible());
      settings.reject();
    });
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    m_Device.GetWorkspace().Options().m_IPAddress = u"127.0.0.1";
    m_Device.GetWorkspace().Options().m_Port = server.Port();
    m_Device.GetWorkspace().Options().m_UserName = u"ana";

    auto& list = Part<ListView>(dialog, "inspectionsToSend");
    auto& send = Part<QCheckBox>(dialog, "sendSwitch");
    EXPECT_FALSE(list.isEnabled());
    send.click();
    list.onClick(0, 2);
    EXPECT_EQ(Words(dialog, "markedCount"), "1 of 2 to send");
    send.click();  // takes the marks away
    send.click();
    EXPECT_EQ(Words(dialog, "markedCount"), "0 of 2 to send");
    list.onClick(1, 0);
    Part<QAbstractButton>(dialog, "weekButton").click();
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(Synchronise(Document(), m_Window));
  EXPECT_EQ(
      Prompts().Last(),
      "Synchronise: 1 inspection was received: 1 new, 0 already on this device.\n1 inspection was sent.");
  EXPECT_THAT(server.Heard(), HasSubstr("RECV week\\r\nINSP\\r"));
  EXPECT_THAT(server.Heard(), HasSubstr("House.\n.\n.\n.\n.\nDONE.\nQUIT"));
  EXPECT_EQ(Clients(), "||Ana Ruiz");
}

TEST_F(ExchangeCommandsTest, KeepsTheDialogWhereThereIsNoServer) {
  m_Person.Expect("syncDialog", [&](QDialog& dialog) {
    data::OptionsTable& options = m_Device.GetWorkspace().Options();
    options.m_IPAddress = u"no.such.host.invalid";
    options.m_Port = 4850;
    options.m_UserName = u"ana";
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_THAT(Prompts().Last(), HasSubstr("was not found"));
    dialog.reject();
  });
  Synchronise(Document(), m_Window);
}

TEST_F(ExchangeCommandsTest, CarriesAVisitToAnotherInspection) {
  m_Device.Enter(u"20.1", "Comments = 'Loose.', InspectResult = 'Poor'");
  const std::filesystem::path file = m_Device.Root() / "house.rtf";
  Prompts().QueueSavePath(file);
  EXPECT_EQ(ExportCurrent(Document()), FromUtf8(file.native()));
  EXPECT_THAT(Prompts().Last(), StartsWith("Export: The inspection is exported:"));
  EXPECT_EQ(MergeImported(Document(), m_House, m_Window), u"");
  EXPECT_THAT(Prompts().Last(), StartsWith("Alert: There is no imported inspection to merge."));

  Prompts().QueueOpenPath(file);
  EXPECT_TRUE(ImportFile(Document()));
  EXPECT_THAT(Prompts().Last(), StartsWith("Import: Imported: "));
  const std::int32_t other = m_Device.Visit(u"House");
  const auto choose = [this] {
    m_Person.Expect("choiceDialog", [](QDialog& dialog) {
      EXPECT_EQ(Part<ListView>(dialog, "choiceList").model()->rowCount(), 1);
      dialog.accept();
    });
  };
  choose();
  Prompts().Queue(u"Merge Inspections", Answer::Cancel);
  const Text counts = m_Device.RowCounts();
  EXPECT_EQ(MergeImported(Document(), other, m_Window), u"");
  EXPECT_EQ(m_Device.RowCounts(), counts);
  choose();
  Prompts().Queue(u"Merge Inspections", Answer::Ok);
  EXPECT_THAT(ToUtf8(MergeImported(Document(), other, m_Window)), StartsWith("Merged. Added: "));
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Poor||Loose.");

  Prompts().QueueOpenPath(file);
  ImportFile(Document());
  m_Person.Expect("choiceDialog", [this](QDialog& dialog) {
    Prompts().Queue(u"Caution", Answer::Yes);
    Part<QPushButton>(dialog, "deleteImported").click();
    EXPECT_EQ(Part<ListView>(dialog, "choiceList").model()->rowCount(), 0);
    EXPECT_FALSE(Part<QPushButton>(dialog, "deleteImported").isEnabled());
    dialog.reject();
  });
  EXPECT_EQ(MergeImported(Document(), other, m_Window), u"");
  EXPECT_THAT(*exchange::ReadStaged(Document().GetWorkspace().GetDatabases()), IsEmpty());
}

}  // namespace
}  // namespace inspector::app
