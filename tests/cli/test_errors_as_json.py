# SPDX-License-Identifier: MIT
"""Errors as JSON on standard output, beside the words on standard error."""

import json
import resource
import struct

import pytest


def error_of(done):
    """The error object, which has to agree with the status and the words."""
    told = json.loads(done.out)
    assert told["schema"] == 1 and told["program"].startswith("dastrel ")
    error = told["error"]
    assert sorted(error) == ["file", "message", "place", "status"]
    assert error["status"] == done.status
    for line in error["message"].split("\n"):
        assert line in done.err
    return error


SCATTER = ["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--json"]


@pytest.mark.parametrize("call, status, message, file, place", [
    (["scatter", "--json"], 2, "names no GROUND and no MODEL", None, None),
    (["scatter", "--json", "--clons", "3"], 2, "unknown option '--clons'", None, None),
    ([*SCATTER[:4], "tree.lwo", "--json"], 2, "-o: tree.lwo is the same file as the input", "tree.lwo",
     "-o"),
    ([*SCATTER, "--seed"], 2, "--seed: needs a value", None, "--seed"),
    ([*SCATTER, "--seed", "x"], 2, "--seed: 'x' is not a whole number", None, "--seed"),
    ([*SCATTER, "--density-wg", "Gras"], 2, "--density-wg", None, "--density-wg"),
    ([*SCATTER, "--settings", "wrong.json"], 2, "wrong.json: line 2: unknown setting", "wrong.json", "line 2"),
    ([*SCATTER, "--settings", "no.json"], 3, "no.json: the settings cannot be read", "no.json",
     None),
    (["scatter", "no.lwo", *SCATTER[2:]], 3, "no.lwo: cannot be opened", "no.lwo", None),
    (["scatter", "cut.lwo", *SCATTER[2:]], 3, "cut.lwo: chunk ", "cut.lwo", "chunk "),
    (["info", "--json", "terrain.lwo", "cut.lwo"], 3, "cut.lwo: chunk ", "cut.lwo", "chunk "),
    ([*SCATTER[:3], "-o", "no/out.lwo", "--json"], 5, "no/out.lwo", "no/out.lwo", None),
    ([*SCATTER, "--picture", "no/out.png"], 5, "no/out.png", "no/out.png", None),
    ([*SCATTER, "--clone-num", "200000000"], 5, "out.lwo: ", "out.lwo", None),
    ([*SCATTER, "--module", "no.p"], 4, "no.p: there is no such module file", "no.p", None),
    ([*SCATTER, "--module", "tree.lwo"], 4, "tree.lwo: ", "tree.lwo", "open"),
])
def test_an_error_is_told_as_an_object(dastrel, call, status, message, file, place):
    (dastrel.folder / "wrong.json").write_text('{\n  "sed": 7\n}\n')
    (dastrel.folder / "cut.lwo").write_bytes((dastrel.folder / "tree.lwo").read_bytes()[:100])
    done = dastrel(*call)
    error = error_of(done)
    assert done.status == status
    assert message in error["message"]
    assert error["file"] == file or (file and error["file"].endswith("/" + file))
    assert error["place"] == place or (place and error["place"].startswith(place))


def test_a_refusal_is_told_with_all_its_lines(dastrel):
    done = dastrel(*SCATTER, "--slope-limits", "--slope-min", "90")
    error = error_of(done)
    assert done.status == 1
    lines = error["message"].split("\n")
    assert lines[:2] == ["Change slope angle settings", "There are no valid polys to clone on."]
    assert lines[2].startswith("the ground's polygons slope ")


@pytest.mark.parametrize("behaviour, place", [
    ("startup exit", "startup"), ("run abort", "run"), ("run give the edit up", "run"),
])
def test_a_module_that_fails_is_told(dastrel, misbehaving, behaviour, place):
    done = dastrel(*SCATTER, "--module", misbehaving, environment={"MISBEHAVIOUR": behaviour})
    error = error_of(done)
    assert done.status == 4
    assert (error["file"], error["place"]) == (str(misbehaving), place)


def test_a_result_stays_the_only_object(dastrel, misbehaving):
    done = dastrel(*SCATTER, "--module", misbehaving,
                   environment={"MISBEHAVIOUR": "shutdown exit"})
    assert done.status == 4
    assert "error" not in json.loads(done.out)


