"""An independent reckoning of the pages with frames and of the plain text of a visit, beside expect_report.py.
"""

import re
import unicodedata

from expect_report import (Report, display_materials, first_tag, known_path, leading_number, strip_tags, tag_scaling,
                           tags_of, to_bytes, units)

PAGES = "Pages"  # index.htm, toc.htm, inspection.htm and the pictures that they show
TEXT = "Text"    # one file

WIDTH = 78
MOST = 100096  # bytes of a page; a person may agree to the beginning of a larger one

LARGE = {bytes([byte]).decode("cp1252", "ignore") for byte in range(256)}  # letters that need not stay small
BLANKS = " \r\n\t"

FRAMES = ('<html><head><title>Inspection Report</title></head><frameset cols="150,*">'
          '<frame name="contents" target="contents" src="toc.htm"><frame name="main" src="inspection.htm" target="main">'
          '</frameset></html>')


def html(text):
    for mark, word in (("&", "&amp;"), ("<", "&lt;"), (">", "&gt;"), ('"', "&quot;")):
        text = text.replace(mark, word)
    return "<BR>".join(lines_of(text))


def lines_of(text):
    return re.split("\r\n|\r|\n", text)


def is_picture(data):
    return data.startswith((b"\xff\xd8\xff", b"\x89PNG\r\n", b"GIF8", b"BM")) or (
        data[:4] == b"RIFF" and data[8:12] == b"WEBP")


def jpeg_size(data):
    """Width and height as the camera was held, or None where the bytes are no picture."""
    if not data.startswith(b"\xff\xd8"):
        return None
    place, turned = 2, False
    while place + 9 < len(data) and data[place] == 0xFF:
        kind, length = data[place + 1], int.from_bytes(data[place + 2:place + 4], "big")
        body = data[place + 4:place + 2 + length]
        if kind == 0xE1 and body.startswith(b"Exif\0\0"):
            turned = orientation(body[6:]) in (5, 6, 7, 8)
        if 0xC0 <= kind <= 0xCF and kind not in (0xC4, 0xC8, 0xCC):
            height, width = int.from_bytes(body[1:3], "big"), int.from_bytes(body[3:5], "big")
            return (height, width) if turned else (width, height)
        place += 2 + length
    return None


def orientation(tiff):
    order = "little" if tiff.startswith(b"II") else "big"
    at = int.from_bytes(tiff[4:8], order)
    for entry in range(at + 2, at + 2 + 12 * int.from_bytes(tiff[at:at + 2], order), 12):
        if int.from_bytes(tiff[entry:entry + 2], order) == 0x0112:
            return int.from_bytes(tiff[entry + 8:entry + 10], order)
    return 1


class Readable(Report):
    """What the pages and the plain text have in common: what is said, not how it is written."""

    def __init__(self, visit, layout, base):
        super().__init__(visit, layout, base)
        keys = {id(category): category.get("key", 2001 + place) for place, category in enumerate(self.categories)}
        self.reported = []  # key of the category, title, whether anything was found, steps
        for category in sorted(self.categories, key=lambda c: (units(c["number"]), units(c["title"]))):
            steps = [step for step in category["steps"]
                     if max(units(step["comments"]), units(step["materials"]), units(step["rating"])) > units(" ")]
            if not category["notPresent"]:
                shown = [step for step in steps if step["rating"] != "Omit"]
                self.reported.append((keys[id(category)], category["title"], bool(steps),
                                      sorted(shown, key=lambda step: units(step["number"]))))

    def title_rows(self):
        """Labels and the lines behind them that are not empty."""
        labels, header = self.labels(), self.header
        rows = [(labels["document"], [header["documentNumber"]]),
                ("Inspector", [self.options["Inspector"] or self.owner["name"]]),
                (labels["date"], [self.date()]),
                (labels["dwelling"], [header["dwellingAddress"], header["dwellingCityStateZip"]]),
                (labels["client"], [header["clientName"]]),
                (labels["clientAddress"], [header["clientAddress"], header["clientCityStateZip"]]),
                (labels["agent"], [header["clientAgent"]]),
                (labels["company"], [header["realEstateCompany"]])]
        return [(label, [line for line in lines if line]) for label, lines in rows]

# --- pages with frames -----------------------------------------------------------------------------------------

