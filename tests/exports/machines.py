"""Machines to export: compiled from scripts that are made here, and what rux writes of them."""
import pathlib
import subprocess

# What could mean something in one of the forms. The first two become one constant.
ODD_NAMES = ["odd-name", "odd name", "fn", "class", "2nd", "\\", "\\n\\x41\\u0041", "??/ ??=", "*/ // #",
             "${HOME} $(id) `id`", "%d %s {0} {{}}", "</script>", "a\tb", "'''", "\u202eleft", "é 温度 😀",
             "__name__", "x" * 90, ";|&<>", "[section]", "-1", "0x10", "=1+1", "@chip", "true", "null"]
NOT_UTF8 = b"\xff\xc3\x1b[31m"


def script(names=ODD_NAMES):
    """A sensor for each name in a group of that name, with a limit on both sides: bytes."""
    ids = [str(i + 1) for i in range(len(names))]
    lines = ["[MORVRUX]", "VERSION = 1.0", "[DEFINE]", "VT_CONST = 1", "[SYSTEM]", "TYPE = 1", f'MODEL = "{names[0]}"', "FLAG = 0", "RUXLOOP = 1000",
             "[PELMGROUP]", "NAME = ALL", "ID = 1", "PID = 0", f"SENSORS = {', '.join(ids)}"]
    for number, name in zip(ids, names):
        lines += ["[GROUP]", "PARENT = 0", f'NAME = "{name}"', "CHILDGROUP = 0",
                  "[SENSOR]", f'PARENT = "{name}"', f'NAME = "{name}"', f"ID = {number}", "TYPE = 1",
                  f'P_UNIT = "{name}"', "INITFLAG = 0", "CONTROLMASK = 0", f"THRESHOLD_FH = {number}0",
                  "THRESHOLD_FL = -5", "VALUE = VT_CONST, 0"]
    raw = b'[DEVICE]\nNAME = "' + NOT_UTF8 + b'"\nID = 99\nINITFLAG = 0\nCONTROLMASK = 0\n'
    return ("\n".join(lines) + "\n").encode() + raw


class Folder:
    """Where machines are compiled and exported."""

    def __init__(self, program, path):
        self.program = program
        self.path = pathlib.Path(path)

    def compile(self, source, project=None):
        """The path of the meta file of a script, given as bytes or by its path."""
        if isinstance(source, bytes):
            file = self.path / "machine.rux"
            file.write_bytes(source)
            source = file
        meta = self.path / (pathlib.Path(source).stem + ".meta")
        subprocess.run([self.program, "compile", str(source), "-o", str(meta)], check=True,
                       stderr=subprocess.DEVNULL)
        if project:
            (self.path / ".rux.json").write_text(project)
        return meta

    def export(self, form, machine, name, *options):
        """The path of what rux export writes."""
        result = self.path / name
        subprocess.run([self.program, "export", form, str(machine), "-o", str(result), *options], check=True,
                       stderr=subprocess.DEVNULL)
        return result
