#!/usr/bin/env python3
"""Holds the product's sources to the table of rooms in docs/architecture.md.

    rooms.py SOURCE_DIR

Every folder of product code is a row of the table, includes only what its row allows, and declares
everything in its own namespace but what is exported; no two rooms use each other, and none holds
more than a third of the product.
Where the keys come from scripts or files, tables by hash are those of one header.
"""
import collections
import pathlib
import re
import sys

NOT_PRODUCT = {"tests", "bench", "fuzz", "examples", "docs", "packaging", "scripts", "cmake"}
SOURCES = {".h", ".cpp", ".def"}
# Where others choose the keys of tables, the hash has a seed.
SEEDED = ("include/", "reader/", "frontend/", "checker/", "backend/", "debugmeta/", "query/",
          "rules/", "index/")
SEEDED_HASH = "include/ruxcomp/model/seeded_hash.h"
INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.MULTILINE)
ROW = re.compile(r"^\| `([a-z_/]+)/` \|([^|]*)\|[^|]*\|([^|]*)\|$", re.MULTILINE)
# Announcing what another room declares is no declaration.
# A line that is code of a language with names: not blank, no comment, no directive.
DECLARATION = re.compile(r"^(?!//|#)\S", re.MULTILINE)
NAMESPACE = re.compile(r"^namespace (rux\S*) \{\n(?!(?:(?:class|struct) \w+;\n)+\})", re.MULTILINE)
# The headers that programs include declare records and functions without a namespace.
INTERFACES = ("include", "include/ruxcomp", "include/ruxmeta")
EXPORT_MAPS = ("include/libruxcomp.map", "reader/libruxrsparser.map", "c_interface/libruxmeta.map")


def read_rooms(page):
    """The rows of the table: room -> (namespace, rooms it may use)."""
    rooms = {}
    for path, namespace, uses in ROW.findall(page):
        rooms[path] = (namespace.strip(" `"), set(re.findall(r"`([a-z_/]+)/`", uses)))
    return rooms


def room_of(path, rooms):
    """The most specific room that holds a path relative to the source folder."""
    holders = [room for room in rooms if path.startswith(room + "/")]
    return max(holders, key=len, default=None)


def product_sources(root):
    for path in sorted(root.rglob("*")):
        relative = path.relative_to(root)
        top = relative.parts[0]
        if path.suffix not in SOURCES or top in NOT_PRODUCT or top.startswith((".", "build")):
            continue
        yield relative.as_posix(), path.read_text()


def included_path(root, name):
    """An include relative to the source folder; public headers are found below include/."""
    return "include/" + name if (root / "include" / name).exists() else name


def exported_names(root):
    """What starts a line that defines an exported name, or the tool."""
    maps = "".join((root / path).read_text() for path in EXPORT_MAPS)
    names = re.findall(r"^ +(\w+);", maps, re.MULTILINE)
    return re.compile(r"^(?!//)\S.*\b(?:main|" + "|".join(names) + r")\b", re.MULTILINE)


def check_namespaces(name, text, namespace, exported, problems):
    declared = NAMESPACE.findall(text)
    for other in declared:
        if not (other + "::").startswith(namespace + "::"):
            problems.append(f"{name} declares names in {other}, not in {namespace}")
    is_list = name.endswith(".def") or not DECLARATION.search(text)
    is_interface = pathlib.PurePath(name).parent.as_posix() in INTERFACES
    if not declared and not is_list and not is_interface and not exported.search(text):
        problems.append(f"{name} declares names outside of {namespace}")


def check_source(root, rooms, name, text, found, problems):
    room = room_of(name, rooms)
    if room is None:
        problems.append(f"{name} is in no room of the table")
        return
    uses = rooms[room][1]
    for include in INCLUDE.findall(text):
        other = room_of(included_path(root, include), rooms)
        if other is None:
            problems.append(f"{name} includes {include}, which is in no room")
        elif other != room:
            found[room].add(other)
            if other not in uses:
                problems.append(f"{name} includes {include}: {room}/ may not use {other}/")


def check_hashes(name, text, problems):
    if name.startswith(SEEDED) and name != SEEDED_HASH and "std::unordered_" in text:
        problems.append(f"{name} has a table by hash without a seed: take those of {SEEDED_HASH}")


def check_order(rooms, problems):
    """No cycles among what the table allows."""
    done, path = set(), []

    def visit(room):
        if room in path:
            problems.append("rooms use each other: " + " -> ".join(path + [room]))
        elif room not in done:
            path.append(room)
            for other in sorted(rooms.get(room, ("", set()))[1]):
                if other not in rooms:
                    problems.append(f"{room}/ uses {other}/, which is no room")
                else:
                    visit(other)
            path.pop()
            done.add(room)

    for room in rooms:
        visit(room)


def main():
    root = pathlib.Path(sys.argv[1])
    rooms = read_rooms((root / "docs/architecture.md").read_text())
    problems, found, lines = [], collections.defaultdict(set), collections.Counter()
    if len(rooms) < 10:
        problems.append("docs/architecture.md has no table of rooms")
    check_order(rooms, problems)
    exported = exported_names(root)
    for name, text in product_sources(root):
        check_source(root, rooms, name, text, found, problems)
        if room_of(name, rooms):
            check_namespaces(name, text, rooms[room_of(name, rooms)][0], exported, problems)
        check_hashes(name, text, problems)
        lines[room_of(name, rooms)] += text.count("\n")
    for room, (_, uses) in rooms.items():
        if lines[room] == 0:
            problems.append(f"{room}/ of the table holds no sources")
        elif lines[room] * 3 > sum(lines.values()):
            problems.append(f"{room}/ holds more than a third of the product")
        # The tool is on top of everything; what other rooms do not use they do not list.
        for unused in sorted(uses - found[room]) if room != "tool" else []:
            problems.append(f"{room}/ lists {unused}/ and does not use it")
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
