"""Sizes many projects."""

from __future__ import annotations

import dataclasses
import hashlib
import os
from collections.abc import Iterable
from typing import Any

import genvara
from genvara import _core  # type: ignore[attr-defined]  # a library without stubs of its own

from . import _pieces
from ._catalogues import digest_of
from ._store import Path, Store, Table

#: Attributes of the first recommended set.
_OF_SET = ("model_num", "alt_num", "engine_num", "nominal_rating", "derated_rating", "max_step_volt_dip", "max_step_freq_dip",
           "max_step_vthd")
COLUMNS = ("number", "project", *_OF_SET, "num_recommended", "num_undersized", "total_running_kw", "peak_starting_kva",
           "skipped", "error_number", "error_source", "error")

_Item = tuple[str, Any]


@dataclasses.dataclass(frozen=True)
class _Sizes:
    """What a worker does with a piece: a number from which to count, and projects as a path or as the state of one in memory."""

    limits: dict[str, int]

    def __call__(self, catalogue: genvara.Catalogue, piece: tuple[int, list[_Item]]) -> tuple[list[tuple[Any, ...]], list[Any]]:
        first, items = piece
        return [(first + place, *self._row(catalogue, item)) for place, item in enumerate(items)], []

    def _row(self, catalogue: genvara.Catalogue, item: _Item) -> tuple[Any, ...]:
        name, state = item
        skipped = None
        try:
            project = _core._read(name, catalogue) if state is None else _core._project(catalogue, *state)
            skipped = len(project.skipped)
            result = project.size(catalogue, **self.limits)
        except genvara.RaisedError as error:
            return (name, *[None] * (len(_OF_SET) + 4), skipped, error.number, error.source, error.description)
        sets = result.recommended
        best = [getattr(sets[0], attribute) if sets else None for attribute in _OF_SET]
        counts = result.counts
        return (name, *best, counts["recommended"], counts["undersized"], result.total_running_kw, result.peak_starting_kva,
                skipped, None, None, None)


def _item_of(project: Path | genvara.Project) -> _Item:
    if isinstance(project, genvara.Project):
        return project.proj_name, _core._state(project)
    path = os.fspath(project)
    if not isinstance(path, str):
        raise TypeError("a project is a path of text, or a Project")
    return os.path.abspath(path), None


def _digest_of_items(items: list[_Item]) -> str:
    known = hashlib.sha256()
    for item in items:
        known.update(repr(item).encode(errors="surrogateescape"))
    return known.hexdigest()


def size(projects: Iterable[Path | genvara.Project], catalogue: genvara.Catalogue | None = None, *, client: Any = None,
         out: Path | None = None, resume: bool = False, piece: int | None = None, retries: int = 2,
         progress: _pieces.Progress | None = None, **limits: int) -> Table:
    """Sizes projects, a row each, in their order. A project that fails is a row with its error.

    A project is a path, which the workers have to see too, or a `genvara.Project`. The work is done by the workers of `client`,
    a `dask.distributed.Client`, or without one in this process. `out` is an SQLite file that takes the rows as pieces of
    `piece` projects end, by default a sixteenth of all, 2,000 at least and 10,000 at most; with `resume` a run that was stopped
    goes on with it. A piece whose worker dies is tried again, and one that fails up to `retries` times. `progress` is called with
    the pieces that are done and all of them; by default a line on standard error tells, if that is a terminal. Other keywords are
    the limits of the runs.

    The catalogue is by default the one beside the program; its file is sent to each worker once.

    Raises FileExistsError and ValueError for an `out` that is there, or of another study; what failed a piece, with a note.
    """
    used = genvara.Catalogue() if catalogue is None else catalogue
    _core._limits(**limits)
    items = [_item_of(project) for project in projects]
    piece = _pieces.sizings_of(piece, len(items))
    study = {"kind": "sites", "version": genvara.__version__, "catalogue": digest_of(_pieces.content_of(used)),
             "projects": _digest_of_items(items), "limits": dict(sorted(limits.items())), "piece": piece}
    store = Store(out, study, COLUMNS, resume)
    pieces = [(first, items[first:first + piece]) for first in range(0, len(items), piece)]
    _pieces.work_through(store, _Sizes(dict(limits)), pieces, used, client, retries, progress)
    return Table(store)
