#include "reports/HtmlElements.h"

#include "device/Format.h"
#include "reports/HtmlEscape.h"

namespace inspector::reports {
namespace {

TextView WordOf(HtmlAlign align) {
  switch (align) {
    case HtmlAlign::Left:
      return u"LEFT";
    case HtmlAlign::Center:
      return u"CENTER";
    case HtmlAlign::Right:
      return u"RIGHT";
    case HtmlAlign::None:
      break;
  }
  return {};
}

}  // namespace

void HtmlGroup::RenderTo(Text& page) const {
  for (const auto& element : m_Elements) element->RenderTo(page);
}

void HtmlText::RenderTo(Text& page) const {
  if (m_Style.centred) page += u"<CENTER>";
  if (m_Style.bold) page += u"<B>";
  if (m_Style.italic) page += u"<I>";
  if (m_Style.underline) page += u"<U>";
  AppendEscaped(page, m_Words, u"<BR>");
  if (m_Style.underline) page += u"</U>";
  if (m_Style.italic) page += u"</I>";
  if (m_Style.bold) page += u"</B>";
  if (m_Style.centred) page += u"</CENTER>";
}

void HtmlAnchor::RenderTo(Text& page) const {
  page.append(u"<a NAME=\"").append(m_Name).append(u"\">");
  HtmlGroup::RenderTo(page);
  page += u"</a>";
}

void HtmlLink::RenderTo(Text& page) const {
  page.append(u"<a HREF=\"").append(m_Address).append(u"\" target=\"").append(m_Frame).append(u"\">");
  AppendEscaped(page, m_Words, u"<BR>");
  page += u"</a>";
}

void HtmlPicture::RenderTo(Text& page) const {
  page.append(u"<IMG SRC=\"").append(m_File).append(u"\"");
  if (m_Size) page += device::Format(u" WIDTH=%d HEIGHT=%d", m_Size->width, m_Size->height);
  page += u" ALT=\"";
  AppendEscaped(page, m_Description, u" ");
  page += u"\">";
}

void HtmlParagraph::RenderTo(Text& page) const {
  page += u"<P";
  if (m_Align != HtmlAlign::None) page.append(u" ALIGN=\"").append(WordOf(m_Align)).append(u"\"");
  page += u">";
  HtmlGroup::RenderTo(page);
  page += u"</P>";
}

void HtmlCell::RenderTo(Text& page) const {
  page += m_Form.isHeader ? u"<TH" : u"<TD";
  if (m_Form.vertical != Vertical::None)
    page += m_Form.vertical == Vertical::Middle ? u" VALIGN=MIDDLE" : u" VALIGN=BOTTOM";
  if (m_Form.align != HtmlAlign::None) page.append(u" ALIGN=").append(WordOf(m_Form.align));
  // The blank has always been there.
  if (m_Form.columns > 1) page += device::Format(u" COLSPAN =%d", m_Form.columns);
  page += u">";
  HtmlGroup::RenderTo(page);
  page += m_Form.isHeader ? u"</TH>" : u"</TD>";
}

void HtmlRow::RenderTo(Text& page) const {
  page += u"<TR>";
  HtmlGroup::RenderTo(page);
  page += u"</TR>\n";
}

void HtmlTable::RenderTo(Text& page) const {
  page += u"<TABLE";
  // A percentage is followed by two blanks, on purpose.
  if (m_Form.width > 0)
    page += device::Format(m_Form.isPercent ? u" WIDTH=%d%% " : u" WIDTH=%d ", m_Form.width);
  page += device::Format(u" BORDER=%d", m_Form.border);
  if (m_Form.spacing >= 0) page += device::Format(u" CELLSPACING=%d", m_Form.spacing);
  // Misspelt on purpose.
  if (m_Form.padding >= 0) page += device::Format(u" CELLPADING=%d", m_Form.padding);
  page += u">";
  if (!m_Form.caption.empty()) {
    page += u"\n<CAPTION>";
    AppendEscaped(page, m_Form.caption, u"<BR>");
    page += u"</CAPTION>\n";
  }
  for (const auto& row : Elements()) {
    row->RenderTo(page);
    page += u"\n";
  }
  page += u"\n</TABLE>";
}

void HtmlPage::RenderTo(Text& page) const {
  page += u"<html><head><title>";
  AppendEscaped(page, m_Title, u" ");
  page += u"</title></head><body>";
  HtmlGroup::RenderTo(page);
  page += u"</body></html>";
}

}  // namespace inspector::reports
