#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds the fuzz targets and runs each of them for a while (default: a minute).
#   scripts/fuzz.sh [SECONDS]
# What a target finds is left in build-fuzz/finds; it belongs, made small, into fuzz/corpus.
set -eu

seconds=${1:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-fuzz

cd "$root"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

# New inputs go to a folder of the build; the corpus of the repository is only read.
mkdir -p "$build/corpus/lwo2" "$build/finds"
echo "fuzzing the LWO2 reader for $seconds seconds"
"$build/bin/lwo2_reader_fuzz" -max_total_time="$seconds" -max_len=4096 -timeout=10 \
    -rss_limit_mb=4096 -print_final_stats=1 -dict="$root/fuzz/lwo2.dict" \
    -artifact_prefix="$build/finds/" "$build/corpus/lwo2" "$root/fuzz/corpus/lwo2"
