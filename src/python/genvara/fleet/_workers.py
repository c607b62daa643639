# mypy: allow-untyped-calls, allow-subclassing-any
"""What is told to the workers of a client; the one module that needs Dask's distributed scheduler."""

from __future__ import annotations

import itertools
import weakref
from collections.abc import Callable, Iterable, Iterator
from typing import Any

from distributed import Client, Worker, WorkerPlugin, as_completed

import genvara

from . import _catalogues


class CataloguePlugin(WorkerPlugin):
    """Gives each worker the catalogue of a study, those that come later too."""

    def __init__(self, content: bytes, version: str) -> None:
        self.name = f"genvara-{_catalogues.digest_of(content)}"
        self._content = content
        self._version = version

    def setup(self, worker: Worker) -> None:
        if genvara.__version__ != self._version:
            raise RuntimeError(f"the worker {worker.address} has version {genvara.__version__} of genvara, and not {self._version}")
        _catalogues.take(self._content, worker.local_directory)


#: Hashes of the catalogues that the workers of a client have been sent.
_sent: weakref.WeakKeyDictionary[Any, set[str]] = weakref.WeakKeyDictionary()


def _send(client: Client, content: bytes, digest: str) -> None:
    known = _sent.setdefault(client, set())
    if digest not in known:
        plugin = CataloguePlugin(content, genvara.__version__)
        client.register_worker_plugin(plugin, name=plugin.name)
        known.add(digest)


def _done(work: Callable[..., Any], digest: str, piece: Any) -> Any:
    return work(_catalogues.of(digest), piece)


def by_workers(client: Client, work: Callable[..., Any], pieces: Iterable[tuple[int, Any]], content: bytes,
               retries: int) -> Iterator[tuple[int, Any]]:
    """Numbers of pieces with what they came to, as they end. A few more are under way than there are threads to work on them,
    so that nobody waits for the client, and no results pile up."""
    digest = _catalogues.digest_of(content)
    _send(client, content, digest)
    waiting = iter(pieces)
    numbers: dict[Any, int] = {}

    def submit(count: int) -> list[Any]:
        futures = []
        for number, piece in itertools.islice(waiting, count):
            future = client.submit(_done, work, digest, piece, pure=False, retries=retries)
            numbers[future] = number
            futures.append(future)
        return futures

    def wanted() -> int:
        threads: int = sum(client.nthreads().values())
        return max(4, 2 * threads) - len(numbers)

    ended = as_completed(submit(wanted()), loop=client.loop)
    try:
        for future in ended:
            number = numbers.pop(future)
            try:
                result = future.result()
            except BaseException as failure:
                failure.add_note(f"This was piece {number} of the study.")
                raise
            ended.update(submit(wanted()))
            yield number, result
    finally:
        client.cancel(list(numbers))
