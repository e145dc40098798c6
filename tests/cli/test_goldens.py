# SPDX-License-Identifier: MIT
"""Whole runs on the examples, compared with what they gave before.

A golden file holds the lines of `dastrel dump` that the run added to those of the ground. After a
change that is meant to give another result, `--update-goldens` writes them anew, to be reviewed
like any other change."""

import math
import os
import pathlib
import platform

import pytest

GOLDENS = pathlib.Path(__file__).parent / "goldens"

RUNS = {
    "even": ["tree.lwo", "--clone-num", "3"],
    "gentle_slopes": ["stone.lwo", "--clone-num", "4", "--slope-limits", "--slope-max", "15",
                      "--h-min", "-180", "--h-max", "180", "--p-align", "off", "--seed", "-7"],
    "maps_and_jitter": ["stone.lwo", "--clone-num", "4", "--density-wg", "Density", "--size-wg",
                        "Density", "--size-wg-influence", "80", "--size-indep", "--size-var-y",
                        "60", "--jitter", "0.1", "--distribution", "150", "--iterations", "40"],
    "area_and_morphs": ["tree.lwo", "--clone-num", "2", "--size-poly-area", "--dep-power", "90%",
                        "--auto-morph-maps", "2", "--p-angle-wg", "Density", "--p-absolute",
                        "--h-align", "off"],
}


def added_lines(dastrel, options):
    done = dastrel("scatter", "terrain.lwo", *options, "-o", "out.lwo", "--clock", "1790000000")
    assert done.status == 0, done
    of_ground = set(dastrel.dump("terrain.lwo").splitlines())
    return [line for line in dastrel.dump("out.lwo").splitlines() if line not in of_ground]


def alike(line, golden):
    """Equal, or equal but for the last digits: sine and cosine come from the C library, and only
    those of one platform agree to the last bit."""
    if line == golden:
        return True
    words, golden_words = line.split(), golden.split()
    if platform.machine() == "x86_64" or len(words) != len(golden_words):
        return False
    for word, golden_word in zip(words, golden_words):
        try:
            near = math.isclose(float(word), float(golden_word), rel_tol=1e-5, abs_tol=1e-6)
        except ValueError:
            near = word == golden_word
        if not near:
            return False
    return True


@pytest.mark.parametrize("name", list(RUNS))
def test_a_run_gives_what_it_gave(dastrel, request, name):
    lines = added_lines(dastrel, RUNS[name])
    path = GOLDENS / f"{name}.txt"
    if request.config.getoption("--update-goldens"):
        assert not os.environ.get("CI"), "goldens are reviewed by a person before they count"
        path.parent.mkdir(exist_ok=True)
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")
    golden = path.read_text(encoding="utf-8").splitlines()
    unlike = [pair for pair in zip(lines, golden) if not alike(*pair)]
    assert not unlike, f"{len(unlike)} lines differ; the first: {unlike[0]}"
    assert len(lines) == len(golden)
