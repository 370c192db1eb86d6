#!/usr/bin/env python3
"""The simulator of openipmi takes exported sensor records, and ipmitool reads each limit as it was, or as the report
of losses says.

    ipmi.py PROGRAM SOURCE
"""
import contextlib
import fractions
import json
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time

import ruxmeta
from machines import ODD_NAMES, Folder, script

SETTINGS = """name "machine"
set_working_mc 0x20
startlan 1
addr 127.0.0.1 {}
priv_limit admin
allowed_auths_admin md5
endlan
user 2 true "reader" "reader" admin 10 md5
"""
# The columns of ipmitool after the reading, its unit and its status.
COLUMNS = [None, "THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH", "THRESHOLD_FH", None]
PROJECT = json.dumps({"limits": [{"unit_property": "UNIT", "divisor_property": "DIVISOR", "sign": "signed"}]})
EXPONENTS = {"mV": -3, "mA": -3, "kW": 3, "Pa": -3}  # to the unit of the records
# Units, divisors and limits, low ones first; which of them eight bits cannot hold.
LIMITS = [("mV", 1, [-12600, -11400, 1, 5], {"THRESHOLD_WH", "THRESHOLD_FH"}),
          ("mV", 1, [11040, 11400, 12600, 12960], set()),
          ("C", 10, [-405, 0, 850, 1000], {"THRESHOLD_FL"}),
          ("RPM", 1, [500, 1000, 20000, 25500], set()),
          ("percent", 1, [0, 5, 95, 100], set()),
          ("V", 1000, [1, 2, 3, 12000], {"THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH"}),
          ("kW", 1, [1, 2, 3, 4], set()),
          ("Pa", 1, [90000, 95000, 105000, 110000], set()),
          ("rotors", 1, [0, 1, 2, 3], set()),
          ("C", 3, [1, 2, 3, 4], {"THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_FH"}),
          ("V", 1, [1, 2, 2000000000, 2147483647], {"THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_FH"})]
MOST_SENSORS = 3 * 255
KEYS = ["THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH", "THRESHOLD_FH"]


def limits_script():
    lines = ["[MORVRUX]", "VERSION = 1", "[DEFINE]", "VT_CONST = 1", "[GROUP]", "PARENT = 0", "NAME = G", "CHILDGROUP = 0",
             "[PELMGROUP]", "NAME = ALL", "ID = 1", "PID = 0",
             f"SENSORS = {', '.join(str(i + 1) for i in range(len(LIMITS)))}"]
    for i, (unit, divisor, numbers, _) in enumerate(LIMITS, 1):
        lines += ["[SENSOR]", "PARENT = G", f"NAME = S{i}", f"ID = {i}", "TYPE = 1", "INITFLAG = 0", "CONTROLMASK = 0",
                  f"P_UNIT = {unit}", f"P_DIVISOR = {divisor}", "VALUE = VT_CONST, 0",
                  *(f"{key} = {number}" for key, number in zip(KEYS, numbers))]
    return ("\n".join(lines) + "\n").encode()


