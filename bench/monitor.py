#!/usr/bin/env python3
"""What examples/monitor costs: the share of one core, and the memory.

    bench/monitor.py BUILD [SENSORS [ROUNDS [MILLISECONDS]]]

500 sensors with four limits each in chips of 20, read from a folder, 60 rounds, one a second; in
each round, one sensor of ten is another one and crosses a limit, and the metrics are written.
Processor time includes the start of the program, and the new meta file that it loads at half time.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/monitor"))
import hwmon  # noqa: E402

CHIP = 20
HEAD = """[SYSTEM]
TYPE = 1
MODEL = Board
FLAG = 0
RUXLOOP = 1000
[DEFINE]
VT_CONST = 1
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
"""


def script_of(count):
    parts = [HEAD, "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = "
             + ", ".join(str(i + 1) for i in range(count)) + "\n"]
    for chip in range((count + CHIP - 1) // CHIP):
        parts.append(f"[DEVICE]\nNAME = CHIP{chip}\nID = {chip + 1}\nINITFLAG = 0\nCONTROLMASK = 0\n"
                     f"P_CHIP = lm75-i2c-{chip}-48\n")
    for i in range(count):
        parts.append(f"[SENSOR]\nPARENT = BOARD\nNAME = SENSOR_{i}\nID = {i + 1}\nTYPE = 1\n"
                     f"INITFLAG = 3\nCONTROLMASK = 0\nTHRESHOLD_FL = {1 + i % 3}\nTHRESHOLD_WL = 5\n"
                     f"THRESHOLD_WH = {40 + i % 5}\nTHRESHOLD_FH = 60\nP_UNIT = degrees C\n"
                     f"P_DEVICE = CHIP{i // CHIP}\nP_FEATURE = temp{i % CHIP + 1}\n"
                     "VALUE = VT_CONST, 0\n")
    return "".join(parts)


def change(tree, count, milliseconds, stop):
    """Other sensors are too warm in each round."""
    step = 0
    while not stop.wait(milliseconds / 1000):
        for i in range(step % 10, count, 10):
            tree.set(i // CHIP, f"temp{i % CHIP + 1}", 30000 if step % 20 < 10 else 50000)
        step += 1


def peak_memory(process):
    """Of the program alone, in MiB; wait4() would count what forked it."""
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return int(status.split("VmHWM:")[1].split()[0]) / 1024


def main(build, count=500, rounds=60, milliseconds=1000):
    count, rounds, milliseconds = int(count), int(rounds), int(milliseconds)
    with tempfile.TemporaryDirectory(dir="/dev/shm") as name:
        folder = pathlib.Path(name)
        tree = hwmon.Tree(folder / "root")
        for chip in range((count + CHIP - 1) // CHIP):
            inputs = {f"temp{i + 1}": 30000 for i in range(min(CHIP, count - chip * CHIP))}
            tree.chip(chip, "lm75", "i2c", f"{chip}-0048", **inputs)
        script = folder / "board.rux"
        script.write_text(script_of(count))
        meta = folder / "board.meta"
        hwmon.compile_script(pathlib.Path(build) / "bin/rux", script, meta)
        shutil.copy(meta, folder / "again.meta")
        stop = threading.Event()
        changes = threading.Thread(target=change, args=(tree, count, milliseconds, stop))
        changes.start()
        threading.Timer(rounds * milliseconds / 2000, os.replace,
                        (folder / "again.meta", meta)).start()
        with open(folder / "journal", "w") as journal:
            process = subprocess.Popen(
                [pathlib.Path(build) / "bin/monitor", meta, "--root", tree.root, "--metrics",
                 folder / "board.prom", "--cycles", str(rounds), "--interval", str(milliseconds)],
                stderr=journal)
            began = time.monotonic()
            time.sleep((rounds - 1.5) * milliseconds / 1000)
            memory = peak_memory(process)
            _, status, usage = os.wait4(process.pid, 0)
        passed = time.monotonic() - began
        stop.set()
        changes.join()
        assert status == 0
        lines = (folder / "journal").read_text().splitlines()
        assert sum("sensors read:" in line for line in lines) == 2, lines[-1]
        missed = hwmon.series((folder / "board.prom").read_text(),
                              "rux_monitor_missed_cycles_total")[""]
        used = usage.ru_utime + usage.ru_stime
        print(f"{count} sensors, {rounds} rounds in {passed:.1f} s, {len(lines) - 2} events, "
              f"{missed:.0f} rounds missed: {used / rounds * 1000:.2f} ms of processor time a round, "
              f"{100 * used / passed:.2f} % of a core, {memory:.1f} MiB")


if __name__ == "__main__":
    main(*sys.argv[1:])
