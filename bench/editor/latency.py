#!/usr/bin/env python3
"""How long an editor waits for a language server: for findings after a change, and for completions.

    latency.py RUX [--lines N]... [--edits N] [--rival FORM COMMAND]...

Types into a generated machine as a person would, one character at a time, and waits for what is found each time;
asks for completions after each character. A rival speaks the same protocol about FORM: json, toml or proto. It
gets the same content in that form, as long, with the same edits. Times are those of the wall, from sending to
receiving.
"""
import argparse
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/lsp"))
from conversation import Server

HEAD = """[MORVRUX]
VERSION = 1.0
[SYSTEM]
TYPE = 1
MODEL = Bench
FLAG = 0
RUXLOOP = 1000
[DEFINE]
VT_SMBUS_READ = 12
BUSTYPE_SMBUS = 2
MASK = 3
INIT = 3
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
"""
SENSOR = """[SENSOR]
NAME = S{0}
ID = {1}
PARENT = BOARD
TYPE = 1
INITFLAG = INIT
CONTROLMASK = MASK
THRESHOLD_FH = 90
THRESHOLD_WH = 80
VALUE = VT_SMBUS_READ, {1}, 1, BUSTYPE_SMBUS, 0x00
"""
LIST = """[PELMGROUP]
NAME = L{0}
ID = {0}
PID = 0
SENSORS = {1}
"""
LISTED = 100

# Entries are fields, and what an entry refers to is a type.
MESSAGES = """syntax = "proto3";
package machine;
message BOARD {}
message INIT {}
message CONTROLMASK {}
"""
MESSAGE = """message S{0} {{
  string NAME = 1;
  uint32 ID = 2;
  BOARD PARENT = 3;
  uint32 TYPE = 4;
  INIT INITFLAG = 5;
  CONTROLMASK MASK = 6;
  uint32 THRESHOLD_FH = 7;
  uint32 THRESHOLD_WH = 8;
}}
"""


def script(count):
    """A machine without a fault."""
    sensors = "".join(SENSOR.format(i, i + 1) for i in range(count))
    lists = (range(first + 1, min(first + LISTED, count) + 1) for first in range(0, count, LISTED))
    return HEAD + sensors + "".join(LIST.format(number, ", ".join(map(str, ids)))
                                    for number, ids in enumerate(lists, 1))


def entries(count):
    """Of each sensor, keys with values."""
    for i in range(count):
        yield dict(line.split(" = ", 1) for line in SENSOR.format(i, i + 1).splitlines()[1:])


def json_text(count):
    return json.dumps({"sensors": list(entries(count))}, indent=1)


def toml_text(count):
    """A table for each sensor: lists of tables take the rival far longer."""
    return "".join(f"[{sensor['NAME']}]\n" + "".join(f"{key} = {json.dumps(value)}\n"
                                                     for key, value in sensor.items())
                   for sensor in entries(count))


def proto_text(count):
    return MESSAGES + "".join(MESSAGE.format(i) for i in range(count))


# By the extensions of their files.
FORMS = {"rux": script, "json": json_text, "toml": toml_text, "proto": proto_text}


def typing_place(text):
    """Within the first sensor's CONTROLMASK: line and column."""
    at = [found.start() for found in re.finditer("CONTROLMASK", text)]
    place = at[1] if text.startswith("syntax") else at[0]  # the first one is the type itself
    place += len("CONTROLM")
    return text.count("\n", 0, place), place - text.rfind("\n", 0, place) - 1


