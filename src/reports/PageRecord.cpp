#include "reports/PageRecord.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "device/FileIdentity.h"
#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr TextView kKey = u"Pages";

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

bool IsPage(const std::string& name) {
  return std::find(std::begin(kPages), std::end(kPages), device::FromUtf8(name)) != std::end(kPages);
}

// Of a file that is read and written alone, however many folders there have been. Two names that give the
// same one share it.
std::string FileFor(TextView name) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char16_t unit : name) sum = (sum ^ unit) * 1099511628211U;
  return std::to_string(sum) + ".toml";
}

// "1204 picture1.jpg"; a name that leads elsewhere is no file of the folder.
void AddSize(const std::string& entry, PageRecord::Sizes& sizes) {
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), size);
  if (error != std::errc() || end == entry.data() + entry.size() || *end != ' ') return;
  std::string name = entry.substr(static_cast<std::size_t>(end - entry.data()) + 1);
  if (!name.empty() && name.find('/') == std::string::npos) sizes.emplace(std::move(name), size);
}

}  // namespace

PageRecord::PageRecord(const device::Machine& machine, const std::filesystem::path& folder)
    : m_Files(machine.files),
      m_Folder(folder),
      m_Name(NameOf(device::WholePath(folder))),
      m_Store(machine.files, machine.registry.Path().parent_path() / kFolder / FileFor(m_Name)) {
  std::vector<Text> lines = device::Split(m_Store.Read(Text(kKey), m_Name).value_or(u""), u'\n');
  m_Inspection = lines.front();
  for (std::size_t n = 1; n < lines.size(); ++n) AddSize(device::ToUtf8(lines[n]), m_Pictures);
  for (auto entry = m_Pictures.begin(); entry != m_Pictures.end();) {
    const auto next = std::next(entry);
    if (IsPage(entry->first)) m_Pages.insert(m_Pictures.extract(entry));
    entry = next;
  }
  m_Problem = m_Store.LastError();
  if (!m_Pages.empty() && m_Pages != PagesThere()) m_Inspection.clear();
}

bool PageRecord::IsOwn(const std::string& name) const {
  const auto copy = m_Pictures.find(name);
  if (copy == m_Pictures.end()) return false;
  const auto file = m_Files.OpenForReading(m_Folder / name);
  return file != nullptr && file->Size() == copy->second;
}

PageRecord::Sizes PageRecord::PagesThere() const {
  Sizes pages;
  for (const TextView page : kPages)
    if (const auto file = m_Files.OpenForReading(m_Folder / page))
      if (const auto size = file->Size()) pages.emplace(device::ToUtf8(page), *size);
  return pages;
}

bool PageRecord::Keep(const Text& inspection, const Sizes& pictures) {
  Text lines = inspection;
  const Sizes pages = PagesThere();
  for (const Sizes* const files : {&pages, &pictures})
    for (const auto& [name, size] : *files)
      lines += device::FromUtf8("\n" + std::to_string(size) + " " + name);
  const bool isKnown = inspection == m_Inspection && pictures == m_Pictures && pages == m_Pages;
  if (!isKnown && !m_Store.Write(Text(kKey), m_Name, lines)) return false;
  m_Inspection = inspection;
  m_Pages = pages;
  m_Pictures = pictures;
  return true;
}

}  // namespace inspector::reports
