# SPDX-License-Identifier: MIT
"""Pictures, as a user makes them."""

import json
import os
import pty
import struct
import zlib

import pytest

from objects import Layer, square, triangle, write_object

SMALL = ("--size", "160x90", "--samples", "2")


class Picture:
    """A PNG file of 8 bits for each colour, read with the standard library alone."""

    def __init__(self, raw):
        assert raw[:8] == b"\x89PNG\r\n\x1a\n"
        data = b""
        at = 8
        while at < len(raw):
            size, kind = struct.unpack(">I4s", raw[at:at + 8])
            body = raw[at + 8:at + 8 + size]
            if kind == b"IHDR":
                self.width, self.height, bits, colours = struct.unpack(">IIBB", body[:10])
                assert bits == 8
                self.channels = {2: 3, 6: 4}[colours]
            elif kind == b"IDAT":
                data += body
            at += 12 + size
        self.rows = self.unfiltered(zlib.decompress(data))

    def unfiltered(self, data):
        stride = self.width * self.channels
        rows = []
        before = bytes(stride)
        for y in range(self.height):
            kind = data[y * (stride + 1)]
            row = bytearray(data[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
            for i in range(stride):
                left = row[i - self.channels] if i >= self.channels else 0
                corner = before[i - self.channels] if i >= self.channels else 0
                up = before[i]
                if kind == 1:
                    guess = left
                elif kind == 2:
                    guess = up
                elif kind == 3:
                    guess = (left + up) // 2
                elif kind == 4:
                    guess = min((left, up, corner),
                                key=lambda near, sum=left + up - corner: abs(sum - near))
                else:
                    guess = 0
                row[i] = (row[i] + guess) & 0xFF
            rows.append(bytes(row))
            before = rows[-1]
        return rows

    def pixel(self, x, y):
        return tuple(self.rows[y][x * self.channels:x * self.channels + 3])


def rendered(dastrel, *arguments):
    done = dastrel("render", *arguments, "-o", "out.png")
    assert done.status == 0, done
    return Picture((dastrel.folder / "out.png").read_bytes())


def refused(dastrel, status, *arguments):
    before = dastrel.files()
    done = dastrel("render", *arguments)
    assert done.status == status, done
    assert done.out == ""
    assert dastrel.files() == before
    return done.err.splitlines()[0]


def test_a_picture_has_the_size_asked_for(dastrel):
    picture = rendered(dastrel, "tree.lwo", *SMALL)
    assert (picture.width, picture.height) == (160, 90)
    assert dastrel.files() == ["out.png", "stone.lwo", "terrain.lwo", "tree.lwo"]


def test_the_whole_mesh_is_seen(dastrel):
    picture = rendered(dastrel, "terrain.lwo", "--size", "200x120", "--samples", "4")
    corners = [picture.pixel(x, y) for x in (1, 198) for y in (1, 118)]
    for red, green, blue in corners:  # the neutral backdrop
        assert max(red, green, blue) - min(red, green, blue) < 12
    red, green, blue = picture.pixel(100, 70)  # grass
    assert green > blue + 30


def test_the_closing_line_tells_what_was_done(dastrel):
    done = dastrel("render", "terrain.lwo", "tree.lwo", "-o", "out.png", *SMALL)
    assert done.out == ""
    assert done.err.startswith("terrain.lwo + 1 more -> out.png (160 x 90 pixels, 3,242 triangles, "
                               "2 samples, ")
    done = dastrel("render", "terrain.lwo", "-o", "out.png", *SMALL, "--quiet")
    assert done.err == ""


def test_the_same_call_gives_the_same_bytes(dastrel):
    first = dastrel("render", "tree.lwo", "-o", "a.png", *SMALL)
    assert first.status == 0
    alone = dastrel.start("render", "tree.lwo", "-o", "b.png", *SMALL, "--quiet",
                          preexec_fn=lambda: os.sched_setaffinity(0, {min(os.sched_getaffinity(0))}))
    assert alone.wait(timeout=120) == 0
    assert (dastrel.folder / "a.png").read_bytes() == (dastrel.folder / "b.png").read_bytes()


def test_standard_streams(dastrel):
    tree = (dastrel.folder / "tree.lwo").read_bytes()
    done = dastrel("render", "-", "-o", "-", *SMALL, stdin=tree)
    assert done.status == 0
    assert (Picture(done.raw).width, Picture(done.raw).height) == (160, 90)


@pytest.mark.parametrize("view", ["front", "back", "left", "right", "top", "bottom", "persp"])
def test_views_differ(dastrel, view):
    """A flag at each end of the axes: which ones are seen tells the side."""
    flags = Layer()
    flags.points = [(0, 0, 0), (0, 9, 0), (2, 9, 0), (2, 0, 0),  # faces z: red, at the left
                    (6, 0, 0), (6, 9, 0), (8, 9, 0), (8, 0, 0)]  # blue, at the right
    flags.polygons = [(b"FACE", (0, 1, 2, 3), "Red"), (b"FACE", (4, 5, 6, 7), "Blue")]
    coloured(dastrel.folder / "flags.lwo", flags, {"Red": (1.0, 0.0, 0.0), "Blue": (0.0, 0.0, 1.0)})
    picture = rendered(dastrel, "flags.lwo", "--view", view, *SMALL)
    columns = {"red": [], "blue": []}
    for y in range(picture.height):
        for x in range(picture.width):
            red, _, blue = picture.pixel(x, y)
            if abs(red - blue) > 60:
                columns["red" if red > blue else "blue"].append(x)
    if view in ("left", "right", "top", "bottom"):  # edge on
        assert not columns["red"] and not columns["blue"]
    elif view == "front":
        assert min(columns["red"]) > max(columns["blue"])
    else:
        assert max(columns["red"]) < min(columns["blue"])


def coloured(path, layer, colours):
    """Writes an object whose surfaces have colours."""
    write_object(path, layer)
    raw = path.read_bytes()
    for name, colour in colours.items():
        text = name.encode() + b"\0" * (2 - len(name) % 2)
        plain = b"SURF" + struct.pack(">I", len(text) + 2) + text + b"\0\0"
        assert plain in raw
        part = b"COLR" + struct.pack(">H3fH", 14, *colour, 0)
        raw = raw.replace(plain, b"SURF" + struct.pack(">I", len(text) + 2 + len(part)) + text
                          + b"\0\0" + part)
    path.write_bytes(raw[:4] + struct.pack(">I", len(raw) - 8) + raw[8:])


def test_azimuth_180_is_the_front(dastrel):
    front = rendered(dastrel, "tree.lwo", "--azimuth", "180", "--elevation", "0", *SMALL)
    around = rendered(dastrel, "tree.lwo", "--azimuth", "-180", "--elevation", "0", *SMALL)
    back = rendered(dastrel, "terrain.lwo", "--azimuth", "0", "--elevation", "10", *SMALL)
    other = rendered(dastrel, "terrain.lwo", "--azimuth", "180", "--elevation", "10", *SMALL)
    assert front.rows == around.rows
    assert back.rows != other.rows


def test_zoom_shows_less_and_larger(dastrel):
    def covered(*options):
        picture = rendered(dastrel, "stone.lwo", "--view", "top", *SMALL, *options)
        return sum(1 for y in range(picture.height) for x in range(picture.width)
                   if max(picture.pixel(x, y)) < 165)
    half = covered("--zoom", "0.5")
    whole = covered()
    assert 3.4 < whole / half < 4.6


def test_color_by_draws_a_legend(dastrel):
    plain = rendered(dastrel, "terrain.lwo", "--size", "480x270", "--samples", "1")
    by_map = rendered(dastrel, "terrain.lwo", "--size", "480x270", "--samples", "1", "--color-by",
                      "Density")
    bar = [by_map.pixel(x, 224) for x in range(21, 278)]
    lightness = [0.3 * red + 0.59 * green + 0.11 * blue for red, green, blue in bar]
    assert lightness[-1] > lightness[0] + 100
    assert all(b >= a - 1.5 for a, b in zip(lightness, lightness[1:]))
    assert min(plain.pixel(x, 224) for x in range(21, 278)) != min(bar)


def test_wireframe_darkens(dastrel):
    def sum_of(picture):
        return sum(sum(row) for row in picture.rows)
    assert (sum_of(rendered(dastrel, "stone.lwo", *SMALL, "--wireframe"))
            < sum_of(rendered(dastrel, "stone.lwo", *SMALL)))


def test_objects_with_nothing_in_them_give_a_picture(dastrel):
    write_object(dastrel.folder / "empty.lwo", Layer())
    picture = rendered(dastrel, "empty.lwo", *SMALL)
    reds = [picture.pixel(x, 40)[0] for x in range(160)]
    assert max(reds) - min(reds) <= 2
    write_object(dastrel.folder / "point.lwo", Layer(points=[(1.0, 2.0, 3.0)]))
    picture = rendered(dastrel, "point.lwo", "--size", "601x601", "--samples", "4")
    assert max(picture.pixel(300, 300)) < 110


@pytest.mark.parametrize("arguments, message", [
    ([], "names no file"),
    (["tree.lwo"], "names no picture; add -o PICTURE.png"),
    (["-", "-", "-o", "a.png"], "-: standard input can be read only once"),
    (["tree.lwo", "-o", "a.png", "--size", "12"],
     "--size: '12' is no size; write WIDTHxHEIGHT in pixels, as in 1280x720"),
    (["tree.lwo", "-o", "a.png", "--size", "0x5"],
     "--size: 0 is out of range; it must lie in 1 .. 16384; write WIDTHxHEIGHT in pixels, as in "
     "1280x720"),
    (["tree.lwo", "-o", "a.png", "--size", "16000x16000"],
     "--size: 16000x16000 has too many pixels; a picture may have 67108864"),
    (["tree.lwo", "-o", "a.png", "--view", "frond"],
     "--view: there is no view 'frond'; there are persp, front, back, left, right, top, bottom; did "
     "you mean 'front'?"),
    (["tree.lwo", "-o", "a.png", "--view", "top", "--elevation", "3"],
     "--elevation: --view top looks from one side only; leave one of the two out"),
    (["tree.lwo", "-o", "a.png", "--azimuth", "12,5"],
     "--azimuth: '12,5' is not a number; write 12.5"),
    (["tree.lwo", "-o", "a.png", "--elevation", "91"],
     "--elevation: 91 is out of range; it must lie in -90 .. 90"),
    (["tree.lwo", "-o", "a.png", "--zoom", "0"],
     "--zoom: 0 is out of range; it must lie in 0.01 .. 10000"),
    (["tree.lwo", "-o", "a.png", "--samples", "many"],
     "--samples: 'many' is not a whole number"),
    (["tree.lwo", "-o", "a.png", "--color-by", "Tipps"],
     "--color-by: there is no weight map 'Tipps'; there are 'Tips'; did you mean 'Tips'?"),
    (["stone.lwo", "-o", "a.png", "--color-by", "Tips"],
     "--color-by: there is no weight map 'Tips'; there is none at all"),
])
def test_wrong_usage_is_named(dastrel, arguments, message):
    assert refused(dastrel, 2, *arguments) == f"dastrel: render: {message}"


def test_an_input_that_is_not_there(dastrel):
    assert "nothing.lwo: cannot be opened" in refused(dastrel, 3, "nothing.lwo", "-o", "a.png")


def test_an_output_of_another_format_or_in_no_folder(dastrel):
    assert refused(dastrel, 5, "tree.lwo", "-o", "a.jpg") == (
        "dastrel: render: a.jpg: is in a format that is not written; only PNG pictures (.png) are")
    assert "there is no folder" in refused(dastrel, 5, "tree.lwo", "-o", "no/a.png")


def test_a_full_disk_leaves_the_old_picture(dastrel):
    import resource
    (dastrel.folder / "a.png").write_bytes(b"old")
    running = dastrel.start("render", "tree.lwo", "-o", "a.png", *SMALL, "--quiet",
                            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (500, 500)))
    assert running.wait(timeout=120) == 5
    assert (dastrel.folder / "a.png").read_bytes() == b"old"
    assert dastrel.files() == ["a.png", "stone.lwo", "terrain.lwo", "tree.lwo"]


def test_progress_is_shown_on_a_terminal_and_taken_away(dastrel):
    try:
        ours, theirs = pty.openpty()
    except OSError:
        pytest.skip("no terminal devices on this machine")
    running = dastrel.start("render", "tree.lwo", "-o", "a.png", "--size", "320x200", "--samples",
                            "64", stderr=theirs)
    os.close(theirs)
    said = b""
    while True:
        try:
            block = os.read(ours, 65536)
        except OSError:
            break
        if not block:
            break
        said += block
    assert running.wait(timeout=120) == 0
    assert b"tracing [" in said
    assert b"\r\x1b[Ktree.lwo -> a.png" in said


def test_scatter_makes_a_picture_of_its_result(dastrel):
    write_object(dastrel.folder / "ground.lwo", square())
    write_object(dastrel.folder / "leaf.lwo", triangle())
    done = dastrel("scatter", "ground.lwo", "leaf.lwo", "-o", "out.lwo", "--picture", "out.png",
                   "--clone-num", "5", "--clock", "1", "--json")
    assert done.status == 0, done
    report = json.loads(done.out)
    assert report["picture"] == "out.png"
    assert report["seconds"]["picture"] > 0.0
    assert dastrel("render", "out.lwo", "-o", "again.png").status == 0
    # The file has single precision, the run double: a few pixels may fall to another side.
    rows, again = (b"".join(Picture((dastrel.folder / name).read_bytes()).rows)
                   for name in ("out.png", "again.png"))
    assert len(rows) == 1280 * 720 * 3
    assert sum(abs(a - b) for a, b in zip(rows, again)) < 0.05 * len(rows)


def test_scatter_judges_the_picture_before_it_works(dastrel):
    before = dastrel.files()
    for name, status, reason in (("out.gif", 5, "only PNG pictures"), ("no/out.png", 5, "no folder"),
                                 ("", 2, "--picture: names no file")):
        done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--picture", name)
        assert done.status == status, done
        assert reason in done.err
        assert dastrel.files() == before
