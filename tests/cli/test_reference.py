# SPDX-License-Identifier: MIT
"""The manual page and the shells' completions tell of the options that the help tells of."""

import re
import shutil
import subprocess

import pytest

from test_help import VERBS


def options_of(dastrel, verb):
    return set(re.findall(r"^ +(?:-\w, )?(--[\w-]+)", dastrel("help", verb).out, re.M))


@pytest.mark.parametrize("verb", VERBS)
def test_every_option_is_on_every_page(dastrel, verb):
    options = options_of(dastrel, verb)
    assert "--help" in options
    manual = dastrel("help", "--man").out.replace("\\-", "-")
    section = re.search(rf"^\.SH dastrel {verb}\n(.*?)(?=^\.SH |\Z)", manual, re.M | re.S)[1]
    assert options <= set(re.findall(r"^\\fB(?:-\w, )?(--[\w-]+)", section, re.M))
    line = re.search(rf"^ +{verb}\) options='(.*)' ;;$", dastrel("help", "--bash").out, re.M)[1]
    assert options <= set(line.split())
    part = re.search(rf"^    {verb}\)\n(.*?);;", dastrel("help", "--zsh").out, re.M | re.S)[1]
    assert options <= set(re.findall(r"^ +'(--[\w-]+):", part, re.M))
    fish = re.findall(rf"__fish_seen_subcommand_from {verb}'.* -l ([\w-]+)",
                      dastrel("help", "--fish").out)
    assert options <= {"--" + name for name in fish}


def complete(dastrel, words):
    """What bash offers for the last of the words."""
    script = (dastrel("help", "--bash").out +
              f'COMP_WORDS=(dastrel {" ".join(words)})\nCOMP_CWORD={len(words)}\n'
              f'_dastrel dastrel "{words[-1]}" x\nprintf "%s\\n" "${{COMPREPLY[@]}}"\n')
    done = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=True)
    return done.stdout.split()


def test_bash_completes_verbs_and_options(dastrel):
    assert complete(dastrel, ["sc"]) == ["scatter"]
    assert complete(dastrel, ["help", "ren"]) == ["render"]
    assert complete(dastrel, ["scatter", "--slope-m"]) == ["--slope-min", "--slope-max"]
    assert complete(dastrel, ["scatter", "ter"]) == [] # files are the shell's business


@pytest.mark.skipif(shutil.which("man") is None, reason="man is not installed")
def test_man_reads_the_page_without_a_complaint(dastrel, tmp_path):
    page = tmp_path / "dastrel.1"
    page.write_text(dastrel("help", "--man").out)
    done = subprocess.run(["man", "--warnings", "-l", str(page)], capture_output=True, text=True,
                          check=True, env={"PATH": "/usr/bin:/bin", "MANWIDTH": "80",
                                           "LC_ALL": "C.UTF-8"})
    assert done.stderr == ""
    assert "--clone-num N" in done.stdout
