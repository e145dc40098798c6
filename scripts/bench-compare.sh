#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Times two commits in one run, each built in a worktree of its own, by turns, so that a slow minute
# of the machine hits both:
#
#   scripts/bench-compare.sh OLD NEW [FILTER [ROUNDS]]
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -lt 2 ]; then
    sed -n '3,7s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
filter=${3-.}
rounds=${4-5}
work=$(mktemp -d)
cleanup() {
    git worktree remove --force "$work/old" 2>/dev/null || true
    git worktree remove --force "$work/new" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
for side in old new; do
    git worktree add --quiet --detach "$work/$side" "$([ $side = old ] && echo "$1" || echo "$2")"
    cmake -S "$work/$side" -B "$work/$side/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DDASTREL_TESTS=OFF -DDASTREL_BENCH=ON >/dev/null
    cmake --build "$work/$side/build" --target dastrel_bench >/dev/null
done
for round in $(seq "$rounds"); do
    for side in old new; do
        "$work/$side/build/bin/dastrel_bench" --benchmark_filter="$filter" \
            --benchmark_out="$work/$side.$round.json" --benchmark_out_format=json >/dev/null
    done
done
/usr/bin/python3 bench/compare.py "$work" "$rounds"
