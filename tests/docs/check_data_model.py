#!/usr/bin/env python3
"""Compares the tables of docs/data-model.md with src/data/TableLayout.cpp: every table, its database, every
column with its ordinal, name, types and generated name, and what is indexed.

    check_data_model.py SOURCE_ROOT
"""
import re
import sys
from pathlib import Path
from typing import NamedTuple

DOCUMENT = "docs/data-model.md"
LAYOUT = "src/data/TableLayout.cpp"
TYPES = ["Integer", "Double", "Date", "String", "YesNo", "Binary"]  # the order of enum class ValueType
WORDS = dict(zip(TYPES, ["integer", "double", "date", "string", "yes/no", "binary"]))


class Table(NamedTuple):
    columns: list  # (name, type, SQL type, generated name)
    indexed: list


def texts(pattern, source):
    found = re.search(pattern, source, re.DOTALL)
    return re.findall(r'u"([^"]*)"', found.group(1)) if found else sys.exit(f"{LAYOUT}: nothing matches {pattern}")


def tables_of_layout(source):
    """(database, table) -> Table, as the program has them."""
    names = dict(zip(TYPES, texts(r"kGeneratedNames\[\] = \{(.*?)\}", source)))
    types = dict(zip(TYPES, texts(r"kGeneratedTypes\[\] = \{(.*?)\}", source)))
    columns = {}
    for array, body in re.findall(r"ColumnLayout (k\w+)\[\] = \{(.*?)\};", source, re.DOTALL):
        entries = re.findall(r'\{\s*u"(\w+)",\s*k(\w+)(?:,\s*u"([^"]*)")?\s*\}', body)
        columns[array] = [(name, WORDS[kind], declared or types[kind],
                           "" if declared else names[kind].replace("%d", str(at)))
                          for at, (name, kind, declared) in enumerate(entries)]
    for name, array, count in re.findall(r"(k\w+) = std::span<const ColumnLayout>\((k\w+)\)\.first\((\d+)\)", source):
        columns[name] = columns[array][:int(count)]
    indexes = {array: re.findall(r'u"(\w+)"', body)
               for array, body in re.findall(r"TextView (k\w+)\[\] = \{(.*?)\};", source, re.DOTALL)}
    rows = re.findall(r'\{\s*u"(\w+)",\s*kIn(\w+),\s*(k\w+),\s*(k\w+|\{\})', source)
    return {(database, name): Table(columns[array], indexes.get(index, [])) for name, database, array, index in rows}


def tables_of_document(text):
    """The same, as the document tells it."""
    tables = {}
    for part in re.split(r"^## ", text, flags=re.MULTILINE):
        heading = re.match(r"(\w+) database\n", part)
        if not heading:
            continue
        for section in re.split(r"^### ", part, flags=re.MULTILINE)[1:]:
            title, _, body = section.partition("\n")
            cells = [[cell.strip().strip("`") for cell in line.split("|")[1:6]]
                     for line in body.splitlines() if re.match(r"\| \d+ \|", line)]
            columns = [tuple(row[1:]) for at, row in enumerate(cells) if row[0] == str(at)]
            same = re.search(r"^Columns 0 to (\d+) of `(\w+)`", body, re.MULTILINE)
            if same:
                known = next((table for (_, name), table in tables.items() if name == same.group(2)), Table([], []))
                columns = known.columns[:int(same.group(1)) + 1]
            indexed = re.search(r"^Indexed: (.*)\.$", body, re.MULTILINE)
            for name in re.findall(r"`(\w+)`", title):
                tables[heading.group(1), name] = Table(columns, re.findall(r"`(\w+)`", indexed[1]) if indexed else [])
    return tables


def faults(source, text):
    found = []
    layout, document = tables_of_layout(source), tables_of_document(text)
    if not layout:
        found.append(f"{LAYOUT}: no table was found. Way out: teach tests/docs/check_data_model.py its new form.")
    for key in sorted(layout.keys() | document.keys()):
        where = f"{DOCUMENT}, {key[0]} database, {key[1]}: "
        if key not in document:
            found.append(where + "is missing. Way out: describe the table.")
        elif key not in layout:
            found.append(where + f"is no table of {LAYOUT}. Way out: remove its section.")
        else:
            found += [where + fault for fault in differences(layout[key], document[key])]
    return found


def differences(layout, document):
    for at in range(max(len(layout.columns), len(document.columns))):
        told = document.columns[at] if at < len(document.columns) else "nothing"
        true = layout.columns[at] if at < len(layout.columns) else "nothing"
        if told != true:
            yield f"column {at} is {true}, the document says {told}. Way out: correct the row."
    if layout.indexed != document.indexed:
        yield f"indexed are {layout.indexed}, the document says {document.indexed}. Way out: correct the line."


if __name__ == "__main__":
    root = Path(sys.argv[1])
    result = faults((root / LAYOUT).read_text(encoding="utf-8"), (root / DOCUMENT).read_text(encoding="utf-8"))
    print("\n".join(result))
    sys.exit(1 if result else 0)
