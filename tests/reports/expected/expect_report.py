"""An independent reckoning of the bytes of inspection, summary and major systems reports."""

import math

LAYOUTS = {  # name: (columns besides the step number, French)
    "4 Column": (4, False),
    "3 Column": (3, False),
    "2 Column": (2, False),
    "2 Column French": (2, True),
    "Full Narrative": (1, False),
    "1 Column": (1, False),
}
SUMMARY = "Summary"  # followed by " French", or by " of " and a rating
MAJOR_SYSTEMS = "Major Systems"

COLOURS = [
    (0, 0, 0), (0, 0, 255), (0, 255, 255), (0, 255, 0), (255, 0, 255), (255, 0, 0), (255, 255, 0), (255, 255, 255),
    (0, 0, 128), (0, 128, 128), (0, 128, 0), (128, 0, 128), (128, 0, 0), (128, 128, 0), (128, 128, 128),
    (192, 192, 192),
]

LOGOS = [
    r"\Program Files\Brindlecove\Logos\logo1.jpg",
    r"\Program Files\Quenlith Inspector v5\Logos\logo1.jpg",
    r"\Program Files\Marrowtide\Logos\logo1.jpg",
]

DEFAULT_LABELS = {
    "dwelling": "Dwelling Address", "clientAddress": "Client Address", "agent": "Client's Agent", "type": "Doc Type",
    "company": "Real Estate Company", "document": "Doc #", "client": "Client Name", "date": "Date",
}  # in the order of the eight labels of the options

PAGE_FIELD = r"\i {\cs17 Page }{\field{\*\fldinst {\cs17  PAGE }}{\fldrslt {\cs17 1}}}{\cs17 \par}\i0\pard "


def units(text):
    """The text as 16-bit units: what lengths are counted in and names are ordered by."""
    raw = text.encode("utf-16-be", "surrogatepass")
    return [raw[i] << 8 | raw[i + 1] for i in range(0, len(raw), 2)]


def build_code_page():
    page = {}
    for byte in range(256):
        try:
            page[ord(bytes([byte]).decode("cp1252"))] = byte
        except UnicodeDecodeError:
            page[byte] = byte  # the five bytes without a character stand for themselves
    return page


CODE_PAGE = build_code_page()


def to_bytes(text):
    return bytes(CODE_PAGE.get(unit, ord("?")) for unit in units(text))


# --- texts -----------------------------------------------------------------------------------------------------

def escape(text):
    done = ""
    while True:
        places = [text.index(c) for c in "{}\r\u00ac" if c in text]
        # A special character in front ends the escaping for good: kept on purpose.
        if not places or min(places) == 0:
            return done + text
        place = min(places)
        done += text[:place] + ("\\" + text[place] if text[place] in "{}" else "\\par ")
        text = text[place + 1:]


def display_materials(stored):
    text = stored[:-1] if stored.endswith(";") else stored
    if text.startswith("Other:"):
        text = text[len("Other:"):]
    while ";Other:" in text:
        place = text.index(";Other:")
        text = text[:place + 1] + text[place + len(";Other:"):]
    return text


def leading_number(text):
    text = text.lstrip(" \t\n\v\f\r")
    sign = -1 if text[:1] == "-" else 1
    if text[:1] in ("+", "-"):
        text = text[1:]
    digits = ""
    for c in text:
        if c not in "0123456789":
            break
        digits += c
    return sign * int(digits or "0")


# --- picture tags ----------------------------------------------------------------------------------------------

def first_tag(text):
    start = text.find("***")
    end = text.find("***", start + 3) if start >= 0 else -1
    return text[start:end + 3] if end >= 0 else ""


def tags_of(text):
    """The tags in the order in which they are found, and the text that is left without them."""
    found = []
    tag = first_tag(text)
    while tag:
        found.append(tag)
        text = text.replace(tag, "")
        tag = first_tag(text)
    return found, text


def strip_tags(text):
    return tags_of(text)[1]


def tag_scaling(tag):
    bare = tag.replace("*", "")
    place = bare.find(";Scaling=")
    return 100 if place < 0 else leading_number(bare[place + len(";Scaling="):])


def known_path(tag, card):
    if "Path=C:\\" in tag:
        tag = tag.replace("C:\\", card)
    return tag[3:-3].split(";")[0].replace("Path=", "")


