#!/usr/bin/env python3
"""Reports passages that stand twice in the sources: a fault mended in one copy lives on in the other.

Compares lines without comments and spacing; blank lines, includes and lone braces do not count. Exits with 1 when
two passages of LINES lines or more agree.
"""

import os
import re
import sys

LINES = 10
FOLDERS = ["host", "callouts", "app"]
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def telling_lines(path):
    """(line number, text) of the lines that count."""
    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            text = re.sub(r"\s+", "", re.sub(r"//.*", "", line))
            if len(text) > 2 and not text.startswith(("#", "namespace", "}//namespace", "public:", "private:")):
                yield number, text


def find_sources():
    for top in FOLDERS:
        for folder, subfolders, files in os.walk(os.path.join(ROOT, top)):
            subfolders.sort()
            for name in sorted(files):
                if name.endswith((".h", ".cpp")):
                    yield os.path.join(folder, name)


def find_duplicates():
    """Yields (path, line, other path, other line, length), each passage once."""
    seen = {}
    sources = {path: list(telling_lines(path)) for path in find_sources()}
    for path, lines in sources.items():
        start = 0
        while start + LINES <= len(lines):
            window = tuple(text for _, text in lines[start:start + LINES])
            other_path, other_start = seen.setdefault(window, (path, start))
            if (other_path, other_start) == (path, start):
                start += 1
                continue
            other = sources[other_path]
            length = LINES
            while (start + length < len(lines) and other_start + length < len(other)
                   and lines[start + length][1] == other[other_start + length][1]):
                length += 1
            yield path, lines[start][0], other_path, other[other_start][0], length
            start += length


def main():
    found = False
    for path, line, other_path, other_line, length in find_duplicates():
        found = True
        print(f"{os.path.relpath(path, ROOT)}:{line}: {length} lines as in "
              f"{os.path.relpath(other_path, ROOT)}:{other_line}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
