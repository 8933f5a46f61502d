#!/usr/bin/env python3
"""Tests tools/check_layers.py on small trees."""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
CHECK = os.path.join(ROOT, "tools", "check_layers.py")
HEADER = "// What it is for.\n\n#pragma once\n\n"


class CheckLayers(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def add(self, path, *includes, start=HEADER):
        full = os.path.join(self.folder.name, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "w", encoding="utf-8") as file:
            file.write(start + "".join(f'#include "{path}"\n' for path in includes))

    def run_check(self, *options):
        answer = subprocess.run([sys.executable, CHECK, "--root", self.folder.name, *options],
                                capture_output=True, text=True, check=False)
        self.assertEqual(answer.stderr, "")
        self.assertEqual(answer.returncode, 1 if answer.stdout else 0)
        return answer.stdout.splitlines()

    def test_an_include_against_the_table_is_named_with_its_line(self):
        upward = [
            ("host/du/A.h", "dp/Lock.h", "du may not include dp"),
            ("callouts/events/A.h", "callouts/align/Lanes.h", "callouts may not include callouts/align"),
            ("app/import/gltf/A.h", "app/sheet/Sheet.h", "app/import may not include app/sheet"),
            ("app/sheet/A.h", "tests/support/Probe.h", "app/sheet may not include tests"),
            ("host/du/B.h", "unknown/A.h", "du may not include unknown/A.h"),
        ]
        for path, included, _ in upward:
            self.add(path, included)
        self.assertCountEqual(self.run_check(), [f"{path}:5: {message}" for path, _, message in upward])

    def test_includes_that_go_down_are_fine(self):
        self.add("host/zrannotations/A.h", "zritemlist/List.h", "du/Counted.h", "zrk/scene/Scene.h")
        self.add("callouts/dll/A.cpp", "callouts/align/Lanes.h", "callouts/events/A.h", "dg/Point.h")
        self.add("app/export/A.cpp", "app/sheet/Sheet.h")
        self.add("tests/callouts/A.cpp", "callouts/dll/Entry.h", "app/cli/Options.h")
        self.assertEqual(self.run_check(), [])

    def test_a_folder_that_the_table_lacks_is_reported(self):
        self.add("host/newcomer/A.h")
        self.assertEqual(self.run_check(), ["host/newcomer/A.h:1: its folder is missing in the layer table"])

    def test_an_include_by_a_short_path_is_reported(self):
        self.add("host/du/A.h")
        self.add("host/du/B.h", "A.h")
        self.assertEqual(self.run_check(),
                         ['host/du/B.h:5: "A.h" is found beside this file; include it by its full path'])

    def test_a_cycle_is_reported_once(self):
        self.add("host/zrk/scene/A.h", "zrk/tree/B.h")
        self.add("host/zrk/tree/B.h", "zrk/object/C.h", "zrk/scene/A.h")
        self.add("host/zrk/object/C.h")
        self.assertEqual(self.run_check(),
                         ["zrk/tree/B.h:6: zrk/scene/A.h includes this header again, in a cycle"])

    def test_a_header_needs_its_comment_and_its_guard(self):
        self.add("host/du/A.h", start="#pragma once\n")
        self.add("host/du/B.h", start="// What it is for.\n")
        self.assertEqual(self.run_check(), ["host/du/A.h:1: a header starts with a comment that says what it is for",
                                            "host/du/B.h:1: a header has #pragma once"])

    def test_a_stamp_is_left_only_by_a_clean_tree_and_names_what_was_read(self):
        stamp, dependencies = (os.path.join(self.folder.name, name) for name in ("stamp", "stamp.d"))
        self.add("host/du/A.h", "dp/Lock.h")
        self.run_check("--stamp", stamp, "--depfile", dependencies)
        self.assertFalse(os.path.exists(stamp))
        self.add("host/du/A.h")
        self.run_check("--stamp", stamp, "--depfile", dependencies)
        self.assertTrue(os.path.exists(stamp))
        with open(dependencies, encoding="utf-8") as file:
            named = file.read().split()
        for path in ("host/du", "host/du/A.h"):
            self.assertIn(os.path.join(self.folder.name, path), named)


if __name__ == "__main__":
    unittest.main()
