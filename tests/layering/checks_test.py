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


CASES = [  # a check; what a file of the sound tree becomes; what must be told of it
    (check_layers, "src/data/Rows.h", '#include "inspection/Visit.h"', "inspection <- data"),
    (check_layers, "src/editing/Steps.h", '#include "spell/Words.h"', "spell <- editing"),
    (check_layers, "src/editing/Steps.h", '#include "editing/ui/StepView.h"', "editing/ui <- editing"),
    (check_layers, "src/inspection/ui/List.h", '#include "editing/ui/StepView.h"', "editing/ui <- inspection/ui"),
    (check_layers, "src/spell/Words.h", '#include "data/Rows.h"', "data <- spell"),
    (check_layers, "src/data/Rows.h", '#include "inspection/ui/List.h"', "inspection/ui <- data"),
    (check_layers, "src/spell/Words.h", '#include "inspection/ui/List.h"', "inspection/ui <- spell"),
    (check_layers, "src/data/Rows.h", '  #  include "../device/Text.h"', "begin the path at src/"),
    (check_layers, "src/data/Rows.h", '#include "Missing.h"', "begin the path at src/"),
    (check_layers, "src/data/Rows.h", "#include <device/Text.h>", 'write "device/Text.h"'),
    (check_layers, "src/editing/Steps.h", "#include <QString>", "ui, app, printing, tools"),
    (check_layers, "src/editing/Steps.h", "#include <QtCore/qglobal.h>", "ui, app, printing, tools"),
    (check_layers, "src/inspection/Visit.h", "#include <sqlite3.h>", "data, server"),
    (check_layers, "src/data/Rows.h", "#include <sys/socket.h>", "exchange, server"),
    (check_layers, "src/data/Rows.h", "#include <asio/ip/tcp.hpp>", "exchange, server"),
    (check_layers, "src/cabinet/Drawer.h", "", "no place"),
    (check_layers, "src/CMakeLists.txt", TARGETS.replace("(device)", "(device DEPENDS inspector_data)"), "data <- device"),
    (check_layers, "src/CMakeLists.txt", TARGETS + "inspector_screens(editing)", "must not see Qt"),
    (check_layers, "src/CMakeLists.txt", TARGETS + "inspector_folder(editing PRIVATE Qt6::Gui)", "must not see Qt"),
    (check_layers, "src/CMakeLists.txt", TARGETS.replace("inspector_folder(data", "# inspector_folder(data"), "no target"),
    (check_patterns, "src/data/Bad.cpp", "int i = 1'000;\nthrow Fault();", "Bad.cpp:2: throw"),
    (check_patterns, "src/data/Bad.cpp", "std::cout << 1;", "Prompts"),
    (check_patterns, "src/reports/Bad.cpp", "std::ofstream out(file);", "Files::Create"),
    (check_patterns, "src/data/Bad.cpp", 'Execute("BEGIN EXCLUSIVE");', "BEGIN IMMEDIATE"),
    (check_patterns, "src/data/Bad.cpp", "// TODO later", "issue"),
    (check_patterns, "src/utils/Bad.cpp", "", "noun"),
    (check_patterns, "tests/data/Bad.cpp", "TEST(Rows, DISABLED_Count) {}", "repair"),
    (check_patterns, "src/data/Bad.cpp", "\n" * 800, "split"),
]


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
        self.put(SOUND | {
            "src/data/Good.cpp": '// never throw\nauto s = "throw \\" throw"; int n = 1\'000; auto c = \'"\';\n'
                                 'auto r = R"(throw " // )"; /* throw\n throw */ std::snprintf(b, 1, "");\n',
            "src/app/Main.cpp": "std::cout << 1;\n"})
        self.assertEqual(check_patterns.faults(self.root), [])
        self.put({"src/CMakeLists.txt": TARGETS + "inspector_screens(app)"})
        self.assertEqual(check_layers.faults(self.root), [])

    def test_each_fault_is_told_with_its_place_and_a_way_out(self):
        for check, file, text, told in CASES:
            with self.subTest(file=file, text=text[:40]):
                self.put(SOUND | {file: text + "\n"})
                self.expect_one(check.faults(self.root), Path(file).parent.as_posix(), told, "Way out")
                (self.root / file).unlink()

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


if __name__ == "__main__":
    unittest.main()
