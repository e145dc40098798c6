#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what Dastrel is built with, from Debian's packages. As root, or through sudo.
#
#   scripts/setup.sh            to build and run the programs
#   scripts/setup.sh --desktop  also to build and run the window
#   scripts/setup.sh --tests    also to run the tests
#   scripts/setup.sh --bench    also to build and run the benchmarks
#   scripts/setup.sh --package  also to make and check the Debian package, and to build with it
#   scripts/setup.sh --checks   also what CI runs beside the tests: clang, its tools and fuzzer
set -euo pipefail

build=(g++ cmake ninja-build libc6-dev libcli11-dev nlohmann-json3-dev libfmt-dev
       libembree-dev libfreetype-dev libglu1-mesa-dev liblodepng-dev libutfcpp-dev fonts-dejavu-core)
desktop=(qt6-base-dev)
tests=(libgtest-dev libgmock-dev librapidcheck-dev python3 python3-pytest binutils)
package=(gcc pkg-config binutils dpkg-dev file lintian git)
bench=(libbenchmark-dev python3 python3-matplotlib)
checks=(clang-14 libclang-rt-14-dev clang-format-14 clang-tidy-14 git)

wanted=("${build[@]}")
for option in "$@"; do
    case $option in
        --desktop) wanted+=("${desktop[@]}") ;;
        --tests) wanted+=("${tests[@]}") ;;
        --package) wanted+=("${package[@]}") ;;
        --bench) wanted+=("${bench[@]}") ;;
        --checks) wanted+=("${tests[@]}" "${checks[@]}") ;;
        *)
            echo "setup.sh: unknown option '$option'; known are --desktop, --tests, --package, --bench and --checks" >&2
            exit 2
            ;;
    esac
done

missing=()
for package in "${wanted[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    echo "setup: everything is installed"
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup.sh: needs root to install: ${missing[*]}" >&2
        echo "setup.sh: run it as root, or install sudo" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
# Another package manager may be at work, as on a fresh machine that installs its updates: wait for up to
# five minutes. apt-get does that itself for the lock of installing, but not for that of the lists.
apt=("${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
for attempt in {1..60}; do
    if said=$("${apt[@]}" update -qq 2>&1); then
        break
    elif [[ $said != *"Could not get lock"* || $attempt -eq 60 ]]; then
        echo "$said" >&2
        exit 1
    fi
    sleep 5
done
"${apt[@]}" install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "setup: done"
