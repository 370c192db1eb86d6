#!/usr/bin/env python3
"""Holds a conversation with `rux lsp`, as a file writes it down.

    conversation.py PROGRAM CASE [PRELOADED]

README.md describes the form of a case. PRELOADED is a library that makes checks crash or hang.
"""
import difflib
import json
import os
import pathlib
import re
import select
import shutil
import subprocess
import sys
import tempfile

from case_text import answer, range_of, read_case, shown, steps, with_result_ids

SEVERITIES = {1: "error", 2: "warning", 3: "note"}
# Only a server that hangs takes as long.
LONGEST = 60
# Of more findings of a file, only the first and the last one are written down.
MOST_WRITTEN = 100


class Server:
    """The program, with messages instead of bytes."""

    def __init__(self, program, arguments, folder, preloaded):
        environment = dict(os.environ)
        if preloaded:
            environment["LD_PRELOAD"] = preloaded
        self.process = subprocess.Popen(
            [program, "lsp", *arguments], cwd=folder, env=environment,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.bytes = b""

    def write(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def send(self, *messages):
        """All in one piece: the server has them together."""
        framed = b""
        for message in messages:
            body = json.dumps({"jsonrpc": "2.0", **message}).encode()
            framed += b"Content-Length: %d\r\n\r\n" % len(body) + body
        self.write(framed)

    def more(self):
        if not select.select([self.process.stdout], [], [], LONGEST)[0]:
            raise EOFError("nothing more comes")
        data = os.read(self.process.stdout.fileno(), 1 << 16)
        if not data:
            raise EOFError("the server has ended")
        self.bytes += data

    def receive(self):
        while b"\r\n\r\n" not in self.bytes:
            self.more()
        header, _, rest = self.bytes.partition(b"\r\n\r\n")
        length = int(re.fullmatch(rb"Content-Length: (\d+)", header)[1])
        while len(rest) < length:
            self.more()
            rest = self.bytes.partition(b"\r\n\r\n")[2]
        self.bytes = rest[length:]
        return json.loads(rest[:length])

    def end(self):
        self.process.stdin.close()
        left = self.process.stdout.read()
        errors = self.process.stderr.read().decode()
        return self.process.wait(), self.bytes + left, errors


class Talk:
    """Sends what a line says, and writes what comes in the form of the lines."""

    def __init__(self, server, folder):
        self.server = server
        self.folder = folder
        self.root = folder.as_uri()
        self.held = None
        self.result_ids = []

    def uri(self, name):
        return name if ":" in name else (self.folder / name).as_uri()

    def name(self, uri):
        return uri[len(self.root) + 1:] if uri.startswith(self.root + "/") else uri

    def json(self, text):
        text = re.sub(r'"@(\d+)"', lambda at: json.dumps(self.result_ids[int(at[1]) - 1]), text)
        return json.loads(text.replace("$ROOT", self.root)) if text else None

    def result_id(self, value):
        """By its number: what servers make of it is their own."""
        if value not in self.result_ids:
            self.result_ids.append(value)
        return f"@{self.result_ids.index(value) + 1}"

    def send(self, message):
        if self.held is None:
            self.server.send(message)
        else:
            self.held.append(message)

    def notify(self, method, params):
        self.send({"method": method, "params": params} if params is not None else
                  {"method": method})

    # What lines that begin with ">" do.

    def do_request(self, number, method, params=""):
        message = {"id": int(number), "method": method}
        if params:
            message["params"] = self.json(params)
        self.send(message)

    def do_notify(self, method, params=""):
        self.notify(method, self.json(params))

    def do_answer(self, number, result):
        """To a request of the server's."""
        self.send({"id": json.loads(number), "result": self.json(result)})

    def do_refuse(self, number):
        self.send({"id": json.loads(number), "error": {"code": -32603, "message": "no"}})

    def do_raw(self, text):
        self.server.write(text.encode().decode("unicode_escape").encode("latin-1"))

    def do_start(self, capabilities="{}"):
        self.start({"rootUri": self.root, "capabilities": self.json(capabilities)})

    def do_start_without_folder(self, capabilities="{}"):
        self.start({"rootUri": None, "capabilities": self.json(capabilities)})

    def start(self, params):
        self.server.send({"id": 0, "method": "initialize", "params": {"processId": None, **params}})
        assert self.server.receive()["id"] == 0
        self.notify("initialized", {})

    def do_open(self, name, version="1", text=""):
        content = json.loads(text) if text else (self.folder / name).read_text()
        self.notify("textDocument/didOpen", {"textDocument": {
            "uri": self.uri(name), "languageId": "rux", "version": int(version),
            "text": content}})

    def do_change(self, name, version, where, text):
        change = {"text": json.loads(text)}
        if where != "all":
            change["range"] = range_of(where)
        self.notify("textDocument/didChange", {
            "textDocument": {"uri": self.uri(name), "version": int(version)},
            "contentChanges": [change]})

    def do_close(self, name):
        self.notify("textDocument/didClose", {"textDocument": {"uri": self.uri(name)}})

    def do_shell(self, command):
        subprocess.run(command, shell=True, cwd=self.folder, check=True)

    def do_watched(self, *names):
        self.notify("workspace/didChangeWatchedFiles", {
            "changes": [{"uri": self.uri(name), "type": 2} for name in names]})

    def do_hold(self):
        """What follows is sent together."""
        self.held = []

    def do_go(self):
        held, self.held = self.held, None
        self.server.send(*held)

    def run(self, line):
        verb, _, rest = line.partition(" ")
        counts = {"raw": 1, "notify": 2, "request": 3, "start": 1, "start_without_folder": 1,
                  "answer": 2, "refuse": 1, "open": 3, "change": 4,
                  "close": 1, "shell": 1, "watched": -1, "hold": 0, "go": 0}
        most = counts[verb]
        arguments = rest.split(" ", most - 1) if most > 0 and rest else rest.split()
        getattr(self, "do_" + verb)(*arguments)

    # What comes.

    def diagnostic(self, each):
        lines = each["message"].split("\n")
        label = [SEVERITIES[each["severity"]]]
        if "code" in each:
            label.append(each["code"])
        label += [{1: "faded"}[tag] for tag in each.get("tags", [])]
        yield f"  {shown(each['range'])} {' '.join(label)}: {lines[0]}"
        yield from (f"    {line}".replace(str(self.folder), "$FOLDER") for line in lines[1:])
        if "codeDescription" in each:
            yield f"    see {self.name(each['codeDescription']['href'])}"
        for related in each.get("relatedInformation", []):
            at = related["location"]
            yield f"    @ {self.name(at['uri'])} {shown(at['range'])} {related['message']}"

    def written(self, message):
        """The lines of a message."""
        if message.get("method") == "textDocument/publishDiagnostics":
            params = message["params"]
            version = f" {params['version']}" if "version" in params else ""
            lines = [f"< findings {self.name(params['uri'])}{version}"]
            found = params["diagnostics"]
            if len(found) > MOST_WRITTEN:
                lines.append(f"  {len(found)} findings, at the ends")
                found = [found[0], found[-1]]
            for each in found:
                lines.extend(self.diagnostic(each))
            return lines
        if "method" in message:
            kind = "request" if "id" in message else "notify"
            params = with_result_ids(message.get("params"), self.result_id)
            text = json.dumps(params, ensure_ascii=False, sort_keys=True)
            return [f"< {kind} {message['method']} {text}".replace(self.root, "$ROOT")]
        if "error" in message:
            return [f"< error {json.dumps(message['id'])} {message['error']['code']} "
                    f"{message['error']['message']}"
                    .replace(self.root, "$ROOT").replace(str(self.folder), "$FOLDER")]
        result = with_result_ids(message["result"], self.result_id)
        return [answer(message["id"], result).replace(self.root, "$ROOT")
                .replace(str(self.folder), "$FOLDER")]


def hold_talk(case, talk):
    """The talk as it went, and as it was to go."""
    went, wanted = [], []
    for messages, line in steps(case["talk"]):
        wanted += [line for message in messages for line in message]
        # Of several messages in a row, the order does not matter.
        came = []
        try:
            for _ in messages:
                came.append(talk.written(talk.server.receive()))
        except EOFError as end:
            came.append([str(end)])
        for message in messages:
            if message in came:
                came.remove(message)
                went += message
        went += [line for message in came for line in message]
        if went != wanted or line is None:
            break
        went.append("> " + line)
        wanted.append("> " + line)
        talk.run(line)
    return went, wanted


def install(program, prefix, beside):
    """A copy of the program, and empty files in the places of others."""
    copy = prefix / "bin" / program.name
    copy.parent.mkdir(parents=True)
    shutil.copy(program, copy)
    for name in beside:
        (prefix / name).parent.mkdir(parents=True)
        (prefix / name).touch()
    return copy


def main():
    program, path = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    preloaded = sys.argv[3] if len(sys.argv) > 3 else None
    case = read_case(path.read_text())
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name).resolve()
        for file, content in case["files"]:
            (folder / file).parent.mkdir(parents=True, exist_ok=True)
            (folder / file).write_text(content)
        if case["installed"]:
            program = install(program, folder / "usr", case["installed"])
        before = sorted(folder.rglob("*"))
        talk = Talk(Server(program, case["arguments"], folder, preloaded), folder)
        went, wanted = hold_talk(case, talk)
        status, left, errors = talk.server.end()
        if "> shell" not in case["talk"] and sorted(folder.rglob("*")) != before:
            went.append("files came or went")
    went += [f"exit {status}", "left " + left.decode(), errors]
    wanted += [f"exit {case['exit']}", "left ", case["stderr"]]
    for line in difflib.unified_diff(wanted, went, "wanted", "went", lineterm="", n=99):
        print(line)
    sys.exit(went != wanted)


if __name__ == "__main__":
    main()
