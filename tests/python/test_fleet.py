"""Fleets and chances in one process: distributions, results, files of results."""
import csv
import hashlib
import math
import os
import sqlite3
import statistics
import subprocess
import sys

import pytest

import genvara
from conftest import SOURCE, WITH_MODULE
from genvara import fleet
from genvara.fleet import _draws, _pieces
from told import set_of

HOSPITAL = SOURCE / "samples/hospital.prj"
SAMPLES = sorted((SOURCE / "samples").glob("*.prj"))
DRAWN = {"Step[2].Load[1].Quantity": fleet.integers(1, 2), "PowerSystem.AmbTemp": fleet.normal(35.0, 4.0)}


def drawn(distribution, count=20_000):
    return [distribution.draw(_draws.bits(11, run, "PowerSystem.AmbTemp")) for run in range(count)]


# ---- distributions

def test_bits_depend_on_seed_run_and_path_alone():
    # The documented definition, so that a study of today comes out the same in later versions.
    known = hashlib.blake2b(b"7 3 PowerSystem.AmbTemp", digest_size=8, person=b"genvara.fleet").digest()
    assert _draws.bits(7, 3, "PowerSystem.AmbTemp") == int.from_bytes(known, "big")
    words = {_draws.bits(seed, run, path) for seed in (7, 8, -7) for run in range(100) for path in ("A", "B")}
    assert len(words) == 600
    assert 0.0 < _draws.fraction(0) < _draws.fraction(2**63) < _draws.fraction(2**64 - 1) < 1.0
    # The middles of 2^52 parts: the first lies at half of one.
    assert _draws.fraction(0) == 2.0**-53
    assert _draws.fraction(2**64 - 1) == 1.0 - 2.0**-53


def test_normal():
    values = drawn(fleet.normal(35.0, 4.0))
    # The error of the mean of 20,000 is 4 / sqrt(20000) = 0.028, that of the deviation 4 / sqrt(40000) = 0.02.
    assert statistics.fmean(values) == pytest.approx(35.0, abs=0.12)
    assert statistics.stdev(values) == pytest.approx(4.0, abs=0.08)
    # 15.87 % lie below one deviation under the mean.
    assert sum(value < 31.0 for value in values) / len(values) == pytest.approx(0.1587, abs=0.011)


def test_uniform():
    values = drawn(fleet.uniform(-2.0, 6.0))
    assert -2.0 < min(values) < -1.99 and 5.99 < max(values) < 6.0
    assert statistics.fmean(values) == pytest.approx(2.0, abs=0.07)
    # The variance is 8^2 / 12 = 5.333.
    assert statistics.pvariance(values) == pytest.approx(64.0 / 12.0, rel=0.04)
    assert fleet.uniform(3.0, 3.0).draw(12345) == 3.0


def test_triangular():
    values = drawn(fleet.triangular(10.0, 12.0, 20.0))
    assert 10.0 < min(values) and max(values) < 20.0
    # The mean is (10 + 12 + 20) / 3 = 14; below the mode lies (12 - 10) / (20 - 10) = 0.2 of the values.
    assert statistics.fmean(values) == pytest.approx(14.0, abs=0.08)
    assert sum(value < 12.0 for value in values) / len(values) == pytest.approx(0.2, abs=0.012)
    for mode in (10.0, 20.0):
        assert 10.0 < fleet.triangular(10.0, mode, 20.0).draw(2**62) < 20.0


def test_integers():
    values = drawn(fleet.integers(2, 4))
    for value in (2, 3, 4):
        assert values.count(value) / len(values) == pytest.approx(1.0 / 3.0, abs=0.015)
    assert set(values) == {2, 3, 4}
    edge = fleet.integers(-5, 5)
    assert (edge.draw(0), edge.draw(2**64 - 1)) == (-5, 5)


