#include "reports/WebPageWriter.h"

#include <algorithm>

#include "device/Format.h"
#include "reports/Base64Writer.h"
#include "reports/HtmlEscape.h"
#include "reports/MediaType.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

void BlankControls(Text& words) {
  constexpr auto kIsControl = [](char16_t unit) { return IsControl(unit); };
  for (std::size_t at = 0; (at = device::FindUnit(TextView(words), kIsControl, at)) < words.size(); ++at)
    words[at] = u' ';
}

// Dark words on light ground everywhere, at least 4.5 to 1, so that a report can be read in the sun.
constexpr std::string_view kStyle =
    "body{margin:0 auto;max-width:52rem;padding:1rem;color:#1b1f23;background:#ffffff;"
    "font:1rem/1.5 \"Liberation Sans\",Helvetica,Arial,sans-serif;overflow-wrap:anywhere}\n"
    "a{color:#0b57a4}\n"
    "h1{font-size:1.75rem;line-height:1.2;margin:1rem 0}\n"
    "h2{font-size:1.35rem;line-height:1.25;margin:2rem 0 .5rem;padding-top:.5rem;border-top:3px solid "
    "#0b57a4}\n"
    "h3{font-size:1.05rem;margin:1.25rem 0 .25rem}\n"
    "p{margin:.25rem 0 .5rem}\n"
    ".company{text-align:center;margin:0}\n"
    ".company strong{font-size:1.2rem}\n"
    "dl{display:grid;grid-template-columns:minmax(7rem,14rem) 1fr;gap:.25rem 1rem}\n"
    "dt{font-weight:bold}\n"
    "dd{margin:0}\n"
    "nav ol,.findings{padding-left:1.25rem}\n"
    "nav ol{columns:18rem}\n"
    "nav a{display:inline-block;padding:.35rem 0}\n"
    ".rating{display:inline-block;padding:0 .5rem;border-radius:.25rem;font-weight:bold;font-size:.95rem;"
    "color:#1b1f23;background:#e4eaf0}\n"
    ".rating.alert{color:#ffffff;background:#a61b14}\n"
    ".materials{color:#4a5560}\n"
    "figure{margin:.75rem 0}\n"
    "img{max-width:100%;height:auto}\n"
    ".small{font-size:.875rem;color:#4a5560}\n"
    "@media (max-width:30rem){dl{display:block}dd{margin:0 0 .5rem}}\n"
    "@media print{body{max-width:none;padding:0;font-size:10.5pt}nav{display:none}a{color:#1b1f23;"
    "text-decoration:none}h2,h3{break-after:avoid}figure,li{break-inside:avoid}img{max-height:11cm;object-"
    "fit:contain;object-position:left}}\n";

Text AnchorOf(const ReportSection& category) {
  return device::Format(u"cat%d", category.categoryID);
}

// `step` counts from 1.
Text AnchorOf(const ReportSection& category, std::size_t step) {
  return device::Format(u"cat%d-%d", category.categoryID, step);
}

std::string_view Plural(std::size_t count) {
  return count == 1 ? "" : "s";
}

}  // namespace

WebPageWriter::WebPageWriter(device::OutputFile& output, ReportPictures& pictures,
                             const ReportContent& content, bool hideRatings)
    : m_Output(output), m_Pictures(pictures), m_Content(content), m_HideRatings(hideRatings) {}

bool WebPageWriter::IsShown(const ReportSection& section) const {
  return !section.isSkipped && !section.steps.empty();
}

bool WebPageWriter::HasGeneralInformation() const {
  return m_Content.HasGeneralInformation() && HasWords(m_Content.generalInformation);
}

bool WebPageWriter::NeedsAttention(const ReportStep& step) const {
  return step.isReported && (step.isSummary || step.isRed);
}

void WebPageWriter::PutWords(TextView words, TextView lineEnd) {
  Text escaped;
  AppendEscaped(escaped, words, lineEnd);
  BlankControls(escaped);
  Put(device::ToUtf8(escaped));
}

void WebPageWriter::PutName(TextView name) {
  PutWords(NameOrNone(name));
}

