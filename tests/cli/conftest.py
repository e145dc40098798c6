# SPDX-License-Identifier: MIT
"""Runs the program as a user does: in an empty folder, with a plain environment."""

import os
import pathlib
import shutil
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
sys.path.insert(0, str(EXAMPLES))


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the program to test")
    parser.addoption("--misbehaving-module",
                     help="the test module of that name (default: tests/cli/misbehaving.p in the "
                     "program's build folder)")
    parser.addoption("--failing-memory",
                     help="the preloaded library of that name")
    parser.addoption("--picture-step", type=int, default=400,
                     help="how many allocations to go on after a run that made a large picture")
    parser.addoption("--sanitized", action="store_true",
                     help="the program holds sanitizers, which need all address space")
    parser.addoption("--update-goldens", action="store_true",
                     help="write what the program prints as what it has to print")


class Result:
    """What came of one call."""

    def __init__(self, done):
        self.status = done.returncode
        self.raw = done.stdout
        self.err = done.stderr.decode("utf-8", "replace")

    @property
    def out(self):
        return self.raw.decode("utf-8", "replace")

    def __repr__(self):
        return f"status {self.status}\n--- out\n{self.out}\n--- err\n{self.err}"


class Program:
    """The program, run in one folder. The examples lie there under their short names."""

    def __init__(self, path, folder):
        self.path = str(path)
        self.folder = folder
        self.environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C"}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"):
            if name in os.environ:
                self.environment[name] = os.environ[name]

    def start(self, *arguments, environment=None, **options):
        return subprocess.Popen([self.path, *map(str, arguments)], cwd=self.folder,
                                env={**self.environment, **(environment or {})}, **options)

    def __call__(self, *arguments, environment=None, stdin=b"", **options):
        return Result(subprocess.run(
            [self.path, *map(str, arguments)], cwd=self.folder, input=stdin,
            env={**self.environment, **(environment or {})},
            stdout=options.pop("stdout", subprocess.PIPE), stderr=subprocess.PIPE,
            timeout=120, check=False, **options))

    def dump(self, name):
        """The object file as text."""
        done = self("dump", name)
        assert done.status == 0, done
        return done.out

    def files(self):
        return sorted(entry.name for entry in self.folder.iterdir())


@pytest.fixture
def dastrel(request, tmp_path):
    for name in ("terrain.lwo", "tree.lwo", "stone.lwo"):
        shutil.copy(EXAMPLES / name, tmp_path / name)
    return Program(pathlib.Path(request.config.getoption("--program")).resolve(), tmp_path)


@pytest.fixture
def sanitized(request):
    return request.config.getoption("--sanitized")


@pytest.fixture
def misbehaving(request):
    """The path of the module that does what MISBEHAVIOUR says."""
    named = request.config.getoption("--misbehaving-module")
    if named is None:
        build = pathlib.Path(request.config.getoption("--program")).resolve().parents[1]
        named = build / "tests" / "cli" / "misbehaving.p"
    path = pathlib.Path(named).resolve()
    assert path.is_file(), f"{path} is not built; build the target test_module_misbehaving"
    return path