def test_choice():
    values = drawn(fleet.choice(["Diesel", "Nat. gas", "none"], [3.0, 1.0, 0.0]))
    assert values.count("Diesel") / len(values) == pytest.approx(0.75, abs=0.015)
    assert set(values) == {"Diesel", "Nat. gas"}
    last = fleet.choice([1, 2, 3], [1.0, 1.0, 0.0])
    assert (last.draw(0), last.draw(2**64 - 1)) == (1, 2)
    assert fleet.choice(range(3)).weights == (1.0, 1.0, 1.0)


@pytest.mark.parametrize("make", [
    lambda: fleet.normal(1.0, 0.0), lambda: fleet.normal(math.nan, 1.0), lambda: fleet.uniform(2.0, 1.0),
    lambda: fleet.uniform(0.0, math.inf), lambda: fleet.triangular(1.0, 4.0, 3.0), lambda: fleet.triangular(1.0, 1.0, 1.0),
    lambda: fleet.integers(3, 2), lambda: fleet.integers(0, 2**31), lambda: fleet.choice([]),
    lambda: fleet.choice([1], [0.0]), lambda: fleet.choice([1, 2], [1.0]), lambda: fleet.choice([1, 2], [1.0, -1.0])])
def test_distributions_that_are_none(make):
    with pytest.raises(ValueError):
        make()


@pytest.mark.parametrize("make", [lambda: fleet.normal("a", 1.0), lambda: fleet.integers(1.0, 2), lambda: fleet.uniform(True, 2)])
def test_distributions_of_other_types(make):
    with pytest.raises(TypeError):
        make()


def test_wilson_interval():
    # By hand for 8 of 10 at z = 1.959964: centre (0.8 + 0.192073) / 1.384146 = 0.716743,
    # half 1.959964 / 1.384146 * sqrt((0.16 + 0.0960365) / 10) = 0.226577; so 0.490166 to 0.943320.
    low, high = fleet.wilson_interval(8, 10)
    assert (low, high) == (pytest.approx(0.490162, abs=2e-5), pytest.approx(0.943318, abs=2e-5))
    assert fleet.wilson_interval(0, 10)[0] == 0.0
    # None of 10: the upper bound is z^2 / (n + z^2) = 3.841459 / 13.841459 = 0.277533.
    assert fleet.wilson_interval(0, 10)[1] == pytest.approx(0.277533, abs=1e-6)
    assert fleet.wilson_interval(10, 10) == (pytest.approx(1.0 - 0.277533, abs=1e-6), 1.0)
    wide, narrow = fleet.wilson_interval(8, 10, 0.99), fleet.wilson_interval(8, 10, 0.5)
    assert wide[0] < low < narrow[0] < 0.8 < narrow[1] < high < wide[1]
    for arguments in ((11, 10), (-1, 10), (0, 0), (1, 2, 0.0), (1, 2, 1.0)):
        with pytest.raises(ValueError):
            fleet.wilson_interval(*arguments)


# ---- sites

def test_sites_are_rows_in_order(catalogue, tmp_path):
    broken = tmp_path / "broken.prj"
    broken.write_text("Hello", encoding="utf-8")
    in_memory = genvara.read(HOSPITAL)
    in_memory.power_system.altitude = 2500.0
    projects = [*SAMPLES, tmp_path / "gone.prj", broken, in_memory]
    table = fleet.size(projects, catalogue, piece=3, max_loading=75)
    gone, unread, count = len(SAMPLES), len(SAMPLES) + 1, len(SAMPLES) + 3
    assert len(table) == count
    for place, (project, row) in enumerate(zip(projects, table)):
        assert row == table[place] and row["number"] == place
        if place in (gone, unread):
            continue
        read = project if project is in_memory else genvara.read(project)
        result = read.size(catalogue, max_loading=75)
        first = result.recommended[0] if result.recommended else None
        for name in ("model_num", "alt_num", "engine_num", "nominal_rating", "derated_rating", "max_step_volt_dip",
                     "max_step_freq_dip", "max_step_vthd"):
            assert row[name] == getattr(first, name, None)
        assert (row["num_recommended"], row["num_undersized"], row["total_running_kw"], row["peak_starting_kva"]) == (
            result.counts["recommended"], result.counts["undersized"], result.total_running_kw, result.peak_starting_kva)
        assert row["error"] is None and row["skipped"] == 0
    assert sum(row["model_num"] is None and row["error"] is None for row in table) == 1  # no set does for the quarry
    assert table[0]["project"] == str(SAMPLES[0]) and table[-1]["project"] == in_memory.proj_name
    assert (table[gone]["error_number"], table[gone]["model_num"], table[gone]["num_recommended"]) == (53, None, None)
    assert "compatible" in table[unread]["error"]
    with pytest.raises(IndexError):
        _ = table[count]
    with pytest.raises(IndexError):
        _ = table[-count - 1]


