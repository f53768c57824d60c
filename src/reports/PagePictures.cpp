#include "reports/PagePictures.h"

#include <algorithm>

#include "device/FileIdentity.h"
#include "device/Format.h"
#include "editing/PictureTags.h"
#include "reports/MediaType.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kBlock = 64 * 1024;

bool HaveSameBytes(device::InputFile* one, device::InputFile* two) {
  std::vector<char> left(kBlock);
  std::vector<char> right(kBlock);
  std::int64_t count = one == nullptr || two == nullptr ? -1 : 1;
  while (count > 0) {
    count = one->Read(left.data(), kBlock);
    if (two->Read(right.data(), kBlock) != count ||
        !std::equal(left.begin(), left.begin() + std::max<std::int64_t>(count, 0), right.begin()))
      return false;
  }
  return count == 0;
}

}  // namespace

bool PagePictures::Plan(const ReportContent& content) {
  PlanOne(ReportPictures::HousePhotoPath(content.header.documentNumber));
  for (const ReportSection& section : content.sections) {
    if (section.isSkipped) continue;
    for (const ReportStep& step : section.steps) {
      if (!step.isReported || editing::FindFirstTag(step.comments).empty()) continue;
      for (const TagPicture& picture : m_Pictures.OfText(step.comments, NameOf(step))) PlanOne(picture.path);
    }
  }
  PageRecord::Copies all = m_Former;
  for (const auto& [source, copy] : m_Copies) all[copy.name] = copy.record;
  if (all == m_Former || m_Record.KeepPictures(all)) return true;
  device::ShowError(m_Run.GetMachine().prompts, m_Record.LastError());
  return false;
}

void PagePictures::PlanOne(TextView path) {
  if (m_Copies.contains(m_Pictures.FileOf(path))) return;
  const auto file = m_Pictures.Open(path);
  const auto size = file == nullptr ? std::nullopt : file->Size();
  if (!size || !IsPicture(*file)) return;
  Copy copy{OwnCopyOf(path, *size), {*size, Text(path)}};
  copy.isThere = !copy.name.empty();
  // A link that leads nowhere has taken its name, too.
  const auto isTaken = [this](const std::string& name) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(m_Run.Target().path / name, error));
  };
  while (!copy.isThere && (copy.name.empty() || isTaken(copy.name)))
    copy.name = device::ToUtf8(device::Format(u"picture%d.jpg", ++m_Last));
  m_Taken.insert(copy.name);
  m_Copies.emplace(m_Pictures.FileOf(path), std::move(copy));
}

std::string PagePictures::OwnCopyOf(TextView path, std::uint64_t size) const {
  for (const auto& [name, copy] : m_Former)
    if (copy.size == size && !m_Taken.contains(name) && m_Record.IsOwn(name) &&
        HaveSameBytes(m_Pictures.Open(path).get(),
                      m_Run.GetMachine().files.OpenForReading(m_Run.Target().path / name).get()))
      return name;
  return {};
}

bool PagePictures::CanBeMadeAgain(const std::string& name, const PageRecord::Copy& copy) const {
  const std::filesystem::path file = m_Run.Target().path / name;
  const std::filesystem::path original = m_Pictures.FileOf(copy.original);
  // A comment may have named the copy itself.
  if (copy.original.empty() || device::IsSamePlace(file, original)) return false;
  device::Files& files = m_Run.GetMachine().files;
  return HaveSameBytes(files.OpenForReading(original).get(), files.OpenForReading(file).get());
}

std::optional<PagePicture> PagePictures::Place(TextView path, int scaling) {
  const auto planned = m_Copies.find(m_Pictures.FileOf(path));
  if (path.empty() || planned == m_Copies.end()) return std::nullopt;
  Copy& copy = planned->second;
  if (!copy.isThere && !copy.isLost) {
    const auto file = m_Pictures.Open(path);
    copy.isThere = file != nullptr && !m_Run.HasFailed() &&
                   m_Run.Copy(*file, copy.record.size, m_Run.Target().path / copy.name);
    copy.isLost = !copy.isThere;
  }
  if (copy.isLost) return std::nullopt;
  return PagePicture{device::FromUtf8(copy.name), m_Pictures.ShownSize(path, scaling)};
}

std::vector<PagePicture> PagePictures::OfText(TextView comments, TextView place) {
  std::vector<PagePicture> placed;
  for (const TagPicture& picture : m_Pictures.OfText(comments, place)) {
    if (auto one = Place(picture.path, picture.scaling)) {
      placed.push_back(std::move(*one));
    } else {
      m_Pictures.NoteMissing(picture);
    }
  }
  return placed;
}

std::optional<PagePicture> PagePictures::OfHouse(TextView documentNumber) {
  const Text path = ReportPictures::HousePhotoPath(documentNumber);
  auto photo = Place(path, 100);
  if (!photo && m_Pictures.Exists(path)) m_Pictures.NoteUnreadable(path);
  return photo;
}

void PagePictures::Forget() {
  if (m_Record.Pictures() != m_Former && !m_Record.KeepPictures(m_Former))
    m_Run.GetMachine().faults.Report(m_Record.LastError());
}

void PagePictures::Finish(const Text& inspection, const std::vector<std::filesystem::path>& named) {
  PageRecord::Copies kept;
  for (const auto& [source, copy] : m_Copies)
    if (copy.isThere) kept.emplace(copy.name, copy.record);
  Text left;
  for (const auto& [name, copy] : m_Former) {
    if (kept.contains(name) || !m_Record.IsOwn(name)) continue;
    const std::filesystem::path file = m_Run.Target().path / name;
    const bool isNamed = std::any_of(named.begin(), named.end(), [&](const std::filesystem::path& picture) {
      return device::IsSamePlace(picture, file);
    });
    if (!isNamed && CanBeMadeAgain(name, copy)) {
      m_Run.GetMachine().files.Remove(file);
      continue;
    }
    kept.emplace(name, copy);
    if (!isNamed) left += (left.empty() ? u"" : u", ") + device::FromUtf8(name);
  }
  if (!left.empty()) m_Pictures.NoteLeft(left);
  if (!m_Record.Keep(inspection, kept)) m_Run.GetMachine().faults.Report(m_Record.LastError());
}

}  // namespace inspector::reports
