# SPDX-License-Identifier: MIT
"""Modules that do not do what a module should: the program says so, and the old output stays."""

import resource
import signal
import time

import pytest

ALL_PHASES = ["loading", "startup", "run", "shutdown", "unloading"]
ENDS = [
    ("exit", "the module ended the program (exit)"),
    ("exit 3", "the module ended the program (exit)"),
    ("exit on a thread", "the module ended the program (exit)"),
    ("_exit", "the module ended the program (_exit)"),
    ("_Exit", "the module ended the program (_exit)"),
    ("quick_exit", "the module ended the program (quick_exit)"),
    ("abort", "the module ended the program (abort)"),
]


def scatter(dastrel, module, behaviour, *options, **more):
    return dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--module", module,
                   *options, environment={"MISBEHAVIOUR": behaviour}, **more)


def with_old_output(dastrel):
    """Puts an older output there. Gives what the folder holds."""
    (dastrel.folder / "out.lwo").write_bytes(b"as it was")
    return dastrel.files()


def expect_old_output(dastrel, before):
    assert (dastrel.folder / "out.lwo").read_bytes() == b"as it was"
    assert dastrel.files() == before


def test_a_module_that_behaves(dastrel, misbehaving):
    with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, "")
    assert done.status == 0, done
    assert (dastrel.folder / "out.lwo").read_bytes().startswith(b"FORM")


@pytest.mark.parametrize("phase", ["loading", "startup", "run"])
@pytest.mark.parametrize("act, told", ENDS)
def test_a_module_that_ends_the_program(dastrel, misbehaving, phase, act, told):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, f"{phase} {act}")
    assert done.status == 4, done
    assert done.out == ""
    assert done.err == (
        f"dastrel: scatter: {misbehaving}: {phase}: {told}; nothing was written\n")
    expect_old_output(dastrel, before)


def test_a_module_that_throws_while_it_is_loaded(dastrel, misbehaving):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, "loading throw")
    assert done.status == 4, done
    assert done.err == (f"dastrel: scatter: {misbehaving}: loading: the module ended the program "
                        "(std::terminate); nothing was written\n")
    expect_old_output(dastrel, before)


@pytest.mark.parametrize("phase", ["shutdown", "unloading"])
@pytest.mark.parametrize("act, told", [ENDS[0], ENDS[3]])
def test_a_module_that_ends_the_program_after_the_output_was_written(dastrel, misbehaving, phase,
                                                                     act, told):
    done = scatter(dastrel, misbehaving, f"{phase} {act}")
    assert done.status == 4, done
    assert done.err.splitlines()[-1] == f"dastrel: scatter: {misbehaving}: {phase}: {told}"
    assert dastrel("info", "out.lwo").status == 0


@pytest.mark.parametrize("act, told", [
    ("SIGSEGV", "the module crashed (SIGSEGV, an invalid memory access)"),
    ("SIGFPE", "the module crashed (SIGFPE, an arithmetic error)"),
    ("stack overflow", "the module crashed (SIGSEGV, an invalid memory access)"),
    ("terminate", "the module ended the program (std::terminate)"),
])
def test_a_module_that_crashes(dastrel, misbehaving, sanitized, act, told):
    if sanitized:
        pytest.skip("a sanitizer has handlers of its own for crashes")
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, f"run {act}")
    assert done.status == 4, done
    assert done.err.splitlines()[-1] == (
        f"dastrel: scatter: {misbehaving}: run: {told}; nothing was written")
    expect_old_output(dastrel, before)


def test_a_module_that_ends_the_program_in_a_scan(dastrel, misbehaving):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, "scan exit")
    assert done.status == 4, done
    assert "run: the module ended the program (exit)" in done.err
    expect_old_output(dastrel, before)


def test_child_processes_of_a_module_may_end(dastrel, misbehaving):
    done = scatter(dastrel, misbehaving, "run children")
    assert done.status == 0, done
    assert dastrel("info", "out.lwo").status == 0


@pytest.mark.parametrize("phase", ["loading", "startup"])
def test_other_verbs_tell_it_too(dastrel, misbehaving, phase):
    done = dastrel("modules", "--module", misbehaving,
                   environment={"MISBEHAVIOUR": f"{phase} exit"})
    assert done.status == 4, done
    assert done.out == ""
    assert done.err.startswith(f"dastrel: modules: {misbehaving}: {phase}: the module ended")


def test_the_version_tells_it_too(dastrel, misbehaving, tmp_path_factory):
    place = tmp_path_factory.mktemp("installed")
    (place / "dastrel").write_bytes(open(dastrel.path, "rb").read())
    (place / "dastrel").chmod(0o755)
    (place / "dastrel.p").write_bytes(misbehaving.read_bytes())
    dastrel.path = str(place / "dastrel")
    assert "module " in dastrel("--version").out
    done = dastrel("--version", environment={"MISBEHAVIOUR": "startup exit"})
    assert done.status == 4, done
    assert done.err.startswith(f"dastrel: {place}/dastrel.p: startup: the module ended")


@pytest.mark.parametrize("behaviour, told", [
    ("run do nothing", "the command ended without doing anything (it began no edit)"),
    ("run leave the edit open",
     "the command ended without finishing its edit, which was dropped"),
    ("run give the edit up", "the command gave its edit up with error 12345"),
    ("run return a code", "the command ended with code 12"),
])
def test_a_run_without_a_result_keeps_the_old_output(dastrel, misbehaving, behaviour, told):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, behaviour)
    assert done.status == 4, done
    assert done.err == f"dastrel: scatter: {misbehaving}: {told}; nothing was written\n"
    expect_old_output(dastrel, before)


