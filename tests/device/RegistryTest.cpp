#include "device/Registry.h"

#include <random>

#include "device/LastPlace.h"
#include "support/TestSupport.h"

namespace inspector::device {
namespace {

using namespace std::string_literals;

class RegistryTest : public testing::Test, protected ScriptedMachine {
protected:
  const Text m_Key = u"HKEY_USERS\\.Default\\Software\\Pellory\\Inspector";
  Registry m_Registry{m_Files, m_Folder / "home/registry.toml"};
};

TEST_F(RegistryTest, ValuesAreKeptUnderTheirKeys) {
  EXPECT_TRUE(m_Registry.Open(u"Key"));
  EXPECT_EQ(m_Registry.Read(m_Key, u"TemplatePath"), std::nullopt);
  EXPECT_TRUE(m_Registry.Write(m_Key, u"TemplatePath", u"\\My Documents\\Template_Data.cdb"));
  EXPECT_TRUE(m_Registry.Write(m_Key, u"InspectionPath", u"\\My Documents\\B\u00E2timent.cdb"));
  EXPECT_TRUE(m_Registry.Write(u"Other", u"TemplatePath", u""));
  EXPECT_TRUE(m_Registry.WriteBinary(u"HKEY\\Panel", u"Owner", {0, 0x7F, 0xAB, 0xFF}));

  Registry again(m_Files, m_Registry.Path());
  EXPECT_EQ(again.Read(m_Key, u"TemplatePath"), u"\\My Documents\\Template_Data.cdb");
  EXPECT_EQ(again.Read(m_Key, u"InspectionPath"), u"\\My Documents\\B\u00E2timent.cdb");
  EXPECT_EQ(again.Read(u"Other", u"TemplatePath"), u"");
  EXPECT_EQ(again.ReadBinary(u"hkey\\PANEL", u"owner"), (std::vector<std::uint8_t>{0, 0x7F, 0xAB, 0xFF}));
  EXPECT_TRUE(again.Write(u"OTHER", u"templatepath", u"x"));
  EXPECT_EQ(m_Registry.Read(u"Other", u"TemplatePath"), u"x");
  EXPECT_THAT(ContentOf(again.Path()), HasSubstr("TemplatePath = '\\My Documents\\Template_Data.cdb'"))
      << "a person should be able to read it";
}

TEST_F(RegistryTest, AnyTextComesBack) {
  std::mt19937 random(7);
  const Text units = u"ab\"\\ #=[].\u00E9\u20AC\uFFFD'\r\n\t\u007F\u0001\0"s;
  const std::size_t printable = units.find(u'\'');
  const auto pick = [&](std::size_t longest, std::size_t among) {
    Text text;
    for (std::size_t i = random() % (longest + 1); i > 0; --i) text.push_back(units[random() % among]);
    return text;
  };
  for (int round = 0; round < 300; ++round) {
    const Text name = pick(4, printable);
    const Text content = pick(12, units.size()) + (round % 5 == 0 ? u"\U0001F3E0" : u"");
    ASSERT_TRUE(m_Registry.Write(u"k" + name, name, content)) << ToUtf8(m_Registry.LastError());
    ASSERT_EQ(m_Registry.Read(u"k" + name, name), content) << ContentOf(m_Registry.Path());
  }
  // A name that the file cannot hold is refused, and what is there stays.
  for (const Text& name : {u"O'Brien"s, u"\t"s, u"a\nb"s, u"\0"s}) {
    const std::string before = ContentOf(m_Registry.Path());
    const bool written = m_Registry.Write(name, name, u"content");
    EXPECT_EQ(m_Registry.Read(name, name), written ? std::optional<Text>(u"content") : std::nullopt);
    EXPECT_EQ(m_Registry.LastError(), u"");
    EXPECT_EQ(written, ContentOf(m_Registry.Path()) != before);
  }
}

TEST_F(RegistryTest, APersonMayEditTheFile) {
  const std::string edited =
      "# our office\nversion = 2\nsince = 2026-05-31\nlimits = [inf, nan, 0x1F]\n[Key]\nNumber = 5\n"
      "Owner = \"00 Ab\\n fF\"\nOdd = '123'\nNoHex = '0g'\n[[printer]]\nname = 'hall'\n";
  m_Folder.Put("home/registry.toml", edited);
  EXPECT_EQ(m_Registry.Read(u"Key", u"Number"), std::nullopt);
  EXPECT_EQ(m_Registry.Read(u"version", u"x"), std::nullopt);
  EXPECT_EQ(m_Registry.ReadBinary(u"Key", u"Owner"), (std::vector<std::uint8_t>{0, 0xAB, 0xFF}));
  for (const auto* odd : {u"Odd", u"NoHex"}) EXPECT_EQ(m_Registry.ReadBinary(u"Key", odd), std::nullopt);

  EXPECT_TRUE(m_Registry.Write(u"Key", u"Odd", u"123"));
  EXPECT_EQ(ContentOf(m_Registry.Path()), edited) << "nothing changed, so the comment should still be there";
  EXPECT_TRUE(m_Registry.Write(u"Key", u"Number", u"six"));
  EXPECT_EQ(m_Registry.Read(u"Key", u"Number"), u"six");
  for (const char* kept :
       {"version = 2", "since = 2026-05-31", "NoHex = \"0g\"", "[[printer]]\nname = \"hall\""})
    EXPECT_THAT(ContentOf(m_Registry.Path()), HasSubstr(kept));
  EXPECT_FALSE(m_Registry.Write(u"version", u"x", u"y"));
  EXPECT_TRUE(Contains(m_Registry.LastError(), u"version"));
}

TEST_F(RegistryTest, ADamagedFileIsLeftAlone) {
  const std::string damaged = "[Key]\nValue = 'x'\nValue = \n";
  const std::string deep = "a = " + std::string(5000, '[');
  for (const std::string& content : {damaged, deep, std::string("a = '\xFF'"), std::string("\0\1\2", 3)}) {
    m_Folder.Put("home/registry.toml", content);
    EXPECT_FALSE(m_Registry.Open(u"Key"));
    EXPECT_EQ(m_Registry.Read(u"Key", u"Value"), std::nullopt);
    EXPECT_FALSE(m_Registry.Write(u"Key", u"Value", u"y"));
    EXPECT_TRUE(Contains(m_Registry.LastError(), FromUtf8(m_Registry.Path().native())));
    EXPECT_EQ(Contains(m_Registry.LastError(), u"line 3"), content == damaged);
    EXPECT_EQ(ContentOf(m_Registry.Path()), content);
  }
}

TEST_F(RegistryTest, WhatCannotBeWrittenIsTold) {
  ASSERT_TRUE(m_Registry.Write(m_Key, u"TemplatePath", u"old"));
  m_Files.FailWrite(1);
  EXPECT_FALSE(m_Registry.Write(m_Key, u"TemplatePath", u"new"));
  EXPECT_TRUE(Contains(m_Registry.LastError(), u"No space left on device. What stood there still counts."));
  m_Files.FailCommit(1);
  EXPECT_FALSE(m_Registry.WriteBinary(m_Key, u"TemplatePath", {1}));
  EXPECT_EQ(m_Registry.Read(m_Key, u"TemplatePath"), u"old");
  EXPECT_EQ(m_Registry.LastError(), u"");

  for (const std::filesystem::path& wrong : {m_Registry.Path() / "below a file.toml", m_Folder / "home"}) {
    Registry registry(m_Files, wrong);
    EXPECT_FALSE(registry.Open(u"Key") || registry.Write(m_Key, u"TemplatePath", u"x")) << wrong;
    EXPECT_NE(registry.LastError(), u"");
  }
}

TEST(LastPlaceTest, IsReadAsWritten) {
  ScriptedMachine machine;
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), LastPlace{});
  ASSERT_TRUE(WriteLastPlace(machine.m_Registry, {1001, 1003, -1}));
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), (LastPlace{1001, 1003, -1}));
  machine.m_Folder.Put("registry.toml",
                       "['HKEY_CURRENT_USER\\Software\\Brindlecove\\Inspector']\nLastPlace = 'x 5'\n");
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), (LastPlace{-1, 5, -1}));
}

}  // namespace
}  // namespace inspector::device
