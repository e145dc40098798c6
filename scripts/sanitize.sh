#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds everything with AddressSanitizer (with its leak checker) and UndefinedBehaviorSanitizer in
# build-sanitize/ and runs all tests there.
set -euo pipefail
cd "$(dirname "$0")/.."
# Warnings are no errors here: with its checks built in, GCC sees values that may be used before they
# are set where none are.
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DDASTREL_SANITIZE=ON -DDASTREL_WERROR=OFF -DDASTREL_DESKTOP=ON >/dev/null
cmake --build build-sanitize
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=0
export UBSAN_OPTIONS=print_stacktrace=1
ctest --test-dir build-sanitize --output-on-failure --no-tests=error -j "$(nproc)" "$@"
