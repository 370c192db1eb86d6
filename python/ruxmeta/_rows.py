"""The types of the rows in _language.py."""

from typing import NamedTuple, Tuple


class Template(NamedTuple):
    """An entry that the sections of a kind have a place for."""

    entry: int  # its identifier in debug meta files
    notation: int
    compiled: int  # its identifier in meta files
    content: str  # of its values in meta files
    target: str  # the kind of the sections whose IDs it has; or empty


class FreeEntry(NamedTuple):
    """Entries with names of the script's own."""

    entry: int
    notation: int
    table: int  # the class of their identifiers in meta files; or 0
    content: str


class Kind(NamedTuple):
    """A kind of sections."""

    keyword: str
    source: int  # its identifier in debug meta files
    compiled: int  # its identifier in meta files; 0: they have no such sections
    notation: int
    uniqueness: str
    templates: Tuple[Template, ...]
    free_entries: Tuple[FreeEntry, ...]


class EntryRow(NamedTuple):
    """A keyword of entries."""

    name: str
    keyword: str  # empty for names of the script's own
    source: int
    compiled: int  # 0: the identifier is an index of its name, or there is none
    form: str  # of the script's own names
    is_limit: bool


class IndexClass(NamedTuple):
    """What words of one class refer to."""

    base: int
    title: str
    prefix: str  # before its name in a script
    fixed_keys: Tuple[bytes, ...]  # that its table begins with
    named_by: str  # the kind of sections whose names are in its table; or empty


class Field(NamedTuple):
    """A part of a value."""

    name: str
    is_list: bool
    role: str  # what it is: an operand, a number, the name of an action, ...


class ValueType(NamedTuple):
    """A type of values."""

    code: int
    least: int  # parts, the type included
    most: int
    forwards_arguments: bool
    fields: Tuple[Field, ...]  # texts, then at most one list


class SelectorRow(NamedTuple):
    """A part of the values of a type in a meta file."""

    part: str
    type: int
    least: int  # values of the entry
    most: int
    code: int
    first: int  # the value that it picks
    last: int  # the last value that it and those after it pick
