"""A machine as its script says it: what a debug meta file keeps."""

import re
from typing import Dict, Iterator, Mapping, Optional, Tuple

from ruxmeta._debug_meta import DebugMetaFile
from ruxmeta._debug_records import DebugEntryRecord, DebugSectionRecord
from ruxmeta._keyed import KeyedEntries
from ruxmeta._language import KINDS, PAYLOAD_MASK, PAYLOAD_NUMBER, PAYLOAD_VALUE
from ruxmeta._lookup import SOURCE_ENTRIES, SOURCE_KEYWORDS, SOURCE_KINDS
from ruxmeta._views import Sections, bytes_of, text_of

# By kind and entry: the kind of the sections whose IDs the entry has.
_TARGETS = {
    (kind.keyword, row.entry): row.target for kind in KINDS for row in kind.templates if row.target
}


class DebugObject:
    """What sections and entries have in common."""

    machine: "DebugMachine"
    identifier: int  # as it is in the file
    notation: int  # the flag word
    line: int  # in the source file
    file_index: int  # which of the source files

    @property
    def file(self) -> Optional[str]:
        """The path of the source file, as the compile run named it; None: the file has no list."""
        files = self.machine.files
        return None if files is None else files[self.file_index]


class DebugEntry(DebugObject):
    """A key with its value as texts."""

    def __init__(self, section: "DebugSection", record: DebugEntryRecord) -> None:
        self.section = section
        self.machine = section.machine
        self.identifier = record.identifier
        self.notation = record.notation
        self.line = record.line
        self.file_index = record.file_index
        self.key = text_of(record.name)  # empty when the script does not give the entry
        self.given = record.payload_type != 0
        payload = record.payload_type & PAYLOAD_MASK
        # The number of a defined word, and the type of a value; None of others.
        self.number = record.number if payload == PAYLOAD_NUMBER else None
        self.type = record.value_type if payload == PAYLOAD_VALUE else None
        # The parts of the value by name: "Text", "Items", "Type", "Operand", ...
        self.parts: Mapping[str, Tuple[str, ...]] = {
            field.name: tuple([text_of(text) for text in field.texts]) for field in record.fields
        }

    @property
    def keyword(self) -> str:
        """What the identifier means; empty for names of the script's own."""
        return SOURCE_KEYWORDS[self.identifier]

    @property
    def texts(self) -> Tuple[str, ...]:
        """All parts of the value, in order."""
        return tuple([text for part in self.parts.values() for text in part])

    @property
    def text(self) -> str:
        """The first of them; empty without any."""
        return next(iter(self.texts), "")

    def target_of(self, text: str) -> Optional["DebugSection"]:
        """The section whose ID one of the texts is; None: the entry has no IDs of others."""
        target = _TARGETS.get((self.section.kind, self.identifier))
        number = self.machine.number(text)
        if target is None or number is None:
            return None
        return self.machine.by_name(target).by_id.get(number)

    def __repr__(self) -> str:
        return f"<{self.key or self.keyword} = {', '.join(self.texts)!r}, line {self.line}>"


class DebugSection(DebugObject, KeyedEntries[DebugEntry]):
    """The entries that a section gives, by key; of several with the same key, the first."""

    def __init__(self, machine: "DebugMachine", record: DebugSectionRecord) -> None:
        self.machine = machine
        self.identifier = record.identifier
        self.notation = record.notation
        self.line = record.line
        self.file_index = record.file_index
        self.kind = SOURCE_KINDS[record.identifier].keyword
        self.ordinal = record.ordinal  # among the sections of its kind
        self._record = record

    @property
    def entries(self) -> Tuple[DebugEntry, ...]:
        """All entries in the order of the file, with those that the script does not give."""
        records = self.machine.records.entries(self._record)
        return tuple(DebugEntry(self, record) for record in records)

    @property
    def name(self) -> Optional[str]:
        """The text of its NAME; None in sections without one."""
        return self._text_of(SOURCE_ENTRIES["NAME"])

    @property
    def id(self) -> Optional[int]:
        """The number that its ID is; None in sections without one."""
        text = self._text_of(SOURCE_ENTRIES["ID"])
        return None if text is None else self.machine.number(text)

    def __repr__(self) -> str:
        return f"<{self.kind} {self.ordinal if self.name is None else self.name}, line {self.line}>"

    def _listed(self) -> Iterator[DebugEntry]:
        return (entry for entry in self.entries if entry.given)

    def _text_of(self, identifier: int) -> Optional[str]:
        for record in self.machine.records.entries(self._record):
            if record.identifier == identifier and record.payload_type:
                return text_of(record.fields[0].texts[0])
        return None


class DebugMachine:
    """All sections of a script, with their lines.

    Nothing changes it, and any number of threads may read it.
    """

    def __init__(self, records: DebugMetaFile) -> None:
        self.records = records
        self._kinds: Dict[str, Tuple[DebugSection, ...]] = {}
        for block in records.kinds:
            sections = tuple([DebugSection(self, record) for record in block])
            if sections:
                self._kinds[sections[0].kind] = sections
        self._by_name: Dict[str, Sections[DebugSection]] = {}
        self._words: Optional[Dict[str, int]] = None

    @property
    def created(self) -> int:
        """When the file was written: seconds since 1970-01-01 UTC, the low 32 bits."""
        return self.records.created

    @property
    def files(self) -> Optional[Tuple[str, ...]]:
        """The source files; None in a file that does not list them."""
        files = self.records.files
        return None if files is None else tuple([text_of(path) for path in files])

    @property
    def words(self) -> Mapping[str, int]:
        """The defined words, in the order of their bytes."""
        if self._words is None:
            self._words = {text_of(name): value for name, value in self.records.words}
        return self._words

    @property
    def sections(self) -> Tuple[DebugSection, ...]:
        """All sections in the order of the file."""
        return tuple([section for kind in self._kinds.values() for section in kind])

    @property
    def sensors(self) -> Sections[DebugSection]:
        return self.by_name("SENSOR")

    def of_kind(self, keyword: str) -> Tuple[DebugSection, ...]:
        """The sections of a kind, by its keyword: "SENSOR"."""
        if all(kind.keyword != keyword for kind in KINDS):
            raise KeyError(keyword)
        return self._kinds.get(keyword, ())

    def by_name(self, keyword: str) -> Sections[DebugSection]:
        """The same by name."""
        if keyword not in self._by_name:
            self._by_name.setdefault(keyword, Sections(self.of_kind(keyword)))
        return self._by_name[keyword]

    def number(self, text: str) -> Optional[int]:
        """What a text means as a number: a defined word or digits; None when it means none."""
        word = self.words.get(text)
        return _read_number(text) if word is None else word

    def __repr__(self) -> str:
        return f"<DebugMachine: {len(self.records.words)} words, {len(self.sections)} sections>"


_NUMBER = re.compile(r"0[xX](?P<hex>[0-9a-fA-F]*)|[\t-\r ]*(?P<sign>[-+]?)(?P<digits>[0-9]*)")
_LONGEST_NUMBER = 10


def _read_number(text: str) -> Optional[int]:
    """The number syntax of scripts. What follows the digits is ignored.

    A zero counts only where it is the first character of the text, or the first after "0x".
    """
    found = _NUMBER.match(text)
    if found is None or len(bytes_of(text)) > _LONGEST_NUMBER:
        return None
    if found["hex"] is not None:
        number = int(found["hex"] or "0", 16)
        return number if number or text[2:3] == "0" else None
    number = int(found["digits"] or "0")
    if found["sign"] == "-":
        number = -number
    return number & 0xFFFFFFFF if number or text[:1] == "0" else None
