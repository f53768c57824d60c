#include "reports/ReportRun.h"

#include <cerrno>
#include <system_error>

#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kMostNameBytes = 200;  // of the 255 that hosts allow; the staging file needs some too

bool IsForbidden(char16_t unit) {
  constexpr TextView kForbidden = u"\\/:*?\"<>|";
  return unit < u' ' || (unit >= 0x7F && unit <= 0x9F) || kForbidden.find(unit) != TextView::npos;
}

bool IsFirstOfPair(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

bool IsFolder(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path name = path.filename();
  return name.empty() || name == "." || name == ".." || std::filesystem::is_directory(path, error);
}

Text DescribeFailure(const std::filesystem::path& file, const std::string& error) {
  const bool isFull =
      error == std::generic_category().message(ENOSPC) || error == std::generic_category().message(EDQUOT);
  const TextView advice = IsFolder(file) ? u"Give the file a name in that folder"
                          : isFull       ? u"Free some space on the disk or choose another folder"
                                         : u"Choose another place";
  return device::Format(
      u"The report %s could not be written%s%s. %s, and make it again. Nothing was left half-written.",
      device::FromUtf8(file.native()), error.empty() ? u"" : u": ", device::FromUtf8(error), advice);
}

}  // namespace

ReportProgress::ReportProgress(device::Prompts& prompts, const Text& title, int parts)
    : m_Window(prompts.OpenProgress(title, true)) {
  if (m_Window != nullptr) m_Window->SetRange(0, parts);
}

bool ReportProgress::PartDone() {
  if (m_Window != nullptr) m_Window->Step();
  return !IsCancelled();
}

bool ReportProgress::IsCancelled() {
  m_Cancelled = m_Cancelled || (m_Window != nullptr && m_Window->Cancelled());
  return m_Cancelled;
}

Text ReportFileName(TextView prefix, TextView base, TextView suffix) {
  Text name(base);
  for (char16_t& unit : name) {
    if (IsForbidden(unit)) unit = u'_';
  }
  while (device::ToUtf8(name).size() > kMostNameBytes) {
    name.pop_back();
    if (!name.empty() && IsFirstOfPair(name.back())) name.pop_back();
  }
  return Text(prefix).append(name).append(suffix);
}

ReportRun::ReportRun(const device::Machine& machine, std::filesystem::path target, const Text& progressTitle,
                     int parts)
    : m_Prompts(machine.prompts),
      m_Target(std::move(target)),
      m_Output(machine.files.Create(m_Target)),
      m_Progress(machine.prompts, progressTitle, parts) {}

ReportResult ReportRun::Finish() {
  if (m_Progress.IsCancelled()) return ReportResult::Cancelled;
  if (m_Output->Commit()) return ReportResult::Written;
  device::ShowError(m_Prompts, DescribeFailure(m_Target, m_Output->Error()));
  return ReportResult::Failed;
}

}  // namespace inspector::reports
