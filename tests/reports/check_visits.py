#!/usr/bin/env python3
"""Writes the small visit in its variants, and visits of random content, in every format and compares each file with the
independent reckoning.

    check_visits.py INSPECTOR_CLI [COUNT [SEED]]      COUNT: 200, or $INSPECTOR_VISITS

Every second visit is tame: none of its texts can open or close a group of a Rich Text file by the rules that reports
keep on purpose, so that its reports must be balanced.
"""
import json
import os
import random
import re
import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True
from check_web_page import content_of, faults as web_faults
from visits import Home
from expect_files import files_for, visit_for
from expect_report import LAYOUTS, MAJOR_SYSTEMS, SUMMARY

EXPECTED = Path(__file__).parent / "expected"
BLOCK = 10  # visits that share the options

PIECES = [" ", "  ", "\t", "\r\n", "\r\n\r\n", "\r", "\n", "\u00ac", "{", "}", "{}", "}{", "***", "****", "Path=", "Picture-",
          ";Scaling=", "50", "***Picture-1***", "***Picture-2;Scaling=50***", "***Path=C:\\pics\\slope.jpg;Scaling=20***",
          "***Path=\\slope.jpg***", "***Path=\\gone.jpg***", "***Sketch***", "<b>", "</TABLE>", "<!--", "-->", "]]>", "&", "&amp;",
          "&#0;", '"', "'", "\x00", "\x01", "\x1b", "\x7f", "\x85", "\xa0", "\xad", "\u20ac", "\u0153uvre", "\u0178", "\u65e5\u672c",
          "\U0001f3e0", "\u202e", "\ufffd", "\ufffe", "a\u0301", ";", ";Other:", "Other:", "Omit", "%s", "%d", "$(x)", "--", "x" * 90]
BACKSLASHES = ["\\", "\\\\", "\\par ", "\\'e4", "\\{", "\\bin9 ", "\\u8364?"]
WORDS = "the roof is worn at its ridge and water comes in below the north wall of a house".split(" ")


class Visits:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def text(self, tame, most=12, empty=0.1):
        """A text; a tame one has a backslash only in tags, and a letter before whatever reports escape."""
        pick = self.random
        if pick.random() < empty:
            return ""
        parts = []
        for _ in range(pick.randint(1, most)):
            kind = pick.random()
            parts.append(pick.choice(WORDS) + " " if kind < 0.5 else pick.choice(PIECES) if kind < 0.9 or tame
                         else pick.choice(BACKSLASHES))
        text = "".join(parts)
        if pick.random() < 0.01:
            text *= pick.randint(50, 1000)
        return re.sub("[{}\r\u00ac]|^", "a\\g<0>", text) if tame else text

    def step(self, at, tame, choices):
        pick = self.random
        choice = pick.choice(choices)
        number = "%02d" % at + (self.text(tame, 2) if pick.random() < 0.1 and not tame else "")
        rating = choice["choice"] if pick.random() < 0.7 else self.text(tame, 2, 0.5)
        return {"number": number, "title": self.text(tame, 4), "ratingType": choice["ratingType"], "rating": rating,
                "materials": self.text(tame, 5, 0.5), "comments": self.text(tame, 20),
                "majorSystem": pick.choice(["", "a roof", "walls <a> & {b}", self.text(tame, 3)])}

    def visit(self, base, key):
        pick, tame = self.random, key % 2 == 0
        header = {name: self.text(tame, 5, 0.3) for name in base["header"]}
        header["date"] = pick.choice(["", "2026-05-31 14:05", "1999-12-01 00:00"])
        header["documentNumber"] = pick.choice(["H-104", "", "{7}/\\ & 8" if not tame else "7 & 8"])
        categories = [{"key": key * 10 + at, "number": str(at), "title": self.text(tame, 4),
                       "notPresent": pick.random() < 0.1,
                       "steps": [self.step(n, tame, base["ratingChoices"]) for n in range(pick.choice([0, 1, 4, 12]))]}
                      for at in range(pick.randint(0, 4))]
        return {"header": header, "generalInformation": self.text(tame, 30), "categories": categories}

    def settings(self, choices):
        """What the visits of a block share, as a variant."""
        pick = self.random
        choices = [{**choice, **{flag: pick.random() < 0.5 for flag in ("bold", "red", "summary")}} for choice in choices]
        texts = {name: self.text(True, 8, 0.3) for name in ("FinePrint", "DefinitionOfTerms", "FooterText", "Inspector",
                                                            "SummaryDisclaimer")}
        # The record of the owner cuts what is longer, and a line end that is typed becomes the two of the record.
        owner = {name: re.sub("\x00|(?<!\r)\n", "", self.text(True, 6, 0.3)).encode("utf-16-le")[:2 * room]
                 .decode("utf-16-le", "ignore")
                 for name, room in (("name", 35), ("company", 35), ("address", 185), ("phone", 125))}
        labels = ["<%d> & \u00c9t\u00e9" % at for at in range(8)] if pick.random() < 0.5 else [""] * 8
        return {"owner": owner, "options": {**texts, "HeaderLabels": labels, "HideRatings": pick.random() < 0.3,
                            "LeavePicturesOut": pick.random() < 0.2, "StepSpacing": pick.randint(1, 2)},
                "ratingChoices": choices}


