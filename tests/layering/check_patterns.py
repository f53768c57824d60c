#!/usr/bin/env python3
"""Finds what this code base does in another way, and says which.

    check_patterns.py SOURCE_ROOT
"""
import re
import sys
from pathlib import Path
from typing import NamedTuple

LONGEST_FILE = 800
NAMELESS_FOLDERS = {"utils", "util", "common", "helpers", "misc"}
PROGRAMS = ("src/cli/", "src/app/", "src/server/", "src/tools/")


class Pattern(NamedTuple):
    text: str
    instead: str
    where: tuple = ("src/",)
    exempt: tuple = ()
    in_comments: bool = False


PATTERNS = [
    Pattern(r"\bstd::w?regex\b|<regex>", "cut the text into words, as data/SqlTokens does"),
    Pattern(r"\bthrow\b", "return the failure; what a person must know goes through Prompts or FaultLog"),
    Pattern(r"\bstd::(cout|cerr|clog)\b|\b(f?printf|puts)\s*\(", "tell it through Prompts or FaultLog", exempt=PROGRAMS),
    Pattern(r"\bstd::ofstream\b|\bfopen\s*\(", "write through Files::Create, which renames whole files into place",
            exempt=("src/device/",)),
    Pattern(r"\bsystem_clock\b|\btime\s*\(\s*(nullptr|NULL|0)\s*\)|\blocaltime(_r)?\b",
            "ask the Clock that was handed in, so that a test can set it", exempt=("src/device/",)),
    Pattern(r"\b[iI]nstance\s*\(\s*\)|\bgetInstance\b", "take what is shared through the constructor", ("src/", "tests/")),
    Pattern(r"\b(std::)?(exit|_exit|abort|terminate|quick_exit)\s*\(\s*\w*\s*\)",
            "return the result; only a main function ends the program", exempt=PROGRAMS),
    Pattern(r"\bstd::system\s*\(|\bpopen\s*\(", "use the library in place of another program"),
    Pattern(r"\bsleep_for\b|\bu?sleep\s*\(", "wait on a condition variable", exempt=PROGRAMS),
    Pattern(r"BEGIN\s+EXCLUSIVE|locking_mode", "BEGIN IMMEDIATE, which leaves other programs their access",
            exempt=("src/data/Connection.cpp",),
            in_comments=True),
    Pattern(r"\busing namespace std\s*;", "name what is used", ("src/", "tests/", "bench/")),
    Pattern(r"\bDISABLED_\w", "repair the test or delete it", ("tests/",)),
    Pattern(r"\b(TODO|FIXME|XXX)\b", "file an issue, or do it now", ("src/", "tests/", "bench/"), in_comments=True),
]

# Alternatives in the order in which they must win: a raw string may hold quotes, a string comment signs.
PIECE = re.compile(r'R"(?P<mark>[^()\s\\]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|//[^\n]*|/\*.*?\*/',
                   re.DOTALL)


def code_only(text):
    """The same lines with comments and literals emptied. A digit separator (1'000) is left alone."""
    def emptied(match):
        if match.group().startswith("'") and match.start() > 0 and text[match.start() - 1].isalnum() \
                and text[match.start() - 1] not in "uUL8":
            return match.group()
        return '""' + "\n" * match.group().count("\n")
    return PIECE.sub(emptied, text)


def faults(root):
    found = []
    files = [path for folder in ("src", "tests", "bench") for path in (root / folder).rglob("*")
             if path.suffix in (".h", ".cpp")]
    for path in sorted(files):
        name = path.relative_to(root).as_posix()
        text = path.read_text(encoding="utf-8")
        code = code_only(text)
        if NAMELESS_FOLDERS & set(name.lower().split("/")[:-1]):
            found.append(f"{name}: a folder is named after a part of the trade. Way out: put it where its noun lives.")
        if text.count("\n") > LONGEST_FILE:
            found.append(f"{name}: more than {LONGEST_FILE} lines. Way out: split it, one class per file.")
        for pattern in PATTERNS:
            if not name.startswith(pattern.where) or name.startswith(pattern.exempt):
                continue
            searched = text if pattern.in_comments else code
            for match in re.finditer(pattern.text, searched):
                line = searched.count("\n", 0, match.start()) + 1
                found.append(f"{name}:{line}: {match.group()}. Way out: {pattern.instead}.")
    return found


if __name__ == "__main__":
    result = faults(Path(sys.argv[1]))
    print("\n".join(result))
    sys.exit(1 if result else 0)
