#!/usr/bin/env python3
"""The example monitor, round by round: what it reads, reports, loads and refuses.

    rounds.py RUX MONITOR
"""
import contextlib
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time

import hwmon

RUX, MONITOR = sys.argv[1:]

SCRIPT = """[SYSTEM]
TYPE = 1
MODEL = Board
FLAG = 0
RUXLOOP = 20
[DEFINE]
VT_CONST = 1
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
[PELMGROUP]
NAME = ALL
ID = 1
PID = 0
SENSORS = 1, 2, 3
[DEVICE]
NAME = CHIP
ID = 1
INITFLAG = 0
CONTROLMASK = 0
P_CHIP = lm75-i2c-1-4a lm75-i2c-*
[SENSOR]
PARENT = BOARD
NAME = INLET
ID = 1
TYPE = 1
INITFLAG = 3
CONTROLMASK = 0
THRESHOLD_FL = -20
THRESHOLD_WL = 5
THRESHOLD_WH = 40
THRESHOLD_FH = 45
P_UNIT = degrees C
P_DEVICE = CHIP
P_FEATURE = temp1
VALUE = VT_CONST, 0
[SENSOR]
PARENT = BOARD
NAME = RAIL
ID = 2
TYPE = 2
INITFLAG = 1
CONTROLMASK = 0
THRESHOLD_WH = 5250
P_UNIT = mV
P_DEVICE = CHIP
P_FEATURE = in0
P_FACTOR = 42/25
VALUE = VT_CONST, 0
[SENSOR]
PARENT = BOARD
NAME = ELSEWHERE
ID = 3
TYPE = 1
INITFLAG = 3
CONTROLMASK = 0
VALUE = VT_CONST, 0
"""


