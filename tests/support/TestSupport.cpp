#include "support/TestSupport.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace inspector::tests {

using device::Buttons;

namespace {

// Takes the next answer that is queued under one of the two names.
template <typename Queues>
auto Take(Queues& queues, const Text& first, const Text& second) {
  using Value = typename Queues::mapped_type::value_type;
  for (const Text& name : {first, second}) {
    const auto queue = queues.find(name);
    if (queue == queues.end()) continue;
    std::optional<Value> answer(std::move(queue->second.front()));
    queue->second.pop_front();
    if (queue->second.empty()) queues.erase(queue);
    return answer;
  }
  return std::optional<Value>();
}

struct RecordingWindow : device::ProgressWindow {
  RecordingWindow(std::shared_ptr<ScriptedPrompts::Progress> record, const ScriptedPrompts::Conduct& conduct)
      : m_Record(std::move(record)), m_Conduct(conduct) {}
  ~RecordingWindow() override { m_Record->open = false; }

  void SetStatus(const Text& status) override {
    m_Record->statuses.push_back(status);
    m_Conduct.atStatus();
  }
  void SetDetail(const Text& detail) override { m_Record->details.push_back(detail); }
  void SetRange(int low, int high) override {
    std::tie(m_Record->low, m_Record->high) = std::pair(low, high);
  }
  void SetPosition(int position) override {
    m_Record->position = position;
    ++m_Record->steps;
  }
  void Step() override { SetPosition(m_Record->position + 1); }
  bool Cancelled() override {
    return m_Record->cancellable && m_Conduct.cancelAtStep && m_Record->steps >= *m_Conduct.cancelAtStep;
  }

  const std::shared_ptr<ScriptedPrompts::Progress> m_Record;
  const ScriptedPrompts::Conduct m_Conduct;
};

struct FaultyInput : device::InputFile {
  FaultyInput(FaultyFiles& disk, std::unique_ptr<InputFile> file) : m_Disk(disk), m_File(std::move(file)) {}
  std::int64_t Read(char* buffer, std::size_t size) override {
    return m_Disk.ReadFails() ? -1 : m_File->Read(buffer, size);
  }
  std::optional<std::uint64_t> Size() override { return m_File->Size(); }

  FaultyFiles& m_Disk;
  const std::unique_ptr<InputFile> m_File;
};

struct FaultyOutput : device::OutputFile {
  FaultyOutput(FaultyFiles& disk, std::unique_ptr<OutputFile> file) : m_Disk(disk), m_File(std::move(file)) {}
  bool Write(std::string_view bytes) override {
    m_Failed = m_Failed || m_Disk.WriteFails();
    return !m_Failed && m_File->Write(bytes);
  }
  bool Commit() override {
    m_Failed = m_Failed || m_Disk.CommitFails();
    return !m_Failed && m_File->Commit();
  }
  std::string Error() const override { return m_Failed ? "No space left on device" : m_File->Error(); }

  FaultyFiles& m_Disk;
  const std::unique_ptr<OutputFile> m_File;
  bool m_Failed = false;
};

}  // namespace

Text ScriptedPrompts::Progress::Told() const {
  Text told = title;
  for (const Text& status : statuses) told += u"|" + status;
  for (const int number : {low, high, position}) told += u"|" + Decimal(number);
  return told + (open ? u"|open" : u"");
}

ScriptedPrompts::~ScriptedPrompts() {
  for (const auto& [about, answers] : m_Answers) ADD_FAILURE() << "Never asked: " << ToUtf8(about);
  for (const auto& [about, answers] : m_Texts) ADD_FAILURE() << "Never asked: " << ToUtf8(about);
  EXPECT_TRUE(m_SavePaths.empty()) << "Never asked where to save";
  EXPECT_TRUE(m_OpenPaths.empty()) << "Never asked what to open";
  EXPECT_TRUE(m_Databases.empty()) << "Never asked for the databases";
}

std::vector<Text> ScriptedPrompts::Transcript() const {
  std::vector<Text> lines;
  for (const device::Message& each : m_Seen.messages) lines.push_back(each.title + u": " + each.text);
  return lines;
}

Answer ScriptedPrompts::Show(const device::Message& message) {
  m_Seen.messages.push_back(message);
  if (const auto answer = Take(m_Answers, message.text, message.title)) return *answer;
  if (message.buttons == Buttons::Ok) return Answer::Ok;
  ADD_FAILURE() << "Unexpected question: " << ToUtf8(message.title) << ": " << ToUtf8(message.text);
  return message.buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

std::optional<Text> ScriptedPrompts::AskText(const device::TextQuestion& question) {
  m_Seen.textQuestions.push_back(question);
  if (auto answer = Take(m_Texts, question.prompt, question.title)) return *std::move(answer);
  ADD_FAILURE() << "Unexpected question: " << ToUtf8(question.title) << ": " << ToUtf8(question.prompt);
  return std::nullopt;
}

std::optional<std::filesystem::path> ScriptedPrompts::AskSavePath(const device::SaveQuestion& question) {
  m_Seen.saveQuestions.push_back(question);
  return TakeAnswer(m_SavePaths, "where to save").value_or(std::nullopt);
}

std::optional<std::filesystem::path> ScriptedPrompts::AskOpenPath(const device::OpenQuestion& question) {
  m_Seen.openQuestions.push_back(question);
  return TakeAnswer(m_OpenPaths, "what to open").value_or(std::nullopt);
}

std::optional<device::DatabasePaths> ScriptedPrompts::AskDatabasePaths(const device::DatabasePaths& current) {
  m_Seen.databaseQuestions.push_back(current);
  return TakeAnswer(m_Databases, "where the databases are").value_or(std::nullopt);
}

std::unique_ptr<device::ProgressWindow> ScriptedPrompts::OpenProgress(const Text& title, bool cancellable) {
  const auto record = std::make_shared<Progress>();
  record->title = title;
  record->cancellable = cancellable;
  m_Seen.progressWindows.push_back(record);
  return std::make_unique<RecordingWindow>(record, m_Conduct);
}

TemporaryFolder::TemporaryFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "inspector-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) std::abort();  // nothing can be tested without a folder
  m_Path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_Path, ignored);
}

std::filesystem::path TemporaryFolder::Put(const std::filesystem::path& name,
                                           std::string_view content) const {
  std::filesystem::path path = m_Path / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  EXPECT_TRUE(out.flush().good()) << path;
  return path;
}

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << file;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

std::map<std::string, std::string> FilesBelow(const std::filesystem::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path().lexically_relative(folder)] = ContentOf(entry.path());
  return files;
}

pid_t RunUntilKilled(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  return child;
}

std::unique_ptr<device::InputFile> FaultyFiles::OpenForReading(const std::filesystem::path& path) {
  auto file = m_Host.OpenForReading(path);
  return file ? std::make_unique<FaultyInput>(*this, std::move(file)) : nullptr;
}

std::unique_ptr<device::OutputFile> FaultyFiles::Create(const std::filesystem::path& target) {
  return std::make_unique<FaultyOutput>(*this, m_Host.Create(target));
}

std::vector<Text> FaultyFiles::ListEntries(const std::filesystem::path& folder) {
  const auto listing = m_Listings.find(folder);
  return listing == m_Listings.end() ? m_Host.ListEntries(folder) : listing->second;
}

}  // namespace inspector::tests
