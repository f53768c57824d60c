// A written visit (TOML), played through the operations that a person would use. The sample visit is one.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "inspection/InspectorDoc.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// Every inspection is one that the program made for itself: nobody has entered anything in it.
bool IsUnused(data::Databases& databases);

// header, owner, options and files; then, per category, fields or steps with rating, materials and comments.
// docs/sample-visit.md shows the format.
class VisitScript {
public:
  ~VisitScript();

  // Null when the file cannot be read or understood; `problem` then says why.
  static std::unique_ptr<VisitScript> Read(device::Files& files, const std::filesystem::path& file,
                                           Text& problem);

  Text DocumentNumber() const;

  // Copies the files to the device, those that are there already stay. Paths are relative to the script.
  bool CopyFiles(const device::Machine& machine, Text& problem) const;

  // Owner record and options, for a device that was unused until now. An owner or an inspector's entry that
  // is there already stays, and the other options with it.
  bool SetUpDevice(data::Workspace& workspace, Text& problem) const;

  // Plays the visit as one transaction: into the current inspection when that is the only one and still
  // untouched, else into a new one. Nothing when something could not be written, or the visit asks for what
  // the library does not offer; `problem` names it.
  std::optional<std::int32_t> Play(inspection::CInspectorDoc& document, Text& problem) const;

private:
  struct Content;
  explicit VisitScript(std::unique_ptr<Content> content);

  std::unique_ptr<Content> m_Content;
};

}  // namespace inspector::editing
