"""The records of a debug meta file."""

import struct
from typing import Collection, List, Optional, Tuple

from ruxmeta._cursor import WORD, Cursor
from ruxmeta._language import (
    PAYLOAD_LIST,
    PAYLOAD_MASK,
    PAYLOAD_NUMBER,
    PAYLOAD_TEXT,
    PAYLOAD_VALUE,
    REPEATER_FIELDS,
)
from ruxmeta._lookup import SOURCE_KEYWORDS, type_of
from ruxmeta._rows import Field


class DebugObject:
    """What sections and entries have in common."""

    __slots__ = ("ordinal", "offset", "identifier", "notation", "line", "file_index", "name")

    ordinal: int  # of an entry in its section, of a section in its block
    offset: int  # of the identifier; the other words follow
    identifier: int
    notation: int
    line: int
    file_index: int
    name: bytes

    @property
    def notation_offset(self) -> int:
        return self.offset + WORD

    @property
    def line_offset(self) -> int:
        return self.offset + 2 * WORD

    @property
    def file_index_offset(self) -> int:
        return self.offset + 3 * WORD

    @property
    def name_offset(self) -> int:
        return self.offset + 4 * WORD


class DebugSectionRecord(DebugObject):
    __slots__ = ("entry_count", "entries_offset", "end")

    entry_count: int
    entries_offset: int  # of the first entry
    end: int


class DebugField:
    """A part of an entry's value."""

    __slots__ = ("name", "is_list", "texts", "offset")

    def __init__(self, name: str, is_list: bool, texts: Tuple[bytes, ...], offset: int) -> None:
        self.name = name
        self.is_list = is_list
        self.texts = texts
        self.offset = offset


class DebugEntryRecord(DebugObject):
    __slots__ = (
        "payload_type",
        "payload_offset",
        "number",
        "value_type",
        "value_type_offset",
        "fields",
    )

    payload_type: int  # 0: the script did not give the entry
    payload_offset: int
    number: int
    value_type: int
    value_type_offset: int
    fields: List[DebugField]  # of a value: its type first


_TEXT_KEYWORDS = frozenset(
    identifier for identifier in SOURCE_KEYWORDS if identifier & PAYLOAD_MASK == PAYLOAD_TEXT
)


def enter(cursor: Cursor, name: str, length_field: str) -> int:
    """Begins a record with a length; returns where what the cursor was in ends."""
    cursor.path.append(name)
    outer_end = cursor.end
    cursor.end = cursor.record_end(length_field)
    return outer_end


def leave(cursor: Cursor, outer_end: int) -> None:
    """Goes to the end of the record, whatever is wrong in it."""
    cursor.path.pop()
    cursor.offset = cursor.end
    cursor.end = outer_end


# The words before a name.
_OBJECT_HEAD = struct.Struct("<5I")
_read_object_head = _OBJECT_HEAD.unpack_from


def read_object(cursor: Cursor, record: DebugObject, known: Collection[int]) -> None:
    """What an object says, up to its list of source files or its end."""
    at = record.offset = cursor.offset
    name = at + _OBJECT_HEAD.size
    if name <= cursor.end:
        identifier, notation, line, file_index, size = _read_object_head(cursor.data, at)
        if identifier in known and name + size <= cursor.end:
            record.identifier, record.notation = identifier, notation
            record.line, record.file_index = line, file_index
            record.name = cursor.data[name : name + size]
            cursor.offset = name + size
            return
    # Word for word, to report what is wrong.
    record.identifier = cursor.word("identifier")
    if record.identifier not in known:
        reason = f"no such identifier: 0x{record.identifier:08X}"
        cursor.fail("identifier", record.offset, reason)
    record.notation = cursor.word("notation")
    record.line = cursor.word("line")
    record.file_index = cursor.word("file index")
    record.name = cursor.text("name")


