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

class ConnectionTest : public StoreTest {
protected:
  void SetUp() override {
    CreateFresh();
    OpenBoth();
  }
  bool AddStep(int id) {
    StepTable step(Data());
    step.PrepareNew();
    step.m_StepID = id;
    return step.Write();
  }
  std::string Steps() { return Shell(InspectionFile()).Ask("SELECT StepID FROM Step ORDER BY StepID"); }
  data::Connection& Inspection() { return Data().Inspection(); }
};

TEST_F(ConnectionTest, ATransactionIsWholeOrNothing) {
  {
    Transaction outer(Inspection());
    Transaction inner(Inspection());
    EXPECT_TRUE(AddStep(1));
    EXPECT_TRUE(inner.Commit());
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
    EXPECT_TRUE(StepTable(Data()).OpenSQL(u"SELECT * FROM Step WHERE Colour = 1"));
    EXPECT_FALSE(AddStep(5));  // nothing more is written
    EXPECT_FALSE(failing.Commit());
  }
  EXPECT_EQ(Steps(), "1");
  {
    Transaction transaction(Inspection());
    StepTable steps(Data());
    EXPECT_TRUE(steps.OpenSQL(u"SELECT * FROM Inspection WHERE InspectionNum = 'O'Hara'"));  // finds nothing
    EXPECT_TRUE(steps.Failed());
    EXPECT_TRUE(AddStep(6));
    EXPECT_TRUE(transaction.Commit());
  }
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
    StepTable steps(Data());
    EXPECT_TRUE(steps.OpenSQL(u"DELETE FROM Step WHERE StepID = 1"));
    EXPECT_TRUE(steps.Failed());
    EXPECT_FALSE(transaction.Commit());
  }
  ASSERT_EQ(m_Prompts.Messages().size(), 1u);
  EXPECT_TRUE(device::Contains(m_Prompts.Messages()[0].text, u"Another program has locked the database"));
  EXPECT_TRUE(AddStep(3));
  EXPECT_EQ(Steps(), "1\n3");
}

TEST_F(ConnectionTest, TheJournalCanBeMadeBeforeTheFirstChange) {
  ASSERT_TRUE(Inspection().PrepareForWriting());
  Inspection().PrepareJournal();
  const std::filesystem::path journal = InspectionFile().string() + "-wal";
  const auto size = std::filesystem::file_size(journal);
  EXPECT_GT(size, 32u) << "its head is there";
  Inspection().PrepareJournal();
  EXPECT_EQ(std::filesystem::file_size(journal), size) << "once is enough";
  EXPECT_TRUE(AddStep(7));
}

TEST_F(ConnectionTest, AFullJournalIsTidiedOutsideATransactionAndNobodyIsToldWhenThatFails) {
  ASSERT_TRUE(Inspection().PrepareForWriting());
  Shell other(InspectionFile());
  const auto size = [this] { return std::filesystem::file_size(InspectionFile()); };
  const auto before = size();
  {
    Transaction transaction(Inspection());
    StepTable step(Data());
    step.PrepareNew();
    step.m_Comments = Text(3'000'000, u'x');
    ASSERT_TRUE(step.Write());
    ASSERT_TRUE(transaction.Commit());
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
  EXPECT_FALSE(steps.GetRecord(0));
  EXPECT_FALSE(steps.Failed());
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
      "python3 -c \"import sqlite3, sys; base = sqlite3.connect(sys.argv[1]); "
      "base.execute('SELECT count(*) FROM Step').fetchone(); base.close()\" '" +
      InspectionFile().string() + "'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_TRUE(std::filesystem::exists(InspectionFile().string() + "-wal"));
  EXPECT_TRUE(AddStep(2));
  EXPECT_EQ(Steps(), "1\n2");
}

TEST_F(ConnectionTest, AReadThatFailsIsNotAnEndOfRows) {
  {
    Transaction transaction(Inspection());
    for (int i = 0; i < 3000; ++i) AddStep(i);
    EXPECT_TRUE(transaction.Commit());
  }
  m_Databases.reset();
  std::string bytes = ContentOf(InspectionFile());
  ASSERT_GT(bytes.size(), 100'000u);
  std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2), bytes.end(), 'x');
  m_Folder.Put("My Documents/Inspection_Data.cdb", bytes);
  m_Databases = std::make_unique<Databases>(TemplateFile(), InspectionFile(), m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  StepTable steps(Data());
  EXPECT_TRUE(steps.Open());
  EXPECT_TRUE(steps.Failed());
  EXPECT_EQ(steps.RecordCount(), 0);
  ASSERT_EQ(m_Prompts.Messages().size(), 1u);
  EXPECT_TRUE(device::Contains(m_Prompts.Messages()[0].text, u"Inspection_Data.cdb is damaged"));
  std::vector<Text> findings;
  EXPECT_FALSE(Inspection().CheckIntegrity(findings));
  EXPECT_FALSE(findings.empty());
  m_Databases.reset();
  EXPECT_TRUE(ContentOf(InspectionFile()) == bytes);
}

TEST_F(ConnectionTest, AFullDiskUndoesTheWholeAction) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may mount a small disk";
  const std::filesystem::path disk = m_Folder / "disk";
  std::filesystem::create_directories(disk);
  if (mount("none", disk.c_str(), "tmpfs", 0, "size=1m") != 0) GTEST_SKIP() << "no small disk here";
  const struct Unmount {
    std::filesystem::path path;
    ~Unmount() { umount2(path.c_str(), MNT_DETACH); }
  } unmount{disk};
  const auto file = disk / "Inspection_Data.cdb";
  ASSERT_EQ(data::CreateFreshDatabase(file, data::DatabaseKind::Inspection, m_Faults), u"");
  m_Databases = std::make_unique<Databases>(TemplateFile(), file, m_Faults, m_Clock);
  ASSERT_EQ(m_Databases->Open(), u"");
  ASSERT_TRUE(Inspection().PrepareForWriting());
  EXPECT_TRUE(AddStep(1));
  {
    Transaction transaction(Inspection());
    StepTable step(Data());
    for (int i = 2; i < 40; ++i) {
      step.PrepareNew();
      step.m_StepID = i;
      step.m_Comments = Text(i < 38 ? 100'000 : 1, u'x');  // the last would fit again
      step.Write();
    }
    EXPECT_FALSE(transaction.Commit());
  }
  ASSERT_FALSE(m_Prompts.Messages().empty());
  EXPECT_TRUE(device::Contains(m_Prompts.Messages()[0].text, u"is full. Nothing was changed."));
  m_Databases.reset();
  EXPECT_EQ(Shell(file).Ask("SELECT StepID FROM Step; PRAGMA integrity_check"), "1\nok");
}

}  // namespace
}  // namespace inspector::tests
