#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# From a bare Debian machine to a forest: installs what is needed, builds, and scatters the example
# tree over the example terrain into forest.lwo. Can be run again at any time.
set -euo pipefail
cd "$(dirname "$0")/.."

echo "demo: 1/3 set up"
scripts/setup.sh
echo "demo: 2/3 build"
scripts/build.sh -DDASTREL_TESTS=OFF
echo "demo: 3/3 scatter 400 trees over the gentle slopes of examples/terrain.lwo"
build/bin/dastrel scatter examples/terrain.lwo examples/tree.lwo -o forest.lwo \
    --clone-num 400 --h-min -180 --h-max 180 --p-align off --h-align off \
    --slope-limits --slope-max 30 --clock 1
build/bin/dastrel info forest.lwo
echo "demo: done: forest.lwo"
