"""A section of a meta file."""

from typing import TYPE_CHECKING, Dict, Iterator, Mapping, Optional, Tuple, Type, Union

from ruxmeta._entries import Entry
from ruxmeta._keyed import KeyedEntries
from ruxmeta._language import CLASS_Property, ENTRIES, PLAIN_VALUE, TABLE_CELLS, CLASS_TableData
from ruxmeta._lookup import COMPILED_ENTRIES
from ruxmeta._meta_tables import CLASS_MASK
from ruxmeta._rows import Kind
from ruxmeta._values import value_of

if TYPE_CHECKING:
    from ruxmeta._machine import Machine

_LIMITS = {row.compiled: row.keyword for row in ENTRIES if row.is_limit}


class Section(KeyedEntries[Entry]):
    """The entries of a section by key; of several with the same key, the first."""

    def __init__(self, machine: "Machine", kind: Kind, ordinal: int, begin: int) -> None:
        self.machine = machine
        self.kind = kind.keyword
        self.identifier = kind.compiled  # as it is in the file
        self.ordinal = ordinal  # among the sections of its kind
        self._begin = begin

    @property
    def entries(self) -> Tuple[Entry, ...]:
        """All entries in the order of the file."""
        return tuple(self._listed())

    @property
    def name(self) -> Optional[str]:
        """Its NAME; None in sections without one."""
        value = self._first_value(COMPILED_ENTRIES["NAME"])
        return value if isinstance(value, str) else None

    @property
    def id(self) -> Optional[int]:
        """Its ID; None in sections without one."""
        value = self._first_value(COMPILED_ENTRIES["ID"])
        return value if isinstance(value, int) else None

    @property
    def properties(self) -> Mapping[str, str]:
        """The texts of its P_ entries, or of all entries of a PROPERTY section, by name."""
        return {
            entry.name: str(entry.value)
            for entry in self._listed()
            if entry.identifier & CLASS_MASK == CLASS_Property
        }

    def __repr__(self) -> str:
        return f"<{self.kind} {self.ordinal if self.name is None else self.name}>"

    def _listed(self) -> Iterator[Entry]:
        words = self.machine.file.words
        for at in self.machine.file.entries(self._begin):
            yield Entry(self, words[at], tuple(words[at + 2 : at + 2 + words[at + 1]]))

    def _first_value(self, identifier: int) -> Union[int, str, None]:
        file = self.machine.file
        words = file.words
        for at in file.entries(self._begin):
            if words[at] == identifier:
                return value_of(file.tables, words[at + 2]).value
        return None

    def _target(self, key: str) -> Optional["Section"]:
        """The section that an entry refers to."""
        entry = self.get(key)
        targets = entry.targets if entry is not None else ()
        return targets[0] if targets else None


class NamedSection(Section):
    """A section of a kind whose sections all have a NAME, each another one."""

    @property
    def name(self) -> str:
        return str(self._first_value(COMPILED_ENTRIES["NAME"]))


class NumberedSection(NamedSection):
    """A section of a kind whose sections all have an ID as well."""

    @property
    def id(self) -> int:
        number = self._first_value(COMPILED_ENTRIES["ID"])
        return number if isinstance(number, int) else 0


class Group(NamedSection):
    """Sensors and other groups."""

    @property
    def group(self) -> Optional["Group"]:
        """The group that it is in; None at the root."""
        group = self._target("PARENT")
        return group if isinstance(group, Group) else None

    @property
    def groups(self) -> Tuple["Group", ...]:
        """The groups that are in it."""
        members = self.machine.members_of(self)
        return tuple(each for each in members if isinstance(each, Group))

    @property
    def sensors(self) -> Tuple["Sensor", ...]:
        """The sensors that are in it."""
        members = self.machine.members_of(self)
        return tuple(each for each in members if isinstance(each, Sensor))


class Sensor(NumberedSection):
    """What a machine measures."""

    @property
    def group(self) -> Optional[Group]:
        """The group that it is in."""
        group = self._target("PARENT")
        return group if isinstance(group, Group) else None

    @property
    def groups(self) -> Tuple[Group, ...]:
        """The groups that it is in, from the outermost one."""
        path = []
        group = self.group
        while group is not None:
            path.append(group)
            group = group.group
        return tuple(reversed(path))

    @property
    def limits(self) -> Mapping[str, int]:
        """The THRESHOLD_ entries that it has, as they are stored: without a sign."""
        file = self.machine.file
        words, number = file.words, file.tables.number
        return {
            _LIMITS[words[at]]: number(words[at + 2])
            for at in file.entries(self._begin)
            if words[at] in _LIMITS
        }

    @property
    def value(self) -> Entry:
        """How it is read."""
        return self[PLAIN_VALUE]

    @property
    def lists(self) -> Tuple["SensorList", ...]:
        """The PELMGROUPs that list it."""
        return self.machine.lists_with(self.id)


class SensorList(NumberedSection):
    """A PELMGROUP: sensors that hosts take together."""

    @property
    def sensors(self) -> Tuple[Sensor, ...]:
        return tuple(each for each in self["SENSORS"].targets if isinstance(each, Sensor))

    @property
    def parent(self) -> Optional["SensorList"]:
        """The list that it is part of."""
        parent = self._target("PID")
        return parent if isinstance(parent, SensorList) else None


class Table(NamedSection):
    """A table of bytes."""

    @property
    def cells(self) -> bytes:
        """All 256 cells."""
        cells = self.machine.file.tables.by_class[CLASS_TableData].cells
        return cells[self.ordinal * TABLE_CELLS : (self.ordinal + 1) * TABLE_CELLS]


CLASS_OF: Dict[str, Type[Section]] = {
    "GROUP": Group,
    "SENSOR": Sensor,
    "DEVICE": NumberedSection,
    "ACTION": NamedSection,
    "PELMGROUP": SensorList,
    "TABLE": Table,
}