class Board:
    """A folder with a script, its meta file and a tree of chips."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.meta = self.folder / "board.meta"
        self.metrics = self.folder / "board.prom"
        self.tree = hwmon.Tree(self.folder / "root")
        self.compile(SCRIPT)

    def compile(self, text):
        script = self.folder / "board.rux"
        script.write_text(text)
        hwmon.compile_script(RUX, script, self.meta)

    def once(self, *options):
        """The journal without what the first line says of the file, and the metrics."""
        journal, metrics = hwmon.run_once(MONITOR, self.meta, self.tree, self.metrics, *options)
        assert journal[0] == f"<6>{self.meta}: sensors read: 2 of 3", journal
        return journal[1:], metrics


def expect(found, expected):
    if found != expected:
        raise SystemExit(f"expected {expected}\nfound    {found}")


def test_bands(board):
    # 1.680 V at the chip are 2.8224 V on the rail, which INITFLAG does not have watched.
    board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=40000, in0=1680)
    journal, metrics = board.once()
    expect(journal, [])
    expect(hwmon.readings(metrics), {"INLET": 40, "RAIL": 2822})
    expect(hwmon.bands(metrics), {"INLET": "normal", "RAIL": "none"})
    for number, reading, line, band in (
            (40499, 40, None, "normal"),  # to the nearest degree
            (40500, 41, "<4>INLET: 41 degrees C, WH (above 40 degrees C)", "WH"),
            (46000, 46, "<2>INLET: 46 degrees C, FH (above 45 degrees C)", "FH"),
            (4000, 4, "<4>INLET: 4 degrees C, WL (below 5 degrees C)", "WL"),
            (-20000, -20, "<4>INLET: -20 degrees C, WL (below 5 degrees C)", "WL"),
            (-21000, -21, "<2>INLET: -21 degrees C, FL (below -20 degrees C)", "FL")):
        board.tree.set(0, "temp1", number)
        journal, metrics = board.once()
        expect(journal, [line] if line else [])
        expect(hwmon.readings(metrics)["INLET"], reading)
        expect(hwmon.bands(metrics)["INLET"], band)
    # 5.25 V are in range, whoever watches them.
    for number, band in ((3125, "normal"), (3126, "WH")):
        board.tree.set(0, "in0", number)
        expect(hwmon.bands(board.once("--all")[1])["RAIL"], band)


def test_chips(board):
    # The first pattern that fits counts, then the first folder: hwmon2 is before hwmon10.
    board.tree.chip(10, "lm75", "i2c", "0-0048", temp1=10000, in0=0)
    board.tree.chip(2, "lm75", "i2c", "0-0049", temp1=12000, in0=0)
    board.tree.chip(1, "lm75")
    board.tree.chip(3, "other", "i2c", "1-004b", temp1=13000, in0=0)
    expect(hwmon.readings(board.once()[1])["INLET"], 12)
    board.tree.chip(11, "lm75", "i2c", "1-004a", temp1=11000, in0=0)
    expect(hwmon.readings(board.once()[1])["INLET"], 11)


def test_imported(board):
    """What rux import lm-sensors writes is monitored as it is."""
    source = board.folder / "desk.conf"
    source.write_text('chip "it8720-isa-0a10"\n  label in4 "+12V"\n  compute in4 @ * (1 + 6.8/10), '
                      '@ / (1 + 6.8/10)\n  set in4_min 11.4\n  set in4_max 12.6\n'
                      '  compute temp1 @ - 5.5, @ + 5.5\n  set temp1_max 60\n'
                      'chip "k10temp-pci-00c3"\n  set temp1_crit 72.5\n'
                      'chip "acpitz-virtual-0"\n  set fan1_min 300\n')
    subprocess.run([RUX, "import", "lm-sensors", source, "-o", board.folder / "desk"], check=True,
                   capture_output=True)
    hwmon.compile_script(RUX, board.folder / "desk/main.rux", board.meta)
    # 6.785 V at the chip are 11.3988 V. 66.4 - 5.5 is 60.9 degrees, 61.
    board.tree.chip(0, "it8720", "platform", "it87.2576", in4=6785, temp1=66400)
    board.tree.chip(1, "k10temp", "pci", "0000:00:18.3", temp1=72600)
    board.tree.chip(2, "acpitz", fan1=300)
    journal, _ = hwmon.run_once(MONITOR, board.meta, board.tree, board.metrics, "--all")
    journal = sorted(re.sub(r"^(<.>)\S+: ", r"\1", line) for line in journal[1:])
    expect(journal, ["<2>72.6 degrees C, FH (above 72.5 degrees C)",
                     "<4>11.399 V, WL (below 11.4 V)", "<4>61 degrees C, WH (above 60 degrees C)"])


def test_bad_inputs(board):
    folder = board.tree.chip(0, "lm75", "i2c", "1-004a", temp1="hot", in0=0)
    name = folder / "temp1_input"
    expect(board.once()[0], [f"<4>INLET: no reading: {name}: not a number"])
    for number in ("", "12 13", "99999999999999999999"):
        board.tree.set(0, "temp1", number)
        expect(board.once()[0], [f"<4>INLET: no reading: {name}: not a number"])
    board.tree.set(0, "temp1", 2 ** 63 - 1)
    expect(board.once()[0], [f"<4>INLET: no reading: {name}: too large"])
    name.unlink()
    os.mkfifo(name)  # nobody writes: opening it must not wait
    expect(board.once()[0], [f"<4>INLET: no reading: {name}: not a number"])
    name.unlink()
    journal, metrics = board.once()
    expect(journal, [f"<4>INLET: no reading: {name}: No such file or directory"])
    expect(hwmon.readings(metrics), {"RAIL": 0})
    expect(hwmon.bands(metrics), {"INLET": "unknown", "RAIL": "none"})


def test_bad_properties(board):
    board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=40000, in0=0)
    for before, after, reason in (
            ("P_UNIT = mV", "P_UNIT = rpm", "P_UNIT rpm of in0"),
            ("= in0", "= vid0", "P_FEATURE vid0 has no input that this program knows"),
            ("42/25", "42/0", "P_FACTOR, P_OFFSET or P_DIVISOR is not a number"),
            ("42/25", "much", "P_FACTOR, P_OFFSET or P_DIVISOR is not a number"),
            ("P_CHIP", "P_CHIPS", "its P_DEVICE has no P_CHIP")):
        board.compile(SCRIPT.replace(before, after))
        journal, metrics = hwmon.run_once(MONITOR, board.meta, board.tree, board.metrics)
        assert f"<4>RAIL: not read: {reason}" in journal, journal
        assert "RAIL" not in hwmon.bands(metrics)


def test_texts(board):
    """What a script calls a sensor ends neither a line of the journal nor a label."""
    board.compile(SCRIPT.replace("NAME = INLET", 'NAME = "A\x1b[2J\\\\"'))
    journal, metrics = hwmon.run_once(MONITOR, board.meta, board.tree, board.metrics)
    assert any(line.startswith("<4>A?[2J\\\\: no reading: no chip fits lm75") for line in journal)
    assert 'sensor="A?[2J\\\\\\\\"' in metrics, metrics


class Running:
    """A monitor that runs until the test has seen what it waits for."""

    def __init__(self, board):
        self.board = board
        self.journal_path = board.folder / "journal"
        self.journal_file = open(self.journal_path, "w")
        self.process = subprocess.Popen(
            [MONITOR, board.meta, "--root", board.tree.root, "--metrics", board.metrics],
            stderr=self.journal_file)

    def journal(self):
        return self.journal_path.read_text().splitlines()

    def counter(self, name):
        text = self.board.metrics.read_text() if self.board.metrics.exists() else ""
        return hwmon.series(text, f"rux_monitor_{name}_total").get("", 0)

    def wait_for_line(self, end):
        self.wait_until(lambda: any(line.endswith(end) for line in self.journal()), end)

    def wait_for_rounds(self, count):
        last = self.counter("cycles") + count
        self.wait_until(lambda: self.counter("cycles") >= last, f"round {last}")

    def wait_until(self, condition, what):
        """A test that waits for ever is ended by ctest."""
        while not condition():
            if self.process.poll() is not None:
                raise SystemExit(f"ended while the test waited for: {what}\n{self.journal()}")
            time.sleep(0.01)


@contextlib.contextmanager
def running(board):
    monitor = Running(board)
    try:
        yield monitor
        monitor.process.send_signal(signal.SIGTERM)
        expect(monitor.process.wait(), 0)
    finally:
        monitor.process.kill()
        monitor.process.wait()
        monitor.journal_file.close()


def test_events_once(board):
    """What stays as it is, is reported once; a chip may come back in another folder."""
    folder = board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=41000, in0=0)
    with running(board) as monitor:
        monitor.wait_for_rounds(3)
        for name in ("temp1_input", "in0_input", "name", "device"):
            (folder / name).unlink()
        folder.rmdir()
        monitor.wait_until(
            lambda: sum("no reading" in line for line in monitor.journal()) == 2, "no reading")
        monitor.wait_for_rounds(3)
        board.tree.chip(5, "lm75", "i2c", "1-004a", in0=0, temp1=40000)
        monitor.wait_for_line("INLET: 40 degrees C, normal")
        monitor.wait_for_line("RAIL: has a reading again")
        monitor.wait_for_rounds(3)
    lines = [re.sub(": no reading: .*", ": no reading", line) for line in monitor.journal()[1:]]
    expect(sorted(lines), sorted([
        "<4>INLET: 41 degrees C, WH (above 40 degrees C)", "<4>INLET: no reading",
        "<4>RAIL: no reading", "<5>INLET: has a reading again", "<5>RAIL: has a reading again",
        "<5>INLET: 40 degrees C, normal"]))


def test_new_file(board):
    """A new file is loaded by itself; sensors keep the bands that they are in."""
    board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=41000, in0=0)
    with running(board) as monitor:
        monitor.wait_for_line("41 degrees C, WH (above 40 degrees C)")
        rounds = monitor.counter("cycles")
        board.compile(SCRIPT.replace("MODEL = Board", "MODEL = Other"))
        monitor.wait_until(lambda: sum("sensors read: 2 of 3" in line for line in monitor.journal()) == 2,
                           "the second file")
        monitor.wait_for_rounds(2)
        expect(len(monitor.journal()), 3)  # no second line about the same band
        assert monitor.counter("cycles") > rounds
        board.compile(SCRIPT.replace("THRESHOLD_WH = 40", "THRESHOLD_WH = 41"))
        monitor.wait_for_line("<5>INLET: 41 degrees C, normal")


def test_damaged_file(board):
    """A file that is not sound is refused, reported once, and the one before stays."""
    board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=40000, in0=0)
    with running(board) as monitor:
        monitor.wait_for_rounds(1)
        sound = board.meta.read_bytes()
        board.meta.write_bytes(sound[:len(sound) // 2])  # in place, cut off
        monitor.wait_until(lambda: monitor.counter("refused_files") > 0, "a refusal")
        monitor.wait_for_rounds(3)
        refused = monitor.counter("refused_files")
        board.tree.set(0, "temp1", 41000)
        monitor.wait_for_line("<4>INLET: 41 degrees C, WH (above 40 degrees C)")
        expect(monitor.counter("refused_files"), refused)
        board.meta.unlink()
        monitor.wait_for_line("it cannot be opened: No such file or directory")
        board.meta.write_bytes(sound)
        monitor.wait_until(lambda: sum("sensors read: 2 of 3" in line for line in monitor.journal()) == 2,
                           "the sound file")
    assert any(line.startswith(f"<3>{board.meta}: offset ") for line in monitor.journal())


def test_hangup(board):
    """SIGHUP loads the file again, changed or not."""
    with running(board) as monitor:
        monitor.wait_for_rounds(1)
        monitor.process.send_signal(signal.SIGHUP)
        monitor.wait_until(lambda: sum("sensors read: 2 of 3" in line for line in monitor.journal()) == 2,
                           "the file again")


def test_metrics_failure(board):
    """A folder that cannot be written to is reported once; monitoring goes on."""
    board.tree.chip(0, "lm75", "i2c", "1-004a", temp1=40000, in0=0)
    (board.folder / "board.prom.new").mkdir()
    with running(board) as monitor:
        monitor.wait_for_line("no metrics: " + str(board.metrics) + ".new: Is a directory")
        board.tree.set(0, "temp1", 46000)
        monitor.wait_for_line("FH (above 45 degrees C)")
        (board.folder / "board.prom.new").rmdir()
        monitor.wait_for_line("<5>metrics are written again")
    expect(sum("no metrics" in line for line in monitor.journal()), 1)


def test_command_line(board):
    for words in ([], ["--once"], [board.meta, "--cycles"], [board.meta, "--cycles", "x"],
                  [board.meta, "--interval", "-1"], [board.meta, "--other"], [board.meta, "two"]):
        result = subprocess.run([MONITOR, *words], capture_output=True, text=True)
        expect((result.returncode, result.stderr.split()[0]), (2, "usage:"))
    result = subprocess.run([MONITOR, board.folder / "none.meta"], capture_output=True, text=True)
    expect(result.returncode, 3)
    assert result.stderr.startswith(f"<3>{board.folder}/none.meta: "), result.stderr


def main():
    tests = [test for name, test in sorted(globals().items()) if name.startswith("test_")]
    for test in tests:
        with tempfile.TemporaryDirectory() as folder:
            print(test.__name__, flush=True)
            test(Board(folder))
    assert len(tests) == 12, len(tests)


main()
