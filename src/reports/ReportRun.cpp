#include "reports/ReportRun.h"

#include <algorithm>
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

bool IsFolder(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path name = path.filename();
  return name.empty() || name == "." || name == ".." || std::filesystem::is_directory(path, error);
}

Text Listed(const std::vector<std::filesystem::path>& files) {
  Text names;
  for (const std::filesystem::path& file : files)
    names += (names.empty() ? u"" : u", ") + device::FromUtf8(file.filename().native());
  return names;
}

Text DescribeFailure(const std::filesystem::path& file, const std::string& error, bool isWhole,
                     const std::vector<std::filesystem::path>& replaced) {
  const bool isFull =
      error == std::generic_category().message(ENOSPC) || error == std::generic_category().message(EDQUOT);
  const TextView advice = isFull ? u"Free some space on the disk or choose another folder"
                          : IsFolder(file) && isWhole  ? u"Give the file a name in that folder"
                          : IsFolder(file) && !isWhole ? u"Move it away or choose another folder"
                                                       : u"Choose another place";
  return device::Format(
      u"%s could not be written%s%s. %s, and make the report again. %s", device::FromUtf8(file.native()),
      error.empty() ? u"" : u": ", device::FromUtf8(error), advice,
      replaced.empty() ? Text(u"Nothing was left half-written.")
                       : u"Until then these files are the new ones already: " + Listed(replaced) + u".");
}

struct Copied {
  // What the last read gave: 0 at the end, below for a failure, above when no room was left.
  std::int64_t last = 0;
  std::uint64_t bytes = 0;
};

Copied CopyBlocks(device::InputFile& source, device::OutputFile& target) {
  std::vector<char> block(kCopyBlock);
  Copied copied;
  do {
    copied.last = source.Read(block.data(), block.size());
    copied.bytes += static_cast<std::uint64_t>(std::max<std::int64_t>(copied.last, 0));
  } while (copied.last > 0 && target.Write({block.data(), static_cast<std::size_t>(copied.last)}));
  return copied;
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
  while (device::ToUtf8(name).size() > kMostNameBytes)
    name.resize(device::Shortened(name, name.size() - 1).size());
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
  m_WhenFailed();
}

void ReportRun::WhenDone(std::function<void()> written, std::function<void()> failed) {
  m_WhenWritten = std::move(written);
  m_WhenFailed = std::move(failed);
}

device::OutputFile& ReportRun::Create(const std::filesystem::path& file) {
  m_Parts.push_back({file, m_Machine.files.Create(file)});
  return *m_Parts.back().output;
}

std::error_code ReportRun::MakeFolder(const std::filesystem::path& folder) {
  const std::error_code error = m_Machine.files.MakeFolder(folder);
  if (!error) m_MadeFolders.push_back(folder);
  return error;
}

bool ReportRun::Copy(device::InputFile& source, std::uint64_t size, const std::filesystem::path& file) {
  const auto output = m_Machine.files.Create(file);
  const auto [count, copied] = CopyBlocks(source, *output);
  if (count < 0 || (count == 0 && copied != size)) return false;
  if (count == 0 && output->Commit()) {
    m_NewFiles.push_back(file);
  } else if (!m_CopyFailure) {
    m_CopyFailure.emplace(file, output->Error());
  }
  return true;
}

ReportResult ReportRun::TellFailure(const std::filesystem::path& file, const std::string& error) {
  device::ShowError(m_Machine.prompts, DescribeFailure(file, error, file == m_Target.path, m_Replaced));
  return ReportResult::Failed;
}

ReportResult ReportRun::Finish() {
  if (m_Progress.IsCancelled()) return ReportResult::Cancelled;
  if (m_IsRefused) return ReportResult::Failed;
  if (m_CopyFailure) return TellFailure(m_CopyFailure->first, m_CopyFailure->second);
  // What can be known to fail does so before the first file has appeared.
  for (const Part& part : m_Parts)
    if (!part.output->Error().empty()) return TellFailure(part.file, part.output->Error());
  for (std::size_t n = 0; n < m_Parts.size(); ++n) {
    Part& part = m_Parts[n];
    part.isNew = !m_Machine.files.Exists(part.file);
    // The last one has none after it that could fail.
    if (n + 1 < m_Parts.size() && !part.isNew) part.former = StageFormer(part.file);
  }
  for (std::size_t n = 0; n < m_Parts.size(); ++n) {
    if (m_Parts[n].output->Commit()) continue;
    PutBack(n);
    return TellFailure(m_Parts[n].file, m_Parts[n].output->Error());
  }
  m_NewFiles.clear();
  m_MadeFolders.clear();
  m_WhenFailed = [] {};
  m_WhenWritten();
  return ReportResult::Written;
}

std::unique_ptr<device::OutputFile> ReportRun::StageFormer(const std::filesystem::path& file) {
  const auto former = m_Machine.files.OpenForReading(file);
  if (former == nullptr) return nullptr;
  auto output = m_Machine.files.Create(file);
  return CopyBlocks(*former, *output).last == 0 ? std::move(output) : nullptr;
}

// The first `count` parts have appeared.
void ReportRun::PutBack(std::size_t count) {
  for (std::size_t n = 0; n < count; ++n) {
    Part& part = m_Parts[n];
    const bool isBack = part.isNew || (part.former != nullptr && part.former->Commit());
    if (!isBack) m_Replaced.push_back(part.file);
  }
  // What a page shows that could not be put back must stay; else the new ones go with the rest.
  std::vector<std::filesystem::path>& appeared = m_Replaced.empty() ? m_NewFiles : m_Replaced;
  for (std::size_t n = 0; n < count; ++n)
    if (m_Parts[n].isNew) appeared.push_back(m_Parts[n].file);
  if (m_Replaced.empty()) return;
  m_NewFiles.clear();
  m_WhenFailed = [] {};
}

}  // namespace inspector::reports
