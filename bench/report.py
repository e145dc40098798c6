#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes docs/performance.md and its plot from what the benchmarks measured:

    report.py BENCH.json PROCESSES.json DOCS [PEERS.csv]

BENCH.json comes from dastrel_bench, PROCESSES.json from processes.py, and PEERS.csv has the lines
that the comparison with other programs prints."""

import csv
import json
import platform
import statistics
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402  (after the choice of a drawing without a display)


def seconds(row):
    return row["real_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[row["time_unit"]]


def series(bench):
    """{'positions/hills': {1000: row, ...}, ...}"""
    found = {}
    for row in bench["benchmarks"]:
        parts = row["name"].split("/")
        name = "/".join(parts[:2])
        size = next((int(p) for p in parts[1:] if p.isdigit()), 0)
        found.setdefault(name if not name.split("/")[-1].isdigit() else parts[0], {})[size] = row
    return found


def readable(value):
    if value < 1e-6:
        return f"{value * 1e9:.0f} ns"
    if value < 1e-3:
        return f"{value * 1e6:.1f} µs"
    if value < 1:
        return f"{value * 1e3:.1f} ms"
    return f"{value:.2f} s"


def is_doubled(rows):
    """Whether each size is twice the one before."""
    sizes = sorted(rows)
    return len(sizes) > 2 and all(b == 2 * a for a, b in zip(sizes, sizes[1:]))


def growth_table(found):
    lines = ["| what | from | to | time | growth at each doubling |", "|---|---|---|---|---|"]
    for name, rows in found.items():
        if not is_doubled(rows):
            continue
        times = [seconds(row) for _, row in sorted(rows.items())]
        ratios = ", ".join(f"{b / a:.2f}" for a, b in zip(times, times[1:]))
        lines.append(f"| {name} | {min(rows):,} | {max(rows):,} | {readable(times[0])} to "
                     f"{readable(times[-1])} | {ratios} |")
    return lines


def tables(found):
    lines = ["| what | size | ours | plain | ratio | |", "|---|---|---|---|---|---|"]
    for name, rows in found.items():
        if name.endswith("plain") or is_doubled(rows):
            continue
        plain = found.get(name + "_plain", {})
        if name == "random_points/laid_once":
            plain = found.get("random_points/plain", {})
        for size, row in sorted(rows.items()):
            slow = plain.get(size)
            extra = []
            if "points" in row:
                extra.append(f"{row['points']:,.0f} points")
            if "bytes_per_second" in row:
                extra.append(f"{row['bytes_per_second'] / 1e6:.0f} MB/s")
            lines.append(f"| {name} | {size:,} | {readable(seconds(row))} | "
                         f"{readable(seconds(slow)) if slow else ''} | "
                         f"{seconds(slow) / seconds(row):,.0f} |" .replace("| None", "| ")
                         if slow else
                         f"| {name} | {size:,} | {readable(seconds(row))} | | |")
            lines[-1] += f" {', '.join(extra)} |"
    return lines


def peers_rows(file):
    """{(task, mesh, size): {program: [(seconds, peak MiB), ...], ...}, ...}"""
    rows = {}
    with open(file, encoding="utf-8") as lines:
        for row in csv.reader(lines):
            if len(row) >= 9 and row[1] in ("positions-poisson", "realise", "poisson"):
                task = "positions" if row[1] != "realise" else "realise"
                key = (task, row[2], int(float(row[3])) if task == "positions" else 0)
                rows.setdefault(key, {}).setdefault(row[0], []).append((float(row[5]), float(row[7])))
    return rows


def peers_table(rows):
    names = sorted({name for row in rows.values() for name in row})
    lines = ["| task | " + " | ".join(names) + " |", "|---|" + "---|" * len(names)]
    for (task, name, size), row in sorted(rows.items()):
        cells = []
        for peer in names:
            if peer not in row:
                cells.append("")
                continue
            wall = statistics.median(w for w, _ in row[peer])
            peak = max(p for _, p in row[peer])
            cells.append(f"{wall:.2f} s, {peak:.0f} MiB")
        what = f"{task} on {name}, {size:,}" if size else f"{task} {name}, 10 million points"
        lines.append(f"| {what} | " + " | ".join(cells) + " |")
    return lines


def plot(found, peers, target):
    figure, axes = plt.subplots(figsize=(8, 5.5), dpi=110)
    for name, style in [("positions/hills", "o-"), ("positions/hills_plain", "o--"),
                        ("command/grid_cube", "s-"), ("command/grid_cube_plain", "s--")]:
        rows = sorted(found.get(name, {}).items())
        if rows:
            axes.loglog([n for n, _ in rows], [seconds(r) for _, r in rows], style, label=name)
    lines = {}
    for (task, mesh, size), programs in sorted(peers.items()):
        if (task, mesh) == ("positions", "bumpy"):
            for program, runs in programs.items():
                lines.setdefault(program, []).append((size, statistics.median(w for w, _ in runs)))
    for program, points in sorted(lines.items()):
        axes.loglog(*zip(*points), "^:", label=f"positions/bumpy: {program}")
    axes.set_xlabel("clones")
    axes.set_ylabel("seconds")
    axes.grid(True, which="both", alpha=0.25)
    axes.legend(fontsize="small")
    figure.tight_layout()
    figure.savefig(target)


def per_point(row, first):
    if row["points"] < 100000:
        return ""
    return f"{(row['peak'] - first['peak']) / row['points']:.0f} bytes"


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        for line in file:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return platform.machine()


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        bench = json.load(file)
    with open(sys.argv[2], encoding="utf-8") as file:
        processes = json.load(file)
    docs = sys.argv[3]
    found = series(bench)
    peers = peers_rows(sys.argv[4]) if len(sys.argv) > 4 else {}
    plot(found, peers, f"{docs}/images/performance.png")
    lines = [
        "# Performance",
        "",
        "Made by `scripts/bench.sh`; run it to have the figures of your machine. These are of "
        f"{bench['context']['num_cpus']} cores ({processor()}). Dastrel computes on one; a helper "
        "on another has the system prepare the memory that is written to next. "
        "\"Plain\" is the same module with its indexes switched off: the lists are walked as they "
        "stand; of the files it is the same file, put and taken byte by byte through a stream. Both "
        "give the same result to the last bit. Take ratios within this table; times depend on what "
        "else the machine does.",
        "",
        "![Time against clones, both axes logarithmic](images/performance.png)",
        "",
        "## The parts, in one process",
        "",
        "`positions` finds the places on a ground; `command` is the whole command on a document in "
        "memory, from the call of the module to the finished edit. The grounds are `grid` (100 x "
        "100 level quads), `hills` (141 x 141 quads) and `mountain` (1414 x 1414 quads); the models "
        "`cube` (8 points), `tree` (205 points with UV, weight and morph maps) and `large` (5,000 "
        "points with the same maps).",
        "",
        *tables(found),
        "",
        "## Growth with the size of the input",
        "",
        "Inputs that once took time that grows with the square: each size is twice the one before, "
        "so 2.00 is linear growth. `model_of_many_maps` and `model_of_many_layers` run the command "
        "with a model of so many vertex maps, each with a value at one point, or of so many layers "
        "with the same map; `positions_with_odd_vertex` finds places on hills of which one vertex is not finite; "
        "`scene_of_layers_and_surfaces` prepares a picture of as many surfaces as layers; "
        "`split_scribble` divides a polygon that crosses itself, the other rows read, write or join "
        "files of so many maps, layers or tags.",
        "",
        *growth_table(found),
        "",
        "## The whole program, file to file",
        "",
        "The memory for each added point is that beyond the first row's.",
        "",
        "| ground | model | clones | time | file | peak memory | for each added point |",
        "|---|---|---|---|---|---|---|",
        *(f"| {r['ground']} | {r['model']} | {r['clones']:,} | {readable(r['seconds'])} | "
          f"{r['file'] / 1e6:,.1f} MB | {r['peak'] / 2**20:,.0f} MiB | "
          f"{per_point(r, processes[0])} |" for r in processes),
    ]
    if peers:
        lines += [
            "",
            "## Beside other programs",
            "",
            "The same tasks on the same meshes (`bumpy` are hills of 141 x 141 quads), every program "
            "once in each round, medians. "
            "`darts` is a dart thrower with a hash grid and nothing else; `streamlimit` writes "
            "ready copies into memory, the least that realising can take. What the others place or "
            "realise carries no clone numbers, and only Dastrel makes a document of it that can be "
            "edited and undone.",
            "",
            *peers_table(peers),
        ]
    with open(f"{docs}/performance.md", "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
