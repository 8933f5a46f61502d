#!/usr/bin/env bash
# Lets four threads edit their scenes at random for a while under ThreadSanitizer, then under AddressSanitizer: nothing
# may break, and memory may not grow with the work. Without arguments half an hour each.
# Usage: tools/soak.sh [SECONDS [PRESET..]]   presets: tsan, asan, debug, release
# ZR_SOAK_SEED chooses the edits; without it each run has a new seed, which is told.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

export ZR_SOAK_SECONDS=${1:-1800}
shift || true
presets=("$@")
((${#presets[@]})) || presets=(tsan asan)
export ZR_SOAK_SEED=${ZR_SOAK_SEED:-$((RANDOM + 1))}

# A small quarantine, so that freed memory that waits in it does not look like growth.
export ASAN_OPTIONS=quarantine_size_mb=8:detect_stack_use_after_return=0
export LSAN_OPTIONS=suppressions=$PWD/cmake/sanitizers/leaks.supp:print_suppressions=0
export TSAN_OPTIONS=suppressions=$PWD/cmake/sanitizers/races.supp:print_suppressions=0:halt_on_error=1
failed=0
for preset in "${presets[@]}"; do
    log=build/$preset/soak.log
    mkdir -p "build/$preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" --target zr_soak; } >"$log" 2>&1; then
        grep -E 'error:|CMake Error' "$log" || tail -n 40 "$log"
        exit 2
    fi
    if "build/$preset/bin/zr_soak" --gtest_filter='SoakTest.*' >"$log" 2>&1; then
        echo "$preset: nothing found, seed $ZR_SOAK_SEED; in the end $(grep edits: "$log" | tail -n 1)"
    else
        echo "$preset: something broke, seed $ZR_SOAK_SEED"
        grep -v -E 'edits:' "$log" | head -n 100
        failed=1
    fi
done
exit "$failed"
