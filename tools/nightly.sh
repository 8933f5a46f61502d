#!/usr/bin/env bash
# What takes too long to be asked of every change. Usage: tools/nightly.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tools/install_packages.sh build test lint
tools/fuzz.sh 300
tools/soak.sh 1800
