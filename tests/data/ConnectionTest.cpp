// Transactions, failures in the middle of one, and other programs beside.
#include "data/Connection.h"

#include <sys/mount.h>
#include <unistd.h>

#include "StoreTest.h"
#include "data/FreshDatabase.h"
#include "data/StepTable.h"

namespace inspector::tests {
namespace {

using data::ReadScope;
using data::StepTable;
using data::Transaction;

class ConnectionTest : public OpenStoreTest {
protected:
  bool AddStep(int id, std::size_t commentSize = 0) {
    StepTable step(Data());
    step.PrepareNew();
    step.m_StepID = id;
    step.m_Comments = Text(commentSize, u'x');
    return step.Write();
  }
  // Whether the statement failed; it must not be taken for one about a missing table.
  bool Fails(TextView sql) {
    StepTable steps(Data());
    EXPECT_TRUE(steps.OpenSQL(sql));
    return steps.Failed();
  }
  std::string Steps() { return InVisits("SELECT StepID FROM Step ORDER BY StepID"); }
};

TEST_F(ConnectionTest, ATransactionIsWholeOrNothing) {
  {
    Transaction outer(Inspection());
    Transaction inner(Inspection());
    EXPECT_TRUE(AddStep(1) && inner.Commit());
    EXPECT_EQ(Steps(), "");
    EXPECT_TRUE(outer.Commit());
    EXPECT_FALSE(outer.Commit());
  }
  EXPECT_EQ(Steps(), "1");
  {
    const Transaction forgotten(Inspection());
    AddStep(2);
  }
  {
    Transaction outer(Inspection());
    AddStep(3);
    { const Transaction inner(Inspection()); }
    EXPECT_FALSE(outer.Commit());
  }
  {
    Transaction failing(Inspection());
    AddStep(4);
    EXPECT_TRUE(Fails(u"SELECT * FROM Step WHERE Colour = 1"));
    EXPECT_FALSE(AddStep(5)) << "nothing more is written";
    EXPECT_FALSE(failing.Commit());
  }
  EXPECT_EQ(Steps(), "1");
  Transaction transaction(Inspection());
  EXPECT_TRUE(Fails(u"SELECT * FROM Inspection WHERE InspectionNum = 'O'Hara'")) << "but finds nothing only";
  EXPECT_TRUE(AddStep(6) && transaction.Commit());
  EXPECT_EQ(Steps(), "1\n6");
}

TEST_F(ConnectionTest, AnActionThatCannotBeginWritesNothingEvenWhenTheLockGoes) {
  Shell other(InspectionFile());
  other.Run("BEGIN IMMEDIATE; INSERT INTO Step (StepID) VALUES (1)");
  {
    Transaction transaction(Inspection());
    EXPECT_FALSE(transaction.IsOpen());
    other.Run("COMMIT");
    EXPECT_FALSE(AddStep(2));
    EXPECT_TRUE(Fails(u"DELETE FROM Step WHERE StepID = 1"));
    EXPECT_FALSE(transaction.Commit());
  }
  EXPECT_EQ(m_Prompts.Messages().size(), 1u);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("Another program has locked the database"));
  EXPECT_TRUE(AddStep(3));
  EXPECT_EQ(Steps(), "1\n3");
}

TEST_F(ConnectionTest, AFullJournalIsTidiedOutsideATransactionAndNobodyIsToldWhenThatFails) {
  Inspection().PrepareJournal();
  EXPECT_GT(std::filesystem::file_size(InspectionFile().string() + "-wal"), 32u) << "its head is there";
  Shell other(InspectionFile());
  const auto size = [this] { return std::filesystem::file_size(InspectionFile()); };
  const auto before = size();
  {
    Transaction transaction(Inspection());
    ASSERT_TRUE(AddStep(6, 3'000'000) && transaction.Commit());
    const Transaction next(Inspection());
    Inspection().TidyJournal();
    EXPECT_EQ(size(), before);
  }
  other.Run("BEGIN IMMEDIATE");
  Inspection().TidyJournal();
  EXPECT_GT(size(), before + 2'000'000) << "what others write stays out of its way";
  other.Run("COMMIT");
  EXPECT_TRUE(AddStep(7));
  EXPECT_TRUE(m_Prompts.Messages().empty());
}

TEST_F(ConnectionTest, OtherProgramsReadAndWriteBeside) {
  Shell other(InspectionFile());
  StepTable steps(Data());
  {
    const ReadScope reading(Inspection());
    EXPECT_TRUE(steps.Open());
    other.Run("INSERT INTO Step (StepID) VALUES (1)");
    EXPECT_TRUE(AddStep(2));  // ends the reading, so that it is in the file at once
    EXPECT_EQ(Steps(), "1\n2");
  }
  EXPECT_TRUE(steps.Open());
  EXPECT_EQ(steps.RecordCount(), 2);
  other.Run("DELETE FROM Step WHERE StepID = 1");
  EXPECT_FALSE(steps.GetRecord(0) || steps.Failed());
  EXPECT_TRUE(steps.GetRecord(1));
  other.Run("ALTER TABLE Step ADD Colour integer; DROP TABLE Field");
  EXPECT_TRUE(steps.Open() && steps.GetRecord(0));
  EXPECT_EQ(steps.m_StepID, 2);
  EXPECT_FALSE(Table(u"Field")->Open());
  other.Run("CREATE TABLE Field (ID integer)");
  EXPECT_TRUE(Table(u"Field")->Open());
  other.Run("DROP TABLE Field");
  EXPECT_FALSE(Table(u"Field")->Open());
  EXPECT_EQ(m_Faults.Count(), 0);
}

TEST_F(ConnectionTest, AnotherConnectionOfTheProcessLeavesTheLocksInPlace) {
  EXPECT_TRUE(AddStep(1));
  {
    Databases worker(TemplateFile(), InspectionFile(), m_Faults, m_Clock);
    EXPECT_EQ(worker.Open(), u"");
  }
  // A program that closes as the last one takes the write-ahead journal away; here it must see that it is
  // not.
  const std::string command =
      "python3 -c \"import sqlite3, sys; base = sqlite3.connect(sys.argv[1]); base.execute('SELECT count(*) "
      "FROM Step').fetchone(); base.close()\" '" +
      InspectionFile().string() + "'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_TRUE(std::filesystem::exists(InspectionFile().string() + "-wal"));
  EXPECT_TRUE(AddStep(2));
  EXPECT_EQ(Steps(), "1\n2");
}

TEST_F(ConnectionTest, AReadThatFailsIsNotAnEndOfRows) {
  m_Databases.reset();
  InVisits(
      "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) INSERT INTO Step (StepID, "
      "Comments) SELECT i, hex(randomblob(20)) FROM n");
  std::string bytes = ContentOf(InspectionFile());
  ASSERT_GT(bytes.size(), 100'000u);
  std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2), bytes.end(), 'x');
  m_Folder.Put("My Documents/Inspection_Data.cdb", bytes);
  m_Databases = std::make_unique<Databases>(TemplateFile(), InspectionFile(), m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  StepTable steps(Data());
  EXPECT_TRUE(steps.Open() && steps.Failed());
  EXPECT_EQ(steps.RecordCount(), 0);
  EXPECT_EQ(m_Prompts.Messages().size(), 1u);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("Inspection_Data.cdb is damaged"));
  std::vector<Text> findings;
  EXPECT_FALSE(Inspection().CheckIntegrity(findings));
  EXPECT_FALSE(findings.empty());
  m_Databases.reset();
  EXPECT_TRUE(ContentOf(InspectionFile()) == bytes);
}

