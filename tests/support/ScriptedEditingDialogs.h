// An inspector whose answers to the editing screens' dialogs are known beforehand.
#pragma once

#include "editing/EditingDialogs.h"
#include "support/TestSupport.h"

namespace inspector::tests {

// An answer is taken by one question. A question that nobody expected fails the test and is cancelled, as do
// answers that are left over.
class ScriptedEditingDialogs : public editing::EditingDialogs {
public:
  ~ScriptedEditingDialogs() override {
    EXPECT_TRUE(m_Copies.empty()) << "Duplicate Category was not asked";
    EXPECT_TRUE(m_Sheets.empty()) << "Step Properties was not opened";
    EXPECT_TRUE(m_PickerEdits.empty()) << "the picker editor was not opened";
  }

  void QueueCopies(std::optional<CategoryCopies> answer) { m_Copies.push_back(std::move(answer)); }
  // `work` is what the inspector does on the sheet; it says whether the sheet is closed with OK.
  void QueueSheet(std::function<bool()> work) { m_Sheets.push_back(std::move(work)); }
  void QueuePickerEdit(std::function<void()> work) { m_PickerEdits.push_back(std::move(work)); }

  const std::vector<CategoryCopies>& CopiesSuggested() const { return m_CopiesSuggested; }
  // (step, tab) of each sheet, kTabOfOption where none was asked for.
  static constexpr int kTabOfOption = -1;
  const std::vector<std::pair<std::int32_t, int>>& SheetsOpened() const { return m_SheetsOpened; }
  const std::vector<Text>& PickersEdited() const { return m_PickersEdited; }

  std::optional<CategoryCopies> AskDuplicateCategory(const CategoryCopies& suggested) override {
    m_CopiesSuggested.push_back(suggested);
    return TakeAnswer(m_Copies, "Duplicate Category").value_or(std::nullopt);
  }
  bool OpenStepProperties(std::int32_t, std::int32_t stepID, std::optional<int> tab) override {
    m_SheetsOpened.emplace_back(stepID, tab.value_or(kTabOfOption));
    const auto work = TakeAnswer(m_Sheets, "Step Properties");
    return work && (*work)();
  }
  void OpenPickerEditor(const Text& pickerName) override {
    m_PickersEdited.push_back(pickerName);
    if (const auto work = TakeAnswer(m_PickerEdits, "the picker editor")) (*work)();
  }

private:
  std::deque<std::optional<CategoryCopies>> m_Copies;
  std::deque<std::function<bool()>> m_Sheets;
  std::deque<std::function<void()>> m_PickerEdits;
  std::vector<CategoryCopies> m_CopiesSuggested;
  std::vector<std::pair<std::int32_t, int>> m_SheetsOpened;
  std::vector<Text> m_PickersEdited;
};

}  // namespace inspector::tests
