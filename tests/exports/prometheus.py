#!/usr/bin/env python3
"""promtool accepts series and rules of machines with odd names; limits are exact in the base unit.

    prometheus.py PROGRAM SOURCE
"""
import fractions
import itertools
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from machines import ODD_NAMES, Folder, script

SERIES = re.compile(r'(\w+)\{((?:\w+="(?:[^"\\\n]|\\.)*",?)*)\} (\S+)$')
LABEL = re.compile(r'(\w+)="((?:[^"\\\n]|\\.)*)"')
# Unit, what its series are called, and the power of ten of one in the base unit.
UNITS = [("mV", "_volts", -3), ("V", "_volts", 0), ("kW", "_watts", 3), ("percent", "_ratio", -2),
         ("rotors", "", 0), ("MHz", "_hertz", 6), ("µA", "_amperes", -6)]
DIVISORS = [1, 3, 7, 8, 10, 1000, 3 << 30, (1 << 32) - 1]
NUMBERS = [0, 1, 5, 12600, 99999999, 4294967294]
PROJECT = json.dumps({"limits": [{"unit_property": "UNIT", "divisor_property": "DIVISOR", "sign_property": "SIGN"}]})


def series_of(text):
    """(name, labels) and value of each line, read as the text format of Prometheus has it."""
    escapes = {"n": "\n", '"': '"', "\\": "\\"}
    series = {}
    for line in text.split("\n"):
        if not line or line.startswith("#"):
            continue
        name, labels, value = SERIES.match(line).groups()
        pairs = {key: re.sub(r"\\(.)", lambda found: escapes[found[1]], text) for key, text in LABEL.findall(labels)}
        series[name, tuple(pairs.items())] = value
    return series


def promtool(*arguments, **options):
    subprocess.run(["promtool", *map(str, arguments)], check=True, stdout=subprocess.DEVNULL, **options)


def expect_accepted(folder, machine):
    metrics = folder.export("prometheus", machine, "machine.prom")
    rules = folder.export("prometheus-rules", machine, "rules.yml")
    tests = folder.export("prometheus-tests", machine, "tests.yml")
    if shutil.which("promtool"):
        with metrics.open() as file:
            promtool("check", "metrics", stdin=file)
        promtool("check", "rules", rules)
        promtool("test", "rules", tests)
        broken = rules.with_name("rules.yml").read_text().replace(" > on", " >= on")
        rules.write_text(broken)
        done = subprocess.run(["promtool", "test", "rules", str(tests)], capture_output=True, check=False)
        assert done.returncode != 0, "the tests notice a rule that is wrong"
    return series_of(metrics.read_text(encoding="utf-8"))


def quantities():
    """A sensor for each unit, divisor, number and sign."""
    lines = ["[MORVRUX]", "VERSION = 1.0", "[DEFINE]", "VT_CONST = 1", "[GROUP]", "PARENT = 0", "NAME = G",
             "CHILDGROUP = 0"]
    expected = {}
    cases = itertools.product(UNITS, DIVISORS, NUMBERS, ("signed", "unsigned"))
    for count, ((unit, suffix, exponent), divisor, number, sign) in enumerate(cases, 1):
        lines += ["[SENSOR]", "PARENT = G", f"NAME = S{count}", f"ID = {count}", "TYPE = 1", "INITFLAG = 0",
                  "CONTROLMASK = 0", f"P_UNIT = {unit}", f"P_DIVISOR = {divisor}", f"P_SIGN = {sign}",
                  f"THRESHOLD_WH = {number}", "VALUE = VT_CONST, 0"]
        signed = number - (1 << 32) if sign == "signed" and number >> 31 else number
        amount = fractions.Fraction(signed, divisor) * fractions.Fraction(10) ** exponent
        expected["rux_sensor_limit" + suffix, (("sensor", f"S{count}"), ("limit", "WH"))] = amount
    ids = ", ".join(str(i + 1) for i in range(len(expected)))
    lines += ["[PELMGROUP]", "NAME = ALL", "ID = 1", "PID = 0", f"SENSORS = {ids}"]
    return ("\n".join(lines) + "\n").encode(), expected


def is_decimal(amount):
    rest = amount.denominator
    for factor in (2, 5):
        while rest % factor == 0:
            rest //= factor
    return rest == 1


def expect_exact(folder):
    source, expected = quantities()
    (folder.path / ".rux.json").write_text(PROJECT)
    report = folder.path / "losses.json"
    folder.compile(source)
    text = folder.export("prometheus", folder.path / "machine.rux", "machine.prom", "--losses", str(report),
                         "--losses-format", "json").read_text(encoding="utf-8")
    found = {key: value for key, value in series_of(text).items() if key[0].startswith("rux_sensor_limit")}
    assert found.keys() == expected.keys()
    rounded = 0
    for key, amount in expected.items():
        value = fractions.Fraction(found[key])
        if is_decimal(amount):
            assert value == amount, (key, found[key], amount)
        else:
            rounded += 1
            assert abs(value - amount) < fractions.Fraction(1, 10 ** 4), (key, found[key], amount)
    reasons = [item.get("reason") for item in json.loads(report.read_text())["items"]]
    assert reasons.count("rounded") == rounded > 0, (reasons.count("rounded"), rounded)
    return len(expected)


def main(program, source_folder):
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        expect_accepted(folder, folder.compile(pathlib.Path(source_folder, "examples/server/server.rux")))
        odd = expect_accepted(folder, folder.compile(script()))
        names = [dict(labels)["sensor"] for name, labels in odd if name == "rux_sensor_info"]
        assert names == ODD_NAMES, names
        print(f"{expect_exact(folder)} limits")


if __name__ == "__main__":
    main(*sys.argv[1:])
