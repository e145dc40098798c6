# SPDX-License-Identifier: MIT
"""Commands of any module, run on files."""

import re

import pytest

from objects import Mesh


def run(dastrel, module, *files, behaviour="", options=()):
    return dastrel("apply", *files, "-o", "out.lwo", "--module", module, *options,
                   environment={"MISBEHAVIOUR": behaviour})


def point_count(dastrel, name):
    return len(Mesh(dastrel.dump(name)).points())


def test_what_the_command_adds_is_in_the_output(dastrel, misbehaving):
    done = run(dastrel, misbehaving, "terrain.lwo")
    assert done.status == 0, done
    assert done.err == "terrain.lwo + Dastrel -> out.lwo (1 point and 0 polygons added)\n"
    assert point_count(dastrel, "out.lwo") == point_count(dastrel, "terrain.lwo") + 1


def test_further_files_are_in_the_background_and_not_in_the_output(dastrel):
    # Our own command with the values that its panel has by itself: 30 clones of the tree.
    module = re.search(r"^module (.*) \(", dastrel("--version").out, re.M)[1]
    done = dastrel("apply", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--module", module,
                   "--command", "Dastrel")
    assert done.status == 0, done
    assert point_count(dastrel, "out.lwo") == point_count(dastrel, "terrain.lwo") + 30 * 33


def test_a_command_that_refuses_is_told_in_its_own_words(dastrel, misbehaving):
    done = run(dastrel, misbehaving, "terrain.lwo", behaviour="run complain")
    assert done.status == 1, done
    assert done.err == "dastrel: apply: error\ndastrel: apply: second\n"
    assert "out.lwo" not in dastrel.files()


def test_panels_are_answered_with_ok_whatever_is_in_them(dastrel, misbehaving):
    done = run(dastrel, misbehaving, "terrain.lwo", behaviour="run panel float")
    assert done.status == 0, done


def test_a_command_that_changes_nothing_is_told(dastrel, misbehaving):
    done = run(dastrel, misbehaving, "terrain.lwo", behaviour="run finish without a change")
    assert done.status == 0, done
    assert "warning: the command changed nothing\n" in done.err


@pytest.mark.parametrize("behaviour, told", [
    ("run leave the edit open", "the command ended without finishing its edit, which was dropped"),
    ("run throw", "run: thrown"),
])
def test_a_run_that_fails_writes_nothing(dastrel, misbehaving, behaviour, told):
    done = run(dastrel, misbehaving, "terrain.lwo", behaviour=behaviour)
    assert done.status == 4, done
    assert told in done.err
    assert "out.lwo" not in dastrel.files()


@pytest.mark.parametrize("call, told", [
    ([], "names no file"),
    (["terrain.lwo"], "names no output; add -o OUT"),
    (["terrain.lwo", "-o", "out.lwo"], "names no module; add --module MODULE"),
])
def test_what_is_missing_is_named(dastrel, call, told):
    done = dastrel("apply", *call)
    assert done.status == 2
    assert done.err.splitlines()[0] == f"dastrel: apply: {told}"


def test_a_command_that_is_not_there_is_told_with_those_that_are(dastrel, misbehaving):
    done = run(dastrel, misbehaving, "terrain.lwo", options=["--command", "Plant"])
    assert done.status == 2
    assert done.err.splitlines()[0] == (
        f"dastrel: apply: --command: {misbehaving} has no command 'Plant'; it has Dastrel")


def test_an_input_is_not_replaced(dastrel, misbehaving):
    before = (dastrel.folder / "terrain.lwo").read_bytes()
    done = dastrel("apply", "terrain.lwo", "-o", "terrain.lwo", "--module", misbehaving)
    assert done.status == 2
    assert (dastrel.folder / "terrain.lwo").read_bytes() == before
    done = dastrel("apply", "terrain.lwo", "-o", "terrain.lwo", "--module", misbehaving, "--force")
    assert done.status == 0, done
