# SPDX-License-Identifier: MIT
"""One test at least for each row of the table of exit statuses."""

import fcntl
import json
import os
import pathlib
import resource
import shutil
import signal
import struct
import subprocess
import termios
import time

import pytest

from objects import Layer, square, triangle, write_object


def test_0_done(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo")
    assert done.status == 0, done
    assert "out.lwo" in dastrel.files()


def refused(dastrel, ground, model, *options):
    write_object(dastrel.folder / "ground.lwo", *ground)
    write_object(dastrel.folder / "model.lwo", *model)
    before = dastrel.files()
    done = dastrel("scatter", "ground.lwo", "model.lwo", "-o", "out.lwo", *options)
    assert done.status == 1, done
    assert done.out == ""
    assert dastrel.files() == before
    return done.err


def test_1_ground_without_polygons(dastrel):
    points_only = Layer(points=[(0.0, 0.0, 0.0)])
    assert refused(dastrel, [points_only], [triangle()]) == (
        "dastrel: scatter: Need some polys to clone on them\n")


def test_1_ground_of_patches(dastrel):
    patch = square()
    patch.polygons = [(b"PTCH", (0, 1, 2, 3), "Ground")]
    assert refused(dastrel, [patch], [triangle()]) == (
        "dastrel: scatter: SubDivs not supported in the foreground Layer\n")


def test_1_model_without_points(dastrel):
    assert refused(dastrel, [square()], [Layer()]) == (
        "dastrel: scatter: Need some geometry in the background layer(s) to clone\n")


def test_1_slope_limits_that_leave_nothing(dastrel):
    assert refused(dastrel, [square()], [triangle()], "--slope-limits", "--slope-min", "45") == (
        "dastrel: scatter: Change slope angle settings\n"
        "dastrel: scatter: There are no valid polys to clone on.\n"
        "dastrel: scatter: the ground's polygons all slope 0 degrees; --slope-min and --slope-max "
        "limit them\n")


def test_1_is_told_even_when_quiet(dastrel):
    assert "Change slope angle settings" in refused(
        dastrel, [square()], [triangle()], "--slope-limits", "--slope-min", "45", "--quiet")


@pytest.mark.parametrize("call, message", [
    (["scatter"], "names no GROUND and no MODEL"),
    (["scatter", "terrain.lwo", "tree.lwo"], "names no output; add -o OUT"),
    (["scatter", "terrain.lwo", "-o", "out.lwo"],
     "names a GROUND and no MODEL; add a file to clone, or name the layers of one scene with "
     "--foreground"),
    (["scatter", "-", "-", "-o", "out.lwo"], "-: standard input can be read only once"),
    (["scatter", "terrain.lwo", "tree.lwo", "-o", "-", "--json"],
     "--json: the summary and the output cannot both go to standard output"),
    (["scatter", "terrain.lwo", "-o", "out.lwo", "--foreground", "1-x"],
     "--foreground: 'x' is not a whole number; write layers from 1, such as 1,3 or 2-4"),
    (["scatter", "terrain.lwo", "-o", "out.lwo", "--foreground", "0"],
     "--foreground: 0 is out of range; it must lie in 1 .. 65535; write layers from 1, such as 1,3 "
     "or 2-4"),
    (["scatter", "terrain.lwo", "-o", "out.lwo", "--foreground", "1-3", "--background", "3"],
     "--background: layer 3 is in the foreground too"),
    (["info"], "names no file"),
    (["dump"], "names no file"),
    (["dump", "tree.lwo", "stone.lwo"], "prints one file at a time"),
    (["settings", "extra"], "unexpected argument 'extra'"),
    (["settings", "--json", "--markdown"], "--json and --markdown exclude each other"),
    (["modules", "--json"], "unknown option '--json'"),
])
def test_2_wrong_usage(dastrel, call, message):
    before = dastrel.files()
    done = dastrel(*call)
    assert done.status == 2, done
    assert done.err.splitlines()[0] == f"dastrel: {call[0]}: {message}"
    assert done.err.splitlines()[-1] == f"see dastrel {call[0]} --help"
    assert done.out == ""
    assert dastrel.files() == before


def test_2_a_layer_that_is_not_there(dastrel):
    done = dastrel("scatter", "terrain.lwo", "-o", "out.lwo", "--foreground", "1", "--background",
                   "5")
    assert done.status == 2
    assert "--background: there is no layer 5; terrain.lwo has 1" in done.err


def test_2_a_surface_that_is_not_there(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--select-surface",
                   "Bark")
    assert done.status == 2
    assert ("--select-surface: no ground polygon has the surface 'Bark'; there are 'Grass', 'Rock'"
            in done.err)


def test_2_a_clock_in_the_environment_that_is_no_number(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo",
                   environment={"DASTREL_CLOCK": "soon"})
    assert done.status == 2
    assert done.err.splitlines()[0] == ("dastrel: scatter: DASTREL_CLOCK: 'soon' is not a whole "
                                        "number; it counts seconds, such as 1790000000")
    assert "out.lwo" not in dastrel.files()


@pytest.mark.parametrize("call", [
    ["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo"], ["modules"], ["settings"],
    ["settings", "--json"], ["settings", "--markdown"], ["--version"]])
def test_2_a_wrong_clock_for_all_that_load_a_module_or_print_settings(dastrel, call):
    done = dastrel(*call, environment={"DASTREL_CLOCK": "yesterday"})
    assert done.status == 2, done
    assert "DASTREL_CLOCK: 'yesterday' is not a whole number" in done.err.splitlines()[0]
    if "--json" in call:
        assert json.loads(done.out)["error"]["status"] == 2
    else:
        assert done.out == ""
    assert "out.lwo" not in dastrel.files()


@pytest.mark.parametrize("call", [
    ["info", "tree.lwo"], ["dump", "tree.lwo"], ["help"], ["scatter", "--help"],
    ["render", "tree.lwo", "-o", "out.png", "--size", "8x8", "--samples", "1"]])
def test_the_clock_does_not_matter_to_what_runs_no_module(dastrel, call):
    assert dastrel(*call, environment={"DASTREL_CLOCK": "yesterday"}).status == 0


@pytest.mark.parametrize("clock", ["yesterday", "-1", "4294967296", "1.5", "1790000000s", " "])
def test_2_a_clock_that_is_none_wherever_it_is_given(dastrel, clock):
    for options, environment in ((["--clock", clock], {}), ([], {"DASTREL_CLOCK": clock})):
        done = dastrel("scatter", "missing.lwo", "missing.lwo", "-o", "out.lwo", *options,
                       environment=environment)
        assert done.status == 2
        assert "it counts seconds" in done.err.splitlines()[0]


@pytest.mark.parametrize("clock", [" 77", "+77", "077"])
def test_a_clock_means_the_same_wherever_it_is_given(dastrel, clock):
    """The module sees plain digits, and so cannot read the number in its own way."""
    run = ["scatter", "terrain.lwo", "tree.lwo", "-o"]
    assert dastrel(*run, "plain.lwo", "--clock", "77").status == 0
    assert dastrel(*run, "option.lwo", "--clock", clock).status == 0
    assert dastrel(*run, "variable.lwo", environment={"DASTREL_CLOCK": clock}).status == 0
    plain = (dastrel.folder / "plain.lwo").read_bytes()
    assert (dastrel.folder / "option.lwo").read_bytes() == plain
    assert (dastrel.folder / "variable.lwo").read_bytes() == plain


def test_3_a_missing_input_is_found_before_another_is_read(dastrel):
    (dastrel.folder / "broken.lwo").write_bytes(b"no object")
    done = dastrel("scatter", "broken.lwo", "missing.lwo", "-o", "out.lwo")
    assert done.status == 3
    assert done.err == (
        "dastrel: scatter: missing.lwo: cannot be opened: No such file or directory\n")


def test_3_a_folder(dastrel):
    done = dastrel("info", ".")
    assert done.status == 3
    assert "is a folder" in done.err


def test_3_another_format_by_its_name(dastrel):
    (dastrel.folder / "tree.obj").write_text("v 0 0 0\n")
    done = dastrel("scatter", "terrain.lwo", "tree.obj", "-o", "out.lwo")
    assert done.status == 3
    assert ("tree.obj: is a Wavefront OBJ file; only LWO2 object files (.lwo) are read"
            in done.err)


def test_3_an_object_under_another_ending(dastrel):
    (dastrel.folder / "tree.lwo").rename(dastrel.folder / "tree.obj")
    done = dastrel("scatter", "terrain.lwo", "tree.obj", "-o", "out.lwo")
    assert done.status == 3
    assert ("tree.obj: is an LWO2 object under another ending; rename it so that it ends in .lwo"
            in done.err)


def test_3_a_ground_without_layers(dastrel):
    write_object(dastrel.folder / "none.lwo")
    done = dastrel("scatter", "none.lwo", "tree.lwo", "-o", "out.lwo")
    assert done.status == 3
    assert done.err == ("dastrel: scatter: none.lwo: has no layers, so there is no ground to put "
                        "clones on; name an object that has polygons\n")
    assert "out.lwo" not in dastrel.files()


def test_3_another_format_by_its_contents(dastrel):
    (dastrel.folder / "old.lwo").write_bytes(b"FORM\0\0\0\x04LWOB")
    done = dastrel("info", "old.lwo")
    assert done.status == 3
    assert "old.lwo" in done.err
    assert "LWOB" in done.err


@pytest.mark.parametrize("verb", ["info", "dump"])
def test_3_a_file_that_is_cut_short(dastrel, verb):
    whole = (dastrel.folder / "tree.lwo").read_bytes()
    (dastrel.folder / "cut.lwo").write_bytes(whole[:len(whole) // 2])
    done = dastrel(verb, "cut.lwo")
    assert done.status == 3
    assert done.err.startswith(f"dastrel: {verb}: cut.lwo: chunk ")
    assert "byte" in done.err


@pytest.mark.skipif(os.geteuid() == 0, reason="root may read everything")
def test_3_a_file_that_may_not_be_read(dastrel):
    (dastrel.folder / "tree.lwo").chmod(0)
    done = dastrel("info", "tree.lwo")
    assert done.status == 3
    assert "tree.lwo: cannot be opened: Permission denied" in done.err


def test_3_a_settings_file_that_is_missing(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--settings", "no.json")
    assert done.status == 3
    assert "no.json: the settings cannot be read: No such file or directory" in done.err


def test_4_a_module_that_is_missing(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--module", "no.p")
    assert done.status == 4
    assert done.err == "dastrel: scatter: no.p: there is no such module file\n"


@pytest.mark.parametrize("call", [["scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo"],
                                  ["modules"]])
def test_4_a_file_that_is_no_module(dastrel, call):
    (dastrel.folder / "text.p").write_text("not a module\n")
    done = dastrel(*call, "--module", "text.p")
    assert done.status == 4
    assert "text.p" in done.err
    assert "out.lwo" not in dastrel.files()


@pytest.fixture
def moved(dastrel, tmp_path_factory):
    """The program alone, as in the bin folder of an installation."""
    place = tmp_path_factory.mktemp("installed")
    (place / "bin").mkdir()
    module = pathlib.Path(dastrel.path).parent / "dastrel.p"
    shutil.copy(dastrel.path, place / "bin" / "dastrel")
    dastrel.path = str(place / "bin" / "dastrel")
    return place, module


def test_4_a_program_without_its_module_tells_where_it_looked(dastrel, moved):
    place, _ = moved
    done = dastrel("modules")
    assert done.status == 4
    assert "the module dastrel.p was not found; name it with --module FILE" in done.err
    assert f"it was looked for at {place}/bin/dastrel.p, " in done.err
    assert f" {place}/lib/dastrel/dastrel.p" in done.err
    assert dastrel("--version").status == 0


def test_the_module_is_found_in_the_library_folder_of_the_installation(dastrel, moved):
    place, module = moved
    (place / "lib" / "dastrel").mkdir(parents=True)
    shutil.copy(module, place / "lib" / "dastrel" / "dastrel.p")
    done = dastrel("modules")
    assert done.status == 0, done
    assert done.out.splitlines()[0] == f"{place}/lib/dastrel/dastrel.p"
    assert dastrel("modules", "--module", module).out.splitlines()[0] == str(module)


def test_4_memory_runs_out(dastrel, sanitized):
    if sanitized:
        pytest.skip("a sanitizer needs all address space")
    points = [(x + dx, 0.0, dz) for x in range(50) for dx, dz in ((0, 0), (0, 0.5), (0.5, 0))]
    faces = [(b"FACE", (first, first + 1, first + 2), "Leaf") for first in range(0, 150, 3)]
    write_object(dastrel.folder / "model.lwo", Layer("", points, faces))
    before = dastrel.files()

    def limited(limit):
        return lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit))

    # What the program's libraries take, and a little more: 750,000 points need far more than that.
    limit = 16 << 20
    while dastrel("--version", preexec_fn=limited(limit)).status != 0:
        limit += 4 << 20
    done = dastrel("scatter", "terrain.lwo", "model.lwo", "-o", "out.lwo", "--clone-num", "5000",
                   "--iterations", "0", preexec_fn=limited(limit + (12 << 20)))
    assert done.status == 4, done
    assert "memory" in done.err
    assert len([line for line in done.err.splitlines() if not line.startswith("warning: ")]) == 1
    assert dastrel.files() == before


def test_4_the_ray_tracer_gets_no_memory_or_no_threads(dastrel, sanitized):
    """Threads need address space, too: close below what a picture takes none can be started."""
    if sanitized:
        pytest.skip("sanitizers need all address space")
    before = dastrel.files()

    def within(limit, *call):
        return dastrel(*call, preexec_fn=lambda: resource.setrlimit(
            resource.RLIMIT_AS, (limit, limit)))

    scatter = ("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "20",
               "--clock", "1", "--quiet")
    limit = 16 << 20
    while within(limit, *scatter).status != 0:
        limit += 4 << 20
    expected = (dastrel.folder / "out.lwo").read_bytes()
    (dastrel.folder / "out.lwo").unlink()
    limit += 4 << 20
    done = within(limit, *scatter, "--picture", "out.png")
    assert done.status == 4, done
    assert done.err.endswith("; the object file is written\n"), done
    assert (dastrel.folder / "out.lwo").read_bytes() == expected
    (dastrel.folder / "out.lwo").unlink()

    failures = 0
    render = ("render", "terrain.lwo", "-o", "out.png", "--size", "32x32", "--samples", "1",
              "--quiet")
    while (done := within(limit, *render)).status != 0:
        assert done.status == 4, done
        assert done.err.startswith("dastrel: render: "), done
        assert done.err.count("\n") == 1, done
        assert dastrel.files() == before
        failures += 1
        limit += 6 << 20
    assert failures > 3


@pytest.mark.parametrize("polygons", [[], [(b"FACE", (0,), "Leaf")]])
def test_4_places_of_clones_that_memory_cannot_hold(dastrel, sanitized, polygons):
    write_object(dastrel.folder / "model.lwo", Layer("", [(0.0, 0.0, 0.0)], polygons))
    (dastrel.folder / "out.lwo").write_bytes(b"as it was")
    if sanitized and polygons:
        pytest.skip("a sanitizer needs all address space, so memory cannot be limited")
    before = dastrel.files()
    limit = 8 << 30
    clones = 2000000000 if not polygons else 100000000
    done = dastrel("scatter", "terrain.lwo", "model.lwo", "-o", "out.lwo",
                   "--clone-num", str(clones), preexec_fn=None if sanitized else
                   lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
    assert done.status == 4, done
    assert done.err.startswith(f"dastrel: scatter: {clones} clones need at least "
                               f"{clones * 160} bytes of memory for their places alone, more than ")
    assert done.err.endswith("; make fewer clones\n")
    assert (dastrel.folder / "out.lwo").read_bytes() == b"as it was"
    assert dastrel.files() == before


def test_5_clones_that_no_file_can_hold_are_refused_before_the_work(dastrel):
    (dastrel.folder / "out.lwo").write_bytes(b"as it was")
    before = dastrel.files()
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo",
                   "--clone-num", "2147483647")
    assert done.status == 5, done
    assert done.out == ""
    assert done.err.startswith("dastrel: scatter: out.lwo: 2147483647 clones of 33 points and "
                               "27 polygons would take at least ")
    assert done.err.endswith(" bytes, more than the 4294967295 that LWO2 can hold; make fewer "
                             "clones, or spread them over several files\n")
    assert (dastrel.folder / "out.lwo").read_bytes() == b"as it was"
    assert dastrel.files() == before


def test_5_a_folder_that_is_not_there(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "no/out.lwo")
    assert done.status == 5
    assert "no/out.lwo" in done.err


def test_5_the_output_is_a_folder(dastrel):
    (dastrel.folder / "out.lwo").mkdir()
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo")
    assert done.status == 5
    assert "out.lwo" in done.err


def test_5_another_format_by_its_name(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.obj")
    assert done.status == 5
    assert ("out.obj: is in a format that is not written; only LWO2 object files (.lwo) are"
            in done.err)


def test_5_is_found_before_an_input_is_read(dastrel):
    (dastrel.folder / "broken.lwo").write_bytes(b"no object")
    done = dastrel("scatter", "broken.lwo", "tree.lwo", "-o", "no/out.lwo")
    assert done.status == 5


def test_5_the_disk_is_full(dastrel):
    before = dastrel.files()
    limit = 20000
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo",
                   preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
    assert done.status == 5, done
    assert "out.lwo" in done.err
    assert dastrel.files() == before


def test_5_keeps_the_old_output(dastrel):
    (dastrel.folder / "out.lwo").write_bytes(b"what was there")
    limit = 20000
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo",
                   preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
    assert done.status == 5, done
    assert (dastrel.folder / "out.lwo").read_bytes() == b"what was there"


def test_5_standard_output_that_takes_nothing(dastrel):
    with open("/dev/full", "wb") as full:
        done = dastrel("info", "tree.lwo", stdout=full)
    assert done.status == 5
    assert "standard output cannot be written: No space left on device" in done.err


def wait_until(condition, running):
    """Waits for something that a running program does; it may end before that."""
    deadline = time.monotonic() + 60
    while not condition() and running.poll() is None:
        assert time.monotonic() < deadline
        time.sleep(0.001)


def unread(pipe):
    """Bytes that nobody has taken out of a pipe."""
    return struct.unpack("i", fcntl.ioctl(pipe, termios.FIONREAD, bytes(4)))[0]


@pytest.mark.parametrize("number, status", [(signal.SIGINT, 130), (signal.SIGTERM, 143)])
def test_130_interrupted_while_scattering(dastrel, number, status):
    before = dastrel.files()
    running = dastrel.start("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num",
                            "1500000", "--iterations", "0")
    maps = pathlib.Path(f"/proc/{running.pid}/maps")
    wait_until(lambda: "dastrel.p" in maps.read_text(), running)
    running.send_signal(number)
    assert running.wait(timeout=60) == status
    assert dastrel.files() == before


@pytest.mark.parametrize("number, status, message", [
    (signal.SIGINT, 130, "interrupted"), (signal.SIGTERM, 143, "ended by the signal SIGTERM"),
    (signal.SIGHUP, 129, "ended by the signal SIGHUP")])
@pytest.mark.parametrize("call", [["info", "-", "--json"],
                                  ["scatter", "terrain.lwo", "-", "-o", "out.lwo", "--json"]])
def test_130_an_interrupt_is_told_as_an_object(dastrel, call, number, status, message):
    before = dastrel.files()
    running = dastrel.start(*call, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE)
    running.stdin.write(b"FORM")
    running.stdin.flush()
    wait_until(lambda: unread(running.stdin) == 0, running)
    running.send_signal(number)
    out, err = running.communicate(timeout=60)
    assert running.returncode == status
    told = json.loads(out)
    assert told["error"] == {"status": status, "message": message, "file": None, "place": None}
    assert err == b""
    assert dastrel.files() == before


def test_130_an_interrupt_while_the_picture_is_made_tells_that_the_object_file_is_written(dastrel):
    running = dastrel.start("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--picture",
                            "out.png", "--clone-num", "20000", "--json", stdout=subprocess.PIPE)
    wait_until(lambda: "out.lwo" in dastrel.files(), running)
    time.sleep(0.05)  # the file gets its name a moment before this is noted
    running.send_signal(signal.SIGINT)
    out, _ = running.communicate(timeout=60)
    assert running.returncode == 130
    assert json.loads(out)["error"]["message"] == "interrupted; the object file is written"
    assert "out.png" not in dastrel.files()


def test_130_without_json_an_interrupt_says_nothing(dastrel):
    running = dastrel.start("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num",
                            "1500000", "--iterations", "0", stdout=subprocess.PIPE)
    maps = pathlib.Path(f"/proc/{running.pid}/maps")
    wait_until(lambda: "dastrel.p" in maps.read_text(), running)
    running.send_signal(signal.SIGINT)
    assert running.communicate(timeout=60)[0] == b""
    assert running.returncode == 130


def test_130_interrupted_while_writing(dastrel):
    large = Layer(points=square().points, polygons=square().polygons)
    large.points += [(0.0, 0.0, 0.0)] * 1000000
    write_object(dastrel.folder / "ground.lwo", large)
    before = dastrel.files()
    for _ in range(20):  # the moment between the first byte and the last is short
        running = dastrel.start("scatter", "ground.lwo", "tree.lwo", "-o", "out.lwo", "--quiet")
        wait_until(lambda: dastrel.files() != before, running)
        running.send_signal(signal.SIGINT)
        status = running.wait(timeout=60)
        if status == 130:
            break
        (dastrel.folder / "out.lwo").unlink(missing_ok=True)
    assert status == 130
    assert dastrel.files() == before
