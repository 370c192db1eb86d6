#!/usr/bin/env python3
"""sensors.conf and entity-manager configurations: their readers accept them whatever labels hold, limits are exact, and
what is imported again is the same.

    configurations.py PROGRAM SOURCE
"""
import decimal
import fractions
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import jsonschema
from machines import ODD_NAMES, Folder

PROJECT = json.dumps({"limits": [{"unit_property": "UNIT", "divisor_property": "SCALE", "sign": "signed"}]})
# Unit, divisor, power of ten to the base unit, feature.
QUANTITIES = [("V", 1000000, 0, "in"), ("mV", 1, -3, "in"), ("degrees C", 10, 0, "temp"), ("RPM", 1, 0, "fan"),
              ("mA", 8, -3, "curr")]
LIMITS = [("THRESHOLD_FL", -55, "lcrit", "less than", 1), ("THRESHOLD_WL", -2, "min", "less than", 0),
          ("THRESHOLD_WH", 1234567, "max", "greater than", 0), ("THRESHOLD_FH", 2000000001, "crit", "greater than", 1)]
FAN_LOSSES = ("THRESHOLD_FL", "THRESHOLD_FH")
SCHEMA = "tests/tool/schemas/entity-manager.schema.json"
HEAD = ["[MORVRUX]", "VERSION = 1", "[DEFINE]", "VT_CONST = 1", "[SYSTEM]", "TYPE = 1", "MODEL = board", "FLAG = 0",
        "RUXLOOP = 1", "[GROUP]", "PARENT = 0", "NAME = G", "CHILDGROUP = 0",
        "[DEVICE]", "NAME = D", "ID = 1", "INITFLAG = 0", "CONTROLMASK = 0", "P_CHIP = it87-isa-* nct6775-i2c-0-2d",
        "P_ADAPTER = SMBus PIIX4 adapter", "P_Type = TMP75", "P_Bus = 7", "P_Address = 0x48", "P_Connector_Tachs_0 = 3", "P_Connector_Tachs_1 = 4",
        "P_Connector_Name = J1", "P_Gpios_0_Name = A", "P_Gpios_1_Name = B", "P_Thresholds_0 = x", "P__ = x"]


def source_of(sensors):
    """A script with sensors of that device: (label, quantity, feature)."""
    lines = list(HEAD)
    for i, (label, (unit, divisor, _, _), feature) in enumerate(sensors, 1):
        lines += ["[SENSOR]", "PARENT = G", f"NAME = S{i}", f"ID = {i}", "TYPE = 1", "INITFLAG = 0", "CONTROLMASK = 0",
                  f"P_UNIT = {unit}", f"P_SCALE = {divisor}", "P_DEVICE = D", f'P_LABEL = "{label}"',
                  f"P_FEATURE = {feature}", f"P_CHANNEL = {feature}", "P_WH_Hysteresis = 1.5",
                  *(["P_FACTOR = 42/25", "P_OFFSET = -1/2"] if feature.startswith("in") else []),
                  *(f"{key} = {number}" for key, number, *_ in LIMITS), "VALUE = VT_CONST, 0"]
    ids = ", ".join(str(i + 1) for i in range(len(sensors)))
    return ("\n".join(lines + ["[PELMGROUP]", "NAME = ALL", "ID = 1", "PID = 0", f"SENSORS = {ids}"]) + "\n").encode()


def amount(quantity, number):
    return fractions.Fraction(number, quantity[1]) * fractions.Fraction(10) ** quantity[2]


def unquoted(text):
    """As the scanner of libsensors reads a quoted text."""
    raw = re.sub(rb"\\([0-7]{3})", lambda found: bytes([int(found[1], 8)]), text.encode())
    return raw.decode()


def expect_conf(file, sensors):
    if shutil.which("sensors"):
        done = subprocess.run(["sensors", "-c", str(file)], capture_output=True, check=False)
        assert b"rror" not in done.stderr, done.stderr
        file.with_suffix(".bad").write_text(file.read_text().replace("set ", "set (", 1))
        done = subprocess.run(["sensors", "-c", str(file.with_suffix(".bad"))], capture_output=True, check=False)
        assert b"syntax error" in done.stderr, "sensors reports what is wrong"
    text = file.read_text()
    assert 'bus "i2c-0" "SMBus PIIX4 adapter"\n\nchip "it87-isa-*" "nct6775-i2c-0-2d"\n' in text
    computes = re.findall(r"^  compute (in\d+) @ \* \(42/25\) \+ \(-1/2\), \(@ - \(-1/2\)\) / \(42/25\)$", text, re.M)
    assert computes == [feature for _, _, feature in sensors if feature.startswith("in")], computes
    labels = [unquoted(label) for label in re.findall(r'^  label \w+ "(.*)"$', text, re.M)]
    assert labels == [label for label, _, _ in sensors], labels
    found = dict(re.findall(r"^  set (\w+) (\S+)$", text, re.M))
    expected = {f"{feature}_{attribute}": amount(quantity, number) for _, quantity, feature in sensors
                for _, number, attribute, *_ in LIMITS
                if not (quantity[3] == "fan" and attribute in ("lcrit", "crit"))}
    assert {key: fractions.Fraction(value) for key, value in found.items()} == expected


