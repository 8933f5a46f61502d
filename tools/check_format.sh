#!/usr/bin/env bash
# Names every source that is not as clang-format would write it; with --fix, writes it so.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if [[ ${1:-} == --fix ]]; then
    git ls-files -z '*.h' '*.cpp' | xargs -0 -n 20 -P "$(nproc)" clang-format -i
    exit
fi
# shellcheck disable=SC2016  # the inner shell expands it
git ls-files -z '*.h' '*.cpp' | xargs -0 -n 1 -P "$(nproc)" bash -c '
    clang-format --dry-run -Werror "$1" >/dev/null 2>&1 || { echo "$1 is not formatted"; exit 1; }' check
