// What a report says, read from both databases at one moment and independent of the report's format.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "data/Workspace.h"
#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// One step, as every kind of report sees it.
struct ReportStep {
  Text number;
  Text title;
  Text ratingType;
  Text rating;
  Text materials;  // for reading, not as stored
  Text comments;   // with their picture tags
  Text majorSystem;
  bool isBold = false;  // of the rating
  bool isRed = false;
  bool isSummary = false;

  bool IsOmitted() const { return rating == u"Omit"; }
};

struct ReportCategory {
  Text number;
  Text title;
  bool isSkipped = false;  // left out by the person or not present in the house; its steps are not read
  std::vector<ReportStep> steps;  // those with comments, materials or a rating, in the order of their numbers
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
  std::array<Text, 3> companyLines;
  Text finePrint;
  Text definitionOfTerms;
  Text generalInformation;
  Text footer;
  std::vector<ReportCategory> categories;  // all of the inspection, in their order
};

enum class CollectResult { Done, NoSuchInspection, Failed };

// Reads the inspection in one read transaction. A category whose title is among `deselected` is skipped.
// Failed: a database could not be read; a report of what there is would pass over findings.
CollectResult CollectReport(data::Workspace& workspace, std::int32_t inspectionID,
                            const std::vector<Text>& deselected, ReportContent& content);

}  // namespace inspector::reports
