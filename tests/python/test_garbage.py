"""Whatever is passed, an exception of Python is the worst that comes of it."""
import copy
import warnings

import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import genvara
from conftest import SOURCE

garbage = st.recursive(
    st.none() | st.booleans() | st.integers() | st.floats() | st.text() | st.binary() | st.complex_numbers()
    | st.dates() | st.datetimes(),
    lambda inner: st.lists(inner) | st.tuples(inner, inner) | st.dictionaries(st.text(), inner), max_leaves=5)

# What a caller has to expect of a wrong argument.
EXPECTED = (genvara.RaisedError, TypeError, ValueError, OverflowError, AttributeError, LookupError, OSError,
            ReferenceError)
PROJECT = SOURCE / "samples/hospital.prj"
CATALOGUE = genvara.Catalogue()


def tried(call, *arguments, **keywords):
    try:
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            return call(*arguments, **keywords)
    except EXPECTED:
        return None


def records(project):
    loads = [load for step in project.steps for load in step.loads]
    return [project, project.power_system, *project.steps, *loads]


@settings(max_examples=100, deadline=None)
@given(st.data())
def test_members(data):
    project = genvara.read(PROJECT)
    record = data.draw(st.sampled_from(records(project)))
    names = [name for name in dir(type(record)) if not name.startswith("_")]
    for name in data.draw(st.lists(st.sampled_from(names), min_size=1, max_size=8)):
        before = tried(getattr, record, name)
        value = data.draw(garbage)
        try:
            setattr(record, name, value)
        except EXPECTED:
            if not callable(before):
                assert repr(tried(getattr, record, name)) == repr(before)
    tried(project.size, CATALOGUE)
    tried(project.dumps)


@settings(max_examples=100, deadline=None)
@given(garbage, garbage, garbage)
def test_functions(first, second, third):
    project = genvara.read(PROJECT)
    result = project.size(CATALOGUE)
    for call in (genvara.loads, genvara.describe, CATALOGUE.table, project.size, result.explain, result.report,
                 result.spec, genvara.Catalogue.check, genvara._core._project, genvara._core._result,
                 genvara._core._catalogue, genvara.Project.__new__, genvara.Result.__new__):
        tried(call, first)
        tried(call, first, second)
        tried(call, first, second, third)
        tried(call, project, CATALOGUE, third)
        tried(call, CATALOGUE, project.dumps(), third)
    tried(project.size, CATALOGUE, max_loading=first, min_loading=second)
    tried(result.report, first, set=second, undersized=third)
    tried(result.explain, all=first, models=second)
    tried(project.steps[0].total_running_real_power, first)
    tried(project.steps[0].add_load, first, quantity=second)
    tried(project.steps[0].add_load, "Motor", hp=first, name=second, code_letter=third)
    tried(project.steps[0].move, first)
    tried(project.add_step, first, second, before=third)
    tried(project.order, CATALOGUE, max_steps=1, before=first, together=second, seconds=third)
    tried(project.advise, CATALOGUE, pairs=first, kinds=second, jobs=third)
    tried(genvara.sweep, project, CATALOGUE, {"PowerSystem.Altitude": first})
    tried(genvara.sweep, project, CATALOGUE, first, most_points=50)
    tried(genvara._core._Trials, project, CATALOGUE, {}, ["PowerSystem.Altitude"], [first])


@settings(max_examples=100, deadline=None)
@given(st.lists(st.integers(0, 30), min_size=1, max_size=12))
def test_records_that_come_and_go(moves):
    """Whatever is deleted, added and moved, what is held of it is told or still there."""
    project = genvara.read(PROJECT)
    held = records(project)[2:]
    for move in moves:
        record = held[move % len(held)]
        act = (lambda: record.delete(), lambda: project.add_step("New", 20, before=record if move % 2 else None),
               lambda: record.add_load("Lighting"), lambda: record.move(1))[move % 4]
        made = tried(act)
        held += [] if made is None else [made]
        for one in held:
            tried(lambda: (repr(one), one.number, one.path))
    tried(project.size, CATALOGUE)
    assert genvara.loads(project.dumps()).dumps() == project.dumps()


@settings(max_examples=100, deadline=None)
@given(st.binary(max_size=400), st.integers(0, 1200))
def test_files(tmp_path_factory, noise, at):
    whole = PROJECT.read_bytes()
    file = tmp_path_factory.getbasetemp() / "garbage.prj"
    file.write_bytes(whole[:at] + noise + whole[at:])
    project = tried(genvara.read, file)
    if project is not None:
        tried(project.size, CATALOGUE)


@pytest.mark.parametrize("kind", [genvara.Project, genvara.Result, genvara.PowerSystem, genvara.Step, genvara.Load,
                                  genvara.Motor, genvara.ChosenSet, genvara.ExplainedSet])
def test_objects_that_were_never_made(kind):
    """Nobody gets at memory that was never filled."""
    with pytest.raises(TypeError):
        kind()
    with pytest.raises(TypeError):
        kind.__new__(kind)
    with pytest.raises(TypeError):
        object.__new__(kind)
    with pytest.raises(TypeError):
        type("Derived", (kind,), {})()


def test_objects_that_are_made_whole():
    for hollow in (genvara.Catalogue.__new__(genvara.Catalogue), copy.copy(CATALOGUE)):
        assert hollow.version == CATALOGUE.version
    assert genvara.Designer.__new__(genvara.Designer).max_loading == 80
