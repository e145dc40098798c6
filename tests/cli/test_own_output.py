# SPDX-License-Identifier: MIT
"""What `scatter` writes can be read again, whatever ground and model bring together."""

import random
import struct

from make_examples import chunk, index, text


def layer(number=0):
    return chunk(b"LAYR", struct.pack(">HH3f", number, 0, 0.0, 0.0, 0.0) + text(""))


def points(places):
    return chunk(b"PNTS", b"".join(struct.pack(">3f", *place) for place in places))


def polygons(kind, corners):
    return chunk(b"POLS", kind + b"".join(
        struct.pack(">H", len(polygon)) + b"".join(index(point) for point in polygon)
        for polygon in corners))


def tags_of(kind, rows):
    return chunk(b"PTAG", kind + b"".join(index(polygon) + struct.pack(">H", tag)
                                          for polygon, tag in rows))


def vertex_map(kind, name, rows):
    dimension = len(rows[0][1])
    return chunk(b"VMAP", kind + struct.pack(">H", dimension) + text(name) + b"".join(
        index(point) + struct.pack(f">{dimension}f", *values) for point, values in rows))


def write(path, *chunks):
    whole = b"LWO2" + chunk(b"TAGS", text("T")) + b"".join(chunks)
    path.write_bytes(b"FORM" + struct.pack(">I", len(whole)) + whole)


SQUARE = [(0, 0, 0), (0, 0, 10), (10, 0, 10), (10, 0, 0)]
TRIANGLE = [(-0.1, 0, 0), (0, 0.3, 0), (0.1, 0, 0)]


def numbered(letter, number):
    return letter + b"%03d" % number


def ground(path, types=0, kinds=0):
    write(path, layer(), points(SQUARE), polygons(b"FACE", [(0, 1, 2, 3)]),
          *(polygons(numbered(b"T", i), [(0, 1, 2)]) for i in range(types)),
          *(tags_of(numbered(b"K", i), [(0, 0)]) for i in range(kinds)))


def model(path, kind=b"SUBD", tag=b"PART"):
    write(path, layer(), points(TRIANGLE), polygons(kind, [(0, 1, 2)]), tags_of(tag, [(0, 0)]))


def scatter(dastrel, *options):
    return dastrel("scatter", "ground.lwo", "model.lwo", "-o", "out.lwo", "--clone-num", 5,
                   *options)


def assert_read_again(dastrel, done):
    assert done.status == 0, done
    again = dastrel("info", "out.lwo")
    assert again.status == 0, again


def test_a_33rd_type_of_polygons_and_kind_of_tags_can_be_read(dastrel):
    ground(dastrel.folder / "ground.lwo", types=31, kinds=32)
    model(dastrel.folder / "model.lwo")
    assert_read_again(dastrel, scatter(dastrel))


def test_more_types_than_a_layer_holds_are_refused_before_work(dastrel):
    ground(dastrel.folder / "ground.lwo", types=255)
    model(dastrel.folder / "model.lwo", kind=b"T007")
    assert_read_again(dastrel, scatter(dastrel))
    before = (dastrel.folder / "out.lwo").read_bytes()
    model(dastrel.folder / "model.lwo", kind=b"SUBD")
    done = scatter(dastrel)
    assert done.status == 5, done
    assert "257 types of polygons together, more than the 256" in done.err
    assert (dastrel.folder / "out.lwo").read_bytes() == before


def test_more_kinds_of_tags_than_a_layer_holds_are_refused_before_work(dastrel):
    write(dastrel.folder / "ground.lwo", layer(), points(SQUARE),
          polygons(b"FACE", [(0, 1, 2, 3)] * 2),
          *(tags_of(numbered(b"K", i), [(1, 0)]) for i in range(256)))
    model(dastrel.folder / "model.lwo", tag=b"K255")
    assert_read_again(dastrel, scatter(dastrel))
    model(dastrel.folder / "model.lwo")
    done = scatter(dastrel)
    assert done.status == 5, done
    assert "257 kinds of polygon tags together, more than the 256" in done.err


def test_a_map_for_nearly_every_clone_can_be_read(dastrel):
    ground(dastrel.folder / "ground.lwo")
    write(dastrel.folder / "model.lwo", layer(), points(TRIANGLE),
          polygons(b"FACE", [(0, 1, 2)]), tags_of(b"PART", [(0, 0)]),
          vertex_map(b"MORF", "bend", [(0, (0.0, 0.1, 0.0))]))
    assert_read_again(dastrel, scatter(dastrel, "--clone-num", 3001,
                                       "--auto-morph-maps", 3000))


def test_many_maps_of_few_points_behind_a_large_ground_can_be_read(dastrel):
    count = 200000
    write(dastrel.folder / "ground.lwo", layer(),
          chunk(b"PNTS", bytes(12 * count) + b"".join(struct.pack(">3f", *p) for p in SQUARE)),
          polygons(b"FACE", [tuple(count + i for i in range(4))]))
    write(dastrel.folder / "model.lwo", layer(), points(TRIANGLE),
          polygons(b"FACE", [(0, 1, 2)]),
          *(vertex_map(b"WGHT", f"w{i}", [(0, (1.0,))]) for i in range(1500)))
    assert_read_again(dastrel, scatter(dastrel))


def any_layer(draw, places, number):
    """A layer of odd blocks: types and kinds from small sets, rows in any order, empty ones too."""
    count = draw.choice([1, 1, 2, 5])
    yield layer(number)
    yield points(places)
    yield polygons(b"FACE", [tuple(range(len(places)))])
    for _ in range(count):
        some = [tuple(draw.randrange(len(places)) for _ in range(draw.randint(1, 5)))
                for _ in range(draw.randint(0, 4))]
        yield polygons(draw.choice([b"FACE", b"PTCH", b"CURV", b"BONE", b"X\x01Y "]), some)
        if some:
            yield tags_of(draw.choice([b"SURF", b"PART", b"COLR", b"SMGP"]),
                          [(draw.randrange(len(some)), 0) for _ in range(draw.randint(0, 4))])
        dimension = draw.randint(0, 3)
        rows = [(draw.randrange(len(places)), tuple(draw.random() for _ in range(dimension)))
                for _ in range(draw.randint(1, 4))]
        yield vertex_map(draw.choice([b"WGHT", b"MORF", b"TXUV", b"PICK"]),
                         draw.choice(["", "a", "bb"]), rows)


def test_whatever_scatter_accepts_info_reads(dastrel):
    accepted = 0
    for seed in range(25):
        draw = random.Random(seed)
        write(dastrel.folder / "ground.lwo", *any_layer(draw, SQUARE, 0))
        write(dastrel.folder / "model.lwo", *any_layer(draw, TRIANGLE, 0),
              *any_layer(draw, TRIANGLE, draw.randint(0, 1)))
        done = scatter(dastrel, "--force")
        if done.status == 0:
            accepted += 1
            again = dastrel("info", "out.lwo")
            assert again.status == 0, f"seed {seed}: {again}"
    assert accepted >= 10
