// What a report says, read from both databases at one moment and independent of the report's format.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "data/Workspace.h"
#include "device/Text.h"
#include "reports/ReportCompany.h"
#include "reports/StepSelection.h"

namespace inspector::reports {

// A category with the steps that have comments, materials or a rating, in the order of their numbers; or a
// major system with all of its steps.
struct ReportSection {
  std::int32_t categoryID = 0;  // 0 for a major system
  Text title;
  bool isSkipped = false;  // left out by the person or not present in the house; its steps are not read
  std::vector<ReportStep> steps;
};

struct ReportHeader {
  Text documentNumber;
  Text date;  // "5/31/2026"; empty when there is none
  Text inspector;
  std::array<Text, 2> dwellingAddress;
  Text clientName;
  std::array<Text, 2> clientAddress;
  Text clientAgent;
  Text realEstateCompany;
};

struct ReportLabels {
  Text dwellingAddress = u"Dwelling Address";
  Text clientAddress = u"Client Address";
  Text clientAgent = u"Client's Agent";
  Text docType = u"Doc Type";
  Text realEstateCompany = u"Real Estate Company";
  Text documentNumber = u"Doc #";
  Text clientName = u"Client Name";
  Text date = u"Date";
};

struct ReportContent {
  ReportHeader header;
  ReportLabels labels;
  std::array<Text, 3> companyLines;  // of the inspection report
  ReportCompany company;
  Text finePrint;
  Text definitionOfTerms;
  Text generalInformation;
  Text footer;
  Text summaryDisclaimer;
  // One or two characters are a slip of the pen.
  bool HasGeneralInformation() const { return generalInformation.size() > 2; }
  std::vector<ReportSection> sections;  // all of the inspection, in their order
};

enum class CollectResult { Done, NoSuchInspection, Failed };

// Reads the inspection in one read transaction. A category whose title is among `deselected` is skipped;
// major systems know no categories. Failed: a database could not be read; a report of what there is would
// pass over findings.
CollectResult CollectReport(data::Workspace& workspace, std::int32_t inspectionID,
                            const StepSelection& selection, const std::vector<Text>& deselected,
                            ReportContent& content);

}  // namespace inspector::reports
