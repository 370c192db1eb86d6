"""Random boards in the formats that rux import reads.

Each becomes scripts without a warning, the same bytes twice; the loss report has as many items as are
counted here; and the limits are those that were meant, as exact fractions, unless the report says that
they do not fit.

    boards.py RUX FORMAT COUNT
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

LIMITS = ("THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH", "THRESHOLD_FH")


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
            for attribute, entry in zip(("lcrit", "min", "max", "crit"), LIMITS):
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
        for key, entry in zip(keys, LIMITS + (None,)):
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
    assert done.returncode == 0, (words, done.returncode, done.stderr)
    return done.stdout


def files_of(folder):
    return {path.name: path.read_bytes() for path in sorted(folder.iterdir())}


def check(rux, name, seed):
    write, count = FORMATS[name]
    text, meant = write(random.Random(seed))
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        source = folder / "board.txt"
        source.write_text(text)
        report = run(rux, "import", name, str(source), "-o", str(folder / "out"),
                     "--losses", "-", "--losses-format", "json")
        run(rux, "import", name, str(source), "-o", str(folder / "again"))
        assert files_of(folder / "out") == files_of(folder / "again"), "the same bytes"
        counts = json.loads(report)["counts"]
        assert counts["items"] == count(text), (counts, count(text), text)
        assert counts["used"] + counts["changed"] + counts["dropped"] == counts["items"], counts
        main = str(folder / "out" / "main.rux")
        table = run(rux, "table", main, "--columns", "NAME," + ",".join(LIMITS), "--format", "csv")
        found = {row.pop("NAME"): {key: Fraction(value) for key, value in row.items() if value}
                 for row in csv.DictReader(io.StringIO(table))}
        assert found.keys() == meant.keys(), (found, meant, text)
        missing = 0
        for sensor, limits in meant.items():
            for entry in limits.keys() | found[sensor].keys():
                if entry in limits and entry not in found[sensor]:
                    missing += 1
                else:
                    assert found[sensor][entry] == limits[entry], (sensor, entry, text)
        reasons = [item.get("reason") for item in json.loads(report)["items"]]
        assert reasons.count("does-not-fit") == missing, (missing, reasons, text)


def main():
    rux, name, count = sys.argv[1:]
    for seed in range(int(count)):
        try:
            check(rux, name, seed)
        except AssertionError as error:
            sys.exit("%s, seed %d: %s" % (name, seed, error))


main()