def prepare(home, base):
    """Puts the device and the owner of the small visit into a home."""
    for folder in base["device"]:
        path = home.root.joinpath(*folder["folder"].strip("\\").split("\\"))
        path.mkdir(parents=True, exist_ok=True)
        for entry in folder["entries"]:
            if "folder" in entry:
                (path / entry["name"]).mkdir(exist_ok=True)
            else:
                (path / entry["name"]).write_bytes(bytes.fromhex(entry["hex"]) if "hex" in entry
                                                   else (EXPECTED / entry["file"]).read_bytes())


def apply(home, visit):
    home.run("owner", *("%s=%s" % pair for pair in visit["owner"].items()))
    options, choices = visit["options"], visit["ratingChoices"]
    names = {"LeavePicturesOut": "OmitPictures", "Inspector": "InspectorEntry"}
    values = {names.get(name, name): value for name, value in options.items() if not isinstance(value, list)}
    labels = ("DwellingAddress", "ClientAddress", "ClientAgent", "DocType", "RealEstateCompany", "DocNumber", "ClientName",
              "Date")
    values.update({"Label" + name: value for name, value in zip(labels, options["HeaderLabels"])})
    values.update({"ColumnWidth%d" % (at + 1): width for at, width in enumerate(options["ColumnWidths"])})
    with home.connect("Template") as database:
        database.execute("UPDATE Options SET " + ", ".join(name + " = ?" for name in values), list(values.values()))
        database.execute("UPDATE InspectionType SET Layout = ?", [visit["firstTypeLayout"]])
        database.execute("DELETE FROM RatingType")
        database.execute("DELETE FROM RatingChoices")
    kinds = sorted({choice["ratingType"] for choice in choices})
    home.insert("RatingType", *[{"ID": kinds.index(kind), "RatingType": kind} for kind in kinds], name="Template")
    home.insert("RatingChoices", *[{"RatingTypeID": kinds.index(choice["ratingType"]), "ChoiceName": choice["choice"],
                                    "BoldFlag": choice["bold"], "RedFlag": choice["red"],
                                    "SummaryFlag": choice.get("summary", False)} for choice in choices], name="Template")


def insert(home, key, visit):
    header = visit["header"]
    home.insert("Inspection", {
        "InspectionID": key, "InspectionNum": header["documentNumber"], "InspectionDate": header["date"],
        "DwellingAddress": header["dwellingAddress"], "CityStateZip": header["dwellingCityStateZip"],
        "ClientName": header["clientName"], "ClientAddress": header["clientAddress"],
        "ClientCityStateZip": header["clientCityStateZip"], "ClientAgent": header["clientAgent"],
        "RealEstateCompany": header["realEstateCompany"], "GeneralInformation": visit["generalInformation"]})
    for at, category in enumerate(visit["categories"]):
        mine = category.get("key", 2001 + at)
        home.insert("Category", {"CategoryID": mine, "InspectionID": key, "CategoryNumber": category["number"],
                                 "CategoryTitle": category["title"], "NotPresentFlag": category["notPresent"]})
        home.insert("Step", *[{"CategoryID": mine, "StepNumber": step["number"], "StepTitle": step["title"],
                               "RatingType": step["ratingType"], "InspectResult": step["rating"],
                               "Materials": step["materials"], "Comments": step["comments"],
                               "MajorSystem": step.get("majorSystem", "")} for step in category["steps"]])


