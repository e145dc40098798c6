#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets each allocation of the program fail that it asks for in small calls of its verbs: one at a
# time, and all from one on. Takes a few minutes; the tests try some hundreds of each call.
#
#   scripts/check-memory.sh [pytest options]     such as -k render
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh -DDASTREL_TESTS=ON
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 -m pytest -q -p no:cacheprovider \
    --program=build/bin/dastrel --failing-memory=build/tests/cli/failing_memory.so \
    --every-allocation "$@" tests/cli/test_out_of_memory.py
