"""Sizes one project many times, with values drawn at random: how sure is the choice?"""

from __future__ import annotations

import dataclasses
import hashlib
import html
import json
import math
import statistics
import warnings
from collections.abc import Mapping
from typing import Any

import genvara
from genvara import _core  # type: ignore[attr-defined]  # a library without stubs of its own

from . import _pieces
from ._catalogues import digest_of
from ._draws import Choice, Distribution, bits
from ._store import Path, Store, Table

#: What a run came to, behind the values of the paths.
_OUTCOME = ("error", "out_of_range", "num_recommended", "model_num", "alt_num", "engine_num", "nominal_rating",
            "derated_rating", "tightest_test", "tightest_step", "tightest_margin")


def wilson_interval(count: int, runs: int, confidence: float = 0.95) -> tuple[float, float]:
    """The score interval of a share: bounds between which the true share lies with this confidence, when something came true
    in `count` of `runs` independent runs.

    E. B. Wilson, "Probable inference, the law of succession, and statistical inference", Journal of the American Statistical
    Association 22 (1927), 209-212. It holds for small numbers of runs too, and for shares near 0 and 1.
    """
    if not 0 <= count <= runs or runs == 0:
        raise ValueError("count must lie between 0 and runs, and runs above 0")
    if not 0.0 < confidence < 1.0:
        raise ValueError("confidence must lie between 0 and 1")
    share = count / runs
    z = statistics.NormalDist().inv_cdf(0.5 + confidence / 2.0)
    spread = z * z / runs
    middle = (share + spread / 2.0) / (1.0 + spread)
    half = z / (1.0 + spread) * math.sqrt((share * (1.0 - share) + spread / 4.0) / runs)
    return (0.0 if count == 0 else middle - half, 1.0 if count == runs else middle + half)


@dataclasses.dataclass(frozen=True)
class Share:
    """In how many runs a set does the job. The true share lies between `low` and `high` with the confidence, by the score
    interval of Wilson (see `wilson_interval`)."""

    model: str
    alt_num: str | None  #: None for any alternator
    count: int  #: of the runs in which it is among the recommended sets
    runs: int  #: of all runs, those without an answer among them
    first: int  #: of the runs in which it is the first recommended set
    confidence: float

    @property
    def share(self) -> float:
        return self.count / self.runs

    @property
    def low(self) -> float:
        return wilson_interval(self.count, self.runs, self.confidence)[0]

    @property
    def high(self) -> float:
        return wilson_interval(self.count, self.runs, self.confidence)[1]

    def __str__(self) -> str:
        name = self.model if self.alt_num is None else f"{self.model} with {self.alt_num}"
        return (f"{name} does the job in {self.count} of {self.runs} runs, {100.0 * self.share:.2f} %: with "
                f"{100.0 * self.confidence:g} % confidence {100.0 * self.low:.2f} to {100.0 * self.high:.2f} %")


@dataclasses.dataclass(frozen=True)
class _Runs:
    """What a worker does with a piece: runs from one on up to another."""

    state: Any
    limits: dict[str, int]
    seed: int
    distributions: tuple[tuple[str, Distribution], ...]

    @property
    def paths(self) -> list[str]:
        return [path for path, _ in self.distributions]

    def values(self, run: int) -> tuple[Any, ...]:
        return tuple(distribution.draw(bits(self.seed, run, path)) for path, distribution in self.distributions)

    def trials(self, catalogue: genvara.Catalogue) -> Any:
        return _core._Trials(_core._project(catalogue, *self.state), catalogue, self.limits, self.paths, self.values(0))

    def __call__(self, catalogue: genvara.Catalogue, piece: tuple[int, int]) -> tuple[list[tuple[Any, ...]], list[Any]]:
        trials = self.trials(catalogue)
        paths = self.paths
        runs = range(*piece)
        values = [self.values(run) for run in runs]
        outcomes, sets, models = trials.run(values)
        rows = []
        for run, drawn, (error, outside, *rest) in zip(runs, values, outcomes):
            shown = [trials.converted(column, value) for column, value in enumerate(drawn)]
            rows.append((run, *shown, error, ", ".join(paths[column] for column in outside) or None, *rest))
        return rows, [*sets, *((model, None, None, does, first) for model, does, first in models)]


