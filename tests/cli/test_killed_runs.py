# SPDX-License-Identifier: MIT
"""Runs that are killed at any moment leave the old output or the new one, never a part of one."""

import random
import signal
import time

import pytest

OLD = b"as it was"
# Together fifty; the last number is the status of a run that had time to tidy up.
KILLS = [(signal.SIGKILL, 20, None), (signal.SIGTERM, 15, 143), (signal.SIGINT, 15, 130)]


def part_files(dastrel):
    return {name for name in dastrel.files() if name.endswith(".part")}


def wait_for_a_new_part_file(dastrel, running, abandoned):
    while running.poll() is None and part_files(dastrel) <= abandoned:
        time.sleep(0.0005)


@pytest.mark.parametrize("number, kills, tidy", KILLS, ids=["SIGKILL", "SIGTERM", "SIGINT"])
def test_a_killed_run_leaves_the_old_output_or_the_new(dastrel, sanitized, number, kills, tidy):
    call = ["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clock", "1", "--iterations",
            "1", "--quiet", "--clone-num", "1000" if sanitized else "8000"]
    output = dastrel.folder / "out.lwo"
    output.write_bytes(OLD)
    inputs = dastrel.files()
    start = time.monotonic()
    done = dastrel(*call)
    takes = time.monotonic() - start
    assert done.status == 0, done
    new = output.read_bytes()
    moments = random.Random(int(number))
    killed = unfinished = 0
    for i in range(kills):
        output.write_bytes(OLD)
        abandoned = part_files(dastrel)
        running = dastrel.start(*call)
        if i % 2 == 0:
            time.sleep(moments.uniform(0, takes))
        else:  # while the output is written
            wait_for_a_new_part_file(dastrel, running, abandoned)
            time.sleep(moments.uniform(0, takes / 4))
        running.send_signal(number)
        status = running.wait(timeout=60)
        # A run may end before the signal comes, or get it before it has begun to look after signals.
        assert status in (0, tidy, -number), status
        assert output.read_bytes() == new if status == 0 else output.read_bytes() in (OLD, new)
        if status == tidy:
            assert dastrel.files() == inputs
        killed += status != 0
        unfinished += not part_files(dastrel) <= abandoned
    assert killed > kills / 4
    assert (unfinished > 0) == (tidy is None)
    assert dastrel(*call).status == 0
    assert output.read_bytes() == new
    assert dastrel.files() == inputs
