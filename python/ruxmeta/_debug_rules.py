"""What a debug meta file must say, beyond its layout."""

from bisect import bisect_left
from typing import List, Optional, Set

from ruxmeta._cursor import Cursor
from ruxmeta._debug_records import DebugEntryRecord, DebugField, DebugSectionRecord, TextEntry
from ruxmeta._language import (
    COMPARISON,
    ENTRIES,
    FIRST_COMPARISON,
    FREE_NAME,
    KINDS,
    PAYLOAD_MASK,
    PAYLOAD_VALUE,
    REQUIRED,
)
from ruxmeta._lookup import OPERATOR_CODES, SOURCE_ENTRIES, SOURCE_KEYWORDS, type_of
from ruxmeta._rows import Kind

_NAME = SOURCE_ENTRIES["NAME"]
_DEFINED_WORD = SOURCE_ENTRIES["DEFINED_WORD"]
_KEYS = {identifier: keyword.encode() for identifier, keyword in SOURCE_KEYWORDS.items()}
# Of each kind: identifier and notation of entries with names of the script's own.
_FREE = {
    kind.source: {(row.entry, row.notation) for row in kind.free_entries if row.notation & FREE_NAME}
    for kind in KINDS
}
_NOT_DIGIT_FIRST = frozenset(row.source for row in ENTRIES if row.form == "no digit first")


