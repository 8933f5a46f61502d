#!/usr/bin/env python3
"""Do the component's tests notice when it is broken? Breaks one operator of callouts/ at a time, builds, runs the tests
that cover it, and reports the changes that no test noticed.

Works in a copy of the tree (build/mutants/tree), so that the tree itself is never touched. Which operators are broken
is drawn by --seed; the same seed draws the same ones as long as the sources stay the same. A survivor is either a fault
that no test would find, or a change that makes no difference; the table says where to look.
"""

import argparse
import os
import random
import re
import resource
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
COPY = os.path.join(ROOT, "build", "mutants", "tree")

# By the folder that is broken, longest first; the quickest program first.
TESTS = {
    "callouts/align": ["zr_test_align", "zr_test_optimal", "zr_test_generator"],
    "callouts/generator": ["zr_test_generator", "zr_test_undo"],
    "callouts": ["zr_test_callouts", "zr_test_generator", "zr_test_undo"],
}
SECONDS = 120  # that a program may take; one that takes longer has noticed
ADDRESSES = 72 << 30  # likewise: the kernel's pool reserves 64 GiB of them, the rest is what there is to fill

# What stands in the code, and what it becomes. Template brackets and references have no blanks on both sides.
SWAPS = [(" == ", " != "), (" != ", " == "), (" <= ", " < "), (" >= ", " > "), (" < ", " <= "), (" > ", " >= "),
         (" && ", " || "), (" || ", " && "), (" + ", " - "), (" - ", " + "), (" * ", " / "), (" / ", " * "),
         (" += ", " -= "), (" -= ", " += "), ("++", "--"), ("true", "false"), ("false", "true"),
         ("std::min", "std::max"), ("std::max", "std::min"), ("continue;", "break;")]
NEGATION = re.compile(r"(?<=[(\s])!(?=[\w(])")
CALL = re.compile(r"^\s+(?:if \([^()]*(?:\([^()]*\)[^()]*)*\) )?([\w:.>\-]+\(.*\);)$")


def without_texts(line):
    """The line with what is not code blanked out; places stay the same."""
    line = re.sub(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)*\'', lambda text: " " * len(text.group()), line)
    return re.sub(r"//.*", lambda text: " " * len(text.group()), line)


def mutants_of_line(line):
    """All that the line can become by breaking one operator of it."""
    code = without_texts(line)
    if not code.strip() or code.lstrip().startswith(("#", "using ", "namespace ", "template ", "static_assert")):
        return
    for old, new in SWAPS:
        is_word = old[0].isalpha()
        for match in re.finditer(r"\b" + re.escape(old) if is_word else re.escape(old), code):
            yield line[:match.start()] + new + line[match.end():]
    for match in NEGATION.finditer(code):
        yield line[:match.start()] + line[match.end():]
    call = CALL.match(code)
    if call and not call.group(1).startswith(("return", "EXPECT", "ASSERT", "throw")):
        yield line[:call.start(1)] + "{}" + line[call.end(1):]


def find_mutants(root, only):
    """(path, line number, mutated line) of all, in order."""
    for folder, subfolders, files in os.walk(os.path.join(root, "callouts")):
        subfolders.sort()
        for name in sorted(files):
            path = os.path.relpath(os.path.join(folder, name), root)
            if not name.endswith((".cpp", ".h")) or not path.startswith(only):
                continue
            with open(os.path.join(root, path), encoding="utf-8") as file:
                for number, line in enumerate(file):
                    for mutated in mutants_of_line(line.rstrip("\n")):
                        yield path, number, mutated


def tests_for(path):
    folder = os.path.dirname(path)
    while folder not in TESTS:
        folder = os.path.dirname(folder)
    return TESTS[folder]


def run(command, **options):
    return subprocess.run(command, cwd=COPY, capture_output=True, text=True, check=False, **options)


def make_copy():
    """The files that git knows, with the changes that were not committed. Times stay, so that little is built again."""
    tracked = subprocess.run(["git", "-C", ROOT, "ls-files", "-z"], capture_output=True, text=True, check=True)
    for name in filter(None, tracked.stdout.split("\0")):
        source, target = os.path.join(ROOT, name), os.path.join(COPY, name)
        if not os.path.exists(source):
            continue
        os.makedirs(os.path.dirname(target), exist_ok=True)
        if not os.path.exists(target) or read(source) != read(target):
            shutil.copy2(source, target)


def read(path):
    with open(path, "rb") as file:
        return file.read()


def build(*targets):
    return run(["cmake", "--build", "build/debug", "--target", *targets])


def prepare():
    make_copy()
    # Programs stay as they are when only the component's insides change.
    answer = run(["cmake", "--preset", "debug", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DZR_BUILD_BENCH=OFF"])
    if answer.returncode == 0:
        answer = build(*sorted({test for tests in TESTS.values() for test in tests}))
    if answer.returncode != 0:
        sys.exit(answer.stdout[-4000:] + answer.stderr[-4000:])


def is_noticed(path):
    """None when it cannot be built."""
    if build("zrcallouts").returncode != 0:
        return None
    for test in tests_for(path):
        try:
            answer = run(["build/debug/bin/" + test, "--gtest_brief=1", "--gtest_fail_fast"], timeout=SECONDS,
                         preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (ADDRESSES, ADDRESSES)))
            if answer.returncode != 0:
                return True
        except subprocess.TimeoutExpired:
            return True
    return False


def try_mutant(path, number, mutated):
    full = os.path.join(COPY, path)
    original = read(full)
    lines = original.decode("utf-8").split("\n")
    former, lines[number] = lines[number], mutated
    try:
        with open(full, "w", encoding="utf-8") as file:
            file.write("\n".join(lines))
        noticed = is_noticed(path)
    finally:
        with open(full, "wb") as file:
            file.write(original)
    return former.strip(), noticed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=30, help="how many to try (%(default)s)")
    parser.add_argument("--seed", type=int, default=1, help="which ones (%(default)s)")
    parser.add_argument("--only", default="callouts/", metavar="PATH", help="in files whose path begins so")
    parser.add_argument("--list", action="store_true", help="tell what could be broken, and break nothing")
    arguments = parser.parse_args()

    mutants = list(find_mutants(ROOT, arguments.only))
    if arguments.list:
        for path, number, mutated in mutants:
            print(f"{path}:{number + 1}: {mutated.strip()}")
        return
    if not mutants:
        sys.exit(f"mutate: nothing to break in '{arguments.only}'")
    os.makedirs(COPY, exist_ok=True)
    os.environ.update(CCACHE_BASEDIR=COPY, CCACHE_NOHASHDIR="1")
    prepare()
    random.Random(arguments.seed).shuffle(mutants)
    tried, survivors, start = 0, 0, time.monotonic()
    for path, number, mutated in mutants:
        if tried == arguments.count:
            break
        former, noticed = try_mutant(path, number, mutated)
        if noticed is None:
            continue
        tried += 1
        if not noticed:
            survivors += 1
            print(f"{path}:{number + 1}\n  was  {former}\n  now  {mutated.strip()}", flush=True)
    print(f"{tried} of {len(mutants)} operators broken, {tried - survivors} noticed, {survivors} survived "
          f"(seed {arguments.seed}, {time.monotonic() - start:.0f} s)")


if __name__ == "__main__":
    main()
