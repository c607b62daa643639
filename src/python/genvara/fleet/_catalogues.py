"""The catalogues that a worker has been sent, each opened once, by the hash of its file."""

from __future__ import annotations

import dataclasses
import hashlib
import os
import pathlib
import tempfile
import threading

import genvara


@dataclasses.dataclass(frozen=True)
class _Sent:
    file: pathlib.Path
    catalogue: genvara.Catalogue
    state: tuple[int, int, int]


_sent: dict[str, _Sent] = {}
_guard = threading.Lock()


def digest_of(content: bytes) -> str:
    return hashlib.sha256(content).hexdigest()


def _state_of(file: pathlib.Path) -> tuple[int, int, int]:
    state = os.stat(file)
    return state.st_ino, state.st_size, state.st_mtime_ns


def _differs(sent: _Sent, digest: str) -> bool:
    """Whether the file is no longer what was sent. It is read again only if it was touched."""
    try:
        return _state_of(sent.file) != sent.state and digest_of(sent.file.read_bytes()) != digest
    except OSError:
        return True


def take(content: bytes, folder: str) -> None:
    """Keeps a catalogue as a file of a folder, and opens it, unless it is there already."""
    digest = digest_of(content)
    file = pathlib.Path(folder, f"genvara-{digest}.db")
    with _guard:
        known = _sent.get(digest)
        if known is not None and not _differs(known, digest):
            return
        handle, temporary = tempfile.mkstemp(dir=folder)
        with os.fdopen(handle, "wb") as output:
            output.write(content)
        os.replace(temporary, file)
        _sent[digest] = _Sent(file, genvara.Catalogue(file), _state_of(file))


def of(digest: str) -> genvara.Catalogue:
    """The catalogue of a hash. Raises RaisedError if none was sent, or if its file is another by now."""
    with _guard:
        sent = _sent.get(digest)
        if sent is None:
            raise genvara.RaisedError(0, "genvara.fleet", "This worker has not been sent the catalogue of the study.")
        if _differs(sent, digest):
            raise genvara.RaisedError(0, "genvara.fleet", f"{sent.file} is not the catalogue of the study any more.")
        return sent.catalogue
