#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# One task of a comparison with other programs, on their meshes in $PEERS_WORK/data:
#
#   scripts/bench-peers.sh positions GROUND N
#   scripts/bench-peers.sh realise MODEL POINTS
#
# Prints peer,task,input,asked,got,wall,cpu,peakMiB,note. Build with scripts/bench.sh first.
set -euo pipefail
data=${PEERS_WORK:?the folder of the comparison}/data
task=$(dirname "$0")/../build-bench/bin/dastrel_peer_task
case ${1-} in
    positions) exec "$task" positions "$data/$2.obj" "$3" ;;
    realise) exec "$task" realise "$data/bumpy.obj" "$data/$2.obj" "$3" ;;
esac
sed -n '3,9s/^# \{0,1\}//p' "$0" >&2
exit 2
