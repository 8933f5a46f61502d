#!/usr/bin/env python3
"""Checks that includes follow the layer table below, and that headers are shaped as headers.

Usage: check_layers.py [--root ROOT] [--stamp FILE --depfile FILE]
Prints `file:line: what is wrong` and exits with 1 if anything is. With --stamp, FILE is touched on success and
the depfile names everything that was read, so that a build runs the check again exactly when its answer may change.
"""

import argparse
import os
import re
import sys

# Each layer with those directly below it; a layer may include all that is below, through any number of steps.
# A folder belongs to the layer with the longest matching name.
BELOW = {
    "du": [],
    "dp": ["du"],
    "dg": ["dp"],
    "zrg": ["dg"],
    "dom": ["dp"],
    "zrk": ["zrg", "dom"],
    "zrk/illustration": ["zrk"],
    "zrkapp/illustration": ["zrk/illustration"],
    "zritemlist": ["zrk/illustration"],
    "zrannotations": ["zrkapp/illustration", "zritemlist"],
    "callouts": ["zrannotations"],  # with its observers and events
    "callouts/align": ["callouts"],
    "callouts/generator": ["callouts/align"],
    "callouts/dll": ["callouts/generator"],
}

# The application's parts may include what is named here and nothing else.
HOST = ["du", "dp", "dg", "zrg", "dom", "zrk", "zrk/illustration", "zrkapp/illustration", "zritemlist", "zrannotations"]
COMPONENT = ["callouts", "callouts/align", "callouts/generator", "callouts/dll"]
ONLY = {
    "app/file": [],
    "app/text": ["du"],
    "app/import": ["app/file"],
    "app/sample": ["app/import"],
    "app/render": ["du", "dp", "dg", "zrg"],
    "app/lineart": ["du", "dp", "dg", "zrg", "app/render"],
    "app/document": HOST + COMPONENT + ["app/import"],
    "app/project": HOST + COMPONENT + ["app/file", "app/import", "app/document"],
    "app/check": HOST + COMPONENT + ["app/text", "app/document", "app/project"],
    "app/sheet": HOST + COMPONENT + ["app/import", "app/document", "app/render", "app/lineart"],
    "app/catalogue": ["du", "dp", "dg", "zrg", "app/file", "app/document", "app/render", "app/lineart", "app/sheet"],
    "app/export": ["app/file", "app/catalogue", "app/document", "app/import", "app/render", "app/lineart", "app/sheet"],
    "app/command": HOST + COMPONENT + ["app/file", "app/text", "app/import", "app/document", "app/project", "app/check", "app/sheet", "app/export"],
    "app/launch": [],
    "app/cli": HOST + ["app/file", "app/text", "app/import", "app/document", "app/project", "app/check", "app/render", "app/sheet", "app/export", "app/command"],
}

ANYTHING = ["tests", "bench"]
SOURCE_FOLDERS = ["host", "callouts", "app", "tests", "bench"]
INCLUDE = re.compile(r'\s*#\s*include\s*"([^"]+)"')


def all_below(layer):
    found = set()
    pending = list(BELOW[layer])
    while pending:
        lower = pending.pop()
        if lower not in found:
            found.add(lower)
            pending += BELOW[lower]
    return found


ALLOWED = {layer: all_below(layer) for layer in BELOW} | {part: set(lower) for part, lower in ONLY.items()}


def layer_of(path):
    """The layer of an include path or of a file (without `host/`); None if the table knows none."""
    folder = os.path.dirname(path)
    while folder:
        if folder in ALLOWED or folder in ANYTHING:
            return folder
        folder = os.path.dirname(folder)
    return None


def find_sources(root, folders_read):
    for top in SOURCE_FOLDERS:
        for folder, subfolders, files in os.walk(os.path.join(root, top)):
            subfolders.sort()
            folders_read.append(folder)
            for name in sorted(files):
                if name.endswith((".h", ".cpp")):
                    yield os.path.relpath(os.path.join(folder, name), root)


def check_header_shape(path, lines):
    if not lines or not lines[0].startswith("//"):
        yield f"{path}:1: a header starts with a comment that says what it is for"
    if "#pragma once" not in lines:
        yield f"{path}:1: a header has #pragma once"


def check_includes(root, path, includes):
    layer = layer_of(path.removeprefix("host/"))
    if layer is None:
        yield f"{path}:1: its folder is missing in the layer table"
        return
    for line, included in includes:
        if os.path.exists(os.path.join(root, os.path.dirname(path), included)):
            yield f'{path}:{line}: "{included}" is found beside this file; include it by its full path'
            continue
        other = layer_of(included)
        if layer in ANYTHING or other == layer:
            continue
        if other not in ALLOWED[layer]:
            yield f"{path}:{line}: {layer} may not include {other or included}"


def check_cycles(graph):
    """Depth first without recursion; each cycle is reported once, where it closes."""
    done, on_path = set(), {}
    for start in sorted(graph):
        pending = [(start, None)]
        while pending:
            header, rest = pending.pop()
            if rest is None:
                if header in done:
                    continue
                on_path[header] = None
                rest = iter(graph[header])
            for line, lower in rest:
                if lower in on_path:
                    yield f"{header}:{line}: {lower} includes this header again, in a cycle"
                elif lower in graph and lower not in done:
                    pending += [(header, rest), (lower, None)]
                    break
            else:
                done.add(header)
                del on_path[header]


def check(root):
    """Returns what is wrong, and the paths that the answer depends on."""
    problems, read, graph = [], [], {}
    for path in list(find_sources(root, read)):
        full = os.path.join(root, path)
        read.append(full)
        with open(full, encoding="utf-8") as file:
            lines = file.read().splitlines()
        includes = [(i, match[1]) for i, line in enumerate(lines, 1) if (match := INCLUDE.match(line))]
        problems += check_includes(root, path, includes)
        if path.endswith(".h"):
            problems += check_header_shape(path, lines)
            graph[path.removeprefix("host/")] = includes
    return problems + list(check_cycles(graph)), read


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", default=os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    parser.add_argument("--stamp")
    parser.add_argument("--depfile")
    arguments = parser.parse_args()
    problems, read = check(arguments.root)
    for problem in problems:
        print(problem)
    if problems:
        return 1
    if arguments.stamp:
        with open(arguments.depfile, "w", encoding="utf-8") as file:
            file.write(arguments.stamp + ": " + " ".join(path.replace(" ", "\\ ") for path in read) + "\n")
        with open(arguments.stamp, "w", encoding="utf-8"):
            pass
    return 0


if __name__ == "__main__":
    sys.exit(main())
