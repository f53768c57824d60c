#!/usr/bin/env python3
"""The check must find a document that fell behind: the real one with one fault each.

    check_data_model_test.py SOURCE_ROOT
"""
import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
import check_data_model as check

ROOT = Path(sys.argv.pop())


class CheckDataModelTest(unittest.TestCase):
    def test_each_kind_of_drift_is_found(self):
        source = (ROOT / check.LAYOUT).read_text(encoding="utf-8")
        text = (ROOT / check.DOCUMENT).read_text(encoding="utf-8")
        self.assertEqual(check.faults(source, text), [])
        cases = [  # what changes in the layout, what in the document, the tables that must be named
            ('{u"ClientPhone", kString}', '{u"Phone", kString}', ["Inspection,", "MERGE_Inspection"]),
            ('{u"PickerName", kString}', '{u"PickerName", kInteger}', ["Pickers"]),
            ('{u"Keyword", kString, u"Text"}', '{u"Keyword", kString}', ["StepTemplate"]),
            ('{u"NextID", kInteger, u"integer"}', "", ["UniqueID", "UniqueID"]),
            ("kStep, kStepIndexes}", "kStep, kByCategory}", ["Step", "MERGE_Step"]),
            ('{u"Pickers", kInTemplate', '{u"Pickers", kInInspection', ["Pickers", "Pickers"]),
            ('kMergeInspection = std::span<const ColumnLayout>(kInspection).first(18)',
             'kMergeInspection = std::span<const ColumnLayout>(kInspection).first(17)', ["MERGE_Inspection"]),
        ]
        for before, after, tables in cases:
            with self.subTest(after=after):
                self.assertIn(before, source)
                found = "\n".join(check.faults(source.replace(before, after), text))
                for table in set(tables):
                    self.assertIn(table.rstrip(","), found)
                self.assertGreaterEqual(found.count("Way out"), len(tables))


if __name__ == "__main__":
    unittest.main()
