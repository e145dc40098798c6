#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds what has threads with ThreadSanitizer in build-threads/ and runs its tests there: the
# window, the pictures, the page helper.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset threads >/dev/null
cmake --build --preset threads
export TSAN_OPTIONS="suppressions=$PWD/scripts/threads.supp die_after_fork=0"
build-threads/bin/test_mesh --gtest_brief=1
build-threads/bin/test_picture --gtest_brief=1
ctest --preset threads -j "$(nproc)" "$@"