def test_no_sites(catalogue):
    assert len(fleet.size([], catalogue)) == 0


def test_arguments_are_checked_before_any_work(catalogue, tmp_path):
    for keywords, error in (({"max_load": 3}, TypeError), ({"max_loading": 101}, genvara.RaisedError),
                            ({"piece": 0}, ValueError), ({"piece": 1.5}, ValueError)):
        with pytest.raises(error):
            fleet.size(SAMPLES, catalogue, out=tmp_path / "out.db", **keywords)
    with pytest.raises(TypeError):
        fleet.size([3], catalogue)
    assert list(tmp_path.iterdir()) == []


def test_progress_is_told(catalogue):
    told = []
    fleet.size(SAMPLES, catalogue, piece=3, progress=lambda done, total: told.append((done, total)))
    pieces = math.ceil(len(SAMPLES) / 3)
    assert told == [(done, pieces) for done in range(1, pieces + 1)]


@pytest.mark.parametrize(("total", "sizings"), [(1, 2_000), (32_000, 2_000), (32_001, 2_001), (160_000, 10_000), (160_001, 10_000)])
def test_a_study_has_sixteen_pieces_unless_they_are_too_small_or_too_large(total, sizings):
    assert _pieces.sizings_of(None, total) == sizings
    assert _pieces.sizings_of(7, total) == 7


# ---- chances

def test_a_run_is_what_sizing_the_changed_project_says(hospital, catalogue):
    study = fleet.chances(hospital, DRAWN, runs=60, seed=7, catalogue=catalogue, max_sets_recommended=3)
    counts = {}
    first = {}
    for run, row in enumerate(study):
        temperature = DRAWN["PowerSystem.AmbTemp"].draw(_draws.bits(7, run, "PowerSystem.AmbTemp"))
        quantity = DRAWN["Step[2].Load[1].Quantity"].draw(_draws.bits(7, run, "Step[2].Load[1].Quantity"))
        assert (row["run"], row["PowerSystem.AmbTemp"], row["Step[2].Load[1].Quantity"]) == (run, temperature, quantity)
        own = genvara.read(HOSPITAL)
        own.power_system.amb_temp = temperature
        own.steps[1].loads[0].quantity = quantity
        point = genvara.sweep(hospital, catalogue, {"Step[2].Load[1].Quantity": [quantity],
                                                    "PowerSystem.AmbTemp": [temperature]})[0]
        result = own.size(catalogue, max_sets_recommended=100_000)
        assert set_of(point.set)["ModelNum"] == row["model_num"]
        assert (row["derated_rating"], row["alt_num"], row["engine_num"], row["nominal_rating"]) == (
            point.set.derated_rating, point.set.alt_num, point.set.engine_num, point.set.nominal_rating)
        assert (row["tightest_test"], row["tightest_step"], row["tightest_margin"]) == (
            point.tightest.name, point.tightest.step_number, point.tightest.margin)
        assert row["num_recommended"] == len(result.recommended)
        for model in {one.model for one in result.recommended}:
            counts[model] = counts.get(model, 0) + 1
        first[row["model_num"]] = first.get(row["model_num"], 0) + 1
    assert {one.model: one.count for one in study.sets()} == counts
    assert {one.model: one.first for one in study.sets() if one.first} == first
    assert len(counts) > 3
    shown = study.sets()
    assert [one.count for one in shown] == sorted((one.count for one in shown), reverse=True)


