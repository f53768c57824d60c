#!/usr/bin/env python3
"""Checks the web page in one file: that everybody can read it, that it needs nothing but itself, and that it says what
was found. The sample visit and one with markup, control characters and nothing at all in its values are written.

    check_web_page.py INSPECTOR_CLI
"""
import base64
import re
import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path

sys.dont_write_bytecode = True
from visits import Home, display_materials, strip_tags, units
from expect_pages import jpeg_size, name_or_none


MEDIA = {b"\xff\xd8\xff": "image/jpeg", b"\x89PN": "image/png"}
LABELS = {"DocNumber": "Doc #", "Date": "Date", "DwellingAddress": "Dwelling Address", "ClientName": "Client Name",
          "ClientAddress": "Client Address", "ClientAgent": "Client's Agent", "RealEstateCompany": "Real Estate Company"}
RULES = ("img{max-width:100%;height:auto}", "@media print{", "nav{display:none}", "break-inside:avoid",
         "img{max-height:11cm;object-fit:contain")
VOID = {"meta", "img", "br"}
# What no page of one file holds: programs, and elements or attributes that fetch or send.
FORBIDDEN = {"script", "link", "iframe", "object", "embed", "form", "base", "audio", "video", "source", "svg"}
FETCHING = {"src", "href", "srcset", "poster", "action", "data", "background", "cite", "ping"}


class Element:
    def __init__(self, tag, attributes, parent):
        self.tag, self.attributes, self.parent, self.children = tag, dict(attributes), parent, []

    def all(self, *tags):
        for child in self.children:
            if isinstance(child, Element):
                if not tags or child.tag in tags:
                    yield child
                yield from child.all(*tags)

    def text(self):
        if self.tag == "br":
            return " "
        inner = "".join(child if isinstance(child, str) else child.text() for child in self.children)
        return inner if self.tag in ("a", "strong", "span", "em") else " " + inner + " "


