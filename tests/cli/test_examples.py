# SPDX-License-Identifier: MIT
"""The examples are what their script makes, and hold what the documents say of them."""

import re
import shlex
import subprocess
import sys

from conftest import EXAMPLES, ROOT
from objects import Mesh


def test_the_script_makes_the_examples_byte_for_byte(tmp_path):
    subprocess.run([sys.executable, str(EXAMPLES / "make_examples.py"), str(tmp_path)], check=True,
                   stdout=subprocess.DEVNULL)
    made = sorted(path.name for path in tmp_path.iterdir())
    assert made == ["stone.lwo", "terrain.lwo", "tree.lwo"]
    for name in made:
        assert (tmp_path / name).read_bytes() == (EXAMPLES / name).read_bytes()
        assert (EXAMPLES / name).stat().st_size < 200_000


def test_the_terrain_has_two_surfaces_and_a_density_of_both_signs(dastrel):
    terrain = Mesh(dastrel.dump("terrain.lwo"))
    assert {surface for _, _, surface in terrain.polygons()} == {"Grass", "Rock"}
    weights = [value for (value,) in terrain.map("WGHT", "Density").values()]
    assert min(weights) == -1.0
    assert max(weights) == 1.0


def test_the_tree_has_partial_maps_and_two_morphs(dastrel):
    tree = Mesh(dastrel.dump("tree.lwo"))
    assert {surface for _, _, surface in tree.polygons()} == {"Bark", "Needles", "Snow"}
    assert len(tree.map("TXUV", "TreeTexture")) == 33
    assert len(tree.map("WGHT", "Tips")) == 18
    assert len(tree.map("MORF", "Wind")) == 33
    assert len(tree.map("MORF", "Droop")) == 18


def test_the_upright_forest_of_the_readme_stands_upright(dastrel):
    """The heights of a clone's points are those of the tree, but for the clone's size."""
    readme = (ROOT / "README.md").read_text()
    call = re.search(r"An even forest, upright.*?```\n(.*?)```", readme, re.S).group(1)
    words = shlex.split(call.replace("\\\n", " ").replace("examples/", ""))[1:]
    assert dastrel(*words).status == 0
    tree = sorted(point[1] for point in Mesh(dastrel.dump("tree.lwo")).points())
    points = Mesh(dastrel.dump("even.lwo")).points()[1681:]
    assert len(points) == 300 * len(tree)
    for first in range(0, len(points), len(tree)):
        heights = sorted(point[1] for point in points[first:first + len(tree)])
        size = (heights[-1] - heights[0]) / (tree[-1] - tree[0])
        for height, own in zip(heights, tree):
            assert abs(height - heights[0] - size * (own - tree[0])) < 1e-4
