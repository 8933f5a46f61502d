#!/usr/bin/env bash
# Installs the Debian packages that are missing, and touches nothing when none is.
# Usage: tools/install_packages.sh SET..   sets: build, test, lint, coverage
# Exit code 2: something is missing and cannot be installed here.
set -euo pipefail

build_set=(build-essential g++ cmake ninja-build ccache pkg-config python3 libembree-dev libdraco-dev
           libmeshoptimizer-dev libtinygltf-dev libstb-dev nlohmann-json3-dev libsimdjson-dev libpugixml-dev
           libcairo2-dev libpango1.0-dev fonts-dejavu-core fonts-ipafont-gothic libxlsxwriter-dev libcli11-dev libedit-dev libssl-dev libspdlog-dev libfmt-dev libicu-dev
           icu-devtools libocct-data-exchange-dev libocct-ocaf-dev libocct-modeling-algorithms-dev
           libocct-modeling-data-dev libocct-foundation-dev)
test_set=(libgtest-dev libgmock-dev libbenchmark-dev librsvg2-bin poppler-utils unzip)
lint_set=(clang clang-tidy clang-format git)
coverage_set=(gcovr)

fail() {
    echo "install_packages: $1" >&2
    exit 2
}

wanted=()
for set_name in "$@"; do
    case "$set_name" in
        build) wanted+=("${build_set[@]}") ;;
        test) wanted+=("${test_set[@]}") ;;
        lint) wanted+=("${lint_set[@]}") ;;
        coverage) wanted+=("${coverage_set[@]}") ;;
        *) fail "unknown set '$set_name' (build, test, lint, coverage)" ;;
    esac
done
# Programs that may have come from elsewhere than Debian.
for set_name in "$@"; do
    case "$set_name" in
        build) command -v npm >/dev/null || wanted+=(nodejs npm) ;;
        test) command -v chromium >/dev/null || wanted+=(chromium) ;;
    esac
done

command -v dpkg-query >/dev/null || fail "this needs Debian's packages (no dpkg-query found)"
missing=()
for package in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "must be root, or have sudo, to install: ${missing[*]}"
    as_root=(sudo)
    sudo -v || fail "sudo was refused; as root install: ${missing[*]}"
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120 "$@" >>"$log" 2>&1
}

echo "Installing ${#missing[@]} packages: ${missing[*]}"
# A package source that does not answer is no reason to stop: what is wanted may be known from another.
apt update || true
if ! apt install --no-install-recommends "${missing[@]}"; then
    fail "cannot install (no network?): $(grep -m 1 '^E:' "$log" || tail -n 1 "$log")"
fi
