// What tests put in the place of a person, a clock and a disk.
#pragma once

#include <gmock/gmock.h>
#include <sys/types.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "device/Machine.h"
#include "device/Text.h"

namespace inspector::tests {

using device::Answer;
using device::Decimal;
using device::FromUtf8;
using device::Text;
using device::TextView;
using device::ToUtf8;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

// The next answer of a scripted person. A question that nobody expected fails the test and gets none.
template <typename Value>
std::optional<Value> TakeAnswer(std::deque<Value>& queue, const char* about) {
  if (queue.empty()) {
    ADD_FAILURE() << about << " was not expected";
    return std::nullopt;
  }
  Value value = std::move(queue.front());
  queue.pop_front();
  return value;
}

// Lists as one text, so that an expectation is one line and a failure shows all that is there.
// What `show` makes of each entry.
template <typename List, typename Show>
Text Joined(const List& list, Show show, const char16_t* between = u"|") {
  Text joined;
  for (bool isFirst = true; const auto& entry : list) {
    if (!std::exchange(isFirst, false)) joined += between;
    joined += show(entry);
  }
  return joined;
}
inline Text Joined(const std::vector<Text>& list, const char16_t* between = u"|") {
  return Joined(
      list, [](const Text& entry) { return entry; }, between);
}

// Of each row: what `make` makes of the first is the second. A failure shows the first.
template <typename Given, typename Expected, typename Make>
void ExpectEach(const std::vector<std::pair<Given, Expected>>& rows, Make make) {
  for (const auto& [given, expected] : rows)
    EXPECT_EQ(make(given), expected) << testing::PrintToString(given);
}

// A person whose answers are known beforehand. Answers are queued per question: `about` is the text or the
// title of a message, or the prompt or title of a text question. A question without an answer fails the test
// and is answered No, Cancel or nothing; answers that nobody asked for fail it when the prompts go. A box
// that only has OK needs no answer and is recorded.
class ScriptedPrompts : public device::Prompts {
public:
  // What a progress window was told. It stays readable after the window is gone.
  struct Progress {
    Text title;
    bool cancellable = false;
    std::vector<Text> statuses;
    std::vector<Text> details;
    int low = 0;
    int high = 0;
    int position = 0;
    int steps = 0;  // calls of Step and SetPosition
    bool open = true;

    // "title|status|status|low|high|position", "|open" at the end while the window is.
    Text Told() const;
  };

  // Towards progress windows.
  struct Conduct {
    std::optional<int> cancelAtStep;
    std::function<void()> atStatus = [] {};
  };

  ~ScriptedPrompts() override;

  void Queue(const Text& about, Answer answer) { m_Answers[about].push_back(answer); }
  void QueueText(const Text& about, const std::optional<Text>& answer) { m_Texts[about].push_back(answer); }
  void QueueSavePath(const std::optional<std::filesystem::path>& answer) { m_SavePaths.push_back(answer); }
  void QueueOpenPath(const std::optional<std::filesystem::path>& answer) { m_OpenPaths.push_back(answer); }
  void QueueDatabasePaths(const std::optional<device::DatabasePaths>& answer) {
    m_Databases.push_back(answer);
  }
  // The next cancellable windows count as cancelled from this step on (0: at once).
  void CancelAtStep(int step) { m_Conduct.cancelAtStep = step; }
  // Called whenever a progress window is told its status.
  void AtStatus(std::function<void()> call) { m_Conduct.atStatus = std::move(call); }

  const std::vector<device::Message>& Messages() const { return m_Seen.messages; }
  // "Title: text" of each message, in the order in which they came.
  std::vector<Text> Transcript() const;
  // The last of them in UTF-8; empty when none came.
  std::string Last() const { return m_Seen.messages.empty() ? "" : ToUtf8(Transcript().back()); }
  const std::vector<device::TextQuestion>& TextQuestions() const { return m_Seen.textQuestions; }
  const std::vector<device::SaveQuestion>& SaveQuestions() const { return m_Seen.saveQuestions; }
  const std::vector<device::OpenQuestion>& OpenQuestions() const { return m_Seen.openQuestions; }
  const std::vector<device::DatabasePaths>& DatabaseQuestions() const { return m_Seen.databaseQuestions; }
  const std::vector<std::shared_ptr<Progress>>& ProgressWindows() const { return m_Seen.progressWindows; }
  // Forgets what was recorded; queued answers stay.
  void Forget() { m_Seen = {}; }

