#!/usr/bin/env python3
"""An independent reckoning of the bytes of reports.

A report is what a client opens: Rich Text in a word processor, pages in a browser, plain text. This program works out
the same bytes a second time, from a plain description of one visit, so that a slip in a writer shows as a difference
between two files. It shares no code with the writers; they meet only in the finished files, and in `definitions.txt`,
which holds the nine built-in definitions of terms, one paragraph a line.

    expect_files.py VISIT.json             write every file that the visit's variants list
    expect_files.py VISIT.json --check     compare them with what stands there; exit 1 on a difference

A report is called <variant>-<layout>.rtf, the layout in lower case with "-" for blanks, and stands beside the visit.
"Text" ends in .txt, "Pages" is a folder with the pages and the pictures that they show.

The visit:
    header              documentNumber, date ("2026-05-31 14:05", empty for none), dwellingAddress,
                        dwellingCityStateZip, clientName, clientAddress, clientCityStateZip, clientAgent,
                        realEstateCompany
    generalInformation  text
    options             ReportFontName, ReportFontSize, ColumnWidths (five, inches), StepSpacing, HideRatings,
                        SummaryDisclaimer, LeavePicturesOut, DefaultPictCardPath, FinePrint, DefinitionOfTerms, FooterText,
                        Inspector ("name; licence"), HeaderLabels (eight: dwelling address, client address,
                        client's agent, doc type, real estate company, document number, client name, date)
    firstTypeLayout     layout of the first inspection type, which decides the widths when all five are 0
    owner               name, company, address (lines separated by CR LF), phone ("phone;fax")
    ratingChoices       ratingType, choice, bold, red and, where it is true, summary
    device              folder (device path with its trailing backslash) and its entries: name and one of
                        file (beside the visit), hex (the bytes themselves), folder (true)
    categories          number, title, notPresent and steps: number, title, ratingType, rating, materials, comments
                        and, where it has one, majorSystem
    variants            name, layouts, and what differs from the visit: header, options and owner key by key,
                        device folder by folder, everything else whole
"""

import argparse
import copy
import json
import sys
from pathlib import Path

sys.dont_write_bytecode = True
from expect_pages import PAGES, TEXT, Pages, PlainText
from expect_report import report_of


def visit_for(visit, variant):
    result = copy.deepcopy(visit)
    for key, value in variant.items():
        if key in ("header", "options", "owner"):
            result[key].update(value)
        elif key == "device":
            replaced = {entry["folder"].lower() for entry in value}
            result[key] = [entry for entry in result[key] if entry["folder"].lower() not in replaced] + value
        elif key not in ("name", "layouts"):
            result[key] = value
    return result


def files_for(visit, name, layout, base):
    """The bytes of each file of a report, by its name beside the visit."""
    stem = "%s-%s" % (name, layout.lower().replace(" ", "-"))
    if layout == TEXT:
        return {stem + ".txt": PlainText(visit, layout, base).produce()}
    if layout == PAGES:
        return {stem + "/" + file: data for file, data in Pages(visit, layout, base).files().items()}
    return {stem + ".rtf": report_of(visit, layout, base)}


def main():
    parser = argparse.ArgumentParser(description="Reckon the bytes of reports.")
    parser.add_argument("visit", type=Path)
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()

    base = arguments.visit.parent
    visit = json.loads(arguments.visit.read_text(encoding="utf-8"))
    files = {}
    for variant in visit["variants"]:
        for layout in variant["layouts"]:
            files.update(files_for(visit_for(visit, variant), variant["name"], layout, base))
    there = {str(path.relative_to(base)) for pattern in ("*.rtf", "*-text.txt", "*-pages/*") for path in base.glob(pattern)}

    differing = sorted(there - files.keys())
    for name, data in files.items():
        path = base / name
        if arguments.check and (name not in there or path.read_bytes() != data):
            differing.append(name)
        elif not arguments.check:
            path.parent.mkdir(exist_ok=True)
            path.write_bytes(data)
    for name in differing:
        print("differs: " + name)
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main())
