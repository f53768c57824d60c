#!/usr/bin/env python3
"""A check that finds nothing anywhere is worthless: small source trees with one fault each."""
import json
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
import check_layers
import check_patterns
import check_registered

ARCHITECTURE = """
```arrows
device <- data <- library, inspection <- editing <- app
device <- spell <- editing/ui
X <- X/ui <- app
```
"""
TARGETS = """
inspector_folder(device)
inspector_folder(data DEPENDS inspector_device)
inspector_folder(inspection DEPENDS inspector_data)
inspector_folder(editing DEPENDS inspector_inspection)
inspector_screens(editing/ui DEPENDS inspector_editing inspector_spell)
"""
SOUND = {
    "docs/architecture.md": ARCHITECTURE,
    "src/CMakeLists.txt": TARGETS,
    "src/device/Text.h": "#include <string>\n",
    "src/data/Rows.h": '#include "device/Text.h"\n',
    "src/data/Rows.cpp": '#include "data/Rows.h"\n#include <sqlite3.h>\n',
    "src/inspection/Visit.h": '#include "data/Rows.h"\n#include "device/Text.h"\n',
    "src/inspection/ui/List.h": "#include <QWidget>\n",
    "src/editing/Steps.h": '#include "inspection/Visit.h"\n',
    "src/spell/Words.h": "",
    "src/editing/ui/StepView.h": '#include <QWidget>\n#include "editing/Steps.h"\n#include "spell/Words.h"\n'
                                 '#include "inspection/ui/List.h"\n#include "data/Rows.h"\n',
    "src/app/Frame.h": '#include <QtWidgets/QMainWindow>\n#include "editing/ui/StepView.h"\n',
}


class ChecksTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def put(self, files):
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def expect_one(self, faults, *words):
        self.assertEqual(len(faults), 1, faults)
        for word in words:
            self.assertIn(word, faults[0])

    def test_sound_tree_passes(self):
        self.put(SOUND)
        self.assertEqual(check_layers.faults(self.root), [])
        self.assertEqual(check_patterns.faults(self.root), [])

    def test_each_wrong_include_is_named(self):
        cases = [
            ("src/data/Rows.h", '#include "inspection/Visit.h"', "inspection <- data"),
            ("src/editing/Steps.h", '#include "spell/Words.h"', "spell <- editing"),
            ("src/editing/Steps.h", '#include "editing/ui/StepView.h"', "editing/ui <- editing"),
            ("src/inspection/ui/List.h", '#include "editing/ui/StepView.h"', "editing/ui <- inspection/ui"),
            ("src/spell/Words.h", '#include "data/Rows.h"', "data <- spell"),
            ("src/data/Rows.h", '#include "inspection/ui/List.h"', "inspection/ui <- data"),
            ("src/spell/Words.h", '#include "inspection/ui/List.h"', "inspection/ui <- spell"),
            ("src/data/Rows.h", '  #  include "../device/Text.h"', "begin the path at src/"),
            ("src/data/Rows.h", '#include "Missing.h"', "begin the path at src/"),
            ("src/data/Rows.h", "#include <device/Text.h>", 'write "device/Text.h"'),
            ("src/editing/Steps.h", "#include <QString>", "ui, app, printing, tools"),
            ("src/editing/Steps.h", "#include <QtCore/qglobal.h>", "ui, app, printing, tools"),
            ("src/inspection/Visit.h", "#include <sqlite3.h>", "data, server"),
            ("src/data/Rows.h", "#include <sys/socket.h>", "exchange, server"),
            ("src/data/Rows.h", "#include <asio/ip/tcp.hpp>", "exchange, server"),
            ("src/cabinet/Drawer.h", "", "no place"),
        ]
        for file, line, expected in cases:
            with self.subTest(file=file, line=line):
                self.put(SOUND | {file: line + "\n"})
                self.expect_one(check_layers.faults(self.root), file, expected, "Way out")
                (self.root / "src/cabinet/Drawer.h").unlink(missing_ok=True)

    def test_targets_follow_the_arrows(self):
        self.put(SOUND | {"src/CMakeLists.txt": TARGETS.replace("inspector_folder(device)",
                                                                "inspector_folder(device DEPENDS inspector_data)")})
        self.expect_one(check_layers.faults(self.root), "CMakeLists.txt", "data <- device")
        for wrong in ("inspector_screens(editing)", "inspector_folder(editing PRIVATE Qt6::Gui)"):
            self.put({"src/CMakeLists.txt": TARGETS + wrong})
            self.expect_one(check_layers.faults(self.root), "CMakeLists.txt", "must not see Qt")
        self.put({"src/CMakeLists.txt": TARGETS.replace("inspector_folder(data", "# inspector_folder(data")})
        self.expect_one(check_layers.faults(self.root), "src/data", "no target")

    def test_every_test_file_is_built_and_run(self):
        build = self.root / "build"
        test = self.root / "tests/data/RowsTest.cpp"

        def faults(built, run):
            entry = {"file": str(test), "output": "tests/CMakeFiles/inspector_data_tests.dir/data/RowsTest.cpp.o"}
            self.put({"tests/data/RowsTest.cpp": "TEST(Rows, Count) {}\n",
                      "build/compile_commands.json": json.dumps([entry] if built else []),
                      "build/tests/CTestTestfile.cmake": 'include("inspector_data_tests[1]_include.cmake")' if run else ""})
            return check_registered.faults(self.root, build)

        self.assertEqual(faults(built=True, run=True), [])
        self.expect_one(faults(built=False, run=True), "RowsTest.cpp", "no target")
        self.expect_one(faults(built=True, run=False), "RowsTest.cpp", "never run")

    def test_patterns_are_found_in_code_only(self):
        self.put({"src/data/Good.cpp": '// never throw\nauto s = "throw \\" throw"; int n = 1\'000; auto c = \'"\';\n'
                                       'auto r = R"(throw " // )"; /* throw\n throw */ std::snprintf(b, 1, "");\n',
                  "src/cli/Main.cpp": "std::cout << 1;\n"})
        self.assertEqual(check_patterns.faults(self.root), [])
        cases = [
            ("src/data/Bad.cpp", "int i = 1'000;\nthrow Fault();\n", "Bad.cpp:2: throw"),
            ("src/data/Bad.cpp", "std::cout << 1;\n", "Prompts"),
            ("src/reports/Bad.cpp", "std::ofstream out(file);\n", "Files::Create"),
            ("src/data/Bad.cpp", 'Execute("BEGIN EXCLUSIVE");\n', "BEGIN IMMEDIATE"),
            ("src/data/Bad.cpp", "// TODO later\n", "issue"),
            ("src/utils/Bad.cpp", "\n", "noun"),
            ("tests/data/Bad.cpp", "TEST(Rows, DISABLED_Count) {}\n", "repair"),
            ("src/data/Bad.cpp", "\n" * 801, "split"),
        ]
        for file, text, expected in cases:
            with self.subTest(text=text[:40]):
                self.put({file: text})
                self.expect_one(check_patterns.faults(self.root), expected, "Way out")
                (self.root / file).unlink()


if __name__ == "__main__":
    unittest.main()
