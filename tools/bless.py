#!/usr/bin/env python3
"""Accepts the results that golden tests give now: rewrites what they expect, and says which files changed.

Usage: bless.py [--build FOLDER] [FILTER]
FILTER is a GoogleTest filter for the scenes, such as '*labels*'. Review the changes before they are committed.
"""

import argparse
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# The tests that rewrite their expectations when ZR_BLESS is set, and what they rewrite.
GOLDEN_TESTS = [("zr_test_scenes", "*Scene.Prints*"), ("zr_test_command", "Manual.*")]
GOLDEN_FILES = ["tests/app/scenes", "docs/COMMANDS.md"]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default=os.path.join(ROOT, "build", "debug"))
    parser.add_argument("filter", nargs="?")
    arguments = parser.parse_args()
    for test, usual in GOLDEN_TESTS:
        program = os.path.join(arguments.build, "bin", test)
        if not os.path.exists(program):
            print(f"bless: {program} is not built; ./test builds it", file=sys.stderr)
            return 2
        subprocess.run([program, "--gtest_brief=1", f"--gtest_filter={arguments.filter or usual}"],
                       env=os.environ | {"ZR_BLESS": "1"}, stdout=subprocess.DEVNULL, check=False)
    return subprocess.run(["git", "-C", ROOT, "status", "--short", "--", *GOLDEN_FILES], check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
