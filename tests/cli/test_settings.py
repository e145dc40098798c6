# SPDX-License-Identifier: MIT
"""The table of settings, how values are read, and settings files."""

import json
import math
import re

import pytest

from conftest import ROOT

PI = math.pi
TEN_DEGREES = 10 * 3.1415 / 180

# Field, panel label, and what the panel holds by default.
DEFAULTS = {
    "clone_num": ("Number of Clones", 30),
    "distribution": ("Distribution", 0.8),
    "iterations": ("Iterations", 15),
    "seed": ("Random Seed", 25),
    "density_wg": ("Density WeightMap", "none"),
    "size_var_x": ("Size Variations", 0.25),
    "size_var_y": ("Y", 0.25),
    "size_var_z": ("Z", 0.25),
    "size_indep": ("Independent Sizes", False),
    "size_wg": ("Size WeightMap", "none"),
    "size_wg_influence": ("Size WeightMap Influence", 0.5),
    "size_poly_area": ("Size depends on Poly Area", False),
    "dep_power": ("Dependence Power", 0.5),
    "h_min": ("Random rotation H Min", -TEN_DEGREES),
    "h_max": ("H Max", TEN_DEGREES),
    "p_min": ("P Min", -TEN_DEGREES),
    "p_max": ("P Max", TEN_DEGREES),
    "b_min": ("B Min", -TEN_DEGREES),
    "b_max": ("B Max", TEN_DEGREES),
    "h_align": ("H Align with normals", True),
    "p_align": ("P Align with normals", True),
    "p_angle_wg": ("P angle weightmap", "none"),
    "p_absolute": ("Absolute", False),
    "slope_limits": ("Slope Angle Limits", False),
    "slope_min": ("Min Slope Angle", 0.0),
    "slope_max": ("Max Slope Angle", 3.1415),
    "jitter": ("Jitter Cloned points", 0.0),
    "auto_morph_maps": ("Auto morph maps", 0),
}
PERCENT = {"distribution", "size_var_x", "size_var_y", "size_var_z", "size_wg_influence",
           "dep_power"}
ANGLES = {"h_min", "h_max", "p_min", "p_max", "b_min", "b_max", "slope_min", "slope_max"}


def held_by_the_panel(field, value):
    """A value of a settings file in the panel's own unit."""
    if field in PERCENT:
        return value / 100
    if field in ANGLES:
        return float(value[:-3]) if isinstance(value, str) else value * PI / 180
    return value


def used_settings(dastrel, *options):
    """What the panel's controls held when OK was pressed."""
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--json", "--clock", "1",
                   *options)
    assert done.status == 0, done
    settings = json.loads(done.out)["settings"]
    return {field: held_by_the_panel(field, value) for field, value in settings.items()}


def refusal(dastrel, *options):
    """The first line about options that are wrong. Nothing is read or written."""
    done = dastrel("scatter", "missing.lwo", "missing.lwo", "-o", "out.lwo", *options)
    assert done.status == 2, done
    assert not (dastrel.folder / "out.lwo").exists()
    return done.err.splitlines()[0].removeprefix("dastrel: scatter: ")


def test_the_table_has_every_setting_with_its_label(dastrel):
    done = dastrel("settings")
    assert done.status == 0
    lines = done.out.splitlines()
    assert len(lines) == 1 + 28
    for field, (label, _) in DEFAULTS.items():
        option = "--" + field.replace("_", "-")
        assert [line for line in lines if re.match(rf"{option} +{re.escape(label)}  ", line)], field


def test_the_defaults_printed_are_exact(dastrel):
    printed = json.loads(dastrel("settings", "--json").out)
    assert list(printed) == list(DEFAULTS)
    for field, (_, default) in DEFAULTS.items():
        assert held_by_the_panel(field, printed[field]) == default, field


def test_the_defaults_printed_are_those_of_the_module(dastrel):
    assert used_settings(dastrel) == {field: value for field, (_, value) in DEFAULTS.items()}


