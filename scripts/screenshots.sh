#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the pictures of the window in docs/images anew. Needs no display. Look at them afterwards.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh --tests --desktop
scripts/build.sh -DDASTREL_DESKTOP=ON -DDASTREL_TESTS=ON
mkdir -p docs/images
QT_QPA_PLATFORM=offscreen DASTREL_CLOCK=1790000000 build/bin/desktop_screenshots docs/images
