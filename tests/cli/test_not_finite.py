# SPDX-License-Identifier: MIT
"""Vertices that are no finite numbers: the run goes on, and the place is named."""

import json
import math
import os

import pytest

from objects import Layer, square, triangle, write_object


def two_squares(bad):
    """A strip of two squares; `bad` is a coordinate of the corner that the second one has alone."""
    points = [(0.0, 0.0, 0.0), (0.0, 0.0, 1.0), (1.0, 0.0, 1.0), (1.0, 0.0, 0.0),
              (2.0, 0.0, 1.0), (2.0, bad, 0.0)]
    return Layer("", points, [(b"FACE", (0, 1, 2, 3), "Ground"),
                              (b"FACE", (3, 2, 4, 5), "Ground")])


def scatter(dastrel, ground, model, *options):
    write_object(dastrel.folder / "ground.lwo", ground)
    write_object(dastrel.folder / "model.lwo", model)
    done = dastrel("scatter", "ground.lwo", "model.lwo", "-o", "out.lwo", "--clone-num", "20",
                   *options)
    assert done.status == 0, done
    return done


@pytest.mark.parametrize("bad, shown", [(math.nan, "nan"), (math.inf, "inf"), (-math.inf, "-inf")])
def test_a_vertex_of_the_ground_is_named(dastrel, bad, shown):
    done = scatter(dastrel, two_squares(bad), triangle())
    assert (f"warning: the ground has a vertex that is not a finite number: vertex 3 of polygon 1 "
            f"(point 5, at 2 {shown} 0) in layer 1 of ground.lwo; " in done.err), done
    summary = json.loads(dastrel("info", "--json", "out.lwo").out)
    assert summary["files"][0]["layers"][0]["points"] == 6 + 20 * 3


def test_a_vertex_of_the_model_is_named(dastrel):
    model = triangle()
    model.points = [(0.0, 0.0, 0.0), (math.nan, 0.0, 0.0), (math.inf, 0.0, 1.0)]
    done = scatter(dastrel, square(), model)
    assert ("warning: the model has 2 vertices that are not finite numbers, the first is vertex 1 "
            "of polygon 0 (point 1, at nan 0 0) in layer 1 of model.lwo; " in done.err), done


def test_the_summary_has_the_warnings(dastrel):
    done = scatter(dastrel, two_squares(math.nan), triangle(), "--json", "--quiet")
    assert done.err == ""
    assert any("vertex 3 of polygon 1" in warning for warning in json.loads(done.out)["warnings"])


def test_sound_meshes_are_not_warned_about(dastrel):
    assert "warning" not in scatter(dastrel, two_squares(0.0), triangle()).err


def test_the_file_is_named_where_there_are_several(dastrel):
    bad = triangle()
    bad.points = [(0.0, 0.0, 0.0), (math.nan, 0.0, 0.0), (1.0, 0.0, 1.0)]
    write_object(dastrel.folder / "ground.lwo", square(), Layer("unused"))
    write_object(dastrel.folder / "first.lwo", triangle(), triangle())
    write_object(dastrel.folder / "second.lwo", triangle(), bad)
    done = dastrel("scatter", "ground.lwo", "first.lwo", "second.lwo", "-o", "out.lwo")
    assert done.status == 0, done
    assert "(point 1, at nan 0 0) in layer 2 of second.lwo; " in done.err, done


def ground_of_squares(bad):
    """20 x 20 squares; `bad` gives coordinates for some of the points."""
    points = [(float(x), 0.0, float(z)) for x in range(21) for z in range(21)]
    for number, coordinate in bad.items():
        points[number] = (coordinate, *points[number][1:])
    return Layer("", points, [
        (b"FACE", (first, first + 1, first + 22, first + 21), "Ground")
        for x in range(20) for first in range(21 * x, 21 * x + 20)])


def user_time(dastrel, *call):
    """Seconds that a call computes, without waiting for other processes."""
    with dastrel.start(*call) as running:
        _, status, usage = os.wait4(running.pid, 0)
        running.returncode = os.waitstatus_to_exitcode(status)
    assert running.returncode == 0
    return usage.ru_utime


def test_many_clones_take_no_longer(dastrel):
    """Positions whose X is no number once led to a list that is searched from its beginning for
    each clone."""
    clones = 60000
    write_object(dastrel.folder / "model.lwo",
                 Layer("", [(0.0, 0.0, 0.0)], [(b"FACE", (0,), "Leaf")]))
    times = []
    for name, bad in (("sound", {}), ("bad", {100: math.nan, 300: math.inf})):
        write_object(dastrel.folder / f"{name}.lwo", ground_of_squares(bad))
        times.append(user_time(dastrel, "scatter", f"{name}.lwo", "model.lwo", "-o", "out.lwo",
                               "--clone-num", str(clones), "--clock", "1", "--quiet"))
    summary = json.loads(dastrel("info", "--json", "out.lwo").out)
    assert summary["files"][0]["layers"][0]["points"] == 21 * 21 + clones
    assert times[1] <= 10 * max(times[0], 0.1), times
