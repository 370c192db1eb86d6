"""A debug meta file: its layout, read from end to end, and what is in it."""

import struct
from itertools import chain, repeat
from typing import Iterator, List, Optional, Set, Tuple

from ruxmeta._cursor import WORD, Cursor, Faults, Unreadable, read_header
from ruxmeta._debug_records import (
    DebugEntryRecord,
    DebugObject,
    DebugSectionRecord,
    enter,
    leave,
    pass_text_entry,
    read_object,
    read_payload,
    text_entry_at,
)
from ruxmeta._debug_rules import DebugRules
from ruxmeta._language import ANY_NUMBER, DEBUG_META_MAGIC, KINDS, REQUIRED
from ruxmeta._lookup import SOURCE_KEYWORDS, SOURCE_KINDS
from ruxmeta._rows import Kind

# The least that the things take that are counted.
_LEAST_WORD = 2 * WORD
_LEAST_KIND = WORD
_LEAST_OBJECT = 6 * WORD
_LEAST_SECTION = WORD + _LEAST_OBJECT + WORD
_LEAST_ENTRY = WORD + _LEAST_OBJECT + 2 * WORD


class DebugMetaFile:
    """What is in a sound file; entries are read when they are asked for."""

    def __init__(self, data: bytes) -> None:
        self.data = data
        self.created = 0
        self.files: Optional[Tuple[bytes, ...]] = None
        self.words: List[Tuple[bytes, int]] = []
        self.kinds: List[List[DebugSectionRecord]] = []  # the sections of each block
        faults = Faults()
        _DebugMetaReader(data, faults, self).read()
        if faults.first is not None:
            raise faults.first

    def entries(self, section: DebugSectionRecord) -> Iterator[DebugEntryRecord]:
        """In the order of the file."""
        cursor = Cursor(self.data, Faults())
        cursor.offset, cursor.end = section.entries_offset, section.end
        for ordinal in range(section.entry_count):
            plain = pass_text_entry(cursor, ordinal)
            if plain is not None:
                yield plain
                continue
            outer_end = enter(cursor, "entry", "record length")
            yield _read_entry(cursor, ordinal, None)
            leave(cursor, outer_end)


