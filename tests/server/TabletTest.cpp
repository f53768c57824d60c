// The device's own session with the server, over the loopback.
#include "Office.h"
#include "exchange/SyncSession.h"
#include "support/Shell.h"
#include "support/StartedMachine.h"

namespace inspector::tests {
namespace {

using exchange::SyncReport;
using protocol::Period;

// A tablet with its databases.
class Tablet : public StartedMachine {
public:
  Tablet() { RunInVisits("DELETE FROM Inspection"); }

  SyncReport Sync(std::uint16_t port, const Text& user, std::optional<Period> receive,
                  std::vector<std::int32_t> send = {}, const Text& password = u"secret") {
    data::OptionsTable& options = m_Workspace->Options();
    options.m_IPAddress = u"127.0.0.1";
    options.m_Port = port;
    options.m_UserName = user;
    options.m_Pswrd = password;
    exchange::SyncSession session(*m_Workspace, {receive, std::move(send)});
    EXPECT_TRUE(session.Run());
    return session.Report();
  }
  std::vector<std::string> Rows(const std::string& columns) const {
    return Shell(m_Folder / "My Documents/Inspection_Data.cdb")
        .Rows("SELECT " + columns + " FROM Inspection ORDER BY InspectionNum");
  }
};

TEST_F(ServerTest, TabletsOfAnOfficeShareItsInspections) {
  Change change;
  change.number = u"2026-014";
  change.day = device::MakeCalendarTime(2026, 5, 28);
  change.type = 300;
  for (std::size_t at = 1; at < kTexts; ++at)
    change.texts[at] = u"Zo\u00EB \u20AC" + Decimal(static_cast<int>(at));
  change.texts[5] = Text(protocol::kMaxValueBytes, u'g');
  change.texts[8] = u"";
  Applied applied;
  ASSERT_EQ(m_Storage->Apply("north", std::span(&change, 1), ChangeKind::Added, {}, applied), "");
  Add("north", u"DONE", device::MakeCalendarTime(2026, 6, 1));
  Add("south", u"1", device::MakeCalendarTime(2026, 5, 31));
  Start();

  Tablet first;
  EXPECT_EQ(first.Sync(Port(), u"ana", Period::All, {}, u"guess").end, SyncReport::End::Refused);
  SyncReport report = first.Sync(Port(), u"ana", Period::Week);
  EXPECT_TRUE(report.IsWhole());
  EXPECT_EQ(report.added, 1);
  EXPECT_THAT(
      first.Rows(
          "InspectionNum, DwellingAddress, LENGTH(GeneralInformation), ClientAgent, RealEstateCompany, "
          "InspectionTypeID, SUBSTR(InspectionDate, 1, 10)"),
      ElementsAre("2026-014|Zo\u00EB \u20AC"
                  "1|2047||Zo\u00EB \u20AC"
                  "10|300|2026-05-28"));
  EXPECT_EQ(first.Sync(Port(), u"ana", Period::All).added, 1);

  first.RunInVisits(
      "UPDATE Inspection SET ClientName = 'Eve', InspectionTypeID = 9, InspectionDate = "
      "'2030-01-01T00:00:00'");
  first.RunInVisits(
      "INSERT INTO Inspection (InspectionID, InspectionNum, ClientName) VALUES (7, 'mine', 'Leo'), (8, '', "
      "'Nobody')");
  std::vector<std::int32_t> keys;
  for (const std::string& key : first.Rows("InspectionID")) keys.push_back(std::stoi(key));
  report = first.Sync(Port(), u"ana", std::nullopt, keys);
  EXPECT_TRUE(report.IsWhole());
  EXPECT_EQ(report.sent, 4);
  EXPECT_EQ(first.Sync(Port(), u"ana", std::nullopt, keys).sent, 4) << "the same once more";

  Tablet second;
  EXPECT_EQ(second.Sync(Port(), u"ana", Period::All).added, 3);
  EXPECT_THAT(second.Rows("InspectionNum, ClientName, InspectionTypeID, SUBSTR(InspectionDate, 1, 10)"),
              ElementsAre("2026-014|Eve|300|2026-05-28", "DONE|Eve|-1|2026-06-01", "mine|Leo|-1|2026-05-31"));
  EXPECT_EQ(second.Sync(Port(), u"ben", Period::Today).added, 1);
  EXPECT_THAT(History(u"mine"), SizeIs(1));
  EXPECT_THAT(History(u""), SizeIs(1));
}

}  // namespace
}  // namespace inspector::tests
