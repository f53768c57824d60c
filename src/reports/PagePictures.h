// The pictures that stand beside a report's pages: each file is copied once, under a name of its own.
#pragma once

#include <map>

#include "reports/ReportPictures.h"
#include "reports/ReportRun.h"

namespace inspector::reports {

struct PagePicture {
  Text file;                                // its name in the folder of the pages
  std::optional<device::PictureSize> size;  // nothing where it is shown in its own
};

class PagePictures {
public:
  // All three outlive this. The copies go again when the run does not finish.
  PagePictures(ReportPictures& pictures, ReportRun& run, std::filesystem::path folder)
      : m_Pictures(pictures), m_Run(run), m_Folder(std::move(folder)) {}

  // Pictures that an earlier page of this folder showed and the new one does not go with it: they may be
  // another client's. `page` is that earlier page; it may be missing.
  void DropThoseOf(const std::filesystem::path& page);
  // Nothing for a picture that cannot be read. `scaling` is in percent.
  std::optional<PagePicture> Place(TextView path, int scaling);
  // Those of a comment's tags that can be had; the others are noted.
  std::vector<PagePicture> OfText(TextView comments);
  // The photograph of the house; nothing when there is none.
  std::optional<PagePicture> OfHouse(TextView documentNumber);

private:
  enum class Found { Free, Same, Taken };
  // What stands under that name.
  Found Look(TextView path, TextView name) const;

  ReportPictures& m_Pictures;
  ReportRun& m_Run;
  const std::filesystem::path m_Folder;
  int m_Last = 0;                                  // number that was tried
  std::map<std::filesystem::path, Text> m_Copies;  // of the file on the machine, to its name here
};

}  // namespace inspector::reports
