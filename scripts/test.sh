#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is needed, builds everything, and runs all tests. Can be run again at any time.
#
#   scripts/test.sh [ctest options]      such as -R panel
set -euo pipefail
cd "$(dirname "$0")/.."

echo "test: 1/3 set up"
scripts/setup.sh --tests --desktop
echo "test: 2/3 build"
# In CI a warning is an error; at home the build is the demo's, and goes on from there.
cmake --preset test -DDASTREL_WERROR="$([ -n "${CI-}" ] && echo ON || echo OFF)" >/dev/null
cmake --build --preset test
echo "test: 3/3 run"
ctest --preset test -j "$(nproc)" "$@"
