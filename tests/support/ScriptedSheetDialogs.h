// An inspector whose answers to the dialogs of "Step Properties" are known beforehand.
#pragma once

#include "editing/SheetDialogs.h"
#include "support/TestSupport.h"

namespace inspector::tests {

// An answer is taken by one question. A question that nobody expected fails the test and is cancelled, as do
// answers that are left over.
class ScriptedSheetDialogs : public editing::SheetDialogs {
public:
  ~ScriptedSheetDialogs() override {
    EXPECT_TRUE(m_Replacements.empty()) << "a placeholder was not asked for";
    EXPECT_TRUE(m_Pickers.empty()) << "the comment picker was not opened";
  }

  void QueueReplacement(std::optional<Text> answer) { m_Replacements.push_back(std::move(answer)); }
  // `work` is what the inspector does in the picker; it says whether the dialog is closed with OK.
  void QueuePicker(std::function<bool(editing::CommentPicker&)> work) {
    m_Pickers.push_back(std::move(work));
  }

  const std::vector<editing::ReplacementQuestion>& Questions() const { return m_Questions; }

  std::optional<Text> AskReplacement(const editing::ReplacementQuestion& question) override {
    m_Questions.push_back(question);
    return TakeAnswer(m_Replacements, "a placeholder").value_or(std::nullopt);
  }
  bool PickComments(editing::CommentPicker& picker) override {
    const auto work = TakeAnswer(m_Pickers, "the comment picker");
    return work && (*work)(picker);
  }
  std::optional<std::filesystem::path> AskPictureFile(const std::filesystem::path&, const Text&) override {
    ADD_FAILURE() << "a picture file was not expected";
    return std::nullopt;
  }

private:
  std::deque<std::optional<Text>> m_Replacements;
  std::deque<std::function<bool(editing::CommentPicker&)>> m_Pickers;
  std::vector<editing::ReplacementQuestion> m_Questions;
};

}  // namespace inspector::tests
