"""How pickled objects are made again: functions that pickle finds by their names."""

from . import _core  # type: ignore[attr-defined]  # a library without stubs of its own


def catalogue(file, digest):
    return _core._catalogue(file, digest)


def project(tables, text, powers, is_json):
    return _core._project(tables, text, powers, is_json)


def made(maker, state):
    return getattr(_core, maker)(state)


def result(project, catalogue, limits):
    return _core._result(project, catalogue, limits)
