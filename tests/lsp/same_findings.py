#!/usr/bin/env python3
"""What the server finds in texts that change is what `rux check` finds in files with these texts.

    same_findings.py PROGRAM FOLDER MAIN MOST SEED

Types each file of the folder, which is a machine with the main script MAIN, from the beginning, deletes
parts of it, and edits it at random, MOST times each.
"""
import json
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile

from conversation import SEVERITIES, Server, Talk

CAPABILITIES = {"general": {"positionEncodings": ["utf-32"]},
                "textDocument": {"publishDiagnostics": {"relatedInformation": True}}}
# What random edits insert besides pieces of the text itself.
WORDS = ["[", "]", "=", ",", "\n", "\r\n", "\r", "\\\n", '"', "#", " ", "0x", "-1", "é", "€", "😀",
         "\u202e", "\0", "[INCLUDE]\nFILE = ", "[MORVRUX]\n", "[SENSOR]\n", "[DEFINE]\n",
         "# rux: allow surplus-values\n", "VALUE = ", "ID = ", "99999999999"]
BARRIER = 1
# A suggestion with characters that are shown escaped.
HIDDEN = "did you mean ...?"
# So many texts are only typed for each one that is compared.
SPARED = 4


class Editor(Talk):
    """A client that keeps what the server has published last of each file."""

    def __init__(self, server, folder):
        super().__init__(server, folder)
        self.found = {}
        self.version = 0
        self.do_start(json.dumps(CAPABILITIES))

    def wait(self, name):
        """Until all is known about the texts as they are."""
        global BARRIER
        BARRIER += 1
        self.server.send({"id": BARRIER, "method": "textDocument/documentLink",
                          "params": {"textDocument": {"uri": self.uri(name)}}})
        while True:
            message = self.server.receive()
            if message.get("id") == BARRIER:
                assert "result" in message, message
                return
            if message["method"] == "textDocument/publishDiagnostics":
                params = message["params"]
                self.found[self.name(params["uri"])] = params["diagnostics"]

    def type(self, name, before, after):
        """Changes the text by its smallest range."""
        start = 0
        while start < min(len(before), len(after)) and before[start] == after[start]:
            start += 1
        end = 0
        while (end < min(len(before), len(after)) - start
               and before[len(before) - 1 - end] == after[len(after) - 1 - end]):
            end += 1
        # Not between the two characters of a line end.
        start -= start > 0 and before[start - 1] == "\r"
        end -= end > 0 and before[len(before) - end] == "\n"
        self.version += 1
        where = f"{place(before, start)}-{place(before, len(before) - end)}"
        self.do_change(name, self.version, where, json.dumps(after[start:len(after) - end]))


def place(text, at):
    """The line and the character of a place, as the protocol counts them."""
    before = text[:at].replace("\r\n", "\n").replace("\r", "\n")
    return f"{before.count(chr(10))}:{len(before) - before.rfind(chr(10)) - 1}"


def line_starts(text):
    """Where the lines of the language begin: those of the protocol are more."""
    starts = [0]
    while (end := text.find("\n", starts[-1])) >= 0:
        starts.append(end + 1)
    return starts


def written(program, folder, name):
    """What `rux check` finds in a file: (place, id, severity, text), sorted; None when it is not all."""
    run = subprocess.run([program, "check", "--format", "json", name], cwd=folder,
                         capture_output=True, check=False)
    report = json.loads(run.stdout)
    if report["not_shown"] or not report["complete"]:
        return None
    findings = []
    for each in report["diagnostics"]:
        at = each.get("location", {"file": name})
        file = at["file"]
        if each["id"] == "checked-as-part":
            continue
        start = end = "0:0"
        if "column" in at:
            text = (folder / file).read_bytes().decode()
            begin = line_starts(text)[at["line"] - 1]
            start = place(text, begin + at["column"] - 1)
            end = place(text, begin + at["end_column"] - 1)
        elif "line" in at:
            start = end = None
        suggestion = f"did you mean {each['suggestion']}?" if "suggestion" in each else ""
        if not suggestion.isprintable():
            suggestion = HIDDEN
        findings.append((file, start, end, each["id"], each["severity"], suggestion))
    return findings