class Pages(Readable):
    def files(self):
        self.copies = {}  # of which device file, in the case of its first mention: name
        body = self.head()
        links = "<B>Contents</B><BR>"
        for key, title, is_found, steps in self.reported:
            title = name_or_none(title)
            links += '<a HREF="inspection.htm#cat%d" target="main">%s</a><BR>' % (key, html(title))
            body += '<P ALIGN="LEFT"><a NAME="cat%d"><B><U>%s</U></B></a></P>' % (key, html(title))
            body += self.table(steps) if is_found else ""
        body += self.foot()
        page = "<html><head><title>%s</title></head><body>%s</body></html>"
        files = {"index.htm": FRAMES, "toc.htm": page % ("Contents", links),
                 "inspection.htm": page % ("Inspection Report", body)}
        files = {name: to_bytes(text)[:MOST] for name, text in files.items()}
        for path, name in self.copies.items():
            files[name] = self.device.read(path)
        return files

    def head(self):
        lines = [html(line) if has_words(line) else "" for line in self.company_lines()]
        lines[0] = lines[0] and "<B>%s</B>" % lines[0]
        text = "".join("<CENTER>%s</CENTER>" % line for line in lines if line)
        photo = self.image("\\HousePhoto" + self.header["documentNumber"] + ".jpg", 100, "The house")
        if photo:
            text += '<P ALIGN="CENTER">%s</P>' % photo
        rows = "".join("<TR><TD><B>%s:</B></TD><TD>%s</TD></TR>\n\n" % (html(label), "<BR>".join(map(html, lines)))
                       for at, (label, lines) in enumerate(self.title_rows()) if at < 5 or lines)
        text += "<TABLE BORDER=0 CELLSPACING=0 CELLPADING=4>%s\n</TABLE>" % rows
        if self.has_general_information():
            text += '<P ALIGN="LEFT"><B>GENERAL INFORMATION</B><BR>%s</P>' % html(self.general)
        return text

    def foot(self):
        text = ""
        if has_words(self.options["DefinitionOfTerms"]):
            text += '<P ALIGN="LEFT"><B>DEFINITION OF TERMS</B><BR>%s</P>' % html(self.options["DefinitionOfTerms"])
        if has_words(self.options["FinePrint"]):
            text += '<P ALIGN="LEFT"><I>%s</I></P>' % html(self.options["FinePrint"])
        if has_words(self.options["FooterText"]):
            text += '<P ALIGN="CENTER">%s</P>' % html(self.options["FooterText"])
        return text

    def table(self, steps):
        short = self.options["HideRatings"]
        names = ["Step #", "Component"] if short else ["Step #", "Component", "Material Type", "Rating"]
        heads = "".join("<TH ALIGN=LEFT>%s</TH>" % name for name in names)
        if short:
            heads += "<TH ALIGN=LEFT>Comments</TH></TR>\n\n"
        else:
            heads += "</TR>\n\n<TR><TH ALIGN=LEFT COLSPAN =4>Comments</TH></TR>\n\n"
        rows = "".join(self.short_step(step) if short else self.step(step) for step in steps)
        return ("<TABLE WIDTH=100%  BORDER=0 CELLSPACING=0 CELLPADING=2><TR>" + heads + rows + "\n</TABLE>")

    def cells(self, *texts):
        return "<TR>" + "".join("<TD VALIGN=TOP ALIGN=LEFT>%s</TD>" % text for text in texts) + "</TR>\n"

    def step(self, step):
        red = (step["ratingType"], step["rating"]) in self.red
        rating = '<font color="%s"><B>%s</B></font>' % ("FF0000" if red else "000000", html(step["rating"]))
        wide = "<TR><TD VALIGN=TOP COLSPAN=4 ALIGN=LEFT>%s</TD></TR>\n"
        comments, pictures = strip_tags(step["comments"]), self.images(step)
        return (self.cells(html(step["number"]), html(step["title"]), html(display_materials(step["materials"])), rating)
                + (wide % html(comments) if comments.strip(BLANKS) else "") + (wide % pictures if pictures else "")
                + "<TR><TD COLSPAN=4><FONT SIZE=2>&nbsp;</FONT></TD></TR>\n")

    def short_step(self, step):
        both = [html(display_materials(step["materials"])), html(strip_tags(step["comments"]))]
        pictures = self.images(step)
        return (self.cells(html(step["number"]), html(step["title"]), "  ".join(text for text in both if text))
                + ("<TR><TD VALIGN=TOP COLSPAN=3 ALIGN=LEFT>%s</TD></TR>\n" % pictures if pictures else "")
                + "<TR><TD COLSPAN=3><FONT SIZE=2>&nbsp;</FONT></TD></TR>\n")

    # --- pictures

    def images(self, step):
        card, shown = self.options["DefaultPictCardPath"], []
        for tag in tags_of(step["comments"])[0]:
            if "Path=" in tag:
                path, scaling = known_path(tag, card), tag_scaling(tag)
            elif "Picture-" in tag:
                rest = tag.replace("Picture-", "").replace("***", "")
                scaling = tag_scaling(rest)
                path = self.device.card_picture(card, leading_number(rest.replace(";Scaling=%d" % scaling, "")))
            else:
                continue
            shown.append(self.image(path, scaling, step["title"]))
        return " ".join(filter(None, shown))

    def image(self, path, scaling, title):
        data = self.device.read(path) if self.pictures and path not in ("", "ERROR") else None
        if data is None or not is_picture(data):
            return ""
        known = next((other for other in self.copies if other.lower() == path.lower()), None)
        if known is None:
            known = path
            self.copies[path] = "picture%d.jpg" % (len(self.copies) + 1)
        size = jpeg_size(data) if scaling > 0 and scaling != 100 else None
        width = " WIDTH=%d HEIGHT=%d" % tuple(max(1, side * scaling // 100) for side in size) if size else ""
        return '<IMG SRC="%s"%s ALT="%s">' % (self.copies[known], width, html(title).replace("<BR>", " "))


# --- plain text ------------------------------------------------------------------------------------------------

class PlainText(Readable):
    def produce(self):
        self.lines = []
        for line in filter(has_words, self.company_lines()):
            self.centred(line)
        self.lines.append("=" * WIDTH)
        self.centred("INSPECTION REPORT")
        self.lines += ["=" * WIDTH, ""]
        for label, texts in self.title_rows():
            if texts:
                self.hanging(label + ":", 22, "\r\n".join(texts))
        if self.has_general_information():
            self.section("GENERAL INFORMATION", self.general)
        for _, title, is_found, steps in self.reported:
            if not is_found:
                continue
            self.heading("".join(c.upper() if len(c.upper()) == 1 and c.upper() in LARGE else c
                                 for c in name_or_none(title)))
            for step in steps:
                self.step(step)
        self.section("DEFINITION OF TERMS", self.options["DefinitionOfTerms"])
        self.section("TERMS OF THIS REPORT", self.options["FinePrint"])
        if has_words(self.options["FooterText"]):
            self.lines += ["", "=" * WIDTH]
            self.centred(self.options["FooterText"])
        return "\r\n".join(self.lines + [""]).encode("latin-1")

    def step(self, step):
        rating = "" if self.options["HideRatings"] or not step["rating"] else " [%s]" % step["rating"]
        self.hanging(step["number"], 8, step["title"] + rating)
        materials = display_materials(step["materials"])
        for text in ("Materials: " + materials if materials.strip(" ") else "", strip_tags(step["comments"]).strip(BLANKS)):
            if text:
                self.hanging("", 8, text)
        self.lines.append("")

    def heading(self, title):
        lines = wrapped(title, WIDTH)
        self.lines += ["", *lines, "-" * max(map(len, lines))]

    def section(self, title, text):
        if has_words(text):
            self.heading(title)
            self.hanging("", 0, text)

    def hanging(self, label, indent, text):
        """The text from a column on, behind its label where that leaves a blank, else below it."""
        lines = [" " * indent + line for line in wrapped(text, WIDTH - indent)]
        *above, label = wrapped(label, WIDTH)
        above = [line for line in above if line]
        if len(label) < indent:
            lines[0] = label + lines[0][len(label):]
        elif label:
            lines.insert(0, label)
        self.lines += [line.rstrip(" ") for line in above + lines]

    def centred(self, text):
        for line in wrapped(text, WIDTH):
            self.lines.append(" " * ((WIDTH - len(line)) // 2) + line)


def has_words(text):
    return re.search("[^\x00- \x7f-\x9f\ufffe\uffff]", text) is not None


def name_or_none(title):
    is_blank = all(unicodedata.category(c) in ("Zs", "Zl", "Zp", "Cf", "Cc") or c in "\ufffe\uffff" for c in title)
    return "(no name)" if is_blank else title


def wrapped(text, width):
    """Lines of as many bytes as the width at most, a character each; only a word that is longer than it is broken."""
    lines = []
    parts = lines_of(text)
    for line in parts if parts[-1] or len(parts) == 1 else parts[:-1]:
        line = re.sub("[\x00-\x1f\x7f]", " ", to_bytes(line).decode("latin-1")).rstrip(" ")
        while len(line) > width:
            place = line.rfind(" ", 0, width + 1)
            place = place if line[:max(place, 0)].strip(" ") else width
            lines.append(line[:place].rstrip(" "))
            line = line[place:].lstrip(" ")
        lines.append(line)
    return lines
