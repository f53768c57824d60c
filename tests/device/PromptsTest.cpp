#include "device/Prompts.h"

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

using tests::ScriptedPrompts;

TEST(PromptsTest, EachHelperShowsItsBoxAndProceedsOnlyOnYesOrOk) {
  struct Case {
    bool (*ask)(Prompts&, const Text&);
    const char16_t* title;
    Buttons buttons;
    Answer proceed;
    Answer stop;
  };
  const Case cases[] = {
      {ConfirmCaution, u"Caution", Buttons::YesNo, Answer::Yes, Answer::No},
      {ConfirmWarning, u"Warning", Buttons::YesNo, Answer::Yes, Answer::No},
      {ConfirmUpdate, u"Update Required", Buttons::OkCancel, Answer::Ok, Answer::Cancel},
      {ConfirmDataAlert, u"Data Alert", Buttons::OkCancel, Answer::Ok, Answer::Cancel},
  };
  for (const Case& c : cases) {
    ScriptedPrompts prompts;
    prompts.Queue(u"Go on?", c.proceed);
    prompts.Queue(u"Go on?", c.stop);
    EXPECT_TRUE(c.ask(prompts, u"Go on?"));
    EXPECT_FALSE(c.ask(prompts, u"Go on?"));
    ASSERT_EQ(prompts.Messages().size(), 2u);
    EXPECT_EQ(prompts.Messages()[0].title, c.title);
    EXPECT_EQ(prompts.Messages()[0].buttons, c.buttons);
    EXPECT_EQ(prompts.Messages()[0].icon, Icon::Exclamation);
  }

  ScriptedPrompts prompts;
  Alert(prompts, u"Done!");
  ShowError(prompts, u"The disk is full.");
  EXPECT_EQ(prompts.Transcript(), (std::vector<Text>{u"Alert: Done!", u"Error: The disk is full."}));
  EXPECT_EQ(prompts.Messages()[0].icon, Icon::Information);
  EXPECT_EQ(prompts.Messages()[1].icon, Icon::Hand);
}

}  // namespace
}  // namespace inspector::device
