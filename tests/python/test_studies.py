"""Advice, orders and sweeps: what `genvara-cli` says, to the last bit, and what a script does with it."""
import json
import signal
import threading
import time

import pytest

import genvara
from conftest import SOURCE
from told import set_of, tightest_of, told_by

HOSPITAL = SOURCE / "samples/hospital.prj"
SAMPLES = sorted((SOURCE / "samples").glob("*.prj"))


def change_of(row):
    if "move" in row:
        return {"Move": row["move"], "To": row["to"]}
    if "order" in row:
        return {"Order": row["order"]}
    return {"Path": row["path"], "Follows": row["follows"]}


def told_change(row):
    return row if "Move" in row or "Order" in row else {"Path": row["Path"], "Follows": row.get("Follows", False)}


@pytest.mark.parametrize("file", SAMPLES, ids=lambda file: file.stem)
def test_advice(catalogue, file):
    line, = told_by("advise", "--json", "--kinds", "split,starter,rectifier,limit,rise,sets,fuel", file)
    found = genvara.read(file).advise(catalogue, kinds=["split", "starter", "rectifier", "limit", "rise", "sets", "fuel"])
    assert set_of(found.now) == line["Now"]
    assert len(found) == len(line["Advice"])
    for advice, row in zip(found, line["Advice"]):
        assert (advice.kind, advice.text, advice.saved, set_of(advice.set), tightest_of(advice.tightest)) == (
            row["Kind"], row["Text"], row["Saved"], row["Set"], row["Tightest"])
        assert [change_of(change) for change in advice.changes] == [told_change(change) for change in row["Changes"]]


@pytest.mark.parametrize("name, number", [("workshop", 3), ("quarry", 7), ("telecom-shelter", 2)])
def test_advice_is_confirmed_by_sizing(catalogue, name, number):
    project = genvara.read(SOURCE / f"samples/{name}.prj")
    before = project.dumps()
    found = project.advise(catalogue)
    assert len(found) == number
    assert (found.now is None) == (found[0].saved is None) and found[-1].text.endswith(".")
    for advice in found:
        limits = {"max_loading": change["to"] for change in advice.changes if change.get("path") == "Designer.MaxLoading"}
        assert set_of(advice.project.size(catalogue, **limits).recommended[0]) == set_of(advice.set)
    assert project.dumps() == before
    with pytest.raises(IndexError):
        found[len(found)]
    with pytest.raises(IndexError):
        found[-len(found) - 1]
    kept = found[0]
    del found
    assert kept.project.steps


def test_values_of_advice(catalogue):
    project = genvara.read(SOURCE / "samples/workshop.prj")
    advice = project.advise(catalogue, kinds=["rise"])[0]
    change, = advice.changes
    assert change["path"] == "PowerSystem.RiseDutyCode" and not change["follows"]
    assert change["from"] is project.power_system.rise_duty_code and change["to"] > change["from"]
    assert advice.project.power_system.rise_duty_code is change["to"]


def test_kinds_that_do_not_exist(hospital, catalogue):
    with pytest.raises(genvara.RaisedError, match="starter"):
        hospital.advise(catalogue, kinds=["startr"])
    assert len(hospital.advise(catalogue, kinds=[])) == 0
    with pytest.raises(TypeError):
        hospital.advise(None)
    with pytest.raises(TypeError, match=r"advise\(\) got an unexpected keyword argument 'max_load'"):
        hospital.advise(catalogue, max_load=3)


def test_order(catalogue):
    for file, rule in ((HOSPITAL, ()), (SOURCE / "samples/workshop.prj", ("Step[2].Load[1]", "Step[1].Load[1]"))):
        options = ["--before", f"{rule[0]}<{rule[1]}"] if rule else []
        line, = told_by("order", "--json", "--max-steps", 4, *options, file)
        found = genvara.read(file).order(catalogue, max_steps=4, before=[rule] if rule else [])
        bound = found.bound and {"ModelNum": found.bound["model_num"], "AltNum": found.bound["alt_num"],
                                 "EngineNum": found.bound["engine_num"], "NominalRating": found.bound["nominal_rating"],
                                 "DeratedRating": found.bound["derated_rating"]}
        assert (set_of(found.now), set_of(found.best), found.proven, bound, found.steps) == (
            line["Now"], line["Best"], line["Proven"], line["Bound"], line["Steps"])
        assert set_of(found.project.size(catalogue).recommended[0]) == line["Best"]
        assert len(found.steps) <= 4


def test_rules_of_an_order(catalogue):
    project = genvara.read(SOURCE / "samples/workshop.prj")
    first, last = project.steps[0].loads[0], project.steps[-1].loads[0]
    found = project.order(catalogue, before=[(last, first)], together=[("Step[1].Load[1]", "Step[1].Load[2]")])
    steps = {path: number for number, step in enumerate(found.steps) for path in step}
    assert steps[last.path] < steps[first.path]
    assert steps["Step[1].Load[1]"] == steps["Step[1].Load[2]"]
    assert not found.present_is_permitted
    for before in (["Step[1].Load[1]"], [("Step[1].Load[1]",)], ["ab"], [1]):
        with pytest.raises(TypeError):
            project.order(catalogue, before=before)
    with pytest.raises(genvara.RaisedError, match="Step"):
        project.order(catalogue, before=[("Step[1].Load[1]", "Step[9].Load[1]")])
    with pytest.raises(genvara.RaisedError):
        project.order(catalogue, before=[(first, last), (last, first)])
    with pytest.raises(ValueError):
        project.order(catalogue, max_steps=0)
    with pytest.raises(ValueError):
        project.order(catalogue, seconds=float("nan"))


