# SPDX-License-Identifier: MIT
"""What a run writes and says."""

import json
import math
import re

import pytest

from objects import Layer, Mesh, square, triangle, write_object


def scatter(dastrel, *arguments, out="out.lwo", clock="1790000000"):
    """A run that has to succeed; gives the summary."""
    done = dastrel("scatter", *arguments, "-o", out, "--clock", clock, "--json")
    assert done.status == 0, done
    return json.loads(done.out)


def bytes_of(dastrel, name="out.lwo"):
    return (dastrel.folder / name).read_bytes()


def clone_positions(dastrel, name="out.lwo", ground_points=1681, points_per_clone=33):
    """Where the clones' first points stand: unscaled and unturned that is the clones' places."""
    points = Mesh(dastrel.dump(name)).points()[ground_points:]
    return points[::points_per_clone]


UNTURNED = ["--size-var-x", "0", "--h-min", "0", "--h-max", "0", "--p-min", "0", "--p-max", "0",
            "--b-min", "0", "--b-max", "0", "--h-align", "off", "--p-align", "off"]


def test_the_same_command_writes_the_same_bytes(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="a.lwo")
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="b.lwo")
    assert bytes_of(dastrel, "a.lwo") == bytes_of(dastrel, "b.lwo")


def test_another_clock_writes_other_bytes_at_the_same_places(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="a.lwo", clock="1")
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="b.lwo", clock="2")
    assert bytes_of(dastrel, "a.lwo") != bytes_of(dastrel, "b.lwo")
    scatter(dastrel, "terrain.lwo", "tree.lwo", *UNTURNED, out="a.lwo", clock="1")
    scatter(dastrel, "terrain.lwo", "tree.lwo", *UNTURNED, out="b.lwo", clock="2")
    assert bytes_of(dastrel, "a.lwo") == bytes_of(dastrel, "b.lwo")


def test_another_seed_gives_other_places(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", *UNTURNED, "--seed", "1", out="a.lwo")
    scatter(dastrel, "terrain.lwo", "tree.lwo", *UNTURNED, "--seed", "2", out="b.lwo")
    scatter(dastrel, "terrain.lwo", "tree.lwo", *UNTURNED, "--seed", "-1", out="c.lwo")
    assert clone_positions(dastrel, "a.lwo") != clone_positions(dastrel, "b.lwo")
    assert clone_positions(dastrel, "a.lwo") == clone_positions(dastrel, "c.lwo")


def test_with_a_density_map_places_depend_on_the_clock(dastrel):
    options = [*UNTURNED, "--density-wg", "Density", "--clone-num", "200"]
    scatter(dastrel, "terrain.lwo", "tree.lwo", *options, out="a.lwo", clock="1")
    scatter(dastrel, "terrain.lwo", "tree.lwo", *options, out="b.lwo", clock="2")
    assert clone_positions(dastrel, "a.lwo") != clone_positions(dastrel, "b.lwo")


def test_the_clock_named_in_a_summary_repeats_the_run(dastrel):
    first = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "a.lwo")
    assert first.status == 0, first
    clock = re.search(r"clock (\d+)", first.err).group(1)
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="b.lwo", clock=clock)
    assert bytes_of(dastrel, "a.lwo") == bytes_of(dastrel, "b.lwo")


def test_the_environment_gives_the_clock_and_the_option_wins(dastrel):
    environment = {"DASTREL_CLOCK": "77"}
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "a.lwo", environment=environment)
    assert "clock 77," in done.err
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "b.lwo", "--clock", "78",
                   environment=environment)
    assert "clock 78," in done.err
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="c.lwo", clock="77")
    assert bytes_of(dastrel, "a.lwo") == bytes_of(dastrel, "c.lwo")


def test_the_line_for_a_person(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "50",
                   "--clock", "5")
    assert done.out == ""
    assert re.fullmatch(r"terrain\.lwo \(1,600 polygons\) \+ tree\.lwo -> out\.lwo "
                        r"\(50 clones, 1,650 points, 1,350 polygons, clock 5, \d+\.\d\d s\)\n",
                        done.err)


def test_quiet_says_nothing(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "-q", "--size-var-y",
                   "1")
    assert (done.status, done.out, done.err) == (0, "", "")


