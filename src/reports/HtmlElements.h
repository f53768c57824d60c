// Pages for the browsers of the devices that the reports have always been read on: built from elements in
// memory, each of which renders itself. Tags are in capitals and some attributes oddly spaced or spelt;
// readers of the pages rely on it, so they stay.
#pragma once

#include <memory>
#include <vector>

#include "device/JpegSize.h"
#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

class HtmlElement {
public:
  virtual ~HtmlElement() = default;
  virtual void RenderTo(Text& page) const = 0;
};

// Elements one after the other.
class HtmlGroup : public HtmlElement {
public:
  // The element lives as long as the group.
  template <typename Element, typename... Arguments>
  Element& Add(Arguments&&... arguments) {
    auto element = std::make_unique<Element>(std::forward<Arguments>(arguments)...);
    Element& added = *element;
    m_Elements.push_back(std::move(element));
    return added;
  }
  void RenderTo(Text& page) const override;

protected:
  const std::vector<std::unique_ptr<HtmlElement>>& Elements() const { return m_Elements; }

private:
  std::vector<std::unique_ptr<HtmlElement>> m_Elements;
};

// Tags that stand as they are.
class HtmlFixed : public HtmlElement {
public:
  explicit HtmlFixed(Text markup) : m_Markup(std::move(markup)) {}
  void RenderTo(Text& page) const override { page += m_Markup; }

private:
  Text m_Markup;
};

// Words, escaped, with "<BR>" at the end of each line.
class HtmlText : public HtmlElement {
public:
  struct Style {
    bool centred = false;
    bool bold = false;
    bool italic = false;
    bool underline = false;
  };
  explicit HtmlText(Text words) : m_Words(std::move(words)) {}
  HtmlText(Text words, Style style) : m_Words(std::move(words)), m_Style(style) {}
  void RenderTo(Text& page) const override;

private:
  Text m_Words;
  Style m_Style;
};

// The place that a link leads to, with what stands there.
class HtmlAnchor : public HtmlGroup {
public:
  explicit HtmlAnchor(Text name) : m_Name(std::move(name)) {}
  void RenderTo(Text& page) const override;

private:
  Text m_Name;
};

// Leads from one frame into another.
class HtmlLink : public HtmlElement {
public:
  HtmlLink(Text address, Text frame, Text words)
      : m_Address(std::move(address)), m_Frame(std::move(frame)), m_Words(std::move(words)) {}
  void RenderTo(Text& page) const override;

private:
  Text m_Address;
  Text m_Frame;
  Text m_Words;
};

// A picture beside the page; in its own size when there is no other.
class HtmlPicture : public HtmlElement {
public:
  HtmlPicture(Text file, std::optional<device::PictureSize> size, Text description)
      : m_File(std::move(file)), m_Size(size), m_Description(std::move(description)) {}
  void RenderTo(Text& page) const override;

private:
  Text m_File;
  std::optional<device::PictureSize> m_Size;
  Text m_Description;
};

enum class HtmlAlign { None, Left, Center, Right };

class HtmlParagraph : public HtmlGroup {
public:
  explicit HtmlParagraph(HtmlAlign align) : m_Align(align) {}
  void RenderTo(Text& page) const override;

private:
  HtmlAlign m_Align;
};

class HtmlCell : public HtmlGroup {
public:
  enum class Vertical { None, Middle, Bottom };
  struct Form {
    bool isHeader = false;
    HtmlAlign align = HtmlAlign::None;
    Vertical vertical = Vertical::None;
    int columns = 1;
  };
  HtmlCell() = default;
  explicit HtmlCell(Form form) : m_Form(form) {}
  void RenderTo(Text& page) const override;

private:
  Form m_Form;
};

class HtmlRow : public HtmlGroup {
public:
  void RenderTo(Text& page) const override;
};

// Holds rows: HtmlRow, or HtmlFixed for one that is written out.
class HtmlTable : public HtmlGroup {
public:
  struct Form {
    int width = 0;  // 0: as wide as it needs to be
    bool isPercent = false;
    int border = 0;
    int spacing = -1;  // below 0: the browser's own
    int padding = -1;
    Text caption{};
  };
  explicit HtmlTable(Form form) : m_Form(std::move(form)) {}
  void RenderTo(Text& page) const override;

private:
  Form m_Form;
};

class HtmlPage : public HtmlGroup {
public:
  explicit HtmlPage(Text title) : m_Title(std::move(title)) {}
  void RenderTo(Text& page) const override;

private:
  Text m_Title;
};

}  // namespace inspector::reports
