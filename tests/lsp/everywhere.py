#!/usr/bin/env python3
"""Asks for everything, everywhere: at each place of texts that are being written, every request has an answer.

    everywhere.py PROGRAM FOLDER MAIN MOST SEED

Types the files of the folder, which is a machine with the main script MAIN: up to MOST of their prefixes, and of
texts after random edits. At places of each text, all requests of the protocol that the server announces are
answered without an error, except a rename that is refused, and every place in an answer is a place in its text.
"""
import json
import pathlib
import random
import shutil
import sys
import tempfile

from conversation import Server
from same_findings import Editor, edited

REFUSED = -32803


def at_place(place):
    return {"position": place}


def at_range(place):
    return {"range": {"start": place, "end": {"line": place["line"] + 1, "character": 0}}}


def whole(_):
    return {}


# Each with what its parameters have besides the document.
REQUESTS = {
    "textDocument/completion": at_place,
    "textDocument/hover": at_place,
    "textDocument/signatureHelp": at_place,
    "textDocument/definition": at_place,
    "textDocument/references": lambda place: {**at_place(place), "context": {"includeDeclaration": True}},
    "textDocument/documentHighlight": at_place,
    "textDocument/prepareRename": at_place,
    "textDocument/rename": lambda place: {**at_place(place), "newName": "OTHER"},
    "textDocument/prepareCallHierarchy": at_place,
    "textDocument/onTypeFormatting": lambda place: {**at_place(place), "ch": "\n", "options": {}},
    "textDocument/selectionRange": lambda place: {"positions": [place]},
    "textDocument/rangeFormatting": lambda place: {**at_range(place), "options": {}},
    "textDocument/inlayHint": at_range,
    "textDocument/semanticTokens/range": at_range,
    "textDocument/codeAction": lambda place: {**at_range(place), "context": {"diagnostics": []}},
    "textDocument/semanticTokens/full": whole,
    "textDocument/semanticTokens/full/delta": lambda _: {"previousResultId": "1"},
    "textDocument/documentSymbol": whole,
    "textDocument/foldingRange": whole,
    "textDocument/codeLens": whole,
    "textDocument/documentLink": whole,
    "textDocument/diagnostic": whole,
    "textDocument/formatting": lambda _: {"options": {}},
    "workspace/symbol": lambda _: {"query": "a"},
    "workspace/diagnostic": lambda _: {"previousResultIds": []},
}

# The same, for those that name the document elsewhere.
REQUESTS_ABOUT = {
    "completionItem/resolve": lambda uri, place: {
        "label": "A", "data": {"uri": uri, "position": place}},
    "workspace/willRenameFiles": lambda uri, _: {
        "files": [{"oldUri": uri, "newUri": uri.replace("/machine/", "/machine/other/")}]},
}


class Asker(Editor):
    def __init__(self, server, folder):
        super().__init__(server, folder)
        self.texts = {}
        self.answers = 0

    def lines(self, uri):
        name = self.name(uri)
        text = self.texts.get(name)
        if text is None:
            text = (self.folder / name).read_bytes().decode()
        return text.replace("\r\n", "\n").replace("\r", "\n").split("\n")

    def expect_places(self, uri, value):
        """Every range in an answer is one of its text, in characters of UTF-32."""
        if isinstance(value, list):
            for each in value:
                self.expect_places(uri, each)
        elif isinstance(value, dict):
            uri = value.get("uri", uri)
            if "start" in value and "end" in value and isinstance(value["start"], dict):
                lines = self.lines(uri)
                for at in (value["start"], value["end"]):
                    assert at["line"] < len(lines), (uri, value)
                    assert at["character"] <= len(lines[at["line"]]), (uri, value)
                start, end = ((at["line"], at["character"]) for at in (value["start"], value["end"]))
                assert start <= end, value
            for key, each in value.items():
                self.expect_places(key if key.startswith("file:") else uri, each)

    def ask(self, name, place):
        asked = {}
        for method, params in REQUESTS.items():
            asked[f"ask {method}"] = method
            self.server.send({"id": f"ask {method}", "method": method, "params": {
                "textDocument": {"uri": self.uri(name)}, **params(place)}})
        for method, params in REQUESTS_ABOUT.items():
            asked[f"ask {method}"] = method
            self.server.send({"id": f"ask {method}", "method": method,
                              "params": params(self.uri(name), place)})
        while asked:
            message = self.server.receive()
            method = asked.pop(message.get("id"), None)
            if method is None:
                continue
            self.answers += 1
            if "error" in message:
                assert method.endswith(("ename",)) and message["error"]["code"] == REFUSED, (method, message)
            else:
                self.expect_places(self.uri(name), message["result"])

    def write(self, name, text):
        self.type(name, self.texts[name], text)
        self.texts[name] = text


def main():
    program, source = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
    main_script, most, seed = sys.argv[3], int(sys.argv[4]), int(sys.argv[5])
    chance = random.Random(seed)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name).resolve() / "machine"
        shutil.copytree(source, folder)
        (folder / ".git").mkdir()
        asker = Asker(Server(program, [], folder, None), folder)
        texts = 0
        for path in sorted(source.rglob("*.rux")):
            file = path.relative_to(source).as_posix()
            text = path.read_bytes().decode()
            for opened in {main_script, file}:
                asker.texts[opened] = (folder / opened).read_bytes().decode()
                asker.version += 1
                asker.do_open(opened, str(asker.version), json.dumps(asker.texts[opened]))
            step = max(1, len(text) // most)
            versions = [text[:end] for end in range(0, len(text) + 1, step)] + [text]
            for _ in range(most):
                versions.append(edited(versions[-1], chance))
            for version in versions:
                asker.write(file, version)
                lines = asker.lines(asker.uri(file))
                line = chance.choice([len(lines) - 1, chance.randrange(len(lines))])
                asker.ask(file, {"line": line, "character": chance.randrange(len(lines[line]) + 2)})
                texts += 1
            asker.write(file, text)
        status, _, errors = asker.server.end()
        assert status == 1 and not errors, (status, errors)  # nobody has shut it down
    print(f"{texts} texts, {asker.answers} answers")


if __name__ == "__main__":
    main()