def test_the_summary_names_all_that_decided_the_result(dastrel):
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", "stone.lwo", "--clone-num", "10",
                      "--seed", "4", clock="6")
    assert summary["schema"] == 1
    assert summary["program"] == "dastrel 1.6.1"
    assert summary["module"].endswith("/dastrel.p")
    assert summary["inputs"] == [
        {"file": "terrain.lwo", "layers": 1, "points": 1681, "polygons": 1600},
        {"file": "tree.lwo", "layers": 1, "points": 33, "polygons": 27},
        {"file": "stone.lwo", "layers": 1, "points": 42, "polygons": 80}]
    assert summary["output"] == "out.lwo"
    assert summary["clock"] == 6
    assert summary["settings"]["seed"] == 4
    assert len(summary["settings"]) == 28
    assert summary["clones"] == 10
    assert summary["points_added"] == 10 * (33 + 42)
    assert summary["polygons_added"] == 10 * (27 + 80)
    assert {(entry["type"], entry["name"]) for entry in summary["maps_written"]} == {
        ("TXUV", "TreeTexture"), ("WGHT", "Tips"), ("WGHT", "DT_index"), ("MORF", "Wind"),
        ("MORF", "Droop")}
    assert [warning[:40] for warning in summary["warnings"]] == [
        "every clone is all 2 models at once (tre"]
    assert set(summary["seconds"]) == {"read", "scatter", "write", "total"}
    assert all(seconds >= 0 for seconds in summary["seconds"].values())


