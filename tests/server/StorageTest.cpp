// What every storage guarantees. A new one is a line in the list at the end.
#include <gtest/gtest.h>

#include <functional>

#include "device/CodePage.h"
#include "server/SqliteStorage.h"
#include "support/TestSupport.h"

namespace inspector::server {
namespace {

using device::MakeCalendarTime;

struct Kind {
  const char* name;
  std::function<std::unique_ptr<Storage>(const std::filesystem::path&)> open;
};

class StorageTest : public testing::TestWithParam<Kind> {
protected:
  std::unique_ptr<Storage> Open() const { return GetParam().open(m_Folder / "data"); }
  static Change Of(const Text& number, const Text& client, Change::Expect expect = Change::Expect::Either) {
    Change change;
    change.number = number;
    change.texts[2] = client;
    change.expect = expect;
    return change;
  }
  Fault Apply(const std::string& office, const std::vector<Change>& changes) {
    return m_Storage->Apply(office, changes, ChangeKind::Set, m_Origin, m_Applied);
  }
  Fault Push1(const std::string& office, const Text& number, const Text& client) {
    const Push push{office, {number, u"", client}, {"ana", "10.0.0.7", m_Origin.when}};
    return m_Storage->StorePushes(std::span(&push, 1));
  }
  // "number=client" of all that is offered.
  std::string Offered(const std::string& office, const std::optional<DayRange>& days = {}) const {
    std::vector<Storage::Key> keys;
    EXPECT_EQ(m_Storage->OfferedKeys(office, days, keys), "");
    return Shown(keys);
  }
  std::string Shown(const std::vector<Storage::Key>& keys) const {
    std::vector<OfficeInspection> inspections;
    EXPECT_EQ(m_Storage->Read(keys, 1'000'000, inspections), "");
    return ToUtf8(
        Joined(inspections, [](const OfficeInspection& one) { return one.Number() + u"=" + one.texts[2]; }));
  }
  std::size_t Versions(const std::string& office, const Text& number) const {
    std::vector<Version> versions;
    EXPECT_EQ(m_Storage->History(office, number, versions), "");
    return versions.size();
  }

