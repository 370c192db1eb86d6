#!/usr/bin/env python3
"""What a server shows depends on the files and the texts as they are, not on how they became so.

    sessions.py PROGRAM COUNT SEED

Random sessions: files of two machines are opened, typed in, saved, closed, deleted and renamed, while
requests are made and cancelled. At each pause a new server has to show the same.
"""
import json
import pathlib
import random
import sys
import tempfile

from conversation import Server
from same_findings import Editor, edited

FILES = {
    "boards/a.rux": "[MORVRUX]\nVERSION = 1.0\n[DEFINE]\nFAST = 1\n[INCLUDE]\nFILE = ../parts/fan.rux\n",
    "boards/b.rux": "[MORVRUX]\nVERSION = 1.0\n[INCLUDE]\nFILE = ../parts/words.rux\n"
                    "[INCLUDE]\nFILE = ../parts/fan.rux\n",
    "parts/fan.rux": "[DEVICE]\nNAME = FAN\nID = 1, 2\nINITFLAG = FAST\nCONTROLMASK = 0\n",
    "parts/words.rux": "[DEFINE]\nFAST = 1\nSLOW = FAST # rux: allow surplus-values\n",
    "alone.rux": "[DEFINE]\nA = 1, 2\n",
}
PROJECT = '{"main_scripts": ["boards/*.rux"], "warnings": ["style"]}'
# What a text may become, so that files change machines.
LINES = ["[MORVRUX]\n", "[INCLUDE]\nFILE = ../parts/words.rux\n", "[INCLUDE]\nFILE = fan.rux\n",
         "[DEFINE]\nFAST = 7\n", "FAST = 1, 2\n"]


class Session(Editor):
    """An editor with a user who does things at random."""

    def __init__(self, program, folder, chance):
        super().__init__(Server(program, [], folder, None), folder)
        self.chance = chance
        self.open = {}
        self.number = 0

    def some_file(self):
        return self.chance.choice(sorted(FILES))

    def on_disk(self, name):
        path = self.folder / name
        return path.read_bytes().decode() if path.exists() else None

    def step(self):
        steps = [self.open_file, self.type_text, self.type_text, self.type_line, self.save,
                 self.close_file, self.delete, self.restore, self.set_project, self.ask]
        self.chance.choice(steps)()

    def open_file(self):
        name = self.some_file()
        if name not in self.open:
            text = self.on_disk(name)
            self.open[name] = FILES[name] if text is None else text
            self.version += 1
            self.do_open(name, str(self.version), json.dumps(self.open[name]))

    def change(self, name, text):
        if name in self.open:
            self.type(name, self.open[name], text)
            self.open[name] = text

    def type_text(self):
        name = self.some_file()
        self.change(name, edited(self.open.get(name, ""), self.chance))

    def type_line(self):
        name = self.some_file()
        self.change(name, self.chance.choice(["", FILES[name]]) + self.chance.choice(LINES))

    def save(self):
        name = self.some_file()
        if name in self.open:
            (self.folder / name).write_bytes(self.open[name].encode())
            self.notify("textDocument/didSave", {"textDocument": {"uri": self.uri(name)}})

    def close_file(self):
        name = self.some_file()
        if name in self.open:
            del self.open[name]
            self.do_close(name)

    def delete(self):
        name = self.some_file()
        (self.folder / name).unlink(missing_ok=True)
        self.do_watched(name)

    def restore(self):
        name = self.some_file()
        (self.folder / name).write_text(FILES[name])
        self.do_watched(name)

    def set_project(self):
        texts = [PROJECT, PROJECT, "{}", '{"warnings": ["nothing-such"]}', "{"]
        (self.folder / ".rux.json").write_text(self.chance.choice(texts))
        self.do_watched(".rux.json")

    def ask(self):
        self.number += 1
        name = f"ask-{self.number}"
        method = self.chance.choice(["textDocument/documentLink", "textDocument/codeAction", "x"])
        at = {"line": self.chance.randrange(9), "character": self.chance.randrange(20)}
        self.send({"id": name, "method": method, "params": {
            "textDocument": {"uri": self.uri(self.some_file())},
            "range": {"start": at, "end": at}, "context": {"diagnostics": []}}})
        if self.chance.random() < 0.5:
            self.notify("$/cancelRequest", {"id": name})

    def wait(self, name):
        """Answers to what was asked at random are passed over."""
        super_receive = self.server.receive
        self.server.receive = lambda: self.next(super_receive)
        super().wait(name)
        self.server.receive = super_receive

    @staticmethod
    def next(receive):
        while True:
            message = receive()
            if not str(message.get("id")).startswith("ask-") \
                    and message.get("method") != "window/logMessage":
                return message

    def shown(self):
        """The findings of each file, when all is known."""
        # An answer may come before what is published for other reasons at the same time.
        for name in sorted(self.open) * 2:
            self.wait(name)
        return {name: found for name, found in self.found.items() if found}


def pause(session, program):
    """What is shown, here and by a server that has seen nothing before."""
    here = session.shown()
    other = Session(program, session.folder, session.chance)
    other.open = session.open
    for name, text in session.open.items():
        other.version += 1
        other.do_open(name, str(other.version), json.dumps(text))
    there = other.shown()
    other.server.end()
    return here, there


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    count, seed = int(sys.argv[2]), int(sys.argv[3])
    pauses = findings = 0
    for number in range(count):
        chance = random.Random(f"{seed} {number}")
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name).resolve()
            (folder / ".git").mkdir()
            (folder / ".rux.json").write_text(PROJECT)
            for file, text in FILES.items():
                (folder / file).parent.mkdir(exist_ok=True)
                (folder / file).write_text(text)
            session = Session(program, folder, chance)
            session.open_file()
            for _ in range(20):
                for _ in range(chance.randrange(8)):
                    session.step()
                if not session.open:
                    session.open_file()
                here, there = pause(session, program)
                pauses += 1
                findings += sum(map(len, there.values()))
                if here != there:
                    print(f"session {number} of seed {seed}, pause {pauses}, open: {session.open}")
                    for file in sorted(here.keys() | there.keys()):
                        if here.get(file) != there.get(file):
                            print(f"{file}\n shown {here.get(file)}\n not {there.get(file)}")
                    sys.exit(1)
            status, _, errors = session.server.end()
            assert status == 1 and not errors, (status, errors)  # nobody has shut it down
    print(f"{pauses} pauses, {findings} findings")


if __name__ == "__main__":
    main()
