// What the program has put into a folder of pages: of which inspection they are, and which pictures beside
// them are copies of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

#include "device/Machine.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// What the pages are called.
inline constexpr TextView kInspectionPage = u"inspection.htm";
inline constexpr TextView kContentsPage = u"toc.htm";
inline constexpr TextView kFramesPage = u"index.htm";  // the one to open
inline constexpr TextView kPages[] = {kInspectionPage, kContentsPage, kFramesPage};

// Kept beside the device's registry, not in the folder: that one is handed over to a client. Only what stands
// here, and still has its size, is ever removed from the folder or used again.
class PageRecord {
public:
  // Beside the registry; a file for each folder of pages.
  static constexpr const char* kFolder = "page-records";
  struct Copy {
    std::uint64_t size = 0;  // bytes
    Text original;           // the picture's place on the device; empty when that is not known
    bool operator==(const Copy&) const = default;
  };
  using Copies = std::map<std::string, Copy>;  // by the name in the folder

  // Reads what is known of `folder`, which need not be there.
  PageRecord(const device::Machine& machine, const std::filesystem::path& folder);

  // Why it could not be read: then it is not known whose pages those are. Empty when it could.
  const Text& Problem() const { return m_Problem; }
  // Of which the pages were made last; empty when none were.
  const Text& Inspection() const { return m_Inspection; }
  // The pages that lie there have the sizes of those that were made. Else somebody has changed them, or
  // another disk is in that place by now.
  bool ArePagesOwn() const { return m_Pages == PagesThere(); }
  const Copies& Pictures() const { return m_Pictures; }
  // A copy that nobody has replaced or changed since.
  bool IsOwn(const std::string& name) const;

  // After pages were made. `inspection` is the same in every report of one inspection, and in no other. False
  // when it cannot be written; LastError says why.
  bool Keep(const Text& inspection, const Copies& pictures);
  // Of pages that are still to be made: whose those are that lie there, and how large, stays as it was.
  bool KeepPictures(const Copies& pictures);
  const Text& LastError() const { return m_Store.LastError(); }

private:
  using Sizes = std::map<std::string, std::uint64_t>;

  Sizes PagesThere() const;
  bool Store(const Text& inspection, const Sizes& pages, const Copies& pictures);
  void TakeLine(TextView line);

  device::Files& m_Files;
  std::filesystem::path m_Folder;
  Text m_Name;  // of the folder, among others
  device::Registry m_Store;
  Text m_Problem;
  Text m_Inspection;
  Sizes m_Pages;
  Copies m_Pictures;
};

}  // namespace inspector::reports
