#!/usr/bin/env python3
"""Has each number of a machine's main script become a word: what is compiled stays the same.

    same_bytes.py PROGRAM FOLDER MAIN COUNT

COUNT is how many numbers there can be words.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from conversation import Server

# Never within a name.
NUMBER = re.compile(r"(?<=[ ,=\t])(0x)?[0-9A-Fa-f]+\b")


def ask(server, number, method, params):
    server.send({"id": number, "method": method, "params": params})
    while True:
        message = server.receive()
        if message.get("id") == number and "method" not in message:
            return message["result"]


def extractions(server, uri, text):
    for line, content in enumerate(text.split("\n")):
        for found in NUMBER.finditer(content):
            place = {"line": line, "character": found.start() + 1}
            actions = ask(server, 1, "textDocument/codeAction", {
                "textDocument": {"uri": uri}, "range": {"start": place, "end": place},
                "context": {"diagnostics": [], "only": ["refactor.extract"]}})
            yield from actions


def edited(text, edits):
    lines = text.split("\n")
    for edit in sorted(edits, key=lambda each: each["range"]["start"]["line"], reverse=True):
        start, end = edit["range"]["start"], edit["range"]["end"]
        line = lines[start["line"]]
        lines[start["line"]] = line[:start["character"]] + edit["newText"] + line[end["character"]:]
    return "\n".join(lines)


def compiled(program, path):
    environment = dict(os.environ, SOURCE_DATE_EPOCH="1700000000")
    subprocess.run([program, "compile", path.name, "-o", "out.meta"], cwd=path.parent, check=True,
                   env=environment, capture_output=True)
    return (path.parent / "out.meta").read_bytes()


def main():
    program, source, name, numbers = sys.argv[1:]
    program = pathlib.Path(program).resolve()
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder).resolve() / "machine" / name
        shutil.copytree(source, path.parent)
        text = path.read_text()
        wanted = compiled(program, path)
        server = Server(program, [], path.parent, None)
        ask(server, 0, "initialize", {"processId": None, "rootUri": path.parent.as_uri(),
                                      "capabilities": {"general": {"positionEncodings": ["utf-32"]}}})
        server.send({"method": "initialized", "params": {}},
                    {"method": "textDocument/didOpen", "params": {"textDocument": {
                        "uri": path.as_uri(), "languageId": "rux", "version": 1, "text": text}}})
        count = 0
        for action in extractions(server, path.as_uri(), text):
            path.write_text(edited(text, action["edit"]["changes"][path.as_uri()]))
            assert compiled(program, path) == wanted, action["title"]
            count += 1
        server.process.kill()
        assert count == int(numbers), count


if __name__ == "__main__":
    main()
