// The pictures that stand beside a report's pages: each file is copied once, under a name of its own.
#pragma once

#include <map>
#include <set>

#include "reports/PageRecord.h"
#include "reports/ReportPictures.h"
#include "reports/ReportRun.h"

namespace inspector::reports {

struct PagePicture {
  Text file;                                // its name in the folder of the pages
  std::optional<device::PictureSize> size;  // nothing where it is shown in its own
};

class PagePictures {
public:
  // Both outlive this; the run's target is the folder. The copies go again when the run does not finish.
  PagePictures(ReportPictures& pictures, ReportRun& run)
      : m_Pictures(pictures),
        m_Run(run),
        m_Record(run.GetMachine(), run.Target().path),
        m_Former(m_Record.Pictures()) {}

  // What was put into the folder before.
  const PageRecord& Record() const { return m_Record; }

  // Gives every picture of the report its name, and writes the names down before the first copy is made, so
  // that the next run can tidy up after one that was killed. False when they cannot be written, which the
  // person knows then.
  bool Plan(const ReportContent& content);
  // Those of a comment's tags that can be had; the others are noted. `place` is where it stands.
  std::vector<PagePicture> OfText(TextView comments, TextView place);
  // The photograph of the house; nothing when there is none.
  std::optional<PagePicture> OfHouse(TextView documentNumber);
  // The pages are there: copies that only those before have shown go, if they can be made again. A copy may
  // be all that is left of a picture, whichever inspection it belongs to. `named` are the pictures of the
  // inspection, which stay wherever they lie.
  void Finish(const Text& inspection, const std::vector<std::filesystem::path>& named);
  // There are no new pages, and the copies have gone.
  void Forget();

private:
  struct Copy {
    std::string name;
    PageRecord::Copy record;
    bool isThere = false;
    bool isLost = false;  // the file went away, or changed, before it was copied
  };
  // Nothing for what is no picture, or cannot be read. `scaling` is in percent.
  std::optional<PagePicture> Place(TextView path, int scaling);
  void PlanOne(TextView path);
  // The name of a copy of the same bytes that an earlier run has left; empty when there is none.
  std::string OwnCopyOf(TextView path, std::uint64_t size) const;
  // The original is still there, and the same: on another card, another photograph may have its name.
  bool CanBeMadeAgain(const std::string& name, const PageRecord::Copy& copy) const;

  ReportPictures& m_Pictures;
  ReportRun& m_Run;
  PageRecord m_Record;
  const PageRecord::Copies m_Former;
  int m_Last = 0;                                  // number that was tried
  std::map<std::filesystem::path, Copy> m_Copies;  // of the file on the machine
  std::set<std::string> m_Taken;                   // names of those
};

}  // namespace inspector::reports