def test_of_set(hospital, catalogue):
    study = fleet.chances(hospital, DRAWN, runs=400, seed=7, catalogue=catalogue)
    one = study.of_set("MV900D")
    assert (one.runs, one.low, one.high) == (400, *fleet.wilson_interval(one.count, 400))
    assert one.low < one.share < one.high and one.share == one.count / 400
    assert f"MV900D does the job in {one.count} of 400 runs" in str(one)
    alternators = {row["alt_num"] for row in study if row["model_num"] == "MV900D"}
    parts = [study.of_set("MV900D", alternator) for alternator in alternators]
    assert max(part.count for part in parts) <= one.count <= sum(part.count for part in parts)
    assert sum(part.first for part in parts) == one.first
    assert study.of_set("MV900D", confidence=0.5).low > one.low
    with pytest.raises(KeyError, match="MV1D"):
        study.of_set("MV1D")
    never = next(row["GensetModel"] for row in catalogue.table("Gensets")
                 if row["GensetModel"] not in {shown.model for shown in study.sets()})
    assert study.of_set(never).count == 0
    assert "MV900D" in study._repr_html_() and "400 runs" in repr(study)


def test_the_seed_alone_decides(hospital, catalogue):
    tables = [list(fleet.chances(hospital, DRAWN, runs=50, seed=seed, piece=piece, catalogue=catalogue))
              for seed, piece in ((7, 50), (7, 7), (8, 50))]
    assert tables[0] == tables[1] != tables[2]
    # More runs, or another member, leave the draws as they are.
    more = fleet.chances(hospital, DRAWN | {"PowerSystem.Altitude": fleet.uniform(0.0, 100.0)}, runs=60, seed=7,
                         catalogue=catalogue)
    assert [row["PowerSystem.AmbTemp"] for row in more][:50] == [row["PowerSystem.AmbTemp"] for row in tables[0]]


def test_draws_that_are_out_of_range_are_told(hospital, catalogue):
    wild = fleet.normal(0.0, 4000.0)
    with pytest.warns(UserWarning) as told:
        study = fleet.chances(hospital, {"PowerSystem.Altitude": wild, "PowerSystem.AmbTemp": fleet.normal(35.0, 1.0)},
                              runs=300, seed=3, catalogue=catalogue)
    values = [wild.draw(_draws.bits(3, run, "PowerSystem.Altitude")) for run in range(300)]
    outside = [not -500.0 <= value <= 4572.0 for value in values]
    assert study.out_of_range == {"PowerSystem.Altitude": sum(outside)}
    assert str(told[0].message).startswith(f"{sum(outside)} of 300 draws of PowerSystem.Altitude were out of its range")
    assert 100 < sum(outside) < 200
    for row, value, is_outside in zip(study, values, outside):
        assert row["PowerSystem.Altitude"] == value  # as it was drawn, and not clipped
        assert (row["error"] is not None, row["model_num"] is None or not is_outside) == (is_outside, True)
        assert (row["out_of_range"] == "PowerSystem.Altitude") == is_outside
    assert study.errors == 0
    assert study.sets()[0].count <= 300 - sum(outside)
    assert study.sets()[0].runs == 300


def test_runs_that_fail_are_counted(catalogue):
    project = genvara.new(catalogue)
    step = project.add_step("One")
    step.add_load("Motor", hp=50.0)
    method = fleet.choice([0, 1])
    # With the second entry method there is no horsepower: those runs fail.
    study = fleet.chances(project, {"Step[1].Load[1].DataEntryMethod": method, "Step[1].Load[1].HP": fleet.uniform(20.0, 60.0)},
                          runs=40, seed=3, catalogue=catalogue)
    second = sum(method.draw(_draws.bits(3, run, "Step[1].Load[1].DataEntryMethod")) for run in range(40))
    assert 10 < second < 30
    assert study.errors == second and study.out_of_range == {}
    assert all("HP" in row["error"] for row in study if row["error"])


def test_codes_stand_by_name(hospital, catalogue):
    study = fleet.chances(hospital, {"PowerSystem.Fuel": fleet.choice(["diesel", genvara.Fuel.NAT_GAS])}, runs=20, seed=5,
                          catalogue=catalogue)
    assert {row["PowerSystem.Fuel"] for row in study} == {name for name, code in fuels().items() if code in (1, genvara.Fuel.NAT_GAS)}


