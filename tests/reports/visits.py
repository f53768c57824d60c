"""Visits in databases of their own, written and read beside the program."""

import re
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).parent / "expected"))
from expect_report import Device, display_materials, known_path, leading_number, strip_tags, tag_scaling, tags_of, units


class Home:
    """A device root with the starter library and whatever is inserted, with "--sample" the sample visit, 1000."""

    def __init__(self, program, *options):
        self.folder = tempfile.TemporaryDirectory()
        self.root = Path(self.folder.name)
        self.program = program
        self.run("init", *options)

    def run(self, *arguments):
        """What the command tells on standard error."""
        done = subprocess.run([self.program, "--home", self.root, "--yes", *map(str, arguments)], capture_output=True,
                              text=True, errors="replace", timeout=600)
        if done.returncode != 0:
            raise RuntimeError("%s ended with %d: %s" % (arguments, done.returncode, done.stderr))
        return done.stderr

    def connect(self, name="Inspection"):
        return sqlite3.connect(self.root / "My Documents" / (name + "_Data.cdb"))

    def insert(self, table, *rows, name="Inspection"):
        with self.connect(name) as database:
            for row in rows:
                database.execute("INSERT INTO %s (%s) VALUES (%s)" % (table, ", ".join(row), ", ".join("?" * len(row))),
                                 list(row.values()))

    def option(self, name):
        with self.connect("Template") as database:
            return database.execute("SELECT %s FROM Options" % name).fetchone()[0]

    def document_number(self, visit):
        with self.connect() as database:
            return database.execute("SELECT InspectionNum FROM Inspection WHERE InspectionID = ?", (visit,)).fetchone()[0]

    def header(self, visit):
        with self.connect() as database:
            database.row_factory = sqlite3.Row
            return database.execute("SELECT * FROM Inspection WHERE InspectionID = ?", (visit,)).fetchone()

    def flagged(self, flags="RedFlag OR SummaryFlag"):
        """Rating types and choices that are red or for the summary."""
        with self.connect("Template") as database:
            return set(database.execute("SELECT RatingType, ChoiceName FROM RatingChoices INNER JOIN RatingType ON "
                                        "RatingTypeID = RatingType.ID WHERE " + flags))

    def reported(self, visit):
        """Key and title of each category that has steps to report, with the steps, in the order of a report."""
        with self.connect() as database:
            database.row_factory = sqlite3.Row
            found = []
            for category in database.execute("SELECT * FROM Category WHERE InspectionID = ? AND NOT NotPresentFlag",
                                             (visit,)).fetchall():
                steps = database.execute("SELECT * FROM Step WHERE CategoryID = ? AND (Comments > ' ' OR Materials > ' '"
                                         " OR InspectResult > ' ')", (category["CategoryID"],)).fetchall()
                if steps:
                    steps = [step for step in steps if step["InspectResult"] != "Omit"]
                    found.append((category, sorted(steps, key=lambda step: units(step["StepNumber"]))))
        return sorted(found, key=lambda one: (units(one[0]["CategoryNumber"]), units(one[0]["CategoryTitle"])))

    def device(self):
        folders = [folder for folder in [self.root, *self.root.rglob("*")] if folder.is_dir()]
        return Device([{"folder": "\\" + "".join(part + "\\" for part in folder.relative_to(self.root).parts),
                        "entries": [{"name": entry.name, "file": entry} if entry.is_file() else
                                    {"name": entry.name, "folder": True} for entry in folder.iterdir()]}
                       for folder in folders], self.root)

    def pictures(self, step, device):
        """The bytes of each picture that the step's comments show."""
        return [data for _, _, data in self.shown(step, device)]

    def shown(self, step, device):
        """Which tag of the step's comments, its scaling, and the bytes of its picture."""
        card, found = self.option("DefaultPictCardPath"), []
        for place, tag in enumerate(tags_of(step["Comments"])[0], 1):
            path = ""
            if "Path=" in tag:
                path = known_path(tag, card)
            elif "Picture-" in tag:
                number = tag.replace("Picture-", "").replace("***", "").replace(";Scaling=%d" % tag_scaling(tag), "")
                path = device.card_picture(card, leading_number(number))
            data = device.read(path) if path not in ("", "ERROR") else None
            if data is not None:
                found.append((place, tag_scaling(tag), data))
        return found

    def owner(self):
        """Name, company, address and phone."""
        told = subprocess.run([self.program, "--home", self.root, "owner"], capture_output=True, check=True).stdout
        parts = re.split(r"^(name|company|address|phone)=", told.decode("utf-8"), flags=re.MULTILINE)
        return {name: value[:-1] for name, value in zip(parts[1::2], parts[2::2])}
