"""Reading bytes field by field, never beyond the record that the cursor is in."""

import struct
from typing import List, NoReturn, Optional, Tuple

from ruxmeta._errors import DamagedFile, UnknownFormat
from ruxmeta._language import FORMAT_VERSION, HEADER_END, VERSION_OFFSET

WORD = 4
load_word = struct.Struct("<I").unpack_from


class Unreadable(Exception):
    """After a fault, where the rest of a record cannot be found."""


class Faults:
    """Keeps the first fault in the order of the file; of several at one place, the first found."""

    def __init__(self) -> None:
        self.first: Optional[DamagedFile] = None

    def report(self, offset: int, record: str, field: str, reason: str) -> None:
        if self.first is not None and self.first.offset <= offset:
            return
        kind = UnknownFormat if field in ("magic", "version") else DamagedFile
        self.first = kind(offset, record, field, reason)


class Cursor:
    """A place in the bytes, and the records that it is in.

    Every reading function takes the name of the field for faults. A field that is not there raises
    Unreadable.
    """

    def __init__(self, data: bytes, faults: Faults) -> None:
        self.data = data
        self.faults = faults
        self.offset = 0
        self.end = len(data)  # of the innermost record
        self.path: List[str] = []

    def left(self) -> int:
        return self.end - self.offset

    def report(self, field: str, offset: int, reason: str) -> None:
        self.faults.report(offset, ", ".join(self.path), field, reason)

    def fail(self, field: str, offset: int, reason: str) -> NoReturn:
        self.report(field, offset, reason)
        raise Unreadable

    def word(self, field: str) -> int:
        at = self.offset
        if at + WORD > self.end:
            self._fail_need(field, WORD)
        self.offset = at + WORD
        word: int = load_word(self.data, at)[0]
        return word

    def take(self, field: str, size: int) -> bytes:
        at = self.offset
        if at + size > self.end:
            self._fail_need(field, size)
        self.offset = at + size
        return self.data[at : at + size]

    def count(self, field: str, least_size: int) -> int:
        """How many things follow that take that many bytes each at least."""
        count = self.word(field)
        if count * least_size > self.left():
            self.fail(
                field,
                self.offset - WORD,
                f"the count {count} (0x{count:X}) is too large, bytes left: {self.left()}, "
                f"for each: {least_size}",
            )
        return count

    def record_end(self, field: str) -> int:
        """Reads a length; returns where what has the length ends."""
        at = self.offset
        begin = at + WORD
        if begin > self.end:
            self._fail_need(field, WORD)
        length: int = load_word(self.data, at)[0]
        if length > self.end - begin:
            self.fail(
                field,
                at,
                f"the length {length} (0x{length:X}) is too large, bytes left: {self.end - begin}",
            )
        self.offset = begin
        return begin + length

    def text(self, field: str) -> bytes:
        """A length, and that many bytes."""
        end = self.record_end(field)
        begin = self.offset
        self.offset = end
        return self.data[begin:end]

    def texts(self, field: str) -> Tuple[bytes, ...]:
        """A count, and that many texts."""
        return tuple([self.text(field) for _ in range(self.count(field, WORD))])

    def zeros(self, field: str, size: int) -> None:
        """Passes over bytes that must be zero."""
        if size == 0:
            return
        begin = self.offset
        rest = self.take(field, size).lstrip(b"\0")
        if rest:
            self.report(field, begin + size - len(rest), f"the byte 0x{rest[0]:02X} must be zero")

    def expect_end(self) -> None:
        """The record must be over."""
        if self.offset < self.end:
            self.report("end", self.offset, f"bytes left over: {self.left()}")

    def _fail_need(self, field: str, size: int) -> NoReturn:
        self.fail(field, self.offset, f"bytes needed: {size}, left: {self.left()}")


def read_header(cursor: Cursor, magic: bytes) -> int:
    """The beginning of both forms; returns the time of creation.

    The magic was looked at before.
    """
    cursor.path = ["header"]
    cursor.take("magic", len(magic))
    cursor.zeros("gap", VERSION_OFFSET - cursor.offset)
    version = cursor.word("version")
    if version != FORMAT_VERSION:
        reason = f"expected 0x{FORMAT_VERSION:08X}, found 0x{version:08X}"
        cursor.fail("version", VERSION_OFFSET, reason)
    created = cursor.word("creation time")
    cursor.zeros("gap", HEADER_END - cursor.offset)
    cursor.path = []
    return created
