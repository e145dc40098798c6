#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# From a bare Debian machine to a forest: installs what is needed, builds, scatters the example tree
# over the example terrain into forest.lwo, and makes a picture of it, forest.png. Can be run again at
# any time.
set -euo pipefail
cd "$(dirname "$0")/.."

echo "demo: 1/3 set up"
scripts/setup.sh
echo "demo: 2/3 build"
scripts/build.sh -DDASTREL_TESTS=OFF
echo "demo: 3/3 scatter trees over the gentle slopes of examples/terrain.lwo, and make a picture"
build/bin/dastrel scatter examples/terrain.lwo examples/tree.lwo -o forest.lwo \
    --clone-num 160 --density-wg Density --slope-limits --slope-max 25 --size-var-x 40% \
    --h-min -180 --h-max 180 --p-align off --h-align off --clock 1
build/bin/dastrel info forest.lwo
build/bin/dastrel render forest.lwo -o forest.png
echo "demo: done: forest.lwo, forest.png"
