#!/usr/bin/env python3
"""A report of losses has every entry of the machine once, in every format, and the same result comes twice.

    accounts.py PROGRAM EXAMPLES

ruxmeta counts the entries.
"""
import json
import sys
import tempfile

import ruxmeta
from machines import Folder, script

WITHOUT_ENTRIES = ("prometheus-rules", "prometheus-tests")


def expect_account(folder, form, machine, model):
    report = folder.path / "losses.json"
    options = ("--losses", str(report), "--losses-format", "json")
    first = folder.export(form, machine, "first", *options).read_bytes()
    assert folder.export(form, machine, "second").read_bytes() == first, form
    counts = json.loads(report.read_text())["counts"]
    entries = 0 if form in WITHOUT_ENTRIES else sum(len(section.entries) for section in model.sections)
    assert counts["items"] == entries, (form, counts, entries)
    assert counts["used"] + counts["changed"] + counts["dropped"] == entries, (form, counts)
    assert entries == 0 or counts["used"] > 0, form
    return counts["lost"]


def main(program, examples):
    forms = ["c", "rust", "go", "python", "csv", "json", "prometheus", "ipmi-sdr", *WITHOUT_ENTRIES]
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        for source in (f"{examples}/server/server.rux", script()):
            machine = folder.compile(source)
            model = ruxmeta.open(str(machine))
            lost = {form: expect_account(folder, form, machine, model) for form in forms}
        assert lost["json"] == 0 and lost["prometheus-rules"] == 0 and lost["c"] > lost["csv"] > 0, lost
    print(f"{len(forms)} formats")


if __name__ == "__main__":
    main(*sys.argv[1:])
