"""The program rux, and files that it compiles.

Paths come from the environment: RUX, RUX_SOURCE, RUX_GENERATE_MODEL, RUX_RANDOM_SCRIPTS.
"""

import json
import os
import pathlib
import subprocess
import tempfile

RUX = os.environ["RUX"]
SOURCE = pathlib.Path(os.environ["RUX_SOURCE"])


def run(*arguments, codes=(0,)):
    """What rux prints; its exit status must be one of the codes."""
    process = subprocess.run([RUX, *map(str, arguments)], stdout=subprocess.PIPE, check=False)
    if process.returncode not in codes:
        raise AssertionError(f"rux {' '.join(map(str, arguments))}: {process.returncode}")
    return process.stdout


def run_json(*arguments, codes=(0,)):
    return json.loads(run(*arguments, codes=codes))


class Machines:
    """Scripts of the examples, the tests and the generators, compiled into a folder."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)
        self._count = 0

    def compile(self, script, *options):
        """The paths of the meta file and the debug meta file; None when rux refuses the script."""
        self._count += 1
        meta = self.folder / f"{self._count}.meta"
        debug_meta = self.folder / f"{self._count}.metad"
        command = [RUX, "compile", str(script), "-o", str(meta), "-g", str(debug_meta), *options]
        process = subprocess.run(command, stderr=subprocess.DEVNULL, check=False)
        return (meta, debug_meta) if process.returncode == 0 else None

    def of_tree(self):
        """The scripts of this tree."""
        examples = [SOURCE / "examples/first/first.rux", SOURCE / "examples/server/server.rux"]
        boards = sorted((SOURCE / "tests/tool/boards").glob("*.rux"))
        return [self.compile(script) for script in examples + boards]

    def generated(self, sensors):
        """A machine of each content of the benchmarks."""
        for content in ("plain", "rich", "real"):
            folder = self.folder / content
            folder.mkdir(exist_ok=True)
            generator = os.environ["RUX_GENERATE_MODEL"]
            script = folder / "machine.rux"
            subprocess.run([generator, content, "rux", str(sensors), script], check=True)
            yield self.compile(script)

    def random(self, count):
        """Machines with everything that a script can hold."""
        folder = self.folder / "random"
        subprocess.run([os.environ["RUX_RANDOM_SCRIPTS"], str(count), str(folder)], check=True)
        for number in range(count):
            yield self.compile(folder / str(number) / "main.rux")

    def cleanup(self):
        self._folder.cleanup()
