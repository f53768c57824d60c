#include "reports/ReportPictures.h"

#include <algorithm>

#include "device/FileIdentity.h"
#include "device/Format.h"
#include "device/JpegEnd.h"
#include "device/PictureHeader.h"
#include "editing/PictureTags.h"

namespace inspector::reports {
namespace {

constexpr TextView kLogos[] = {
    u"\\Program Files\\Brindlecove\\Logos\\logo1.jpg",
    u"\\Program Files\\Quenlith Inspector v5\\Logos\\logo1.jpg",
    u"\\Program Files\\Marrowtide\\Logos\\logo1.jpg",
};

// A picture that ends before the size it had when it was opened, or that nobody waits for any more, cannot be
// read. `tellDamage` is called at the end of a photograph that breaks off there.
class WholeFile : public device::InputFile {
public:
  WholeFile(std::unique_ptr<device::InputFile> file, std::uint64_t size, std::function<bool()> isStopped,
            std::function<void()> tellDamage)
      : m_File(std::move(file)),
        m_Size(size),
        m_IsStopped(std::move(isStopped)),
        m_TellDamage(std::move(tellDamage)) {}

  std::int64_t Read(char* buffer, std::size_t size) override {
    if (m_IsStopped()) return -1;
    const std::int64_t count = m_File->Read(buffer, size);
    if (count < 0) return count;
    m_Read += static_cast<std::uint64_t>(count);
    m_End.Take({buffer, static_cast<std::size_t>(count)});
    const bool isEnd = static_cast<std::uint64_t>(count) < size;
    if (!isEnd) return count;
    if (m_Read < m_Size) return -1;
    if (m_End.IsCutShort()) m_TellDamage();
    return count;
  }
  std::optional<std::uint64_t> Size() override { return m_Size; }

private:
  const std::unique_ptr<device::InputFile> m_File;
  const std::uint64_t m_Size;
  const std::function<bool()> m_IsStopped;
  const std::function<void()> m_TellDamage;
  device::JpegEnd m_End;
  std::uint64_t m_Read = 0;
};

// No side is longer than a picture's may be; the other one follows it, so that nothing is distorted.
device::PictureSize Scaled(const device::PictureSize& size, std::int64_t scaling) {
  constexpr std::int64_t kLongestSide = 0xFFFF;
  const std::int64_t longest = std::max(size.width, size.height);
  const bool isTooLong = longest * scaling / 100 > kLongestSide;
  const auto side = [&](std::int64_t pixels) {
    const std::int64_t scaled = isTooLong ? pixels * kLongestSide / longest : pixels * scaling / 100;
    return static_cast<int>(std::max<std::int64_t>(scaled, 1));
  };
  return {side(size.width), side(size.height)};
}

}  // namespace

ReportPictures::ReportPictures(const device::Machine& machine, Text cardFolder, bool included)
    : m_Machine(machine), m_Card(machine.files, machine.paths, std::move(cardFolder)), m_Included(included) {}

std::vector<TagPicture> ReportPictures::OfText(TextView text, TextView place) {
  std::vector<TagPicture> pictures = editing::PicturesOf(text, m_Card);
  for (const TagPicture& picture : pictures) {
    if (editing::ClassifyTag(picture.tag) != editing::kError || !m_UnknownTags.insert(picture.tag).second)
      continue;
    device::Alert(m_Machine.prompts, u"Unknown embedded tag found.");
    // Words that somebody has set between asterisks may be many.
    constexpr std::size_t kMost = 60;
    const Text tag = picture.tag.size() <= kMost ? picture.tag
                                                 : Text(device::Shortened(picture.tag, kMost)) + u"\u2026***";
    Note(device::Format(u"The tag %s in %s is of no kind that a report knows. Correct it, or take it out.",
                        tag, place));
  }
  return pictures;
}

std::vector<std::filesystem::path> ReportPictures::FilesOf(TextView documentNumber,
                                                           const std::vector<Text>& comments) {
  std::set<std::filesystem::path> files = {FileOf(HousePhotoPath(documentNumber))};
  for (const TextView logo : kLogos) files.insert(FileOf(logo));
  for (const Text& comment : comments)
    for (const TagPicture& picture : editing::PicturesOf(comment, m_Card))
      if (!picture.path.empty() && picture.path != editing::kError) files.insert(FileOf(picture.path));
  return {files.begin(), files.end()};
}

bool ReportPictures::IsCardFolder(const std::filesystem::path& folder) const {
  if (m_Card.Folder().empty()) return false;
  // Also one that is not in the device at the moment, and one that is named without a slash at its end.
  return device::IsSamePlace(folder, m_Card.HostFolder()) ||
         device::IsSamePlace(folder, FileOf(m_Card.Folder()));
}

std::unique_ptr<device::InputFile> ReportPictures::Open(TextView path) {
  // A file may well be called ERROR, but it is not what a tag asked for.
  if (!m_Included || path.empty() || path == editing::kError) return nullptr;
  auto file = m_Machine.files.OpenForReading(FileOf(path));
  const auto size = file == nullptr ? std::nullopt : file->Size();
  if (!size) return nullptr;
  return std::make_unique<WholeFile>(std::move(file), *size, m_IsStopped,
                                     [this, name = Text(path)] { NoteDamaged(name); });
}

std::filesystem::path ReportPictures::FileOf(TextView path) const {
  const auto [known, isNew] = m_Files.try_emplace(Text(path));
  if (isNew) known->second = m_Machine.paths.ResolvePicture(path);
  return known->second;
}

std::optional<device::PictureSize> ReportPictures::ShownSize(TextView path, int scaling) {
  constexpr int kOwnSize = 100;
  if (scaling <= 0 || scaling == kOwnSize) return std::nullopt;
  const auto size = device::ReadPictureSize(m_Machine.files, FileOf(path));
  return size ? std::optional(Scaled(*size, scaling)) : std::nullopt;
}

Text ReportPictures::FindLogo() {
  for (const TextView logo : kLogos) {
    if (Open(logo) != nullptr) return Text(logo);
    if (m_Included && m_Machine.files.Exists(FileOf(logo))) NoteUnreadable(logo);
  }
  return {};
}

Text ReportPictures::HousePhotoPath(TextView documentNumber) {
  return Text(u"\\HousePhoto").append(documentNumber).append(u".jpg");
}

void ReportPictures::NoteMissing(const TagPicture& picture) {
  if (!m_Included || editing::ClassifyTag(picture.tag) == editing::kError) return;
  if (editing::ClassifyTag(picture.tag) != editing::kGenericPicture &&
      (picture.path.empty() || picture.path == editing::kError)) {
    Note(device::Format(u"The tag %s names no picture, so the report goes without one.", picture.tag));
  } else if (picture.path.empty() || picture.path == editing::kError) {
    Note(m_Card.Folder().empty()
             ? device::Format(
                   u"The picture of %s is not in the report, because the options name no folder of the "
                   u"camera's card.",
                   picture.tag)
             : device::Format(u"The picture of %s is not in the folder %s, so the report goes without it.",
                              picture.tag, m_Card.Folder()));
  } else {
    NoteUnreadable(picture.path);
  }
}

void ReportPictures::NoteUnreadable(TextView path) {
  Note(device::Format(u"The picture %s cannot be read, so the report goes without it.", path));
}

void ReportPictures::NoteUnknown(TextView path) {
  Note(device::Format(
      u"%s is no picture, and some word processors refuse a report that holds it. Take it out of "
      u"the comment and make the report again.",
      path));
}

void ReportPictures::NoteNoJpeg(TextView path) {
  Note(device::Format(
      u"%s is no JPEG picture, and some word processors show nothing in its place. Save it as a JPEG in an "
      u"image program, attach that one, and make the report again.",
      path));
}

void ReportPictures::NoteDamaged(TextView path) {
  Note(device::Format(
      u"The picture %s is damaged: it breaks off before its end, so that readers may show a part of it or "
      u"nothing. Take or copy it again, and make the report anew.",
      path));
}

void ReportPictures::NoteLeft(TextView names) {
  Note(device::Format(
      u"No page shows these pictures any more, but they were left in the folder because their "
      u"originals are gone or have changed: %s. Remove them if the client is not to have them.",
      names));
}

void ReportPictures::NoteCutShort(TextView path) {
  Note(device::Format(u"The picture %s could not be read to its end, so the report holds only a part of it.",
                      path));
}

bool ReportPictures::Exists(TextView path) const {
  return m_Included && m_Machine.files.Exists(FileOf(path));
}

void ReportPictures::Note(Text note) {
  if (std::find(m_Notes.begin(), m_Notes.end(), note) == m_Notes.end()) m_Notes.push_back(std::move(note));
}

}  // namespace inspector::reports
