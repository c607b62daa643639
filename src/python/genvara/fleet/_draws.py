"""Distributions of values, and the numbers that they are drawn from.

A draw depends on the seed, the number of the run and the path of the member, and on nothing else: 64 bits of BLAKE2b (RFC 7693)
of the three. So it does not matter who makes a run, when, and after which others; and a member keeps its draws when another
is added to a study. Generators of that kind, a function of a counter, are those of Salmon, Moraes, Dror and Shaw, "Parallel
random numbers: as easy as 1, 2, 3", SC 2011.
"""

from __future__ import annotations

import bisect
import dataclasses
import hashlib
import itertools
import math
import statistics
from collections.abc import Iterable
from typing import Any, Protocol


def bits(seed: int, run: int, path: str) -> int:
    """64 random bits for a member in a run."""
    text = f"{seed} {run} {path}".encode()
    return int.from_bytes(hashlib.blake2b(text, digest_size=8, person=b"genvara.fleet").digest(), "big")


def fraction(word: int) -> float:
    """A number between 0 and 1, both left out, of 64 random bits: the middle of one of 2^52 equal parts."""
    return ((word >> 12) + 0.5) * 2.0**-52


class Distribution(Protocol):
    """How a member's values are spread."""

    def draw(self, word: int) -> Any:
        """The value of 64 random bits."""

    def serves(self, type_: str) -> bool:
        """Whether its values are of a type of `describe`."""


def _require_finite(**values: float) -> None:
    for name, value in values.items():
        if isinstance(value, bool) or not isinstance(value, (int, float)):
            raise TypeError(f"{name} is a number, and not {type(value).__name__}")
        if not math.isfinite(value):
            raise ValueError(f"{name} must be finite")


@dataclasses.dataclass(frozen=True)
class Normal:
    """A normal distribution."""

    mean: float
    deviation: float

    def __post_init__(self) -> None:
        _require_finite(mean=self.mean, deviation=self.deviation)
        if self.deviation <= 0.0:
            raise ValueError("deviation must be above 0")

    def draw(self, word: int) -> float:
        return statistics.NormalDist(self.mean, self.deviation).inv_cdf(fraction(word))

    def serves(self, type_: str) -> bool:
        return type_ == "number"


@dataclasses.dataclass(frozen=True)
class Uniform:
    """Every value between two is as likely."""

    least: float
    greatest: float

    def __post_init__(self) -> None:
        _require_finite(least=self.least, greatest=self.greatest)
        if self.least > self.greatest:
            raise ValueError("least must not be above greatest")

    def draw(self, word: int) -> float:
        part = fraction(word)
        return self.least * (1.0 - part) + self.greatest * part

    def serves(self, type_: str) -> bool:
        return type_ == "number"


@dataclasses.dataclass(frozen=True)
class Triangular:
    """Values between two, most of them near a third."""

    least: float
    mode: float
    greatest: float

    def __post_init__(self) -> None:
        _require_finite(least=self.least, mode=self.mode, greatest=self.greatest)
        if not self.least <= self.mode <= self.greatest or self.least == self.greatest:
            raise ValueError("mode must lie between least and greatest, which must differ")

    def draw(self, word: int) -> float:
        part = fraction(word)
        width, rise = self.greatest - self.least, self.mode - self.least
        if part * width < rise:
            return self.least + math.sqrt(part * width * rise)
        return self.greatest - math.sqrt((1.0 - part) * width * (self.greatest - self.mode))

    def serves(self, type_: str) -> bool:
        return type_ == "number"


@dataclasses.dataclass(frozen=True)
class Integers:
    """Every whole number from one to another, both among them, is as likely."""

    least: int
    greatest: int

    def __post_init__(self) -> None:
        for value in (self.least, self.greatest):
            if isinstance(value, bool) or not isinstance(value, int):
                raise TypeError(f"integers lie between integers, and not {type(value).__name__}")
        if not -(2**31) <= self.least <= self.greatest < 2**31:
            raise ValueError("least must not be above greatest, and both have 32 bits")

    def draw(self, word: int) -> int:
        return self.least + (word * (self.greatest - self.least + 1) >> 64)

    def serves(self, type_: str) -> bool:
        return type_ in ("number", "integer")


@dataclasses.dataclass(frozen=True)
class Choice:
    """One of some values, each as likely or by its weight."""

    values: tuple[Any, ...]
    weights: tuple[float, ...]

    def __post_init__(self) -> None:
        if not self.values or len(self.values) != len(self.weights):
            raise ValueError("a choice has values, and a weight for each")
        for weight in self.weights:
            _require_finite(weight=weight)
        if min(self.weights) < 0.0 or not 0.0 < sum(self.weights) < math.inf:
            raise ValueError("weights must not be below 0, nor all of them 0")

    def draw(self, word: int) -> Any:
        sums = list(itertools.accumulate(self.weights))
        place = bisect.bisect_right(sums, fraction(word) * sums[-1])
        # What rounds up to the last sum belongs to the last value that has a weight.
        return self.values[min(place, bisect.bisect_left(sums, sums[-1]))]

    def serves(self, type_: str) -> bool:
        return True


def normal(mean: float, deviation: float) -> Normal:
    """A normal distribution by its mean and standard deviation."""
    return Normal(mean, deviation)


def uniform(least: float, greatest: float) -> Uniform:
    """Every value between two is as likely."""
    return Uniform(least, greatest)


def triangular(least: float, mode: float, greatest: float) -> Triangular:
    """Values between `least` and `greatest`, most of them near `mode`."""
    return Triangular(least, mode, greatest)


def integers(least: int, greatest: int) -> Integers:
    """Every whole number from `least` to `greatest`, both among them, is as likely."""
    return Integers(least, greatest)


def choice(values: Iterable[Any], weights: Iterable[float] | None = None) -> Choice:
    """One of some values, each as likely or by its weight."""
    listed = tuple(values)
    return Choice(listed, tuple(1.0 for _ in listed) if weights is None else tuple(weights))
