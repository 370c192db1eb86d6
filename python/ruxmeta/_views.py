"""Sections by their names and IDs, and texts as Python has them."""

from typing import Dict, Iterator, Mapping, Optional, Protocol, Sequence, Tuple, TypeVar


class _Found(Protocol):
    """What can be found."""

    @property
    def name(self) -> Optional[str]: ...

    @property
    def id(self) -> Optional[int]: ...


Found = TypeVar("Found", bound=_Found)
_Key = TypeVar("_Key", str, int)


class Sections(Mapping[str, Found]):
    """The sections of a kind by name, in the order of the file."""

    def __init__(self, sections: Sequence[Found]) -> None:
        self._sections = tuple(sections)
        self._by_name: Optional[Dict[str, Found]] = None
        self._by_id: Optional[Dict[int, Found]] = None

    @property
    def all(self) -> Tuple[Found, ...]:
        """By ordinal."""
        return self._sections

    @property
    def by_id(self) -> Mapping[int, Found]:
        """By ID; of several with the same, the first."""
        if self._by_id is None:
            self._by_id = _first_by((section.id, section) for section in self._sections)
        return self._by_id

    def __getitem__(self, name: str) -> Found:
        return self._names()[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._names())

    def __len__(self) -> int:
        return len(self._names())

    def __repr__(self) -> str:
        return f"<{len(self._sections)} sections>"

    def _names(self) -> Dict[str, Found]:
        if self._by_name is None:
            self._by_name = _first_by((section.name, section) for section in self._sections)
        return self._by_name


def _first_by(pairs: Iterator[Tuple[Optional[_Key], Found]]) -> Dict[_Key, Found]:
    """The first section with each key."""
    found: Dict[_Key, Found] = {}
    for key, section in pairs:
        if key is not None:
            found.setdefault(key, section)
    return found


def text_of(data: bytes) -> str:
    """Bytes that are not UTF-8 become surrogates: bytes_of() has the same bytes again."""
    return data.decode("utf-8", "surrogateescape")


def bytes_of(text: str) -> bytes:
    """The bytes of a text as they are in the file."""
    return text.encode("utf-8", "surrogateescape")
