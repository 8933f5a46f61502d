#!/usr/bin/env bash
# Installs what a package-lock.json names, and nothing else: no install scripts are run.
# Usage: tools/install_npm_packages.sh FOLDER TARGET NPM   FOLDER has package.json and package-lock.json, TARGET gets
# node_modules and, when all is there, a file `installed`
set -euo pipefail
folder=$1
target=$2
npm=$3

mkdir -p "$target"
cd "$target"
rm -f installed
cp "$folder/package.json" "$folder/package-lock.json" .
if ! "$npm" ci --no-audit --no-fund --ignore-scripts --loglevel error >npm.log 2>&1; then
    names=$(sed -n '/ependencies"/,/}/s/^ *"\([^"]*\)": "\([0-9.]*\)",\{0,1\}$/\1@\2/p' package.json | paste -sd ' ')
    echo "error: cannot fetch the npm packages $names (no network?): $(grep -m 1 'error' npm.log || tail -n 1 npm.log)" >&2
    exit 1
fi
touch installed
