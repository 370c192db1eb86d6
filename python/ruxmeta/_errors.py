"""What this package raises."""

from typing import Optional


class Error(Exception):
    """Why a file cannot be used; the base of all errors of this package."""

    path: Optional[str] = None  # of the file, when it was opened by its path

    def __str__(self) -> str:
        text = super().__str__()
        return text if self.path is None else f"{self.path}: {text}"


class DamagedFile(Error):
    """The bytes are not those of a sound file: where, and why."""

    def __init__(self, offset: int, record: str, field: str, reason: str) -> None:
        super().__init__(offset, record, field, reason)
        self.offset = offset  # of the field, from the beginning of the file
        self.record = record  # that the field is in: "table 3"
        self.field = field
        self.reason = reason

    def __str__(self) -> str:
        text = f"offset 0x{self.offset:X}, {self.record}, {self.field}: {self.reason}"
        return text if self.path is None else f"{self.path}: {text}"


class UnknownFormat(DamagedFile):
    """The file is neither a meta file nor a debug meta file, or has another version."""


class WrongForm(Error):
    """The file is a debug meta file where a meta file was expected, or the other way round."""


class NotRegular(Error):
    """The path leads to a folder, a pipe or a device."""


class TooLarge(Error):
    """The file is larger than any compiled file."""