def test_the_output_holds_the_ground_and_the_clones_and_not_the_model(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", "--clone-num", "3")
    before = Mesh(dastrel.dump("terrain.lwo"))
    after = Mesh(dastrel.dump("out.lwo"))
    model = Mesh(dastrel.dump("tree.lwo"))
    assert len(after.layers) == 1
    assert after.points()[:1681] == before.points()
    assert after.polygons()[:1600] == before.polygons()
    assert len(after.points()) == 1681 + 3 * 33
    for clone in range(3):
        first = 1681 + clone * 33
        polygons = after.polygons()[1600 + clone * 27:1600 + (clone + 1) * 27]
        assert [(kind, len(points), surface) for kind, points, surface in polygons] == [
            (kind, len(points), surface) for kind, points, surface in model.polygons()]
        assert {point for _, points, _ in polygons for point in points} == set(
            range(first, first + 33))


def test_the_surfaces_of_the_model_come_along(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", "--clone-num", "3")
    chunks = bytes_of(dastrel)
    for name in (b"Grass", b"Rock", b"Bark", b"Needles", b"Snow"):
        assert re.search(rb"SURF....%s\0" % name, chunks, re.S), name


def test_maps_come_along_and_number_the_clones(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", "--clone-num", "4", *UNTURNED)
    after = Mesh(dastrel.dump("out.lwo"))
    model = Mesh(dastrel.dump("tree.lwo"))
    index = after.map("WGHT", "DT_index")
    assert [index[1681 + clone * 33] for clone in range(4)] == [(0.0,), (0.25,), (0.5,), (0.75,)]
    assert set(index) == set(range(1681, 1681 + 4 * 33))
    for kind, name in (("TXUV", "TreeTexture"), ("WGHT", "Tips"), ("MORF", "Wind"),
                       ("MORF", "Droop")):
        of_model = sorted(model.map(kind, name).values())
        of_first = sorted(value for point, value in after.map(kind, name).items()
                          if 1681 <= point < 1681 + 33)
        assert of_first == of_model, name
    assert set(after.map("WGHT", "Density")) == set(range(1681))


def test_clones_stand_on_the_ground(dastrel):
    write_object(dastrel.folder / "ground.lwo", square(height=2.0))
    scatter(dastrel, "ground.lwo", "tree.lwo", *UNTURNED, "--clone-num", "40")
    points = Mesh(dastrel.dump("out.lwo")).points()[4:]
    assert len(points) == 40 * 33
    for clone in range(40):
        assert min(y for _, y, _ in points[clone * 33:(clone + 1) * 33]) == 2.0
    rings = [points[clone * 33:clone * 33 + 6] for clone in range(40)]
    middles = [(sum(x for x, _, _ in ring) / 6, sum(z for _, _, z in ring) / 6) for ring in rings]
    assert all(0 <= x <= 10 and 0 <= z <= 10 for x, z in middles)
    assert [x for x, _ in middles] == sorted(x for x, _ in middles)


def test_slope_limits_keep_clones_off_steep_polygons(dastrel):
    steep = square("Steep")
    steep.points = [(x, 3 * x, z) for x, _, z in steep.points]
    level = square("Level")
    level.points = [(x - 20, y, z) for x, y, z in level.points]
    write_object(dastrel.folder / "ground.lwo", level, steep)
    scatter(dastrel, "ground.lwo", "stone.lwo", *UNTURNED, "--clone-num", "20", "--slope-limits",
            "--slope-max", "30")
    points = Mesh(dastrel.dump("out.lwo")).points()[4:]
    assert len(points) == 20 * 42
    assert all(x < -9 for x, _, _ in points)


def test_selected_surfaces_alone_get_clones(dastrel):
    left = square("Left")
    left.points = [(x - 20, y, z) for x, y, z in left.points]
    middle = square("Middle")
    right = square("Right")
    right.points = [(x + 20, y, z) for x, y, z in right.points]
    write_object(dastrel.folder / "ground.lwo", left, middle, right)

    def xs(*options):
        scatter(dastrel, "ground.lwo", "stone.lwo", *UNTURNED, "--clone-num", "30", *options)
        return [x for x, _, _ in Mesh(dastrel.dump("out.lwo")).points()[4:]]

    assert min(xs()) < -9 and max(xs()) > 19
    assert max(xs("--select-surface", "Left")) < -9
    both = xs("--select-surface", "Left", "--select-surface", "Right")
    assert min(both) < -9 and max(both) > 19
    assert not [x for x in both if -9 < x < 19]


def scene(dastrel):
    write_object(dastrel.folder / "scene.lwo", square(name="ground"),
                 triangle("Leaf", name="leaf"), triangle("Twig", name="twig"),
                 Layer("old", [(0.0, 0.0, 0.0)]))


def surfaces_of_clones(dastrel):
    return {surface for _, _, surface in Mesh(dastrel.dump("out.lwo")).polygons()[1:]}


@pytest.mark.parametrize("options, surfaces", [
    (["--foreground", "1"], {"Leaf", "Twig"}),
    (["--foreground", "1", "--background", "2"], {"Leaf"}),
    (["--foreground", "1", "--background", "2,3"], {"Leaf", "Twig"}),
    (["--foreground", "1", "--background", "2-4"], {"Leaf", "Twig"}),
    (["--foreground=1", "--background=3,2,3"], {"Leaf", "Twig"}),
])
def test_layers_of_a_scene_are_ground_and_model(dastrel, options, surfaces):
    scene(dastrel)
    summary = scatter(dastrel, "scene.lwo", "--clone-num", "5", *options)
    assert summary["polygons_added"] == 5 * len(surfaces)
    assert surfaces_of_clones(dastrel) == surfaces
    after = Mesh(dastrel.dump("out.lwo"))
    before = Mesh(dastrel.dump("scene.lwo"))
    assert len(after.layers) == 4
    for layer in (1, 2, 3):
        assert after.points(layer) == before.points(layer)
        assert after.polygons(layer) == before.polygons(layer)


def test_clones_go_to_the_first_foreground_layer(dastrel):
    scene(dastrel)
    scatter(dastrel, "scene.lwo", "--clone-num", "5", "--foreground", "3,2", "--background", "1")
    after = Mesh(dastrel.dump("out.lwo"))
    assert [len(after.points(layer)) for layer in range(4)] == [4, 3 + 5 * 4, 3, 1]


def test_one_file_may_be_both_ground_and_model(dastrel):
    summary = scatter(dastrel, "terrain.lwo", "terrain.lwo", "--clone-num", "1")
    assert summary["polygons_added"] == 1600


def test_no_clones_give_the_ground_back_with_a_warning(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "0")
    assert done.status == 0, done
    assert "warning: nothing was added" in done.err
    assert Mesh(dastrel.dump("out.lwo")).points() == Mesh(dastrel.dump("terrain.lwo")).points()


def test_the_heading_turns_clones_by_the_degrees_given(dastrel):
    write_object(dastrel.folder / "ground.lwo", square())
    turned = [option if option != "0" else "90" for option in UNTURNED[2:6]]
    options = ["--size-var-x", "0", *turned, *UNTURNED[6:], "--clone-num", "1", "--iterations", "0"]
    scatter(dastrel, "ground.lwo", "tree.lwo", *UNTURNED, "--clone-num", "1", "--iterations", "0",
            out="plain.lwo")
    scatter(dastrel, "ground.lwo", "tree.lwo", *options, out="turned.lwo")

    def widths(name):
        points = Mesh(dastrel.dump(name)).points()[4:]
        return [max(p[axis] for p in points) - min(p[axis] for p in points) for axis in (0, 2)]

    plain, turned = widths("plain.lwo"), widths("turned.lwo")
    assert math.isclose(plain[0], 2.6, rel_tol=1e-5)
    assert math.isclose(turned[1], plain[0], rel_tol=1e-5)
    assert math.isclose(turned[0], plain[1], rel_tol=1e-5)
