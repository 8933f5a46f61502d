#!/usr/bin/env bash
# Installs what a package-lock.json names, and nothing else: no install scripts are run.
# Usage: tools/install_npm_packages.sh FOLDER TARGET NPM   FOLDER has package.json and package-lock.json, TARGET gets
# node_modules and, when all is there, a file `installed`
# What npm has kept of former builds is used without asking the registry. Exit code 1, with one line that says what is
# wrong: something is missing and cannot be fetched.
set -euo pipefail
folder=$1
target=$2
npm=$3

mkdir -p "$target"
cd "$target"
rm -f installed
cp "$folder/package.json" "$folder/package-lock.json" .
if ! "$npm" ci --no-audit --no-fund --ignore-scripts --prefer-offline --fetch-retry-mintimeout 1000 \
    --fetch-retry-maxtimeout 5000 --loglevel error >npm.log 2>&1; then
    what=$(sed -n 's/^ *"description": "\(.*\)",$/\1/p' package.json)
    names=$(sed -n '/ependencies"/,/}/s/^ *"\([^"]*\)": "\([0-9.]*\)",\{0,1\}$/\1@\2/p' package.json | paste -sd ' ')
    registry=$("$npm" config get registry 2>/dev/null || echo "npm's registry")
    reason=$(sed -n 's/^npm [a-zA-Z!]* code //p' npm.log | head -n 1)
    echo "error: ${what:-$folder} needs the npm packages $names, which cannot be had from $registry (${reason:-npm failed});" \
        "zrsheet cannot be built without. Connect to the network, or name a registry that answers" \
        "(npm config set registry URL), and build again; all that npm said: $target/npm.log" >&2
    exit 1
fi
touch installed
