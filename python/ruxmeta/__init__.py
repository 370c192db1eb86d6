"""Reads the meta files and debug meta files of hardware-description scripts.

    import ruxmeta

    machine = ruxmeta.open("server.meta")
    for sensor in machine.sensors.values():
        print(sensor.name, sensor.limits)

Every file is verified when it is opened. All errors are an Error; docs/python.md has recipes.
"""

from ruxmeta._debug_machine import DebugEntry, DebugMachine, DebugSection
from ruxmeta._entries import Entry
from ruxmeta._errors import DamagedFile, Error, NotRegular, TooLarge, UnknownFormat, WrongForm
from ruxmeta._language import Selector
from ruxmeta._load import load, load_debug, open, open_debug
from ruxmeta._machine import Machine
from ruxmeta._sections import Group, NamedSection, NumberedSection
from ruxmeta._sections import Section, Sensor, SensorList, Table
from ruxmeta._values import Value
from ruxmeta._views import Sections, bytes_of

__all__ = [
    "DamagedFile",
    "DebugEntry",
    "DebugMachine",
    "DebugSection",
    "Entry",
    "Error",
    "Group",
    "Machine",
    "NamedSection",
    "NotRegular",
    "NumberedSection",
    "Section",
    "Sections",
    "Selector",
    "Sensor",
    "SensorList",
    "Table",
    "TooLarge",
    "UnknownFormat",
    "Value",
    "WrongForm",
    "bytes_of",
    "load",
    "load_debug",
    "open",
    "open_debug",
]
