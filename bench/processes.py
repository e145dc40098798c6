#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Times the whole program, file to file: processes.py PROGRAM SCENES OUT.json

SCENES is a folder made by dastrel_bench_scenes. Each row is run in a new process; the median of
its wall times counts, and the largest peak of memory."""

import json
import os
import statistics
import sys
import tempfile
import time

ROWS = [
    # ground, model, clones, repeats
    ("grid", "cube", 30, 15),
    ("grid", "cube", 1000, 5),
    ("grid", "cube", 10000, 5),
    ("grid", "cube", 100000, 3),
    ("grid", "cube", 1000000, 3),
    ("hills", "tree", 1000, 5),
    ("hills", "tree", 10000, 3),
    ("hills", "tree", 48781, 3),
]

POINTS = {"cube": 8, "tree": 205}


def run(command):
    """Wall seconds and peak bytes of one process."""
    start = time.perf_counter()
    process = os.spawnv(os.P_NOWAIT, command[0], command)
    _, status, usage = os.wait4(process, 0)
    seconds = time.perf_counter() - start
    if status != 0:
        sys.exit(f"processes.py: failed: {' '.join(command)}")
    return seconds, usage.ru_maxrss * 1024


def main():
    program, scenes, out = sys.argv[1:]
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        for ground, model, clones, repeats in ROWS:
            target = os.path.join(folder, "out.lwo")
            command = [program, "scatter", f"{scenes}/{ground}.lwo", f"{scenes}/{model}.lwo",
                       "-o", target, "--clone-num", str(clones), "--clock", "1", "--quiet"]
            times = [run(command) for _ in range(repeats)]
            rows.append({"ground": ground, "model": model, "clones": clones,
                         "seconds": statistics.median(t for t, _ in times),
                         "peak": max(p for _, p in times),
                         "points": clones * POINTS[model],
                         "file": os.path.getsize(target)})
            print(f"{ground} {model} {clones}: {rows[-1]['seconds']:.3f} s", file=sys.stderr)
    with open(out, "w", encoding="utf-8") as file:
        json.dump(rows, file, indent=1)


if __name__ == "__main__":
    main()