def test_a_file_of_defaults_changes_nothing(dastrel):
    (dastrel.folder / "defaults.json").write_text(dastrel("settings", "--json").out)
    plain = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "plain.lwo", "--clock", "5")
    filled = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "filled.lwo", "--clock", "5",
                     "--settings", "defaults.json")
    assert plain.status == 0, plain
    assert filled.status == 0, filled
    assert "warning" not in filled.err
    assert (dastrel.folder / "plain.lwo").read_bytes() == (
        dastrel.folder / "filled.lwo").read_bytes()


@pytest.mark.parametrize("field, text, held", [
    ("clone_num", "7", 7),
    ("clone_num", "+7", 7),
    ("distribution", "120", 1.2),
    ("distribution", "33.3%", 33.3 / 100),
    ("iterations", "0", 0),
    ("seed", "-7", -7),
    ("seed", "2147483647", 2147483647),
    ("seed", "-2147483648", -2147483648),
    ("density_wg", "Density", "Density"),
    ("size_var_x", "10", 0.1),
    ("size_var_y", "20%", 0.2),
    ("size_var_z", "1e2", 1.0),
    ("size_indep", "on", True),
    ("size_wg", "Tips", "Tips"),
    ("size_wg_influence", "-50", -0.5),
    ("size_poly_area", "yes", True),
    ("dep_power", "100 %", 1.0),
    ("h_min", "-180", -180 * PI / 180),
    ("h_max", "180deg", 180 * PI / 180),
    ("p_min", "-0.5rad", -0.5),
    ("p_max", "0.1 rad", 0.1),
    ("b_min", "-33.3", -33.3 * PI / 180),
    ("b_max", "0", 0.0),
    ("h_align", "off", False),
    ("p_align", "0", False),
    ("p_angle_wg", "Density", "Density"),
    ("p_absolute", "true", True),
    ("slope_limits", "1", True),
    ("slope_min", "5", 5 * PI / 180),
    ("slope_max", "90", 90 * PI / 180),
    ("jitter", "0.1", 0.1),
    ("jitter", "10%", 10 / 100),
    ("auto_morph_maps", "3", 3),
])
def test_every_option_reaches_its_control_and_no_other(dastrel, field, text, held):
    used = used_settings(dastrel, "--" + field.replace("_", "-"), text)
    expected = {name: value for name, (_, value) in DEFAULTS.items()}
    expected[field] = held
    assert used == expected


@pytest.mark.parametrize("field", list(DEFAULTS))
def test_every_option_takes_an_equals_sign(dastrel, field):
    text = {"clone_num": "8", "density_wg": "none"}.get(field, "1")
    if field.endswith("_wg"):
        text = "none"
    assert used_settings(dastrel, f"--{field.replace('_', '-')}={text}")


def test_a_switch_alone_is_on_and_leaves_the_next_argument_alone(dastrel):
    done = dastrel("scatter", "--size-indep", "terrain.lwo", "--slope-limits", "tree.lwo",
                   "-o", "out.lwo", "--json", "--clock", "1")
    assert done.status == 0, done
    summary = json.loads(done.out)
    assert [entry["file"] for entry in summary["inputs"]] == ["terrain.lwo", "tree.lwo"]
    assert summary["settings"]["size_indep"] is True
    assert summary["settings"]["slope_limits"] is True


def test_the_last_of_two_equal_options_counts(dastrel):
    assert used_settings(dastrel, "--seed", "1", "--seed", "2")["seed"] == 2


