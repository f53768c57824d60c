#include "reports/ReportRun.h"

#include <cerrno>
#include <system_error>

#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kCopyBlock = 256 * 1024;
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

Text DescribeFailure(const std::filesystem::path& file, const std::string& error, bool isWhole,
                     bool isHalfReplaced) {
  const bool isFull =
      error == std::generic_category().message(ENOSPC) || error == std::generic_category().message(EDQUOT);
  const TextView advice = isFull ? u"Free some space on the disk or choose another folder"
                          : IsFolder(file) && isWhole  ? u"Give the file a name in that folder"
                          : IsFolder(file) && !isWhole ? u"Move it away or choose another folder"
                                                       : u"Choose another place";
  return device::Format(u"The report %s could not be written%s%s. %s, and make it again. %s",
                        device::FromUtf8(file.native()), error.empty() ? u"" : u": ", device::FromUtf8(error),
                        advice,
                        isHalfReplaced ? u"Until then a part of the report that was there is the new one."
                                       : u"Nothing was left half-written.");
}

}  // namespace

ReportProgress::ReportProgress(device::Prompts& prompts, const Text& title, int parts)
    : m_Window(prompts.OpenProgress(title, true)) {
  if (m_Window != nullptr) m_Window->SetRange(0, parts);
}

void ReportProgress::SetStatus(const Text& status) {
  if (m_Window != nullptr) m_Window->SetStatus(status);
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

ReportRun::ReportRun(const device::Machine& machine, ReportTarget target, const Text& progressTitle,
                     int parts)
    : m_Machine(machine), m_Target(std::move(target)), m_Progress(machine.prompts, progressTitle, parts) {}

ReportRun::~ReportRun() {
  m_Parts.clear();
  for (const std::filesystem::path& file : m_NewFiles) m_Machine.files.Remove(file);
  for (auto folder = m_MadeFolders.rbegin(); folder != m_MadeFolders.rend(); ++folder)
    m_Machine.files.Remove(*folder);
}

device::OutputFile& ReportRun::Create(const std::filesystem::path& file) {
  return *m_Parts.emplace_back(file, m_Machine.files.Create(file)).output;
}

std::error_code ReportRun::MakeFolder(const std::filesystem::path& folder) {
  const std::error_code error = m_Machine.files.MakeFolder(folder);
  if (!error) m_MadeFolders.push_back(folder);
  return error;
}

bool ReportRun::Copy(device::InputFile& source, const std::filesystem::path& file) {
  const auto output = m_Machine.files.Create(file);
  std::vector<char> block(kCopyBlock);
  std::int64_t count = 0;
  do {
    count = source.Read(block.data(), block.size());
  } while (count > 0 && output->Write({block.data(), static_cast<std::size_t>(count)}));
  if (count < 0) return false;
  if (count == 0 && output->Commit()) {
    m_NewFiles.push_back(file);
  } else if (!m_CopyFailure) {
    m_CopyFailure.emplace(file, output->Error());
  }
  return true;
}

ReportResult ReportRun::TellFailure(const std::filesystem::path& file, const std::string& error) {
  device::ShowError(m_Machine.prompts, DescribeFailure(file, error, file == m_Target.path, m_IsHalfReplaced));
  return ReportResult::Failed;
}

ReportResult ReportRun::Finish() {
  if (m_Progress.IsCancelled()) return ReportResult::Cancelled;
  if (m_IsRefused) return ReportResult::Failed;
  if (m_CopyFailure) return TellFailure(m_CopyFailure->first, m_CopyFailure->second);
  // What can be known to fail does so before the first file has appeared.
  for (const Part& part : m_Parts)
    if (!part.output->Error().empty()) return TellFailure(part.file, part.output->Error());
  for (const Part& part : m_Parts) {
    const bool isNew = !m_Machine.files.Exists(part.file);
    if (!part.output->Commit()) return TellFailure(part.file, part.output->Error());
    // Once one was replaced, what it names must stay.
    if (!isNew) {
      m_NewFiles.clear();
      m_IsHalfReplaced = true;
    }
    if (isNew && !m_IsHalfReplaced) m_NewFiles.push_back(part.file);
  }
  for (const std::filesystem::path& file : m_OldFiles) m_Machine.files.Remove(file);
  m_NewFiles.clear();
  m_MadeFolders.clear();
  return ReportResult::Written;
}

}  // namespace inspector::reports
