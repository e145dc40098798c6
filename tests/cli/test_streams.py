# SPDX-License-Identifier: MIT
"""Standard streams, terminals, and names of files."""

import fcntl
import json
import os
import pty
import struct
import subprocess
import termios

import pytest

from objects import Mesh

RUN = ["scatter", "terrain.lwo", "tree.lwo", "--clock", "1"]


def test_standard_input_is_read_by_info_and_dump(dastrel):
    tree = (dastrel.folder / "tree.lwo").read_bytes()
    assert dastrel("info", "-", stdin=tree).out.startswith("-: 1 layer, 33 points, 27 polygons\n")
    assert dastrel("dump", "-", stdin=tree).out == dastrel.dump("tree.lwo")


def test_standard_input_can_be_the_ground_or_the_model(dastrel):
    assert dastrel(*RUN, "-o", "plain.lwo").status == 0
    for place, name in ((1, "terrain.lwo"), (2, "tree.lwo")):
        arguments = list(RUN)
        arguments[place] = "-"
        done = dastrel(*arguments, "-o", "piped.lwo",
                       stdin=(dastrel.folder / name).read_bytes())
        assert done.status == 0, done
        assert (dastrel.folder / "piped.lwo").read_bytes() == (
            dastrel.folder / "plain.lwo").read_bytes()


def test_standard_output_gets_the_file_and_nothing_else(dastrel):
    assert dastrel(*RUN, "-o", "plain.lwo").status == 0
    done = dastrel(*RUN, "-o", "-")
    assert done.status == 0, done
    assert done.raw == (dastrel.folder / "plain.lwo").read_bytes()
    assert "30 clones" in done.err


def test_what_is_broken_on_standard_input_is_told(dastrel):
    done = dastrel("info", "-", stdin=b"FORM\0\0\0\x04LWO2")
    assert done.status in (0, 3)
    done = dastrel("info", "-", stdin=b"FORMxxxx")
    assert done.status == 3
    assert done.err.startswith("dastrel: info: standard input: ")


def test_a_closed_pipe_ends_quietly(dastrel):
    running = dastrel.start("dump", "terrain.lwo", stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    assert running.stdout.read(10) == b"mesh 1 lay"
    running.stdout.close()
    assert running.stderr.read() == b""
    assert running.wait(timeout=20) == 0


def test_json_on_a_closed_pipe_ends_quietly(dastrel):
    for call in (["info", "terrain.lwo", "--json"], ["settings", "--json"],
                 [*RUN, "-o", "out.lwo", "--json", "--quiet"], ["info", "no.lwo", "--json"]):
        reading, writing = os.pipe()
        os.close(reading)
        running = dastrel.start(*call, stdout=writing, stderr=subprocess.PIPE)
        os.close(writing)
        _, err = running.communicate(timeout=60)
        if "no.lwo" in call:  # the reader of the object is gone, and the error stays one
            assert (running.returncode, err.count(b"\n")) == (3, 1)
        else:
            assert (running.returncode, err) == (0, b"")
    assert (dastrel.folder / "out.lwo").is_file()


def test_names_with_letters_beyond_ascii(dastrel):
    folder = dastrel.folder / "Wälder ∆"
    folder.mkdir()
    (dastrel.folder / "tree.lwo").rename(folder / "Bäume.lwo")
    done = dastrel("scatter", "terrain.lwo", "Wälder ∆/Bäume.lwo", "-o", "Wälder ∆/été.lwo",
                   "--json")
    assert done.status == 0, done
    assert json.loads(done.out)["inputs"][1]["file"] == "Wälder ∆/Bäume.lwo"
    assert len(Mesh(dastrel.dump("Wälder ∆/été.lwo")).points()) == 1681 + 30 * 33


def test_a_comma_locale_changes_nothing(dastrel):
    comma = {"LC_ALL": "de_DE.UTF-8", "LANG": "de_DE.UTF-8"}
    plain = dastrel(*RUN, "-o", "plain.lwo", "--jitter", "0.25")
    again = dastrel(*RUN, "-o", "again.lwo", "--jitter", "0.25", environment=comma)
    assert (plain.status, again.status) == (0, 0)
    assert (dastrel.folder / "plain.lwo").read_bytes() == (
        dastrel.folder / "again.lwo").read_bytes()


def open_terminal():
    """A pair of terminal devices; the test is passed over where the machine has none to give, as in
    a root folder without /dev/pts."""
    try:
        return pty.openpty()
    except OSError as problem:
        pytest.skip(f"no terminal to be had: {problem}")


def on_a_terminal(dastrel, *arguments, columns=0, environment=None):
    """Runs with standard error on a terminal, of which 0 columns mean that it does not tell them;
    gives the status and what was shown there."""
    parent, child = open_terminal()
    fcntl.ioctl(child, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    running = dastrel.start(*arguments, stdout=subprocess.DEVNULL, stderr=child,
                            environment=environment)
    os.close(child)
    shown = b""
    while True:
        try:
            block = os.read(parent, 65536)
        except OSError:
            break
        if not block:
            break
        shown += block
    os.close(parent)
    return running.wait(timeout=60), shown.decode()


LONG_RUN = [*RUN, "--clone-num", "3000", "--iterations", "0", "-o", "out.lwo"]


def test_progress_is_shown_on_a_terminal_and_taken_away(dastrel):
    status, shown = on_a_terminal(dastrel, *LONG_RUN)
    assert status == 0
    assert "Randomising positions... [" in shown
    last = shown.split("\r\x1b[K")[-1]
    assert last.startswith("terrain.lwo (1,600 polygons) + tree.lwo -> out.lwo (3,000 clones, ")


def progress_lines(shown):
    return shown.split("\r\x1b[K")[1:-1]


@pytest.mark.parametrize("columns, environment, longest", [
    (40, {}, 39), (33, {}, 30), (20, {}, 19), (8, {}, 7), (1, {}, 0), (200, {}, 63),
    (0, {"COLUMNS": "40"}, 39), (0, {"COLUMNS": "many"}, 63), (40, {"COLUMNS": "80"}, 39)])
def test_progress_fits_into_the_terminal(dastrel, columns, environment, longest):
    status, shown = on_a_terminal(dastrel, *LONG_RUN, columns=columns, environment=environment)
    assert status == 0
    lines = progress_lines(shown)
    assert lines
    assert max(len(line) for line in lines) == longest
    assert "\n" not in "".join(lines)
    if longest >= 19:
        assert lines[0].startswith("Randomising p")
        assert lines[0].endswith(" %")
    assert ("[" in lines[0]) == (longest >= 39)  # there is room for a bar


def test_no_progress_without_a_terminal(dastrel):
    done = dastrel(*LONG_RUN)
    assert done.status == 0
    assert len(done.err.splitlines()) == 1
    assert "\r" not in done.err


def test_no_progress_when_quiet(dastrel):
    assert on_a_terminal(dastrel, *LONG_RUN, "--quiet") == (0, "")


def test_an_object_file_is_not_written_to_a_terminal(dastrel):
    parent, child = open_terminal()
    done = dastrel(*RUN, "-o", "-", stdout=child)
    os.close(child)
    os.close(parent)
    assert done.status == 5
    assert "standard output is a terminal" in done.err
