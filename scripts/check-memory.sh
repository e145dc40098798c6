#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets each allocation of the program fail that it asks for in small calls of its verbs: one at a
# time, and all from one on. Once `scatter --picture` makes its picture, a run takes seconds: one in
# 40 is tried then, the tests try one in 400. Takes some minutes.
#
#   scripts/check-memory.sh [pytest options]     such as -k render
#   scripts/check-memory.sh --picture-step=1 -k picture     all of them: more than an hour
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh -DDASTREL_TESTS=ON
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 -m pytest -q -p no:cacheprovider \
    --program=build/bin/dastrel --failing-memory=build/tests/cli/failing_memory.so \
    --picture-step=40 "$@" tests/cli/test_out_of_memory.py
