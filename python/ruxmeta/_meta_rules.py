"""What a meta file must say, beyond its layout."""

from array import array
from collections import defaultdict
from typing import Container, DefaultDict, Dict, List, NamedTuple, Optional, Set, Tuple

from ruxmeta._cursor import WORD, Faults
from ruxmeta._language import (
    CLASS_Action,
    CLASS_Dword,
    CLASS_Global,
    CLASS_Value,
    REQUIRED,
    SECTIONS_OFFSET,
)
from ruxmeta._lookup import CLASS_ROWS, COMPILED_ENTRIES, COMPILED_KEYWORDS, COMPILED_KINDS
from ruxmeta._lookup import SOURCE_KEYWORDS
from ruxmeta._meta_references import MetaReferences, Place
from ruxmeta._meta_tables import CLASS_MASK, MetaTables
from ruxmeta._rows import Kind, Template
from ruxmeta._shapes import Other, Shapes
from ruxmeta._value_rules import ValueRules

_ACTION = CLASS_ROWS[CLASS_Action].named_by
_ARGUMENT_NUMBER = COMPILED_ENTRIES["ARGNUMBER"]
# VALUE, the value without a name of its own.
_PLAIN_VALUE = CLASS_Value + CLASS_ROWS[CLASS_Value].fixed_keys.index(b"")


class _Schema(NamedTuple):
    """The entries of a kind."""

    keys: Dict[int, Tuple[int, str]]  # by identifier: place in the order of the kind, content
    named: Dict[int, str]  # by class: content of entries with names of the script's own


def _schema_of(kind: Kind) -> _Schema:
    keys = {row.compiled: (place, row.content) for place, row in enumerate(kind.templates)}
    return _Schema(keys, {row.table: row.content for row in kind.free_entries if row.table})


_SCHEMAS = {identifier: _schema_of(kind) for identifier, kind in COMPILED_KINDS.items()}
_NO_KEY = (-1, "")