def shown(found):
    """The same of what the server has published."""
    for file, diagnostics in found.items():
        for each in diagnostics:
            at = [f"{each['range'][end]['line']}:{each['range'][end]['character']}"
                  for end in ("start", "end")]
            lines = [line for line in each["message"].split("\n") if line.startswith("did you mean")]
            suggestion = HIDDEN if "\\x" in "".join(lines) else "".join(lines[:1])
            yield (file, *at, each.get("code"), SEVERITIES[each["severity"]], suggestion)


def differences(wanted, went):
    """What only one of both has. A finding without a column is anywhere."""
    without = [each for each in wanted if each[1] is None]
    wanted = [each for each in wanted if each[1] is not None]
    for each in list(went):
        if each in wanted:
            wanted.remove(each)
            went.remove(each)
    for each in without:
        same = [other for other in went if other[0] == each[0] and other[3:] == each[3:]]
        if same:
            went.remove(same[0])
        else:
            wanted.append(each)
    return wanted, went


def edited(text, chance):
    """A text after one random edit."""
    at, end = sorted(chance.randrange(len(text) + 1) for _ in range(2))
    end = min(end, at + chance.choice([0, 0, 1, 5, 60]))
    piece = chance.choice(WORDS)
    if chance.random() < 0.3:
        begin = chance.randrange(len(text) + 1)
        piece = text[begin:begin + chance.choice([1, 10, 100])]
    return text[:at] + chance.choice(["", piece]) + text[end:]


def texts_of(text, most, chance):
    """The prefixes, the text without each of its parts, and what random edits make of it."""
    step = max(1, len(text) // most)
    yield from (text[:i] for i in range(0, len(text) + 1, step))
    yield from (text[:i] + text[i + step:] for i in range(0, len(text), step))
    for i in range(most):
        if i % 10 == 0:
            random_text = text
        random_text = edited(random_text, chance)
        yield random_text


def compare(program, copy, editor, file, is_main):
    """What is wrong with the findings in a file, or in all files of its machine; and how many there are."""
    wanted = written(program, copy, file)
    if wanted is None:
        return "", 0
    went = editor.found if is_main else {file: editor.found[file]}
    if not is_main:
        wanted = [each for each in wanted if each[0] == file]
    total = len(wanted)
    missing, surplus = differences(wanted, list(shown(went)))
    return (f"missing {missing}\nsurplus {surplus}" if missing or surplus else ""), total


def type_file(program, copy, editor, file, is_main, texts):
    """Types texts into a file, one after the other. The texts, those compared, and their findings."""
    before = (copy / file).read_text()
    editor.version += 1
    editor.do_open(file, str(editor.version), json.dumps(before))
    counts = [0, 0, 0]
    for after in texts(before):
        editor.type(file, before, after)
        editor.wait(file)
        before = after
        counts[0] += 1
        if counts[0] % (SPARED + 1) != 0:
            continue
        (copy / file).write_bytes(after.encode())
        wrong, found = compare(program, copy, editor, file, is_main)
        if wrong:
            sys.exit(f"{file}, text {counts[0]}:\n{after!r}\n{wrong}")
        counts[1] += 1
        counts[2] += found
    return counts


def main():
    program, source = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
    main_script, most, seed = sys.argv[3], int(sys.argv[4]), int(sys.argv[5])
    chance = random.Random(seed)
    counts = []
    with tempfile.TemporaryDirectory() as name:
        tree, copy = (pathlib.Path(name).resolve() / part for part in ("tree", "copy"))
        for folder in (tree, copy):
            shutil.copytree(source, folder)
            (folder / ".git").mkdir()  # the search ends here
        editor = Editor(Server(program, [], tree, None), tree)
        for path in sorted(source.rglob("*.rux")):
            file = path.relative_to(source).as_posix()
            editor.do_open(main_script)
            counts.append(type_file(program, copy, editor, file, file == main_script,
                                    lambda text: texts_of(text, most, chance)))
            shutil.copy(path, copy / file)
            editor.do_close(file)
        status, _, errors = editor.server.end()
        assert status == 1 and not errors, (status, errors)  # nobody has shut it down
    print("{} texts, {} compared, {} findings".format(*map(sum, zip(*counts))))


if __name__ == "__main__":
    main()
