"""Looks at the VS Code extension: files, version, and the problem matcher on what rux check prints.

  vscode.py EXTENSION VERSION RUX FOLDER
"""
import json
import os
import re
import subprocess
import sys

extension, version, rux, folder = sys.argv[1:]


def load(path):
    with open(os.path.join(extension, path), encoding="utf-8") as file:
        return json.load(file)


package = load("package.json")
assert package["version"] == version, f"the version is {package['version']}, not {version}"
contributes = package["contributes"]
language, = contributes["languages"]
grammar, = contributes["grammars"]
assert language["id"] == grammar["language"]
assert load(grammar["path"])["scopeName"] == grammar["scopeName"]
re.compile(load(language["configuration"])["wordPattern"])

# With and without "--format gcc": people run either in a task.
matcher, = contributes["problemMatchers"]
pattern = matcher["pattern"]
os.makedirs(folder, exist_ok=True)
with open(os.path.join(folder, "problems.rux"), "w", encoding="utf-8") as file:
    file.write("[SYSTEM]\nTYPE = RACK\nMODEL = M\nFLAG = 0, 1\nRUXLOOP = 1\n")
wanted = [("problems.rux", "2", "error", "undefined-word"),
          ("problems.rux", "4", "warning", "surplus-values")]
for options in [], ["--format", "gcc"]:
    run = subprocess.run([rux, "check", *options, "problems.rux"], cwd=folder, text=True,
                         capture_output=True, check=False)
    matches = [re.match(pattern["regexp"], line) for line in (run.stdout + run.stderr).splitlines()]
    got = [tuple(match[pattern[part]] for part in ("file", "line", "severity", "code"))
           for match in matches if match and match[pattern["severity"]] != "note"]
    assert sorted(got) == wanted, (options, got, run.stdout, run.stderr)
    assert all(match[pattern["column"]] for match in matches if match and match[pattern["code"]])