# An entry of one text: the words before its name, and those between its name and its text.
_TEXT_HEAD = struct.Struct("<7I")
_TEXT_BODY = struct.Struct("<3I")
_read_text_head, _read_text_body = _TEXT_HEAD.unpack_from, _TEXT_BODY.unpack_from


# Of an entry of one text: identifier, notation, line, file index, name, where the text is, the end.
TextEntry = Tuple[int, int, int, int, bytes, int, int]


def text_entry_at(data: bytes, at: int, end: int) -> Optional[TextEntry]:
    """Reads an entry of one text at once, as most are; None when it is not one, word for word."""
    name = at + _TEXT_HEAD.size
    if name > end:
        return None
    length, object_length, identifier, notation, line, file_index, size = _read_text_head(data, at)
    payload = name + size
    text = payload + _TEXT_BODY.size
    if identifier not in _TEXT_KEYWORDS or text > end:
        return None
    payload_length, payload_type, text_length = _read_text_body(data, payload)
    next_entry = text + text_length
    if (
        object_length != 5 * WORD + size
        or payload_type != identifier
        or payload_length != 2 * WORD + text_length
        or length != next_entry - at - WORD
        or next_entry > end
    ):
        return None
    return identifier, notation, line, file_index, data[name:payload], text, next_entry


def pass_text_entry(cursor: Cursor, ordinal: int) -> Optional[DebugEntryRecord]:
    """The record of such an entry."""
    found = text_entry_at(cursor.data, cursor.offset, cursor.end)
    if found is None:
        return None
    entry = DebugEntryRecord()
    entry.ordinal, entry.offset = ordinal, cursor.offset + 2 * WORD
    entry.identifier, entry.notation, entry.line, entry.file_index, entry.name, text, end = found
    entry.payload_type, entry.payload_offset = entry.identifier, text - 2 * WORD
    entry.fields = [DebugField("Text", False, (cursor.data[text:end],), text - WORD)]
    cursor.offset = end
    return entry


def read_payload(cursor: Cursor, entry: DebugEntryRecord) -> None:
    entry.fields = []
    entry.payload_offset = cursor.offset
    entry.payload_type = cursor.word("payload type")
    if entry.payload_type == 0:
        return
    if entry.payload_type != entry.identifier:
        reason = f"it is 0x{entry.payload_type:08X} in an entry 0x{entry.identifier:08X}"
        cursor.fail("payload type", entry.payload_offset, reason)
    payload = entry.payload_type & PAYLOAD_MASK
    if payload == PAYLOAD_TEXT:
        _add_text(cursor, entry, "Text")
    elif payload == PAYLOAD_NUMBER:
        entry.number = cursor.word("Number")
    elif payload == PAYLOAD_LIST:
        _add_list(cursor, entry, "Items")
    elif payload == PAYLOAD_VALUE:
        _read_value(cursor, entry)
    else:
        _add_fields(cursor, entry, REPEATER_FIELDS)


def _read_value(cursor: Cursor, entry: DebugEntryRecord) -> None:
    outer_end = enter(cursor, "value", "value length")
    entry.value_type_offset = cursor.offset
    entry.value_type = cursor.word("type code")
    _add_text(cursor, entry, "Type")
    _add_fields(cursor, entry, type_of(entry.value_type).fields)
    cursor.expect_end()
    leave(cursor, outer_end)


def _add_fields(cursor: Cursor, entry: DebugEntryRecord, fields: Tuple[Field, ...]) -> None:
    for field in fields:
        if field.is_list:
            _add_list(cursor, entry, field.name)
        else:
            _add_text(cursor, entry, field.name)


def _add_text(cursor: Cursor, entry: DebugEntryRecord, name: str) -> None:
    begin = cursor.offset
    entry.fields.append(DebugField(name, False, (cursor.text(name),), begin))


def _add_list(cursor: Cursor, entry: DebugEntryRecord, name: str) -> None:
    begin = cursor.offset
    entry.fields.append(DebugField(name, True, cursor.texts(name), begin))
