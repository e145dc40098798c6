#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Opens the window: installs what it needs, builds it, and starts it with the files that are named,
# or with the example terrain and tree.
#
#   scripts/window.sh [GROUND.lwo MODEL.lwo...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" --desktop
"$root/scripts/build.sh" -DDASTREL_DESKTOP=ON -DDASTREL_TESTS=OFF
if [ $# -eq 0 ]; then
    set -- "$root/examples/terrain.lwo" "$root/examples/tree.lwo"
fi
exec "$root/build/bin/dastrel-modeler" "$@"
