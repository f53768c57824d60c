#include "editing/MissingPictures.h"

#include <algorithm>

#include "device/PictureHeader.h"
#include "editing/PictureTags.h"
#include "editing/TagPictures.h"

namespace inspector::editing {
namespace {

bool HasNameOfPhotograph(TextView path) {
  return device::EqualIgnoringCase(path.substr(path.size() - std::min<std::size_t>(path.size(), 4)), u".jpg");
}

}  // namespace

MissingPictures::MissingPictures(data::Workspace& workspace)
    : m_Machine(workspace.GetMachine()),
      m_Card(m_Machine.files, m_Machine.paths, workspace.Options().m_DefaultPictCardPath) {}

bool MissingPictures::IsMissing(const Text& path) {
  const auto [known, isNew] = m_Missing.try_emplace(path, true);
  if (!isNew) return known->second;
  const std::filesystem::path file = m_Machine.paths.ResolvePicture(path);
  known->second = !m_Machine.files.Exists(file) ||
                  (HasNameOfPhotograph(path) && !device::ReadPictureSize(m_Machine.files, file));
  return known->second;
}

bool MissingPictures::IsLackedBy(TextView comment) {
  if (FindFirstTag(comment).empty()) return false;
  const std::vector<TagPicture> pictures = PicturesOf(comment, m_Card);
  return std::any_of(pictures.begin(), pictures.end(), [this](const TagPicture& picture) {
    if (ClassifyTag(picture.tag) == kError) return false;
    // A number that the card has was just read from its folder.
    if (ClassifyTag(picture.tag) == kGenericPicture) return picture.path == kError;
    return picture.path.empty() || IsMissing(picture.path);
  });
}

bool MissingPictures::IsLackedBy(const data::StepTable& step) {
  return IsLackedOn(step) || IsLackedBy(TextView(step.m_Comments)) ||
         IsLackedBy(TextView(step.m_SummaryComment));
}

}  // namespace inspector::editing
