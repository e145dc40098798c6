#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes an LWO2 file of three gigabytes, reads it back, and compares every point, polygon and map
# value. Fails where either takes 200 MB or more beyond the document. Takes about 8 GB of memory.
#
#     scripts/check-big-file.sh [TREES]     a tree has 205 points; the default fills 3 GB
set -euo pipefail
cd "$(dirname "$0")/.."

trees=${1-234300}
cmake --preset release -B build-big-file -DDASTREL_TESTS=ON >/dev/null
cmake --build build-big-file --target lwo2_big_file

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
build-big-file/bin/lwo2_big_file write "$trees" "$folder/forest.lwo"
build-big-file/bin/lwo2_big_file read "$trees" "$folder/forest.lwo"
