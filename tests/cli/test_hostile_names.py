# SPDX-License-Identifier: MIT
"""Names from files and words of modules act on nothing that shows them: no control character, no
forged line and no change of direction reaches a terminal, and JSON stays valid and exact."""

import json
import re
import shutil
import struct
import unicodedata

import pytest

from objects import Layer, square, write_object
from make_examples import chunk, text

# Escape sequence, carriage return, line ends with a forged line, backspace, DEL, C1, bidi controls.
EVIL = ("\x1b[2J\r\ndastrel: forged\nwarning: forged\b\x7f\x9b31m\u202e\u2066\u2028\u200f"
        "\u061cé ∆")
SHOWN = (r"\x1B[2J\x0D\x0Adastrel: forged\x0Awarning: forged\x08\x7F\xC2\x9B31m\xE2\x80\xAE"
         r"\xE2\x81\xA6\xE2\x80\xA8\xE2\x80\x8F\xD8\x9Cé ∆")
FILE = f"a{EVIL}.lwo"
FILE_SHOWN = f"a{SHOWN}.lwo"
HARMLESS = {"\n"}


def assert_harmless(shown):
    """Text that a program may write to a terminal: no control character but line ends, and no line
    that somebody else made."""
    decoded = shown.decode("utf-8") if isinstance(shown, bytes) else shown
    for character in set(decoded) - HARMLESS:
        category = unicodedata.category(character)
        direction = unicodedata.bidirectional(character)
        assert category not in ("Cc", "Zl", "Zp"), (character, decoded)
        assert direction not in ("LRE", "RLE", "LRO", "RLO", "PDF", "LRI", "RLI", "FSI", "PDI"), (
            character, decoded)
        assert character not in "\u200e\u200f\u061c", decoded
    assert not re.search("^(dastrel|warning): forged", decoded, re.M), decoded


def named(what):
    return f"{what}{EVIL}"


def shown(what):
    return f"{what}{SHOWN}"


def write_hostile(path, name="", surface="Ground"):
    """A square with hostile names for its layer, surface, maps and picture."""
    layer = square(surface=named(surface), name=named("Layer" + name),
                   maps=[(b"WGHT", named("Weight" + name), {0: (0.5,), 1: (0.25,)}),
                         (b"MORF", named("Morph" + name), {0: (0.0, 1.0, 0.0)})])
    write_object(path, layer)
    data = path.read_bytes()[8:] + chunk(b"CLIP", struct.pack(">I", 1)
                                         + chunk_of_two(b"STIL", text(named("Picture") + ".png")))
    path.write_bytes(b"FORM" + struct.pack(">I", len(data)) + data)


def chunk_of_two(name, body):
    """A chunk within a chunk: its size has two bytes."""
    return name + struct.pack(">H", len(body)) + body + b"\0" * (len(body) % 2)


@pytest.fixture
def hostile(dastrel):
    write_hostile(dastrel.folder / FILE)
    write_hostile(dastrel.folder / f"b{EVIL}.lwo", "2", "Leaf")
    return dastrel


def harmless(program, *arguments, status=0, **options):
    done = program(*arguments, **options)
    assert done.status == status, done
    assert_harmless(done.raw)
    assert_harmless(done.err)
    return done


def test_info_shows_names_as_one_line_each(hostile):
    lines = harmless(hostile, "info", FILE).out.splitlines()
    assert lines[0] == f"{FILE_SHOWN}: 1 layer, 4 points, 1 polygon"
    assert lines[1] == f"  layer 1 '{shown('Layer')}': 4 points, 1 polygon (1 FACE)"
    assert f"    surface '{shown('Ground')}': 1 polygon" in lines
    assert f"    WGHT '{shown('Weight')}': dimension 1, 2 of 4 points have a value" in lines
    assert f"    MORF '{shown('Morph')}': dimension 3, 1 of 4 points has a value" in lines


def test_info_as_json_is_exact(hostile):
    told = json.loads(harmless(hostile, "info", FILE, "--json").out)["files"][0]
    assert told["file"] == FILE
    layer = told["layers"][0]
    assert layer["name"] == named("Layer")
    assert [surface["name"] for surface in layer["surfaces"]] == [named("Ground")]
    assert [one["name"] for one in layer["maps"]] == [named("Weight"), named("Morph")]


def test_dump_is_valid_and_shows_names_as_one_line_each(hostile):
    lines = harmless(hostile, "dump", FILE).out.splitlines()
    assert f'  0 "{shown("Ground")}"' in lines
    assert any(line.startswith(f'layer 0 "{shown("Layer")}" ') for line in lines)
    assert f'map WGHT "{shown("Weight")}" dimension 1 values 2' in lines