class DebugRules:
    """Reports what no compiler writes for a script that passed its checks.

    The texts of values refer to other sections as the script wrote them; whether they are right is
    for the check of the script to say.
    """

    def __init__(self, cursor: Cursor) -> None:
        self._cursor = cursor
        self._names: List[bytes] = []  # of defined words, in order
        self._values: List[int] = []
        self._offsets: List[int] = []
        self._defined: Set[int] = set()  # the words that entries define
        # Of the block that one is in.
        self._section_names: Set[bytes] = set()
        self._entry_names: Set[bytes] = set()  # of one section, or of all

    def check_word(self, name: bytes, value: int, offset: int) -> None:
        if name[:1].isdigit():
            self._cursor.report("name", offset, "a name must not begin with a digit")
        self._names.append(name)
        self._values.append(value)
        self._offsets.append(offset)

    def begin_block(self) -> None:
        self._section_names = set()
        self._entry_names = set()

    def check_section(self, kind: Kind, section: DebugSectionRecord, count_offset: int) -> None:
        self._kind = kind
        self._free = _FREE[kind.source]
        if section.ordinal > 0 and kind.uniqueness == "single":
            reason = f"there is an earlier {kind.keyword} section"
            self._report("identifier", section.offset, reason, "object")
        if section.notation != kind.notation:
            reason = f"expected {kind.notation}, found {section.notation}"
            self._report("notation", section.notation_offset, reason, "object")
        if section.name != kind.keyword.encode():
            self._report("name", section.name_offset, f"expected {kind.keyword}", "object")
        if section.entry_count < len(kind.templates):
            reason = f"expected at least {len(kind.templates)}, found {section.entry_count}"
            self._report("entry count", count_offset, reason)
        if kind.uniqueness != "keys":
            self._entry_names = set()

    def takes_text(self, ordinal: int, data: bytes, entry: TextEntry) -> bool:
        """Whether an entry of one text is right. If not, check_entry() reports why."""
        identifier, notation, _, _, name, begin, end = entry
        templates = self._kind.templates
        if ordinal < len(templates):
            row = templates[ordinal]
            if identifier != row.entry or notation != row.notation or name != _KEYS[identifier]:
                return False
        elif (identifier, notation) not in self._free or not name.startswith(_KEYS[identifier]):
            return False
        if identifier in _NOT_DIGIT_FIRST and name[:1].isdigit() or name in self._entry_names:
            return False
        if identifier == _NAME:
            text = data[begin:end]
            if text in self._section_names:
                return False
            self._section_names.add(text)
        if self._kind.uniqueness:
            self._entry_names.add(name)
        return True

    def check_entry(self, entry: DebugEntryRecord) -> None:
        notation = self._notation_of(entry)
        if notation is None:
            return
        if entry.notation != notation:
            reason = f"expected {notation}, found {entry.notation}"
            self._report("notation", entry.notation_offset, reason, "object")
        if entry.payload_type:
            self._check_given(entry, notation & FREE_NAME != 0)
        else:
            has_place = entry.ordinal < len(self._kind.templates)
            self._check_not_given(entry, has_place and not notation & REQUIRED)

    def finish(self) -> None:
        """All of the file was there."""
        for i, offset in enumerate(self._offsets):
            if i not in self._defined:
                self._cursor.path = [f"defined word {i}"]
                self._cursor.report("name", offset, "no entry defines it")

    def _report(self, field: str, offset: int, reason: str, *records: str) -> None:
        """In those records of the one that the cursor is in."""
        path = self._cursor.path
        depth = len(path)
        path.extend(records)
        self._cursor.report(field, offset, reason)
        del path[depth:]

    def _notation_of(self, entry: DebugEntryRecord) -> Optional[int]:
        """The notation of such an entry; None, reported, when the section cannot have it."""
        kind = self._kind
        if entry.ordinal < len(kind.templates):
            row = kind.templates[entry.ordinal]
            if entry.identifier == row.entry:
                return row.notation
            reason = (
                f"expected 0x{row.entry:08X} ({SOURCE_KEYWORDS[row.entry]}), "
                f"found 0x{entry.identifier:08X}"
            )
            self._report("identifier", entry.offset, reason, "object")
            return None
        for free in kind.free_entries:
            if entry.identifier == free.entry:
                return free.notation
        reason = f"a {kind.keyword} section cannot have 0x{entry.identifier:08X} here"
        self._report("identifier", entry.offset, reason, "object")
        return None

    def _check_not_given(self, entry: DebugEntryRecord, may_lack: bool) -> None:
        expected = "expected 0 for an entry that is not given, found"
        if not may_lack:
            reason = "the entry must be given"
            self._report("payload type", entry.payload_offset, reason, "payload")
        if entry.name:
            reason = "an entry that is not given has no name"
            self._report("name", entry.name_offset, reason, "object")
        if entry.line:
            self._report("line", entry.line_offset, f"{expected} {entry.line}", "object")
        if entry.file_index:
            reason = f"{expected} {entry.file_index}"
            self._report("file index", entry.file_index_offset, reason, "object")

    def _check_given(self, entry: DebugEntryRecord, is_free: bool) -> None:
        self._check_name(entry, is_free)
        if entry.identifier == _NAME:
            name = entry.fields[0].texts[0]
            if name in self._section_names:
                reason = "an earlier section of this kind has the same name"
                self._report("Text", entry.fields[0].offset, reason, "payload")
            self._section_names.add(name)
        elif entry.identifier == _DEFINED_WORD:
            word = self._find_word(entry.name)
            if word is None:
                self._report("name", entry.name_offset, "no such defined word", "object")
            else:
                self._defined.add(word)
        elif entry.identifier & PAYLOAD_MASK == PAYLOAD_VALUE:
            self._check_value(entry)

    def _check_name(self, entry: DebugEntryRecord, is_free: bool) -> None:
        """The key, or one that begins like it; no two alike."""
        key = _KEYS[entry.identifier]
        name = entry.name
        reason = ""
        if name != key and not (is_free and name.startswith(key)):
            reason = f"expected {key.decode()}{'...' if is_free else ''}"
        elif entry.identifier in _NOT_DIGIT_FIRST and name[:1].isdigit():
            reason = "a name must not begin with a digit"
        elif self._kind.uniqueness:
            if name in self._entry_names:
                reason = "an earlier entry has the same name"
            self._entry_names.add(name)
        if reason:
            self._report("name", entry.name_offset, reason, "object")

    def _check_value(self, entry: DebugEntryRecord) -> None:
        """The type's name is the word for its code, and there are as many parts as it needs."""
        name = entry.fields[0]
        word = self._find_word(name.texts[0])
        if word is None:
            self._report_value("Type", name.offset, "no such defined word")
        elif self._values[word] != entry.value_type:
            reason = (
                f"expected {self._values[word]}, the code of the type's name, "
                f"found {entry.value_type}"
            )
            self._report_value("type code", entry.value_type_offset, reason)
        if entry.value_type == COMPARISON.code:
            self._check_calculation(entry.fields[1:])
        elif entry.fields[-1].is_list:
            self._check_list(entry)

    def _report_value(self, field: str, offset: int, reason: str) -> None:
        self._report(field, offset, reason, "payload", "value")

    def _check_list(self, entry: DebugEntryRecord) -> None:
        kind = type_of(entry.value_type)
        items = entry.fields[-1]
        texts = len(entry.fields) - 1  # with the type
        found = len(items.texts)
        if found < kind.least - texts:
            reason = f"expected at least {kind.least - texts}, found {found}"
            self._report_value(items.name, items.offset, reason)
        elif found > kind.most - texts:
            reason = f"expected at most {kind.most - texts}, found {found}"
            self._report_value(items.name, items.offset, reason)

    def _check_calculation(self, parts: List[DebugField]) -> None:
        code = OPERATOR_CODES.get(parts[0].texts[0])
        if code is None:
            self._report_value(parts[0].name, parts[0].offset, "no such operator")
            return
        # Only a comparison has as many as the record; the others are empty.
        compares = code >= FIRST_COMPARISON
        for part in parts[type_of(COMPARISON.code).least - 1 :]:
            if compares and not part.texts[0]:
                self._report_value(part.name, part.offset, "a comparison needs it")
            elif part.texts[0] and not compares:
                self._report_value(part.name, part.offset, "only a comparison has it")

    def _find_word(self, name: bytes) -> Optional[int]:
        place = bisect_left(self._names, name)
        return place if place < len(self._names) and self._names[place] == name else None
