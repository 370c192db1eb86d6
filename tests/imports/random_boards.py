"""Imports random boards in the formats that are not JSON or a table, as random_sources.py does.

    random_boards.py RUX FORMAT COUNT

Beyond what holds there, each limit is the one that was meant, as an exact fraction, unless the report
says that it does not fit.
"""

import csv
import io
import json
import pathlib
import random
import re
import subprocess
import sys
import tempfile
from fractions import Fraction

from random_sources import LIMITS, Failed, bytes_of, expect, judge_report

UPWARDS = LIMITS[::-1]


def decimal(choice):
    """A decimal number as people write it, and what it is."""
    text = choice.choice(["5", "12", "0.16", "3.30", "1.1625", ".5", "100", "0.875", "48"])
    return text, Fraction(text)


def formula(choice, depth):
    """A formula of decimal numbers, and what it is."""
    if depth == 0:
        return decimal(choice)
    kind = choice.randrange(5)
    if kind == 0:
        text, value = formula(choice, depth - 1)
        return "-" + ("(%s)" % text), -value
    left, a = formula(choice, depth - 1)
    right, b = formula(choice, depth - 1)
    if kind == 1:
        return "(%s) + (%s)" % (left, right), a + b
    if kind == 2:
        return "(%s)-%s" % (left, "(%s)" % right), a - b
    if kind == 3:
        return "(%s) * (%s)" % (left, right), a * b
    divisor = choice.choice(["2", "5", "8"])
    return "(%s)/%s" % (left, divisor), a / int(divisor)


def lm_sensors(choice):
    """Text, expected limits by name, items."""
    lines = ["# " + choice.choice(["chip \"not-*\"", "label in0 x", ""])]
    meant = {}
    for chip in range(choice.randint(1, 3)):
        lines.append('chip "chip%d-*"' % chip)
        for number in range(choice.randint(1, 12)):
            kind = choice.choice(["in", "temp", "fan", "curr", "power"])
            feature = "%s%d" % (kind, number)
            name = "%s_%d_%d" % (kind.upper(), chip, number)
            ignored = choice.random() < 0.2
            about = ['label %s "%s"' % (feature, name)]
            limits = {}
            for attribute, entry in zip(("lcrit", "min", "max", "crit"), UPWARDS):
                if choice.random() < 0.5:
                    text, limits[entry] = formula(choice, choice.randrange(3))
                    about.append("set %s_%s %s" % (feature, attribute, text))
            if choice.random() < 0.3:
                about.append("compute %s @*(1+2/3), @/(1+2/3)" % feature)
            if choice.random() < 0.3:
                about.append("set %s_beep 1" % feature)
            if ignored:
                about.append("ignore " + feature)
            else:
                meant[name] = limits
            choice.shuffle(about)
            lines += [choice.choice(["", "  ", "\t"]) + line for line in about]
    if not meant:
        return lm_sensors(choice)
    return "\n".join(lines) + "\n", meant


def count_lm_sensors(text):
    return len(re.findall(r"^\s*(?:bus|chip|label|compute|set|ignore)\b", text, re.M))


def freeipmi(choice):
    lines, meant = [], {}
    for record in range(choice.randint(1, 20)):
        name = "Sensor_%d" % record
        unit = choice.choice(["degrees C", "Volts", "RPM", "Watts"])
        meant[name] = {}
        lines.append("Section %d_%s" % (record, name))
        keys = ("Lower_Critical", "Lower_Non_Critical", "Upper_Non_Critical", "Upper_Critical",
                "Upper_Non_Recoverable")
        for key, entry in zip(keys, UPWARDS + [None]):
            if choice.random() < 0.3:
                continue
            text = "%.6f" % (choice.randint(-4000, 60000) / 8)
            lines.append("\t## Give valid input for sensor type = X; units = " + unit)
            comment = choice.choice(["", "## "])
            lines.append("\t%s%s_Threshold    %s" % (comment, key, text))
            if entry:
                meant[name][entry] = Fraction(text)
        lines.append("EndSection")
    return "\n".join(lines) + "\n", meant


