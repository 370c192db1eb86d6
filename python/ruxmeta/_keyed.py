"""Entries by their keys: what sections of both files are."""

from typing import Dict, Iterable, Iterator, Mapping, Optional, Protocol, TypeVar


class _Keyed(Protocol):
    @property
    def key(self) -> str: ...


EntryType = TypeVar("EntryType", bound=_Keyed)


class KeyedEntries(Mapping[str, EntryType]):
    """Of several entries with the same key, the first. Equal only to itself."""

    _by_key: Optional[Dict[str, EntryType]] = None

    def _listed(self) -> Iterable[EntryType]:
        """The entries, in order."""
        raise NotImplementedError

    def _keys(self) -> Dict[str, EntryType]:
        if self._by_key is None:
            entries: Dict[str, EntryType] = {}
            for entry in self._listed():
                entries.setdefault(entry.key, entry)
            self._by_key = entries
        return self._by_key

    def __getitem__(self, key: str) -> EntryType:
        return self._keys()[key]

    def __iter__(self) -> Iterator[str]:
        return iter(self._keys())

    def __len__(self) -> int:
        return len(self._keys())

    def __eq__(self, other: object) -> bool:
        return self is other

    def __hash__(self) -> int:
        return id(self)
