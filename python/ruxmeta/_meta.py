"""A meta file: its layout, read from end to end, and what is in it."""

import sys
from array import array
from typing import Dict, Iterator, List, Optional, Tuple

from ruxmeta._cursor import WORD, Cursor, Faults, Unreadable, read_header
from ruxmeta._language import (
    BLOCK_ALIGNMENT,
    BLOCKS,
    CLASS_Dword,
    CLASS_Property,
    CLASS_TableData,
    META_MAGIC,
    MOST_ORDINALS,
    SECTIONS_OFFSET,
    TABLE_CELLS,
)
from ruxmeta._lookup import CLASS_ROWS, COMPILED_KINDS
from ruxmeta._meta_rules import MetaRules
from ruxmeta._meta_tables import MetaTable, MetaTables

_HEAD = 2 * WORD  # what sections, entries and tables begin with


class MetaFile:
    """The bytes of a sound file as words and tables."""

    def __init__(self, data: bytes) -> None:
        self.created = 0
        self.words = array("I")  # from the count of sections up to the tables
        self.sections: Dict[int, List[int]] = {}  # by kind: where in the words they begin
        self.tables = MetaTables()
        faults = Faults()
        _MetaReader(data, faults, self).read()
        if faults.first is not None:
            raise faults.first

    def entries(self, section: int) -> Iterator[int]:
        """Where in the words the entries of a section begin."""
        words = self.words
        at = section + 2
        for _ in range(words[section + 1]):
            yield at
            at += 2 + words[at + 1]


