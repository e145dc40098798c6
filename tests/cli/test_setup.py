# SPDX-License-Identifier: MIT
"""What scripts/setup.sh does where another package manager is at work, with stand-ins for the
system's programs."""

import subprocess

import pytest

from conftest import ROOT

HELD = "E: Could not get lock /var/lib/apt/lists/lock. It is held by process 1 (apt-get)"


def set_up(folder, failures, message):
    """Runs the script where reading the lists fails so many times; gives what came of it and the
    calls that it made."""
    programs = {
        "dpkg-query": "",
        "id": "echo 0",
        "sleep": 'echo "sleep $*" >>calls',
        "apt-get": f"""echo "$*" >>calls
case $* in *update*)
    [ "$(grep -c update calls)" -gt {failures} ] || {{ echo "{message}" >&2; exit 100; }} ;;
esac""",
    }
    for name, text in programs.items():
        program = folder / name
        program.write_text(f"#!/bin/bash\n{text}\n")
        program.chmod(0o755)
    done = subprocess.run(["/bin/bash", str(ROOT / "scripts" / "setup.sh")], cwd=folder, check=False,
                          env={"PATH": f"{folder}:/usr/bin:/bin"}, capture_output=True, text=True,
                          timeout=60)
    return done, (folder / "calls").read_text().splitlines()


@pytest.mark.parametrize("failures", [0, 2])
def test_setup_waits_for_another_package_manager(tmp_path, failures):
    done, calls = set_up(tmp_path, failures, HELD)
    assert done.returncode == 0, done
    update = "-o DPkg::Lock::Timeout=300 update -qq"
    assert calls[:-1] == [update, "sleep 5"] * failures + [update]
    assert calls[-1].startswith("-o DPkg::Lock::Timeout=300 install -y ")
    assert done.stdout.endswith("setup: done\n")


@pytest.mark.parametrize("message, attempts", [(HELD, 60), ("E: no network", 1)])
def test_setup_gives_up_with_the_reason(tmp_path, message, attempts):
    done, calls = set_up(tmp_path, 1000, message)
    assert done.returncode == 1
    assert done.stderr == message + "\n"
    assert sum("update" in call for call in calls) == attempts
    assert not any("install" in call for call in calls)
