#include "reports/RtfWriter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "device/CodePage.h"
#include "reports/MediaType.h"
#include "reports/RtfText.h"

namespace inspector::reports {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr int kCellGap = 108;  // twips by which a row begins to the left of the margin
constexpr std::size_t kBlockSize =
    1024 * 1024;  // the larger the writes, the less the host has to do for each byte
constexpr int kFullSize = 100;

struct Colour {
  int red;
  int green;
  int blue;
};
// "\cf6" is the sixth.
constexpr Colour kColours[] = {
    {0, 0, 0},     {0, 0, 255},     {0, 255, 255},   {0, 255, 0},     {255, 0, 255}, {255, 0, 0},
    {255, 255, 0}, {255, 255, 255}, {0, 0, 128},     {0, 128, 128},   {0, 128, 0},   {128, 0, 128},
    {128, 0, 0},   {128, 128, 0},   {128, 128, 128}, {192, 192, 192},
};

char HexDigit(unsigned nibble) {
  return static_cast<char>(nibble + (nibble > 9 ? 'a' - 10 : '0'));
}

// Two small letters or digits for each byte. Reckoned, because compilers make many at once of that, and none
// of a table.
void EncodeHex(const char* __restrict bytes, std::size_t size, char* __restrict digits) {
  for (std::size_t i = 0; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    digits[2 * i] = HexDigit(byte >> 4);
    digits[2 * i + 1] = HexDigit(byte & 15);
  }
}

// Toward zero; what is no number, or out of range, comes from a damaged row.
std::int32_t WholeTwips(double twips) {
  constexpr double kFarthest = std::numeric_limits<std::int32_t>::max() / 2.0;
  if (std::isnan(twips)) return 0;
  return static_cast<std::int32_t>(std::clamp(twips, -kFarthest, kFarthest));
}

// How a table row begins; the cells of step number and columns lie side by side.
std::string RowStart(const RtfSettings& settings) {
  const std::string size = "\\fs" + std::to_string(2 * settings.fontSize);
  if (settings.columns == RtfSettings::kSummary)
    return "\\trowd \\trgaph108\\trleft-108" + size + "\\cellx2390\\cellx8748 \\intbl\\ql ";
  if (settings.columns == 1) return {};
  if (settings.columns < 1 || settings.columns > 4) return "\\cell\\row ";
  std::string start = "\\trowd\\trgaph108\\trleft-108" + size + "\\trhdr";
  const auto positions = ColumnPositions(settings.columnWidths);
  for (int cell = 0; cell <= settings.columns; ++cell) {
    start += "\\cellx" + std::to_string(positions[static_cast<std::size_t>(cell)]);
  }
  return start + "\\intbl\\ql ";
}

}  // namespace

std::array<std::int32_t, 5> ColumnPositions(const std::array<double, 5>& widths) {
  std::array<std::int32_t, 5> positions{};
  positions[0] = WholeTwips(kTwipsPerInch * widths[0]) - kCellGap;
  for (std::size_t i = 1; i < positions.size(); ++i) {
    positions[i] = WholeTwips(positions[i - 1] + kTwipsPerInch * widths[i]);
  }
  return positions;
}

RtfWriter::RtfWriter(device::OutputFile& output, ReportPictures& pictures, RtfSettings settings)
    : m_Output(output),
      m_Pictures(pictures),
      m_Settings(std::move(settings)),
      m_RowStart(RowStart(m_Settings)) {}

void RtfWriter::Write(std::string_view words) {
  if (!m_Failed && !words.empty()) m_Failed = !m_Output.Write(words);
}

void RtfWriter::WriteText(TextView text) {
  m_Bytes.clear();
  device::AppendCodePage(m_Bytes, text);
  Write(m_Bytes);
}

void RtfWriter::WriteEscaped(TextView text) {
  WriteText(EscapeText(text));
}

void RtfWriter::WriteOpening() {
  WritePrologue();
  WritePageHeader();
  WriteFooter();
}

void RtfWriter::WriteColourTable() {
  Write("{\\colortbl;");
  for (const auto& [red, green, blue] : kColours) {
    Write("\\red" + std::to_string(red) + "\\green" + std::to_string(green) + "\\blue" +
          std::to_string(blue) + ";");
  }
  Write("}");
}

void RtfWriter::WritePrologue() {
  Write("{\\rtf1\\ansi\\deff1{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\fUserFont ");
  WriteText(m_Settings.fontName);
  Write(";}}");
  WriteColourTable();
  Write(
      "\\margr720\\margl1440"
      "{\\stylesheet"
      "{\\nowidctlpar\\widctlpar\\adjustright \\fs16\\cgrid \\snext0 Normal;}"
      "{\\*\\cs10 \\additive Default Paragraph Font;}"
      "{\\s15\\nowidctlpar\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\adjustright \\fs16\\cgrid \\sbasedon0 "
      "\\snext15 header;}"
      "{\\s16\\nowidctlpar\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\adjustright \\fs16\\cgrid \\sbasedon0 "
      "\\snext16 footer;}"
      "}");
}

