// A house to be exported, with every kind of column filled.
#pragma once

#include "exchange/InspectionExport.h"
#include "support/VisitFixture.h"

namespace inspector::tests {

// Fields and records as they are read on paper: "|" and a line end for the two bytes.
inline std::string OnPaper(std::string bytes) {
  for (char& byte : bytes) byte = byte == '\xA4' ? '|' : byte == '\xA7' ? '\n' : byte;
  return bytes;
}
inline std::string OffPaper(std::string lines) {
  for (char& byte : lines) byte = byte == '|' ? '\xA4' : byte == '\n' ? '\xA7' : byte;
  return lines;
}

class ExchangeTest : public VisitTest {
protected:
  static constexpr std::int32_t kHouse = 71;

  void SetUp() override {
    m_Device.RunInVisits(
        "INSERT INTO Inspection VALUES (71, '12 Elm Street', 'Ana Ruiz', '', 'Salem, OR', 'Clear, 60 F.', "
        "'2002-07-03T09:05:59', 'House', 1, 0, -5, '2026-014', '555', 'Salem', 'M. Cole', 'L. Ito', 1, "
        "'Elm Realty', 'keep to myself');"
        "INSERT INTO Category VALUES (81, 'Roof', '20', 'r', 'c', 1, 0, 71, 3, 0), "
        "(82, 'Cellar', '09', '', '', 0, 1, 71, -7, 2);"
        "INSERT INTO Step VALUES (91, '20.2', 'Gutters', 81, 'Poor', 'Bent \xC3\xA9.', 'Copper;', "
        "'Condition', "
        "'x', 'y', 2, 1, 'Drainage', 1, 's', 'b.jpg', 1), "
        "(92, '20.1', 'Shingles', 81, '', '', '', 'Condition', '', '', 0, 0, '', 0, '', '', 0)");
    m_Device.Document().Reopen();
  }

  exchange::ExportOutcome Export(std::int32_t key = kHouse) {
    return exchange::ExportInspection(m_Device.GetWorkspace(), {key, m_File});
  }
  std::string Exported() { return OnPaper(ContentOf(m_File)); }

  const std::filesystem::path m_File = m_Device.Root() / "house.rtf";
};

}  // namespace inspector::tests
