#include "reports/PagePictures.h"

#include <algorithm>

#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::uint64_t kLargestPage = 1 << 20;

}  // namespace
std::optional<PagePicture> PagePictures::Place(TextView path, int scaling) {
  const std::filesystem::path source = m_Pictures.FileOf(path);
  if (const auto copy = m_Copies.find(source); copy != m_Copies.end())
    return PagePicture{copy->second, m_Pictures.ShownSize(path, scaling)};
  auto file = m_Pictures.Open(path);
  if (file == nullptr) return std::nullopt;
  Text name;
  do {
    name = device::Format(u"picture%d.jpg", ++m_Last);
    const Found found = Look(path, name);
    if (found == Found::Same) break;
    if (found == Found::Free) {
      if (!m_Run.Copy(*file, m_Folder / device::ToUtf8(name))) return std::nullopt;
      break;
    }
  } while (true);
  m_Copies.emplace(source, name);
  return PagePicture{name, m_Pictures.ShownSize(path, scaling)};
}

// A picture that an earlier export left is as good as a copy; one that is another stays, because pages that
// are still there may show it, or because it is none of ours.
PagePictures::Found PagePictures::Look(TextView path, TextView name) const {
  device::Files& files = m_Run.GetMachine().files;
  const std::filesystem::path there = m_Folder / device::ToUtf8(name);
  if (!files.Exists(there)) return Found::Free;
  const auto one = m_Pictures.Open(path);
  const auto other = files.OpenForReading(there);
  if (one == nullptr || other == nullptr || one->Size() != other->Size()) return Found::Taken;
  std::vector<char> left(kBlock);
  std::vector<char> right(kBlock);
  std::int64_t count = 0;
  do {
    count = one->Read(left.data(), kBlock);
    if (count < 0 || other->Read(right.data(), kBlock) != count ||
        !std::equal(left.begin(), left.begin() + count, right.begin()))
      return Found::Taken;
  } while (count > 0);
  return Found::Same;
}

void PagePictures::DropThoseOf(const std::filesystem::path& page) {
  constexpr std::string_view kBefore = "<IMG SRC=\"";
  const std::optional<std::string> old = device::ReadWhole(m_Run.GetMachine().files, page, kLargestPage);
  if (!old) return;
  for (std::size_t at = old->find(kBefore); at != std::string::npos; at = old->find(kBefore, at)) {
    at += kBefore.size();
    const std::string name = old->substr(at, old->find('"', at) - at);
    // Only names that are given here, and no paths.
    const bool isOurs = name.starts_with("picture") && name.ends_with(".jpg") &&
                        name.find_first_not_of("0123456789", 7) == name.size() - 4;
    const bool isShown = std::any_of(m_Copies.begin(), m_Copies.end(),
                                     [&](const auto& copy) { return device::ToUtf8(copy.second) == name; });
    if (isOurs && !isShown) m_Run.RemoveAtEnd(m_Folder / name);
  }
}

std::vector<PagePicture> PagePictures::OfText(TextView comments) {
  std::vector<PagePicture> placed;
  for (const TagPicture& picture : m_Pictures.OfText(comments)) {
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

}  // namespace inspector::reports
