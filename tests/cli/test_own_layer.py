# SPDX-License-Identifier: MIT
"""Clones in a layer of their own, and grounds that hold clones already."""

import json

import pytest

from objects import Layer, Mesh, square, triangle, write_object


def scatter(dastrel, *arguments, out, clones=20):
    done = dastrel("scatter", *arguments, "-o", out, "--clone-num", clones, "--json", "--clock",
                   "1790000000")
    assert done.status == 0, done
    return json.loads(done.out)


def mesh(dastrel, name):
    return Mesh(dastrel.dump(name))


def layer_names(dastrel, name):
    listed = json.loads(dastrel("info", "--json", name).out)["files"][0]["layers"]
    return [layer["name"] for layer in listed]


@pytest.mark.parametrize("ground, models, name", [
    ("terrain.lwo", ["tree.lwo"], "clones of tree"),
    ("terrain.lwo", ["stone.lwo", "tree.lwo"], "clones of stone and tree"),
])
def test_the_layer_holds_what_a_plain_run_adds_and_the_ground_stays(dastrel, ground, models, name):
    plain = scatter(dastrel, ground, *models, "--auto-morph-maps", "2", out="plain.lwo")
    own = scatter(dastrel, ground, *models, "--auto-morph-maps", "2", "--own-layer", out="own.lwo")
    assert "own_layer" not in plain
    assert own["own_layer"] == name
    assert own["clones"] == plain["clones"] == 20
    assert own["points_added"] == plain["points_added"]

    bare, whole, parted = (mesh(dastrel, file) for file in (ground, "plain.lwo", "own.lwo"))
    assert layer_names(dastrel, "own.lwo") == [*layer_names(dastrel, ground), name]
    assert parted.layers[0] == bare.layers[0], "the ground is as it was"
    first = len(bare.points())
    assert parted.points(1) == whole.points()[first:]
    assert parted.polygons(1) == [
        (kind, tuple(point - first for point in points), surface)
        for kind, points, surface in whole.polygons()[len(bare.polygons()):]]
    maps = parted.layers[1]["maps"]
    assert ("WGHT", "DT_index") in maps
    for kind, map_name in whole.layers[0]["maps"]:
        added = {point - first: value for point, value in whole.map(kind, map_name).items()
                 if point >= first}
        assert (parted.map(kind, map_name, 1) or {}) == added


def test_a_second_run_leaves_the_clones_of_the_first_alone(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", "--own-layer", out="forest.lwo")
    second = scatter(dastrel, "forest.lwo", "stone.lwo", "--own-layer", out="both.lwo")
    assert second["warnings"] == []
    scatter(dastrel, "terrain.lwo", "stone.lwo", "--own-layer", out="stones.lwo")
    assert layer_names(dastrel, "both.lwo")[1:] == ["clones of tree", "clones of stone"]
    both = mesh(dastrel, "both.lwo")
    assert both.points(2) == mesh(dastrel, "stones.lwo").points(1), "the ground is the same"
    assert both.layers[1]["points"] == mesh(dastrel, "forest.lwo").layers[1]["points"]


def test_further_runs_with_the_same_model_number_their_layers(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", "--own-layer", out="first.lwo")
    second = scatter(dastrel, "first.lwo", "tree.lwo", "--own-layer", out="second.lwo")
    third = scatter(dastrel, "second.lwo", "tree.lwo", "--own-layer", out="third.lwo")
    assert [run["own_layer"] for run in (second, third)] == ["clones of tree 2", "clones of tree 3"]
    assert layer_names(dastrel, "third.lwo")[1:] == ["clones of tree", "clones of tree 2",
                                                     "clones of tree 3"]


def test_a_model_of_that_name_is_no_layer_of_the_result(dastrel):
    write_object(dastrel.folder / "leaf.lwo", triangle(name="clones of leaf"))
    own = scatter(dastrel, "terrain.lwo", "leaf.lwo", "--own-layer", out="own.lwo")
    assert own["own_layer"] == "clones of leaf"


def test_a_ground_that_holds_clones_is_told(dastrel):
    scatter(dastrel, "terrain.lwo", "tree.lwo", out="forest.lwo")
    again = scatter(dastrel, "forest.lwo", "stone.lwo", out="out.lwo")
    assert len(again["warnings"]) == 1
    assert again["warnings"][0].startswith(
        "the ground contains clones of an earlier run (layer 1 of forest.lwo): new clones will "
        "stand on those, too; --select-surface NAME")
    assert "--own-layer" in again["warnings"][0]
    selected = scatter(dastrel, "forest.lwo", "stone.lwo", "--select-surface", "Grass",
                       out="out.lwo")
    assert selected["warnings"] == []


def test_a_ground_of_clones_alone_stays_the_ground(dastrel):
    """Grass on trees, say: somebody took the layer of the clones for a file of its own."""
    write_object(dastrel.folder / "clones.lwo",
                 square(maps=[(b"WGHT", "DT_index", {p: (0.0,) for p in range(4)})]))
    summary = scatter(dastrel, "clones.lwo", "tree.lwo", "--own-layer", out="out.lwo")
    assert summary["points_added"] > 0
    assert "earlier run" in summary["warnings"][0]


def test_a_scene_gets_one_layer_more(dastrel):
    write_object(dastrel.folder / "scene.lwo", square(name="Field"), triangle(name="Leaf"),
                 Layer("Notes", [(0.0, 0.0, 0.0)]))
    own = scatter(dastrel, "scene.lwo", "--foreground", "1", "--own-layer", out="first.lwo")
    assert own["own_layer"] == "clones of Leaf and Notes"
    assert layer_names(dastrel, "first.lwo") == ["Field", "Leaf", "Notes",
                                                 "clones of Leaf and Notes"]
    again = scatter(dastrel, "first.lwo", "--foreground", "1", "--own-layer", out="second.lwo")
    assert again["own_layer"] == "clones of Leaf and Notes 2"
    assert again["points_added"] == own["points_added"], "the first clones are no model"


def test_no_clones_make_no_layer(dastrel):
    summary = scatter(dastrel, "terrain.lwo", "tree.lwo", "--own-layer", out="none.lwo", clones=0)
    assert "own_layer" not in summary
    assert layer_names(dastrel, "none.lwo") == layer_names(dastrel, "terrain.lwo")
