// Whether a report, or another file that is made from an inspection, may be written where somebody wants it.
#pragma once

#include "data/Workspace.h"
#include "reports/ReportPictures.h"

namespace inspector::reports {

class ReportPlace {
public:
  // Both outlive this.
  ReportPlace(data::Workspace& workspace, std::int32_t inspectionID, Text documentNumber,
              ReportPictures& pictures)
      : m_Workspace(workspace),
        m_InspectionID(inspectionID),
        m_DocumentNumber(std::move(documentNumber)),
        m_Pictures(pictures) {}

  // Why nothing must be written there: databases, what the program needs, pictures, the camera's card. Empty
  // when it may.
  Text WhyNot(const std::filesystem::path& named) const;
  // All that readers of the inspection's reports could be shown, also what one report leaves out. Nothing
  // when the comments could not all be read.
  std::optional<std::vector<std::filesystem::path>> AllPictures() const;

private:
  data::Workspace& m_Workspace;
  const std::int32_t m_InspectionID;
  const Text m_DocumentNumber;
  ReportPictures& m_Pictures;
};

}  // namespace inspector::reports
