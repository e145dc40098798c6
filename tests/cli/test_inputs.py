# SPDX-License-Identifier: MIT
"""What is read and what is not: files and pipes, but no folders and no devices, however they come."""

import json
import os
import resource
import subprocess

import pytest

RUN = ["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo"]
MOST_MEMORY = 1 << 30


@pytest.fixture(autouse=True)
def little_memory(sanitized):
    """Reading without an end fails soon instead of taking the machine's memory."""
    if sanitized:
        yield
        return
    before = resource.getrlimit(resource.RLIMIT_AS)
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, before[1]))
    yield
    resource.setrlimit(resource.RLIMIT_AS, before)


def from_endless(dastrel, head, *arguments):
    """Runs with a pipe that begins with `head` and never ends."""
    (dastrel.folder / "head").write_bytes(head)
    feed = subprocess.Popen(["sh", "-c", "cat head; exec cat /dev/zero"], cwd=dastrel.folder,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    running = dastrel.start(*arguments, stdin=feed.stdout, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE)
    feed.stdout.close()
    out, err = running.communicate(timeout=60)
    feed.wait(timeout=60)
    return running.returncode, out.decode(), err.decode()


@pytest.mark.parametrize("place, message", [
    ("/dev/zero", "/dev/zero: the settings cannot be read: it is a device; only files and pipes "
                  "are read"),
    (".", ".: the settings cannot be read: it is a folder; name a file in it"),
    ("no.json", "no.json: the settings cannot be read: No such file or directory"),
])
def test_settings_come_from_files_and_pipes_only(dastrel, place, message):
    done = dastrel(*RUN, "--settings", place)
    assert done.status == 3, done
    assert done.err == f"dastrel: scatter: {message}\n"


def test_settings_can_come_through_a_pipe(dastrel):
    done = dastrel(*RUN, "--settings", "/dev/stdin", "--json", stdin=b'\xef\xbb\xbf {"seed": 7}')
    assert done.status == 0, done
    assert json.loads(done.out)["settings"]["seed"] == 7


@pytest.mark.parametrize("head, message", [
    (b"", "is not a JSON object; "),
    (b"terrain", "is not a JSON object; "),
    (b'{"seed": 1,' + b" " * 1052673, "is larger than 1 MiB, which no settings file needs to be"),
    (b" " * 1052673, "is larger than 1 MiB, which no settings file needs to be"),
], ids=["zeros", "another_text", "blanks_in_an_object", "blanks"])
def test_no_more_settings_are_read_than_there_can_be(dastrel, head, message):
    status, out, err = from_endless(dastrel, head, *RUN, "--settings", "/dev/stdin")
    assert (status, out) == (2, ""), err
    assert err.startswith(f"dastrel: scatter: /dev/stdin: {message}")


@pytest.mark.parametrize("text", [
    '{"seed": ' + "[" * 60000 + "]" * 60000 + "}",
    '{"seed": ' + '{"a":' * 60000 + "1" + "}" * 60000 + "}",
    '{"a":' * 150000,
    '{"seed": ' + "[" * 16 + "]" * 16 + "}",
], ids=["lists", "objects", "open_objects", "just_too_deep"])
def test_settings_nested_too_deep_are_refused(dastrel, text):
    (dastrel.folder / "deep.json").write_text(text)
    done = dastrel(*RUN, "--settings", "deep.json")
    assert done.status == 2, done
    assert done.err.startswith(
        "dastrel: scatter: deep.json: is nested more than 16 levels deep; settings are one JSON "
        "object of plain values\n")


@pytest.mark.parametrize("call", [["info", "/dev/zero"], ["dump", "/dev/zero"],
                                  ["render", "/dev/zero", "-o", "a.png"],
                                  ["scatter", "terrain.lwo", "/dev/zero", "-o", "out.lwo"]])
def test_meshes_come_from_files_and_pipes_only(dastrel, call):
    done = dastrel(*call)
    assert done.status == 3, done
    assert done.err == (f"dastrel: {call[0]}: /dev/zero: cannot be read: it is a device; only "
                        "files and pipes are read\n")


@pytest.mark.parametrize("name", ["-", "/dev/stdin"])
def test_standard_input_that_is_a_device_is_not_read(dastrel, name):
    with open("/dev/zero", "rb") as zero:
        running = dastrel.start("info", name, stdin=zero, stderr=subprocess.PIPE)
        err = running.communicate(timeout=60)[1].decode()
    assert running.returncode == 3
    shown = "standard input" if name == "-" else name
    assert err == (f"dastrel: info: {shown}: cannot be read: it is a device; only files and pipes "
                   "are read\n")


def test_standard_input_that_is_a_folder_is_not_read(dastrel):
    folder = os.open(dastrel.folder, os.O_RDONLY)
    running = dastrel.start("info", "-", stdin=folder, stderr=subprocess.PIPE)
    os.close(folder)
    err = running.communicate(timeout=60)[1].decode()
    assert running.returncode == 3
    assert err.startswith("dastrel: info: standard input: cannot be read: it is a folder")


@pytest.mark.parametrize("name", ["-", "/dev/stdin"])
def test_of_an_endless_pipe_the_first_bytes_are_judged(dastrel, name):
    status, out, err = from_endless(dastrel, b"", "info", name)
    assert (status, out) == (3, ""), err
    shown = "standard input" if name == "-" else name
    assert err == (f"dastrel: info: {shown}: is nothing but zeros at its beginning; only LWO2 "
                   "object files (.lwo) are read\n")


def test_of_an_endless_pipe_the_object_is_read(dastrel):
    tree = (dastrel.folder / "tree.lwo").read_bytes()
    status, out, err = from_endless(dastrel, tree, "info", "-")
    assert status == 0, err
    assert out.startswith("-: 1 layer, 33 points, 27 polygons\n")
    assert err == ("warning: standard input: chunk FORM at byte "
                   f"{len(tree)}: the file goes on after the end of the object, which is left out\n")


def test_a_large_object_comes_whole_through_a_pipe(dastrel):
    assert dastrel(*RUN, "--clone-num", "3000", "--iterations", "0").status == 0
    data = (dastrel.folder / "out.lwo").read_bytes()
    assert len(data) > 3 << 20  # several steps of reading
    assert dastrel("dump", "-", stdin=data).out == dastrel.dump("out.lwo")