# What is no valid UTF-8 is written byte for byte: lone bytes, overlong forms, surrogates, too large
# numbers, and sequences that are cut short.
@pytest.mark.parametrize("name, form", [
    (b"\xe9t\xe9", r"\xE9t\xE9"),
    (b"\xc0\xaf", r"\xC0\xAF"),
    (b"\xe0\x80\xaf", r"\xE0\x80\xAF"),
    (b"\xf0\x80\x80\xaf", r"\xF0\x80\x80\xAF"),
    (b"\xed\xa0\x80\xed\xb0\x80", r"\xED\xA0\x80\xED\xB0\x80"),
    (b"\xf4\x90\x80\x80", r"\xF4\x90\x80\x80"),
    (b"\xf5\x80\x80\x80", r"\xF5\x80\x80\x80"),
    (b"a\xe2\x82", r"a\xE2\x82"),
    (b'\xe2"\\', r'\xE2\"\\'),
    (b"\xed\x9f\xbf\xee\x80\x80\xf4\x8f\xbf\xbf", "\ud7ff\ue000\U0010ffff"),
], ids=lambda value: value.hex() if isinstance(value, bytes) else "")
def test_dump_writes_valid_utf8_only(dastrel, name, form):
    write_object(dastrel.folder / "names.lwo", Layer("x" * len(name)))
    data = (dastrel.folder / "names.lwo").read_bytes()
    (dastrel.folder / "names.lwo").write_bytes(data.replace(b"x" * len(name), name))
    done = dastrel("dump", "names.lwo")
    assert done.status == 0, done
    assert f'layer 0 "{form}" flags' in done.raw.decode("utf-8")
    assert_harmless(dastrel("info", "names.lwo").raw)
    json.loads(dastrel("info", "names.lwo", "--json").raw.decode("utf-8"))


SCATTER = ["scatter", FILE, f"b{EVIL}.lwo", "--clock", "1"]


def test_scatter_tells_its_files_in_one_line(hostile):
    done = harmless(hostile, *SCATTER, "-o", f"o{EVIL}.lwo")
    assert done.err.startswith(f"{FILE_SHOWN} (1 polygon) + b{SHOWN}.lwo -> o{SHOWN}.lwo (30 ")
    assert len(done.err.splitlines()) == 1
    assert f"o{EVIL}.lwo" in hostile.files()


def test_the_summary_of_scatter_is_exact(hostile):
    done = harmless(hostile, *SCATTER, "-o", f"o{EVIL}.lwo", "--density-wg", named("Weight"),
                    "--json")
    told = json.loads(done.out)
    assert [one["file"] for one in told["inputs"]] == [FILE, f"b{EVIL}.lwo"]
    assert told["output"] == f"o{EVIL}.lwo"
    assert told["settings"]["density_wg"] == named("Weight")
    assert named("Weight2") in {one["name"] for one in told["maps_written"]}


def test_warnings_are_exact_in_the_summary(hostile):
    (hostile.folder / FILE).write_bytes((hostile.folder / FILE).read_bytes() + b"more")
    done = harmless(hostile, *SCATTER, "-o", "out.lwo", "--json")
    assert done.err.splitlines()[0].startswith(f"warning: {FILE_SHOWN}: chunk FORM at byte ")
    assert json.loads(done.out)["warnings"][0].startswith(f"{FILE}: chunk FORM at byte ")


@pytest.mark.parametrize("options, status, message", [
    (["--select-surface", "Nope"], 2,
     f"no ground polygon has the surface 'Nope'; there are '{shown('Ground')}'"),
    (["--select-surface", EVIL], 2, f"no ground polygon has the surface '{SHOWN}'"),
    (["--density-wg", "Nope"], 2, f"'{shown('Weight')}'"),
    (["--density-wg", EVIL], 2, f"there is no weight map '{SHOWN}'"),
    (["--seed", EVIL], 2, f"--seed: '{SHOWN}' is not a whole number"),
    (["--clock", EVIL], 2, f"--clock: '{SHOWN}' is not a whole number"),
    (["--foreground", EVIL], 2, "--foreground: "),
    ([f"--{EVIL}"], 2, f"unknown option '--{SHOWN}'"),
    (["--settings", EVIL], 3, f"{SHOWN}: the settings cannot be read: "),
    (["--module", EVIL], 4, f"{SHOWN}: there is no such module file"),
    (["-o", f"no{EVIL}/out.lwo"], 5, f"no{SHOWN}/out.lwo: "),
    (["-o", f"out{EVIL}.obj"], 5, f"out{SHOWN}.obj: is in a format that is not written"),
    (["-o", FILE], 2, f"'{FILE_SHOWN}'"),
    (["--picture", f"no{EVIL}/out.png"], 5, f"no{SHOWN}/out.png: "),
    ([f"no{EVIL}.lwo"], 3, f"no{SHOWN}.lwo: cannot be opened: "),
])
def test_errors_of_scatter_are_one_line_each(hostile, options, status, message):
    before = hostile.files()
    done = harmless(hostile, *SCATTER, "-o", "out.lwo", *options, status=status)
    assert message.replace("'" + FILE_SHOWN, FILE_SHOWN).rstrip("'") in done.err, done
    assert done.err.startswith("dastrel: scatter: ")
    assert hostile.files() == before


