"""Opening compiled files."""

import os
import stat
from typing import Callable, TypeVar, Union

from ruxmeta._debug_machine import DebugMachine
from ruxmeta._debug_meta import DebugMetaFile
from ruxmeta._errors import Error, NotRegular, TooLarge, UnknownFormat, WrongForm
from ruxmeta._language import DEBUG_META_MAGIC, META_MAGIC, MOST_FILE_BYTES
from ruxmeta._machine import Machine
from ruxmeta._meta import MetaFile

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]

_Loaded = TypeVar("_Loaded")


def load(data: bytes) -> Machine:
    """The machine of the bytes of a meta file. Raises an Error."""
    if data.startswith(DEBUG_META_MAGIC):
        raise WrongForm("it is a debug meta file; open_debug() and load_debug() read it")
    _expect_form(data, META_MAGIC)
    return Machine(MetaFile(bytes(data)))


def load_debug(data: bytes) -> DebugMachine:
    """The machine of the bytes of a debug meta file. Raises an Error."""
    if data.startswith(META_MAGIC):
        raise WrongForm("it is a meta file; open() and load() read it")
    _expect_form(data, DEBUG_META_MAGIC)
    return DebugMachine(DebugMetaFile(bytes(data)))


def open(path: Path) -> Machine:
    """The machine of a meta file. Raises an Error, or an OSError."""
    return _opened(path, load)


def open_debug(path: Path) -> DebugMachine:
    """The machine of a debug meta file. Raises an Error, or an OSError."""
    return _opened(path, load_debug)


def _expect_form(data: bytes, magic: bytes) -> None:
    _expect_size(len(data))
    if not data.startswith(magic):
        reason = "it is neither a meta file nor a debug meta file"
        raise UnknownFormat(0, "header", "magic", reason)


def _expect_size(size: int) -> None:
    if size > MOST_FILE_BYTES:
        raise TooLarge(f"it is larger than {MOST_FILE_BYTES >> 20} MiB")


def _opened(path: Path, loaded: Callable[[bytes], _Loaded]) -> _Loaded:
    try:
        return loaded(_read(path))
    except Error as error:
        error.path = os.fsdecode(path)
        raise


def _read(path: Path) -> bytes:
    # A pipe would wait for a writer. Systems without such pipes lack the flag.
    flags = os.O_RDONLY | getattr(os, "O_NONBLOCK", 0) | getattr(os, "O_BINARY", 0)
    descriptor = os.open(path, flags)
    try:
        status = os.fstat(descriptor)
        if not stat.S_ISREG(status.st_mode):
            raise NotRegular("it is not a regular file")
        _expect_size(status.st_size)
        with os.fdopen(descriptor, "rb", closefd=False) as file:
            return file.read()
    finally:
        os.close(descriptor)
