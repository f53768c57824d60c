#include "support/TestSupport.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace inspector::tests {
namespace {

using device::Answer;
using device::Text;

TEST(ScriptedPromptsTest, AnswersInTurnByTextBeforeTitle) {
  ScriptedPrompts prompts;
  prompts.Queue(u"Warning", Answer::No);
  prompts.Queue(u"Delete?", Answer::Yes);
  EXPECT_TRUE(device::ConfirmWarning(prompts, u"Delete?"));
  EXPECT_FALSE(device::ConfirmWarning(prompts, u"Delete?"));
  prompts.QueueText(u"Name", Text(u"Roof"));
  prompts.QueueText(u"Name", std::nullopt);
  EXPECT_EQ(prompts.AskText({u"Name", u"", u""}), u"Roof");
  EXPECT_EQ(prompts.AskText({u"Name", u"", u""}), std::nullopt);
  prompts.QueueSavePath("/x/report.rtf");
  EXPECT_EQ(prompts.AskSavePath({}), "/x/report.rtf");
}

TEST(ScriptedPromptsTest, WhatNobodyExpectedFailsTheTest) {
  ScriptedPrompts prompts;
  EXPECT_NONFATAL_FAILURE(EXPECT_FALSE(device::ConfirmCaution(prompts, u"Sure?")), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskText({u"Name", u"", u""}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskSavePath({}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(prompts.AskDatabasePaths({}), "Unexpected question");
  EXPECT_NONFATAL_FAILURE(ScriptedPrompts().Queue(u"Sure?", Answer::Yes), "Never asked");
}

TEST(ScriptedPromptsTest, ProgressIsRecordedAndCancelled) {
  ScriptedPrompts prompts;
  prompts.CancelAtStep(2);
  auto window = prompts.OpenProgress(u"Exporting", true);
  window->SetStatus(u"Roof");
  window->Step();
  EXPECT_FALSE(window->Cancelled());
  window->Step();
  EXPECT_TRUE(window->Cancelled());
  EXPECT_TRUE(prompts.ProgressWindows()[0]->open);
  window.reset();
  EXPECT_FALSE(prompts.ProgressWindows()[0]->open);
  EXPECT_EQ(prompts.ProgressWindows()[0]->statuses, (std::vector<Text>{u"Roof"}));
  EXPECT_EQ(prompts.ProgressWindows()[0]->position, 2);
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
  files.List(folder.Path(), {u"z", u"a"});
  EXPECT_EQ(files.ListEntries(folder.Path()), (std::vector<Text>{u"z", u"a"}));
}

}  // namespace
}  // namespace inspector::tests
