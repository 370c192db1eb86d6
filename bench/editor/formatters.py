#!/usr/bin/env python3
"""How long a formatter takes for a file whose blanks it has to change.

    formatters.py RUX [--lines N]... [--runs N] [--rival FORM COMMAND]...

The content is that of latency.py, with two blanks where there is one. FORM is json, toml or proto; COMMAND gets the
file as its last argument and changes it. Times of the wall, and of the processor in all processes.
"""
import argparse
import pathlib
import resource
import shlex
import subprocess
import tempfile
import time

from latency import FORMS, SENSOR


def seconds_of(command, path, text):
    """On the wall, and of the processor."""
    path.write_text(text)
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.perf_counter()
    subprocess.run([*command, path], check=True, cwd=path.parent, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    wall = time.perf_counter() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    assert path.read_text() != text, "nothing is formatted"
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def measure(name, command, form, lines, runs):
    text = FORMS[form](lines // SENSOR.count("\n")).replace(" = ", "  =  ")
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / f"main.{form}"
        times = [seconds_of(command, path, text) for _ in range(runs)]
    wall, processor = (sorted(each)[runs // 2] * 1e3 for each in zip(*times))
    print(f"| {name} | {lines:,} | {wall:.0f} ms | {processor:.0f} ms |")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("rux")
    parser.add_argument("--lines", type=int, action="append")
    parser.add_argument("--runs", type=int, default=9)
    parser.add_argument("--rival", nargs=2, action="append", default=[], metavar=("FORM", "COMMAND"))
    options = parser.parse_args()
    print("| | Lines | wall | processor |\n|---|---|---|---|")
    program = pathlib.Path(options.rux).resolve()
    for lines in options.lines or [1000, 10000]:
        measure("rux fmt", [program, "fmt"], "rux", lines, options.runs)
        for form, command in options.rival:
            measure(form, shlex.split(command), form, lines, options.runs)


if __name__ == "__main__":
    main()
