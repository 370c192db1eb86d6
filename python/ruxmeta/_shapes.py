"""Sections that are like one that was found right, but for their numbers and texts.

Most sections of a machine are, so it pays to check all words of a section at once: as one number.
"""

import sys
from array import array
from typing import Dict, List, NamedTuple, Optional, Tuple

from ruxmeta._language import (
    CLASS_Dword,
    CLASS_Operator,
    CLASS_Small,
    CLASS_String,
    CLASS_ValueType,
    MOST_ORDINALS,
)
from ruxmeta._meta_tables import CLASS_MASK, MetaTables

_ALL_BITS = 0xFFFFFFFF
_OF_TABLES = (CLASS_Dword, CLASS_String)
_PLAIN = (CLASS_Dword, CLASS_Small, CLASS_ValueType, CLASS_Operator)

# What a section is compared with, so that none takes much longer than others.
_MOST_SHAPES = 16
_MOST_WORDS = 512


class Other(NamedTuple):
    """An entry with other values than one number or text."""

    content: str
    ordinal: int
    at: int  # where in the words of the section


class Shape(NamedTuple):
    """What all words of alike sections have in common, each as one number."""

    size: int  # words
    mask: int  # all bits of words that are the same, the class of indices, none of others
    expected: int  # under the mask
    room: int  # of indices: what added to one after the last index is out of the class
    looked_at: Tuple[Other, ...]  # entries that refer to something: not compared

    def fits(self, words: int) -> bool:
        mask, expected = self.mask, self.expected
        return words & mask == expected and words + self.room & mask == expected


class Shapes:
    def __init__(self, words: "array[int]", tables: MetaTables) -> None:
        self._words = words
        self._tables = tables
        self._shapes: Dict[Tuple[int, int], List[Shape]] = {}  # by kind and count of entries

    def find(self, begin: int) -> Optional[Shape]:
        """That of the section that begins at that word."""
        words = self._words
        for shape in self._shapes.get((words[begin], words[begin + 1]), ()):
            end = begin + shape.size
            if end <= len(words) and shape.fits(_number_of(words[begin:end])):
                return shape
        return None

    def add(self, begin: int, end: int, entries: List[int], others: List[Other]) -> None:
        """That of a section that is right."""
        words = self._words
        alike = self._shapes.setdefault((words[begin], words[begin + 1]), [])
        if len(alike) == _MOST_SHAPES or end - begin > _MOST_WORDS:
            return
        mask = array("I", [_ALL_BITS]) * (end - begin)
        room = array("I", [0]) * (end - begin)
        for at in entries:
            for i in range(at + 2, at + 2 + words[at + 1]):
                base = words[i] & CLASS_MASK
                if base in _OF_TABLES:
                    mask[i - begin] = CLASS_MASK
                    room[i - begin] = MOST_ORDINALS - len(self._tables.indices(base))
        looked_at = [other for other in others if not self._is_plain(other, begin)]
        for other in looked_at:
            for i in range(other.at + 2, other.at + 2 + words[begin + other.at + 1]):
                mask[i] = room[i] = 0
        number = _number_of(mask)
        expected = _number_of(words[begin:end]) & number
        alike.append(Shape(len(mask), number, expected, _number_of(room), tuple(looked_at)))

    def _is_plain(self, entry: Other, begin: int) -> bool:
        """Whether it is a value that refers to nothing. Its numbers may be other ones."""
        first = begin + entry.at + 2
        words = self._words[first : first + self._words[first - 1]]
        return entry.content == "typed value" and all(word & CLASS_MASK in _PLAIN for word in words)


def _number_of(words: "array[int]") -> int:
    return int.from_bytes(words.tobytes(), sys.byteorder)
