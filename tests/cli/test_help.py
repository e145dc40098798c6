# SPDX-License-Identifier: MIT
import re

import pytest

VERBS = ["scatter", "render", "settings", "info", "dump", "modules", "apply"]


def test_a_bare_call_shows_the_verbs(dastrel):
    done = dastrel()
    assert done.status == 0
    assert done.err == ""
    for verb in VERBS:
        assert re.search(rf"^  {verb} ", done.out, re.M)


@pytest.mark.parametrize("call", [["--help"], ["-h"], ["help"], ["help", "help"],
                                  ["help", "--help"]])
def test_help_alone_is_the_same_page(dastrel, call):
    assert dastrel(*call).out == dastrel().out


@pytest.mark.parametrize("verb", VERBS)
def test_every_verb_has_help_with_examples(dastrel, verb):
    done = dastrel(verb, "--help")
    assert done.status == 0
    assert done.err == ""
    assert done.out.startswith(f"usage: dastrel {verb}")
    assert re.search(rf"\nexamples\n(?:.*\n)*?  dastrel {verb}", done.out)


@pytest.mark.parametrize("verb", VERBS)
def test_help_verb_and_verb_help_are_the_same(dastrel, verb):
    assert dastrel("help", verb).out == dastrel(verb, "--help").out
    assert dastrel(verb, "-h").out == dastrel(verb, "--help").out


@pytest.mark.parametrize("verb", VERBS)
def test_help_fits_80_columns(dastrel, verb):
    too_long = [line for line in dastrel("help", verb).out.splitlines() if len(line) > 80]
    assert not too_long


def test_scatter_help_says_what_seed_and_clock_decide(dastrel):
    text = " ".join(dastrel("help", "scatter").out.split())
    assert "--seed decides the positions" in text
    assert "The clock decides sizes, rotations and jitter" in text
    assert "with a density map the positions depend on it too" in text


def test_scatter_help_lists_the_exit_statuses(dastrel):
    text = " ".join(dastrel("help", "scatter").out.split())
    for part in ("0 done", "1 refused", "2 wrong usage", "3 an input", "4 the module",
                 "5 the output", "130 interrupted"):
        assert part in text


def test_version_names_program_and_module(dastrel):
    done = dastrel("--version")
    assert done.status == 0
    lines = done.out.splitlines()
    assert lines[0] == "dastrel 1.6.1"
    assert re.fullmatch(r"module /.*/dastrel\.p \(Dastrel, MeshDataEdit\)", lines[1])


def test_unknown_verb_names_the_nearest(dastrel):
    done = dastrel("scater", "a.lwo")
    assert done.status == 2
    assert "dastrel: unknown verb 'scater'; did you mean 'scatter'?" in done.err
    assert "see dastrel --help" in done.err
    assert done.out == ""


def test_unknown_option_names_the_nearest_and_the_help(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--sed", "3")
    assert done.status == 2
    lines = done.err.splitlines()
    assert lines[0] == "dastrel: scatter: unknown option '--sed'; did you mean '--seed'?"
    assert lines[1].startswith("usage: dastrel scatter ")
    assert lines[-1] == "see dastrel scatter --help"
    assert dastrel.files() == ["stone.lwo", "terrain.lwo", "tree.lwo"]


@pytest.mark.parametrize("option, name", [("--clones", "--clones"), ("--clones=500", "--clones"),
                                          ("--count", "--count"), ("-n", "-n"), ("-n500", "-n500")])
def test_other_words_for_the_number_of_clones_are_understood(dastrel, option, name):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", option, "500")
    assert done.status == 2
    assert done.err.splitlines()[0] == (
        f"dastrel: scatter: unknown option '{name}'; did you mean '--clone-num'?")


def test_unknown_option_that_resembles_none_gets_no_suggestion(dastrel):
    done = dastrel("info", "--zzzzzzzz", "tree.lwo")
    assert done.status == 2
    assert done.err.splitlines()[0] == "dastrel: info: unknown option '--zzzzzzzz'"


def test_an_option_without_its_value_is_named(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--seed")
    assert done.status == 2
    assert done.err.splitlines()[0] == "dastrel: scatter: --seed: needs a value"


def test_modules_lists_class_name_user_name_and_condition(dastrel):
    done = dastrel("modules")
    assert done.status == 0
    assert re.search(r"class MeshDataEdit +name Dastrel +user name Dastrel +condition pol",
                     done.out)
