#!/usr/bin/env bash
# Configures and builds a preset, and shows what was printed only if that fails.
# Usage: tools/build.sh PRESET [cmake's options]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=$1
shift
log="build/$preset/build.log"
mkdir -p "build/$preset"
echo "Building ($preset) ..."
if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    tail -n 40 "$log" >&2
elif cmake --build --preset "$preset" >>"$log" 2>&1; then
    exit 0
else
    grep -v -E '^\[[0-9]+/[0-9]+\] (Building|Linking)' "$log" | sed -n '/^FAILED:/,$p' | tail -n 100 >&2
fi
echo "build failed; all of its output: $PWD/$log" >&2
exit 1
