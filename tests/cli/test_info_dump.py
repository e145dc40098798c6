# SPDX-License-Identifier: MIT
"""What `info` and `dump` tell of a file."""

import json

from objects import Layer, write_object


def test_info_for_a_person(dastrel):
    done = dastrel("info", "tree.lwo")
    assert done.status == 0, done
    assert done.err == ""
    assert done.out == """\
tree.lwo: 1 layer, 33 points, 27 polygons
  layer 1 'tree': 33 points, 27 polygons (27 FACE)
    bounds (-1.2999999523162842, 0, -1.1258330345153809) to \
(1.2999999523162842, 5, 1.1258330345153809)
    surface 'Bark': 6 polygons
    surface 'Needles': 14 polygons
    surface 'Snow': 7 polygons
    TXUV 'TreeTexture': dimension 2, 33 of 33 points have a value
    WGHT 'Tips': dimension 1, 18 of 33 points have a value
    MORF 'Wind': dimension 3, 33 of 33 points have a value
    MORF 'Droop': dimension 3, 18 of 33 points have a value
"""


def test_info_of_several_files(dastrel):
    done = dastrel("info", "terrain.lwo", "stone.lwo")
    assert [line for line in done.out.splitlines() if not line.startswith(" ")] == [
        "terrain.lwo: 1 layer, 1,681 points, 1,600 polygons",
        "stone.lwo: 1 layer, 42 points, 80 polygons"]


def test_info_as_json(dastrel):
    write_object(dastrel.folder / "two.lwo",
                 Layer("first", [(0.0, 0.0, 0.0), (1.0, 2.0, 3.0)],
                       [(b"FACE", (0, 1), "S"), (b"CURV", (1, 0), None)],
                       [(b"WGHT", "W", {1: (0.5,)})]),
                 Layer())
    done = dastrel("info", "two.lwo", "--json")
    assert done.status == 0, done
    assert json.loads(done.out) == {"schema": 1, "files": [{"file": "two.lwo", "layers": [
        {"layer": 1, "name": "first", "points": 2, "polygons": 2,
         "polygon_types": [{"type": "FACE", "polygons": 1}, {"type": "CURV", "polygons": 1}],
         "surfaces": [{"name": "S", "polygons": 1}],
         "maps": [{"type": "WGHT", "name": "W", "dimension": 1, "points_with_value": 1,
                   "corner_values": 0}],
         "bounds": {"min": [0.0, 0.0, 0.0], "max": [1.0, 2.0, 3.0]}},
        {"layer": 2, "name": "", "points": 0, "polygons": 0, "polygon_types": [], "surfaces": [],
         "maps": [], "bounds": None}]}]}


def test_dump_is_the_whole_mesh(dastrel):
    write_object(dastrel.folder / "two.lwo",
                 Layer('a "b"', [(0.0, -0.0, 0.1), (1.0, 2.0, 3e20)],
                       [(b"FACE", (0, 1), "S"), (b"CURV", (1, 0), None)],
                       [(b"WGHT", "W", {1: (0.5,)}), (b"PICK", "P", {0: ()})]),
                 Layer("z"))
    done = dastrel("dump", "two.lwo")
    assert done.status == 0, done
    lines = [line for line in done.out.splitlines() if " chunk " not in line]
    assert lines == [
        "mesh 2 layers",
        "tags 1",
        '  0 "S"',
        'layer 0 "a \\"b\\"" flags 0 pivot 0 0 0 parent none',
        "points 2",
        "  0 0 -0 0.10000000149011612",
        "  1 1 2 3.000000060122632e+20",
        "polygons 2",
        '  0 FACE 0 1 SURF "S"',
        "  1 CURV 1 0",
        'map WGHT "W" dimension 1 values 1',
        "  1 0.5",
        'map PICK "P" dimension 0 values 1',
        "  0",
        'layer 1 "z" flags 0 pivot 0 0 0 parent none',
        "points 0",
        "polygons 0"]
    assert 'tail chunk SURF size 4 sum ' in done.out


def test_dump_tells_unlike_chunks_apart(dastrel):
    plain = (dastrel.folder / "stone.lwo").read_bytes()
    (dastrel.folder / "other.lwo").write_bytes(
        plain.replace(b"COLR\0\x0e\x3e", b"COLR\0\x0e\x3d"))
    one, other = dastrel.dump("stone.lwo"), dastrel.dump("other.lwo")
    assert one != other
    assert len([pair for pair in zip(one.splitlines(), other.splitlines())
                if pair[0] != pair[1]]) == 1


def test_names_that_are_not_utf8_are_shown_by_their_bytes(dastrel):
    write_object(dastrel.folder / "plain.lwo", Layer("xyz"), Layer("abc"))
    data = (dastrel.folder / "plain.lwo").read_bytes()
    data = data.replace(b"xyz", b"\xe9\x01z").replace(b"abc", "é!".encode())
    (dastrel.folder / "plain.lwo").write_bytes(data)
    dump = dastrel.dump("plain.lwo")
    assert 'layer 0 "\\xE9\\x01z" ' in dump
    assert 'layer 1 "é!" ' in dump
    json.loads(dastrel("info", "plain.lwo", "--json").out)
