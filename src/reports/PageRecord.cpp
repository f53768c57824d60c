#include "reports/PageRecord.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "device/Format.h"

namespace inspector::reports {
namespace {

const Text kKey = u"Pages";

std::filesystem::path Canonical(const std::filesystem::path& folder) {
  std::error_code error;
  auto canonical = std::filesystem::weakly_canonical(folder, error);
  return error ? folder : canonical;
}

// Names in the record compare without regard to case, and some signs are refused in them; folders of the host
// are told apart by every byte.
Text NameOf(const std::filesystem::path& folder) {
  constexpr TextView kPlain = u"abcdefghijklmnopqrstuvwxyz0123456789/-_. ";
  Text name;
  for (const char letter : folder.native()) {
    const auto byte = static_cast<unsigned char>(letter);
    if (kPlain.find(byte) != TextView::npos) {
      name += static_cast<char16_t>(byte);
    } else {
      name += device::Format(u"%%%02x", byte);
    }
  }
  return name;
}

// "1204 picture1.jpg"; a name that leads elsewhere is none of a copy.
void AddCopy(const std::string& entry, PageRecord::Copies& copies) {
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), size);
  if (error != std::errc() || end == entry.data() + entry.size() || *end != ' ') return;
  std::string name = entry.substr(static_cast<std::size_t>(end - entry.data()) + 1);
  if (!name.empty() && name.find('/') == std::string::npos) copies.emplace(std::move(name), size);
}

}  // namespace

PageRecord::PageRecord(const device::Machine& machine, const std::filesystem::path& folder)
    : m_Files(machine.files),
      m_Folder(folder),
      m_Name(NameOf(Canonical(folder))),
      m_Store(machine.files, machine.registry.Path().parent_path() / kFile) {
  std::vector<Text> lines = device::Split(m_Store.Read(kKey, m_Name).value_or(u""), u'\n');
  m_Inspection = lines.front();
  for (std::size_t n = 1; n < lines.size(); ++n) AddCopy(device::ToUtf8(lines[n]), m_Pictures);
}

bool PageRecord::IsOwn(const std::string& name) const {
  const auto copy = m_Pictures.find(name);
  if (copy == m_Pictures.end()) return false;
  const auto file = m_Files.OpenForReading(m_Folder / name);
  return file != nullptr && file->Size() == copy->second;
}

bool PageRecord::Keep(const Text& inspection, const Copies& pictures) {
  Text lines = inspection;
  for (const auto& [name, size] : pictures)
    lines += device::FromUtf8("\n" + std::to_string(size) + " " + name);
  const bool isKnown = inspection == m_Inspection && pictures == m_Pictures;
  if (!isKnown && !m_Store.Write(kKey, m_Name, lines)) return false;
  m_Inspection = inspection;
  m_Pictures = pictures;
  return true;
}

}  // namespace inspector::reports
