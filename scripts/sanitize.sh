#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds everything with AddressSanitizer (with its leak checker) and UndefinedBehaviorSanitizer in
# build-sanitize/ and runs all tests there.
set -euo pipefail
cd "$(dirname "$0")/.."
# clang, because it takes a fifth of the time that GCC takes to compile with these checks.
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_C_COMPILER=clang-14 \
    -DCMAKE_CXX_FLAGS="-O1 -g1" -DCMAKE_C_FLAGS="-O1 -g1" \
    -DDASTREL_SANITIZE=address,undefined -DDASTREL_PRECOMPILE=ON -DDASTREL_WERROR=ON -DDASTREL_DESKTOP=ON >/dev/null
cmake --build build-sanitize
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=0
export UBSAN_OPTIONS=print_stacktrace=1
ctest --test-dir build-sanitize --output-on-failure --no-tests=error -j "$(nproc)" "$@"