@pytest.mark.parametrize("behaviour", ["run finish without a change", "run give up, then finish"])
def test_a_run_that_finishes_its_last_edit_is_sound(dastrel, misbehaving, behaviour):
    with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, behaviour)
    assert done.status == 0, done
    assert dastrel("info", "out.lwo").status == 0


def test_no_clones_are_a_sound_result(dastrel):
    with_old_output(dastrel)
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--clone-num", "0")
    assert done.status == 0, done
    assert "nothing was added" in done.err
    assert dastrel("info", "out.lwo").status == 0


@pytest.mark.parametrize("options", [[], ["--clone-num", "3"]])
@pytest.mark.parametrize("kind, told", [("float", "a number"), ("percent", "a percentage"),
                                        ("iPopChoice", "a list"), ("vButton", "a button")])
def test_a_control_of_another_kind_than_its_setting(dastrel, misbehaving, kind, told, options):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, f"run panel {kind}", *options)
    assert done.status == 4, done
    assert (f"the module's panel has 'Number of Clones' as {told}, which is no control for the "
            "setting clone_num (number); this module is not the one the program was made for"
            in done.err)
    expect_old_output(dastrel, before)


def test_a_control_of_the_settings_kind(dastrel, misbehaving):
    done = scatter(dastrel, misbehaving, "run panel integer", "--clone-num", "3")
    assert done.status == 0, done


def interrupt_when_looping(dastrel, misbehaving, behaviour, *call):
    """Presses Ctrl-C once the module loops: the program ends with 130 and leaves no file."""
    with dastrel.start(*call, "--module", misbehaving, stderr=-1, stdout=-3,
                       environment={"MISBEHAVIOUR": behaviour}) as running:
        for line in running.stderr:
            if line == b"looping\n":
                break
        else:
            pytest.fail("the module did not get as far as its loop")
        before = dastrel.files()
        time.sleep(0.01)
        running.send_signal(signal.SIGINT)
        assert running.wait(timeout=60) == 130
        assert running.stderr.read() == b""
    assert dastrel.files() == before


@pytest.mark.parametrize("verb", ["scatter", "modules"])
@pytest.mark.parametrize("phase", ALL_PHASES + ["scan"])
def test_130_an_endless_loop_in_a_module_can_be_interrupted(dastrel, misbehaving, verb, phase):
    if verb == "modules" and phase in ("run", "scan"):
        pytest.skip("this verb runs no command")
    call = {"scatter": ["terrain.lwo", "tree.lwo", "-o", "out.lwo"], "modules": []}[verb]
    interrupt_when_looping(dastrel, misbehaving, f"{phase} loop", verb, *call)


def test_130_a_list_without_end_can_be_interrupted(dastrel, misbehaving):
    interrupt_when_looping(dastrel, misbehaving, "run list without end",
                           "scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo")


def test_4_a_list_without_end_takes_all_memory(dastrel, misbehaving, sanitized):
    if sanitized:
        pytest.skip("a sanitizer needs all address space, so memory cannot be limited")
    before = with_old_output(dastrel)
    limit = 256 << 20
    done = scatter(dastrel, misbehaving, "run list without end", "--quiet",
                   preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
    assert done.status == 4, done
    told = [line for line in done.err.splitlines() if line != "looping"]
    assert len(told) == 1 and "memory" in told[0], done
    expect_old_output(dastrel, before)


def test_a_thread_that_still_runs_when_the_module_is_unloaded(dastrel, misbehaving, sanitized):
    """The thread crashes if it is scheduled before the program ends: reported, and never bare."""
    if sanitized:
        pytest.skip("a sanitizer reports crashes itself")
    for _ in range(20):
        done = scatter(dastrel, misbehaving, "shutdown leave a thread", "--quiet")
        assert dastrel("info", "out.lwo").status == 0
        if done.status != 0:
            assert done.status == 4, done
            assert done.err == (
                f"dastrel: scatter: {misbehaving}: unloading: a thread of the module still runs "
                "(SIGSEGV); its shut-down function must end it\n")


@pytest.mark.parametrize("number, shown", [("0", r"\x00\x00\x00\x00"), ("3d1", r"\x00\x00\x03\xD1"),
                                           ("4641437f", r"FAC\x7F")])
def test_a_polygon_of_a_type_that_no_file_can_hold(dastrel, misbehaving, number, shown):
    before = with_old_output(dastrel)
    done = scatter(dastrel, misbehaving, f"run add a polygon of type {number}")
    assert done.status == 4, done
    assert done.err == (
        f"dastrel: scatter: {misbehaving}: mesh edit: addPoly: no file can hold polygons of the "
        f"type {shown}: a type is four printable characters, such as FACE; nothing was changed\n")
    expect_old_output(dastrel, before)


def test_a_polygon_of_a_type_of_the_modules_own(dastrel, misbehaving):
    done = scatter(dastrel, misbehaving, "run add a polygon of type 41414141")
    assert done.status == 0, done
    assert "1 AAAA" in dastrel("info", "out.lwo").out
