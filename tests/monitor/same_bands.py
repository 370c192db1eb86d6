#!/usr/bin/env python3
"""The example monitor puts sensors into the bands that rux test does.

    same_bands.py RUX MONITOR PROFILE TESTS...

TESTS are files of test cases (docs/test.schema.json), which rux test runs first. Wherever a case
expects a value and a band of a sensor, or a table has a reading and a band, the monitor reads that
value. For this, a copy of the scripts says that each sensor is an input of a made-up chip. So are
the readings around each limit, with the bands that rux test --boundary prints.
"""
import collections
import csv
import io
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import hwmon

# P_UNIT -> a feature with that unit, and what the kernel says for 1. Other units are left out of the
# copy: their numbers are those of a fan.
INPUTS = {"degrees C": ("temp", 1000), "mV": ("in", 1), "mA": ("curr", 1), "W": ("power", 1000000),
          "rpm": ("fan", 1)}


def add_input(section, number):
    """A [SENSOR] section that reads an input; returns the section, the feature, its scale."""
    unit = re.search(r"^P_UNIT\s*=\s*(.*?)\s*$", section, re.MULTILINE)
    feature, scale = INPUTS.get(unit[1] if unit else "", ("fan", 1))
    if unit and unit[1] not in INPUTS:
        section = section.replace(unit[0], "", 1)
    feature += str(number)
    head = f"[SENSOR]\nP_DEVICE = HWMON_CHIP\nP_FEATURE = {feature}\n"
    return section.replace("[SENSOR]\n", head, 1), feature, scale


def copy_machine(script, folder):
    """A copy of the scripts of a machine; returns its main script, and sensor -> input."""
    shutil.copytree(script.parent, folder)
    inputs = {}
    for path in sorted(folder.rglob("*.rux")):
        sections = re.split(r"(?=^\[)", path.read_text(), flags=re.MULTILINE)
        for i, section in enumerate(sections):
            if not section.startswith("[SENSOR]\n"):
                continue
            name = re.search(r"^NAME\s*=\s*(\S+)", section, re.MULTILINE)[1]
            sections[i], feature, scale = add_input(section, len(inputs) + 1)
            inputs[name] = feature, scale
        path.write_text("".join(sections))
    main = folder / script.name
    main.write_text(main.read_text() + "\n[DEVICE]\nNAME = HWMON_CHIP\nID = 0x7FFF\nINITFLAG = 0\n"
                    "CONTROLMASK = 0\nP_CHIP = example-*\n")
    return main, inputs


def number_of(value):
    return int(value, 0) if isinstance(value, str) else value


def cases_of(tests):
    """(sensor, reading, band) of all cases in a file of tests and its tables."""
    content = json.loads(tests.read_text())
    for case in content.get("cases", []):
        for part in case.get("rounds", [case]):
            for path, expected in part.get("expect", {}).items():
                is_whole = isinstance(expected, dict) and {"value", "band"} <= expected.keys()
                if path.startswith("SENSOR/") and is_whole and expected["value"] != "unknown":
                    yield path[7:], number_of(expected["value"]), expected["band"]
    for table in content.get("tables", []):
        with open(tests.parent / table, newline="") as file:
            for row in csv.DictReader(file):
                if row["path"].startswith("SENSOR/") and row.get("band"):
                    yield row["path"][7:], number_of(row["reading"]), row["band"]


def boundaries_of(text):
    """(sensor, reading, band) of what rux test --boundary prints as CSV."""
    for row in csv.DictReader(io.StringIO(text)):
        if "not compared" in row["at it"]:
            continue
        for column in ("below it", "at it", "above it"):
            reading, band = row[column].split(": ")
            yield row["sensor"], int(reading), band


def run(*command):
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode != 0:
        raise SystemExit(f"{command}: status {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


def compare(monitor, meta, inputs, cases, folder):
    """Each round has the next reading of every sensor. Returns how many bands were compared."""
    rows = collections.defaultdict(list)
    for sensor, reading, band in cases:
        rows[sensor].append((reading, band))
    tree = hwmon.Tree(folder / "root")
    tree.chip(0, "example", **{feature: 0 for feature, _ in inputs.values()})
    count = 0
    for number in range(max(map(len, rows.values()))):
        expected = {}
        for sensor, all_rows in rows.items():
            if number < len(all_rows):
                reading, expected[sensor] = all_rows[number]
                feature, scale = inputs[sensor]
                tree.set(0, feature, reading * scale)
        _, metrics = hwmon.run_once(monitor, meta, tree, folder / "metrics.prom")
        found = hwmon.bands(metrics)
        for sensor, band in expected.items():
            if found[sensor] != band:
                raise SystemExit(f"{sensor} at {rows[sensor][number][0]}: rux test has {band}, "
                                 f"the monitor {found[sensor]}")
            count += 1
    return count


def main(rux, monitor, profile, *files):
    for name in files:
        tests = pathlib.Path(name).resolve()
        script = tests.parent / json.loads(tests.read_text())["machine"]
        run(rux, "test", tests, "--profile", profile)
        boundaries = run(rux, "test", tests, "--profile", profile, "--boundary", "--format", "csv")
        cases = list(cases_of(tests)) + list(boundaries_of(boundaries))
        with tempfile.TemporaryDirectory() as temporary:
            folder = pathlib.Path(temporary)
            copy, inputs = copy_machine(script, folder / "machine")
            hwmon.compile_script(rux, copy, folder / "machine.meta")
            count = compare(monitor, folder / "machine.meta", inputs, cases, folder)
        assert count == len(cases) and count > 0
        print(f"{name}: {count} bands are the same")


if __name__ == "__main__":
    main(*sys.argv[1:])
