#include "reports/PagePictures.h"

#include "device/Format.h"

namespace inspector::reports {
std::optional<PagePicture> PagePictures::Place(TextView path, int scaling) {
  if (m_Pictures.Open(path) == nullptr) return std::nullopt;
  const std::filesystem::path source = m_Pictures.FileOf(path);
  const auto [copy, isNew] = m_Copies.try_emplace(source);
  if (isNew) {
    copy->second = device::Format(u"picture%d.jpg", m_Copies.size());
    m_Run.Copy(source, m_Folder / device::ToUtf8(copy->second));
  }
  return PagePicture{copy->second, m_Pictures.ShownSize(path, scaling)};
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
