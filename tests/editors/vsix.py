"""Looks at what scripts/vsix built, and activates it: the client shows what rux lsp finds.

  vsix.py VSIX RUX WORK

The settings are those of docs/editors.md.
"""
import os
import posixpath
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree
import zipfile

vsix, rux, work = sys.argv[1:]
TYPES = "{http://schemas.openxmlformats.org/package/2006/content-types}"
SCHEMA = "{http://schemas.microsoft.com/developer/vsx-schema/2011}"

if not os.path.exists(vsix) or not shutil.which("node"):
    print("skipped: needs node, and the extension that scripts/vsix builds")
    sys.exit()
shutil.rmtree(work, ignore_errors=True)

with zipfile.ZipFile(vsix) as archive:
    assert archive.testzip() is None
    names = archive.namelist()
    assert len(set(names)) == len(names)
    types = xml.etree.ElementTree.fromstring(archive.read("[Content_Types].xml"))
    typed = {part.get("PartName") for part in types.iter(TYPES + "Override")}
    assert typed == {"/" + name for name in names if name != "[Content_Types].xml"}
    manifest = xml.etree.ElementTree.fromstring(archive.read("extension.vsixmanifest"))
    asset, = manifest.iter(SCHEMA + "Asset")
    assert asset.get("Path") in names
    archive.extractall(work)

# It has the extension's own files as they are now.
extension = os.path.join(work, posixpath.dirname(asset.get("Path")))
here = os.path.dirname(os.path.abspath(__file__))
own = os.path.join(here, "../../packaging/editors/vscode")
for folder, _, files in os.walk(own):
    for name in files:
        path = os.path.join(folder, name)
        with open(path, "rb") as wanted, open(os.path.join(extension, os.path.relpath(path, own)), "rb") as got:
            assert wanted.read() == got.read(), f"scripts/vsix was run before {path} changed"

script = os.path.join(work, "board.rux")
with open(script, "w", encoding="utf-8") as file:
    file.write("[SYSTEM]\nTYPE = RACK\nMODEL = M\nFLAG = 0, 1\nRUXLOOP = 1\n")
with open(os.path.join(here, "../../docs/editors.md"), encoding="utf-8") as file:
    settings = re.search(r"^```json save=settings.json\n(.*?)^```", file.read(), re.MULTILINE | re.DOTALL)[1]
with open(os.path.join(work, "settings.json"), "w", encoding="utf-8") as file:
    file.write(settings)


def activate(folder):
    env = {**os.environ, "PATH": os.path.dirname(rux) + ":" + os.environ["PATH"]}
    run = subprocess.run(["node", os.path.join(here, "activate.js"), folder, extension, "settings.json", script],
                         cwd=work, env=env, text=True, capture_output=True, check=False)
    assert run.returncode == 0, run.stdout + run.stderr
    return run.stdout


# The settings make errors of warnings.
wanted = """\
1:7-1:11 error [SYSTEM] TYPE: RACK is neither a number nor a defined word
3:10-3:11 error [SYSTEM] FLAG: takes one value; the rest, after the comma, is dropped
"""
shown = activate(extension)
assert shown == wanted, shown
# What is not built has no client, and goes without.
shown = activate(own)
assert shown == "", shown
