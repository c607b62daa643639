"""Whatever a run or a study came to is copied, and pickled for another process, with all that it shows."""
import copy
import datetime
import enum
import json
import math
import pickle
import subprocess
import sys

import genvara
from conftest import SOURCE, WITH_MODULE

PLAIN = (bool, int, float, str, bytes, type(None), datetime.datetime, enum.Enum)


def shown(thing):
    """All that an object shows, down to plain values."""
    if isinstance(thing, PLAIN):
        return thing
    if isinstance(thing, genvara.RaisedError):
        return thing.args
    if isinstance(thing, genvara.Project):
        return thing.dumps()
    if isinstance(thing, genvara.Catalogue):
        return thing.file
    if isinstance(thing, dict):
        return {key: shown(value) for key, value in thing.items()}
    if isinstance(thing, (list, tuple)):
        return [shown(part) for part in thing]
    names = [name for name in dir(type(thing)) if not name.startswith("_")]
    parts = {name: shown(value) for name in names if not callable(value := getattr(thing, name))}
    assert parts, f"{thing} shows nothing"
    return parts | ({"items": [shown(part) for part in thing]} if hasattr(thing, "__len__") else {})


def sized(name, catalogue, **limits):
    return genvara.read(SOURCE / f"samples/{name}.prj").size(catalogue, **limits)


def in_one_step(name):
    """A sample whose loads all start together, so that a step of its own helps some of them."""
    records = json.loads(genvara.read(SOURCE / f"samples/{name}.prj").dumps())
    first, *others = records["LoadProfile"]
    for step in others:
        first["Loads"] += step["Loads"]
    return genvara.loads(json.dumps(records | {"LoadProfile": [first]}))


def things(catalogue):
    """What runs and studies come to: failing, limited, without a set, of one piece and of many."""
    cold, quarry, workshop = (genvara.read(SOURCE / f"samples/{name}.prj") for name in ("cold-store", "quarry", "workshop"))
    result = cold.size(catalogue, max_loading=77)
    yield "set", result.recommended[0]
    yield "undersized set", result.undersized[-1]
    yield "explained", result.explain()
    yield "explained by all", sized("studio", catalogue).explain(all=True)
    yield "test", result.explain()[-1].steps[-1][5]
    yield "tightest", result.explain()[0].tightest
    for name, project in (("cold store", cold), ("quarry", quarry), ("workshop", workshop)):
        yield f"advice on the {name}", project.advise(catalogue, max_loading=77)
        yield f"order of the {name}", project.order(catalogue)
    pairs = in_one_step("quarry").advise(catalogue, pairs=True, kinds=["split", "starter"])
    assert {advice.kind for advice in pairs} == {"split", "starter", "split+starter", "starter+starter", "split+split"}
    yield "pairs", pairs
    yield "advice", pairs[-1]
    yield "no advice", genvara.read(SOURCE / "samples/hospital.prj").advise(catalogue)
    sweep = genvara.sweep(cold, catalogue, {"PowerSystem.ConnectCode": [1, 77], "PowerSystem.Fuel": ["Diesel", "L.P."],
                                            "Step[5].Load[1].StartingMethod": [1, 5], "Step[1].Description": ["a", "b"]})
    assert {point.error is None for point in sweep} == {True, False}
    yield "sweep", sweep
    yield "point", sweep[3]


def test_copies_and_pickles_show_the_same(catalogue):
    seen = set()
    for name, thing in things(catalogue):
        before = shown(thing)
        for made in (copy.copy(thing), copy.deepcopy(thing), pickle.loads(pickle.dumps(thing))):
            assert type(made) is type(thing)
            assert shown(made) == before, name
        seen.add(type(thing).__name__)
    assert seen >= {"ChosenSet", "RejectedSet", "Test", "Tightest", "AdviceList", "Advice", "Order", "Sweep", "SweepPoint"}


def test_a_pickled_advice_still_makes_its_project(catalogue):
    project = in_one_step("quarry")
    found = project.advise(catalogue, pairs=True, kinds=["order", "split", "starter"])
    for advice in found:
        again = pickle.loads(pickle.dumps(advice))
        assert again.project.dumps() == advice.project.dumps()
    order = pickle.loads(pickle.dumps(genvara.read(SOURCE / "samples/cold-store.prj").order(catalogue)))
    assert order.best.nominal_rating < order.now.nominal_rating
    best = order.project.size(catalogue).recommended[0]
    assert best.model == order.best.model and best.derated_rating == order.best.derated_rating


def test_another_process_reads_them(catalogue, tmp_path):
    sets = sized("cold-store", catalogue).recommended
    (tmp_path / "sets").write_bytes(pickle.dumps(sets))
    code = "import pickle, sys; print([repr(one.derated_rating) for one in pickle.load(open(sys.argv[1], 'rb'))])"
    told = subprocess.run([sys.executable, "-B", "-c", code, tmp_path / "sets"], capture_output=True, text=True, check=True,
                          env=WITH_MODULE)
    assert told.stdout.strip() == str([repr(one.derated_rating) for one in sets])


def spoilt(state):
    """The state with one of its parts replaced, each in turn."""
    if isinstance(state, (tuple, list)):
        for place, part in enumerate(state):
            for other in spoilt(part):
                yield type(state)([*state[:place], other, *state[place + 1:]])
        yield type(state)(state[:-1])
    for other in (None, "", -1, 10**12, math.nan, [], "Step[9].Load[9]"):
        yield other


def test_a_damaged_state_is_refused_and_crashes_nothing(catalogue):
    refusals = (TypeError, ValueError, OverflowError, genvara.RaisedError)
    project = genvara.read(SOURCE / "samples/quarry.prj")
    result = project.size(catalogue)
    advice = project.advise(catalogue, kinds=["order", "split", "limit"])
    for thing in (result.undersized[0], result.explain()[0].tightest, result.explain()[0].steps[0][0], result.explain()[0],
                  advice, advice[0], project.order(catalogue), genvara.sweep(project, catalogue, {"PowerSystem.Altitude": [0, 9]})):
        made_by, (maker, sound) = thing.__reduce__()
        count = 0
        for state in spoilt(sound):
            try:
                made = made_by(maker, state)
            except refusals:
                count += 1
                continue
            try:
                shown(made)
            except refusals:
                pass
        assert count > 0, maker
