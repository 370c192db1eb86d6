"""What rux verify refuses is refused for the same reason, and all else is read."""

import random
import struct
import time
import unittest

import ruxmeta
from tool import SOURCE, Machines, run_json

EXTREMES = (0, 1, 0x7FFFFFFF, 0xFFFFFFFF, 0x00FFFFFF)


def cut(data):
    for size in range(len(data)):
        yield data[:size]


def with_other_bytes(data):
    for offset in range(len(data)):
        for change in (0x01, 0x90):
            yield data[:offset] + bytes([data[offset] ^ change]) + data[offset + 1 :]


def with_extreme_words(data):
    for offset in range(0, len(data) - 3, 4):
        for word in EXTREMES:
            yield data[:offset] + struct.pack("<I", word) + data[offset + 4 :]


def with_random_damage(data):
    source = random.Random(1)
    for _ in range(3000):
        damaged = bytearray(data)
        for _ in range(source.randint(2, 12)):
            at = source.randrange(16, len(data) - 64) & ~3
            if source.random() < 0.5:
                damaged[at + source.randrange(4)] = source.choice((0, 1, 2, 3, 5, 0x11, 0x1E, 0xFF))
            else:
                begin = source.randrange(len(data) - 64) & ~3
                size = 4 * source.randint(1, 16)
                damaged[at : at + size] = data[begin : begin + size]
        yield bytes(damaged)


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
        folder = self.machines.folder / "damaged"
        folder.mkdir(exist_ok=True)
        paths = []
        for number, data in enumerate(files):
            paths.append(folder / str(number))
            paths[-1].write_bytes(data)
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
        self.assert_same_faults(ruxmeta.load, with_random_damage(self.meta))

    def test_debug_meta_files_that_are_cut(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, cut(self.debug_meta))
        self.assertEqual(counts[True], 0)

    def test_debug_meta_files_with_another_byte(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, with_other_bytes(self.debug_meta))
        self.assertGreater(min(counts.values()), 100)

    def test_debug_meta_files_with_an_extreme_word(self):
        counts = self.assert_same_faults(ruxmeta.load_debug, with_extreme_words(self.debug_meta))
        self.assertGreater(min(counts.values()), 100)

    def test_debug_meta_files_with_random_damage(self):
        self.assert_same_faults(ruxmeta.load_debug, with_random_damage(self.debug_meta))

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
