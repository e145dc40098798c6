# SPDX-License-Identifier: MIT
"""Reading takes memory in proportion to the file, whatever it is made of."""

import struct
import subprocess
import sys

import pytest
from make_examples import chunk, index, text

MULTIPLE = 16  # of the file's size, at most: docs/architecture.md
SIZE = 4 << 20  # bytes of a file, about


def layer(number=0, name=""):
    return chunk(b"LAYR", struct.pack(">HH3f", number % 65535, 0, 0.0, 0.0, 0.0) + text(name))


def vertex_map(kind, name="", dimension=1, rows=b""):
    return chunk(b"VMAP", kind + struct.pack(">H", dimension) + text(name) + rows)


def name_of(number):
    """Four characters, different for each number."""
    return struct.pack(">I", number + (1 << 24))


def repeated(part):
    """As many parts of these as make a file."""
    parts = []
    size = 0
    while size < SIZE:
        parts.append(part(len(parts)))
        size += len(parts[-1])
    return parts


def points(count):
    return chunk(b"PNTS", bytes(12 * count))


def polygons(count):
    return chunk(b"POLS", b"FACE" + struct.pack(">HH", 1, 0) * count)


CASES = {
    "empty maps": lambda: [layer(), *repeated(lambda i: vertex_map(name_of(i)))],
    "maps of one point": lambda: [layer(), points(60000), *repeated(
        lambda i: vertex_map(name_of(i), rows=index(i % 60000) + struct.pack(">f", 1.0)))],
    "one map, points far apart": lambda: [layer(), points(1 << 18), vertex_map(
        b"PICK", dimension=0, rows=b"".join(index(i) for i in range(0, 1 << 18, 64)))],
    "empty layers": lambda: repeated(layer),
    "layers with an empty map": lambda: repeated(
        lambda i: layer(i) + vertex_map(b"WGHT")),
    "layers of one point": lambda: repeated(lambda i: layer(i) + points(1)),
    "layers of one polygon": lambda: repeated(lambda i: layer(i) + points(1) + polygons(1)),
    "empty chunks": lambda: [layer(), *repeated(lambda i: chunk(b"XXXX", b""))],
    "chunks of two bytes": lambda: [layer(), *repeated(lambda i: chunk(b"XXXX", b"ab"))],
    "empty polygon chunks": lambda: [layer(), *repeated(lambda i: chunk(b"POLS", b"FACE"))],
    "polygons of one point": lambda: [layer(), points(1), polygons(SIZE // 4)],
    "points": lambda: [layer(), points(SIZE // 12)],
    "kinds of tags on the last polygon": lambda: [
        chunk(b"TAGS", text("t")), layer(), points(1), polygons(SIZE // 4), *(
            chunk(b"PTAG", b"K%03d" % i + index(SIZE // 4 - 1) + struct.pack(">H", 0))
            for i in range(256))],
    "tags": lambda: [chunk(b"TAGS", text("t") * (SIZE // 2)), layer()],
    "corner values": lambda: [layer(), points(1), polygons(1), chunk(
        b"VMAD", b"WGHT" + struct.pack(">H", 0) + text("") + bytes(SIZE // 4 * 4))],
}


# The system counts for a child what its parent had when the child was made: a small parent.
MEASURE = """
import resource, subprocess, sys
done = subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)
sys.exit(done.returncode)
"""


def peak(dastrel, name):
    """Most bytes that `dastrel info` had in memory."""
    done = subprocess.run([sys.executable, "-I", "-S", "-c", MEASURE, dastrel.path, "info", name],
                          cwd=dastrel.folder, env=dastrel.environment, capture_output=True,
                          timeout=120, check=False)
    assert done.returncode == 0, done.stderr.decode()
    return int(done.stdout) * 1024


@pytest.mark.parametrize("case", CASES)
def test_reading_takes_memory_in_proportion_to_the_file(dastrel, sanitized, case):
    if sanitized:
        pytest.skip("sanitizers keep memory of their own")
    whole = b"LWO2" + b"".join(CASES[case]())
    file = dastrel.folder / "many.lwo"
    file.write_bytes(b"FORM" + struct.pack(">I", len(whole)) + whole)
    taken = peak(dastrel, "many.lwo") - peak(dastrel, "stone.lwo")
    assert taken > 0
    print(f"{case}: {taken / len(whole):.1f} times the file's size")
    assert taken <= MULTIPLE * len(whole)
