"""The tables of a meta file, which say what its words refer to."""

from array import array
from typing import Dict, List, Optional, Sequence, Set, TypeVar

from ruxmeta._cursor import WORD, Faults
from ruxmeta._language import CLASS_Dword, CLASS_Property, CLASS_String
from ruxmeta._lookup import CLASS_ROWS

CLASS_MASK = 0xFF000000
ORDINAL_MASK = 0x00FFFFFF

_Item = TypeVar("_Item", bytes, int)
_NO_INDICES = range(0)


class MetaTable:
    """A table block. Which of the three it holds depends on the class."""

    def __init__(self, ordinal: int, base: int, length: int, offset: int) -> None:
        self.ordinal = ordinal  # among the tables
        self.base = base
        self.length = length
        self.offset = offset  # of the first item
        self.texts: List[bytes] = []
        self.numbers = array("I")
        self.cells = b""
        self.count = 0  # of indices: more than texts where further ones are empty

    def offset_of_text(self, ordinal: int) -> int:
        return self.offset + sum(len(text) + 1 for text in self.texts[:ordinal])


class MetaTables:
    def __init__(self) -> None:
        self.by_class: Dict[int, MetaTable] = {}
        self._indices: Dict[int, range] = {}

    def take(self, table: MetaTable, faults: Faults) -> None:
        """Reports texts and numbers that cannot be where they are."""
        self.by_class[table.base] = table
        self._indices[table.base] = range(table.base, table.base + table.count)
        if table.base == CLASS_Dword:
            _check_numbers(table, faults)
        else:
            _check_texts(table, faults)

    def indices(self, base: int) -> range:
        """All indices of a class that are in its table."""
        return self._indices.get(base, _NO_INDICES)

    def filled_strings(self) -> range:
        """The indices of all texts, when none of them is empty."""
        is_filled = b"" not in self.by_class[CLASS_String].texts
        return self.indices(CLASS_String) if is_filled else _NO_INDICES

    def text(self, index: int) -> bytes:
        texts = self.by_class[index & CLASS_MASK].texts
        ordinal = index & ORDINAL_MASK
        return texts[ordinal] if ordinal < len(texts) else b""

    def number(self, index: int) -> int:
        return self.by_class[CLASS_Dword].numbers[index & ORDINAL_MASK]

    def reason_against(self, word: int, base: int) -> str:
        """Why a word is not an index of the class."""
        title = CLASS_ROWS[base].title
        if word & CLASS_MASK == base:
            count = len(self.indices(base))
            return f"it is {title} {word & ORDINAL_MASK}, but the table has {count}"
        return f"expected class 0x{base >> 24:02X} ({title}), found 0x{word:08X}"


def _check_texts(table: MetaTable, faults: Faults) -> None:
    row = CLASS_ROWS[table.base]
    texts = table.texts
    record = f"table {table.ordinal}"
    if len(texts) < len(row.fixed_keys):
        reason = f"expected at least {len(row.fixed_keys)}, found {len(texts)}"
        faults.report(table.offset, record, "texts", reason)
    for i, (text, key) in enumerate(zip(texts, row.fixed_keys)):
        if text != key:
            reason = f'number {i} must be "{key.decode()}"'
            faults.report(table.offset_of_text(i), record, "text", reason)
    may_be_empty = table.base == CLASS_Property  # any number of them
    if row.named_by and b"" in texts:
        reason = "a name must not be empty"
        faults.report(table.offset_of_text(texts.index(b"")), record, "text", reason)
    place = _first_repeated(texts, {b""} if may_be_empty or row.named_by else set())
    if place is not None:
        reason = "an earlier text is the same"
        faults.report(table.offset_of_text(place), record, "text", reason)


def _check_numbers(table: MetaTable, faults: Faults) -> None:
    none: Set[int] = set()
    place = _first_repeated(table.numbers, none)
    if place is not None:
        offset = table.offset + place * WORD
        faults.report(offset, f"table {table.ordinal}", "number", "an earlier number is the same")


def _first_repeated(items: Sequence[_Item], may_repeat: Set[_Item]) -> Optional[int]:
    """Where the first item is that an earlier one is the same as."""
    if len(set(items)) == len(items):
        return None
    seen: Set[_Item] = set()
    for place, item in enumerate(items):
        if item in seen and item not in may_repeat:
            return place
        seen.add(item)
    return None
