#include "support/TestSupport.h"

#include <gtest/gtest-spi.h>

namespace inspector::tests {
namespace {

using device::Answer;
using device::Text;

TEST(ScriptedPromptsTest, WhatNobodyExpectedFailsTheTest) {
  ScriptedPrompts prompts;
  EXPECT_NONFATAL_FAILURE(EXPECT_FALSE(device::ConfirmCaution(prompts, u"Sure?")), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskText({u"Name", u"", u""}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskSavePath({}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskDatabasePaths({}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(ScriptedPrompts().Queue(u"Sure?", Answer::Yes), "Never asked");
}

TEST(FaultyFilesTest, TheChosenWriteAndCommitFail) {
  TemporaryFolder folder;
  FaultyFiles files;
  files.FailWrite(2);
  auto first = files.Create(folder / "first");
  EXPECT_TRUE(first->Write("a"));
  EXPECT_FALSE(first->Write("b"));
  EXPECT_FALSE(first->Write("c"));
  EXPECT_FALSE(first->Commit());
  EXPECT_EQ(first->Error(), "No space left on device");
  files.FailCommit(1);
  auto second = files.Create(folder / "second");
  EXPECT_TRUE(second->Write("a"));
  EXPECT_FALSE(second->Commit());
  auto third = files.Create(folder / "third");
  EXPECT_TRUE(third->Write("a") && third->Commit());
  first.reset();
  second.reset();
  EXPECT_EQ(files.ListEntries(folder.Path()), (std::vector<Text>{u"third"}));
}

}  // namespace
}  // namespace inspector::tests
