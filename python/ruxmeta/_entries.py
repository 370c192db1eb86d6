"""An entry of a section of a meta file."""

from typing import TYPE_CHECKING, Dict, Iterator, Mapping, Optional, Tuple, Union

from ruxmeta._language import (
    CLASS_Global,
    CLASS_Property,
    CLASS_Repeater,
    CLASS_Value,
    CLASS_ValueType,
    KINDS,
    PROPERTY_PREFIX,
    REPEATER_TYPE,
    SELECTORS,
    Selector,
)
from ruxmeta._lookup import CLASS_ROWS, COMPILED_KEYWORDS
from ruxmeta._meta_tables import CLASS_MASK, ORDINAL_MASK
from ruxmeta._rows import SelectorRow
from ruxmeta._values import Value, value_of
from ruxmeta._views import text_of

if TYPE_CHECKING:
    from ruxmeta._sections import Section

# By kind and entry: the kind of the sections whose IDs the entry has.
_TARGETS = {
    (kind.keyword, row.compiled): row.target
    for kind in KINDS
    for row in kind.templates
    if row.target
}
_TYPED = (CLASS_Value, CLASS_Global)


class Entry:
    """A key with its values."""

    __slots__ = ("section", "identifier", "words")

    def __init__(self, section: "Section", identifier: int, words: Tuple[int, ...]) -> None:
        self.section = section
        self.identifier = identifier  # as it is in the file
        self.words = words  # of the values, as they are in the file

    @property
    def key(self) -> str:
        """As a script writes it: "THRESHOLD_FH", "P_SLOT", "VALUE_INIT"."""
        fixed = COMPILED_KEYWORDS.get(self.identifier)
        if fixed is not None:
            return fixed
        name = value_of(self.section.machine.file.tables, self.identifier).value or ""
        is_prefixed = self._is_of(CLASS_Property) and self.section.kind != "PROPERTY"
        return f"{PROPERTY_PREFIX if is_prefixed else ''}{name}"

    @property
    def name(self) -> str:
        """The key without its prefix: "THRESHOLD_FH", "SLOT", "INIT"; of VALUE, it is empty."""
        fixed = COMPILED_KEYWORDS.get(self.identifier)
        return fixed or text_of(self.section.machine.file.tables.text(self.identifier))

    @property
    def values(self) -> Tuple[Value, ...]:
        tables = self.section.machine.file.tables
        return tuple([value_of(tables, word) for word in self.words])

    @property
    def value(self) -> Union[int, str, None]:
        """The first value: a number or a text. None without values."""
        if not self.words:
            return None
        return value_of(self.section.machine.file.tables, self.words[0]).value

    @property
    def type(self) -> Optional[int]:
        """The type of a value; None of other entries."""
        is_typed = self.words and self.identifier & CLASS_MASK in _TYPED
        if not is_typed or self.words[0] & CLASS_MASK != CLASS_ValueType:
            return None
        return self.words[0] & ORDINAL_MASK

    @property
    def parts(self) -> Mapping[str, Tuple[Value, ...]]:
        """The parts of a typed value or a repeater by name: "Operand", "Action", "Args"."""
        values = self.values
        parts: Dict[str, Tuple[Value, ...]] = {}
        for row in self._selectors():
            first = row.first + (row.last > row.first)
            parts[row.part] = values[first : row.last + 1]
        if not parts and len(values) > 1 and self.type is not None:
            parts["Values"] = values[1:]
        return parts

    @property
    def targets(self) -> Tuple["Section", ...]:
        """The sections that the values refer to."""
        found = [self.target_of(value) for value in self.values]
        return tuple([section for section in found if section is not None])

    def target_of(self, value: Value) -> Optional["Section"]:
        """The section that one of the values refers to, by ID or by name; None: it does not."""
        machine = self.section.machine
        kind_of_ids = _TARGETS.get((self.section.kind, self.identifier))
        row = CLASS_ROWS.get(value.word & CLASS_MASK)
        if kind_of_ids is not None and value.number is not None:
            return machine.by_name(kind_of_ids).by_id.get(value.number)
        if row is not None and row.named_by and isinstance(value.value, str):
            return machine.by_name(row.named_by).get(value.value)
        return None

    def select(self, selector: int) -> Optional[Value]:
        """The value that a selector picks, as hosts of the library pick it; None: there is none."""
        if selector == Selector.TYPE and self.type is not None:
            return self.values[0]
        for row in self._selectors():
            picked = row.first + selector - row.code
            if selector >= row.code and picked <= row.last and picked < len(self.words):
                return value_of(self.section.machine.file.tables, self.words[picked])
        return None

    def __repr__(self) -> str:
        shown = ", ".join(str(value.value) for value in self.values)
        return f"<{self.section.kind} entry {self.key!r}: {shown}>"

    def _is_of(self, base: int) -> bool:
        return self.identifier & CLASS_MASK == base

    def _selectors(self) -> Iterator[SelectorRow]:
        """Those of entries with such values."""
        kind = REPEATER_TYPE if self._is_of(CLASS_Repeater) else self.type
        for row in SELECTORS:
            if row.type == kind and row.least <= len(self.words) <= row.most:
                yield row