def fuels():
    row, = [row for row in genvara.describe("PowerSystem") if row["name"] == "Fuel"]
    return row["codes"]


@pytest.mark.parametrize("distributions, error", [
    ({"PowerSystem.Height": fleet.normal(1.0, 1.0)}, genvara.RaisedError),
    ({"Step[99].MaxVoltageDipOverride": fleet.integers(5, 9)}, genvara.RaisedError),
    ({"Step[2].Load[1].Quantity": fleet.normal(2.0, 1.0)}, ValueError),
    ({"PowerSystem.MaxFreqDipEnabled": fleet.integers(0, 1)}, ValueError),
    ({"PowerSystem.Fuel": fleet.normal(1.0, 1.0)}, ValueError),
    ({"PowerSystem.Fuel": fleet.choice(["Diesle"])}, genvara.RaisedError),
    ({"PowerSystem.Altitude": fleet.choice(["high"])}, TypeError)])
def test_what_cannot_be_drawn(hospital, catalogue, distributions, error):
    with pytest.raises(error):
        fleet.chances(hospital, distributions, runs=10, seed=1, catalogue=catalogue)


def test_numbers_of_runs(hospital, catalogue):
    for keywords, error in (({"runs": 0, "seed": 1}, ValueError), ({"runs": 1.0, "seed": 1}, TypeError),
                            ({"runs": 1, "seed": "x"}, TypeError), ({"runs": True, "seed": 1}, TypeError)):
        with pytest.raises(error):
            fleet.chances(hospital, DRAWN, catalogue=catalogue, **keywords)
    assert len(fleet.chances(hospital, {}, runs=1, seed=2**200, catalogue=catalogue)) == 1


# ---- files of results

def test_results_in_a_file(hospital, catalogue, tmp_path):
    out = tmp_path / "runs.db"
    in_memory = fleet.chances(hospital, DRAWN, runs=100, seed=7, piece=30, catalogue=catalogue)
    with_file = fleet.chances(hospital, DRAWN, runs=100, seed=7, piece=30, catalogue=catalogue, out=out)
    assert list(in_memory) == list(with_file) and with_file.file == str(out)
    assert in_memory.sets() == with_file.sets()
    with pytest.raises(FileExistsError, match="resume"):
        fleet.chances(hospital, DRAWN, runs=100, seed=7, piece=30, catalogue=catalogue, out=out)
    again = fleet.chances(hospital, DRAWN, runs=100, seed=7, piece=30, catalogue=catalogue, out=out, resume=True)
    assert list(again) == list(in_memory)


def test_a_file_of_a_study_that_never_began(hospital, catalogue, tmp_path):
    out = tmp_path / "runs.db"
    out.touch()
    with pytest.raises(FileExistsError, match="resume"):
        fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, out=out)
    begun = fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, out=out, resume=True)
    assert list(begun) == list(fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue))
    others = tmp_path / "others.db"
    with sqlite3.connect(others) as database:
        database.execute("CREATE TABLE mine (number INTEGER)")
    with pytest.raises(ValueError, match="no results"):
        fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, out=others, resume=True)


def test_a_file_of_another_study(hospital, catalogue, tmp_path):
    out = tmp_path / "runs.db"
    fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, out=out).close()
    other = genvara.read(HOSPITAL)
    other.power_system.altitude = 5.0
    for project, drawn_, keywords, what in (
            (hospital, DRAWN, {"runs": 11, "seed": 7}, "runs"), (hospital, DRAWN, {"runs": 10, "seed": 8}, "seed"),
            (other, DRAWN, {"runs": 10, "seed": 7}, "project"), (hospital, {}, {"runs": 10, "seed": 7}, "distributions"),
            (hospital, DRAWN, {"runs": 10, "seed": 7, "max_loading": 70}, "limits")):
        with pytest.raises(ValueError, match=f"another {what}"):
            fleet.chances(project, drawn_, catalogue=catalogue, out=out, resume=True, **keywords)
    with pytest.raises(ValueError, match="another kind"):
        fleet.size(SAMPLES, catalogue, out=out, resume=True)
    text = tmp_path / "notes.txt"
    text.write_text("Hello, I am no database at all.", encoding="utf-8")
    with pytest.raises(ValueError, match="no results"):
        fleet.size(SAMPLES, catalogue, out=text, resume=True)
    assert text.read_text(encoding="utf-8") == "Hello, I am no database at all."


