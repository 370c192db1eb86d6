"""What the words of a meta file refer to."""

from typing import Dict, NamedTuple, Optional, Union

from ruxmeta._language import (
    CLASS_Operator,
    CLASS_Property,
    CLASS_Repeater,
    CLASS_Small,
    CLASS_Value,
    CLASS_ValueType,
    PLAIN_VALUE,
)
from ruxmeta._lookup import CLASS_ROWS, OPERATOR_CODES
from ruxmeta._meta_tables import CLASS_MASK, ORDINAL_MASK, MetaTables
from ruxmeta._views import text_of

_OPERATORS: Dict[int, str] = {code: text.decode() for text, code in OPERATOR_CODES.items()}


class Value(NamedTuple):
    """A number, a text, or a name that an entry refers to."""

    kind: str  # "number", "string", "group", "action", "global", "type", ..., or "unresolved"
    value: Union[int, str, None]  # names as a script writes them
    word: int  # as it is in the file

    @property
    def number(self) -> Optional[int]:
        """None unless it is a number, the number of an argument or a type."""
        return self.value if isinstance(self.value, int) else None

    @property
    def signed(self) -> Optional[int]:
        """The same with a sign: a -20 of the script is 0xFFFFFFEC in the file."""
        number = self.number
        return number if number is None or number < 1 << 31 else number - (1 << 32)


def value_of(tables: MetaTables, word: int) -> Value:
    base = word & CLASS_MASK
    ordinal = word & ORDINAL_MASK
    row = CLASS_ROWS.get(base)
    if row is None:
        return Value("unresolved", None, word)
    if base in (CLASS_Small, CLASS_ValueType):
        return Value(row.title, ordinal, word)
    if base == CLASS_Operator:
        return Value(row.title, _OPERATORS.get(ordinal, f"(operator {ordinal})"), word)
    table = tables.by_class[base]
    if ordinal < len(table.numbers):
        return Value(row.title, table.numbers[ordinal], word)
    if ordinal >= len(table.texts):
        return Value("unresolved", None, word)
    name = text_of(table.texts[ordinal])
    kind = "name" if base in (CLASS_Property, CLASS_Repeater) else row.title
    is_plain = base == CLASS_Value and not name
    return Value(kind, PLAIN_VALUE if is_plain else row.prefix + name, word)