TEST_F(ConnectionTest, AFullDiskUndoesTheWholeAction) {
  const std::filesystem::path disk = m_Folder / "disk";
  std::filesystem::create_directories(disk);
  if (geteuid() != 0 || mount("none", disk.c_str(), "tmpfs", 0, "size=1m") != 0)
    GTEST_SKIP() << "only root may mount a small disk, and not everywhere";
  const std::shared_ptr<void> unmount(nullptr, [&](void*) { umount2(disk.c_str(), MNT_DETACH); });
  const auto file = disk / "Inspection_Data.cdb";
  ASSERT_EQ(data::CreateFreshDatabase(file, data::DatabaseKind::Inspection, m_Faults), u"");
  m_Databases = std::make_unique<Databases>(TemplateFile(), file, m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  ASSERT_TRUE(Inspection().PrepareForWriting());
  EXPECT_TRUE(AddStep(1));
  {
    Transaction transaction(Inspection());
    for (int i = 2; i < 40; ++i) AddStep(i, i < 38 ? 100'000 : 1);  // the last would fit again
    EXPECT_FALSE(transaction.Commit());
  }
  ASSERT_FALSE(m_Prompts.Messages().empty());
  EXPECT_TRUE(device::Contains(m_Prompts.Messages()[0].text, u"is full. Nothing was changed."));
  m_Databases.reset();
  EXPECT_EQ(Shell(file).Ask("SELECT StepID FROM Step; PRAGMA integrity_check"), "1\nok");
}

}  // namespace
}  // namespace inspector::tests
