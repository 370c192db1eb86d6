#!/usr/bin/env python3
"""Compilers take the constants of machines, whatever these call their sections, and all have the same values.

    constants.py PROGRAM SOURCE

The machine with odd names is made here; what its constants must be, ruxmeta reads of the meta file.
"""
import os
import shutil
import subprocess
import sys
import tempfile

import ruxmeta
from machines import ODD_NAMES, Folder, script

MAINS = {
    "c": '#include <stdio.h>\n#include "machine.h"\n'
         '#define TEXT(name) printf(#name " "); for (const char *c = name; *c; ++c) printf("%02x", *c & 0xFF); puts("")\n'
         '#define NUMBER(name) printf(#name " %u\\n", name)\nint main(void) {{\n{}\n}}\n',
    "rust": 'mod machine;\nuse machine::*;\n'
            'fn text(name: &str, value: &[u8]) {{ print!("{{}} ", name); for b in value {{ print!("{{:02x}}", b) }} println!() }}\n'
            'fn number(name: &str, value: u32) {{ println!("{{}} {{}}", name, value) }}\nfn main() {{\n{}\n}}\n',
    "go": 'package main\nimport "fmt"\n'
          'func text(name string, value string) {{ fmt.Printf("%s %x\\n", name, value) }}\n'
          'func number(name string, value uint32) {{ fmt.Printf("%s %d\\n", name, value) }}\nfunc main() {{\n{}\n}}\n',
}
CALLS = {"c": ("TEXT({0});", "NUMBER({0});"),
         "rust": ('text("{0}", {0});', 'number("{0}", {0});'),
         "go": ('text("{0}", {0})', 'number("{0}", {0})')}


def python_constants(file):
    names = {}
    exec(compile(file.read_text(encoding="ascii"), str(file), "exec"), names)  # pylint: disable=exec-used
    return {name: value for name, value in names.items() if not name.startswith("__")}


def as_bytes(value):
    return value.encode("utf-8", "surrogateescape") if isinstance(value, str) else value


def printed(language, folder, machine, constants):
    """The constants, by a program that a compiler makes."""
    body = "\n".join(CALLS[language][isinstance(value, int)].format(name) for name, value in constants.items())
    main = MAINS[language].format(body)
    env = dict(os.environ, GO111MODULE="off", GOFLAGS="", GOTOOLCHAIN="local", GOPATH=str(folder.path / "go"))
    if language == "c":
        folder.export("c", machine, "machine.h")
        commands = [["cc", "-std=c99", "-Wall", "-Wextra", "-Werror", "-pedantic", "main.c", "-o", "main_c"]]
    elif language == "rust":
        folder.export("rust", machine, "machine.rs")
        commands = [["rustc", "-D", "warnings", "main.rust", "-o", "main_rust"]]
    else:
        exported = folder.export("go", machine, "machine.go")
        shown = subprocess.run(["gofmt", "-l", str(exported)], capture_output=True, check=True)
        assert not shown.stdout, shown.stdout
        exported.write_text(exported.read_text().replace("package machine", "package main"))
        commands = [["go", "build", "-o", "main_go", "main.go", "machine.go"]]
    (folder.path / f"main.{language}").write_text(main)
    for command in commands + [[f"./main_{language}"]]:
        done = subprocess.run(command, cwd=folder.path, env=env, stdout=subprocess.PIPE, check=True)
    lines = [line.split(" ") for line in done.stdout.decode().splitlines()]
    return {name: int(text) if isinstance(constants[name], int) else bytes.fromhex(text) for name, text in lines}


def expect_sections(constants, model):
    """Each NAME once, with its ID; groups with the ordinals that PARENT entries carry."""
    for kind, sections in (("SENSOR", model.sensors), ("DEVICE", model.devices), ("PELMGROUP", model.lists)):
        found = {value: constants[name[:-5] + "_ID"] for name, value in constants.items()
                 if name.startswith(kind + "_") and name.endswith("_NAME")}
        assert found == {name: section.id for name, section in sections.items()}, found
    ordinals = {value: constants[name[:-5] + "_ORDINAL"] for name, value in constants.items()
                if name.startswith("GROUP_") and name.endswith("_NAME")}
    for sensor in model.sensors.values():
        assert ordinals[sensor.group.name] == sensor["PARENT"].values[0].word & 0xFFFFFF
    for section in model.sections:
        for entry in section.entries:
            assert entry.identifier in constants.values(), entry.key


def main(program, source_folder):
    languages = [language for language, tool in (("c", "cc"), ("rust", "rustc"), ("go", "go")) if shutil.which(tool)]
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(program, path)
        for source in (f"{source_folder}/examples/server/server.rux", script()):
            machine = folder.compile(source)
            constants = python_constants(folder.export("python", machine, "machine.py"))
            expect_sections(constants, ruxmeta.open(str(machine)))
        assert constants["SENSOR_ODD_NAME_NAME"] == ODD_NAMES[0]
        assert constants["SENSOR_ODD_NAME_2_NAME"] == ODD_NAMES[1]
        expected = {name: as_bytes(value) for name, value in constants.items()}
        for language in languages:
            assert printed(language, folder, machine, constants) == expected, language
    print(f"{len(expected)} constants in Python, {', '.join(languages)}")


if __name__ == "__main__":
    main(*sys.argv[1:])
