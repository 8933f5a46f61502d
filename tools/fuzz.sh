#!/usr/bin/env bash
# Builds the fuzzers (preset fuzz: clang, AddressSanitizer, UndefinedBehaviorSanitizer) and lets each run for a while,
# beginning with the corpus of the repository and with what former runs found out.
# Usage: tools/fuzz.sh SECONDS [TARGET..]   targets: gltf, project, script, template, engine; all without names
# Exit code 1: an input broke something. It lies in build/fuzz/found; once the fault is mended it belongs into the corpus.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:?usage: tools/fuzz.sh SECONDS [TARGET..]}
shift
targets=("$@")
((${#targets[@]})) || targets=(gltf project script template engine)
found=$PWD/build/fuzz/found  # targets may go to another folder, so all paths are whole
mkdir -p "$found"
if ! { cmake --preset fuzz && cmake --build --preset fuzz --target "${targets[@]/#/zr_fuzz_}"; } >build/fuzz/build.log 2>&1; then
    grep -E 'error:|CMake Error' build/fuzz/build.log || tail -n 40 build/fuzz/build.log
    exit 2
fi

# What fits into memory in one piece is refused by the readers themselves, hence null and no report.
export ASAN_OPTIONS=allocator_may_return_null=1:handle_abort=1
export LSAN_OPTIONS=suppressions=$PWD/cmake/sanitizers/leaks.supp:print_suppressions=0
failed=0
for target in "${targets[@]}"; do
    inputs=$PWD/build/fuzz/inputs/$target
    log=build/fuzz/$target.log
    longest=4096
    # Each byte is a choice of a user; what goes wrong after hundreds of actions does so after a few, too.
    [[ $target == engine ]] && longest=600
    mkdir -p "$inputs"
    if "build/fuzz/bin/zr_fuzz_$target" -max_total_time="$seconds" -timeout=30 -max_len="$longest" -print_final_stats=1 \
        -dict="tests/fuzz/dictionaries/$target.dict" -artifact_prefix="$found/$target-" "$inputs" \
        "$PWD/tests/fuzz/corpus/$target" >"$log" 2>&1; then
        echo "$target: $(grep -o 'number_of_executed_units: .*' "$log" | tr -s ' '), nothing found"
    else
        echo "$target: something broke"
        grep -v -E '^#[0-9]+[[:space:]]' "$log" | tail -n 60
        failed=1
    fi
done
exit "$failed"
