#include "device/LastPlace.h"

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

TEST(LastPlaceTest, IsReadAsWritten) {
  tests::ScriptedMachine machine;
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), LastPlace{});
  ASSERT_TRUE(WriteLastPlace(machine.m_Registry, {1001, 1003, -1}));
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), (LastPlace{1001, 1003, -1}));
  machine.m_Folder.Put(
      "registry.toml",
      "[\"HKEY_CURRENT_USER\\\\Software\\\\Brindlecove\\\\Inspector\"]\nLastPlace = \"x 5\"\n");
  EXPECT_EQ(ReadLastPlace(machine.m_Registry), (LastPlace{-1, 5, -1}));
}

}  // namespace
}  // namespace inspector::device
