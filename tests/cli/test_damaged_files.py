# SPDX-License-Identifier: MIT
"""Object files with damage of every kind go through every verb that reads them: what comes out is a
status of the table with a sentence, or a result that is whole. Always the same damage."""

import random
import struct

import pytest

from conftest import EXAMPLES

FILES = ["terrain.lwo", "tree.lwo", "stone.lwo"]
LIES = [b"\xff\xff\xff\xff", b"\x7f\xff\xff\xff", b"\x80\0\0\0", b"\0\0\0\0", b"\xff\0\0\1",
        b"\x7f\x80\0\0", b"\0\0\xff\xff"]
# Of each kind, for each file. A program with sanitizers takes a good deal longer to start.
DAMAGE_EACH = 9
DAMAGE_EACH_SANITIZED = 2


def chunks(whole):
    """Where the chunks of a file begin and end."""
    at = 12
    found = []
    while at + 8 <= len(whole):
        size = struct.unpack(">I", whole[at + 4:at + 8])[0]
        end = at + 8 + size + size % 2
        found.append((at, end))
        at = end
    return found


def with_size(whole):
    return whole[:4] + struct.pack(">I", len(whole) - 8) + whole[8:]


def cut(whole, chance):
    return whole[:chance.randrange(len(whole))]


def cut_with_the_right_size(whole, chance):
    return with_size(whole[:chance.randrange(12, len(whole))])


def flip_bytes(whole, chance):
    damaged = bytearray(whole)
    for _ in range(chance.randint(1, 8)):
        damaged[chance.randrange(len(damaged))] ^= chance.randint(1, 255)
    return bytes(damaged)


def tell_a_lie(whole, chance):
    at = chance.randrange(len(whole) - 4)
    return whole[:at] + chance.choice(LIES) + whole[at + 4:]


def give_a_wrong_size(whole, chance):
    at, end = chance.choice(chunks(whole))
    size = max(0, end - at - 8 + chance.choice([-9, -4, -2, -1, 1, 2, 4, 9, 1 << 16, 1 << 31]))
    return whole[:at + 4] + struct.pack(">I", size) + whole[at + 8:]


def leave_a_chunk_out(whole, chance):
    at, end = chance.choice(chunks(whole))
    return with_size(whole[:at] + whole[end:])


def repeat_a_chunk(whole, chance):
    at, end = chance.choice(chunks(whole))
    return with_size(whole[:end] + whole[at:end] * chance.randint(1, 3) + whole[end:])


def move_a_chunk(whole, chance):
    at, end = chance.choice(chunks(whole))
    rest = whole[:at] + whole[end:]
    to = chance.choice([start for start, _ in chunks(rest)])
    return rest[:to] + whole[at:end] + rest[to:]


DAMAGE = [cut, cut_with_the_right_size, flip_bytes, tell_a_lie, give_a_wrong_size,
          leave_a_chunk_out, repeat_a_chunk, move_a_chunk]


def check(done, verb, statuses):
    assert "Sanitizer" not in done.err and "runtime error" not in done.err, done
    assert done.status in statuses, done
    if done.status != 0:
        assert f"\ndastrel: {verb}: " in "\n" + done.err, done  # warnings may come before


def try_all_verbs(dastrel):
    """Lets every verb read the file damaged.lwo."""
    statuses = []
    for call in (["info", "--json", "damaged.lwo"], ["dump", "damaged.lwo"],
                 ["render", "damaged.lwo", "-o", "out.png", "--size", "32x24", "--samples", "1",
                  "--quiet"],
                 ["scatter", "damaged.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "7",
                  "--clock", "1", "--quiet"],
                 ["scatter", "terrain.lwo", "damaged.lwo", "-o", "out.lwo", "--clone-num", "7",
                  "--clock", "1", "--quiet", "--auto-morph-maps", "2"]):
        done = dastrel(*call)
        check(done, call[0], (0, 1, 3) if call[0] == "scatter" else (0, 3))
        statuses.append(done.status)
        if "-o" in call:
            made = dastrel.folder / call[call.index("-o") + 1]
            assert made.exists() == (done.status == 0), done
            if done.status == 0 and call[0] == "scatter":
                check(dastrel("info", made.name), "info", (0,))
            made.unlink(missing_ok=True)
    assert len({status == 3 for status in statuses}) == 1, "one verb reads what another refuses"


@pytest.mark.parametrize("damage", DAMAGE, ids=lambda damage: damage.__name__)
@pytest.mark.parametrize("name", FILES)
def test_a_damaged_file(dastrel, sanitized, name, damage):
    whole = (EXAMPLES / name).read_bytes()
    chance = random.Random(f"{name} {damage.__name__}")
    before = dastrel.files() + ["damaged.lwo"]
    for _ in range(DAMAGE_EACH_SANITIZED if sanitized else DAMAGE_EACH):
        (dastrel.folder / "damaged.lwo").write_bytes(damage(whole, chance))
        try_all_verbs(dastrel)
    assert dastrel.files() == sorted(before)
