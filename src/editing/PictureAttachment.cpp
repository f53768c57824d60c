#include "editing/PictureAttachment.h"

#include <algorithm>
#include <system_error>

#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

const Text kKey = u"HKEY_CURRENT_USER\\Software\\Brindlecove\\Inspector\\Pictures";
const Text kSized = u"SizeAttached";
const Text kUpright = u"TurnAttachedUpright";
const Text kOn = u"yes";
const Text kOff = u"no";

constexpr std::size_t kLongestStem = 60;

// "=" would make "Path=" possible, ":" and "\" a drive, "^" a gap; the others are no part of a name
// somewhere.
constexpr TextView kForbidden = u";*=^:\\/\"<>|?";

// Also the blanks and line ends that a text field or a report may write otherwise.
bool IsControlOrSpace(char16_t unit) {
  return unit < u' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0x2028 || unit == 0x2029;
}

Text CleanStem(TextView original) {
  Text stem(original.substr(0, original.rfind(u'.')));
  for (char16_t& unit : stem)
    if (IsControlOrSpace(unit) || kForbidden.find(unit) != TextView::npos) unit = u'-';
  stem.resize(device::Shortened(stem, kLongestStem).size());
  const std::size_t begin = stem.find_first_not_of(u" .");
  if (begin == Text::npos) return u"Picture";
  return stem.substr(begin, stem.find_last_not_of(u" .") + 1 - begin);
}

}  // namespace

AttachmentForm ReadAttachmentForm(const device::Registry& registry) {
  const auto isOff = [&](const Text& value) { return registry.Read(kKey, value) == kOff; };
  return {isOff(kSized) ? 0 : kAttachedSide, !isOff(kUpright)};
}

bool WriteAttachmentForm(device::Registry& registry, const AttachmentForm& form) {
  return registry.Write(kKey, kSized, form.longestSide > 0 ? kOn : kOff) &&
         registry.Write(kKey, kUpright, form.upright ? kOn : kOff);
}

Text AttachmentFolder(std::int32_t inspectionID) {
  return Format(u"\\My Documents\\Pictures\\%d\\", inspectionID);
}

Text AttachmentName(TextView original, const std::vector<Text>& taken) {
  const Text stem = CleanStem(original);
  Text name = stem + u".jpg";
  for (int n = 2; std::any_of(taken.begin(), taken.end(),
                              [&](const Text& other) { return device::EqualIgnoringCase(other, name); });
       ++n)
    name = Format(u"%s-%d.jpg", stem, n);
  return name;
}

std::optional<Text> StoreAttachment(const device::Machine& machine, std::int32_t inspectionID,
                                    TextView original, std::string_view jpeg) {
  const Text folder = AttachmentFolder(inspectionID);
  const Text name = AttachmentName(original, machine.files.ListEntries(machine.paths.Resolve(folder)));
  const Text path = folder + name;
  const auto file = machine.files.Create(machine.paths.Resolve(path));
  if (!file->Write(jpeg) || !file->Commit()) {
    machine.faults.Report(Format(
        u"The picture %s could not be stored (%s). The comment is as it was; free some room and attach the "
        u"picture again.",
        path, device::FromUtf8(file->Error())));
    return std::nullopt;
  }
  return path;
}

Text PicturePathOf(const device::DevicePaths& paths, const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::path root = std::filesystem::weakly_canonical(paths.Root(), error);
  const std::filesystem::path whole = std::filesystem::weakly_canonical(file, error);
  const std::filesystem::path below = whole.lexically_relative(root);
  if (error || below.empty() || *below.begin() == "..") return device::FromUtf8(file.native());
  Text path;
  for (const std::filesystem::path& part : below) path += u"\\" + device::FromUtf8(part.native());
  return path;
}

}  // namespace inspector::editing