class Device:
    """The device's folders. Names compare without case; a folder lists its entries by their 16-bit units."""

    def __init__(self, folders, base):
        self.folders = {entry["folder"].lower(): entry["entries"] for entry in folders}
        self.base = base

    def read(self, path):
        """The bytes of a file, or None where nothing opens."""
        folder, _, name = path.rpartition("\\")
        for entry in self.folders.get(folder.lower() + "\\", []):
            if entry["name"].lower() == name.lower() and not entry.get("folder"):
                return bytes.fromhex(entry["hex"]) if "hex" in entry else (self.base / entry["file"]).read_bytes()
        return None

    def names(self, prefix):
        """Names of the entries that match prefix + "*", folders among them."""
        folder, _, start = prefix.rpartition("\\")
        entries = self.folders.get(folder.lower() + "\\", [])
        return sorted((e["name"] for e in entries if e["name"].lower().startswith(start.lower())), key=units)

    def card_picture(self, card, number):
        entries = self.names(card)
        listed = []
        previous = None
        place = 0
        for _ in range(101 if entries else 0):
            name = entries[place]
            if ".JPG" in name or ".jpg" in name:
                listed.append(name)
            if name == previous:
                break
            previous = name
            # The end of the folder is not noticed: the last entry comes round a second time, kept on purpose.
            place = min(place + 1, len(entries) - 1)
        listed.sort(key=units)
        return card + listed[number - 1] if 1 <= number <= len(listed) else "ERROR"


# --- the report ------------------------------------------------------------------------------------------------

