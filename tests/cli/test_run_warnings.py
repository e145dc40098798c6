# SPDX-License-Identifier: MIT
"""Warnings of scatter about valid but implausible requests."""

import json
import re

import pytest

from objects import Layer, square, triangle, write_object


def scatter(dastrel, *arguments):
    done = dastrel("scatter", *arguments, "-o", "out.lwo", "--clock", "1", "--json")
    assert done.status == 0, done
    summary = json.loads(done.out)
    for warning in summary["warnings"]:
        assert f"warning: {warning}\n" in done.err
    return summary


def test_several_models_are_one_clone(dastrel):
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", "stone.lwo")
    alone = [scatter(dastrel, "terrain.lwo", model) for model in ("tree.lwo", "stone.lwo")]
    points = sum(one["points_added"] for one in alone) // 30
    assert summary["clone"] == {"files": 2, "points": points}
    assert all("clone" not in one and one["warnings"] == [] for one in alone)
    assert summary["warnings"] == [
        f"every clone is all 2 models at once (tree.lwo and stone.lwo; {points} points); to have "
        "one or the other, run once for each, as in: dastrel scatter terrain.lwo tree.lwo -o "
        "first.lwo --own-layer, and then: dastrel scatter first.lwo stone.lwo -o out.lwo "
        "--own-layer"]
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "stone.lwo", "-o", "out.lwo")
    assert f"(30 clones, one clone = 2 files, {points} points, " in done.err


def test_the_runs_that_the_warning_shows_scatter_one_and_the_other(dastrel):
    warning = scatter(dastrel, "terrain.lwo", "tree.lwo", "stone.lwo")["warnings"][0]
    for command in warning.split(": dastrel ")[1:]:
        arguments = command.removesuffix(", and then").split()
        done = dastrel(*arguments, "-q")
        assert (done.status, done.err) == (0, ""), done
    layers = json.loads(dastrel("info", "--json", "out.lwo").out)["files"][0]["layers"]
    assert [layer["name"] for layer in layers] == ["terrain", "clones of tree", "clones of stone"]


def test_a_model_of_another_unit_is_told_with_the_factor(dastrel):
    write_object(dastrel.folder / "field.lwo", square(size=1000.0))
    write_object(dastrel.folder / "leaf.lwo", triangle())
    write_object(dastrel.folder / "moon.lwo", square(size=2e6))
    small = scatter(dastrel, "field.lwo", "leaf.lwo")
    assert small["model_size"]["fitting_factor"] == 100
    assert small["warnings"] == ["the model is 0.03 % of the ground's size (0.3 m beside 1000 m): "
                                 "its clones will be too small to be seen; scale the model by 100 "
                                 "(it may be in another unit)"]
    large = scatter(dastrel, "field.lwo", "moon.lwo")
    assert large["model_size"]["fitting_factor"] == 1e-5
    assert "2000 times as large as the ground" in large["warnings"][0]
    assert "model_size" not in scatter(dastrel, "terrain.lwo", "tree.lwo")


def test_a_refusal_for_slopes_tells_those_of_the_ground(dastrel):
    arguments = ["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--slope-limits"]
    done = dastrel(*arguments, "--slope-min", "80")
    assert done.status == 1
    lines = done.err.splitlines()
    assert lines[:2] == ["dastrel: scatter: Change slope angle settings",
                         "dastrel: scatter: There are no valid polys to clone on."]
    found = re.fullmatch(r"dastrel: scatter: the ground's polygons slope ([\d.]+) to ([\d.]+) "
                         r"degrees; --slope-min and --slope-max limit them", lines[2])
    least, greatest = found.groups()
    assert dastrel(*arguments, "--slope-min", greatest).status == 1
    assert dastrel(*arguments, "--slope-min", float(greatest) - 0.2).status == 0
    assert dastrel(*arguments, "--slope-max", float(least) + 0.2).status == 0


def test_other_refusals_tell_no_slopes(dastrel):
    write_object(dastrel.folder / "bare.lwo", Layer("", [(0.0, 0.0, 0.0)]))
    done = dastrel("scatter", "bare.lwo", "tree.lwo", "-o", "out.lwo", "--slope-limits")
    assert done.status == 1 and "slope" not in done.err


@pytest.mark.parametrize("option, value, says", [
    ("--distribution", "0.5", "was read as 0.5 percent; for 50 percent write 50%"),
    ("--distribution", "1", "was read as 1 percent; for 100 percent write 100%"),
    ("--distribution", "350", "was read as 350 percent of an even spread; no clones can stand that "
                              "far apart, and the run takes longer to find none; write 80% for an "
                              "even spread"),
    ("--size-var-x", "0.25", "was read as 0.25 percent; for 25 percent write 25%"),
    ("--size-var-x", "150", "was read as 150 percent: sizes from -50 to 250 percent, and a clone of "
                            "a size below 0 is turned inside out; write 100% or less"),
    ("--slope-max", "25rad", "was read as 1432.39 degrees (25 radians); slopes lie between 0 "
                             "(level) and 180 (facing down); for 25 degrees write 25"),
    ("--slope-min", "-5", "was read as -5 degrees (-0.0872665 radians); slopes lie between 0 "
                          "(level) and 180 (facing down)"),
    ("--h-max", "45rad", "was read as 2578.31 degrees (45 radians), more than a whole turn; for 45 "
                         "degrees write 45"),
    ("--jitter", "10", "was read as 1000 percent: points move to between -9 and 11 times their "
                       "distance from the model's origin; for 10 percent write 10%"),
    ("--clone-num", "-3", "was read as -3: no clones are made"),
    ("--iterations", "15000", "was read as up to 15000 tries for each clone, which may take long; "
                              "15 to 100 are usual"),
])
def test_a_value_that_is_hardly_meant_is_told_as_it_was_read(dastrel, option, value, says):
    count = [] if option == "--clone-num" else ["--clone-num", "2"]
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", option, value, "--slope-limits", *count)
    assert summary["warnings"][0] == f"{option}: {says}"


def test_a_settings_file_is_named_with_its_line(dastrel):
    (dastrel.folder / "mine.json").write_text('{\n  "clone_num": 2,\n  "jitter": 10\n}\n')
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", "--settings", "mine.json")
    assert summary["warnings"][0].startswith("mine.json: line 3: jitter: was read as 1000 percent")
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", "--settings", "mine.json", "--jitter",
                      "0.1")
    assert summary["warnings"] == []


def test_usual_values_are_told_nothing(dastrel):
    usual = {"distribution": "150%", "size_var_x": "100%", "h_min": "-180", "h_max": "360",
             "p_min": "-3.14159rad", "slope_limits": "on", "slope_min": "0", "slope_max": "180",
             "jitter": "1", "clone_num": "0", "iterations": "100", "seed": "-7"}
    options = [f"--{name.replace('_', '-')}={value}" for name, value in usual.items()]
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", *options)
    assert summary["warnings"] == ["nothing was added; there are no clones to make, or the model "
                                   "has no polygons"]
