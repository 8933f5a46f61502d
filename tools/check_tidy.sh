#!/usr/bin/env bash
# Runs clang-tidy, and clang's own warnings with its check of the lock annotations, over what the project ships.
# Usage: tools/check_tidy.sh [SOURCE..]   without sources: all of host/, callouts/ and app/
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mkdir -p build/lint
log=build/lint/tidy.log
cmake --preset lint >"$log" 2>&1 || { tail -n 20 "$log"; exit 1; }
(($#)) || mapfile -t sources < <(git ls-files 'host/*.cpp' 'callouts/*.cpp' 'app/*.cpp')
(($# == 0)) || sources=("$@")
# A source that no target compiles would be checked with guessed flags, or not at all.
for source in "${sources[@]}"; do
    grep -q -F "/$source\"" build/lint/compile_commands.json || { echo "$source belongs to no target"; exit 1; }
done
if ! printf '%s\0' "${sources[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p build/lint >"$log" 2>>"$log.stderr"; then
    grep -E '(warning|error):' "$log" | sed "s|^$PWD/||" | sort -u || tail -n 20 "$log.stderr"
    exit 1
fi
