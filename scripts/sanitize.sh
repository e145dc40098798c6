#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds everything with AddressSanitizer (with its leak checker) and UndefinedBehaviorSanitizer in
# build-sanitize/ and runs all tests there.
set -euo pipefail
cd "$(dirname "$0")/.."
# clang, because it takes a fifth of the time that GCC takes to compile with these checks.
cmake --preset sanitize >/dev/null
cmake --build --preset sanitize
ctest --preset sanitize -j "$(nproc)" "$@"
