#!/usr/bin/env bash
# What the component's tests reach of it: lines and branches of callouts/, as a summary here and, line by line, as
# build/coverage/report/index.html. Branches that only an exception takes are not counted.
# Usage: tools/coverage.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tools/install_packages.sh build test coverage
programs=(zr_test_callouts zr_test_generator zr_test_align zr_test_optimal zr_test_undo)
folder=build/coverage
report=$folder/report
mkdir -p "$report"
echo "Building (coverage) ..."
if ! { cmake --preset coverage && cmake --build --preset coverage --target "${programs[@]}"; } >"$folder/build.log" 2>&1; then
    grep -E 'error:|CMake Error' "$folder/build.log" || tail -n 40 "$folder/build.log"
    exit 2
fi
find "$folder" -name '*.gcda' -delete
for program in "${programs[@]}"; do
    if ! "$folder/bin/$program" --gtest_brief=1 >"$folder/$program.log" 2>&1; then
        tail -n 40 "$folder/$program.log"
        exit 1
    fi
done
gcovr --root . --filter callouts/ --exclude-throw-branches --exclude-unreachable-branches -j "$(nproc)" \
    --html-details "$report/index.html" --txt "$report/summary.txt" --json-summary "$report/summary.json" --print-summary \
    "$folder/callouts" 2>"$report/gcovr.log" || {
    tail -n 20 "$report/gcovr.log"
    exit 2
}
