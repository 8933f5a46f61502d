#!/usr/bin/env bash
# Installs the build into a folder of its own, builds the consumer against it and runs it.
# Usage: run.sh CMAKE BUILD_FOLDER COMPILER CXX_FLAGS
set -euo pipefail
cmake=$1 build=$2 compiler=$3 flags=$4

source_folder=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$cmake" --install "$build" --prefix "$work/prefix" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
"$cmake" -G Ninja -S "$source_folder" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" \
         -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_BUILD_TYPE=Debug
"$cmake" --build "$work/build"
"$work/build/consumer"
