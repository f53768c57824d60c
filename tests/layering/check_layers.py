#!/usr/bin/env python3
"""Compares every #include under src/, and the DEPENDS lists of src/**/CMakeLists.txt, with the arrows that
docs/architecture.md draws.

    check_layers.py SOURCE_ROOT
"""
import re
import sys
from pathlib import Path

SCREENS = ("ui", "app", "printing", "tools")
INTO_UI = "keep what the screen decides in the folder itself and only what it shows in ui/"

# Library headers that only some folders may see: pattern, folders, what to use instead.
RESTRICTED = [
    (re.compile(r"Q[A-Z]\w*|Qt\w*/.*"), SCREENS, INTO_UI),
    (re.compile(r"sqlite3(ext)?\.h"), ("data", "server"),
     "use data::Connection or a table class"),
    (re.compile(r"(sys/(socket|un)|netinet/.*|arpa/inet|netdb)(\.h)?|(boost/)?asio(\.hpp|/.*)"),
     ("exchange", "server"), "leave the network to exchange/ and server/"),
]
PROGRAMS = {"inspector": "app", "inspector-cli": "cli", "inspector-syncd": "server",
            "inspector-dict": "tools", "inspector-screens": "tools"}
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
WAY_OUT = ("Way out: move the code to a folder that may use both, or let {user} declare an interface that is "
           "handed in from outside; draw a new arrow in docs/architecture.md only when the design changes.")


class Arrows:
    """Which folder may use which, directly or through others."""

    def __init__(self, document):
        block = re.search(r"^```arrows\n(.*?)^```", document, re.MULTILINE | re.DOTALL)
        if not block:
            sys.exit('docs/architecture.md has no block "```arrows".')
        self.direct = {}
        for line in block.group(1).splitlines():
            tiers = [[name.strip() for name in tier.split(",")] for tier in line.split("<-")]
            for used, users in zip(tiers, tiers[1:]):
                for user in users:
                    if user.startswith("X/"):  # "X <- X/ui": a rule for every X, see allowed()
                        continue
                    self.direct.setdefault(user, set()).update(name for name in used if "X" not in name)
                for name in used:
                    if not name.startswith("X"):
                        self.direct.setdefault(name, set())

    def knows(self, folder):
        return folder in self.direct or folder.removesuffix("/ui") in self.direct

    def reachable(self, folder):
        found, open_ = set(), list(self.direct.get(folder, ()))
        while open_:
            name = open_.pop()
            if name not in found:
                found.add(name)
                open_ += self.direct.get(name, ())
        return found

    def allowed(self, folder):
        """Screens may use their folder, what it may use, and the screens of all these; so may app and tools,
        which put the screens together."""
        logic = folder.removesuffix("/ui")
        allowed = {folder} | self.reachable(folder) | self.reachable(logic)
        if logic != folder or folder in ("app", "tools"):
            allowed |= {logic} | {f"{name}/ui" for name in allowed if not name.endswith("/ui")}
        return allowed


def folder_of(path):
    """"editing/ui/CategoryView.h" lies in editing/ui, "data/Connection.h" in data."""
    parts = Path(path).parts
    return "/".join(parts[:2]) if len(parts) > 2 and parts[1] == "ui" else parts[0]


def include_faults(root, arrows):
    source = root / "src"
    for path in sorted(p for p in source.rglob("*") if p.suffix in (".h", ".cpp")):
        relative = path.relative_to(source).as_posix()
        folder = folder_of(relative)
        if not arrows.knows(folder):
            yield f"src/{relative}: the folder {folder} has no place in docs/architecture.md. Way out: draw its arrows."
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if match := INCLUDE.match(line):
                where = f"src/{relative}:{number}: "
                fault = include_fault(source, arrows, folder, *match.groups())
                if fault:
                    yield where + fault


def include_fault(source, arrows, folder, bracket, name):
    if bracket == "<":
        for pattern, folders, instead in RESTRICTED:
            if pattern.fullmatch(name) and not set(folder.split("/")) & set(folders):
                return f"<{name}> belongs into {', '.join(folders)} only. Way out: {instead}."
        if (source / name).is_file():
            return f'<{name}> is a header of this program. Way out: write "{name}".'
        return None
    if not (source / name).is_file():
        return f'"{name}" is not a file under src/. Way out: begin the path at src/, as in "data/Connection.h".'
    used = folder_of(name)
    if used not in arrows.allowed(folder):
        return f'"{name}": the arrow {used} <- {folder} is not drawn. {WAY_OUT.format(user=folder)}'
    return None


def folder_of_target(target):
    if target in PROGRAMS:
        return PROGRAMS[target]
    name = target.removeprefix("inspector_")
    return name.removesuffix("_ui") + "/ui" if name.endswith("_ui") else name


def target_faults(root, arrows):
    lists = sorted((root / "src").rglob("CMakeLists.txt"))
    text = re.sub(r"#.*", "", "\n".join(path.read_text(encoding="utf-8") for path in lists))
    declared = set()
    for command, arguments in re.findall(r"(inspector_folder|inspector_screens|target_link_libraries)\s*\(([^)]*)\)", text):
        target, *libraries = arguments.split()
        folder = target if command != "target_link_libraries" else folder_of_target(target)
        declared.add(folder)
        if any(library.startswith("Qt6::") for library in libraries) or command == "inspector_screens":
            if not set(folder.split("/")) & set(SCREENS):
                yield f"src/CMakeLists.txt: {target} must not see Qt. Way out: {INTO_UI}."
        for library in libraries:
            used = folder_of_target(library)
            if library.startswith("inspector_") and used not in arrows.allowed(folder):
                yield (f"src/CMakeLists.txt: {target} depends on {library}: the arrow {used} <- {folder} is not drawn. "
                       + WAY_OUT.format(user=folder))
    for path in sorted((root / "src").rglob("*.cpp")):
        folder = folder_of(path.relative_to(root / "src").as_posix())
        if folder not in declared:
            declared.add(folder)
            yield f"src/{folder}: has no target. Way out: add inspector_folder({folder} ...) to src/CMakeLists.txt."


def faults(root):
    arrows = Arrows((root / "docs/architecture.md").read_text(encoding="utf-8"))
    return [*include_faults(root, arrows), *target_faults(root, arrows)]


if __name__ == "__main__":
    found = faults(Path(sys.argv[1]))
    print("\n".join(found))
    sys.exit(1 if found else 0)
