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
if ! { cmake --preset "$preset" "$@" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    grep -v -E '^\[[0-9]+/[0-9]+\] (Building|Linking)' "$log" | tail -n 100 >&2
    echo "build failed; all of its output: $PWD/$log" >&2
    exit 1
fi
