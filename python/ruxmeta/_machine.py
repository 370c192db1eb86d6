"""A machine: what a meta file says."""

from typing import Dict, List, Mapping, Optional, Tuple, cast

from ruxmeta._entries import Entry
from ruxmeta._lookup import COMPILED_KINDS
from ruxmeta._meta import MetaFile
from ruxmeta._rows import Kind
from ruxmeta._sections import (
    CLASS_OF,
    Group,
    NamedSection,
    NumberedSection,
    Section,
    Sensor,
    SensorList,
    Table,
)
from ruxmeta._views import Sections

_KINDS: Dict[str, Kind] = {kind.keyword: kind for kind in COMPILED_KINDS.values()}


class Machine:
    """All sections of a meta file. Nothing changes it, and any number of threads may read it."""

    # What is built at the first query is stored once it is complete; of several threads, one stores
    # the sections that all get.

    def __init__(self, file: MetaFile) -> None:
        self.file = file
        self._of_kind: Dict[str, Tuple[Section, ...]] = {}
        self._by_name: Dict[str, Sections[Section]] = {}
        self._keys: Dict[str, Mapping[str, Entry]] = {}
        self._lists: Optional[Dict[int, List[SensorList]]] = None
        self._members: Optional[Dict[Section, List[Section]]] = None

    @property
    def created(self) -> int:
        """When the file was written: seconds since 1970-01-01 UTC, the low 32 bits."""
        return self.file.created

    @property
    def sections(self) -> Tuple[Section, ...]:
        """All sections in the order of the file."""
        kinds = [COMPILED_KINDS[identifier].keyword for identifier in self.file.sections]
        return tuple(section for kind in kinds for section in self.of_kind(kind))

    @property
    def sensors(self) -> Sections[Sensor]:
        return cast(Sections[Sensor], self.by_name("SENSOR"))

    @property
    def devices(self) -> Sections[NumberedSection]:
        return cast(Sections[NumberedSection], self.by_name("DEVICE"))

    @property
    def groups(self) -> Sections[Group]:
        return cast(Sections[Group], self.by_name("GROUP"))

    @property
    def lists(self) -> Sections[SensorList]:
        """The PELMGROUPs."""
        return cast(Sections[SensorList], self.by_name("PELMGROUP"))

    @property
    def actions(self) -> Sections[NamedSection]:
        return cast(Sections[NamedSection], self.by_name("ACTION"))

    @property
    def tables(self) -> Sections[Table]:
        return cast(Sections[Table], self.by_name("TABLE"))

    @property
    def system(self) -> Optional[Section]:
        """The SYSTEM section; None in a machine without one."""
        return next(iter(self.of_kind("SYSTEM")), None)

    @property
    def properties(self) -> Mapping[str, Entry]:
        """The entries of PROPERTY sections."""
        return self.by_key("PROPERTY")

    @property
    def globals(self) -> Mapping[str, Entry]:
        """The entries of GLOBAL sections, by key: "G_LIMIT"."""
        return self.by_key("GLOBAL")

    @property
    def repeaters(self) -> Mapping[str, Entry]:
        """The entries of REPEATER sections."""
        return self.by_key("REPEATER")

    def of_kind(self, keyword: str) -> Tuple[Section, ...]:
        """The sections of a kind, by its keyword: "SENSOR"."""
        if keyword not in self._of_kind:
            kind = _KINDS[keyword]
            make = CLASS_OF.get(keyword, Section)
            begins = self.file.sections.get(kind.compiled, ())
            made = [make(self, kind, ordinal, begin) for ordinal, begin in enumerate(begins)]
            self._of_kind.setdefault(keyword, tuple(made))
        return self._of_kind[keyword]

    def by_name(self, keyword: str) -> Sections[Section]:
        """The same by name."""
        if keyword not in self._by_name:
            self._by_name.setdefault(keyword, Sections(self.of_kind(keyword)))
        return self._by_name[keyword]

    def by_key(self, keyword: str) -> Mapping[str, Entry]:
        """The entries of all sections of a kind."""
        if keyword not in self._keys:
            sections = self.of_kind(keyword)
            self._keys[keyword] = {
                entry.key: entry for section in sections for entry in section.entries
            }
        return self._keys[keyword]

    def lists_with(self, sensor_id: int) -> Tuple[SensorList, ...]:
        """The PELMGROUPs that list the ID of a sensor."""
        if self._lists is None:
            lists: Dict[int, List[SensorList]] = {}
            for each in self.lists.all:
                for number in {value.number for value in each["SENSORS"].values}:
                    if number is not None:
                        lists.setdefault(number, []).append(each)
            self._lists = lists
        return tuple(self._lists.get(sensor_id, ()))

    def members_of(self, group: Group) -> Tuple[Section, ...]:
        """The groups and sensors that are in a group."""
        if self._members is None:
            members: Dict[Section, List[Section]] = {}
            for each in (*self.groups.all, *self.sensors.all):
                if isinstance(each, (Group, Sensor)) and each.group is not None:
                    members.setdefault(each.group, []).append(each)
            self._members = members
        return tuple(self._members.get(group, ()))

    def __repr__(self) -> str:
        return f"<Machine: {len(self.sensors.all)} sensors>"
