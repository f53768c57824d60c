#include "reports/PagePictures.h"

#include <algorithm>

#include "device/Format.h"
#include "editing/PictureTags.h"
#include "reports/MediaType.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kBlock = 64 * 1024;

}  // namespace

bool PagePictures::Plan(const ReportContent& content, const std::function<std::vector<Text>()>& comments) {
  PlanOne(ReportPictures::HousePhotoPath(content.header.documentNumber));
  for (const ReportSection& section : content.sections) {
    if (section.isSkipped) continue;
    for (const ReportStep& step : section.steps) {
      if (!step.isReported || editing::FindFirstTag(step.comments).empty()) continue;
      for (const TagPicture& picture : m_Pictures.OfText(step.comments, NameOf(step))) PlanOne(picture.path);
    }
  }
  m_LacksSome = !m_Former.empty() && m_Pictures.AreIncluded() && m_Pictures.LacksAnyOf(comments());
  PageRecord::Sizes all = m_Former;
  for (const auto& [source, copy] : m_Copies) all[copy.name] = copy.size;
  if (all == m_Former || m_Record.Keep(Text(m_Record.Inspection()), all)) return true;
  device::ShowError(m_Run.GetMachine().prompts, m_Record.LastError());
  return false;
}

void PagePictures::PlanOne(TextView path) {
  if (m_Copies.contains(m_Pictures.FileOf(path))) return;
  const auto file = m_Pictures.Open(path);
  const auto size = file == nullptr ? std::nullopt : file->Size();
  if (!size || !IsPicture(*file)) return;
  Copy copy{OwnCopyOf(path, *size), *size};
  copy.isThere = !copy.name.empty();
  while (!copy.isThere &&
         (copy.name.empty() || m_Run.GetMachine().files.Exists(m_Run.Target().path / copy.name)))
    copy.name = device::ToUtf8(device::Format(u"picture%d.jpg", ++m_Last));
  m_Taken.insert(copy.name);
  m_Copies.emplace(m_Pictures.FileOf(path), std::move(copy));
}

std::string PagePictures::OwnCopyOf(TextView path, std::uint64_t size) const {
  for (const auto& [name, bytes] : m_Former)
    if (bytes == size && !m_Taken.contains(name) && m_Record.IsOwn(name) &&
        IsSame(path, m_Run.Target().path / name))
      return name;
  return {};
}

bool PagePictures::IsSame(TextView path, const std::filesystem::path& other) const {
  const auto one = m_Pictures.Open(path);
  const auto two = m_Run.GetMachine().files.OpenForReading(other);
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

std::optional<PagePicture> PagePictures::Place(TextView path, int scaling) {
  const auto planned = m_Copies.find(m_Pictures.FileOf(path));
  if (path.empty() || planned == m_Copies.end()) return std::nullopt;
  Copy& copy = planned->second;
  if (!copy.isThere && !copy.isLost) {
    const auto file = m_Pictures.Open(path);
    copy.isThere = file != nullptr && m_Run.Copy(*file, copy.size, m_Run.Target().path / copy.name);
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
      m_LacksSome =
          m_LacksSome || (m_Pictures.AreIncluded() && editing::ClassifyTag(picture.tag) != editing::kError);
      m_Pictures.NoteMissing(picture);
    }
  }
  return placed;
}

std::optional<PagePicture> PagePictures::OfHouse(TextView documentNumber) {
  const Text path = ReportPictures::HousePhotoPath(documentNumber);
  auto photo = Place(path, 100);
  if (!photo && m_Pictures.Exists(path)) {
    m_LacksSome = true;
    m_Pictures.NoteUnreadable(path);
  }
  return photo;
}

void PagePictures::Forget() {
  if (m_Record.Pictures() != m_Former && !m_Record.Keep(Text(m_Record.Inspection()), m_Former))
    m_Run.GetMachine().faults.Report(m_Record.LastError());
}

void PagePictures::Finish(const Text& inspection) {
  PageRecord::Sizes shown;
  for (const auto& [source, copy] : m_Copies)
    if (copy.isThere) shown.emplace(copy.name, copy.size);
  const bool mayGo = !m_LacksSome || m_Record.Inspection() != inspection;
  for (const auto& [name, size] : m_Former) {
    if (shown.contains(name) || !m_Record.IsOwn(name)) continue;
    if (mayGo) {
      m_Run.GetMachine().files.Remove(m_Run.Target().path / name);
    } else {
      shown.emplace(name, size);
    }
  }
  if (!m_Record.Keep(inspection, shown)) m_Run.GetMachine().faults.Report(m_Record.LastError());
}

}  // namespace inspector::reports
