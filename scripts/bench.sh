#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds and runs the benchmarks, and writes docs/performance.md with its plot. Leave the machine
# alone meanwhile (about five minutes).
#
#   scripts/bench.sh [FILTER]     only the benchmarks whose names match go through; nothing is written
#
# PEERS=FOLDER (with run_all.sh of the comparison) and PEERS_WORK=FOLDER (where its setup.sh put the
# other programs) add those to the table; ROUNDS says how often each is run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --bench
cmake --preset bench >/dev/null
cmake --build --preset bench
if [ $# -gt 0 ]; then
    exec build-bench/bin/dastrel_bench --benchmark_filter="$1"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build-bench/bin/dastrel_bench --benchmark_out="$work/bench.json" --benchmark_out_format=json
build-bench/bin/dastrel_bench_scenes "$work"
python=/usr/bin/python3 # Debian's own, which has the packages that setup.sh installs
"$python" bench/processes.py build-bench/bin/dastrel "$work" "$work/processes.json"
peers=()
if [ -n "${PEERS-}" ] && [ -n "${PEERS_WORK-}" ]; then
    rm -f "$PEERS_WORK/results.csv"
    AB_CMD="$PWD/scripts/bench-peers.sh" ROUNDS=${ROUNDS-3} "$PEERS/run_all.sh" ab
    peers=("$PEERS_WORK/results.csv")
fi
mkdir -p docs/images
"$python" bench/report.py "$work/bench.json" "$work/processes.json" docs "${peers[@]}"
echo "bench: docs/performance.md"
