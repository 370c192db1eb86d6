"""The rows of _language.py by what they are looked up by."""

from typing import Dict

from ruxmeta._language import CLASSES, ENTRIES, KINDS, NO_RECORD, OPERATORS, VALUE_TYPES
from ruxmeta._rows import IndexClass, Kind, ValueType

# By identifier, in either file.
SOURCE_KINDS: Dict[int, Kind] = {kind.source: kind for kind in KINDS}
COMPILED_KINDS: Dict[int, Kind] = {kind.compiled: kind for kind in KINDS if kind.compiled}
SOURCE_KEYWORDS: Dict[int, str] = {row.source: row.keyword for row in ENTRIES}
COMPILED_KEYWORDS: Dict[int, str] = {row.compiled: row.keyword for row in ENTRIES if row.compiled}

# The identifiers of entries by name.
SOURCE_ENTRIES: Dict[str, int] = {row.name: row.source for row in ENTRIES}
COMPILED_ENTRIES: Dict[str, int] = {row.name: row.compiled for row in ENTRIES if row.compiled}

CLASS_ROWS: Dict[int, IndexClass] = {row.base: row for row in CLASSES}
OPERATOR_CODES: Dict[bytes, int] = dict(OPERATORS)

_TYPES: Dict[int, ValueType] = {row.code: row for row in VALUE_TYPES}


def type_of(code: int) -> ValueType:
    """Codes without a row are legal: such values have no parts."""
    return _TYPES.get(code, NO_RECORD)
