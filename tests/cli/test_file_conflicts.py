# SPDX-License-Identifier: MIT
"""Outputs that are one of the inputs, or the same file as another output, are refused."""

import json
import os
import shutil

import pytest

SCATTER = ["scatter", "terrain.lwo", "tree.lwo", "--clock", "1"]


def contents(folder):
    return {path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}


def refusal(dastrel, *call, **options):
    """The first line of a refusal that changes no file."""
    before = contents(dastrel.folder)
    done = dastrel(*call, **options)
    assert done.status == 2, done
    assert done.out == ""
    assert contents(dastrel.folder) == before
    return done.err.splitlines()[0].removeprefix(f"dastrel: {call[0]}: ")


@pytest.fixture
def spellings(dastrel):
    """Names that lead to tree.lwo: links of both kinds, and ways through folders."""
    folder = dastrel.folder
    (folder / "soft.lwo").symlink_to("tree.lwo")
    (folder / "chain.lwo").symlink_to("soft.lwo")
    os.link(folder / "tree.lwo", folder / "hard.lwo")
    (folder / "sub").mkdir()
    (folder / "here").symlink_to(".")
    return ["tree.lwo", "./tree.lwo", "sub/../tree.lwo", "here/tree.lwo", str(folder / "tree.lwo"),
            "soft.lwo", "chain.lwo", "hard.lwo"]


def test_an_output_that_is_an_input_is_refused_however_it_is_spelled(dastrel, spellings):
    for name in spellings:
        assert refusal(dastrel, *SCATTER, "-o", name) == (
            f"-o: {name} is the same file as the input tree.lwo and would replace it; name another "
            "file, or add --force"), name


def test_every_input_is_protected(dastrel):
    (dastrel.folder / "meadow").write_text("{}")
    (dastrel.folder / "scene.lwo").write_bytes((dastrel.folder / "terrain.lwo").read_bytes())
    three = ["scatter", "terrain.lwo", "tree.lwo", "stone.lwo"]
    for name in three[1:]:
        assert f"the same file as the input {name}" in refusal(dastrel, *three, "-o", name)
    assert "the same file as the input scene.lwo" in refusal(
        dastrel, "scatter", "scene.lwo", "--foreground", "1", "-o", "scene.lwo")
    assert "the same file as the settings file meadow" in refusal(
        dastrel, *SCATTER, "--settings", "meadow", "-o", "./meadow")
    (dastrel.folder / "picture.png").symlink_to("tree.lwo")
    assert refusal(dastrel, *SCATTER, "-o", "out.lwo", "--picture", "picture.png").startswith(
        "--picture: picture.png is the same file as the input tree.lwo")


def test_an_input_of_another_ending_is_protected_too(dastrel):
    (dastrel.folder / "s.json").write_text("{}")
    assert refusal(dastrel, *SCATTER, "--settings", "./s.json", "-o", "s.json").startswith(
        "-o: s.json is the same file as the settings file ./s.json and would replace it")
    assert refusal(dastrel, *SCATTER, "-o", "out.lwo", "--picture", "./tree.lwo").startswith(
        "--picture: ./tree.lwo is the same file as the input tree.lwo and would replace it")
    assert refusal(dastrel, *SCATTER, "-o", "out.lwo", "--picture", "./out.lwo") == (
        "--picture: ./out.lwo is the same file as out.lwo of -o; name another file")
    assert refusal(dastrel, "render", "terrain.lwo", "-o", "./terrain.lwo").startswith(
        "-o: ./terrain.lwo is the same file as the input terrain.lwo and would replace it")
    shutil.copy(os.path.join(os.path.dirname(dastrel.path), "dastrel.p"), dastrel.folder)
    assert "dastrel.p is the same file as the module " in refusal(
        dastrel, *SCATTER, "-o", "./dastrel.p", "--module", "dastrel.p")


def test_an_ending_that_is_not_written_stays_an_error_of_the_output(dastrel):
    done = dastrel("render", "terrain.lwo", "-o", "./terrain.lwo", "--force")
    assert done.status == 5 and "./terrain.lwo: is in a format that is not written" in done.err


@pytest.mark.parametrize("more, file, place", [
    (["-o", "./tree.lwo"], "./tree.lwo", "-o"),
    (["-o", "out.lwo", "--picture", "terrain.lwo"], "terrain.lwo", "--picture"),
    (["-o", "out.lwo", "--picture", "./out.lwo"], "./out.lwo", "--picture")])
