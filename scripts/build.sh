#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the module and the programs into build/ (build/bin/dastrel, build/bin/dastrel.p).
#
#   scripts/build.sh [cmake options]     such as -DDASTREL_TESTS=ON
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release "$@" >/dev/null
cmake --build build
