#!/usr/bin/env python3
"""Prints the id of the sample visit: reads the inspections as JSON on standard input.

    inspector-cli list --json | sample-visit.py assets/sample/visit.toml
"""
import json
import sys
import tomllib


def document_number(visit):
    """The value of "number", at the top of the file or in one of its tables."""
    for table in [visit] + [value for value in visit.values() if isinstance(value, dict)]:
        if "number" in table:
            return str(table["number"])
    sys.exit(f"{sys.argv[1]} names no document number.")


with open(sys.argv[1], "rb") as file:
    number = document_number(tomllib.load(file))
for inspection in json.load(sys.stdin):
    if str(inspection["number"]) == number:
        print(inspection["id"])
        break
