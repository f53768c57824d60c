#include "reports/PageRecord.h"

#include <algorithm>
#include <charconv>

#include "device/FileIdentity.h"
#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr TextView kKey = u"Pages";

// Names in the record compare without regard to case, and some signs are refused in them; folders of the host
// are told apart by every byte.
Text RecordNameOf(const std::filesystem::path& folder) {
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

// Of a file that is read and written alone, however many folders there have been. Two folders with one sum
// share it.
std::string FileFor(TextView name) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char16_t unit : name) sum = (sum ^ unit) * 1099511628211U;
  return std::to_string(sum) + ".toml";
}

bool IsPlain(TextView path) {
  return std::none_of(path.begin(), path.end(), [](char16_t unit) { return unit < u' '; });
}

}  // namespace

PageRecord::PageRecord(const device::Machine& machine, const std::filesystem::path& folder)
    : m_Files(machine.files),
      m_Folder(folder),
      m_Name(RecordNameOf(device::WholePath(folder))),
      m_Store(machine.files, machine.registry.Path().parent_path() / kFolder / FileFor(m_Name)) {
  const std::vector<Text> lines = device::Split(m_Store.Read(Text(kKey), m_Name).value_or(u""), u'\n');
  m_Inspection = lines.front();
  for (std::size_t n = 1; n < lines.size(); ++n) TakeLine(lines[n]);
  if (!m_Store.LastError().empty())
    m_Problem = device::Format(
        u"What was noted about the pages in %s cannot be read. %s Without it, the pictures that lie there "
        u"are taken for yours and stay.",
        device::FromUtf8(folder.native()), m_Store.LastError());
}

// "1204 picture1.jpg", and for a picture a tab and its original. A name that leads elsewhere is no file of
// the folder.
void PageRecord::TakeLine(TextView line) {
  const std::size_t tab = line.find(u'\t');
  const std::string entry = device::ToUtf8(line.substr(0, tab));
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), size);
  if (error != std::errc() || end == entry.data() + entry.size() || *end != ' ') return;
  std::string name = entry.substr(static_cast<std::size_t>(end - entry.data()) + 1);
  if (name.empty() || name.find('/') != std::string::npos) return;
  if (IsPage(name))
    m_Pages.emplace(std::move(name), size);
  else
    m_Pictures.emplace(std::move(name), Copy{size, Text(tab == TextView::npos ? u"" : line.substr(tab + 1))});
}

bool PageRecord::IsOwn(const std::string& name) const {
  const auto copy = m_Pictures.find(name);
  if (copy == m_Pictures.end()) return false;
  const auto file = m_Files.OpenForReading(m_Folder / name);
  return file != nullptr && file->Size() == copy->second.size;
}

PageRecord::Sizes PageRecord::PagesThere() const {
  Sizes pages;
  for (const TextView page : kPages)
    if (const auto file = m_Files.OpenForReading(m_Folder / page))
      if (const auto size = file->Size()) pages.emplace(device::ToUtf8(page), *size);
  return pages;
}

bool PageRecord::Keep(const Text& inspection, const Copies& pictures) {
  return Store(inspection, PagesThere(), pictures);
}

bool PageRecord::KeepPictures(const Copies& pictures) {
  return Store(m_Inspection, m_Pages, pictures);
}

bool PageRecord::Store(const Text& inspection, const Sizes& pages, const Copies& pictures) {
  Text lines = inspection;
  const auto add = [&lines](std::uint64_t size, const std::string& name, TextView original) {
    lines += device::FromUtf8("\n" + std::to_string(size) + " " + name);
    if (!original.empty() && IsPlain(original)) (lines += u'\t').append(original);
  };
  for (const auto& [name, size] : pages) add(size, name, {});
  for (const auto& [name, copy] : pictures) add(copy.size, name, copy.original);
  const bool isKnown = inspection == m_Inspection && pictures == m_Pictures && pages == m_Pages;
  if (!isKnown && !m_Store.Write(Text(kKey), m_Name, lines)) return false;
  m_Inspection = inspection;
  m_Pages = pages;
  m_Pictures = pictures;
  return true;
}

}  // namespace inspector::reports
