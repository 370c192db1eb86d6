"""Folders that look like hwmon of Linux, meta files, and runs of the monitor."""
import pathlib
import re
import subprocess


class Tree:
    """A root folder with chips."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        (self.root / "sys/class/hwmon").mkdir(parents=True)

    def chip(self, number, driver, bus=None, device=None, **inputs):
        """hwmonNUMBER of that driver, at a device of a bus; inputs are names with numbers."""
        folder = self.root / f"sys/class/hwmon/hwmon{number}"
        folder.mkdir()
        (folder / "name").write_text(driver + "\n")
        if bus is not None:
            place = self.root / "sys/devices" / bus / device
            place.mkdir(parents=True, exist_ok=True)
            kind = self.root / "sys/bus" / bus
            kind.mkdir(parents=True, exist_ok=True)
            if not (place / "subsystem").is_symlink():
                (place / "subsystem").symlink_to(kind)
            (folder / "device").symlink_to(place)
        for name, value in inputs.items():
            self.set(number, name, value)
        return folder

    def set(self, number, name, value):
        """As the kernel does: nobody reads half a number."""
        path = self.root / f"sys/class/hwmon/hwmon{number}/{name}_input"
        temporary = path.with_suffix(".new")
        temporary.write_text(f"{value}\n")
        temporary.replace(path)


def compile_script(rux, script, meta):
    """Compiles a script into a meta file that is put in place whole."""
    result = subprocess.run([rux, "compile", script, "-o", meta], capture_output=True, text=True)
    if result.returncode != 0:
        raise SystemExit(f"{script}: {result.stdout}{result.stderr}")


def series(text, name):
    """The lines of a metric: labels of each, with its number."""
    found = {}
    for labels, value in re.findall(rf"^{name}(?:{{(.*)}})? (\S+)$", text, re.MULTILINE):
        found[labels] = float(value)
    return found


def bands(text):
    """sensor -> band of the metrics."""
    found = {}
    for labels in series(text, "rux_sensor_band"):
        sensor, band = re.fullmatch(r'sensor="(.*)",band="(.*)"', labels).groups()
        found[sensor] = band
    return found


def readings(text):
    """sensor -> reading of the metrics."""
    return {labels[len('sensor="'):-1]: value
            for labels, value in series(text, "rux_sensor_reading").items()}


def run_once(monitor, meta, tree, metrics, *options):
    """One round: the lines of the journal, and the metrics."""
    result = subprocess.run(
        [monitor, meta, "--root", tree.root, "--metrics", metrics, "--once", *options],
        capture_output=True, text=True)
    if result.returncode != 0:
        raise SystemExit(f"status {result.returncode}: {result.stderr}")
    return result.stderr.splitlines(), pathlib.Path(metrics).read_text()