def count_freeipmi(text):
    sections = re.findall(r"^Section\s", text, re.M)
    return len(sections) + len(re.findall(r"^\s+(?:## )?\w+_\w+[ \t]+\S+$", text, re.M))


def dts(choice):
    meant, parts = {}, []
    for bus in range(choice.randint(1, 4)):
        chips = []
        for address in choice.sample(range(0x40, 0x60), choice.randint(1, 6)):
            label = "T_%d_%02x" % (bus, address)
            off = choice.random() < 0.2
            status = choice.choice(['status = "okay"; ', ""]) if not off else 'status = "fail"; '
            chips.append('t@%x { compatible = "ti,tmp75"; %sreg = <%d>; label = "%s"; };'
                         % (address, status, address, label))
            if not off:
                meant[label] = {}
        parts.append("i2c%d: i2c@%d { %s };" % (bus, bus, " ".join(chips)))
    zones = []
    for zone in range(choice.randint(1, 4)):
        limits = {}
        trips = []
        for kind, entry in (("hot", "THRESHOLD_WH"), ("critical", "THRESHOLD_FH"), ("active", "")):
            if choice.random() < 0.3:
                continue
            degrees = choice.randint(1, 120000)
            trips.append('%s { temperature = <%d>; hysteresis = <0>; type = "%s"; };'
                         % (kind, degrees, kind))
            if entry:
                limits[entry] = Fraction(degrees, 1000)
        meant["zone%d" % zone] = limits
        zones.append("zone%d { polling-delay = <0>; trips { %s }; };" % (zone, " ".join(trips)))
    parts.append("thermal-zones { %s };" % " ".join(zones))
    return "/dts-v1/;\n/ { %s };\n" % "\n".join(parts), meant


def count_dts(text):
    return len(re.findall(r"[\w#,-]+\s*=", text))


FORMATS = {"lm-sensors": (lm_sensors, count_lm_sensors),
           "freeipmi": (freeipmi, count_freeipmi),
           "dts": (dts, count_dts)}


def run(*words):
    done = subprocess.run(words, capture_output=True, text=True)
    expect(done.returncode == 0, done.stderr)
    return done.stdout


def missing_limits(found, meant):
    """How many limits that were meant are not there; all others must be as they were meant."""
    expect(found.keys() == meant.keys(), f"the sensors are {sorted(found)}")
    missing = 0
    for sensor, limits in meant.items():
        for entry in limits.keys() | found[sensor].keys():
            if entry in limits and entry not in found[sensor]:
                missing += 1
            else:
                expect(found[sensor][entry] == limits[entry], f"{entry} of {sensor}")
    return missing


def check(rux, name, text, meant, count):
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        source = folder / "board.txt"
        source.write_text(text)
        for target in ("one", "two"):
            output = run(rux, "import", name, str(source), "-o", str(folder / target),
                         "--losses", "-", "--losses-format", "json")
        expect(bytes_of(folder / "one") == bytes_of(folder / "two"), "the same bytes")
        report = json.loads(output)
        judge_report(report, count)
        table = run(rux, "table", str(folder / "one" / "main.rux"), "--format", "csv",
                    "--columns", "NAME," + ",".join(LIMITS))
        found = {row.pop("NAME"): {key: Fraction(value) for key, value in row.items() if value}
                 for row in csv.DictReader(io.StringIO(table))}
        reasons = [item.get("reason") for item in report["items"]]
        expect(missing_limits(found, meant) == reasons.count("does-not-fit"), "losses are reported")


def main():
    rux, name, count = sys.argv[1:]
    write, count_items = FORMATS[name]
    for seed in range(int(count)):
        text, meant = write(random.Random(seed))
        try:
            check(rux, name, text, meant, count_items(text))
        except Failed as why:
            print(text)
            sys.exit(f"{name}, seed {seed}: {why}")


main()