class Page(HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.declaration, self.faults = "", []
        self.root = self.open = Element("", [], None)
        self.feed(text)
        self.close()
        if self.open is not self.root:
            self.faults.append("<%s> is not closed" % self.open.tag)

    def handle_decl(self, declaration):
        self.declaration = declaration

    def handle_starttag(self, tag, attributes):
        if len(attributes) != len(dict(attributes)):
            self.faults.append("<%s> has an attribute twice" % tag)
        element = Element(tag, attributes, self.open)
        self.open.children.append(element)
        if tag not in VOID:
            self.open = element

    def handle_endtag(self, tag):
        if tag == self.open.tag:
            self.open = self.open.parent
        else:
            self.faults.append("</%s> closes <%s>" % (tag, self.open.tag))

    def handle_data(self, data):
        self.open.children.append(data)


def words(text):
    """As a reader sees it: blanks and what cannot be shown part words, no more."""
    return re.sub("[\x00-\x20\x7f-\x9f\ufffe\uffff]+", " ", text).strip(" ")


def faults(page, content):
    """`content`: what the page must say, as content_of tells it."""
    text = page.decode("utf-8", "strict")
    parsed = Page(text)
    return [*parsed.faults, *structure_faults(parsed), *link_faults(parsed.root), *picture_faults(parsed.root, content),
            *style_faults(parsed.root), *content_faults(parsed.root, content)]


def structure_faults(page):
    root = page.root
    if page.declaration.lower() != "doctype html":
        yield "no doctype"
    if [bool(element.attributes.get("lang")) for element in root.all("html")] != [True]:
        yield "no language"
    if [element.attributes["charset"] for element in root.all("meta") if "charset" in element.attributes] != ["utf-8"]:
        yield "no charset"
    if [bool(words(title.text())) for title in root.all("title")] != [True]:
        yield "no title"
    headings = list(root.all("h1", "h2", "h3", "h4", "h5", "h6"))
    levels = [int(heading.tag[1]) for heading in headings]
    if levels.count(1) != 1 or levels[0] != 1:
        yield "not one h1 before all other headings"
    for before, after in zip(levels, levels[1:]):
        if after > before + 1:
            yield "h%d after h%d" % (after, before)
    for element in [*headings, *root.all("a", "dt", "li")]:
        if not words(element.text()):
            yield "an empty <%s>" % element.tag
    for element in root.all():
        if element.tag in FORBIDDEN or any(name.startswith("on") for name in element.attributes):
            yield "<%s> is a program or fetches" % element.tag


def link_faults(root):
    ids = [element.attributes["id"] for element in root.all() if "id" in element.attributes]
    for name in {name for name in ids if ids.count(name) > 1}:
        yield "id %s is there twice" % name
    for element in root.all():
        for name, value in element.attributes.items():
            if name == "href" and value.startswith("#"):
                if value[1:] not in ids:
                    yield "%s leads nowhere" % value
            elif name in ("aria-labelledby", "for") and value not in ids:
                yield "%s names nothing" % value
            elif name in FETCHING and not (element.tag == "img" and value.startswith("data:image/")):
                yield "%s refers to another file" % value


def picture_faults(root, content):
    shown = []
    told = [(words(image.attributes.get("alt") or ""), image.attributes.get("width")) for image in root.all("img")]
    if told != content["told"]:
        yield "words and widths of pictures are %s, not %s" % (told, content["told"])
    for image in root.all("img"):
        kind, _, data = image.attributes.get("src", "").partition(";base64,")
        try:
            shown.append(base64.b64decode(data, validate=True))
        except ValueError:
            yield "a picture that is not base64"
            continue
        if kind != "data:" + MEDIA.get(shown[-1][:3], "?"):
            yield "a picture said to be " + kind
    if shown != content["pictures"]:
        yield "not the pictures of the device: %d, not %d" % (len(shown), len(content["pictures"]))


def luminance(colour):
    parts = [int(colour[at:at + 2], 16) / 255 for at in (1, 3, 5)]
    parts = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


def style_faults(root):
    """Colours stand on the ground of their own rule, else on that of the body."""
    style = "".join(element.text() for element in root.all("style"))
    if re.search(r"url\(|@import|expression", style) or any("style" in element.attributes for element in root.all()):
        yield "a style that refers to another file, or stands in an element"
    rules = {"body": {}}
    for selector, body in re.findall(r"([^{}]+)\{([^{}]*)\}", style):
        rule = rules.setdefault(selector.strip(), {})
        rule.update(re.findall(r"(?:^|;)\s*(color|background)\s*:\s*([^;]*)", body))
        pair = [rule.get(key, rules["body"].get(key)) for key in ("color", "background")]
        if not all(re.fullmatch("#[0-9a-f]{6}", colour or "") for colour in pair):
            yield "%s: colours %s, not as #rrggbb" % (selector, pair)
            continue
        dark, light = sorted(map(luminance, pair))
        if (light + 0.05) / (dark + 0.05) < 4.5:
            yield "%s: %s on %s has too little contrast" % (selector, *pair)


def frame_faults(root, content):
    """What stands around the categories."""
    parts = [child for body in root.all("body") for child in body.children if isinstance(child, Element)]
    order = ["header", "nav", "main", *(["footer"] if content["footer"] else [])]
    if [part.tag for part in parts] != order:
        yield "the page is made of %s, not of %s" % ([part.tag for part in parts], order)
    for name in ("header", "footer"):
        said = words(" ".join(part.text() for part in parts if part.tag == name))
        if said != content[name]:
            yield "%s says %s, not %s" % (name, said, content[name])
    texts = {element.attributes.get("id"): words(element.text()) for element in root.all("section")}
    for name, title in (("general", "General information"), ("terms", "Definition of terms")):
        if texts.get(name) != (None if content[name] is None else words(title + " " + content[name])):
            yield "%s says %s" % (name, texts.get(name))
    if [element.attributes.get("lang") for element in root.all("html")] != ["en"]:
        yield "not said to be English"
    if not any(element.attributes.get("name") == "viewport" for element in root.all("meta")):
        yield "no viewport: a phone shows it as small as a sheet of paper"
    style = "".join(element.text() for element in root.all("style"))
    for rule in RULES:
        if rule not in style:
            yield "no rule %s" % rule
    sections = ["#" + element.attributes.get("id", "") for element in root.all("section")]
    links = [link.attributes.get("href") for nav in root.all("nav") for link in nav.all("a")]
    if links != sections or sections[:1] != ["#attention"]:
        yield "contents %s, sections %s" % (links, sections)
    for name, expected in (("red", content["red"]), ("urgent red", content["urgentRed"])):
        red = [words(element.text()) for section in root.all("section")
               if (section.attributes.get("id") == "attention") == (name != "red")
               for element in section.all() if "alert" in element.attributes.get("class", "").split()]
        if red != expected:
            yield "%s are %s, not %s" % (name, red, expected)


def content_faults(root, content):
    yield from frame_faults(root, content)
    sections = {element.attributes.get("id"): element for element in root.all("section")}
    order = [name for name in sections if name in ("attention", *content["categories"])]
    if order != ["attention", *content["categories"]]:
        yield "sections %s, not the list of what needs attention and the categories" % order
        return
    for name, told in content["categories"].items():
        if words(sections[name].text()) != told:
            yield "%s says %s, not %s" % (name, words(sections[name].text()), told)
    urgent = words("".join(element.text() for element in sections["attention"].all("h3", "ul")))
    if urgent != content["attention"]:
        yield "what needs attention says %s, not %s" % (urgent, content["attention"])
    headings = {"#" + element.attributes["id"]: words(element.text()) for element in root.all() if "id" in element.attributes}
    for link in root.all("a"):
        if not headings.get(link.attributes.get("href"), "").startswith(words(link.text())):
            yield "%s leads to another heading" % words(link.text())


def header_of(home, visit):
    """What stands above the contents: the company, the title, and labels with their values."""
    office, row = home.owner(), home.header(visit)
    address = [part for part in re.split("(?s)\r.?", office["address"], maxsplit=3) if part]
    own = {name: home.option("Label" + name) or "" for name in LABELS}
    labels = own if own["DwellingAddress"] else LABELS
    date = [int(part) for part in re.findall(r"\d+", row["InspectionDate"] or "")]
    fields = [(labels["DocNumber"], row["InspectionNum"]), ("Inspector", home.option("InspectorEntry") or office["name"]),
              (labels["Date"], "%d/%d/%d" % (date[1], date[2], date[0]) if date else ""),
              (labels["DwellingAddress"], "%s %s" % (row["DwellingAddress"] or "", row["CityStateZip"] or "")),
              (labels["ClientName"], row["ClientName"]),
              (labels["ClientAddress"], "%s %s" % (row["ClientAddress"] or "", row["ClientCityStateZip"] or "")),
              (labels["ClientAgent"], row["ClientAgent"]), (labels["RealEstateCompany"], row["RealEstateCompany"])]
    told = [office["company"], *address[:1], ", ".join(address[1:]), "Inspection Report"]
    for place, (label, value) in enumerate(fields):
        if words(value or "") or place == 0:
            told += [words(name_or_none(label)), words(value or "") or "-"]
    return words(" ".join(told))


def content_of(home, visit):
    """The visible words of each category, those of what needs attention, and the bytes of the pictures, in order."""
    flagged, device = home.flagged(), home.device()
    hidden, pictured = home.option("HideRatings"), not home.option("OmitPictures")
    photo = device.read("\\HousePhoto%s.jpg" % home.document_number(visit)) if pictured else None
    header, alert = home.header(visit), home.flagged("RedFlag")
    general = header["GeneralInformation"] or ""
    photo = photo if photo and photo[:3] in MEDIA else None
    content = {"categories": {}, "attention": "", "pictures": [photo] if photo else [], "red": [], "urgentRed": [],
               "told": [("The house", None)] if photo else [], "header": header_of(home, visit),
               "general": words(general) if len(units(general)) > 2 else None,
               "terms": words(home.option("DefinitionOfTerms")) if home.option("DefinitionOfTerms") else None,
               "footer": words(" ".join(home.option(name) or "" for name in ("FinePrint", "FooterText")))}
    for category, steps in home.reported(visit):
        urgent, told = [], [words(name_or_none(category["CategoryTitle"]))]
        for step in steps:
            heading = words(name_or_none(step["StepNumber"] + " " + step["StepTitle"]))
            rating, comments = "" if hidden else step["InspectResult"], strip_tags(step["Comments"])
            told += [heading, rating, display_materials(step["Materials"]), comments]
            kind = (step["RatingType"], step["InspectResult"])
            if words(rating) and kind in alert:
                content["red"].append(words(rating))
                content["urgentRed"] += [words(rating)] if kind in flagged else []
            if kind in flagged:
                urgent += [heading, rating, comments]
            shown = [(scaling, data) for _, scaling, data in home.shown(step, device) if data[:3] in MEDIA]
            for number, (scaling, data) in enumerate(shown if pictured else [], 1):
                size = jpeg_size(data) if scaling > 0 and scaling != 100 else None
                name = " ".join(part for part in (step["StepNumber"], step["StepTitle"]) if part)
                content["pictures"].append(data)
                content["told"].append((words("%s, picture %d" % (name, number)),
                                        str(max(1, size[0] * scaling // 100)) if size else None))
        content["categories"]["cat%d" % category["CategoryID"]] = words(" ".join(told))
        if urgent:
            content["attention"] = words(" ".join([content["attention"], told[0], *urgent]))
    return content


def insert_hostile_visit(home):
    home.insert("Inspection", {"InspectionID": 5000, "InspectionNum": '</title><script>1</script> & "5"', "ClientName": "",
                "DwellingAddress": "\x01\x1f", "GeneralInformation": "<h1>\x00no\x07 & \ufffe\r\n\r\n\r\n\n\r\U0001f3e0 \x85 -->"})
    titles = ["<h2 id=\"attention\">Walls & 'roofs'</h2>\U0001f3e0", "", "\x02", "\U0001f3e0 &lt; &amp;"]
    home.insert("Category", *[{"CategoryID": 5001 + at, "CategoryNumber": str(at), "CategoryTitle": title,
                                  "InspectionID": 5000, "NotPresentFlag": 0} for at, title in enumerate(titles)])
    steps = [(5001, "", "", "Hazardous", "", ""),
             (5001, "1", "", "", "", "x\x00y\x0bz\x0c\x1b[0m"),
             (5001, "2", "</h3><img src=x onerror=\"alert('1')\">", "Marginal", "<b>;Other:&amp;\"';",
              "]]> <!-- </style> ***Path=\\photo \"<1>\".jpg;Scaling=0*** twice ***Picture-1***, ***Picture-1;Scaling=50***"),
             (5002, "\x03", "\x03", "Omit", "", "x"),
             (5002, "\x03", "\x03", "\x07", "", "x ***Path=\\gone.jpg*** ***Path=\\words.jpg*** ***Path=\\drawn.png***"),
             (5003, "a", "b", "\x7f", "", "!\r\n\r\n\r\n"),
             (5004, "a\r\nb", "c\r\nd", "Hazardous", " \t;", "--\n--" + "<wide>" * 2000)]
    home.insert("Step", *[dict(zip(("CategoryID", "StepNumber", "StepTitle", "InspectResult", "Materials", "Comments",
                                       "RatingType"), (*step, "Condition"))) for step in steps])
    (home.root / "words.jpg").write_bytes(b"<not> a picture")
    (home.root / "drawn.png").write_bytes(b"\x89PNG\r\n\x1a\n" + bytes(range(256)))
    (home.root / 'photo "<1>".jpg').write_bytes(next((home.root / "Storage Card/DCIM").iterdir()).read_bytes())


def faults_of(home, visit):
    path = home.root / ("%d.html" % visit)
    home.run("web", visit, "--out", path)
    tidy = subprocess.run(["tidy", "-e", "-q", path], capture_output=True, text=True)
    found = [*faults(path.read_bytes(), content_of(home, visit)), *tidy.stderr.splitlines()]
    return ["%d: %s" % (visit, fault) for fault in found]


def main(program):
    home = Home(program, "--sample")
    found = faults_of(home, 1000)
    insert_hostile_visit(home)
    found += faults_of(home, 5000)
    home.run("options", "FinePrint=", "FooterText=", "DefinitionOfTerms=", "InspectorEntry=", "LabelDwellingAddress= ",
             "LabelDocNumber=")
    home.run("owner", "name=", "company=", "address=")
    return found + faults_of(home, 5000)


if __name__ == "__main__":
    result = main(Path(sys.argv[1]))
    print("\n".join(result))
    sys.exit(1 if result else 0)
