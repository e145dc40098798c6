# SPDX-License-Identifier: MIT
"""Small object files made for a test, and the reading of what `dastrel dump` prints."""

import struct

import make_examples
from make_examples import chunk, index, text


class Layer:
    """Points, polygons (type, points, surface) and maps of one layer."""

    def __init__(self, name="", points=(), polygons=(), maps=()):
        self.name = name
        self.points = points
        self.polygons = polygons
        self.maps = maps  # (type, name, {point: values})


def square(surface="Ground", size=10.0, height=0.0, name="", maps=()):
    """A level square that faces up, its near left corner in the origin."""
    points = [(0.0, height, 0.0), (0.0, height, size), (size, height, size), (size, height, 0.0)]
    return Layer(name, points, [(b"FACE", (0, 1, 2, 3), surface)], maps)


def triangle(surface="Leaf", name="", maps=()):
    """A small upright triangle over the origin."""
    points = [(-0.1, 0.0, 0.0), (0.0, 0.3, 0.0), (0.1, 0.0, 0.0)]
    return Layer(name, points, [(b"FACE", (0, 1, 2), surface)], maps)


def write_object(path, *layers):
    surfaces = []
    for layer in layers:
        for _, _, surface in layer.polygons:
            if surface is not None and surface not in surfaces:
                surfaces.append(surface)
    parts = [chunk(b"TAGS", b"".join(text(name) for name in surfaces))] if surfaces else []
    for number, layer in enumerate(layers):
        parts.append(chunk(b"LAYR", struct.pack(">HH3f", number, 0, 0.0, 0.0, 0.0)
                           + text(layer.name)))
        parts.append(chunk(b"PNTS", b"".join(struct.pack(">3f", *p) for p in layer.points)))
        for kind, name, values in layer.maps:
            dimension = len(next(iter(values.values())))
            rows = b"".join(index(point) + struct.pack(f">{dimension}f", *values[point])
                            for point in sorted(values))
            parts.append(chunk(b"VMAP", kind + struct.pack(">H", dimension) + text(name) + rows))
        parts += polygon_chunks(layer, surfaces)
    for name in surfaces:
        parts.append(chunk(b"SURF", text(name) + text("")))
    whole = b"LWO2" + b"".join(parts)
    path.write_bytes(b"FORM" + struct.pack(">I", len(whole)) + whole)


def polygon_chunks(layer, surfaces):
    """One pair of chunks for each run of polygons of one type."""
    runs = []
    for kind, points, surface in layer.polygons:
        if not runs or runs[-1][0] != kind:
            runs.append((kind, []))
        runs[-1][1].append((points, surface))
    parts = []
    for kind, polygons in runs:
        body = kind
        tags = b"SURF"
        for number, (points, surface) in enumerate(polygons):
            body += struct.pack(">H", len(points)) + b"".join(index(p) for p in points)
            if surface is not None:
                tags += index(number) + struct.pack(">H", surfaces.index(surface))
        parts += [chunk(b"POLS", body), chunk(b"PTAG", tags)]
    return parts


class Mesh:
    """What `dastrel dump` printed, taken apart."""

    def __init__(self, dump):
        self.layers = []
        self.tags = []
        rows = None
        for line in dump.splitlines():
            if line.startswith("  "):
                rows.append(line.split())
                continue
            words = line.split(" ")
            rows = []
            if words[0] == "tags":
                rows = self.tags
            elif words[0] == "layer" and words[1] != "chunk":
                self.layers.append({"points": [], "polygons": [], "maps": {}})
            elif words[0] in ("points", "polygons"):
                rows = self.layers[-1][words[0]]
            elif words[0] == "map":
                rows = self.layers[-1]["maps"].setdefault((words[1], line.split('"')[1]), [])

    def points(self, layer=0):
        return [tuple(float(word) for word in row[1:4]) for row in self.layers[layer]["points"]]

    def polygons(self, layer=0):
        """For each polygon its type, points and surface."""
        result = []
        for row in self.layers[layer]["polygons"]:
            points = []
            for word in row[2:]:
                if not word.isdigit():
                    break
                points.append(int(word))
            surface = row[row.index("SURF") + 1].strip('"') if "SURF" in row else None
            result.append((row[1], tuple(points), surface))
        return result

    def map(self, kind, name, layer=0):
        """{point: values} of a map, or None when there is none."""
        rows = self.layers[layer]["maps"].get((kind, name))
        if rows is None:
            return None
        return {int(row[0]): tuple(float(word) for word in row[1:]) for row in rows}


__all__ = ["Layer", "Mesh", "make_examples", "square", "triangle", "write_object"]