@pytest.mark.parametrize("options, message", [
    (["--jitter", "0,5"], "--jitter: '0,5' is not a number; write 0.5"),
    (["--distribution", "8,5%"], "--distribution: '8,5%' is not a number; write 8.5%"),
    (["--h-max", "0,5rad"], "--h-max: '0,5rad' is not a number; write 0.5rad"),
    (["--h-min", "nan"], "--h-min: 'nan' is not a number; write one such as 10deg"),
    (["--h-min", "inf"], "--h-min: 'inf' is not a number; write one such as 10deg"),
    (["--h-min", "10grad"], "--h-min: '10grad' is not a number; write one such as 10deg"),
    (["--jitter", "1e999"], "--jitter: '1e999' is too large or too small for a number"),
    (["--jitter", ""], "--jitter: '' is not a number; write one such as 0.1"),
    (["--clone-num", "ten"], "--clone-num: 'ten' is not a whole number"),
    (["--clone-num", "3.5"], "--clone-num: '3.5' is not a whole number"),
    (["--clone-num", "80%"], "--clone-num: '80%' is not a whole number"),
    (["--clone-num", "2147483648"],
     "--clone-num: 2147483648 is out of range; it must lie in -2147483648 .. 2147483647"),
    (["--seed", "99999999999999999999"],
     "--seed: 99999999999999999999 is out of range; it must lie in -2147483648 .. 2147483647"),
    (["--h-align=maybe"], "--h-align: 'maybe' is neither on nor off"),
    (["--clock", "soon"], "--clock: 'soon' is not a whole number; it counts seconds, "
                          "such as 1790000000"),
    (["--clock", "-1"],
     "--clock: -1 is out of range; it must lie in 0 .. 4294967295; it counts seconds, "
     "such as 1790000000"),
    (["--foreground", "1", "--background", "2"],
     "--foreground: is for one SCENE file, and there are several"),
    (["--background", "2"], "--background: needs --foreground, the layers that are the ground"),
])
def test_wrong_values_are_refused_before_anything_is_read(dastrel, options, message):
    assert refusal(dastrel, *options) == message


@pytest.mark.parametrize("text, message", [
    ('{"sed": 3}', "wrong.json: line 1: unknown setting 'sed'; did you mean 'seed'?"),
    ('{"clone-num": 3}',
     "wrong.json: line 1: unknown setting 'clone-num'; did you mean 'clone_num'?"),
    ('{\n  "seed": 1,\n  "clone_num": true\n}',
     "wrong.json: line 3: clone_num: true is not a number"),
    ('{"clone_num": 3.5}', "wrong.json: line 1: clone_num: '3.5' is not a whole number"),
    ('{"jitter": null}', "wrong.json: line 1: jitter: null is not a number"),
    ('{"jitter": [1]}', "wrong.json: line 1: jitter: [1] is not a number"),
    ('{"jitter": "0,5"}', "wrong.json: line 1: jitter: '0,5' is not a number; write 0.5"),
    ('{"h_align": 2}', "wrong.json: line 1: h_align: '2' is neither on nor off"),
    ('{"h_align": {}}', "wrong.json: line 1: h_align: {} is neither true nor false"),
    ('{"size_wg": 1}',
     'wrong.json: line 1: size_wg: 1 is not a map\'s name in quotes, nor "none"'),
    ('{"seed": 1,\n "seed": 2}', "wrong.json: 'seed' stands there twice"),
    ('{"seed": 1,\n}', "wrong.json: line 2: is not JSON; `dastrel settings --json` prints a file "
                       "to start from"),
    ("", "wrong.json: line 1: is not JSON; `dastrel settings --json` prints a file to start from"),
    ("[1]", "wrong.json: is not a JSON object; `dastrel settings --json` prints a file to start "
            "from"),
    ('{"seed": 1}\0 and more', "wrong.json: is not a JSON object; `dastrel settings --json` prints a "
                              "file to start from"),
    ('{"jitter": 1e999}', "wrong.json: holds a number that is too large"),
])
def test_wrong_settings_files_are_refused(dastrel, text, message):
    (dastrel.folder / "wrong.json").write_text(text)
    assert refusal(dastrel, "--settings", "wrong.json") == message