void WebPageWriter::WritePage(ReportProgress& progress) {
  WriteHead();
  WriteTitle();
  WriteContents();
  Put("<main>\n");
  WriteAttention();
  if (HasGeneralInformation()) WriteText(u"general", u"General information", m_Content.generalInformation);
  for (const ReportSection& category : m_Content.sections) {
    if (!WriteCategory(category, progress) || !progress.PartDone()) return;
  }
  if (HasWords(m_Content.definitionOfTerms))
    WriteText(u"terms", u"Definition of terms", m_Content.definitionOfTerms);
  Put("</main>\n");
  WriteEnd();
  Put("</body>\n</html>\n");
}

void WebPageWriter::WriteEnd() {
  const bool hasFinePrint = HasWords(m_Content.finePrint);
  if (!hasFinePrint && !HasWords(m_Content.footer)) return;
  Put("<footer>\n");
  if (hasFinePrint) {
    Put("<div class=\"small\">\n");
    WriteParagraphs(m_Content.finePrint);
    Put("</div>\n");
  }
  WriteParagraphs(m_Content.footer);
  Put("</footer>\n");
}

void WebPageWriter::WriteHead() {
  Put("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>Inspection Report");
  for (const Text& part : {m_Content.header.documentNumber, m_Content.header.dwellingAddress[0]}) {
    if (!HasWords(part)) continue;
    Put(" - ");
    PutWords(part);
  }
  Put("</title>\n<style>\n");
  Put(kStyle);
  Put("</style>\n</head>\n<body>\n");
}

void WebPageWriter::WriteTitle() {
  Put("<header>\n");
  bool isName = true;
  for (const Text& line : m_Content.companyLines) {
    if (HasWords(line)) {
      Put(isName ? "<p class=\"company\"><strong>" : "<p class=\"company\">");
      PutWords(line);
      Put(isName ? "</strong></p>\n" : "</p>\n");
    }
    isName = false;
  }
  Put("<h1>Inspection Report</h1>\n");
  const Text house = ReportPictures::HousePhotoPath(m_Content.header.documentNumber);
  if (!WritePicture(house, 100, u"The house") && m_Pictures.Exists(house)) m_Pictures.NoteUnreadable(house);
  Put("<dl>\n");
  WriteFields();
  Put("</dl>\n</header>\n");
}

void WebPageWriter::WriteFields() {
  bool isEmpty = true;
  for (const HeaderField& field : HeaderFields(m_Content)) {
    // Always one: a list needs an entry.
    if (!HasWords(field.value) && !isEmpty) continue;
    isEmpty = false;
    Put("<dt>");
    PutName(field.label);
    Put("</dt><dd>");
    PutWords(HasWords(field.value) ? TextView(field.value) : u"-", u"<br>");
    Put("</dd>\n");
  }
}

void WebPageWriter::WriteContents() {
  const auto writeLink = [this](TextView id, TextView title) {
    Put("<li><a href=\"#");
    PutWords(id);
    Put("\">");
    PutName(title);
    Put("</a></li>\n");
  };
  Put("<nav aria-labelledby=\"contents\">\n<h2 id=\"contents\">Contents</h2>\n<ol>\n");
  writeLink(u"attention", u"What needs attention");
  if (HasGeneralInformation()) writeLink(u"general", u"General information");
  for (const ReportSection& section : m_Content.sections)
    if (IsShown(section)) writeLink(AnchorOf(section), section.title);
  if (HasWords(m_Content.definitionOfTerms)) writeLink(u"terms", u"Definition of terms");
  Put("</ol>\n</nav>\n");
}

void WebPageWriter::WriteAttention() {
  std::size_t count = 0;
  for (const ReportSection& section : m_Content.sections)
    if (IsShown(section))
      count += static_cast<std::size_t>(
          std::count_if(section.steps.begin(), section.steps.end(),
                        [this](const ReportStep& step) { return NeedsAttention(step); }));
  Put("<section id=\"attention\">\n<h2>What needs attention</h2>\n<p>");
  if (count == 0) {
    Put("Nothing was found that is marked for attention.");
  } else {
    PutNumber(count);
    Put(" finding");
    Put(Plural(count));
    Put(". Each leads to its place in the report, where the pictures are.");
  }
  Put("</p>\n");
  for (const ReportSection& category : m_Content.sections) WriteAttentionOf(category);
  Put("</section>\n");
}