def test_the_error_object_names_the_file(dastrel, more, file, place):
    done = dastrel(*SCATTER, *more, "--json")
    error = json.loads(done.out)["error"]
    assert (error["status"], error["file"], error["place"]) == (2, file, place)


def test_the_module_is_protected(dastrel):
    shutil.copy(os.path.join(os.path.dirname(dastrel.path), "dastrel.p"), dastrel.folder)
    (dastrel.folder / "out.lwo").symlink_to("dastrel.p")
    assert "is the same file as the module " in refusal(
        dastrel, *SCATTER, "-o", "out.lwo", "--module", "dastrel.p")


def test_a_file_on_standard_input_is_protected(dastrel):
    with open(dastrel.folder / "tree.lwo", "rb") as tree:
        done = dastrel.start("scatter", "terrain.lwo", "-", "-o", "tree.lwo", stdin=tree)
        assert done.wait(timeout=60) == 2


def test_standard_output_that_is_an_input_is_refused(dastrel):
    before = contents(dastrel.folder)
    with open(dastrel.folder / "tree.lwo", "ab") as tree:
        done = dastrel(*SCATTER, "-o", "-", stdout=tree)
    assert done.status == 2, done
    assert "-o: standard output is the same file as the input tree.lwo" in done.err
    assert contents(dastrel.folder) == before


def test_force_replaces_an_input(dastrel):
    assert dastrel(*SCATTER, "-o", "forest.lwo").status == 0
    assert dastrel(*SCATTER, "-o", "terrain.lwo", "--force").status == 0
    assert (dastrel.folder / "terrain.lwo").read_bytes() == (
        dastrel.folder / "forest.lwo").read_bytes()


@pytest.mark.parametrize("force", [[], ["--force"]])
@pytest.mark.parametrize("first, second", [
    ("out", "out"), ("out", "./out"), ("./out", "out"), ("link", "out"), ("out", "link"),
    ("sub/../out", "out"), ("there", "there"), ("there", "hard"), ("pipe", "./pipe")])
def test_two_outputs_in_one_file_are_refused_also_with_force(dastrel, first, second, force):
    (dastrel.folder / "sub").mkdir()
    (dastrel.folder / "link").symlink_to("sub/../out")  # leads to a file that does not exist
    (dastrel.folder / "there").write_bytes(b"as it was")
    os.link(dastrel.folder / "there", dastrel.folder / "hard")
    os.mkfifo(dastrel.folder / "pipe")
    assert refusal(dastrel, *SCATTER, "-o", first, "--picture", second, *force) == (
        f"--picture: {second} is the same file as {first} of -o; name another file")


def test_two_outputs_on_standard_output_are_refused(dastrel):
    assert "--picture: standard output is the same file as standard output of -o" in refusal(
        dastrel, *SCATTER, "-o", "-", "--picture", "-")
    assert "--picture: /dev/stdout is the same file as standard output of -o" in refusal(
        dastrel, *SCATTER, "-o", "-", "--picture", "/dev/stdout")
    assert "--json: standard output is the same file as /dev/stdout of -o" in refusal(
        dastrel, *SCATTER, "-o", "/dev/stdout", "--json")


def test_devices_may_be_named_several_times(dastrel):
    done = dastrel(*SCATTER, "-o", "/dev/null", "--picture", "/dev/null")
    assert done.status == 0, done


def test_different_files_of_one_name_are_no_conflict(dastrel):
    (dastrel.folder / "sub").mkdir()
    done = dastrel(*SCATTER, "-o", "sub/tree.lwo", "--picture", "sub/tree.png")
    assert done.status == 0, done


def test_a_picture_that_is_an_input_is_refused(dastrel):
    (dastrel.folder / "tree").write_bytes((dastrel.folder / "tree.lwo").read_bytes())
    call = ["render", "tree", "--size", "16x16", "--samples", "1"]
    assert refusal(dastrel, *call, "-o", "./tree") == (
        "-o: ./tree is the same file as the input tree and would replace it; name another file, "
        "or add --force")
    assert dastrel(*call, "-o", "./tree", "--force").status == 0
    assert (dastrel.folder / "tree").read_bytes().startswith(b"\x89PNG")


def test_a_missing_input_is_told_as_missing(dastrel):
    done = dastrel("scatter", "no.lwo", "tree.lwo", "-o", "no.lwo")
    assert done.status == 3, done
    assert "no.lwo: cannot be opened" in done.err