class _MetaReader:
    def __init__(self, data: bytes, faults: Faults, file: MetaFile) -> None:
        self._data = data
        self._faults = faults
        self._cursor = Cursor(data, faults)
        self._file = file
        self._offsets: List[int] = []  # of the tables

    def read(self) -> None:
        try:
            self._file.created = read_header(self._cursor, META_MAGIC)
            self._read_directory()
        except Unreadable:
            return
        # Sections and tables are found by their offsets, whatever is wrong in another one.
        is_whole = all([self._read_table(i) for i in range(len(BLOCKS))])
        file = self._file
        file.words = words_of(self._data[SECTIONS_OFFSET : self._offsets[0]])
        rules = MetaRules(file.words, file.tables, self._faults) if is_whole else None
        if self._read_sections(rules) and rules is not None:
            rules.finish()

    def _read_directory(self) -> None:
        cursor = self._cursor
        cursor.path = ["directory"]
        least = SECTIONS_OFFSET
        for base in BLOCKS:
            at = cursor.offset
            offset = cursor.word(CLASS_ROWS[base].title)
            if offset % BLOCK_ALIGNMENT or not least < offset < len(self._data):
                cursor.fail(
                    CLASS_ROWS[base].title,
                    at,
                    f"it is 0x{offset:X}; it must be a multiple of {BLOCK_ALIGNMENT} above "
                    f"0x{least:X} and below the file's end 0x{len(self._data):X}",
                )
            self._offsets.append(offset)
            least = offset
        cursor.zeros("end of directory", WORD)
        cursor.zeros("gap", SECTIONS_OFFSET - cursor.offset)

    def _read_table(self, ordinal: int) -> bool:
        """False when the table cannot be read."""
        cursor = self._cursor
        cursor.path = [f"table {ordinal}"]
        cursor.offset = self._offsets[ordinal]
        is_last = ordinal + 1 == len(BLOCKS)
        cursor.end = len(self._data) if is_last else self._offsets[ordinal + 1]
        try:
            table = self._read_head(ordinal)
            if table.base == CLASS_TableData:
                self._read_cells(table)
            elif table.base == CLASS_Dword:
                self._read_numbers(table)
            else:
                self._read_texts(table)
            if not is_last:
                self._expect_padding()
        except Unreadable:
            return False
        self._file.tables.take(table, self._faults)
        return True

    def _read_head(self, ordinal: int) -> MetaTable:
        cursor = self._cursor
        at = cursor.offset
        base = cursor.word("class")
        if base != BLOCKS[ordinal]:
            cursor.fail("class", at, f"expected 0x{BLOCKS[ordinal]:08X}, found 0x{base:08X}")
        at = cursor.offset
        length = cursor.word("length")
        # What the length says is read without regard to the next table.
        left = len(self._data) - cursor.offset
        if length > left:
            reason = f"the length {length} (0x{length:X}) is too large, bytes left: {left}"
            cursor.fail("length", at, reason)
        return MetaTable(ordinal, base, length, cursor.offset)

    def _read_cells(self, table: MetaTable) -> None:
        left = self._cursor.left()
        if table.length != left or table.length % TABLE_CELLS:
            reason = f"it is {table.length}, bytes left: {left}, for each table: {TABLE_CELLS}"
            self._fail_length(table, reason)
        table.cells = self._cursor.take("cells", left)

    def _read_numbers(self, table: MetaTable) -> None:
        left = self._cursor.left()
        if table.length % WORD or table.length > left:
            reason = f"it is {table.length}, bytes left: {left}, for each number: {WORD}"
            self._fail_length(table, reason)
        self._check_count(table, table.length // WORD)
        table.numbers = words_of(self._cursor.take("number", table.length))
        table.count = len(table.numbers)

    def _read_texts(self, table: MetaTable) -> None:
        cursor = self._cursor
        block = self._data[cursor.offset : cursor.end]
        size = _size_of_texts(block, table.length)
        if size >= len(block):
            cursor.fail("texts", cursor.offset, "no padding follows them")
        count = block.count(b"\0", 0, size)
        self._check_count(table, count)
        table.texts = block[:size].split(b"\0")[:count]
        table.count = count
        cursor.take("texts", size)
        if table.length != size:
            self._take_odd_length(table, size)

    def _take_odd_length(self, table: MetaTable, size: int) -> None:
        """The length is that of the names that the compiler knew.

        Only among properties there are any without an index, and indices without a name.
        """
        if table.base != CLASS_Property or table.length + table.texts.count(b"") < size:
            self._fail_length(table, f"it is {table.length}, bytes of the texts: {size}")
        table.count += self._cursor.left() - 1

    def _check_count(self, table: MetaTable, count: int) -> None:
        if count > MOST_ORDINALS:
            self._fail_length(table, f"there are more than {MOST_ORDINALS} items")

    def _fail_length(self, table: MetaTable, reason: str) -> None:
        self._cursor.fail("length", table.offset - WORD, reason)

    def _expect_padding(self) -> None:
        """Between two blocks there is always padding, also after one that ends on a boundary."""
        cursor = self._cursor
        size = cursor.left()
        if not 0 < size <= BLOCK_ALIGNMENT:
            reason = f"expected 1 to {BLOCK_ALIGNMENT} bytes, found {size}"
            cursor.fail("padding", cursor.offset, reason)
        cursor.zeros("padding", size)

    def _read_sections(self, rules: Optional[MetaRules]) -> bool:
        """False when they cannot be read."""
        cursor = self._cursor
        cursor.path = ["sections"]
        cursor.offset, cursor.end = SECTIONS_OFFSET, self._offsets[0]
        try:
            for ordinal in range(cursor.count("section count", _HEAD)):
                cursor.path[1:] = [f"section {ordinal}"]
                self._read_section(ordinal, rules)
            cursor.path[1:] = []
            self._expect_padding()
        except Unreadable:
            return False
        return True

    def _read_section(self, ordinal: int, rules: Optional[MetaRules]) -> None:
        cursor = self._cursor
        begin = cursor.offset
        section = (begin - SECTIONS_OFFSET) // WORD
        if rules is not None and cursor.left() >= _HEAD:
            size = rules.pass_alike(ordinal, section)
            if size > 0:
                self._file.sections[self._file.words[section]].append(section)
                cursor.offset += size * WORD
                return
        identifier = cursor.word("identifier")
        if identifier not in COMPILED_KINDS:
            cursor.fail("identifier", begin, f"no such kind: 0x{identifier:08X}")
        count = cursor.count("entry count", _HEAD)
        self._file.sections.setdefault(identifier, []).append(section)
        entries, is_cut = self._entries(section + 2, count)
        if rules is not None:
            rules.check_section(COMPILED_KINDS[identifier], ordinal, section, entries)
        if is_cut:
            self._fail_entry(len(entries))
        if rules is not None:
            rules.end_section((cursor.offset - SECTIONS_OFFSET) // WORD)

    def _entries(self, at: int, count: int) -> Tuple[List[int], bool]:
        """Where the entries begin, and whether the words end before the last one does.

        The cursor is after them, or at the one that is cut.
        """
        words = self._file.words
        most = len(words) - 2
        entries = []
        for _ in range(count):
            if at > most:
                break
            end = at + 2 + words[at + 1]
            if end > most + 2:
                break
            entries.append(at)
            at = end
        self._cursor.offset = SECTIONS_OFFSET + at * WORD
        return entries, len(entries) < count

    def _fail_entry(self, ordinal: int) -> None:
        cursor = self._cursor
        cursor.path.append(f"entry {ordinal}")
        cursor.word("identifier")
        cursor.count("value count", WORD)


def _size_of_texts(block: bytes, stated: int) -> int:
    """How many bytes are texts, each with a terminating zero, before the padding.

    Zeros at the end are padding, unless the stated length makes the first of them an empty text.
    """
    last = len(block.rstrip(b"\0"))
    least = max(last + 1 if last else 0, len(block) - BLOCK_ALIGNMENT)
    return least + 1 if stated == least + 1 and stated < len(block) else least


def words_of(data: bytes) -> "array[int]":
    words = array("I", data)
    if sys.byteorder == "big":
        words.byteswap()
    return words
