"""What rux verify refuses is refused for the same reason, and all else is read."""

import pathlib
import random
import struct
import tempfile
import time
import unittest

import ruxmeta
from tool import SOURCE, Machines, run_json

NAMES = """[MORVRUX]
VERSION = 1
[PROPERTY]
MAKER = us
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
[DEVICE]
NAME = FAN
ID = 11
INITFLAG = 22
CONTROLMASK = 0
P_SLOT1 = left
P_SLOT2 = right
"""

# Sensors of the same size, whose values refer to something or have numbers.
VALUES = """[DEFINE]
VT_CONST = 1
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
[GLOBAL]
G_CPU = VT_CONST, 40
[PELMGROUP]
NAME = ALL
ID = 1
PID = 0
SENSORS = 1, 2, 3
""" + "".join(
    f"""[SENSOR]
PARENT = BOARD
NAME = S{number}
ID = {number}
TYPE = 1
INITFLAG = 0
CONTROLMASK = 0
VALUE_INIT = VT_CONST, {first}
VALUE = VT_CONST, {second}
"""
    for number, first, second in ((1, "G_CPU", 11), (2, 12, "G_CPU"), (3, 13, "G_CPU"))
)

EXTREMES = (0, 1, 0x7FFFFFFF, 0xFFFFFFFF, 0x00FFFFFF)


def cut(data):
    for size in range(len(data)):
        yield data[:size]


def with_other_bytes(data):
    for offset in range(len(data)):
        change = (0x01, 0x90)[offset % 2]
        yield data[:offset] + bytes([data[offset] ^ change]) + data[offset + 1 :]


def with_extreme_words(data):
    """Two of them at each place."""
    for number, offset in enumerate(range(0, len(data) - 3, 4)):
        for word in (EXTREMES[number % 5], EXTREMES[(number + 2) % 5]):
            yield data[:offset] + struct.pack("<I", word) + data[offset + 4 :]


def with_indices_out_of_tables(data):
    """In place of each index of a number or a text: the one after the last, and that of a class below."""
    begin, end = 256, struct.unpack_from("<I", data, 128)[0]
    words = struct.unpack_from(f"<{(end - begin) // 4}I", data, begin)
    for base in (0x11000000, 0x12000000):
        places = [place for place, word in enumerate(words) if word & 0xFF000000 == base]
        after_last = max(words[place] for place in places) + 1
        for number, place in enumerate(places):
            word = (after_last, base - 1)[number % 2]
            at = begin + 4 * place
            yield data[:at] + struct.pack("<I", word) + data[at + 4 :]


def with_tables_moved_up(data):
    """The first one begins at each place among the sections."""
    for offset in range(272, struct.unpack_from("<I", data, 128)[0], 16):
        yield data[:128] + struct.pack("<I", offset) + data[132:]


def with_other_names(data):
    """Entries that take the name or the place of another one, or have a name that none may have."""
    yield data.replace(b"P_SLOT2", b"P_SLOT1")
    yield data.replace(b"MAKER", b"1AKER")
    parent, name = (record_of(data, key) for key in (b"PARENT", b"NAME"))
    yield data.replace(parent + name, name + parent)


def record_of(data, name):
    """The first entry with that name and one text, in a debug meta file."""
    begin = data.index(struct.pack("<I", len(name)) + name) - 24
    return data[begin : begin + 4 + struct.unpack_from("<I", data, begin)[0]]


def with_random_damage(data, count, source):
    for _ in range(count):
        damaged = bytearray(data)
        for _ in range(source.choice((1, 1, 1, 2, 3, 8))):
            damage(damaged, source)
        yield bytes(damaged)


def damage(data, source):
    at = source.randrange(16, len(data) - 8)
    kind = source.randrange(6)
    if kind == 0:
        data[at] ^= 1 << source.randrange(8)
    elif kind == 1:  # the word of another place
        at, other = at & ~3, source.randrange(len(data) - 8) & ~3
        data[at : at + 4] = data[other : other + 4]
    elif kind == 2:  # a word that is a little off, or of another class
        at &= ~3
        word = struct.unpack_from("<I", data, at)[0]
        word += source.choice((-1, 1, 2, 256, 0x01000000))
        struct.pack_into("<I", data, at, word & 0xFFFFFFFF)
    elif kind == 3:  # the bytes of another place
        other, size = source.randrange(16, len(data) - 8), source.randrange(1, 40)
        data[at : at + size] = data[other : other + size]
    elif kind == 4:
        del data[at : at + source.choice((1, 4, 8, 16))]
    else:
        data[at:at] = data[at : at + source.choice((1, 4, 8, 16))]


def fault_of(load, data):
    """The fault that the package reports; None when it takes the bytes."""
    try:
        machine = load(data)
    except ruxmeta.DamagedFile as fault:
        return {name: getattr(fault, name) for name in ("offset", "record", "field", "reason")}
    look_at(machine)
    return None


def look_at(machine):
    """Nothing that was verified fails when it is read."""
    for section in machine.sections:
        repr(section)
        for entry in section.entries:
            repr(entry)
            repr(entry.parts)
            if isinstance(entry, ruxmeta.Entry):
                entry.targets, entry.name
                for selector in (ruxmeta.Selector.TYPE, ruxmeta.Selector.OPERANDS + 1):
                    entry.select(selector)
    for sensor in machine.sensors.all:
        if isinstance(sensor, ruxmeta.Sensor):
            sensor.limits, sensor.groups, sensor.lists, sensor.value, sensor.properties


