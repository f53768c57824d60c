// How a report comes into being, whatever it says and in whatever format: its progress, how it is
// cancelled, and files that appear whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "device/Machine.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

enum class ReportResult { Written, Cancelled, Failed };

struct ReportOutcome {
  ReportResult result = ReportResult::Failed;
  std::filesystem::path file;  // set when written; the folder where a report is one
  std::vector<Text> notes;     // for the person who asked for it: pictures that are not in it
};

// The bar, and the wish to stop.
class ReportProgress {
public:
  // `parts` is how often PartDone will be called.
  ReportProgress(device::Prompts& prompts, const Text& title, int parts);

  void SetStatus(const Text& status);
  // False: stop writing.
  bool StepDone() { return !IsCancelled(); }
  bool PartDone();
  bool IsCancelled();

private:
  std::unique_ptr<device::ProgressWindow> m_Window;
  bool m_Cancelled = false;
};

// "\ / : * ? " < > |" and control characters become "_"; what is too long for a file's name is cut. A full
// stop or blank at the end of `base` stays: `suffix`, the extension with its stop, follows it.
Text ReportFileName(TextView prefix, TextView base, TextView suffix);

// Where a report goes.
struct ReportTarget {
  std::filesystem::path path;  // a file, or a folder
  bool isSuggested = false;    // by the program; nobody has chosen it
  bool mayReplace = false;     // a person has said that what is there may go; not another inspection's pages
};

// One writing of a report. Its files appear by Finish, one after the other, once all of them are whole.
// Without that, cancelled, or when one of them cannot appear, it leaves none, and what stood there before
// stays or is put back; where the disk does not allow even that, the person is told which files are the new
// ones.
class ReportRun {
public:
  ReportRun(const device::Machine& machine, ReportTarget target, const Text& progressTitle, int parts);
  ~ReportRun();
  ReportRun(const ReportRun&) = delete;
  ReportRun& operator=(const ReportRun&) = delete;

  const device::Machine& GetMachine() const { return m_Machine; }
  const ReportTarget& Target() const { return m_Target; }
  ReportProgress& Progress() { return m_Progress; }

  // The report's only file, at the target.
  device::OutputFile& Create() { return Create(m_Target.path); }
  // One of several. They appear in the order in which they were created.
  device::OutputFile& Create(const std::filesystem::path& file);
  // A file that is taken as it is and appears at once; there must be none of its name. False when the
  // person wishes to stop, or when `source` does not hold `size` bytes up to its end: then there is no copy.
  // What the disk refuses is told by Finish; HasFailed then.
  bool Copy(device::InputFile& source, std::uint64_t size, const std::filesystem::path& file);
  bool HasFailed() const { return m_CopyFailure.has_value(); }
  // What is left to do once all files are there; and what when they are not.
  void WhenDone(std::function<void()> written, std::function<void()> failed);
  // Makes a folder, whose parent is there. It is removed again when the report is not written.
  std::error_code MakeFolder(const std::filesystem::path& folder);
  // Nothing is to be written; the person knows why.
  void Refuse() { m_IsRefused = true; }

  // A failure is told to the person here, with the file's name and what to do.
  ReportResult Finish();

private:
  struct Part {
    std::filesystem::path file;
    std::unique_ptr<device::OutputFile> output;
    std::unique_ptr<device::OutputFile> former{};  // what stood there, ready to be put back
    bool isNew = true;                             // nothing stood there
  };
  // What stands there, ready to be put back; nothing when it cannot be read.
  std::unique_ptr<device::OutputFile> StageFormer(const std::filesystem::path& file);
  void PutBack(std::size_t count);
  ReportResult TellFailure(const std::filesystem::path& file, const std::string& error);

  const device::Machine m_Machine;
  const ReportTarget m_Target;
  ReportProgress m_Progress;
  std::vector<Part> m_Parts;
  std::vector<std::filesystem::path> m_NewFiles;  // that are removed unless all are there
  std::vector<std::filesystem::path> m_MadeFolders;
  std::optional<std::pair<std::filesystem::path, std::string>> m_CopyFailure;
  std::vector<std::filesystem::path> m_Replaced;  // files that stay, because not all could be put back
  std::function<void()> m_WhenWritten = [] {};
  std::function<void()> m_WhenFailed = [] {};
  bool m_IsRefused = false;
};

}  // namespace inspector::reports