void WebPageWriter::WriteAttentionOf(const ReportSection& category) {
  if (!IsShown(category)) return;
  bool isBegun = false;
  for (std::size_t n = 0; n < category.steps.size(); ++n) {
    const ReportStep& step = category.steps[n];
    if (!NeedsAttention(step)) continue;
    if (!isBegun) {
      Put("<h3>");
      PutName(category.title);
      Put("</h3>\n<ul class=\"findings\">\n");
      isBegun = true;
    }
    Put("<li><a href=\"#");
    PutWords(AnchorOf(category, n + 1));
    Put("\">");
    PutName(NameOf(step));
    Put("</a>");
    WriteRating(step);
    WriteParagraphs(WordsOf(step));
    Put("</li>\n");
  }
  if (isBegun) Put("</ul>\n");
}

void WebPageWriter::WriteText(TextView id, TextView title, const Text& words) {
  Put("<section id=\"");
  PutWords(id);
  Put("\">\n<h2>");
  PutWords(title);
  Put("</h2>\n");
  WriteParagraphs(words);
  Put("</section>\n");
}

bool WebPageWriter::WriteCategory(const ReportSection& category, ReportProgress& progress) {
  if (!IsShown(category)) return true;
  Put("<section id=\"");
  PutWords(AnchorOf(category));
  Put("\">\n<h2>");
  PutName(category.title);
  Put("</h2>\n");
  for (std::size_t n = 0; n < category.steps.size(); ++n) {
    if (category.steps[n].isReported) WriteStep(category.steps[n], AnchorOf(category, n + 1));
    if (!progress.StepDone() || !m_Output.Error().empty()) return false;
  }
  Put("</section>\n");
  return true;
}

void WebPageWriter::WriteStep(const ReportStep& step, TextView anchor) {
  Put("<h3 id=\"");
  PutWords(anchor);
  Put("\">");
  PutName(NameOf(step));
  WriteRating(step);
  Put("</h3>\n");
  if (HasWords(step.materials)) {
    Put("<p class=\"materials\">");
    PutWords(step.materials, u"<br>");
    Put("</p>\n");
  }
  WriteParagraphs(WordsOf(step));
  WritePictures(step);
}

void WebPageWriter::WriteRating(const ReportStep& step) {
  if (m_HideRatings || !HasWords(step.rating)) return;
  Put(step.isRed ? " <span class=\"rating alert\">" : " <span class=\"rating\">");
  PutWords(step.rating);
  Put("</span>");
}

void WebPageWriter::WriteParagraphs(TextView words) {
  Text escaped;
  AppendEscaped(escaped, words, u"\n");
  BlankControls(escaped);
  bool isOpen = false;
  for (TextView left = escaped; !left.empty();) {
    const TextView line = left.substr(0, left.find(u'\n'));
    left.remove_prefix(std::min(line.size() + 1, left.size()));
    const bool isBlank = !HasWords(line);
    if (isOpen && isBlank) Put("</p>\n");
    if (isOpen && !isBlank) Put("<br>\n");
    if (!isOpen && !isBlank) Put("<p>");
    isOpen = !isBlank;
    if (!isBlank) Put(device::ToUtf8(line));
  }
  if (isOpen) Put("</p>\n");
}

void WebPageWriter::WritePictures(const ReportStep& step) {
  int number = 1;
  for (const TagPicture& picture : m_Pictures.OfText(step.comments, NameOf(step))) {
    const Text description = device::Format(u"%s, picture %d", NameOf(step), number);
    if (WritePicture(picture.path, picture.scaling, description))
      ++number;
    else
      m_Pictures.NoteMissing(picture);
  }
}

bool WebPageWriter::WritePicture(TextView path, int scaling, TextView description) {
  auto file = m_Pictures.Open(path);
  if (file == nullptr) return false;
  char begin[kSignatureBytes];
  const std::int64_t count = file->Read(begin, sizeof begin);
  const std::string_view begun(begin, static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
  const std::string_view type = MediaType(begun);
  if (type.empty()) return false;
  Put("<figure><img alt=\"");
  PutWords(description);
  Put("\"");
  if (const auto size = m_Pictures.ShownSize(path, scaling)) {
    Put(" width=\"");
    PutNumber(static_cast<std::size_t>(size->width));
    Put("\"");
  }
  Put(" src=\"data:");
  Put(type);
  Put(";base64,");
  if (!WriteBase64(*file, begun, m_Output)) m_Pictures.NoteCutShort(path);
  Put("\"></figure>\n");
  return true;
}

}  // namespace inspector::reports
