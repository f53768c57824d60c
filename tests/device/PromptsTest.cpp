#include "device/Prompts.h"

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

using tests::ScriptedPrompts;

TEST(PromptsTest, EachHelperShowsItsBoxAndProceedsOnlyOnYesOrOk) {
  const std::tuple<bool (*)(Prompts&, const Text&), Text, Buttons, Answer, Answer> kCases[] = {
      {ConfirmCaution, u"Caution", Buttons::YesNo, Answer::Yes, Answer::No},
      {ConfirmWarning, u"Warning", Buttons::YesNo, Answer::Yes, Answer::No},
      {ConfirmUpdate, u"Update Required", Buttons::OkCancel, Answer::Ok, Answer::Cancel},
      {ConfirmDataAlert, u"Data Alert", Buttons::OkCancel, Answer::Ok, Answer::Cancel}};
  for (const auto& [ask, title, buttons, proceed, stop] : kCases) {
    SCOPED_TRACE(ToUtf8(title));
    ScriptedPrompts prompts;
    for (const Answer answer : {proceed, stop}) {
      prompts.Queue(u"Go on?", answer);
      EXPECT_EQ(ask(prompts, u"Go on?"), answer == proceed);
      const Message& message = prompts.Messages().back();
      EXPECT_EQ(std::tie(message.title, message.buttons), std::tie(title, buttons));
      EXPECT_EQ(message.icon, Icon::Exclamation);
    }
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
