#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the example objects beside this script: terrain.lwo, tree.lwo and stone.lwo.

Uses the standard library alone, and only arithmetic whose result is the same on every machine
(sums, products, quotients, square roots), so that the files come out the same byte for byte.

    python3 make_examples.py [FOLDER]
"""

import math
import pathlib
import struct
import sys

# Corners of a regular hexagon, without trigonometry.
HALF_ROOT_3 = math.sqrt(3.0) / 2.0
HEXAGON = [(1.0, 0.0), (0.5, HALF_ROOT_3), (-0.5, HALF_ROOT_3),
           (-1.0, 0.0), (-0.5, -HALF_ROOT_3), (0.5, -HALF_ROOT_3)]


def text(value):
    """A text as the format stores it: ended by a null, of even length."""
    raw = value.encode("utf-8") + b"\0"
    return raw + b"\0" * (len(raw) % 2)


def index(value):
    """An index of variable width."""
    if value < 0xFF00:
        return struct.pack(">H", value)
    return struct.pack(">I", 0xFF000000 + value)


def chunk(name, body):
    return name + struct.pack(">I", len(body)) + body + b"\0" * (len(body) % 2)


def subchunk(name, body):
    return name + struct.pack(">H", len(body)) + body + b"\0" * (len(body) % 2)


class Object:
    """One layer with its surfaces and vertex maps."""

    def __init__(self, name):
        self.name = name
        self.points = []
        self.polygons = []  # (points, surface)
        self.surfaces = []  # (name, (red, green, blue))
        self.maps = []  # (type, name, {point: values})

    def add_surface(self, name, colour):
        self.surfaces.append((name, colour))
        return len(self.surfaces) - 1

    def add_point(self, x, y, z):
        self.points.append((x, y, z))
        return len(self.points) - 1

    def add_polygon(self, surface, *points):
        self.polygons.append((points, surface))

    def add_map(self, kind, name):
        values = {}
        self.maps.append((kind, name, values))
        return values

    def write(self, path):
        single = [struct.unpack(">3f", struct.pack(">3f", *point)) for point in self.points]
        box = [pick(point[axis] for point in single) for pick in (min, max) for axis in range(3)]
        parts = [
            chunk(b"TAGS", b"".join(text(name) for name, _ in self.surfaces)),
            chunk(b"LAYR", struct.pack(">HH3f", 0, 0, 0.0, 0.0, 0.0) + text(self.name)),
            chunk(b"PNTS", b"".join(struct.pack(">3f", *point) for point in self.points)),
            chunk(b"BBOX", struct.pack(">6f", *box)),
        ]
        for kind, name, values in self.maps:
            dimension = len(next(iter(values.values())))
            body = kind + struct.pack(">H", dimension) + text(name)
            for point in sorted(values):
                body += index(point) + struct.pack(f">{dimension}f", *values[point])
            parts.append(chunk(b"VMPA", struct.pack(">II", 0, 6)))
            parts.append(chunk(b"VMAP", body))
        body = b"FACE"
        tags = b"SURF"
        for number, (points, surface) in enumerate(self.polygons):
            body += struct.pack(">H", len(points)) + b"".join(index(point) for point in points)
            tags += index(number) + struct.pack(">H", surface)
        parts.append(chunk(b"POLS", body))
        parts.append(chunk(b"PTAG", tags))
        for name, colour in self.surfaces:
            parts.append(chunk(b"SURF", text(name) + text("")
                               + subchunk(b"COLR", struct.pack(">3f", *colour) + index(0))
                               + subchunk(b"DIFF", struct.pack(">f", 1.0) + index(0))))
        whole = b"LWO2" + b"".join(parts)
        path.write_bytes(b"FORM" + struct.pack(">I", len(whole)) + whole)


def bump(x, z, centre_x, centre_z, height, width):
    """A round hill that fades out on all sides."""
    square = ((x - centre_x) ** 2 + (z - centre_z) ** 2) / (width * width)
    return height / ((1.0 + square) * (1.0 + square))


def make_terrain():
    """A square of 40 by 40 metres with three hills and a hollow; steep flanks are of rock.

    The weight map Density is above 0 on two meadows, where clones may crowd, and below 0 around the
    hollow, where they should not stand."""
    cells = 40
    terrain = Object("terrain")
    grass = terrain.add_surface("Grass", (0.35, 0.5, 0.2))
    rock = terrain.add_surface("Rock", (0.5, 0.48, 0.45))
    density = terrain.add_map(b"WGHT", "Density")

    def height(x, z):
        return (bump(x, z, -9.0, 8.0, 7.0, 9.0) + bump(x, z, 10.0, 9.0, 5.0, 5.0)
                + bump(x, z, 6.0, -10.0, 3.5, 10.0) - bump(x, z, -8.0, -9.0, 2.0, 6.0))

    for row in range(cells + 1):
        for column in range(cells + 1):
            x = column - cells / 2.0
            z = row - cells / 2.0
            point = terrain.add_point(x, height(x, z), z)
            weight = (bump(x, z, 8.0, -8.0, 1.6, 9.0) + bump(x, z, -14.0, 2.0, 1.2, 7.0)
                      - bump(x, z, -8.0, -9.0, 2.4, 9.0))
            density[point] = (max(-1.0, min(1.0, weight)),)
    for row in range(cells):
        for column in range(cells):
            first = row * (cells + 1) + column
            corners = (first, first + cells + 1, first + cells + 2, first + 1)
            heights = [terrain.points[corner][1] for corner in corners]
            steep = max(heights) - min(heights) > 0.75
            terrain.add_polygon(rock if steep else grass, *corners)
    return terrain


def make_tree():
    """A fir of five metres: a trunk and three skirts of needles, the upper one with snow.

    Its maps: texture coordinates on every point, the weight map Tips on the rims alone, and two
    relative morphs, Wind (the whole tree bends) and Droop (only the rims sink)."""
    tree = Object("tree")
    bark = tree.add_surface("Bark", (0.35, 0.25, 0.15))
    needles = tree.add_surface("Needles", (0.1, 0.3, 0.15))
    snow = tree.add_surface("Snow", (0.9, 0.92, 0.95))
    texture = tree.add_map(b"TXUV", "TreeTexture")
    tips = tree.add_map(b"WGHT", "Tips")
    wind = tree.add_map(b"MORF", "Wind")
    droop = tree.add_map(b"MORF", "Droop")
    full_height = 5.0

    def add(x, y, z, u):
        point = tree.add_point(x, y, z)
        texture[point] = (u, y / full_height)
        bend = (y / full_height) ** 2
        wind[point] = (0.8 * bend, -0.1 * bend, 0.0)
        return point

    def ring(radius, y):
        return [add(radius * x, y, radius * z, corner / 6.0)
                for corner, (x, z) in enumerate(HEXAGON)]

    def side(surface, lower, upper):
        for corner in range(6):
            following = (corner + 1) % 6
            tree.add_polygon(surface, lower[corner], upper[corner], upper[following],
                             lower[following])

    def skirt(surface, radius, bottom, top):
        rim = ring(radius, bottom)
        peak = add(0.0, top, 0.0, 0.5)
        for corner in range(6):
            tree.add_polygon(surface, rim[corner], peak, rim[(corner + 1) % 6])
        tree.add_polygon(surface, *rim)
        for point in rim:
            tips[point] = (bottom / full_height,)
            droop[point] = (0.0, -0.25 * radius, 0.0)

    side(bark, ring(0.18, 0.0), ring(0.12, 1.2))
    skirt(needles, 1.3, 0.9, 3.0)
    skirt(needles, 1.0, 2.1, 4.1)
    skirt(snow, 0.7, 3.3, full_height)
    return tree


def make_stone():
    """A rough stone, half a metre across and sunk a little below the ground."""
    stone = Object("stone")
    surface = stone.add_surface("Stone", (0.45, 0.43, 0.4))
    golden = (1.0 + math.sqrt(5.0)) / 2.0
    corners = [(-1, golden, 0), (1, golden, 0), (-1, -golden, 0), (1, -golden, 0),
               (0, -1, golden), (0, 1, golden), (0, -1, -golden), (0, 1, -golden),
               (golden, 0, -1), (golden, 0, 1), (-golden, 0, -1), (-golden, 0, 1)]
    faces = [(0, 11, 5), (0, 5, 1), (0, 1, 7), (0, 7, 10), (0, 10, 11),
             (1, 5, 9), (5, 11, 4), (11, 10, 2), (10, 7, 6), (7, 1, 8),
             (3, 9, 4), (3, 4, 2), (3, 2, 6), (3, 6, 8), (3, 8, 9),
             (4, 9, 5), (2, 4, 11), (6, 2, 10), (8, 6, 7), (9, 8, 1)]
    middles = {}

    def middle(a, b):
        key = (min(a, b), max(a, b))
        if key not in middles:
            corners.append(tuple((corners[a][axis] + corners[b][axis]) / 2.0 for axis in range(3)))
            middles[key] = len(corners) - 1
        return middles[key]

    fine = []
    for a, b, c in faces:
        ab, bc, ca = middle(a, b), middle(b, c), middle(c, a)
        fine += [(a, ab, ca), (ab, b, bc), (ca, bc, c), (ab, bc, ca)]
    state = 12345
    for x, y, z in corners:
        state = (state * 1103515245 + 12345) % 2 ** 31
        radius = 0.2 + 0.1 * (state / 2 ** 31)
        scale = radius / math.sqrt(x * x + y * y + z * z)
        stone.add_point(x * scale * 1.2, y * scale * 0.7 + 0.1, z * scale)
    for face in fine:
        stone.add_polygon(surface, *outward(stone.points, face))
    return stone


def outward(points, face):
    """The corners in the order from which the normal points away from the stone's middle."""
    a, b, c = (points[corner] for corner in face)
    first = [b[axis] - a[axis] for axis in range(3)]
    second = [c[axis] - a[axis] for axis in range(3)]
    normal = (first[1] * second[2] - first[2] * second[1],
              first[2] * second[0] - first[0] * second[2],
              first[0] * second[1] - first[1] * second[0])
    away = (a[0], a[1] - 0.1, a[2])
    faces_out = sum(normal[axis] * away[axis] for axis in range(3)) > 0.0
    return face if faces_out else (face[0], face[2], face[1])


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent)
    for made in (make_terrain(), make_tree(), make_stone()):
        path = folder / (made.name + ".lwo")
        made.write(path)
        print(f"{path}: {len(made.points)} points, {len(made.polygons)} polygons, "
              f"{path.stat().st_size} bytes")


if __name__ == "__main__":
    main()
