// The tags as readers of the pages have always got them, letter by letter.
#include "reports/HtmlElements.h"

#include <gtest/gtest.h>

namespace inspector::reports {
namespace {

Text Rendered(const HtmlElement& element) {
  Text page;
  element.RenderTo(page);
  return page;
}

TEST(HtmlElementsTest, TablesSayOnlyWhatTheyWereTold) {
  const Text end = u"><TR><TD>x</TD></TR>\n\n\n</TABLE>";
  const std::pair<HtmlTable::Form, Text> forms[] = {
      {{}, u"<TABLE BORDER=0" + end},
      {{.width = 90, .isPercent = true, .border = 1, .spacing = 0, .padding = 0},
       u"<TABLE WIDTH=90%  BORDER=1 CELLSPACING=0 CELLPADING=0" + end},
      {{.width = 640, .spacing = 2}, u"<TABLE WIDTH=640  BORDER=0 CELLSPACING=2" + end},
      {{.spacing = -1, .padding = 3}, u"<TABLE BORDER=0 CELLPADING=3" + end},
      {{.caption = u"a<b"}, u"<TABLE BORDER=0>\n<CAPTION>a&lt;b</CAPTION>\n" + end.substr(1)}};
  for (const auto& [form, expected] : forms) {
    HtmlTable table(form);
    table.Add<HtmlRow>().Add<HtmlCell>().Add<HtmlText>(u"x");
    EXPECT_EQ(Rendered(table), expected);
  }
}

// Those that the pages of a report do not have.
TEST(HtmlElementsTest, CellsParagraphsAndStyles) {
  using Vertical = HtmlCell::Vertical;
  EXPECT_EQ(Rendered(HtmlCell({.align = HtmlAlign::Right, .vertical = Vertical::Middle, .columns = 4})),
            u"<TD VALIGN=MIDDLE ALIGN=RIGHT COLSPAN =4></TD>");
  EXPECT_EQ(Rendered(HtmlCell({.isHeader = true, .align = HtmlAlign::Center, .vertical = Vertical::Bottom})),
            u"<TH VALIGN=BOTTOM ALIGN=CENTER></TH>");
  EXPECT_EQ(Rendered(HtmlParagraph(HtmlAlign::Right)), u"<P ALIGN=\"RIGHT\"></P>");
  EXPECT_EQ(Rendered(HtmlParagraph(HtmlAlign::None)), u"<P></P>");
  EXPECT_EQ(Rendered(HtmlText(u"a\r\n&", {true, true, true, true})),
            u"<CENTER><B><I><U>a<BR>&amp;</U></I></B></CENTER>");
}

}  // namespace
}  // namespace inspector::reports
