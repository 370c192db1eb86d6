"""The names in a meta file that sections have and that other sections refer to."""

from typing import Dict, List, NamedTuple, Set

from ruxmeta._cursor import WORD, Faults
from ruxmeta._language import (
    CLASS_Group,
    CLASS_TableData,
    CLASS_TableName,
    SECTIONS_OFFSET,
    TABLE_CELLS,
)
from ruxmeta._lookup import CLASS_ROWS
from ruxmeta._meta_tables import ORDINAL_MASK, MetaTables
from ruxmeta._rows import Kind


class Place(NamedTuple):
    """A word of an entry."""

    section: int  # ordinals
    entry: int
    word: int  # where in the words

    def report(self, faults: Faults, field: str, reason: str) -> None:
        record = f"sections, section {self.section}, entry {self.entry}"
        faults.report(SECTIONS_OFFSET + self.word * WORD, record, field, reason)


class MetaReferences:
    """All indices that come in must be in their tables."""

    def __init__(self, tables: MetaTables, faults: Faults) -> None:
        self._tables = tables
        self._faults = faults
        self._defined: Set[int] = set()
        self._first_uses: Dict[int, Place] = {}
        self._parents: Dict[int, int] = {}  # of groups
        self._parent_places: Dict[int, Place] = {}
        self._named_in: Dict[int, Kind] = {}  # by the index of the name: the last kind
        self._tables_named: List[int] = []

    def define(self, index: int) -> bool:
        """False when the group, action or global was defined before."""
        if index in self._defined:
            return False
        self._defined.add(index)
        return True

    def use(self, index: int, place: Place) -> None:
        """Something refers to the group, action, global or table."""
        self._first_uses.setdefault(index, place)

    def name_section(self, kind: Kind, index: int) -> bool:
        """A section has that name: false when one of the kind before it has the same."""
        if kind.keyword == CLASS_ROWS[CLASS_TableName].named_by:
            self._tables_named.append(index)
        is_new = self._named_in.get(index) is not kind
        self._named_in[index] = kind
        return is_new

    def set_parent(self, group: int, parent: int, place: Place) -> None:
        self._parents[group] = parent
        self._parent_places[group] = place

    def check(self) -> None:
        """Once all sections are read."""
        self._define_tables()
        for index, place in self._first_uses.items():
            if index not in self._defined:
                title = CLASS_ROWS[index & ~ORDINAL_MASK].title
                reason = f"it is {title} {index & ORDINAL_MASK}, which is not in the file"
                place.report(self._faults, "value", reason)
        self._check_parents()
        self._check_cells()

    def _define_tables(self) -> None:
        """Sections of tables have strings for names; values have the names of tables."""
        names = {self._tables.text(index) for index in self._tables_named}
        for index in sorted(self._first_uses):
            if index & ~ORDINAL_MASK != CLASS_TableName:
                continue
            name = self._tables.text(index)
            if name in names:
                self._defined.add(index)
            names.add(name)  # a table that has it twice is reported where it is

    def _check_parents(self) -> None:
        """From every group, the way up ends at the root."""
        came_from: Dict[int, int] = {}
        for first in sorted(self._parents):
            group = first
            while group != CLASS_Group and group in self._parents and group not in came_from:
                came_from[group] = first
                group = self._parents[group]
            if group != CLASS_Group and group in self._parents and came_from[group] == first:
                reason = "the group is its own ancestor"
                self._parent_places[group].report(self._faults, "value", reason)

    def _check_cells(self) -> None:
        """Each section of a table has its cells."""
        cells = self._tables.by_class[CLASS_TableData]
        if cells.length != len(self._tables_named) * TABLE_CELLS:
            reason = f"it is {cells.length}, TABLE sections: {len(self._tables_named)}"
            offset = cells.offset - WORD
            self._faults.report(offset, f"table {cells.ordinal}", "length", reason)