  Answer Show(const device::Message& message) override;
  std::optional<Text> AskText(const device::TextQuestion& question) override;
  std::optional<std::filesystem::path> AskSavePath(const device::SaveQuestion& question) override;
  std::optional<std::filesystem::path> AskOpenPath(const device::OpenQuestion& question) override;
  std::optional<device::DatabasePaths> AskDatabasePaths(const device::DatabasePaths& current) override;
  std::unique_ptr<device::ProgressWindow> OpenProgress(const Text& title, bool cancellable) override;

private:
  std::map<Text, std::deque<Answer>> m_Answers;
  std::map<Text, std::deque<std::optional<Text>>> m_Texts;
  std::deque<std::optional<std::filesystem::path>> m_SavePaths;
  std::deque<std::optional<std::filesystem::path>> m_OpenPaths;
  std::deque<std::optional<device::DatabasePaths>> m_Databases;
  Conduct m_Conduct;
  struct {
    std::vector<device::Message> messages;
    std::vector<device::TextQuestion> textQuestions;
    std::vector<device::SaveQuestion> saveQuestions;
    std::vector<device::OpenQuestion> openQuestions;
    std::vector<device::DatabasePaths> databaseQuestions;
    std::vector<std::shared_ptr<Progress>> progressWindows;
  } m_Seen;
};

// A new empty folder, removed with all it holds at the end.
class TemporaryFolder {
public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return m_Path; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return m_Path / name; }
  // Makes missing folders above `name`; returns the whole path.
  std::filesystem::path Put(const std::filesystem::path& name, std::string_view content = "") const;

private:
  std::filesystem::path m_Path;
};

// The whole content of a file; fails the test when there is none.
std::string ContentOf(const std::filesystem::path& file);

// The content of every file in and below a folder, by its path from there.
std::map<std::string, std::string> FilesBelow(const std::filesystem::path& folder);

// Runs `work` in a process of its own, which is to kill itself. Returns its id.
pid_t RunUntilKilled(const std::function<void()>& work);

// Stands at 2026-05-31 14:05 until it is set.
class FixedClock : public device::Clock {
public:
  void Set(const device::CalendarTime& time) { m_Time = time; }
  device::CalendarTime Now() override { return m_Time; }

private:
  device::CalendarTime m_Time = device::MakeCalendarTime(2026, 5, 31, 14, 5);
};

// The host's disk, except where told otherwise. Must outlive the files it hands out.
class FaultyFiles : public device::Files {
public:
  // The n-th Write (Commit, Read) from now on fails, counted from 1 over all files; those after it work again
  // on other files. A file whose Write failed cannot be committed, as on a full disk.
  void FailWrite(int n) { m_WritesUntilFault = n; }
  void FailCommit(int n) { m_CommitsUntilFault = n; }
  void FailRead(int n) { m_ReadsUntilFault = n; }
  // The next folder cannot be made.
  void FailFolder(std::errc error) { m_FolderError = make_error_code(error); }
  // Lists `folder` as given, whatever it holds.
  void List(const std::filesystem::path& folder, std::vector<Text> entries) {
    m_Listings[folder] = std::move(entries);
  }

  // Called by the files that were handed out. True when this is the one that fails.
  bool WriteFails() { return CountDown(m_WritesUntilFault); }
  bool CommitFails() { return CountDown(m_CommitsUntilFault); }
  bool ReadFails() { return CountDown(m_ReadsUntilFault); }

  std::unique_ptr<device::InputFile> OpenForReading(const std::filesystem::path& path) override;
  std::unique_ptr<device::OutputFile> Create(const std::filesystem::path& target) override;
  std::unique_ptr<device::AppendFile> OpenForAppending(const std::filesystem::path& path) override {
    return m_Host.OpenForAppending(path);
  }
  std::vector<Text> ListEntries(const std::filesystem::path& folder) override;
  bool Exists(const std::filesystem::path& path) override { return m_Host.Exists(path); }
  std::error_code MakeFolder(const std::filesystem::path& folder) override {
    return m_FolderError ? std::exchange(m_FolderError, {}) : m_Host.MakeFolder(folder);
  }
  void Remove(const std::filesystem::path& path) override { m_Host.Remove(path); }

private:
  static bool CountDown(int& remaining) { return remaining > 0 && --remaining == 0; }

  device::HostFiles m_Host;
  int m_WritesUntilFault = 0;
  int m_CommitsUntilFault = 0;
  int m_ReadsUntilFault = 0;
  std::error_code m_FolderError;
  std::map<std::filesystem::path, std::vector<Text>> m_Listings;
};

// A machine in a temporary folder, with scripted prompts, a fixed clock and a disk that fails on demand. A
// fixture derives from it, so that what it builds on the machine goes first.
struct ScriptedMachine {
  TemporaryFolder m_Folder;
  ScriptedPrompts m_Prompts;
  FixedClock m_Clock;
  FaultyFiles m_Files;
  device::DevicePaths m_Paths{m_Folder.Path()};
  device::Registry m_Registry{m_Files, m_Folder / "registry.toml"};
  device::FaultLog m_Faults{m_Prompts, m_Clock, m_Folder / "faults.log"};
  device::Machine m_Machine{m_Paths, m_Files, m_Registry, m_Prompts, m_Clock, m_Faults};
};

}  // namespace inspector::tests

namespace inspector {
using namespace tests;  // in the tests of every folder
}
