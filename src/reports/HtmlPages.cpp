#include "reports/HtmlPages.h"

#include "device/Format.h"
#include "editing/PictureTags.h"
#include "reports/HtmlEscape.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

constexpr HtmlText::Style kBold{.bold = true};
constexpr TextView kLineEnd = u"<BR>";

Text Escaped(TextView words) {
  Text escaped;
  AppendEscaped(escaped, words, kLineEnd);
  return escaped;
}

void AddField(HtmlTable& table, const Text& label, const Text& value) {
  HtmlRow& row = table.Add<HtmlRow>();
  row.Add<HtmlCell>().Add<HtmlText>(label + u":", kBold);
  row.Add<HtmlCell>().Add<HtmlText>(value);
}

// The cell of a step's row; `content` is escaped.
Text StepCell(TextView content) {
  return Text(u"<TD VALIGN=TOP ALIGN=LEFT>").append(content).append(u"</TD>");
}

Text RatingOf(const ReportStep& step) {
  return Text(step.isRed ? u"<font color=\"FF0000\"><B>" : u"<font color=\"000000\"><B>")
      .append(Escaped(step.rating))
      .append(u"</B></font>");
}

}  // namespace

HtmlPages::HtmlPages(const ReportContent& content, PagePictures& pictures, bool hideRatings)
    : m_Content(content), m_Pictures(pictures), m_IsShort(hideRatings) {
  AddHeader();
  m_Contents.Add<HtmlText>(u"Contents", kBold);
  m_Contents.Add<HtmlFixed>(Text(kLineEnd));
}

void HtmlPages::AddHeader() {
  bool isName = true;
  for (const Text& line : m_Content.companyLines) {
    if (HasWords(line)) m_Inspection.Add<HtmlText>(line, HtmlText::Style{.centred = true, .bold = isName});
    isName = false;
  }
  if (auto photo = m_Pictures.OfHouse(m_Content.header.documentNumber))
    m_Inspection.Add<HtmlParagraph>(HtmlAlign::Center)
        .Add<HtmlPicture>(photo->file, photo->size, Text(u"The house"));
  HtmlTable& table = m_Inspection.Add<HtmlTable>(HtmlTable::Form{.spacing = 0, .padding = 4});
  for (const HeaderField& field : HeaderFields(m_Content))
    if (field.isUsual || !field.value.empty()) AddField(table, field.label, field.value);
  if (m_Content.HasGeneralInformation()) AddTextBlock(u"GENERAL INFORMATION", m_Content.generalInformation);
}

void HtmlPages::AddTextBlock(TextView title, const Text& words) {
  if (!HasWords(words)) return;
  HtmlParagraph& block = m_Inspection.Add<HtmlParagraph>(HtmlAlign::Left);
  if (!title.empty()) {
    block.Add<HtmlText>(Text(title), kBold);
    block.Add<HtmlFixed>(Text(kLineEnd));
  }
  block.Add<HtmlText>(words, HtmlText::Style{.italic = title.empty()});
}

bool HtmlPages::AddCategory(const ReportSection& category, ReportProgress& progress) {
  if (category.isSkipped) return true;
  const Text name = device::Format(u"cat%d", category.categoryID);
  m_Contents.Add<HtmlLink>(device::Format(u"%s#%s", kInspectionPage, name), u"main",
                           Text(NameOrNone(category.title)));
  m_Contents.Add<HtmlFixed>(Text(kLineEnd));

  HtmlParagraph& title = m_Inspection.Add<HtmlParagraph>(HtmlAlign::Left);
  title.Add<HtmlAnchor>(name).Add<HtmlText>(Text(NameOrNone(category.title)),
                                            HtmlText::Style{.bold = true, .underline = true});
  if (category.steps.empty()) return true;
  HtmlTable& table = m_Inspection.Add<HtmlTable>(
      HtmlTable::Form{.width = 100, .isPercent = true, .spacing = 0, .padding = 2});
  AddHeading(table);
  for (const ReportStep& step : category.steps) {
    if (step.isReported) AddStep(table, step);
    if (!progress.StepDone()) return false;
  }
  return true;
}

void HtmlPages::AddHeading(HtmlTable& table) const {
  constexpr HtmlCell::Form kHeading{.isHeader = true, .align = HtmlAlign::Left};
  const auto addCell = [](HtmlRow& row, TextView words, HtmlCell::Form form) {
    row.Add<HtmlCell>(form).Add<HtmlText>(Text(words));
  };
  HtmlRow& row = table.Add<HtmlRow>();
  addCell(row, u"Step #", kHeading);
  addCell(row, u"Component", kHeading);
  if (m_IsShort) return addCell(row, u"Comments", kHeading);
  addCell(row, u"Material Type", kHeading);
  addCell(row, u"Rating", kHeading);
  addCell(table.Add<HtmlRow>(), u"Comments", {.isHeader = true, .align = HtmlAlign::Left, .columns = 4});
}

void HtmlPages::AddStep(HtmlTable& table, const ReportStep& step) {
  const Text words = editing::StripTags(step.comments);
  Text row = u"<TR>" + StepCell(Escaped(step.number)) + StepCell(Escaped(step.title));
  if (m_IsShort) {
    row += StepCell(Escaped(Joined(step.materials, u"  ", words)));
  } else {
    row += StepCell(Escaped(step.materials)) + StepCell(RatingOf(step));
  }
  table.Add<HtmlFixed>(row + u"</TR>");
  if (!m_IsShort && !WordsOf(step).empty()) table.Add<HtmlFixed>(FullRow(Escaped(words)));
  AddPictures(table, step);
  table.Add<HtmlFixed>(
      device::Format(u"<TR><TD COLSPAN=%d><FONT SIZE=2>&nbsp;</FONT></TD></TR>", m_IsShort ? 3 : 4));
}

void HtmlPages::AddPictures(HtmlTable& table, const ReportStep& step) {
  if (editing::FindFirstTag(step.comments).empty()) return;
  Text pictures;
  for (const PagePicture& picture : m_Pictures.OfText(step.comments, NameOf(step))) {
    if (!pictures.empty()) pictures += u' ';
    HtmlPicture(picture.file, picture.size, step.title).RenderTo(pictures);
  }
  if (!pictures.empty()) table.Add<HtmlFixed>(FullRow(pictures));
}

Text HtmlPages::FullRow(TextView content) const {
  return device::Format(u"<TR><TD VALIGN=TOP COLSPAN=%d ALIGN=LEFT>%s</TD></TR>", m_IsShort ? 3 : 4, content);
}

void HtmlPages::AddEnd() {
  AddTextBlock(u"DEFINITION OF TERMS", m_Content.definitionOfTerms);
  AddTextBlock({}, m_Content.finePrint);
  if (HasWords(m_Content.footer))
    m_Inspection.Add<HtmlParagraph>(HtmlAlign::Center).Add<HtmlText>(m_Content.footer);
}

}  // namespace inspector::reports
