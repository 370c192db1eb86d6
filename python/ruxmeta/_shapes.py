"""Sections that are like one that was found right, but for their numbers and texts.

Most sections of a machine are, so it pays to check all words of a section at once: as one number.
"""

import sys
from array import array
from typing import Dict, List, NamedTuple, Tuple

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

# What is kept of sections with as many entries, so that none takes much longer than others.
_MOST_SHAPES = 32
_MOST_WORDS = 512


class Other(NamedTuple):
    """An entry with other values than one number or text."""

    content: str
    ordinal: int
    at: int  # where in the words of the section


class Shape(NamedTuple):
    """What alike sections have in common: the words of one, as a number."""

    expected: int  # under the mask
    room: int  # of indices: what added to one after the last index is out of the class
    looked_at: Tuple[Other, ...]  # entries that refer to something: not compared


class Layout:
    """Where in sections the words are that alike ones have in common."""

    def __init__(self, size: int, mask: int) -> None:
        self.size = size  # words
        self.mask = mask  # all bits of words that are the same, the class of indices, none of others
        self.shapes: Dict[int, Shape] = {}  # by what is expected


class Shapes:
    def __init__(self, words: "array[int]", tables: MetaTables) -> None:
        self._words = words
        self._tables = tables
        self._layouts: Dict[Tuple[int, int], List[Layout]] = {}  # by kind and count of entries

    def find(self, begin: int) -> Tuple[int, Tuple[Other, ...]]:
        """Of the section that begins at that word: how many words it has, and what is not compared.

        No words when it is not like an earlier one.
        """
        words = self._words
        for layout in self._layouts.get((words[begin], words[begin + 1]), ()):
            end = begin + layout.size
            if end > len(words):
                continue
            # The words in common first, then the indices: one too large carries into its class.
            number = _number_of(words[begin:end])
            shape = layout.shapes.get(number & layout.mask)
            if shape is not None and number + shape.room & layout.mask == shape.expected:
                return layout.size, shape.looked_at
        return 0, ()

    def add(self, begin: int, end: int, entries: List[int], others: List[Other]) -> None:
        """That of a section that is right."""
        words = self._words
        layouts = self._layouts.setdefault((words[begin], words[begin + 1]), [])
        count = sum(len(layout.shapes) for layout in layouts)
        if count == _MOST_SHAPES or end - begin > _MOST_WORDS:
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
        layout = _layout_of(_number_of(mask), len(mask), layouts)
        expected = _number_of(words[begin:end]) & layout.mask
        layout.shapes[expected] = Shape(expected, _number_of(room), tuple(looked_at))

    def _is_plain(self, entry: Other, begin: int) -> bool:
        """Whether it is a value that refers to nothing. Its numbers may be other ones."""
        first = begin + entry.at + 2
        words = self._words[first : first + self._words[first - 1]]
        return entry.content == "typed value" and all(word & CLASS_MASK in _PLAIN for word in words)


def _layout_of(mask: int, size: int, layouts: List[Layout]) -> Layout:
    """The one that it is, which is added to the others."""
    for layout in layouts:
        if layout.mask == mask and layout.size == size:
            return layout
    layouts.append(Layout(size, mask))
    return layouts[-1]


def _number_of(words: "array[int]") -> int:
    return int.from_bytes(words.tobytes(), sys.byteorder)