def test_without_json_nothing_goes_to_standard_output(dastrel):
    for call in (["scatter"], ["info", "no.lwo"], SCATTER[:3], ["scater", "--json"],
                 ["dump", "--json", "no.lwo"]):
        done = dastrel(*call)
        assert (done.status in (2, 3), done.out) == (True, "")


@pytest.mark.parametrize("more", [[], ["-o", "./terrain.lwo"], ["--seed", "1"]])
def test_a_file_that_is_kept_from_the_summary_is_kept_from_the_error(dastrel, more):
    before = (dastrel.folder / "tree.lwo").read_bytes()
    with open(dastrel.folder / "tree.lwo", "ab") as standard_output:
        done = dastrel(*SCATTER, *more, stdout=standard_output)
    assert done.status == 2
    assert "--json: standard output is the same file as the input tree.lwo" in done.err
    assert (dastrel.folder / "tree.lwo").read_bytes() == before


def test_names_that_json_cannot_hold(dastrel):
    done = dastrel("info", "--json", b'a"b\\c\x1b\n\xff\xc3\xa4\xe2\x82'.decode(
        "utf-8", "surrogateescape"))
    assert done.status == 3
    assert json.loads(done.out)["error"]["file"] == 'a"b\\c\x1b\n\ufffdä\ufffd\ufffd'


def test_a_summary_is_a_settings_file(dastrel):
    options = ["--clone-num", "7", "--seed", "-3", "--h-min", "-180", "--jitter", "0.1",
               "--density-wg", "Density", "--slope-limits", "--p-max", "0.1rad"]
    first = dastrel(*SCATTER, "--clock", "5", *options)
    assert first.status == 0
    bytes_of_first = (dastrel.folder / "out.lwo").read_bytes()
    (dastrel.folder / "run.json").write_bytes(first.raw)
    second = dastrel(*SCATTER, "--clock", "5", "--settings", "run.json")
    assert second.status == 0, second
    assert json.loads(second.out)["settings"] == json.loads(first.out)["settings"]
    assert (dastrel.folder / "out.lwo").read_bytes() == bytes_of_first


def test_an_error_object_is_no_settings_file(dastrel):
    failed = dastrel("scatter", "--json")
    (dastrel.folder / "run.json").write_bytes(failed.raw)
    done = dastrel(*SCATTER, "--settings", "run.json")
    assert done.status == 2 and "unknown setting 'error'" in done.err


@pytest.fixture
def limited(dastrel, sanitized):
    """Runs a call with little more memory than the program needs to start."""
    if sanitized:
        pytest.skip("a sanitizer needs all address space")

    def limit_to(limit):
        return lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit))

    limit = 16 << 20
    while dastrel("--version", preexec_fn=limit_to(limit)).status != 0:
        limit += 4 << 20
    return lambda *call: dastrel(*call, preexec_fn=limit_to(limit + (4 << 20)))


@pytest.fixture
def large(dastrel):
    layer = b"LAYR" + struct.pack(">IHH3fH", 18, 0, 0, 0.0, 0.0, 0.0, 0)
    points = b"PNTS" + struct.pack(">I", 24 << 20) + bytes(24 << 20)
    (dastrel.folder / "large.lwo").write_bytes(
        b"FORM" + struct.pack(">I", 4 + len(layer + points)) + b"LWO2" + layer + points)
    assert dastrel("info", "large.lwo").status == 0
    return "large.lwo"


def test_memory_that_ends_is_told(limited, large):
    done = limited("info", "--json", large)
    assert done.status == 4, done
    assert error_of(done)["message"] == "out of memory; use smaller files"


@pytest.mark.parametrize("verb, more, advice", [
    ("info", [], "use smaller files"),
    ("dump", [], "use a smaller file"),
    ("render", ["-o", "out.png"], "use smaller files, or make a smaller picture with --size"),
    ("scatter", ["tree.lwo", "-o", "out.lwo"],
     "make fewer clones, or use a model with fewer points")])
def test_out_of_memory_advice_of_each_verb(limited, large, verb, more, advice):
    done = limited(verb, large, *more)
    assert (done.status, done.err) == (4, f"dastrel: {verb}: out of memory; {advice}\n")