def expect_configuration(file, schema, sensors):
    jsonschema.validate(json.loads(file.read_text()), json.loads(schema.read_text()))
    configuration = json.loads(file.read_text(), parse_float=decimal.Decimal)
    entry, = configuration["Exposes"]
    assert (entry["Name"], entry["Type"], entry["Bus"], entry["Address"]) == ("D", "TMP75", 7, "0x48"), entry
    assert entry["Connector"] == {"Tachs": [3, 4], "Name": "J1"} and entry["_"] == "x", entry
    assert entry["Gpios"] == [{"Name": "A"}, {"Name": "B"}], entry
    assert entry["Labels"] == [feature for _, _, feature in sensors]
    assert [entry[feature + "_Name"] for _, _, feature in sensors] == [label for label, _, _ in sensors]
    found = {(item["Label"], item["Direction"], item["Severity"]): fractions.Fraction(item["Value"])
             for item in entry["Thresholds"]}
    assert found == {(feature, direction, severity): amount(quantity, number) for _, quantity, feature in sensors
                     for _, number, _, direction, severity in LIMITS}
    hysteresis = [item["Label"] for item in entry["Thresholds"] if item.get("Hysteresis") == decimal.Decimal("1.5")]
    assert hysteresis == entry["Labels"]


def rows_of(program, machine, *columns):
    done = subprocess.run([program, "table", str(machine), "--format", "json", "--columns", ",".join(columns)],
                          capture_output=True, check=True)
    return json.loads(done.stdout, parse_float=decimal.Decimal, parse_int=decimal.Decimal)["rows"]


def imported(program, folder, form, file):
    """The main script of what an import makes of a file."""
    target = folder.path / f"imported-{form}"
    subprocess.run([program, "import", form, str(file), "-o", str(target)], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    return target / "main.rux"


def expect_round_trip(program, folder, form, file, sensors):
    """What is imported again has the same limits, and is exported the same."""
    main = imported(program, folder, form, file)
    keys = [key for key, *_ in LIMITS]
    name, lost = ("P_CHANNEL", ()) if form == "entity-manager" else ("P_FEATURE", FAN_LOSSES)
    rows = {row[name]: row for row in rows_of(program, main, name, *keys)}
    for _, quantity, feature in sensors:
        expected = {key: amount(quantity, number) for key, number, *_ in LIMITS
                    if not (quantity[3] == "fan" and key in lost)}
        found = {key: fractions.Fraction(rows[feature][key]) for key in keys if key in rows[feature]}
        assert found == expected, (form, feature, found, expected)
    again = folder.export(form, main, "again")
    # The comment at the top names the machine.
    texts = [re.sub("^#.*", "", path.read_text()) for path in (file, again)]
    assert texts[0] == texts[1] if form == "lm-sensors" else json.loads(texts[0]) == json.loads(texts[1]), form


def expect_csv_round_trip(program, folder, script):
    columns = ("NAME", "ID", "group", "unit", *(key for key, *_ in LIMITS))
    again = imported(program, folder, "csv", folder.export("csv", script, "sensors.csv"))
    assert rows_of(program, again, *columns) == rows_of(program, script, *columns)


def main(program, source_folder):
    sensors = [(label, QUANTITIES[i % len(QUANTITIES)], f"{QUANTITIES[i % len(QUANTITIES)][3]}{i}")
               for i, label in enumerate(ODD_NAMES, 1)]
    # Eighths need more digits than an imported limit has.
    plain = [("Plain " + feature, quantity, feature) for _, quantity, feature in sensors if quantity[1] != 8]
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        (folder.path / ".rux.json").write_text(PROJECT)
        script = folder.path / "machine.rux"
        for listed in (sensors, plain):
            script.write_bytes(source_of(listed))
            conf = folder.export("lm-sensors", script, "board.conf")
            expect_conf(conf, listed)
            configuration = folder.export("entity-manager", script, "board.json")
            expect_configuration(configuration, pathlib.Path(source_folder, SCHEMA), listed)
        expect_round_trip(program, folder, "entity-manager", configuration, plain)
        expect_round_trip(program, folder, "lm-sensors", conf, plain)
        expect_csv_round_trip(program, folder, script)
        print(f"{len(sensors)} sensors in two configurations")


if __name__ == "__main__":
    main(*sys.argv[1:])