def test_a_settings_file_takes_numbers_and_texts_with_units(dastrel):
    (dastrel.folder / "meadow.json").write_text(
        '{"clone_num": 12, "distribution": "90%", "dep_power": 70, "h_min": -45,'
        ' "h_max": "0.25rad", "size_indep": true, "p_align": "off", "density_wg": "Density",'
        ' "jitter": "5%"}')
    used = used_settings(dastrel, "--settings", "meadow.json")
    assert used["clone_num"] == 12
    assert used["distribution"] == 0.9
    assert used["dep_power"] == 0.7
    assert used["h_min"] == -45 * PI / 180
    assert used["h_max"] == 0.25
    assert used["size_indep"] is True
    assert used["p_align"] is False
    assert used["density_wg"] == "Density"
    assert used["jitter"] == 0.05


def test_options_win_over_the_settings_file(dastrel):
    (dastrel.folder / "meadow.json").write_text('{"clone_num": 12, "seed": 3}')
    used = used_settings(dastrel, "--clone-num", "4", "--settings", "meadow.json")
    assert (used["clone_num"], used["seed"]) == (4, 3)


def test_the_settings_of_a_summary_are_a_settings_file(dastrel):
    options = ["--h-min", "-12.3456789", "--h-max", "33.3", "--size-var-x", "7.77", "--jitter",
               "0.033", "--distribution", "66.6%", "--clone-num", "9"]
    first = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "first.lwo", "--json", "--clock",
                    "9", *options)
    assert first.status == 0, first
    (dastrel.folder / "again.json").write_text(json.dumps(json.loads(first.out)["settings"]))
    again = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "again.lwo", "--clock", "9",
                    "--settings", "again.json")
    assert again.status == 0, again
    assert (dastrel.folder / "first.lwo").read_bytes() == (
        dastrel.folder / "again.lwo").read_bytes()


def test_an_unknown_map_is_refused_with_a_list_of_those_there_are(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--density-wg", "Grass")
    assert done.status == 2
    assert done.err.splitlines()[0] == (
        "dastrel: scatter: --density-wg: there is no weight map 'Grass'; "
        "there are 'Density', 'Tips'")
    assert "out.lwo" not in dastrel.files()


def test_an_unknown_map_where_there_are_none_is_refused(dastrel):
    done = dastrel("scatter", "stone.lwo", "stone.lwo", "-o", "out.lwo", "--size-wg", "Grass")
    assert done.status == 2
    assert "--size-wg: there is no weight map 'Grass'; neither ground nor model has any" in done.err


@pytest.mark.parametrize("options, source, message", [
    (["--size-var-y", "50"], "--size-var-y", "Size axes are linked"),
    (["--slope-max", "20"], "--slope-max", "Slope Angle is Disabled"),
    (["--size-wg-influence", "20"], "--size-wg-influence", "Choose any weightmap first"),
    (["--dep-power", "20"], "--dep-power",
     "Control is disabled. Turn 'Size Depends on Poly Area' on first"),
    (["--p-align", "off", "--p-angle-wg", "Density"], "--p-angle-wg", "P Align should be enabled."),
])
def test_a_value_in_a_disabled_control_is_told(dastrel, options, source, message):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", *options)
    assert done.status == 0, done
    assert f"warning: {source}: is set while its control is disabled: {message}" in done.err


def test_no_warning_once_the_control_is_enabled(dastrel):
    done = dastrel("scatter", "terrain.lwo", "tree.lwo", "-o", "out.lwo", "--size-var-y", "50",
                   "--size-indep")
    assert done.status == 0, done
    assert "warning" not in done.err


def test_the_document_holds_the_table_as_the_program_prints_it(dastrel):
    document = (ROOT / "docs" / "settings.md").read_text()
    begin, end = "<!-- table begins -->\n", "<!-- table ends -->"
    table = document[document.index(begin) + len(begin):document.index(end)]
    assert table == dastrel("settings", "--markdown").out


def test_the_document_tells_of_every_setting(dastrel):
    headings = re.findall(r"^### .*$", (ROOT / "docs" / "settings.md").read_text(), re.M)
    for field in DEFAULTS:
        option = "--" + field.replace("_", "-")
        assert [line for line in headings if f"`{option}`" in line], option
