#!/usr/bin/env python3
"""Prints how the way from a model to its sheet grows with the number of parts, as a table of docs/PERFORMANCE.md.

usage: scale_table.py BENCH [FILTER]   BENCH is zr_bench_scale of the release build
Every case runs in a process of its own, so that none uses what another has freed; the best of three counts."""

import json
import subprocess
import sys

RUNS = 3


def measure(bench, case):
    """The case's fastest run."""
    runs = []
    for _ in range(RUNS):
        answer = subprocess.run([bench, f"--benchmark_filter=^{case}$", "--benchmark_format=json"],
                                check=True, capture_output=True, text=True)
        runs.append(json.loads(answer.stdout)["benchmarks"][0])
    return min(runs, key=lambda run: run["real_time"])


def figures(run, parts):
    """Microseconds of real and processor time and the peak's bytes, of one part."""
    return 1000 * run["real_time"] / parts, 1000 * run["cpu_time"] / parts, run["peak_bytes"]


def main():
    bench, wanted = sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else "."
    listed = subprocess.run([bench, "--benchmark_list_tests", f"--benchmark_filter={wanted}"],
                            check=True, capture_output=True, text=True).stdout.split()
    sizes = {}
    for case in listed:
        stage, parts = case.split("/")[:2]
        sizes.setdefault(stage, []).append((int(parts), case))
    print("| Stage | Parts | Seconds | µs a part | Processor µs a part | Peak bytes a part | Bytes kept a part |")
    print("|---|---|---|---|---|---|---|")
    for stage, cases in sizes.items():
        before = None
        for parts, case in cases:
            run = measure(bench, case)
            now = figures(run, parts)
            cells = [f"{value:,.{digits}f}" for value, digits in zip(now, (1, 1, 0))]
            if before:
                cells = [f"{cell} ({value / old:.2f})" if old else cell
                         for cell, value, old in zip(cells, now, before)]
            print(f"| {stage} | {parts:,} | {run['real_time'] / 1000:.2f} | {' | '.join(cells)} "
                  f"| {run['kept_bytes']:,.0f} |", flush=True)
            before = now


if __name__ == "__main__":
    main()
