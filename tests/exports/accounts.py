#!/usr/bin/env python3
"""A report of losses has every entry of the machine once, in every format, and the same result comes twice.

    accounts.py PROGRAM SOURCE

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
    # These machines do not say what chips their sensors are features of.
    assert counts["used"] > 0 or entries == 0 or form == "lm-sensors", form
    return counts["lost"]


def expect_cells(folder, machine, model):
    tables = json.loads(folder.export("json", machine, "tables").read_text())["tables"]
    cells = {row["NAME"]: bytes(row["cells"]) for table in tables if table["kind"] == "TABLE" for row in table["rows"]}
    assert cells == {name: table.cells for name, table in model.tables.items()}, cells


def main(program, source_folder):
    forms = ["c", "rust", "go", "python", "csv", "json", "prometheus", "ipmi-sdr", "entity-manager", "lm-sensors", *WITHOUT_ENTRIES]
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        for source in (f"{source_folder}/examples/server/server.rux", script()):
            machine = folder.compile(source)
            model = ruxmeta.open(str(machine))
            expect_cells(folder, machine, model)
            lost = {form: expect_account(folder, form, machine, model) for form in forms}
        assert lost["json"] == 0 and lost["prometheus-rules"] == 0 and lost["c"] > lost["csv"] > 0, lost
    print(f"{len(forms)} formats")


if __name__ == "__main__":
    main(*sys.argv[1:])