@pytest.mark.parametrize("settings, message", [
    ({named("seed"): 1}, f"unknown setting '{shown('seed')}'"),
    ({"seed": EVIL}, f"seed: '{SHOWN}' is not a whole number"),
    ({"h_align": EVIL}, f"h_align: '{SHOWN}' is neither on nor off"),
    ({"size_wg": EVIL}, f"there is no weight map '{SHOWN}'"),
    ({"jitter": [EVIL]}, "jitter: "),
])
@pytest.mark.parametrize("raw", [False, True])
def test_settings_files_are_told_in_one_line(hostile, settings, message, raw):
    """Their texts, escaped or with raw bytes where JSON allows them, and their names."""
    (hostile.folder / f"s{EVIL}.json").write_text(json.dumps(settings, ensure_ascii=not raw))
    done = harmless(hostile, *SCATTER, "-o", "out.lwo", "--settings", f"s{EVIL}.json", status=2)
    assert done.err.startswith(f"dastrel: scatter: s{SHOWN}.json: ")
    assert message in done.err.splitlines()[0]


@pytest.mark.parametrize("contents", [b"", b"no object", b"FORM\0\0\0\x0cLWO2" + EVIL.encode(),
                                      b"FORM\0\0\0\x04" + b"\x1b[2J", b"\x1b[2J\x9b",
                                      b"FORM\0\0\0\x10LWO2\x1b]0;\0\0\0\x7f"])
def test_damaged_files_are_told_in_one_line(dastrel, contents):
    (dastrel.folder / FILE).write_bytes(contents)
    for call in (["info", FILE], ["dump", FILE], ["render", FILE, "-o", "a.png"],
                 ["scatter", FILE, "tree.lwo", "-o", "out.lwo"]):
        done = harmless(dastrel, *call, status=3)
        for line in done.err.splitlines():
            assert line.startswith((f"dastrel: {call[0]}: {FILE_SHOWN}: ",
                                    f"warning: {FILE_SHOWN}: "))


@pytest.mark.parametrize("options, status, message", [
    (["-o", f"p{EVIL}.png"], 0, f"{FILE_SHOWN} -> p{SHOWN}.png (8 x 8 pixels, "),
    (["-o", "p.png", "--color-by", "Nope"], 2,
     f"there is no weight map 'Nope'; there are '{shown('Weight')}'"),
    (["-o", "p.png", "--color-by", EVIL], 2, f"there is no weight map '{SHOWN}'"),
    (["-o", "p.png", "--color-by", named("Weight")], 0, "p.png"),
    (["-o", "p.png", "--view", EVIL], 2, f"there is no view '{SHOWN}'"),
    (["-o", "p.png", "--zoom", EVIL], 2, f"--zoom: '{SHOWN}' is not a number"),
    (["-o", f"p{EVIL}.jpg"], 5, f"p{SHOWN}.jpg: is in a format that is not written"),
    (["-o", f"no{EVIL}/p.png"], 5, f"no{SHOWN}/p.png: "),
])
def test_render_tells_names_in_one_line(hostile, options, status, message):
    done = harmless(hostile, "render", FILE, "--size", "8x8", "--samples", "1", *options,
                    status=status)
    assert message in done.err.splitlines()[0]


def test_verbs_and_options_are_told_in_one_line(dastrel):
    for call in ([EVIL], ["info", f"--{EVIL}"], ["help", EVIL], ["settings", EVIL], [f"--{EVIL}"]):
        assert SHOWN in harmless(dastrel, *call, status=2).err.splitlines()[0]


def test_a_module_under_a_hostile_name_is_listed_in_one_line(dastrel, misbehaving):
    shutil.copy(misbehaving, dastrel.folder / f"m{EVIL}.p")
    done = harmless(dastrel, "modules", "--module", f"m{EVIL}.p")
    assert done.out.splitlines()[0].endswith(f"/m{SHOWN}.p")
    assert len(done.out.splitlines()) == 2
    (dastrel.folder / f"n{EVIL}.p").write_bytes(b"no module")
    done = harmless(dastrel, "modules", "--module", f"n{EVIL}.p", status=4)
    assert len(done.err.splitlines()) == 1


@pytest.mark.parametrize("act, status, lines", [
    ("say", 0, [f"info{SHOWN}", f"second{SHOWN}", f"title{SHOWN}: question{SHOWN} {SHOWN}",
                "answered with no"]),
    ("complain", 1, [f"dastrel: scatter: error{SHOWN}", f"dastrel: scatter: second{SHOWN}"]),
    ("throw", 4, []),
    ("exit", 4, []),
    ("SIGSEGV", 4, []),
])
def test_words_and_ends_of_modules_are_told_in_one_line(dastrel, misbehaving, sanitized, act,
                                                        status, lines):
    if sanitized and act == "SIGSEGV":
        pytest.skip("a sanitizer tells of the crash itself")
    shutil.copy(misbehaving, dastrel.folder / f"m{EVIL}.p")
    done = harmless(dastrel, "scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--module",
                    f"m{EVIL}.p", status=status,
                    environment={"MISBEHAVIOUR": f"run {act}", "WORDS": EVIL})
    assert done.err.splitlines()[:len(lines)] == lines
    if not lines:
        assert f"m{SHOWN}.p: " in done.err or SHOWN in done.err
        assert len(done.err.splitlines()) == 1