def command_for(key, layout):
    if layout in ("Pages", "Text"):
        return ["html" if layout == "Pages" else "text", key]
    if layout == MAJOR_SYSTEMS:
        return ["report", key, "--kind", "major-systems"]
    if not layout.startswith(SUMMARY):
        return ["report", key, "--layout", layout]
    rating = layout.partition(" of ")[2]
    return ["report", key, "--kind", "summary", "--layout", "2 Column French" if layout.endswith("French") else "4 Column",
            *(["--rating", rating] if rating else [])]


def is_balanced(rtf):
    depth, at = 0, 0
    while at < len(rtf) and depth >= 0:
        depth += {0x7B: 1, 0x7D: -1}.get(rtf[at], 0)
        at += 2 if rtf[at] == 0x5C else 1
    return depth == 0


def difference(written, expected):
    if written.keys() != expected.keys():
        return "files %s, not %s" % (sorted(written), sorted(expected))
    for name, data in expected.items():
        if written[name] != data:
            at = len(os.path.commonprefix([written[name], data]))
            return "%s at byte %d: %s, not %s" % (name, at, written[name][at - 40:at + 40], data[at - 40:at + 40])
    return ""


def check(home, key, visit, layouts):
    for layout in layouts:
        expected = files_for(visit, "v", layout, EXPECTED)
        target = home.root / "out" / next(iter(expected)).split("/")[0]
        target.parent.mkdir()
        home.run(*command_for(key, layout), "--out", target)
        written = {str(path.relative_to(target.parent)): path.read_bytes() for path in target.parent.rglob("*.*")}
        shutil.rmtree(target.parent)
        if found := difference(written, expected):
            yield "%d, %s: %s" % (key, layout, found)
        elif key % 2 == 0 and target.suffix == ".rtf" and not is_balanced(written[target.name]):
            yield "%d, %s: a group is left open or closed twice" % (key, layout)
    page = home.root / "page.html"
    home.run("web", key, "--out", page)
    for found in web_faults(page.read_bytes(), content_of(home, key)):
        yield "%d, web: %s" % (key, found)


def check_view(home, visit):
    """On the device the frames name the places of their pages; all else is as in an exported folder."""
    home.run("html", 1001, "--view")
    expected = {name.split("/")[1]: data for name, data in files_for(visit, "v", "Pages", EXPECTED).items()}
    expected["index.htm"] = re.sub(rb'src="(?=toc|insp)', rb'src="file:///Program Files\\Brindlecove\\', expected["index.htm"])
    folder = home.root / "Program Files" / "Brindlecove"
    return difference({path.name: path.read_bytes() for path in folder.iterdir() if path.is_file() and path.suffix != ".dct"}, expected)


def check_variants(program, base):
    for variant in base["variants"]:
        home, visit = Home(program), visit_for(base, variant)
        prepare(home, visit)
        apply(home, visit)
        insert(home, 1001, visit)
        for found in check(home, 1001, visit, variant["layouts"]):
            yield "%s, %s" % (variant["name"], found)
        if variant["name"] == "plain" and (found := check_view(home, visit)):
            yield "viewed pages: " + found


def main(program, count, seed):
    base = json.loads((EXPECTED / "small-inspection.json").read_text(encoding="utf-8"))
    visits, home, found = Visits(seed), Home(program), list(check_variants(program, base))
    prepare(home, base)
    for at in range(count):
        if at % BLOCK == 0:
            base = visit_for(base, visits.settings(base["ratingChoices"]))
            apply(home, base)
        key = 2000 + at
        visit = visit_for(base, visits.visit(base, key))
        insert(home, key, visit)
        pick = visits.random
        attention = pick.choice([SUMMARY, SUMMARY + " French", SUMMARY + " of Marginal", MAJOR_SYSTEMS])
        found += check(home, key, visit, [pick.choice(list(LAYOUTS)), attention, "Pages", "Text"])
    return found


if __name__ == "__main__":
    count = int(sys.argv[2] if len(sys.argv) > 2 else os.environ.get("INSPECTOR_VISITS", "200"))
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    result = main(sys.argv[1], count, seed)
    print("\n".join(result))
    sys.exit(1 if result else 0)
