"""What programs see of the package: look-ups, errors, odd files."""

import ast
import os
import struct
import tempfile
import threading
import unittest

import ruxmeta
from tool import SOURCE, Machines

NOT_UTF8 = b"""[DEFINE]
T = 1
[MORVRUX]
VERSION = 1
[SYSTEM]
TYPE = 1
MODEL = caf\xe9
FLAG = 0
RUXLOOP = -20
"""


class Interface(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.machines = Machines()
        cls.addClassCleanup(cls.machines.cleanup)
        cls.meta, cls.debug_meta = cls.machines.compile(SOURCE / "examples/server/server.rux")
        cls.machine = ruxmeta.open(cls.meta)
        cls.debug = ruxmeta.open_debug(cls.debug_meta)

    def test_sections_by_name_id_and_ordinal(self):
        sensors = self.machine.sensors
        sensor = sensors["CPU0_TEMP"]
        self.assertIs(sensors.by_id[0x101], sensor)
        self.assertIs(sensors.all[sensor.ordinal], sensor)
        self.assertIn("CPU0_TEMP", sensors)
        self.assertNotIn("CPU9_TEMP", sensors)
        self.assertIsNone(sensors.get("CPU9_TEMP"))
        with self.assertRaises(KeyError):
            sensors["CPU9_TEMP"]
        self.assertEqual(list(sensors), [each.name for each in sensors.values()])
        self.assertEqual(tuple(sensors.values()), self.machine.of_kind("SENSOR"))
        with self.assertRaises(KeyError):
            self.machine.of_kind("DEFINE")

    def test_a_sensor(self):
        sensor = self.machine.sensors["CPU0_TEMP"]
        self.assertEqual(sensor.limits, {"THRESHOLD_FH": 100, "THRESHOLD_WH": 92})
        self.assertEqual(sensor.properties, {"UNIT": "degrees C"})
        self.assertEqual([each.name for each in sensor.groups], ["BOARD", "CPU_COMPLEX", "CPU0"])
        self.assertIn(sensor, sensor.group.sensors)
        self.assertIn(sensor.group, sensor.group.group.groups)
        self.assertEqual([each.name for each in sensor.lists], ["PROCESSOR_0"])
        self.assertIn(sensor, sensor.lists[0].sensors)
        self.assertEqual(sensor.lists[0].parent.name, "MACHINE")
        self.assertEqual(sensor.value.type, 1)
        self.assertEqual([each.value for each in sensor.value.parts["Text"]], ["G_CPU0_TEMP"])
        self.assertEqual(sensor.value.select(ruxmeta.Selector.TEXT).value, "G_CPU0_TEMP")
        self.assertIsNone(sensor.value.select(ruxmeta.Selector.OPERATOR))

    def test_other_sections(self):
        self.assertEqual(self.machine.system["P_SOCKETS"].value, "2")
        self.assertEqual(self.machine.globals["G_CPU0_TEMP"].type, 4)
        self.assertIsNone(self.machine.groups["BOARD"].group)
        self.assertEqual(len(self.machine.tables["FAN_CURVE"].cells), 256)

    def test_sections_are_keys(self):
        self.assertEqual(len(set(self.machine.sections)), len(self.machine.sections))

    def test_lines_of_a_script(self):
        entry = self.debug.sensors["CPU0_TEMP"]["THRESHOLD_FH"]
        lines = (SOURCE / "examples/server" / entry.file).read_text().splitlines()
        self.assertEqual(lines[entry.line - 1].split()[:3], ["THRESHOLD_FH", "=", entry.text])
        self.assertIs(self.debug.sensors.by_id[0x101], self.debug.sensors["CPU0_TEMP"])

    def test_texts_of_any_bytes(self):
        script = self.machines.folder / "bytes.rux"
        script.write_bytes(NOT_UTF8)
        meta, _ = self.machines.compile(script)
        system = ruxmeta.open(meta).system
        self.assertEqual(system["MODEL"].value, "caf\udce9")
        self.assertEqual(ruxmeta.bytes_of(system["MODEL"].value), b"caf\xe9")
        self.assertEqual(system["RUXLOOP"].value, 0xFFFFFFEC)
        self.assertEqual(system["RUXLOOP"].values[0].signed, -20)

    def test_errors_name_the_file_and_the_place(self):
        damaged = self.machines.folder / "damaged.meta"
        damaged.write_bytes(self.meta.read_bytes()[:-1])
        with self.assertRaises(ruxmeta.DamagedFile) as raised:
            ruxmeta.open(damaged)
        self.assertEqual(raised.exception.path, str(damaged))
        self.assertTrue(str(raised.exception).startswith(f"{damaged}: offset 0x"))
        self.assertIsInstance(raised.exception, ruxmeta.Error)

    def test_other_forms_and_versions(self):
        with self.assertRaises(ruxmeta.WrongForm):
            ruxmeta.open(self.debug_meta)
        with self.assertRaises(ruxmeta.WrongForm):
            ruxmeta.open_debug(self.meta)
        data = bytearray(self.meta.read_bytes())
        struct.pack_into("<I", data, 16, 0x02000000)
        with self.assertRaises(ruxmeta.UnknownFormat):
            ruxmeta.load(bytes(data))
        with self.assertRaises(FileNotFoundError):
            ruxmeta.open(self.machines.folder / "none.meta")

    def test_files_of_any_size_are_refused_at_once(self):
        large = self.machines.folder / "large.meta"
        with open(large, "wb") as file:
            file.truncate(1 << 40)
        with self.assertRaises(ruxmeta.TooLarge):
            ruxmeta.open(large)
        large.unlink()

    def test_pipes_are_refused_at_once(self):
        with tempfile.TemporaryDirectory() as folder:
            pipe = os.path.join(folder, "pipe")
            os.mkfifo(pipe)
            for path in (pipe, folder, "/dev/zero"):
                with self.assertRaises(ruxmeta.NotRegular):
                    ruxmeta.open(path)

    def test_threads_may_read_a_machine(self):
        machine = ruxmeta.open(self.meta)
        found = []

        def read():
            found.append([machine.lists["PROCESSOR_0"].sensors, machine.groups["CPU0"].sensors])

        threads = [threading.Thread(target=read) for _ in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(len(found), 8)
        self.assertTrue(all(each == found[0] for each in found))

    def test_python_38_can_read_the_package(self):
        modules = list((SOURCE / "python/ruxmeta").glob("*.py"))
        self.assertGreater(len(modules), 10)
        for module in modules:
            ast.parse(module.read_text(), str(module), feature_version=(3, 8))


if __name__ == "__main__":
    unittest.main()
