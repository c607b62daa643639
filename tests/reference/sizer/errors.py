"""How a run ends early, and how failures of arithmetic carry the name of the member that met them."""

import math
from contextlib import contextmanager
from functools import wraps

OVERFLOW = (6, "Overflow")
DIVISION = (11, "Division by zero")
MISMATCH = (13, "Type mismatch")
ARGUMENT = (5, "Invalid procedure call or argument")

# Python's failure of a calculation and what the program calls it.
ARITHMETIC = ((ZeroDivisionError, DIVISION), (OverflowError, OVERFLOW), (ValueError, ARGUMENT))

NOTHING_TO_SIZE = "At least one load and load step must be entered."


class Raised(Exception):
    """A failure that ends the run of a project: number, source and description."""

    def __init__(self, number, source, description):
        super().__init__(number, source, description)
        self.number, self.source, self.description = number, source, description


class Anything:
    """A number or text that the layer below the program chooses."""

    def __repr__(self):
        return "<anything>"


ANYTHING = Anything()


class Close(float):
    """A figure in which equal ones may have cancelled each other: it is as exact as they were, not as it is small."""


def hresult(word):
    """The signed 32-bit reading of an unsigned error word."""
    return word - 2**32 if word >= 2**31 else word


def finite(value):
    """The value itself; an infinite one and one that is no number count as an overflow."""
    if not math.isfinite(value):
        raise OverflowError
    return value


@contextmanager
def failing_as(source):
    """Raises failures of arithmetic inside the block under the name of a member."""
    try:
        yield
    except tuple(kind for kind, _ in ARITHMETIC) as error:
        number, description = next(words for kind, words in ARITHMETIC if isinstance(error, kind))
        raise Raised(number, source, description) from error


def member(function):
    """A method whose result is finite and whose failures of arithmetic carry its class's and its own name."""

    @wraps(function)
    def guarded(self, *arguments):
        with failing_as(f"{type(self).__name__}::{function.__name__}"):
            return finite(function(self, *arguments))

    return guarded
