// The core that the reports in Rich Text share: text, prologue, page header and footer, tables, pictures.
//
// Text becomes Windows-1252 as it is written, one byte a character. Every blank and every order of words
// below is part of the format: reports are compared byte for byte.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "device/Files.h"
#include "reports/ReportPictures.h"

namespace inspector::reports {

// The right edges of the cells in twips, from widths in inches. Each is cut to whole twips before the next.
std::array<std::int32_t, 5> ColumnPositions(const std::array<double, 5>& widths);

struct RtfSettings {
  static constexpr int kSummary = 0;  // in place of columns: rows of two cells of a fixed width

  Text fontName;
  int fontSize = 12;                     // points
  int columns = 4;                       // besides the step number; 1 for a report without tables
  std::array<double, 5> columnWidths{};  // inches
  std::array<Text, 3> companyLines;      // of the page header
  Text footer;
};

// Writes front to back into an output that it does not own and does not commit. Once a write has failed the
// rest is dropped; HasFailed tells.
class RtfWriter {
public:
  RtfWriter(device::OutputFile& output, ReportPictures& pictures, RtfSettings settings);
  virtual ~RtfWriter() = default;
  RtfWriter(const RtfWriter&) = delete;
  RtfWriter& operator=(const RtfWriter&) = delete;

  bool HasFailed() const { return m_Failed; }

  // Control words and fixed texts, as they are.
  void Write(std::string_view words);
  void WriteText(TextView text);
  void WriteEscaped(TextView text);

  // Prologue, page header, footer and title block.
  virtual void WriteDocumentHeader() = 0;
  // The first title of a report takes the form of WriteFirstSectionTitle.
  void WriteSectionTitle(TextView title);
  void BeginTableRow();
  void WritePageBreak();
  void WriteSectionBreak();
  void WriteDocumentEnd();

  // The file at a device path, at `percent` of its size. Writes nothing and returns false when there is no
  // path, no such file, or pictures are left out. Takes the same memory for every size of picture.
  bool WritePicture(TextView path, int percent);
  // The same in a table row of one cell.
  bool WriteLogo(TextView path);
  // A paragraph and a picture for each tag of the text, which stands in `place`.
  void WriteTagPictures(TextView text, TextView place);

protected:
  virtual void WriteFirstSectionTitle(TextView title) = 0;

  // Prologue, page header and footer of all but the summaries.
  void WriteOpening();
  void WriteColourTable();
  bool HasTitle() const { return !m_IsFirstSection; }

  // The word Page and the number, from "\i " to "\pard ".
  void WritePageField();
  ReportPictures& Pictures() { return m_Pictures; }

private:
  void WritePrologue();
  void WritePageHeader();
  void WriteFooter();
  bool WritePictureGroup(TextView path, int percent, std::string_view before, std::string_view after);
  bool WriteHexDigits(device::InputFile& file, std::int64_t count);

  device::OutputFile& m_Output;
  ReportPictures& m_Pictures;
  const RtfSettings m_Settings;
  std::string m_RowStart;
  std::string m_Bytes;
  std::vector<char> m_Block;
  std::vector<char> m_Digits;
  bool m_IsFirstSection = true;
  bool m_Failed = false;
};

}  // namespace inspector::reports
