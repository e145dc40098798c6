# SPDX-License-Identifier: MIT
"""A disk without room: status 5 and a reason, the old output as it was, and no part of a new one."""

import os
import resource
import subprocess

import pytest

OLD = b"as it was"
CALLS = {
    "scatter": ["scatter", "terrain.lwo", "tree.lwo", "--clone-num", "50", "--clock", "1",
                "--quiet", "-o"],
    "render": ["render", "terrain.lwo", "--size", "256x256", "--samples", "1", "--wireframe",
               "--quiet", "-o"],
}
NAMES = {"scatter": "out.lwo", "render": "out.png"}


def expect_refusal(dastrel, done, output, reason):
    verb = "scatter" if output.endswith(".lwo") else "render"
    assert done.status == 5, done
    assert done.out == ""
    assert done.err == f"dastrel: {verb}: {output}: cannot be written: {reason}\n"
    path = dastrel.folder / output
    assert path.read_bytes() == OLD
    assert os.listdir(path.parent).count(path.name) == 1
    assert not [name for name in os.listdir(path.parent) if name.endswith(".part")]


@pytest.fixture
def mounted(dastrel):
    """Mounts small file systems at the folder "disk"."""
    disk = dastrel.folder / "disk"
    disk.mkdir()

    def mount(options):
        done = subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", disk],
                              capture_output=True, check=False)
        if done.returncode != 0:
            pytest.skip("file systems may not be mounted here")
        return disk

    yield mount
    while os.path.ismount(disk):
        subprocess.run(["umount", disk], check=True)


@pytest.mark.parametrize("verb", CALLS)
@pytest.mark.parametrize("options, reason", [
    ("size=16k", "No space left on device"),
    ("size=10m,nr_inodes=2", "No space left on device"),
    ("size=10m", "Read-only file system"),
])
def test_5_a_small_disk(dastrel, mounted, verb, options, reason):
    disk = mounted(options)
    output = f"disk/{NAMES[verb]}"
    (dastrel.folder / output).write_bytes(OLD)
    if reason.startswith("Read-only"):
        subprocess.run(["mount", "-o", "remount,ro", disk], check=True)
    expect_refusal(dastrel, dastrel(*CALLS[verb], output), output, reason)


@pytest.mark.parametrize("verb", CALLS)
@pytest.mark.parametrize("room", ["none", "one byte", "half", "all but a byte"])
def test_5_a_limit_on_the_size_of_files(dastrel, verb, room):
    """What a small disk is, where none can be mounted."""
    output = NAMES[verb]
    assert dastrel(*CALLS[verb], output).status == 0
    whole = (dastrel.folder / output).read_bytes()
    limit = {"none": 0, "one byte": 1, "half": len(whole) // 2,
             "all but a byte": len(whole) - 1}[room]
    (dastrel.folder / output).write_bytes(OLD)
    done = dastrel(*CALLS[verb], output, preexec_fn=lambda: resource.setrlimit(
        resource.RLIMIT_FSIZE, (limit, limit)))
    expect_refusal(dastrel, done, output, "File too large")
    assert dastrel(*CALLS[verb], output).status == 0
    assert (dastrel.folder / output).read_bytes() == whole


@pytest.mark.parametrize("call", [
    ["scatter", "terrain.lwo", "tree.lwo", "--quiet", "-o", "/dev/full"],
    ["render", "tree.lwo", "--size", "16x16", "--samples", "1", "--quiet", "-o", "/dev/full"],
])
def test_5_a_device_that_is_full(dastrel, call):
    before = dastrel.files()
    done = dastrel(*call)
    assert done.status == 5, done
    assert done.err == (f"dastrel: {call[0]}: /dev/full: cannot be written: No space left on "
                        "device\n")
    assert dastrel.files() == before


@pytest.mark.parametrize("call", [
    ["scatter", "terrain.lwo", "tree.lwo", "--quiet", "-o", "-"],
    ["render", "tree.lwo", "--size", "16x16", "--samples", "1", "--quiet", "-o", "-"],
    ["dump", "tree.lwo"],
    ["info", "--json", "tree.lwo"],
    ["settings"],
    ["modules"],
    ["scatter", "--help"],
    ["--help"],
    ["--version"],
])
def test_5_standard_output_on_a_full_device(dastrel, call):
    with open("/dev/full", "wb") as full:
        done = dastrel(*call, stdout=full)
    assert done.status == 5, done
    assert "standard output cannot be written: No space left on device" in done.err
    assert len(done.err.splitlines()) == 1


def test_5_a_picture_on_a_full_device_leaves_the_object_file(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "5",
                   "--picture", "/dev/full", "--quiet")
    assert done.status == 5, done
    assert "/dev/full: cannot be written: No space left on device" in done.err
    assert dastrel("info", "out.lwo").status == 0