def test_a_run_that_was_stopped_goes_on(catalogue, tmp_path, monkeypatch):
    out = tmp_path / "sites.db"

    class Stop(Exception):
        pass

    def stop(done, total):
        if done == 2:
            raise Stop

    with pytest.raises(Stop) as raised:
        fleet.size(SAMPLES, catalogue, piece=2, out=out, progress=stop)
    pieces = math.ceil(len(SAMPLES) / 2)
    assert f"2 of {pieces} pieces" in raised.value.__notes__[0] and "resume=True" in raised.value.__notes__[0]
    read = []
    known = genvara._core._read
    monkeypatch.setattr(genvara._core, "_read", lambda path, catalogue_: read.append(path) or known(path, catalogue_))
    table = fleet.size(SAMPLES, catalogue, piece=2, out=out, resume=True)
    assert read == [str(path) for path in SAMPLES[4:]]
    assert list(table) == list(fleet.size(SAMPLES, catalogue))
    with sqlite3.connect(out) as database:
        assert [number for number, in database.execute("SELECT number FROM pieces ORDER BY 1")] == list(range(pieces))


def test_csv(catalogue, tmp_path):
    table = fleet.size([*SAMPLES, tmp_path / 'gone, "too".prj'], catalogue, out=tmp_path / "sites.db")
    table.to_csv(tmp_path / "sites.csv")
    with open(tmp_path / "sites.csv", newline="", encoding="utf-8") as file:
        titles, *rows = list(csv.reader(file))
    assert tuple(titles) == table.columns and len(rows) == len(SAMPLES) + 1
    for line, row in zip(rows, table):
        for title, cell in zip(titles, line):
            value = row[title]
            assert cell == "" if value is None else type(value)(cell) == value
    assert sorted(path.name for path in tmp_path.iterdir()) == ["sites.csv", "sites.db"]
    with pytest.raises(ValueError):
        table.to_csv(tmp_path / "sites.db")
    with pytest.raises(OSError):
        table.to_csv(tmp_path / "nowhere" / "sites.csv")
    frame = table.to_pandas()
    assert list(frame.columns) == titles and list(frame["model_num"])[:8] == [row["model_num"] for row in table][:8]
    assert "<table>" in table._repr_html_() and "&quot;too&quot;" in table._repr_html_()


def test_csv_holds_no_formulas_and_keeps_who_may_read_it(hospital, catalogue, tmp_path):
    texts = ["=1+2", " @sum", "-5", "-", "+x", "a=b"]
    path = "Step[1].Description"
    table = fleet.chances(hospital, {path: fleet.choice(texts)}, runs=60, seed=7, catalogue=catalogue)
    written = tmp_path / "runs.csv"
    mask = os.umask(0o027)
    try:
        table.to_csv(written)
        assert written.stat().st_mode & 0o7777 == 0o640
        written.chmod(0o600)
        table.to_csv(written)
        assert written.stat().st_mode & 0o7777 == 0o600
    finally:
        os.umask(mask)
    with open(written, newline="", encoding="utf-8") as file:
        shown = {row[path] for row in csv.DictReader(file)}
    assert shown == {"'=1+2", "' @sum", "-5", "-", "'+x", "a=b"}


def test_nothing_of_a_cluster_is_needed():
    code = ("import sys; from genvara import fleet; fleet.size([]); "
            "print(sorted(set(sys.modules) & {'pandas', 'numpy', 'distributed', 'dask'}))")
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True, env=WITH_MODULE)
    assert done.stdout == "[]\n"
