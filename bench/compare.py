#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the medians of two builds and their ratio: compare.py FOLDER ROUNDS, with the results in
FOLDER/old.1.json, FOLDER/new.1.json and so on."""

import json
import statistics
import sys


def times(folder, side, rounds):
    found = {}
    for i in range(1, rounds + 1):
        with open(f"{folder}/{side}.{i}.json", encoding="utf-8") as file:
            for row in json.load(file)["benchmarks"]:
                found.setdefault(row["name"], (row["time_unit"], []))[1].append(row["real_time"])
    return {name: (unit, statistics.median(values)) for name, (unit, values) in found.items()}


def main():
    folder, rounds = sys.argv[1], int(sys.argv[2])
    old = times(folder, "old", rounds)
    new = times(folder, "new", rounds)
    width = max(map(len, old), default=0)
    print(f"{'':{width}}  {'old':>12} {'new':>12}     new/old")
    for name, (unit, before) in old.items():
        if name in new:
            after = new[name][1]
            print(f"{name:{width}}  {before:12.3f} {after:12.3f} {unit:>3}  {after / before:6.2f}")


if __name__ == "__main__":
    main()
