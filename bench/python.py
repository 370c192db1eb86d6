#!/usr/bin/env python3
"""What it costs to open machines of 10,000 sensors in Python: milliseconds of processor time.

    bench/python.py BUILD [SENSORS]

The figures are those of whole programs, the least of several rounds: one that does nothing, one
that imports ruxmeta, and for each content one that opens the meta file, one that then asks every
sensor for its limits, and one that opens the debug meta file.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parent.parent
ROUNDS = 9
OPEN = "import ruxmeta; machine = ruxmeta.open({!r})"
PROGRAMS = {
    "open": OPEN,
    "limits of all sensors": OPEN + "; [each.limits for each in machine.sensors.values()]",
    "open the debug meta file": "import ruxmeta; ruxmeta.open_debug({!r} + 'd')",
}


def run_time(program):
    """The least processor time of the program, in milliseconds."""
    environment = dict(os.environ, PYTHONPATH=str(SOURCE / "python"))
    times = []
    for _ in range(ROUNDS):
        process = subprocess.Popen([sys.executable, "-c", program], env=environment)
        _, status, usage = os.wait4(process.pid, 0)
        if status != 0:
            sys.exit(f"bench/python.py: failed: {program}")
        process.returncode = status
        times.append(usage.ru_utime + usage.ru_stime)
    return 1000 * min(times)


def main():
    binaries = pathlib.Path(sys.argv[1]) / "bin"
    sensors = sys.argv[2] if len(sys.argv) > 2 else "10000"
    print(f"{run_time('pass'):6.0f} ms  nothing")
    print(f"{run_time('import ruxmeta'):6.0f} ms  import")
    with tempfile.TemporaryDirectory() as folder:
        for content in ("plain", "rich", "real"):
            path = pathlib.Path(folder) / content
            path.mkdir()
            script, meta = str(path / "machine.rux"), str(path / "machine.meta")
            subprocess.run([binaries / "generate_model", content, "rux", sensors, script], check=True)
            command = [binaries / "rux", "compile", script, "-o", meta, "-g", meta + "d"]
            subprocess.run(command, stderr=subprocess.DEVNULL, check=True)
            for name, program in PROGRAMS.items():
                print(f"{run_time(program.format(meta)):6.0f} ms  {content}: {name}")


if __name__ == "__main__":
    main()
