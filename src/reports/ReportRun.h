// How a report comes into being, whatever it says and in whatever format: how far, stop or not, and files
// that appear whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "device/Machine.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

enum class ReportResult { Written, Cancelled, Failed };

struct ReportOutcome {
  ReportResult result = ReportResult::Failed;
  std::filesystem::path file;  // set when written
  std::vector<Text> notes;     // for the person who asked for it: pictures that are not in it
};

// The bar, and the wish to stop.
class ReportProgress {
public:
  // `parts` is how often PartDone will be called.
  ReportProgress(device::Prompts& prompts, const Text& title, int parts);

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

// One writing of a report. Its file appears whole, by Finish. Without that, or cancelled, it leaves none, and
// what stood there before stays.
class ReportRun {
public:
  ReportRun(const device::Machine& machine, std::filesystem::path target, const Text& progressTitle,
            int parts);

  device::OutputFile& Output() { return *m_Output; }
  ReportProgress& Progress() { return m_Progress; }

  // A failure is told to the person here, with the file's name and what to do.
  ReportResult Finish();

private:
  device::Prompts& m_Prompts;
  const std::filesystem::path m_Target;
  const std::unique_ptr<device::OutputFile> m_Output;
  ReportProgress m_Progress;
};

}  // namespace inspector::reports
