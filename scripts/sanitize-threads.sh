#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds what has threads with ThreadSanitizer in build-threads/ and runs its tests there: the
# window, the pictures, the page helper.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-threads -G Ninja -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_C_COMPILER=clang-14 \
    -DCMAKE_CXX_FLAGS="-O1 -g1" -DCMAKE_C_FLAGS="-O1 -g1" \
    -DDASTREL_SANITIZE=thread -DDASTREL_PRECOMPILE=ON -DDASTREL_WERROR=ON -DDASTREL_DESKTOP=ON >/dev/null
cmake --build build-threads --target desktop_tests test_mesh test_picture
export TSAN_OPTIONS="suppressions=$PWD/scripts/threads.supp die_after_fork=0"
build-threads/bin/test_mesh --gtest_brief=1
build-threads/bin/test_picture --gtest_brief=1
# Without the programs that are ended in the middle, and the one whose times matter.
ctest --test-dir build-threads --output-on-failure --no-tests=error -j "$(nproc)" -L desktop \
    -E "recovery|latency" "$@"
