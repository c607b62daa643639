"""Holds an expected answer against an actual one, value by value."""

from sizer.errors import Anything, Close

RELATIVE_TOLERANCE = 1e-9


class Comparison:
    """Walks pairs of answers; counts what it saw and keeps what differed."""

    def __init__(self):
        self.figures = self.others = 0
        self.worst = 0.0
        self.differences = []

    def walk(self, expected, actual, path=""):
        if isinstance(expected, dict):
            self.walk_object(expected, actual, path)
        elif isinstance(expected, list):
            self.walk_list(expected, actual, path)
        elif isinstance(expected, float):
            self.walk_figure(expected, actual, path)
        elif not isinstance(expected, Anything):
            self.others += 1
            self.check(type(expected) is type(actual) and expected == actual, expected, actual, path)

    def check(self, holds, expected, actual, path):
        if not holds:
            self.differences.append(f"{path or '/'}: expected {expected!r}, got {actual!r}")
        return holds

    def walk_object(self, expected, actual, path):
        names = list(actual) if isinstance(actual, dict) else actual
        self.check(list(expected) == names, list(expected), names, f"{path} (names)")
        for name, value in expected.items():
            if isinstance(actual, dict) and name in actual:
                self.walk(value, actual[name], f"{path}/{name}")

    def walk_list(self, expected, actual, path):
        length = len(actual) if isinstance(actual, list) else actual
        if self.check(length == len(expected), len(expected), length, f"{path} (length)"):
            for i, (left, right) in enumerate(zip(expected, actual)):
                self.walk(left, right, f"{path}/{i}")

    def walk_figure(self, expected, actual, path):
        self.figures += 1
        if not self.check(type(actual) in (int, float), expected, actual, path):
            return
        scale = max(abs(expected), abs(actual), 1.0 if isinstance(expected, Close) else 0.0)
        error = abs(expected - actual) / scale if scale else 0.0
        self.worst = max(self.worst, error)
        self.check(error <= RELATIVE_TOLERANCE, expected, actual, path)
