# SPDX-License-Identifier: MIT
"""Out of memory at each allocation of the whole program: one that fails, and all from one on.

Every run ends with status 0 and all that a run without a failure gives, or with status 4, one
sentence, and each output as it was or as it would have become. Every allocation is tried (about 360
of info, 5,100 of scatter, 940 of render: half a minute of computing together), save in
`scatter --picture`: its picture has one size only, and each run that gets as far as the ray tracer
takes seconds, which are the last 1,060 of 4,520 allocations and a few before them. After such a run
the number goes up by --picture-step; trying them all takes more than an hour. The libraries'
allocations count too, and so do those before `main`. Once threads of the ray tracer are at work,
numbers are not the same allocations in each run.
"""

import fcntl
import json
import os
import re
import struct
import subprocess
import time

import pytest

from objects import square, triangle, write_object

ORDERS, ANSWERS = 198, 199  # the descriptors that the preloaded library reads and writes
OLD = b"as it was"
SLOW_RUN = 1.0  # seconds: a run that makes a large picture

# The call, and the outputs that it writes.
CALLS = {
    "info": (["info", "tree.lwo"], []),
    "info --json": (["info", "--json", "tree.lwo"], []),
    "dump": (["dump", "tree.lwo"], []),
    "scatter": (["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "20",
                 "--clock", "1", "--quiet"], ["out.lwo"]),
    "scatter with maps": (["scatter", "ground.lwo", "model.lwo", "-o", "out.lwo", "--clone-num",
                           "5", "--clock", "1", "--density-wg", "Dense", "--size-indep",
                           "--json", "--quiet"], ["out.lwo"]),
    "render": (["render", "tree.lwo", "-o", "out.png", "--size", "32x32", "--samples", "1",
                "--quiet"], ["out.png"]),
    "render a map": (["render", "terrain.lwo", "-o", "out.png", "--size", "32x32", "--samples", "1",
                      "--color-by", "Density", "--wireframe", "--quiet"], ["out.png"]),
    "scatter with a picture": (["scatter", "ground.lwo", "model.lwo", "-o", "out.lwo", "--picture",
                                "out.png", "--clone-num", "2", "--clock", "1", "--quiet"],
                               ["out.lwo", "out.png"]),
    "scatter --help": (["scatter", "--help"], []),
}


class Run:
    """What came of one run."""

    def __init__(self, status, allocations, out, err, files):
        self.status = status
        self.allocations = allocations
        self.out = re.sub(rb'"seconds": {[^}]*}', b"", out)
        self.err = err
        self.files = files


class Server:
    """The program with the preloaded library, which runs it again and again."""

    def __init__(self, dastrel, library, arguments, outputs):
        self.folder = dastrel.folder
        self.outputs = outputs
        self.inputs = set(dastrel.files())
        self.streams = [open(dastrel.folder.parent / name, "w+b", buffering=0)
                        for name in ("out", "err")]
        for stream in self.streams:  # what a child writes goes to the end, also after a truncation
            fcntl.fcntl(stream, fcntl.F_SETFL, os.O_APPEND)
        orders, self.orders = os.pipe()
        self.answers, answers = os.pipe()

        def take_pipes():
            os.dup2(orders, ORDERS)
            os.dup2(answers, ANSWERS)

        self.process = dastrel.start(
            *arguments, environment={"LD_PRELOAD": str(library)}, stdin=subprocess.DEVNULL,
            stdout=self.streams[0], stderr=self.streams[1], preexec_fn=take_pipes, close_fds=False)
        os.close(orders)
        os.close(answers)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.orders)
        assert self.process.wait(timeout=60) == 0
        os.close(self.answers)
        for stream in self.streams:
            stream.close()

    def run(self, failing, and_all_after):
        for name in set(os.listdir(self.folder)) - self.inputs:
            os.unlink(self.folder / name)
        for name in self.outputs:
            (self.folder / name).write_bytes(OLD)
        for stream in self.streams:
            stream.truncate(0)
        os.write(self.orders, struct.pack("qq", failing, and_all_after))
        answer = os.read(self.answers, 16)
        assert len(answer) == 16, "the preloaded library does not answer"
        status, allocations = struct.unpack("qq", answer)
        out, err = (os.pread(stream.fileno(), 1 << 24, 0) for stream in self.streams)
        files = {name: (self.folder / name).read_bytes()
                 for name in set(os.listdir(self.folder)) - self.inputs}
        return Run(os.waitstatus_to_exitcode(status), allocations, out, err, files)


def is_error_object(out):
    """Whether it is what calls with --json print in place of their output."""
    try:
        return json.loads(out)["error"]["status"] == 4
    except (ValueError, KeyError):
        return False


def what_is_wrong(run, whole, is_json):
    """A sentence for each rule that a run breaks."""
    if run.status == 0:
        if (run.out, run.err, run.files) != (whole.out, whole.err, whole.files):
            yield "ends with 0, and something is missing"
        return
    if run.status != 4:
        yield f"ends with {run.status}"
    if run.err.count(b"\n") != 1 or not run.err.startswith(b"dastrel: "):
        yield "says no one sentence"
    if not whole.out.startswith(run.out) and not (is_json and is_error_object(run.out)):
        yield "printed something else"
    if set(run.files) != set(whole.files):
        yield "leaves other files"
    for name, content in run.files.items():
        if content not in (OLD, whole.files.get(name)):
            yield f"{name} is damaged"


@pytest.fixture
def failing_memory(request, sanitized):
    if sanitized:
        pytest.skip("a sanitizer has an allocator of its own")
    library = request.config.getoption("--failing-memory")
    assert library is not None, "name the library with --failing-memory"
    return os.path.abspath(library)


@pytest.mark.parametrize("and_all_after", [False, True], ids=["one", "all after"])
@pytest.mark.parametrize("call", CALLS)
def test_status_4_at_every_failed_allocation(dastrel, request, failing_memory, call, and_all_after):
    weights = {0: (1.0,), 1: (0.5,), 2: (1.0,), 3: (0.25,)}
    write_object(dastrel.folder / "ground.lwo", square(maps=[(b"WGHT", "Dense", weights)]))
    write_object(dastrel.folder / "model.lwo",
                 triangle(maps=[(b"TXUV", "Leaf", {0: (0.0, 0.0), 2: (1.0, 0.0)})]))
    arguments, outputs = CALLS[call]
    slow_step = request.config.getoption("--picture-step")
    with Server(dastrel, failing_memory, arguments, outputs) as server:
        whole = server.run(0, False)
        assert whole.status == 0, whole.err
        assert all(whole.files[name] != OLD for name in outputs)
        assert whole.allocations > 100
        found = []
        tried = ended = 0
        number = 1
        while number <= whole.allocations:
            begun = time.monotonic()
            run = server.run(number, and_all_after)
            tried += 1
            ended += run.status == 4
            found += [f"allocation {number}: {wrong}\n{run.err.decode('utf-8', 'replace')}"
                      for wrong in what_is_wrong(run, whole, "--json" in arguments)]
            is_slow = "--picture" in arguments and time.monotonic() - begun > SLOW_RUN
            number += slow_step if is_slow else 1
        assert not found, f"{len(found)} of {tried}\n" + "\n".join(found[:5])
        assert ended > 0