class MetaRules:
    """Reports what no compiler writes for a script that passed its checks.

    For files whose tables are all there; without them, nothing is known of the words.
    """

    def __init__(self, words: "array[int]", tables: MetaTables, faults: Faults) -> None:
        self._words = words
        self._tables = tables
        self._faults = faults
        self._references = MetaReferences(tables, faults)
        self._values = ValueRules(words, tables, self._references, faults)
        # By content: words that are right for an entry with one value. Others are looked at.
        self._plain: DefaultDict[str, Container[int]] = defaultdict(tuple)
        self._plain["number"] = tables.indices(CLASS_Dword)
        self._plain["text"] = tables.filled_strings()
        self._kinds: Set[int] = set()  # that there were
        self._kind: Optional[Kind] = None  # of the section, or of the one before
        self._names: Set[int] = set()  # of entries: no two alike
        self._shapes = Shapes(words, tables)

    def pass_alike(self, ordinal: int, begin: int) -> int:
        """Checks a section that is like an earlier one; returns how many words it has, or 0."""
        size, looked_at = self._shapes.find(begin)
        if size == 0:
            return 0
        self._begin_section(COMPILED_KINDS[self._words[begin]], ordinal, begin)
        check = self._values.check
        for content, entry, at in looked_at:
            check(content, entry, begin + at)
        return size

    def check_section(self, kind: Kind, ordinal: int, begin: int, entries: List[int]) -> None:
        """The section and its entries, which begin at those words."""
        self._begin_section(kind, ordinal, begin)
        self._begin, self._entries = begin, entries
        self._others: List[Other] = []
        words = self._words
        plain = self._plain
        keys, named = _SCHEMAS[kind.compiled]
        end = len(kind.templates)
        next_place = 0  # in the order of the kind
        for entry, at in enumerate(entries):
            identifier = words[at]
            place, content = keys.get(identifier, _NO_KEY)
            if place < next_place:
                # After the first name of the script's own there are no more keys.
                if next_place < end:
                    next_place = self._pass_to(next_place, end, entry, at)
                content = named.get(identifier & CLASS_MASK, "")
                if not self._check_named(kind, content, entry, at):
                    continue
            else:
                if place > next_place:
                    self._pass_to(next_place, place, entry, at)
                next_place = place + 1
                if content == "typed value":
                    self._check_value_key(entry, at)
            # Most entries have one number or text.
            if words[at + 1] == 1 and words[at + 2] in plain[content]:
                if identifier == _ARGUMENT_NUMBER:
                    self._values.take_argument_number(at)
            else:
                self._others.append(Other(content, entry, at - begin))
                self._values.check(content, entry, at)
        self._next_place = next_place

    def end_section(self, end: int) -> None:
        """All of it was there; it ends before that word."""
        assert self._kind is not None
        for template in self._kind.templates[self._next_place :]:
            if template.notation & REQUIRED:
                record = f"sections, section {self._section}"
                offset = SECTIONS_OFFSET + end * WORD
                self._faults.report(offset, record, "end", _reason_for_missing(template))
        self._values.end_section()
        if self._faults.first is None and self._is_like_others():
            self._shapes.add(self._begin, end, self._entries, self._others)

    def _is_like_others(self) -> bool:
        """Whether a section of this kind is right by itself.

        Names of entries may be in other sections already, and the values of an action mention each
        other.
        """
        kind = self._kind
        return kind is not None and kind.uniqueness != "keys" and kind.keyword != _ACTION

    def finish(self) -> None:
        """All sections were there."""
        self._references.check()

    def _begin_section(self, kind: Kind, ordinal: int, begin: int) -> None:
        goes_on = kind is self._kind
        was_there = kind.compiled in self._kinds
        if not goes_on or kind.uniqueness != "keys":
            self._names = set()
        if was_there and kind.uniqueness == "single":
            self._report_section(ordinal, begin, f"there is an earlier {kind.keyword} section")
        elif was_there and not goes_on:
            reason = f"other {kind.keyword} sections come before those of another kind"
            self._report_section(ordinal, begin, reason)
        self._kinds.add(kind.compiled)
        self._kind = kind
        self._section = ordinal
        self._values.begin_section(kind, ordinal)

    def _report_section(self, ordinal: int, begin: int, reason: str) -> None:
        offset = SECTIONS_OFFSET + begin * WORD
        self._faults.report(offset, f"sections, section {ordinal}", "identifier", reason)

    def _report(self, entry: int, at: int, reason: str) -> None:
        Place(self._section, entry, at).report(self._faults, "identifier", reason)

    def _pass_to(self, place: int, end: int, entry: int, at: int) -> int:
        """Entries that are not there; returns where the next one is in the order of the kind."""
        assert self._kind is not None
        for template in self._kind.templates[place:end]:
            if template.notation & REQUIRED:
                self._report(entry, at, _reason_for_missing(template))
        return end

    def _check_value_key(self, entry: int, at: int) -> None:
        """Keys of values have the indices of their names for identifiers like others."""
        identifier = self._words[at]
        if not self._is_index(entry, at, CLASS_Value):
            return
        # VALUE, and a "VALUE_" with nothing after it, have the same name.
        if identifier == _PLAIN_VALUE:
            self._values.add_local_value(identifier)
        else:
            self._check_twice(entry, at)

    def _check_named(self, kind: Kind, content: str, entry: int, at: int) -> bool:
        """Whether the identifier is the index of a name that such a section can have."""
        identifier = self._words[at]
        base = identifier & CLASS_MASK
        if not content:
            self._report(entry, at, _reason_against(kind, identifier))
            return False
        if not self._is_index(entry, at, base):
            return False
        self._check_twice(entry, at)
        if content == "typed value":
            if base == CLASS_Global:
                self._references.define(identifier)
            self._values.add_local_value(identifier)
        return True

    def _is_index(self, entry: int, at: int, base: int) -> bool:
        identifier = self._words[at]
        if identifier in self._tables.indices(base):
            return True
        self._report(entry, at, self._tables.reason_against(identifier, base))
        return False

    def _check_twice(self, entry: int, at: int) -> None:
        identifier = self._words[at]
        if identifier in self._names:
            self._report(entry, at, "an earlier entry has the same name")
        self._names.add(identifier)


def _reason_for_missing(template: Template) -> str:
    return f"expected {SOURCE_KEYWORDS[template.entry]} before it"


def _reason_against(kind: Kind, identifier: int) -> str:
    row = CLASS_ROWS.get(identifier & CLASS_MASK)
    title = COMPILED_KEYWORDS.get(identifier) or (row.title if row is not None else None)
    if title is None:
        return f"no such identifier: 0x{identifier:08X}"
    return f"a {kind.keyword} section cannot have {title} here"
