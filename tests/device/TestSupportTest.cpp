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
  EXPECT_NONFATAL_FAILURE(prompts.AskSavePath({}), "where to save");
  EXPECT_NONFATAL_FAILURE(prompts.AskDatabasePaths({}), "where the databases are");
  EXPECT_NONFATAL_FAILURE(ScriptedPrompts().Queue(u"Sure?", Answer::Yes), "Never asked");
}

}  // namespace
}  // namespace inspector::tests
