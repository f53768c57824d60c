// How a report comes into being, whatever it says and in whatever format: where to, how far, stop or not, and
// a file that appears whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
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

// A report that failed is told to the person here, with the file's name and what to do. It leaves no file,
// and neither does a cancelled one; what stood there before stays.
using WriteReport = std::function<void(device::OutputFile&, ReportProgress&)>;
// `own` are files of the program, none of which a report replaces.
ReportOutcome RunReport(const device::Machine& machine, const std::optional<std::filesystem::path>& target,
                        const std::vector<std::filesystem::path>& own, const device::SaveQuestion& question,
                        int parts, const WriteReport& write);

}  // namespace inspector::reports