def test_sweep(hospital, catalogue):
    lines = told_by("sweep", "--json", "--vary", "PowerSystem.Altitude=0:3000:250", "--vary",
                    "Step[3].Load[1].StartingMethod=Wye-Delta,Solid State" if kind_at(hospital, 2) == "Motor"
                    else "PowerSystem.GensetsInParallel=1,2", HOSPITAL)
    second = ({"Step[3].Load[1].StartingMethod": ["Wye-Delta", genvara.StartingMethod.SOLID_STATE]}
              if kind_at(hospital, 2) == "Motor" else {"PowerSystem.GensetsInParallel": (1, 2)})
    found = genvara.sweep(hospital, catalogue, {"PowerSystem.Altitude": range(0, 3001, 250)} | second, jobs=2)
    assert len(found) == len(lines) == 26
    for point, line in zip(found, lines):
        assert (set_of(point.set), point.num_chosen_sets, tightest_of(point.tightest)) == (
            line["Set"], line["NumChosenSets"], line["Tightest"])
    assert found.paths == list(lines[0]["At"])
    assert [point.at["PowerSystem.Altitude"] for point in found] == [line["At"]["PowerSystem.Altitude"] for line in lines]


def kind_at(project, step):
    return project.steps[step].loads[0].kind


def test_sweep_as_a_table(hospital, catalogue):
    found = genvara.sweep(hospital, catalogue, {"PowerSystem.Fuel": ["Diesel", 3], "PowerSystem.Altitude": [0, 1500.5]})
    frame = found.to_pandas()
    assert list(frame.columns) == ["PowerSystem.Fuel", "PowerSystem.Altitude", "model_num", "alt_num", "nominal_rating",
                                   "derated_rating", "num_chosen_sets", "tightest_test", "tightest_step", "tightest_margin",
                                   "error"]
    assert list(frame["PowerSystem.Altitude"]) == [0.0, 1500.5, 0.0, 1500.5]
    assert list(frame["PowerSystem.Fuel"]) == ["Diesel"] * 2 + [fuel_name(3)] * 2
    assert list(frame["model_num"])[0] == found[0].set.model
    assert found.columns()["tightest_margin"][1] == found[1].tightest.margin


def fuel_name(code):
    row, = [row for row in genvara.describe("PowerSystem") if row["name"] == "Fuel"]
    return next(name for name, value in row["codes"].items() if value == code)


def test_points_that_fail(hospital, catalogue):
    hospital.steps[0].loads[0].delete()
    for step in hospital.steps[1:]:
        step.delete()
    for load in hospital.steps[0].loads:
        load.delete()
    found = genvara.sweep(hospital, catalogue, {"PowerSystem.Altitude": [0.0]})
    assert found[0].error.description == "At least one load and load step must be entered."
    assert found[0].set is None and found.columns()["error"] == [found[0].error.description]


def test_what_no_sweep_takes(hospital, catalogue):
    for values, error in (({"PowerSystem.Altitude": [9999]}, genvara.RaisedError),
                          ({"PowerSystem.Height": [1]}, genvara.RaisedError),
                          ({"PowerSystem.Altitude": ["high"]}, TypeError), ({"PowerSystem.Altitude": "12"}, TypeError),
                          ({"PowerSystem.Altitude": 12}, TypeError), ({"PowerSystem.Altitude": []}, ValueError),
                          ({3: [1]}, (TypeError, RuntimeError))):
        with pytest.raises(error):
            genvara.sweep(hospital, catalogue, values)
    for jobs in (0, 1025):
        with pytest.raises(ValueError, match="jobs"):
            genvara.sweep(hospital, catalogue, {}, jobs=jobs)
        with pytest.raises(ValueError, match="jobs"):
            hospital.advise(catalogue, jobs=jobs)
    with pytest.raises(ValueError, match="40401 points"):
        genvara.sweep(hospital, catalogue, {"PowerSystem.Altitude": range(0, 201), "PowerSystem.AmbTemp": [25.0] * 201},
                      most_points=40_000)


def test_a_study_can_be_interrupted(hospital, catalogue):
    """Ctrl+C ends long work at once."""
    timer = threading.Timer(0.5, signal.raise_signal, [signal.SIGINT])
    timer.start()
    begun = time.monotonic()
    try:
        with pytest.raises(KeyboardInterrupt):
            genvara.sweep(hospital, catalogue, {"PowerSystem.Altitude": range(0, 1000), "PowerSystem.AmbTemp": range(0, 40),
                                                "PowerSystem.GensetsInParallel": range(1, 17)})
    finally:
        timer.cancel()
    assert time.monotonic() - begun < 60  # all points would take many times that


def test_changes_are_those_of_the_format_that_was_read(hospital, catalogue, tmp_path):
    """A project from JSON is studied as JSON, with more digits than a .prj has."""
    altitude = 1000.0 + 1e-13 * 2**12
    (tmp_path / "h.json").write_text(hospital.dumps(), encoding="utf-8")
    read = genvara.read(tmp_path / "h.json")
    lines = told_by("sweep", "--json", "--vary", f"PowerSystem.Altitude={altitude!r}", tmp_path / "h.json")
    point = genvara.sweep(read, catalogue, {"PowerSystem.Altitude": [altitude]})[0]
    assert set_of(point.set) == lines[0]["Set"]
    assert json.loads(read.dumps())["PowerSystem"]["Altitude"] == 152.4