  TemporaryFolder m_Folder;
  std::unique_ptr<Storage> m_Storage = Open();
  Origin m_Origin{"root", "command line", MakeCalendarTime(2026, 5, 31, 14, 5)};
  Applied m_Applied;
};

TEST_P(StorageTest, ChangesAreMadeTogetherOrNotAtAll) {
  EXPECT_EQ(Apply("north", {Of(u"1", u"a"), Of(u"2", u"b")}), "");
  EXPECT_EQ(m_Applied.added, 2);
  EXPECT_NE(Apply("north", {Of(u"1", u"c"), Of(u"3", u"c"), Of(u"2", u"c", Change::Expect::New)}), "");
  EXPECT_NE(Apply("north", {Of(u"1", u"c"), Of(u"4", u"c", Change::Expect::Existing)}), "");
  EXPECT_EQ(Offered("north"), "1=a|2=b");
  EXPECT_EQ(Versions("north", u"1"), 1u);
  EXPECT_EQ(Apply("north", {Of(u"1", u"a"), Of(u"2", u"c"), Of(u"3", u"d")}), "");
  EXPECT_EQ(m_Applied.added, 1);
  EXPECT_EQ(m_Applied.changed, 1);
  EXPECT_EQ(m_Applied.same, 1);
  EXPECT_EQ(Versions("north", u"1"), 1u);
}

TEST_P(StorageTest, OfficesHaveTheirOwnNumbers) {
  EXPECT_EQ(Apply("north", {Of(u"1", u"north's")}), "");
  EXPECT_EQ(Push1("south", u"1", u"south's"), "");
  EXPECT_EQ(Offered("north"), "1=north's");
  EXPECT_EQ(Offered("south"), "1=south's");
  EXPECT_EQ(Offered("east"), "");
  EXPECT_EQ(m_Storage->Remove("north", u"1", m_Origin), "");
  EXPECT_NE(m_Storage->Remove("north", u"1", m_Origin), "");
  EXPECT_EQ(Offered("south"), "1=south's");
  EXPECT_EQ(Versions("south", u"1"), 1u);
}

TEST_P(StorageTest, WhatWasPromisedCanBeRead) {
  EXPECT_EQ(Apply("north", {Of(u"1", u"a"), Of(u"2", u"b"), Of(u"3", u"c")}), "");
  std::vector<Storage::Key> keys;
  EXPECT_EQ(m_Storage->OfferedKeys("north", std::nullopt, keys), "");
  EXPECT_EQ(m_Storage->Remove("north", u"2", m_Origin), "");
  EXPECT_EQ(Apply("north", {Of(u"3", u"changed")}), "");
  EXPECT_EQ(Shown(keys), "1=a|2=b|3=changed");
  EXPECT_EQ(Offered("north"), "1=a|3=changed");
  std::vector<OfficeInspection> first;
  EXPECT_EQ(m_Storage->Read(keys, 0, first), "");
  EXPECT_THAT(first, SizeIs(1)) << "however little room there is";
}

TEST_P(StorageTest, WhatWasRemovedComesBackWithAPushAndItsDate) {
  Change change = Of(u"1", u"a");
  change.day = MakeCalendarTime(2026, 1, 2);
  change.type = 5;
  EXPECT_EQ(Apply("north", {change}), "");
  EXPECT_EQ(m_Storage->Remove("north", u"1", m_Origin), "");
  EXPECT_EQ(Push1("north", u"1", u"a"), "");
  EXPECT_EQ(Offered("north", DayRange{*change.day, *change.day}), "1=a");
  EXPECT_EQ(Apply("north", {Of(u"2", u"b")}), "");
  EXPECT_EQ(m_Storage->Remove("north", u"2", m_Origin), "");
  EXPECT_EQ(Apply("north", {Of(u"2", u"", Change::Expect::New)}), "") << "its number is free";
  std::vector<Version> versions;
  EXPECT_EQ(m_Storage->History("north", u"1", versions), "");
  ASSERT_THAT(versions, SizeIs(3));
  EXPECT_EQ(versions[2].number, 3);
  EXPECT_EQ(versions[2].inspection.type, 5);
  EXPECT_EQ(versions[2].origin.where, "10.0.0.7");
}

TEST_P(StorageTest, AnyByteOfADeviceComesBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte)
    if (byte != protocol::kEot) bytes += static_cast<char>(byte);
  const Text text = device::FromCodePage(bytes);
  for (const Text& number :
       {text, Text(u"1' OR '1'='1"), Text(u"1"), Text(u"1\0x", 3), Text(u" 1"), Text(u"1 ")})
    EXPECT_EQ(Push1("north", number, text), "");
  std::vector<OfficeInspection> all;
  EXPECT_EQ(m_Storage->List("north", std::nullopt, all), "");
  ASSERT_THAT(all, SizeIs(6));
  for (const OfficeInspection& one : all) {
    EXPECT_EQ(one.texts[2], text);
    std::optional<OfficeInspection> found;
    EXPECT_EQ(m_Storage->Find("north", one.Number(), found), "");
    EXPECT_EQ(found, one);
  }
}

TEST_P(StorageTest, UsersAreOfOneOffice) {
  EXPECT_EQ(m_Storage->AddUser({"ana", "north", "h1"}), "");
  EXPECT_NE(m_Storage->AddUser({"ana", "south", "h2"}), "");
  EXPECT_NE(m_Storage->SetPasswordHash("Ana", "h3"), "");
  std::optional<User> user;
  EXPECT_EQ(m_Storage->FindUser("ana", user), "");
  EXPECT_EQ(user->office + user->passwordHash, "northh1");
  EXPECT_EQ(m_Storage->FindUser("ana' --", user), "");
  EXPECT_FALSE(user);
  std::vector<std::string> offices;
  EXPECT_EQ(m_Storage->ListOffices(offices), "");
  EXPECT_THAT(offices, ElementsAre("north"));
}

TEST_P(StorageTest, TwoProcessesShareIt) {
  const std::unique_ptr<Storage> other = Open();
  EXPECT_EQ(Apply("north", {Of(u"1", u"a")}), "");
  std::optional<OfficeInspection> found;
  EXPECT_EQ(other->Find("north", u"1", found), "");
  ASSERT_TRUE(found);
  EXPECT_EQ(other->Remove("north", u"1", m_Origin), "");
  EXPECT_EQ(Offered("north"), "");
  m_Storage.reset();
  m_Storage = Open();
  EXPECT_EQ(Versions("north", u"1"), 2u);
}

// The other one may be done a moment later.
TEST(SqliteFileTest, AfterATransactionThatCouldNotBeginNothingRuns) {
  TemporaryFolder folder;
  SqliteFile file(folder / "a.db", std::chrono::milliseconds(20));
  ASSERT_TRUE(file.Open(SqliteFile::Mode::Create));
  ASSERT_TRUE(file.Execute("CREATE TABLE T (A)"));
  SqliteFile other(folder / "a.db", std::chrono::milliseconds(20));
  ASSERT_TRUE(other.Open(SqliteFile::Mode::Existing));
  ASSERT_TRUE(other.Execute("BEGIN IMMEDIATE"));
  {
    SqliteTransaction transaction(file);
    ASSERT_TRUE(other.Execute("COMMIT"));
    EXPECT_FALSE(SqliteQuery(file, "INSERT INTO T VALUES (1)").Run());
    EXPECT_FALSE(transaction.Commit());
  }
  EXPECT_THAT(file.Failure(), HasSubstr("locked"));
  file.ClearFailure();
  EXPECT_FALSE(SqliteQuery(file, "SELECT A FROM T").Step());
  EXPECT_FALSE(file.Failed());
}

INSTANTIATE_TEST_SUITE_P(Kinds, StorageTest,
                         testing::Values(Kind{
                             "Sqlite",
                             [](const std::filesystem::path& folder) -> std::unique_ptr<Storage> {
                               std::unique_ptr<SqliteStorage> storage;
                               EXPECT_EQ(SqliteStorage::Open(folder, storage), "");
                               return storage;
                             }}),
                         [](const auto& about) { return about.param.name; });

}  // namespace
}  // namespace inspector::server