@contextlib.contextmanager
def simulator(folder, commands):
    """A function that runs ipmitool on what the simulator was started with."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as free:
        free.bind(("127.0.0.1", 0))
        port = free.getsockname()[1]
    state = folder.path / f"state{port}"
    state.mkdir()
    settings = folder.path / "lan.conf"
    settings.write_text(SETTINGS.format(port))
    process = subprocess.Popen(["ipmi_sim", "-c", settings, "-f", commands, "-s", state, "-n"],
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def read(*arguments):
        command = ["ipmitool", "-I", "lan", "-H", "127.0.0.1", "-p", str(port), "-U", "reader", "-P", "reader",
                   "-R", "1", "-N", "1", *arguments]
        return subprocess.run(command, capture_output=True, check=False)

    try:
        for _ in range(100):
            if read("mc", "info").returncode == 0:
                break
            assert process.poll() is None, process.stdout.read()
            time.sleep(0.05)
        yield read
    finally:
        process.terminate()
        process.wait()


def read_limits(read):
    """By position: the name, and the limits by their keys."""
    done = read("sensor", "list")
    assert done.returncode == 0, done.stderr
    sensors = []
    for line in done.stdout.decode("ascii").splitlines():
        cells = [cell.strip() for cell in line.rsplit("|", 9)]
        limits = {key: fractions.Fraction(cell) for key, cell in zip(COLUMNS, cells[4:]) if cell != "na"}
        sensors.append((cells[0], limits))
    return sensors


def losses_of(report):
    """What became of the limits of each sensor: by name and key."""
    fates = {}
    for item in json.loads(report.read_text())["items"]:
        kind, _, rest = item["item"].partition("/")
        name, _, key = rest.rpartition("/")
        if kind == "SENSOR":
            fates[name.strip('"'), key] = item
    return fates


def amount_of(sensor, key, signed):
    number = sensor[key].values[0]
    divisor = int(sensor.properties.get("DIVISOR", "1"))
    unit = sensor.properties.get("UNIT", "")
    number = number.signed if signed else number.value
    return fractions.Fraction(number, divisor) * fractions.Fraction(10) ** EXPONENTS.get(unit, 0)


def expect_same(folder, source, expected_rounded=None):
    """Each limit of the machine is read back."""
    report = folder.path / "losses.json"
    commands = folder.export("ipmi-sdr", source, "machine.emu", "--losses", str(report), "--losses-format", "json")
    model = ruxmeta.open(str(folder.compile(source)))
    with simulator(folder, commands) as read:
        found = read_limits(read)
    fates = losses_of(report)
    assert len(found) == min(len(model.sensors), MOST_SENSORS), len(found)
    for (_, limits), sensor in zip(found, model.sensors.values()):
        assert limits.keys() == sensor.limits.keys(), (sensor.name, limits, sensor.limits)
        most = max([abs(amount_of(sensor, key, True)) for key in limits], default=0)
        for key, value in limits.items():
            amount = amount_of(sensor, key, True)
            fate = fates[sensor.name, key]
            is_rounded = fate.get("reason") == "rounded"
            after = fractions.Fraction(fate["after"]) if "after" in fate else amount
            # ipmitool prints three decimals.
            assert abs(value - after) <= fractions.Fraction(5, 10000), (sensor.name, key, value, fate)
            assert is_rounded or after == amount, (sensor.name, key, fate, amount)
            assert abs(after - amount) <= most / 127, (sensor.name, key, fate, amount)
            if expected_rounded is not None:
                assert is_rounded == (key in expected_rounded[sensor.name]), (sensor.name, key, fate)
    return found, fates


def many_script(count):
    lines = limits_script().decode().split("[PELMGROUP]")[0].splitlines()
    lines += ["[PELMGROUP]", "NAME = ALL", "ID = 1", "PID = 0", f"SENSORS = {', '.join(map(str, range(1, count + 1)))}"]
    for i in range(1, count + 1):
        lines += ["[SENSOR]", "PARENT = G", f"NAME = A_VERY_LONG_NAME_{i}", f"ID = {i}", "TYPE = 1", "INITFLAG = 0",
                  "CONTROLMASK = 0", f"THRESHOLD_FH = {i % 256}", "VALUE = VT_CONST, 0"]
    return ("\n".join(lines) + "\n").encode()


def write(folder, text):
    path = folder.path / "machine.rux"
    path.write_bytes(text)
    return path


def main(program, source_folder):
    if not shutil.which("ipmi_sim") or not shutil.which("ipmitool"):
        print("skipped: openipmi or ipmitool is not installed")
        return
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        (folder.path / ".rux.json").write_text(PROJECT)
        for source in pathlib.Path(source_folder, "examples/server").glob("**/*.rux"):
            copy = folder.path / source.relative_to(pathlib.Path(source_folder, "examples/server"))
            copy.parent.mkdir(exist_ok=True)
            shutil.copy(source, copy)
        expect_same(folder, folder.path / "server.rux")
        rounded = {f"S{i}": keys for i, (_, _, _, keys) in enumerate(LIMITS, 1)}
        expect_same(folder, write(folder, limits_script()), rounded)
        found, _ = expect_same(folder, write(folder, script(ODD_NAMES[:-1])))
        assert len({name for name, _ in found}) == len(ODD_NAMES) - 1
        found, fates = expect_same(folder, write(folder, many_script(800)))
        assert len({name for name, _ in found}) == MOST_SENSORS
        assert fates["A_VERY_LONG_NAME_766", "THRESHOLD_FH"]["outcome"] == "dropped"
        print("all limits are read back")


if __name__ == "__main__":
    main(*sys.argv[1:])
