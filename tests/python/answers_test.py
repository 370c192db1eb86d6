"""Machines give the answers of rux: of the examples, generated machines and random scripts."""

import unittest

import ruxmeta
from tool import Machines, run_json

LIMITS = ("THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH", "THRESHOLD_FH")


def text_json(name, text):
    """A text as rux writes it: what is not UTF-8 comes as hexadecimal digits, too."""
    data = ruxmeta.bytes_of(text)
    try:
        return {name: data.decode()}
    except UnicodeDecodeError:
        return {name: None, "hex": data.hex().upper()}


def shown(text):
    return ruxmeta.bytes_of(text).decode(errors="replace")


def value_json(entry, value):
    is_text = isinstance(value.value, str) and value.kind != "argument"
    json = text_json("value", value.value) if is_text else {"value": value.value}
    json["class"] = value.kind
    target = entry.target_of(value)
    if target is not None and value.kind == "number":
        json["name"] = shown(target.name)
    return json


def dumped_value(entry, value):
    return dict(value_json(entry, value), word=value.word)


def dumped_entry(entry):
    json = text_json("name", entry.key)
    json["identifier"] = entry.identifier
    json["values"] = [dumped_value(entry, value) for value in entry.values]
    return json


def dumped_section(section):
    return {
        "kind": section.kind,
        "ordinal": section.ordinal,
        "identifier": section.identifier,
        "entries": [dumped_entry(entry) for entry in section.entries],
    }


def got_value(entry, value):
    """Hosts cannot look up the number 0xFFFFFFFF; rux get says so."""
    json = value_json(entry, value)
    return {"class": "unresolved", "value": None} if json["value"] == 0xFFFFFFFF else json


def got_entry(entry):
    json = text_json("name", entry.key)
    if entry.type is None and entry.section.kind != "REPEATER":
        json["values"] = [got_value(entry, value) for value in entry.values]
        return json
    if entry.type is not None:
        json["type"] = entry.type
    json["parts"] = [
        {"name": name, "values": [got_value(entry, value) for value in values]}
        for name, values in entry.parts.items()
    ]
    return json


def debug_value(entry, text):
    json = text_json("value", text)
    target = entry.target_of(text)
    if target is not None:
        json["name"] = shown(target.name)
    return json


def debug_object(item, name):
    json = text_json("name", name)
    for member in ("identifier", "notation", "line"):
        json[member] = getattr(item, member)
    json["file"] = item.file_index
    return json


def debug_entry(entry):
    json = debug_object(entry, entry.key)
    json.update(keyword=entry.keyword, given=entry.given)
    if entry.number is not None:
        json["number"] = entry.number
    elif entry.given:
        json["parts"] = [
            {"name": name, "values": [debug_value(entry, text) for text in texts]}
            for name, texts in entry.parts.items()
        ]
    if entry.type is not None:
        json["type"] = entry.type
    return json


def debug_section(section):
    json = debug_object(section, section.kind)
    json["ordinal"] = section.ordinal
    json["entries"] = [debug_entry(entry) for entry in section.entries]
    return json


def quoted(name):
    """As rux writes a name in a path."""
    return name if name.isidentifier() else f'"{name}"'


def row_of(sensor):
    row = {
        "NAME": sensor.name,
        "ID": sensor.id,
        "TYPE": sensor["TYPE"].value,
        "group": "/".join(quoted(group.name) for group in sensor.groups),
        "lists": [each.name for each in sensor.lists],
        "properties": [f"{name}={text}" for name, text in sensor.properties.items()],
    }
    row.update(sensor.limits)
    return {column: cell for column, cell in row.items() if cell != []}


def without(names, json):
    """The same without members of those names, and without texts that have their bytes as hex."""
    if isinstance(json, list):
        return [without(names, each) for each in json]
    if not isinstance(json, dict):
        return json
    kept = {key: without(names, value) for key, value in json.items() if key not in names}
    if "hex" in kept:
        kept.update({key: None for key in ("name", "value", "path") if key in kept})
    return kept


def difference(found, expected, path=""):
    """The first place where two JSON values differ; None when they are the same."""
    if isinstance(found, dict) and isinstance(expected, dict):
        if found.keys() != expected.keys():
            return f"{path}: {sorted(found)} != {sorted(expected)}"
        places = ((difference(found[key], expected[key], f"{path}/{key}")) for key in found)
        return next((place for place in places if place), None)
    if isinstance(found, list) and isinstance(expected, list) and len(found) == len(expected):
        places = (difference(a, b, f"{path}/{i}") for i, (a, b) in enumerate(zip(found, expected)))
        return next((place for place in places if place), None)
    return None if found == expected else f"{path}: {found!r} != {expected!r}"


class Answers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.machines = Machines()
        cls.addClassCleanup(cls.machines.cleanup)
        # The names of the others are odd ones.
        cls.generated = list(cls.machines.generated(60))
        random = [paths for paths in cls.machines.random(60) if paths is not None]
        cls.compiled = [*cls.machines.of_tree(), *cls.generated, *random]

    def assert_same(self, found, expected, left_out=()):
        found, expected = without((), found), without(left_out, expected)
        self.assertIsNone(difference(found, expected))

    def test_most_random_scripts_compile(self):
        self.assertGreater(len(self.compiled), 50)

    def test_sections_entries_and_values_are_those_of_dump(self):
        for path, _ in self.compiled:
            with self.subTest(path):
                machine = ruxmeta.open(path)
                dump = run_json("dump", "--json", path)
                self.assertEqual(machine.created, dump["created"])
                sections = [dumped_section(section) for section in machine.sections]
                self.assert_same(sections, dump["sections"])

    def test_values_in_parts_are_those_of_get(self):
        for path, _ in self.compiled:
            for section in ruxmeta.open(path).sections[:40]:
                place = f"{section.kind}/@{section.ordinal}"
                with self.subTest(path, place=place):
                    got = run_json("get", "--json", path, place)
                    entries = [got_entry(entry) for entry in section.entries]
                    self.assert_same(entries, got["entries"])
                    cells = list(section.cells) if section.kind == "TABLE" else None
                    self.assertEqual(cells, got.get("cells"))

    def test_debug_sections_are_those_of_dump(self):
        for _, path in self.compiled:
            with self.subTest(path):
                machine = ruxmeta.open_debug(path)
                dump = run_json("dump", "--json", path)
                self.assertEqual(machine.created, dump["created"])
                self.assert_same([text_json("path", file) for file in machine.files], dump["files"])
                words = [
                    {"value": value, **text_json("name", name)}
                    for name, value in machine.words.items()
                ]
                self.assert_same(words, dump["words"])
                expected = [section for kind in dump["kinds"] for section in kind["sections"]]
                sections = [debug_section(section) for section in machine.sections]
                self.assert_same(sections, expected, ["notation_names", "list"])

    def test_sensors_are_those_of_table(self):
        columns = ["NAME", "ID", "TYPE", "group", "lists", "properties", *LIMITS]
        for path, _ in self.generated:
            with self.subTest(path):
                table = run_json("table", path, "--format", "json", "--columns", ",".join(columns))
                rows = [row_of(sensor) for sensor in ruxmeta.open(path).sensors.all]
                self.assert_same(rows, table["rows"])


if __name__ == "__main__":
    unittest.main()
