"""Does a study piece by piece, here or by workers."""

from __future__ import annotations

import pathlib
import sys
from collections.abc import Callable, Iterator, Sequence
from typing import Any

import genvara

from . import _catalogues
from ._store import Store

Progress = Callable[[int, int], None]
#: Sizings of a piece, at least and at most: large enough that who hands the pieces out is never the limit, small enough that little is
#: lost with a worker.
LEAST, MOST = 2_000, 10_000
#: Pieces of a study that is large enough for both.
PIECES = 16


def show(done: int, total: int) -> None:
    """Progress on standard error, if somebody is there to read it."""
    if sys.stderr.isatty():
        print(f"\r{done} of {total} pieces", end="\n" if done == total else "", file=sys.stderr, flush=True)


def sizings_of(piece: int | None, total: int) -> int:
    """Sizings of each piece of a study: those that are asked for, or what suits the study."""
    if piece is None:
        return min(max(-(-total // PIECES), LEAST), MOST)
    if isinstance(piece, bool) or not isinstance(piece, int) or piece < 1:
        raise ValueError("a piece has a number of sizings, at least 1")
    return piece


def content_of(catalogue: genvara.Catalogue) -> bytes:
    return pathlib.Path(catalogue.file).read_bytes()


def work_through(store: Store, work: Callable[[genvara.Catalogue, Any], tuple[Any, Any]], pieces: Sequence[Any],
                 catalogue: genvara.Catalogue, client: Any, retries: int, progress: Progress | None) -> None:
    """Does the pieces that the store lacks.

    `work` answers with rows and tallies. A piece that fails ends the study; those that ended before it stay in the store.
    """
    show_ = show if progress is None else progress
    done = store.done()
    left = [(number, piece) for number, piece in enumerate(pieces) if number not in done]
    results: Iterator[tuple[int, tuple[Any, Any]]]
    if not left:
        return
    if client is None:
        results = ((number, work(catalogue, piece)) for number, piece in left)
    else:
        from ._workers import by_workers

        results = by_workers(client, work, left, content_of(catalogue), retries)
    ended = len(done)
    try:
        for number, (rows, tallies) in results:
            store.add(number, rows, tallies)
            ended += 1
            show_(ended, len(pieces))
    except BaseException as failure:
        if store.file is not None:
            failure.add_note(f"{store.file} has {ended} of {len(pieces)} pieces; resume=True goes on from there.")
        raise
    finally:
        if client is not None:
            results.close()  # type: ignore[attr-defined]  # a generator