class Damage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.machines = Machines()
        cls.addClassCleanup(cls.machines.cleanup)
        meta, debug_meta = cls.machines.compile(SOURCE / "tests/tool/boards/bench.rux")
        cls.meta = meta.read_bytes()
        cls.debug_meta = debug_meta.read_bytes()

    def verified(self, files):
        """What rux verify reports about each of the bytes."""
        with tempfile.TemporaryDirectory() as folder:
            paths = [pathlib.Path(folder, str(number)) for number in range(len(files))]
            for path, data in zip(paths, files):
                path.write_bytes(data)
            return run_json("verify", "--json", *paths, codes=(0, 3))["files"]

    def assert_same_faults(self, load, files):
        files = list(files)
        counts = {True: 0, False: 0}
        for begin in range(0, len(files), 500):
            batch = files[begin : begin + 500]
            for data, report in zip(batch, self.verified(batch)):
                expected = None if report["valid"] else report["faults"][0]
                self.assertEqual(fault_of(load, data), expected)
                counts[report["valid"]] += 1
        return counts

    def test_meta_files_that_are_cut(self):
        counts = self.assert_same_faults(ruxmeta.load, cut(self.meta))
        self.assertEqual(counts[True], 0)

    def test_meta_files_with_another_byte(self):
        counts = self.assert_same_faults(ruxmeta.load, with_other_bytes(self.meta))
        self.assertGreater(min(counts.values()), 100)

    def test_meta_files_with_an_extreme_word(self):
        counts = self.assert_same_faults(ruxmeta.load, with_extreme_words(self.meta))
        self.assertGreater(min(counts.values()), 100)

    def test_meta_files_with_random_damage(self):
        self.assert_same_faults(
            ruxmeta.load, with_random_damage(self.meta, 400, random.Random(1))
        )

    def test_machines_whose_sensors_are_alike(self):
        script = self.machines.folder / "values.rux"
        script.write_text(VALUES)
        for paths in (self.machines.compile(script), *self.machines.generated(10)):
            data = paths[0].read_bytes()
            for damaged in (with_indices_out_of_tables, with_tables_moved_up):
                counts = self.assert_same_faults(ruxmeta.load, damaged(data))
                self.assertGreater(counts[False], 10)

    def test_debug_meta_files_that_are_cut(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, cut(self.debug_meta))
        self.assertEqual(counts[True], 0)

    def test_debug_meta_files_with_another_byte(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, with_other_bytes(self.debug_meta))
        self.assertGreater(min(counts.values()), 100)

    def test_debug_meta_files_with_an_extreme_word(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, with_extreme_words(self.debug_meta))
        self.assertGreater(min(counts.values()), 100)

    def test_debug_meta_files_with_other_names(self):
        script = self.machines.folder / "names.rux"
        script.write_text(NAMES)
        data = self.machines.compile(script)[1].read_bytes()
        counts = self.assert_same_faults(ruxmeta.load_debug, [data, *with_other_names(data)])
        self.assertEqual(counts, {True: 1, False: 3})

    def test_debug_meta_files_with_random_damage(self):
        self.assert_same_faults(
            ruxmeta.load_debug, with_random_damage(self.debug_meta, 400, random.Random(2))
        )

    def test_random_machines_with_random_damage(self):
        source = random.Random(3)
        files = {ruxmeta.load: [], ruxmeta.load_debug: []}
        for paths in self.machines.random(40):
            for path, load in zip(paths or (), files):
                files[load] += with_random_damage(path.read_bytes(), 20, source)
        for load, damaged in files.items():
            counts = self.assert_same_faults(load, damaged)
            self.assertGreater(min(counts.values()), 30)

    def test_many_faults_cost_as_much_as_the_bytes(self):
        header = self.debug_meta[:128]

        def words(count):
            return header + struct.pack("<I", count) + bytes(8 * count + 4)

        def sections(count):
            """No section has an entry, and all but one are too many."""
            size = (4 + 8 * count) // 16 * 16 + 16
            section = struct.pack("<2I", 0x01000001, 0)
            content = (struct.pack("<I", count) + section * count).ljust(size, b"\0")
            offsets = struct.unpack_from("<10I", self.meta, 128)
            moved = [offset + 256 + size - offsets[0] for offset in offsets]
            directory = struct.pack("<10I", *moved).ljust(128, b"\0")
            return self.meta[:128] + directory + content + self.meta[offsets[0] :]

        for load, make in ((ruxmeta.load_debug, words), (ruxmeta.load, sections)):
            self.assertIsNotNone(fault_of(load, make(3)))
            few, many = (self.least_time(load, make(count)) for count in (20_000, 80_000))
            self.assertLess(many, 12 * few)

    def least_time(self, load, data):
        times = []
        for _ in range(3):
            begin = time.process_time()
            fault_of(load, data)
            times.append(time.process_time() - begin)
        return min(times)

    def test_bytes_of_nothing(self):
        source = random.Random(2)
        for size in (0, 1, 15, 16, 17, 256, 4096):
            for load in (ruxmeta.load, ruxmeta.load_debug):
                with self.assertRaises(ruxmeta.UnknownFormat):
                    load(bytes(source.randrange(256) for _ in range(size)))


if __name__ == "__main__":
    unittest.main()
