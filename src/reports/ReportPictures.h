// The pictures of one report: which tags of a text name which files, and what could not be had.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "device/JpegSize.h"
#include "device/Machine.h"
#include "editing/TagPictures.h"
#include "reports/ReportContent.h"

namespace inspector::reports {

using editing::TagPicture;

// Made for one report, so that a number means the same picture from its first page to its last.
class ReportPictures {
public:
  ReportPictures(const device::Machine& machine, Text cardFolder, bool included);

  // One picture for each distinct tag of the text, in their order. A tag of no known kind is told in a box,
  // once in a report; a note says that it stands in `place`.
  std::vector<TagPicture> OfText(TextView text, TextView place);
  // Everything that readers of the inspection's reports could be shown, whether it is there or not, and
  // whether pictures are left out or not.
  std::vector<std::filesystem::path> FilesOf(TextView documentNumber, const std::vector<Text>& comments);
  // Where the camera puts its pictures: one more of them there, and the numbers in comments mean others.
  bool IsCardFolder(const std::filesystem::path& folder) const;
  // Reading pictures is what takes time: from when `isStopped` says so, none can be read.
  void StopWhen(std::function<bool()> isStopped) { m_IsStopped = std::move(isStopped); }
  // Null where pictures are left out, for an empty or an "ERROR" path, and for what cannot be read. A file
  // that becomes shorter cannot be read to its end.
  std::unique_ptr<device::InputFile> Open(TextView path);
  // Where the picture lies on the machine.
  std::filesystem::path FileOf(TextView path) const;
  // The picture's size at that many percent; nothing where it is shown in its own size, because it is to be
  // or because 0 and less are no size to show anything in.
  std::optional<device::PictureSize> ShownSize(TextView path, int scaling);
  // The first of the company's logos that can be read; empty when there is none.
  Text FindLogo();
  static Text HousePhotoPath(TextView documentNumber);

  // A tag whose picture is not in the report.
  void NoteMissing(const TagPicture& picture);
  void NoteUnreadable(TextView path);
  // A file that was put into the report though no reader knows it as a picture.
  void NoteUnknown(TextView path);
  // A picture of another kind in a document, where each is said to be a photograph.
  void NoteNoJpeg(TextView path);
  // Copies beside the pages that no page shows any more.
  void NoteLeft(TextView names);
  // A picture that broke off in the middle of a block that had begun.
  void NoteCutShort(TextView path);
  bool Exists(TextView path) const;
  // What the reader of the finished report should be told, each once.
  const std::vector<Text>& Notes() const { return m_Notes; }

private:
  void NoteDamaged(TextView path);
  void Note(Text note);

  const device::Machine m_Machine;
  editing::CardPictures m_Card;
  bool m_Included;
  std::function<bool()> m_IsStopped = [] { return false; };
  std::set<Text> m_UnknownTags;                           // that were told
  mutable std::map<Text, std::filesystem::path> m_Files;  // looked up once in a report
  std::vector<Text> m_Notes;
};

}  // namespace inspector::reports
