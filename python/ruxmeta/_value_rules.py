"""What the values of the entries of a meta file must be."""

from array import array
from typing import Callable, Dict, List, Optional, Set, Tuple

from ruxmeta._cursor import Faults
from ruxmeta._language import (
    ANY_NUMBER,
    CLASS_Action,
    CLASS_Dword,
    CLASS_Global,
    CLASS_Group,
    CLASS_Operator,
    CLASS_Small,
    CLASS_String,
    CLASS_TableName,
    CLASS_Value,
    CLASS_ValueType,
    COMPARISON,
    FIRST_COMPARISON,
    MOST_ORDINALS,
)
from ruxmeta._lookup import CLASS_ROWS, OPERATOR_CODES, type_of
from ruxmeta._meta_references import MetaReferences, Place
from ruxmeta._meta_tables import CLASS_MASK, ORDINAL_MASK, MetaTables
from ruxmeta._rows import Kind, ValueType

_OPERATORS = frozenset(OPERATOR_CODES.values())


class ValueRules:
    """Judges one entry after the other.

    Where the compiler passes on what no check of the script looks at, anything goes: the arguments
    of a repeater, and operands of an action that has so many arguments that the number of one can
    run over into the class of its word.
    """

    def __init__(
        self, words: "array[int]", tables: MetaTables, references: MetaReferences, faults: Faults
    ) -> None:
        self._words = words
        self._tables = tables
        self._references = references
        self._faults = faults
        self._numbers = tables.indices(CLASS_Dword)
        self._checks: Dict[str, Callable[[int, int], None]] = {
            "number": self._check_number,
            "numbers": self._check_numbers,
            "text": self._check_filled_text,
            "any text": self._check_text,
            "name": self._check_name,
            "group name": self._define_group,
            "action name": self._define_action,
            "parent": self._check_parent,
            "typed value": self._check_typed_value,
            "repetition": self._check_repetition,
        }

    def begin_section(self, kind: Kind, ordinal: int) -> None:
        self._kind = kind
        self._section = ordinal
        self._is_action = kind.keyword == CLASS_ROWS[CLASS_Action].named_by
        self._has_argument_number = False
        self._operands_are_any = False
        self._parent = 0
        self._parent_place: Optional[Place] = None
        self._local_values: Set[int] = set()
        self._mentions: List[Tuple[int, Place]] = []

    def check(self, content: str, entry: int, at: int) -> None:
        """The values of an entry, which begins at that word."""
        self._entry = entry
        count = self._words[at + 1]
        if content not in ("numbers", "typed value", "repetition") and count != 1:
            return self._report_count(at, 1, 1)
        return self._checks[content](at + 2, count)

    def take_argument_number(self, at: int) -> None:
        """The entry says how many arguments the action has."""
        self._has_argument_number = True
        self._operands_are_any = self._tables.number(self._words[at + 2]) >= MOST_ORDINALS

    def add_local_value(self, identifier: int) -> None:
        """The section has an entry of that name, for its other values to mention."""
        if identifier & CLASS_MASK == CLASS_Value:
            self._local_values.add(identifier)

    def end_section(self) -> None:
        """Where a section mentions a value, it has it."""
        for word, place in self._mentions:
            if word not in self._local_values:
                reason = f"it is value {word & ORDINAL_MASK}, which the section does not have"
                place.report(self._faults, "value", reason)

    def _place(self, at: int) -> Place:
        return Place(self._section, self._entry, at)

    def _report(self, at: int, reason: str) -> None:
        self._place(at).report(self._faults, "value", reason)

    def _report_count(self, at: int, least: int, most: int) -> None:
        expected = str(least)
        if most == ANY_NUMBER:
            expected += " or more"
        elif most != least:
            expected += f" to {most}"
        reason = f"expected {expected}, found {self._words[at + 1]}"
        self._place(at + 1).report(self._faults, "value count", reason)

    def _has(self, at: int, base: int) -> bool:
        """Whether the word is an index of that class; reports otherwise."""
        word = self._words[at]
        if word in self._tables.indices(base):
            return True
        self._report(at, self._tables.reason_against(word, base))
        return False

    def _check_number(self, at: int, count: int) -> None:
        self._has(at, CLASS_Dword)

    def _check_numbers(self, at: int, count: int) -> None:
        for i in range(at, at + count):
            self._has(i, CLASS_Dword)

    def _check_text(self, at: int, count: int) -> None:
        self._has(at, CLASS_String)

    def _check_filled_text(self, at: int, count: int) -> None:
        if self._has(at, CLASS_String) and not self._tables.text(self._words[at]):
            self._report(at, "the text is empty")

    def _check_name(self, at: int, count: int) -> None:
        self._check_filled_text(at, count)
        word = self._words[at]
        if word not in self._tables.indices(CLASS_String):
            return
        if not self._references.name_section(self._kind, word):
            self._report(at, "an earlier section of this kind has the same name")

    def _define_group(self, at: int, count: int) -> None:
        if self._define(at, CLASS_Group) and self._parent_place is not None:
            self._references.set_parent(self._words[at], self._parent, self._parent_place)

    def _define_action(self, at: int, count: int) -> None:
        self._define(at, CLASS_Action)

    def _define(self, at: int, base: int) -> bool:
        if not self._has(at, base):
            return False
        if self._references.define(self._words[at]):
            return True
        self._report(at, "an earlier section of this kind has the same name")
        return False

    def _check_parent(self, at: int, count: int) -> None:
        if not self._has(at, CLASS_Group):
            return
        self._parent = self._words[at]
        self._parent_place = self._place(at)
        # Groups may be at the root; a sensor is in a group.
        is_group = self._kind.keyword == CLASS_ROWS[CLASS_Group].named_by
        if not is_group or self._parent != CLASS_Group:
            self._references.use(self._parent, self._parent_place)

    def _use(self, at: int, base: int) -> None:
        if self._has(at, base):
            self._references.use(self._words[at], self._place(at))

    def _check_typed_value(self, at: int, count: int) -> None:
        if count == 0:
            return self._report_count(at - 2, 1, ANY_NUMBER)
        word = self._words[at]
        if word & CLASS_MASK != CLASS_ValueType:
            # The code of a type that no value has a record for may run over into the class.
            if count > 1:
                self._has(at, CLASS_ValueType)
            return None
        kind = type_of(word & ORDINAL_MASK)
        sized = kind
        if kind.code == COMPARISON.code:
            code = self._words[at + 1] & ORDINAL_MASK if count > 1 else FIRST_COMPARISON
            sized = COMPARISON if code >= FIRST_COMPARISON else kind
        if not sized.least <= count <= sized.most:
            return self._report_count(at - 2, sized.least, sized.most)
        return self._check_parts(kind, at, count)

    def _check_parts(self, kind: ValueType, at: int, count: int) -> None:
        has_list = bool(kind.fields) and kind.fields[-1].is_list
        texts = len(kind.fields) - has_list
        last_argument = count - 1 - texts if kind.forwards_arguments else 0
        for i in range(1, count):
            if i <= texts or has_list:
                self._check_part(kind.fields[min(i - 1, texts)].role, at + i, last_argument)

    def _check_part(self, role: str, at: int, last_argument: int) -> None:
        if role == "operand":
            if self._words[at] not in self._numbers:
                self._check_operand(at, last_argument)
        elif role == "number":
            self._has(at, CLASS_Dword)
        elif role == "value":
            # A defined word may have such a name, too.
            if self._words[at] & CLASS_MASK == CLASS_Dword and self._is_action:
                self._has(at, CLASS_Dword)
            else:
                self._use_local_value(at)
        elif role == "action":
            self._use(at, CLASS_Action)
        elif role == "table":
            self._use(at, CLASS_TableName)
        elif role == "operator":
            word = self._words[at]
            is_operator = word & CLASS_MASK == CLASS_Operator
            if not is_operator or word & ORDINAL_MASK not in _OPERATORS:
                self._report(at, f"0x{word:08X} is not an operator")

    def _check_operand(self, at: int, last_argument: int) -> None:
        if self._operands_are_any:
            return
        word = self._words[at]
        base = word & CLASS_MASK
        if base == CLASS_Dword:
            self._has(at, CLASS_Dword)
        elif base == CLASS_Global:
            self._use(at, CLASS_Global)
        elif base == CLASS_Value:
            self._use_local_value(at)
        elif base != CLASS_Small:
            self._report(at, f"0x{word:08X} is not an operand")
        elif not self._has_argument_number and word & ORDINAL_MASK > last_argument:
            reason = f"it is argument {word & ORDINAL_MASK}, but the last one is {last_argument}"
            self._report(at, reason)

    def _use_local_value(self, at: int) -> None:
        """Only actions have values for their other values to mention."""
        word = self._words[at]
        if not self._is_action:
            self._report(at, f"0x{word:08X} is not an operand")
        elif self._has(at, CLASS_Value):
            self._mentions.append((word, self._place(at)))

    def _check_repetition(self, at: int, count: int) -> None:
        # A count that is not a plain number leaves the entry without values.
        if count == 0:
            return
        if count < 2:
            return self._report_count(at - 2, 2, ANY_NUMBER)
        self._has(at, CLASS_Dword)
        self._use(at + 1, CLASS_Action)
