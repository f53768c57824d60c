#!/usr/bin/env python3
"""What a word processor makes of the reports in Rich Text: LibreOffice turns those of the sample visit into PDF, which must
hold every word that was found, the categories in their order, and every picture. Where LibreOffice or poppler-utils is
missing, there is nothing to check (exit 77).

    check_readers.py INSPECTOR_CLI
"""
import re
import shutil
import subprocess
import sys
from collections import Counter
from pathlib import Path

sys.dont_write_bytecode = True
from visits import Home, display_materials, strip_tags, units

SKIPPED = 77
BEGINNING = 24  # letters
REPORTS = [  # arguments; whether only what deserves attention is in it; whether in categories
    (("--layout", "4 Column"), False, True),
    (("--layout", "3 Column"), False, True),
    (("--layout", "2 Column French"), False, True),
    (("--layout", "1 Column"), False, True),
    (("--layout", "Full Narrative"), False, True),
    (("--kind", "summary"), True, True),
    (("--kind", "major-systems"), True, False),
]


def words(text):
    return re.findall(r"\w+", text)


def order_faults(pdf_text, steps, arguments):
    """The findings stand in the order of the report: by their numbers, or where there are none by names or words, of
    which the end of a page may cut through one end."""
    bare, place = "".join(words(pdf_text)), 0
    for step in steps:
        if "Full Narrative" in arguments:
            said = "".join(words(strip_tags(step["Comments"])))
            text, keys = bare, {said[:BEGINNING], said[-BEGINNING:]}
        elif "1 Column" in arguments:
            text, keys = bare, {"".join(words(step["StepTitle"]))}
        else:
            text, keys = pdf_text, {step["StepNumber"]}
        found = [at for at in (text.find(key, place) for key in keys) if at >= 0]
        if not found:
            yield "%s %s does not stand after the finding before it" % (step["StepNumber"], step["StepTitle"])
            return
        place = min(found)


def faults(pdf_text, images, home, arguments, is_summary, is_by_category):
    summary, device = home.flagged("SummaryFlag"), home.device()
    said, place, expected = Counter(words(pdf_text)), 0, 0
    told, in_order = Counter(), []
    for category, steps in home.reported(1000):
        if is_summary:
            steps = [step for step in steps if (step["RatingType"], step["InspectResult"]) in summary]
        if steps and is_by_category:
            place = pdf_text.find(category["CategoryTitle"], place)
            if place < 0:
                yield "%s does not stand after the category before it" % category["CategoryTitle"]
                return
        in_order += steps
        for step in steps:
            comments = strip_tags(step["Comments"])
            told.update(words(comments))
            if "Full Narrative" not in arguments:
                told.update(words(display_materials(step["Materials"])) + words(step["StepTitle"]))
            expected += len(home.pictures(step, device)) if is_by_category else 0
    if not is_by_category:
        in_order.sort(key=lambda step: (units(step["MajorSystem"]), units(step["StepNumber"]), step["StepID"]))
    yield from order_faults(pdf_text, in_order, arguments)
    missing = told - said
    # The end of a line in a narrow column cuts some words in two.
    whole = "".join(pdf_text.split())
    missing = [word for word in missing
               if word not in whole and not any(said[word[:at]] and said[word[at:]] for at in range(1, len(word)))]
    if missing:
        yield "words that are not there: %s" % sorted(missing)[:20]
    if images < expected or (images > 0 and not is_by_category):
        yield "%d pictures, not %d" % (images, expected)


def main(program):
    if not all(map(shutil.which, ("soffice", "pdftotext", "pdfimages"))):
        print("LibreOffice or poppler-utils is not installed: nothing to check")
        return SKIPPED
    home = Home(program, "--sample")
    found = []
    for number, (arguments, is_summary, is_by_category) in enumerate(REPORTS):
        rtf = home.root / ("report%d.rtf" % number)
        home.run("report", 1000, *arguments, "--out", rtf)
        profile = "-env:UserInstallation=file://%s/office" % home.root
        subprocess.run(["soffice", profile, "--headless", "--convert-to", "pdf", "--outdir", home.root, rtf],
                       capture_output=True, timeout=300, check=True)
        pdf = rtf.with_suffix(".pdf")
        text = subprocess.run(["pdftotext", "-raw", pdf, "-"], capture_output=True, text=True, check=True).stdout
        listed = subprocess.run(["pdfimages", "-list", pdf], capture_output=True, text=True, check=True).stdout
        images = sum(" image " in line for line in listed.splitlines())
        found += ["%s: %s" % (" ".join(arguments), fault)
                  for fault in faults(text, images, home, arguments, is_summary, is_by_category)]
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))