void RtfWriter::WritePageField() {
  Write(
      "\\i {\\cs17 Page }{\\field{\\*\\fldinst {\\cs17  PAGE }}{\\fldrslt {\\cs17 1}}}{\\cs17 "
      "\\par}\\i0\\pard ");
}

void RtfWriter::WritePageHeader() {
  Write("{\\header \\pard\\plain \\s15\\qr\\widctlpar\\tqc\\tx4320\\tqr\\tx8640\\fs16");
  WritePageField();
  if (WritePicture(m_Pictures.FindLogo(), kFullSize)) Write("{\\cs17 \\par} ");
  Write("\\s15\\qc\\widctlpar\\tqc\\tx4320\\tqr\\tx8640 {\\cs17\\b\\fs28 Fairhold} \\par ");
  Write("\\pard \\s15\\qc\\widctlpar\\tqc\\tx4320\\tqr\\tx8640 {\\cs17\\b\\fs20 ");
  for (const Text& line : m_Settings.companyLines) {
    WriteEscaped(line);
    Write("\\par ");
  }
  Write("\\brdrt\\brdrs\\par } \\par} \\pard ");
}

void RtfWriter::WriteFooter() {
  Write("{\\footer \\pard\\plain \\qc\\widctlpar\\tx2070\\tx3240 {\\fs16 \\brdrt\\brdrs\\par ");
  WriteEscaped(m_Settings.footer);
  Write("\\par }\\pard\\plain\\s16\\qc\\widctlpar\\tqc\\tx4320\\tqr\\tx8640 \\par}");
}

void RtfWriter::WriteSectionTitle(TextView title) {
  if (m_IsFirstSection) {
    m_IsFirstSection = false;
    WriteFirstSectionTitle(title);
    return;
  }
  Write("\\pard \\par\\pard \\s15\\ql\\widctlpar\\tqc\\tx5040\\tqr\\tx10080 {\\cs17\\fs24\\b\\ul ");
  WriteEscaped(title);
  Write("\\b0\\ul0\\par\\par}\\pard");
}

void RtfWriter::BeginTableRow() {
  Write(m_RowStart);
}

void RtfWriter::WritePageBreak() {
  Write("\\pard \\nowidctlpar\\widctlpar\\adjustright {\\page \\par }");
}

void RtfWriter::WriteSectionBreak() {
  Write("\\sect \\sectd \\linex0\\endnhere ");
}

void RtfWriter::WriteDocumentEnd() {
  Write("}");
}

bool RtfWriter::WritePicture(TextView path, int percent) {
  return WritePictureGroup(path, percent, "", " ");
}

bool RtfWriter::WriteLogo(TextView path) {
  return WritePictureGroup(path, kFullSize, "\\trowd\\trgaph108\\trleft-108\\trhdr\\cellx8747\\intbl\\ql ",
                           "\\cell\\row ");
}

void RtfWriter::WriteTagPictures(TextView text, TextView place) {
  for (const TagPicture& picture : m_Pictures.OfText(text, place)) {
    Write("\\par ");
    if (!WritePicture(picture.path, picture.scaling)) m_Pictures.NoteMissing(picture);
  }
}

bool RtfWriter::WritePictureGroup(TextView path, int percent, std::string_view before,
                                  std::string_view after) {
  const auto file = m_Pictures.Open(path);
  if (file == nullptr) return false;
  m_Block.resize(kBlockSize);
  const std::int64_t count = file->Read(m_Block.data(), m_Block.size());
  if (count < 0) return false;
  // It is written all the same: whoever reads it decides.
  const std::string_view type = MediaType({m_Block.data(), static_cast<std::size_t>(count)});
  if (type.empty()) {
    m_Pictures.NoteUnknown(path);
  } else if (type != kPhotograph) {
    m_Pictures.NoteNoJpeg(path);
  }

  const std::string scale = std::to_string(percent);
  Write(before);
  Write("{\\*\\shppict {\\pict\\picscalex" + scale + "\\picscaley" + scale +
        "\\piccropl0\\piccropr0\\piccropt0\\piccropb0\\jpegblip ");
  if (!WriteHexDigits(*file, count)) m_Pictures.NoteCutShort(path);
  Write("}}");
  Write(after);
  return true;
}

// `count` bytes are in the block already. False when the file cannot be read to its end.
bool RtfWriter::WriteHexDigits(device::InputFile& file, std::int64_t count) {
  m_Digits.resize(2 * kBlockSize);
  std::array<char, 2> last{};
  bool hasLast = false;
  while (count > 0 && !m_Failed) {
    const auto size = static_cast<std::size_t>(count);
    EncodeHex(m_Block.data(), size, m_Digits.data());
    Write({m_Digits.data(), 2 * size});
    std::memcpy(last.data(), &m_Digits[2 * size - 2], 2);
    hasLast = true;
    count = size < m_Block.size() ? 0 : file.Read(m_Block.data(), m_Block.size());
  }
  // The last byte stands twice, on purpose: every reader of these files has always got it so.
  if (hasLast) Write({last.data(), last.size()});
  return count >= 0;
}

}  // namespace inspector::reports
