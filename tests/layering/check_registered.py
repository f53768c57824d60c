#!/usr/bin/env python3
"""Every .cpp under tests/ must be built, and every program with tests in it must be run.

    check_registered.py SOURCE_ROOT BUILD_FOLDER
"""
import json
import re
import sys
from pathlib import Path

HAS_TEST = re.compile(r"^\s*(TYPED_)?TEST(_F|_P)?\s*\(", re.MULTILINE)


def faults(root, build):
    targets = {}
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        target = re.search(r"CMakeFiles/([^/]+)\.dir/", entry.get("output", "") or entry["command"])
        if target:
            targets.setdefault(Path(entry["file"]).resolve(), set()).add(target.group(1))
    registered = "\n".join(path.read_text(encoding="utf-8") for path in (build / "tests").rglob("CTestTestfile.cmake"))

    found = []
    for path in sorted((root / "tests").rglob("*.cpp")):
        relative = path.relative_to(root)
        owners = targets.get(path.resolve(), set())
        if not owners:
            found.append(f"{relative}: belongs to no target. Way out: add its folder to tests/CMakeLists.txt.")
        elif HAS_TEST.search(path.read_text(encoding="utf-8")):
            if not any(re.search(rf"\b{re.escape(owner)}\b", registered) for owner in owners):
                found.append(f"{relative}: is built into {', '.join(sorted(owners))}, which is never run. "
                             "Way out: declare the program with inspector_tests().")
    return found


if __name__ == "__main__":
    result = faults(Path(sys.argv[1]), Path(sys.argv[2]))
    print("\n".join(result))
    sys.exit(1 if result else 0)