class _DebugMetaReader:
    def __init__(self, data: bytes, faults: Faults, file: DebugMetaFile) -> None:
        self._cursor = Cursor(data, faults)
        self._file = file
        self._rules = DebugRules(self._cursor)
        self._is_whole = True
        self._is_first_object = True
        self._kind = 0  # of the block that the cursor is in; 0: not yet known
        self._kinds: Set[int] = set()  # of earlier blocks

    def read(self) -> None:
        cursor = self._cursor
        try:
            self._file.created = read_header(cursor, DEBUG_META_MAGIC)
            self._read_words()
            self._read_kinds()
        except Unreadable:
            return
        cursor.path = ["file"]
        cursor.expect_end()
        if self._is_whole:
            self._rules.finish()

    def _read_words(self) -> None:
        cursor = self._cursor
        cursor.path = ["defined words"]
        last: Optional[bytes] = None
        for ordinal in range(cursor.count("count", _LEAST_WORD)):
            cursor.path = [f"defined word {ordinal}"]
            begin = cursor.offset
            name = cursor.text("name")
            value = cursor.word("value")
            if last is not None and name <= last:
                reason = "it must sort after the name of the word before it"
                cursor.report("name", begin, reason)
            last = name
            self._file.words.append((name, value))
            self._rules.check_word(name, value, begin)

    def _read_kinds(self) -> None:
        cursor = self._cursor
        cursor.path = ["kinds"]
        begin = cursor.offset
        count = cursor.count("count", _LEAST_KIND)
        if count > len(KINDS):
            cursor.fail("count", begin, f"it is {count}, but there are {len(KINDS)} kinds")
        for ordinal in range(count):
            cursor.path = [f"kind block {ordinal}"]
            self._file.kinds.append([])
            self._rules.begin_block()
            self._kind = 0
            for section in range(cursor.count("section count", _LEAST_SECTION)):
                self._read_section(section)

    def _read_section(self, ordinal: int) -> None:
        cursor = self._cursor
        outer_end = enter(cursor, f"section {ordinal}", "record length")
        depth = len(cursor.path)
        end = cursor.end
        try:
            section = self._read_section_object(ordinal)
            self._check_kind(section)
            count_offset = cursor.offset
            section.entry_count = cursor.count("entry count", _LEAST_ENTRY)
            section.entries_offset = cursor.offset
            section.end = end
            self._file.kinds[-1].append(section)
            self._rules.check_section(SOURCE_KINDS[section.identifier], section, count_offset)
            self._read_entries(SOURCE_KINDS[section.identifier], section.entry_count)
            cursor.expect_end()
        except Unreadable:
            self._recover(depth, end)
        leave(cursor, outer_end)

    def _recover(self, depth: int, end: int) -> None:
        """What follows a section or an entry can be read whatever is wrong in it."""
        del self._cursor.path[depth:]
        self._cursor.end = end
        self._is_whole = False

    def _read_section_object(self, ordinal: int) -> DebugSectionRecord:
        cursor = self._cursor
        section = DebugSectionRecord()
        section.ordinal = ordinal
        outer_end = enter(cursor, "object", "object length")
        may_have_files, self._is_first_object = self._is_first_object, False
        read_object(cursor, section, SOURCE_KINDS)
        # The list travels in the first object that a process writes; a later file has none.
        if may_have_files and cursor.left() > 0:
            self._read_files()
        _check_file_index(cursor, section, self._file.files)
        cursor.expect_end()
        leave(cursor, outer_end)
        return section

    def _read_files(self) -> None:
        cursor = self._cursor
        cursor.path.append("source files")
        count = cursor.count("source file count", WORD)
        self._file.files = (b"",) * count  # what follows a damaged list knows its length
        self._file.files = tuple([cursor.text("source file") for _ in range(count)])
        cursor.path.pop()

    def _check_kind(self, section: DebugSectionRecord) -> None:
        """The sections of a kind are neighbours, and each kind has one block."""
        cursor = self._cursor
        cursor.path.append("object")
        identifier = section.identifier
        if self._kind == 0:
            self._kind = identifier
            if identifier in self._kinds:
                reason = f"an earlier block has the kind 0x{identifier:08X}"
                cursor.report("identifier", section.offset, reason)
            self._kinds.add(identifier)
        elif identifier != self._kind:
            reason = f"it is 0x{identifier:08X} in a block of kind 0x{self._kind:08X}"
            cursor.report("identifier", section.offset, reason)
        cursor.path.pop()

    def _read_entries(self, kind: Kind, count: int) -> None:
        cursor = self._cursor
        files = self._file.files
        data, end = cursor.data, cursor.end
        blanks = chain(_BLANKS[kind.source] if files is None or files else (), repeat(None))
        file_count = ANY_NUMBER + 1 if files is None else len(files)
        takes_text = self._rules.takes_text
        for ordinal, blank in zip(range(count), blanks):
            # Most entries that a section has a place for are not given; most others have one text.
            at = cursor.offset
            if blank is not None and data.startswith(blank, at, end):
                cursor.offset = at + len(blank)
                continue
            found = text_entry_at(data, at, end)
            if found is not None and found[3] < file_count and takes_text(ordinal, data, found):
                cursor.offset = found[-1]
                continue
            self._read_other_entry(ordinal)

    def _read_other_entry(self, ordinal: int) -> None:
        cursor = self._cursor
        outer_end = enter(cursor, f"entry {ordinal}", "record length")
        depth = len(cursor.path)
        end = cursor.end
        try:
            entry = _read_entry(cursor, ordinal, self._file.files)
            self._rules.check_entry(entry)
        except Unreadable:
            self._recover(depth, end)
        leave(cursor, outer_end)


def _read_entry(
    cursor: Cursor, ordinal: int, files: Optional[Tuple[bytes, ...]]
) -> DebugEntryRecord:
    entry = DebugEntryRecord()
    entry.ordinal = ordinal
    outer_end = enter(cursor, "object", "object length")
    read_object(cursor, entry, SOURCE_KEYWORDS)
    _check_file_index(cursor, entry, files)
    cursor.expect_end()
    leave(cursor, outer_end)
    outer_end = enter(cursor, "payload", "payload length")
    read_payload(cursor, entry)
    cursor.expect_end()
    leave(cursor, outer_end)
    cursor.expect_end()
    return entry


def _check_file_index(
    cursor: Cursor, record: DebugObject, files: Optional[Tuple[bytes, ...]]
) -> None:
    if files is not None and record.file_index >= len(files):
        reason = f"it is {record.file_index}, source files: {len(files)}"
        cursor.report("file index", record.file_index_offset, reason)


def _blank(identifier: int, notation: int) -> bytes:
    """The record of an entry that the script does not give: without a line, a name, a payload."""
    payload = struct.pack("<2I", WORD, 0)
    words = struct.pack("<5I", identifier, notation, 0, 0, 0)
    record = struct.pack("<I", len(words)) + words + payload
    return struct.pack("<I", len(record)) + record


def _blanks(kind: Kind) -> Tuple[Optional[bytes], ...]:
    """For each place of a kind; None where the entry must be given."""
    return tuple(
        None if row.notation & REQUIRED else _blank(row.entry, row.notation)
        for row in kind.templates
    )


_BLANKS = {kind.source: _blanks(kind) for kind in KINDS}