class Report:
    def __init__(self, visit, layout, base):
        self.layout = layout
        self.columns, self.french = LAYOUTS.get(layout, (0, layout == SUMMARY + " French"))
        self.header = visit["header"]
        self.general = visit["generalInformation"]
        self.owner = visit["owner"]
        self.options = visit["options"]
        self.categories = visit["categories"]
        self.device = Device(visit["device"], base)
        self.definitions = (base / "definitions.txt").read_bytes().decode("ascii").split("\n")[:9]
        self.pictures = not self.options["LeavePicturesOut"]
        self.wide_spacing = self.options["StepSpacing"] != 1  # anything but 1 or 2 is read as 2
        points = self.options["ReportFontSize"]
        self.font_size = "fs%d" % (2 * (points if points in (10, 12) else 12))
        self.positions = self.cell_positions(visit["firstTypeLayout"])
        self.bold = {(c["ratingType"], c["choice"]) for c in visit["ratingChoices"] if c["bold"]}
        self.red = {(c["ratingType"], c["choice"]) for c in visit["ratingChoices"] if c["red"]}
        self.first_title = True
        self.out = bytearray()

    def write(self, *texts):
        for text in texts:
            self.out += to_bytes(text)

    def cell_positions(self, first_type_layout):
        widths = self.options["ColumnWidths"]
        if not any(widths):
            four = first_type_layout.lower() == "4 column"
            widths = [0.6, 1.28, 1.12, 1.0, 1.75] if four else [0.73, 1.23, 4.19, 0.0, 0.0]
        positions = [math.trunc(1440 * widths[0]) - 108]
        for width in widths[1:]:
            positions.append(math.trunc(positions[-1] + 1440 * width))
        return positions

    def produce(self):
        self.prologue()
        self.page_header()
        self.title_block()
        if self.columns < 3:
            self.first_page_end_narrow()
        else:
            self.first_page_end_wide()
        for category in sorted(self.categories, key=lambda c: (units(c["number"]), units(c["title"]))):
            if not category["notPresent"]:
                self.category(category)
        self.write("}")
        return bytes(self.out)

    def prologue(self):
        self.write(r"{\rtf1\ansi\deff1",
                   r"{\fonttbl", r"{\f0\fswiss Arial;}", r"{\f1\fUserFont " + self.options["ReportFontName"] + ";}", "}",
                   r"{\colortbl;", "".join(r"\red%d\green%d\blue%d;" % colour for colour in COLOURS), "}",
                   r"\margr720\margl1440",
                   r"{\stylesheet",
                   r"{\nowidctlpar\widctlpar\adjustright \fs16\cgrid \snext0 Normal;}",
                   r"{\*\cs10 \additive Default Paragraph Font;}",
                   r"{\s15\nowidctlpar\widctlpar\tqc\tx4320\tqr\tx8640\adjustright \fs16\cgrid \sbasedon0 \snext15 header;}",
                   r"{\s16\nowidctlpar\widctlpar\tqc\tx4320\tqr\tx8640\adjustright \fs16\cgrid \sbasedon0 \snext16 footer;}",
                   "}")

    def page_header(self):
        self.write(r"{\header \pard\plain \s15\qr\widctlpar\tqc\tx4320\tqr\tx8640\fs16", PAGE_FIELD)
        logo = next((path for path in LOGOS if self.device.read(path) is not None), None)
        if logo and self.pictures:
            self.picture(logo, 100)
            self.write(r"{\cs17 \par} ")
        self.write(r"\s15\qc\widctlpar\tqc\tx4320\tqr\tx8640 {\cs17\b\fs28 ", "Fairhold", r"} \par ",
                   r"\pard \s15\qc\widctlpar\tqc\tx4320\tqr\tx8640 {\cs17\b\fs20 ")
        for line in self.company_lines():
            self.write(escape(line), r"\par ")
        self.write(r"\brdrt\brdrs", r"\par ", r"} \par}", r" \pard ")
        self.write(r"{\footer \pard\plain \qc\widctlpar\tx2070\tx3240 {\fs16 ", r"\brdrt\brdrs", r"\par ",
                   escape(self.options["FooterText"]),
                   r"\par }\pard\plain\s16\qc\widctlpar\tqc\tx4320\tqr\tx8640 \par}")

    def company_lines(self):
        parts = []
        rest = self.owner["address"]
        while len(parts) < 3 and "\r" in rest:
            line, _, rest = rest.partition("\r")
            parts.append(line)
            rest = rest[1:]  # the line feed after it
        parts = [part for part in parts + [rest] if part] or [""]
        return [self.owner["company"], parts[0], ", ".join(parts[1:])]

    def labels(self):
        own = self.options["HeaderLabels"]
        return dict(zip(DEFAULT_LABELS, own)) if own and own[0] else DEFAULT_LABELS

    def date(self):
        if not self.header["date"]:
            return ""
        year, month, day = self.header["date"].split(" ")[0].split("-")
        return "%d/%d/%d" % (int(month), int(day), int(year))

    def title_block(self):
        labels = self.labels()
        value = {name: escape(text) for name, text in self.header.items()}
        self.write(r"\pard \s15\ql\widctlpar\tql\tx1800\tx3686\tx5314{\cs17\fs20\par ",
                   labels["document"], r": \tab ", value["documentNumber"])
        self.write(r"\tab Inspecteur: \tab " if self.french else r"\tab Inspector: \tab ",
                   escape(self.options["Inspector"] or self.owner["name"]))
        self.write(r"\par\par ", labels["date"], r": \tab ", self.date())
        self.write(r"\par\par ", "Adresse" if self.french else labels["dwelling"], r": \tab ",
                   value["dwellingAddress"], r"\par\tab ", value["dwellingCityStateZip"])
        self.write(r"\par\par ", labels["client"], r": \tab ", value["clientName"])
        if self.header["clientAddress"]:
            self.write(r"\par\tab ", value["clientAddress"], r"\par\tab ", value["clientCityStateZip"])
        if self.header["clientAgent"]:
            self.write(r"\par\par ", labels["agent"], r": \tab ", value["clientAgent"])
        if self.header["realEstateCompany"]:
            self.write(r"\tab ", labels["company"], r": \tab ", value["realEstateCompany"])
        self.write(r"\par\par", r"\qc ")
        self.picture("\\HousePhoto" + self.header["documentNumber"] + ".jpg", 100)
        self.write(r" \par ", r"\ql ", r" \par ")

    def has_general_information(self):
        return len(units(self.general)) > 2

    def first_page_end_narrow(self):
        definitions = self.options["DefinitionOfTerms"]
        self.write(r"\pard\ql\fs16 ", escape(self.options["FinePrint"]), r"\par}\page",
                   r"\pard \s15\ql\widctlpar\tql\tx2160\tx3150\tx4410{\cs17\fs24\par", r"\par\par")
        if definitions:
            self.write(r"\b ", "DEFINITION OF TERMS", r" \b0\par\par ", escape(definitions), r"\par\par")
        self.write(r"\pard\ql")
        if self.has_general_information():
            self.write(r"\b INFORMATION GENERALE" if self.french else r"\b GENERAL INFORMATION",
                       r"\b0\par\par\pard\ql ", escape(self.general))
        self.write(r"\par\par\fs28\qc\b ", r" \b0\par\ql\par", r"}\pard ")

    def first_page_end_wide(self):
        definitions = self.options["DefinitionOfTerms"]
        self.write(r"{\cs17\fs20\par ", escape(self.options["FinePrint"]), r"}\par}\page",
                   r"\pard \s15\ql\widctlpar\tql\tx2160\tx3150\tx4410{\cs17\fs24\par ")
        self.write(escape(definitions) if definitions else "".join(self.definitions))
        self.write(r"\par\par")
        if self.has_general_information():
            self.write(r"\b GENERAL INFORMATION \b0\par\par\par ", escape(self.general), r"\par")
        self.write(r"\par}\pard ")

    # --- categories and steps

    def category(self, category):
        steps = [step for step in category["steps"]
                 if max(units(step["comments"]), units(step["materials"]), units(step["rating"])) > units(" ")]
        steps.sort(key=lambda step: units(step["number"]))
        if self.layout == "Full Narrative":
            narrative = " ".join(step["comments"] for step in steps)
            self.section_title(category["title"])
            self.write(r"\par\par ", r"\pard ", escape(strip_tags(narrative)), r"\par", r"\par ")
            self.tag_pictures(narrative)
            return
        if steps:
            self.section_title(category["title"])
            self.heading_row()
        for step in steps:
            if step["rating"] == "Omit":
                continue
            if self.columns == 1:
                self.plain_step(step)
            else:
                self.step_row(step)

    def section_title(self, title):
        if self.first_title:
            self.first_title = False
            self.write(r"\sect \sectd \linex0\endnhere ",
                       r"{\header \pard\plain \s15\qr\widctlpar\tqc\tx4320\tqr\tx8640\fs16", PAGE_FIELD,
                       r"\s15\qc\widctlpar\tqc\tx4320\tqr\tx8640 {\cs17\b\fs28 ", escape(title), r"} \par }")
        else:
            self.write(r"\pard ", r"\par", r"\pard \s15\ql\widctlpar\tqc\tx5040\tqr\tx10080 {\cs17\fs24\b\ul ",
                       escape(title), r"\b0\ul0\par\par}", r"\pard")

    def begin_row(self):
        cells = "".join(r"\cellx%d" % position for position in self.positions[:self.columns + 1])
        self.write("\\trowd\\trgaph108\\trleft-108\\" + self.font_size + r"\trhdr" + cells + r"\intbl\ql ")

    def heading_row(self):
        if self.columns == 1:
            return
        self.begin_row()
        if self.french:
            self.write(r"\b Etape\cell Composante\par\cell Commentaires\cell\b0\row")
        else:
            self.write({4: r"\b Step #\cell Component\cell Material Type\par\cell Rating\cell Comments\cell\b0\row",
                        3: r"\b Step #\cell Component\par\cell Rating\cell Comments\cell\b0\row",
                        2: r"\b Step #\cell Component\par\cell Comments\cell\b0\row"}[self.columns])

    def step_row(self, step):
        kind = (step["ratingType"], step["rating"])
        bold, red = kind in self.bold, kind in self.red
        rating = "" if self.options["HideRatings"] else escape(step["rating"])
        comments = escape(strip_tags(step["comments"]))
        materials = escape(display_materials(step["materials"]))
        both = materials + ("  " if materials and comments else "") + comments
        flags_on = (r"\b " if bold else "") + (r"\cf6 " if red else "")
        flags_off = (r"\b0" if bold else "") + (r"\cf0 " if red else "")
        spacing = r"\par" if self.wide_spacing else ""

        self.begin_row()
        self.write(step["number"], spacing, r"\cell\ql ", escape(step["title"]), spacing, r"\cell\ql ")
        if self.columns == 4:
            self.write(materials, spacing, r"\cell ")
            self.write(flags_on, rating, spacing, r"\cell\ql ")
            self.write(comments, flags_off)
        elif self.columns == 3:
            # Bold and red run on from the rating into the comments: kept on purpose.
            self.write(flags_on, rating, spacing, r"\cell\ql ")
            self.write(both, flags_off)
        else:
            lead_in = "" if step["rating"] in ("Comments", "Data", "") or not rating else rating + ". "
            self.write(flags_on, lead_in, both, r"\b0 " if bold else "", r"\cf0 " if red else "")
        self.write(spacing, r"\cell\row")
        if first_tag(step["comments"]):
            self.write(r"\pard")
            self.tag_pictures(step["comments"])
            self.write(r"\par")

    def plain_step(self, step):
        self.write(r"\fs20 ", r"\b ", escape(step["title"]), r"\b0", r"\par ")
        if not self.options["HideRatings"]:
            self.write(r"\i ", escape(step["rating"]), r"\i0 ", r"\par ")
        for piece in (display_materials(step["materials"]), strip_tags(step["comments"])):
            if piece:
                self.write(escape(piece), r"\par ")
        if first_tag(step["comments"]):
            self.tag_pictures(step["comments"])
            self.write(r"\par ")

    # --- pictures

    def tag_pictures(self, text):
        card = self.options["DefaultPictCardPath"]
        for tag in tags_of(text)[0]:
            path, scaling = "", 100
            if "Path=" in tag:
                path, scaling = known_path(tag, card), tag_scaling(tag)
            elif "Picture-" in tag:
                rest = tag.replace("Picture-", "").replace("***", "")
                scaling = tag_scaling(rest)
                path = self.device.card_picture(card, leading_number(rest.replace(";Scaling=%d" % scaling, "")))
            self.write(r"\par ")
            self.picture(path, scaling)

    def picture(self, path, scaling):
        data = self.device.read(path) if self.pictures and path not in ("", "ERROR") else None
        if data is None:
            return
        self.write(r"{\*\shppict {\pict\picscalex%d\picscaley%d" % (scaling, scaling),
                   r"\piccropl0\piccropr0\piccropt0\piccropb0\jpegblip ")
        # The last byte stands twice in every picture: kept on purpose.
        self.write((data + data[-1:]).hex(), "}}", " ")