class Rival(Server):
    """Any other program that speaks the protocol."""

    def __init__(self, command, folder):  # pylint: disable=super-init-not-called
        self.process = subprocess.Popen(command, cwd=folder, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.bytes = b""


class Client:
    def __init__(self, server, uri):
        self.server = server
        self.uri = uri
        self.version = 0
        self.id = 0
        self.lines = []
        self.takes_ranges = True

    def notify(self, method, params):
        self.server.send({"method": method, "params": params})

    def request(self, method, params):
        self.id += 1
        self.server.send({"id": self.id, "method": method, "params": params})
        while True:
            message = self.server.receive()
            if message.get("id") == self.id and "method" not in message:
                return message.get("result")

    def start(self, folder):
        answer = self.request("initialize", {"processId": None, "rootUri": folder.as_uri(), "capabilities": {
            "textDocument": {"publishDiagnostics": {"versionSupport": True},
                             "completion": {"completionItem": {"snippetSupport": True}}}}})
        sync = answer["capabilities"]["textDocumentSync"]
        self.takes_ranges = (sync["change"] if isinstance(sync, dict) else sync) == 2
        self.notify("initialized", {})

    def open(self, text):
        self.version += 1
        self.lines = text.split("\n")
        self.notify("textDocument/didOpen", {"textDocument": {
            "uri": self.uri, "languageId": "any", "version": self.version, "text": text}})
        self.wait()

    def wait(self):
        """Until what is found in the text as it is has come."""
        while True:
            message = self.server.receive()
            if "id" in message and "method" in message:
                self.server.send({"id": message["id"], "result": None})
            if message.get("method") == "textDocument/publishDiagnostics" \
                    and message["params"].get("version", self.version) == self.version:
                return

    def change(self, line, column, end, text):
        """A range or, for those that take nothing else, all."""
        self.version += 1
        self.lines[line] = self.lines[line][:column] + text + self.lines[line][end:]
        change = {"range": {"start": {"line": line, "character": column},
                            "end": {"line": line, "character": end}}, "text": text}
        if not self.takes_ranges:
            change = {"text": "\n".join(self.lines)}
        self.notify("textDocument/didChange", {
            "textDocument": {"uri": self.uri, "version": self.version}, "contentChanges": [change]})

    def memory(self):
        """The most that the process had, in MiB."""
        status = pathlib.Path(f"/proc/{self.server.process.pid}/status").read_text()
        return int(re.search(r"VmHWM:\s*(\d+)", status)[1]) / 1024


def typed(client, line, column, edits):
    """Seconds for findings and for completions, while a character comes and goes."""
    found, completed = [], []
    for _ in range(edits):
        start = time.perf_counter()
        client.change(line, column, column, "x")
        client.request("textDocument/completion", {
            "textDocument": {"uri": client.uri}, "position": {"line": line, "character": column + 1}})
        completed.append(time.perf_counter() - start)
        start = time.perf_counter()
        client.change(line, column, column + 1, "")
        client.wait()
        found.append(time.perf_counter() - start)
    return found, completed


def row(name, lines, seconds):
    seconds = sorted(seconds)
    middle, late = (seconds[int(part * (len(seconds) - 1))] * 1e3 for part in (0.5, 0.95))
    print(f"| {name} | {lines:,} | {middle:.1f} ms | {late:.1f} ms |")


def measure(name, start, form, lines, edits):
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder).resolve()
        text = FORMS[form](lines // SENSOR.count("\n"))
        path = folder / f"main.{form}"
        path.write_text(text)
        client = Client(start(folder), path.as_uri())
        client.start(folder)
        client.open(text)
        found, completed = typed(client, *typing_place(text), edits)
        row(f"{name}: findings", lines, found)
        row(f"{name}: completions", lines, completed)
        print(f"| {name}: memory | {lines:,} | {client.memory():.0f} MiB | |")
        client.server.process.kill()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("rux")
    parser.add_argument("--lines", type=int, action="append")
    parser.add_argument("--edits", type=int, default=60)
    parser.add_argument("--rival", nargs=2, action="append", default=[], metavar=("FORM", "COMMAND"))
    options = parser.parse_args()
    print("| | Lines | middle | 95 % below |\n|---|---|---|---|")
    program = pathlib.Path(options.rux).resolve()
    for lines in options.lines or [1000, 10000, 100000]:
        measure("rux lsp", lambda folder: Server(program, [], folder, None), "rux", lines,
                options.edits)
        for form, command in options.rival:
            measure(form, lambda folder, command=command: Rival(shlex.split(command), folder), form,
                    lines, options.edits)


if __name__ == "__main__":
    main()
