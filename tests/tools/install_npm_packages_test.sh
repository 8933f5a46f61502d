#!/usr/bin/env bash
# What people read on a machine that cannot reach the registry: one line with what is missing, from where, and what to do.
# Usage: install_npm_packages_test.sh SCRIPT FOLDER NPM
set -uo pipefail
script=$1
folder=$2
npm=$3

target=$(mktemp -d)
trap 'rm -rf "$target"' EXIT
# Nothing listens on that port, and npm has kept nothing.
export npm_config_registry=http://127.0.0.1:9/ npm_config_cache="$target/cache"
complaint=$("$script" "$folder" "$target/packages" "$npm" 2>&1)
code=$?

fail() {
    echo "$1; the complaint was: $complaint" >&2
    exit 1
}
((code == 1)) || fail "exit code $code"
[[ $(wc -l <<<"$complaint") == 1 ]] || fail "it is not one line"
for part in "parts catalogue needs" "three@0." "$npm_config_registry" "ECONNREFUSED" "$target/packages/npm.log"; do
    [[ $complaint == *"$part"* ]] || fail "'$part' is not told"
done
[[ ! -e "$target/packages/installed" ]] || fail "what is missing counts as installed"