# --- what deserves attention

class Summary(Report):
    """Rows of two cells under a page header of its own, which comes with the first title."""

    def __init__(self, visit, layout, base):
        super().__init__(visit, layout, base)
        self.rating = layout.partition(" of ")[2]
        self.flagged = {(c["ratingType"], c["choice"]) for c in visit["ratingChoices"] if c.get("summary")}

    def is_listed(self, step):
        listed = step["rating"] == self.rating if self.rating else (step["ratingType"], step["rating"]) in self.flagged
        return listed and step["rating"] != "Omit"

    def produce(self):
        for category in sorted(self.categories, key=lambda c: (units(c["number"]), units(c["title"]))):
            steps = [] if category["notPresent"] else [s for s in category["steps"] if self.is_listed(s)]
            if steps:
                self.title(category["title"])
                self.begin_row()
            for step in sorted(steps, key=lambda s: units(s["number"])):
                self.attention_row(step)
                if first_tag(step["comments"]):
                    self.write(r"\pard")
                    self.tag_pictures(step["comments"])
                    self.write(r"\par")
        if self.first_title:
            self.title("NO SUMMARY ITEMS WERE FOUND")
        self.write("}")
        return bytes(self.out)

    def title(self, title):
        if not self.first_title:
            self.section_title(title)
            return
        self.first_title = False
        self.summary_header()
        self.first_section_title(title)

    def first_section_title(self, title):
        self.write(r"\pard\s15\ql\widctlpar\tqc\tx5040\tqr\tx10080{\cs17\fs24\b\ul ", escape(title),
                   r"\b0\ul0\par\par}\pard ")

    def begin_row(self):
        self.write("\\trowd \\trgaph108\\trleft-108\\" + self.font_size, r"\cellx2390\cellx8748 \intbl\ql ")

    def attention_row(self, step):
        kind = (step["ratingType"], step["rating"])
        bold, red = kind in self.bold, kind in self.red
        spacing = r"\par" if self.wide_spacing else ""
        silent = self.options["HideRatings"] or step["rating"] in ("Comments", "Data", "")
        materials = escape(display_materials(step["materials"]))
        comments = escape(strip_tags(step["comments"]))
        self.begin_row()
        self.write(step["number"], ". ", escape(step["title"]), spacing, r"\cell\ql ")
        self.write(r"\b " if bold else "", r"\cf6 " if red else "", "" if silent else escape(step["rating"] + ". "),
                   materials, "  " if materials and comments else "", comments,
                   r"\b0 " if bold else "", r"\cf0 " if red else "", spacing, r"\cell\row")

    def summary_header(self):
        """Up to where the first title begins."""
        self.write(r"{\rtf1\ansi\deff0", r"{\fonttbl{\f0\froman Times}}",
                   r"{\colortbl;", "".join(r"\red%d\green%d\blue%d;" % colour for colour in COLOURS), "}",
                   r"\margr720\margl1440", r"{\stylesheet",
                   r"{\nowidctlpar\widctlpar\adjustright \fs20\cgrid \snext0 Normal;}",
                   r"{\*\cs10 \additive Default Paragraph Font;}")
        for number, name in ((15, "header"), (16, "footer")):
            self.write(r"{\s%d\nowidctlpar\widctlpar\tqc\tx4320\tqr\tx8640\adjustright \fs20\cgrid \sbasedon0 \snext%d %s;}"
                       % (number, number, name))
        self.write("}", r"\sectd{\header \pard\plain\qr\s15\widctlpar\tqc\tx5040\tqr\tx10080", r"{\cs17\b\fs20 ",
                   self.date(), r"\fs28\tab SUMMARY REPORT\b0}{\cs17\fs20\b\tab Page: }",
                   r"{\field{\*\fldinst {\cs17\fs20\b  PAGE }}{\fldrslt {\cs17 1}}}{\cs17 \b0\par\par}\pard ")
        self.company_block()
        self.write(r"{\footer \pard\plain \qc\widctlpar\tx5040\tqr\tx10080 {\fs20", escape(self.options["FooterText"]),
                   r"\par }\pard\plain\s15\qc\widctlpar\tqc\tx5040\tqr\tx10080\par}")
        labels = self.labels()
        value = {name: escape(text) for name, text in self.header.items()}
        tabs = r"\pard \s15\ql\widctlpar\tqc\tx5040\tql\tx5846"
        self.write(tabs, r"{\cs17\fs24 ", "No d'inspection" if self.french else labels["document"], ": ",
                   value["documentNumber"], "}")
        if self.header["clientName"]:
            self.write(r"{\cs17\fs24\tab\tab ", labels["client"], ": ", value["clientName"], "}")
        self.write(r"\par ", tabs, r"{\cs17\fs24 ", labels["dwelling"], ": ", value["dwellingAddress"], r"\tab\tab ",
                   "Inspecteur:  " if self.french else "Inspector:  ",
                   escape(self.options["Inspector"] or self.owner["name"]), r"\par", " " * 17,
                   value["dwellingCityStateZip"])
        if self.options["SummaryDisclaimer"]:
            self.write(r"\par\par}", r"{\cs17\fs20", escape(self.options["SummaryDisclaimer"]))
        self.write(r"\par\par}")

    def company_block(self):
        lines = []
        rest = self.owner["address"]
        while len(lines) < 3 and "\r" in rest:
            line, _, rest = rest.partition("\r")
            lines.append(line)
            rest = rest[1:]
        second, third, fourth, fifth = (lines + [""] * (3 - len(lines)) + [rest])
        phone, _, fax = self.owner["phone"].partition(";")
        centred = r"\pard\s15\qc\widctlpar\tqc\tx5040\tqr\tx10080"
        self.write(r"\s15\ql\widctlpar\tqc\tx5040\tqr\tx10080", r"{\cs17\b\fs24\tab ", escape(self.owner["company"]),
                   r"\b0}", r"\par", centred, r"{\cs17\b\fs24 ", escape(second), r"\b0}\par")
        if third:  # of one point: kept on purpose
            self.write(centred, r"{\cs17\b\fs2 ", escape(third), r"\b0}\par")
        if fourth:
            self.write(centred.replace(r"\pard", r"\pard "), r"{\cs17\b\fs24 ", escape(fourth), r"\b0}\par ")
        self.write(centred, r"{\cs17\b\fs24 ", escape(fifth), r"\b0}\par", r"{\cs17\b\fs24 ", escape(phone))
        if fax:
            self.write(" Fax#: ", escape(fax))
        self.write(r"\b0}\par\par}\pard")


class MajorSystems(Summary):
    def produce(self):
        self.summary_header()
        steps = [step for category in self.categories for step in category["steps"]]
        steps.sort(key=lambda s: (units(s.get("majorSystem", "")), units(s["number"])))  # ties as they were stored
        titled = None
        for step in filter(self.is_listed, steps):
            system = step.get("majorSystem", "")
            if system != titled:
                (self.first_section_title if self.first_title else self.section_title)(system)
                self.first_title = False
                titled = system
            self.attention_row(step)
        self.write("}")
        return bytes(self.out)


def report_of(visit, layout, base):
    if layout == MAJOR_SYSTEMS:
        return MajorSystems(visit, layout, base).produce()
    return (Summary if layout.startswith(SUMMARY) else Report)(visit, layout, base).produce()