class Chances(Table):
    """The runs of a study, a row each, and what they say of the sets.

    A run that cannot be sized, or whose draw is out of the range of its member, counts as one in which no set does the job.
    """

    def __init__(self, store: Store, paths: list[str], seed: int, catalogue: genvara.Catalogue) -> None:
        super().__init__(store)
        self._paths = paths
        self._seed = seed
        self._catalogue = catalogue

    @property
    def paths(self) -> list[str]:
        """What was drawn."""
        return list(self._paths)

    @property
    def runs(self) -> int:
        return len(self)

    @property
    def seed(self) -> int:
        return self._seed

    @property
    def errors(self) -> int:
        """Runs that could not be sized, for another reason than a draw that is out of range."""
        return self._store.count("error IS NOT NULL AND out_of_range IS NULL")

    @property
    def out_of_range(self) -> dict[str, int]:
        """How many draws of each path were out of the range of its member, where any were."""
        counts = dict.fromkeys(self._paths, 0)
        for paths, count in self._store.select("SELECT out_of_range, count(*) FROM rows WHERE out_of_range IS NOT NULL GROUP BY 1"):
            for path in paths.split(", "):
                counts[path] += count
        return {path: count for path, count in counts.items() if count > 0}

    @property
    def without_set(self) -> int:
        """Runs that were sized, and for which no set does."""
        return self._store.count("error IS NULL AND num_recommended = 0")

    def of_set(self, model: str, alt_num: str | None = None, *, confidence: float = 0.95) -> Share:
        """In how many runs a model does the job, with any of its alternators or with one. KeyError for a model that the
        catalogue does not know."""
        if not any(row["GensetModel"] == model for row in self._catalogue.table("Gensets")):
            raise KeyError(f"the catalogue has no set \"{model}\"")
        (does, first), = self._store.select("SELECT coalesce(sum(does), 0), coalesce(sum(first), 0) FROM tallies "
                                            "WHERE model = ? AND alt_num IS ?", (model, alt_num))
        return Share(model, alt_num, does, self.runs, first, confidence)

    def sets(self, *, confidence: float = 0.95) -> list[Share]:
        """The models that do the job in any run, those first that do in most."""
        rows = self._store.select("SELECT model, sum(does) AS does, sum(first) AS first FROM tallies WHERE alt_num IS NULL "
                                  "GROUP BY model ORDER BY does DESC, first DESC, model")
        return [Share(model, None, does, self.runs, first, confidence) for model, does, first in rows]

    def __repr__(self) -> str:
        outside = sum(self.out_of_range.values())
        return (f"<genvara.fleet.Chances of {self.runs} runs, {self.without_set} without a set, {self.errors} errors, "
                f"{outside} draws out of range>")

    def _repr_html_(self) -> str:
        rows = "".join(f"<tr><td>{html.escape(one.model)}</td><td>{one.count}</td><td>{100.0 * one.share:.2f}</td>"
                       f"<td>{100.0 * one.low:.2f} to {100.0 * one.high:.2f}</td><td>{one.first}</td></tr>" for one in self.sets())
        return (f"<table><caption>{html.escape(repr(self)[1:-1])}</caption><tr><th>Model</th><th>Does the job in</th><th>%</th>"
                f"<th>95 % interval, %</th><th>First in</th></tr>{rows}</table>")


def _require_whole(name: str, value: Any, least: int | None = None) -> None:
    if isinstance(value, bool) or not isinstance(value, int):
        raise TypeError(f"{name} is a whole number, and not {type(value).__name__}")
    if least is not None and value < least:
        raise ValueError(f"{name} must be at least {least}")


def _check(work: _Runs, catalogue: genvara.Catalogue) -> None:
    """Makes sure that each distribution gives values that its member can take."""
    values = work.values(0)
    project = _core._project(catalogue, *work.state)
    for column, (path, distribution) in enumerate(work.distributions):
        trials = _core._Trials(project, catalogue, work.limits, work.paths[:column + 1], values[:column])
        type_ = trials.types[column]
        if not distribution.serves(type_):
            raise ValueError(f"{path} takes a {type_}, which {distribution} does not give")
        if isinstance(distribution, Choice):
            for value in distribution.values:
                trials.converted(column, value)


def _study_of(work: _Runs, runs: int, piece: int, catalogue: genvara.Catalogue) -> dict[str, Any]:
    project = hashlib.sha256(json.dumps(work.state).encode()).hexdigest()
    return {"kind": "chances", "version": genvara.__version__, "catalogue": digest_of(_pieces.content_of(catalogue)),
            "project": project, "limits": dict(sorted(work.limits.items())), "runs": runs, "seed": work.seed,
            "distributions": [[path, repr(distribution)] for path, distribution in work.distributions], "piece": piece}


def chances(project: genvara.Project | Path, distributions: Mapping[str, Distribution], *, runs: int, seed: int,
            catalogue: genvara.Catalogue | None = None, client: Any = None, out: Path | None = None, resume: bool = False,
            piece: int | None = None, retries: int = 2, progress: _pieces.Progress | None = None, **limits: int) -> Chances:
    """Sizes a project `runs` times with values drawn at random, by paths such as "PowerSystem.AmbTemp" or
    "Step[2].Load[1].Quantity", and counts in how many runs each set does the job.

    What a run draws depends on `seed`, its number and the path alone: not on the number of workers, their order, or a worker
    that died on the way. Draws of different paths are independent. Values are taken in the order given, each as its entry form
    would take it, and a run is sized as it would be once saved and opened again. A draw that is out of the range of its
    member is not pressed into it: the run has an error, no set does its job, and a warning tells how many there were.

    `client`, `out`, `resume`, `piece`, `retries`, `progress` and the limits are those of `size`.

    Raises RaisedError for a path or a choice that does not exist; ValueError for a distribution that does not serve its member.
    """
    _require_whole("runs", runs, 1)
    piece = _pieces.sizings_of(piece, runs)
    _require_whole("seed", seed)
    used = genvara.Catalogue() if catalogue is None else catalogue
    read = project if isinstance(project, genvara.Project) else genvara.read(project, used)
    _core._limits(**limits)
    work = _Runs(_core._state(read), dict(limits), seed, tuple(distributions.items()))
    _check(work, used)
    store = Store(out, _study_of(work, runs, piece, used), ("run", *work.paths, *_OUTCOME), resume)
    pieces = [(first, min(first + piece, runs)) for first in range(0, runs, piece)]
    _pieces.work_through(store, work, pieces, used, client, retries, progress)
    study = Chances(store, work.paths, seed, used)
    for path, count in study.out_of_range.items():
        warnings.warn(f"{count} of {runs} draws of {path} were out of its range; in these runs no set does the job", stacklevel=2)
    return study
