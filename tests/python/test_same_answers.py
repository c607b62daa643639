"""The module says what `genvara-cli size --json` and `explain --json` say, to the last bit."""
import json
import warnings

import pytest
import random_projects

import genvara
from conftest import SOURCE
from told import set_of, tightest_of, told_by

def answer(result):
    """What both tell, in the form of the console's JSON."""
    return {"Designer": {"TotalRunningKW": result.total_running_kw, "PeakStartingKVA": result.peak_starting_kva,
                         "VTHD_CalcsValid": result.vthd_calcs_valid, "DatabaseVersion": result.database_version,
                         "MinLoading": result.designer.min_loading, "MaxLoading": result.designer.max_loading,
                         "MaxSetsRecommended": result.designer.max_sets_recommended,
                         "MaxSetsUndersized": result.designer.max_sets_undersized,
                         "NumChosenSets": len(result.recommended), "NumRejectedSets": len(result.undersized)},
            "ChosenSets": [set_of(one) for one in result.recommended],
            "RejectedSets": [{"RejectionReason": one.rejection_reason, "Reasons": one.reasons} | set_of(one)
                             for one in result.undersized]}


def sized(file, catalogue, **limits):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        project = genvara.read(file)
    try:
        result = project.size(catalogue, **limits)
        # The console's output asks every load for its powers, and so does this.
        for step in project.steps:
            _ = [step.total_starting_apparent_power(), *(load.summary for load in step.loads)]
        return answer(result)
    except genvara.RaisedError as error:
        return {"Error": {"Number": error.number, "Source": error.source}}


def told(line):
    if "Error" in line:
        return {"Error": {name: line["Error"][name] for name in ("Number", "Source")}}
    return {name: line[name] for name in ("Designer", "ChosenSets", "RejectedSets")}


SAMPLES = sorted((SOURCE / "samples").glob("*.prj"))


def test_samples(catalogue):
    assert SAMPLES
    lines = told_by("size", "--json", *SAMPLES)
    assert [told(line) for line in lines] == [sized(file, catalogue) for file in SAMPLES]


def test_samples_with_other_limits(catalogue):
    limits = {"min_loading": 10, "max_loading": 70, "max_sets_recommended": 3, "max_sets_undersized": 7}
    lines = told_by("size", "--json", "--min-loading", 10, "--max-loading", 70, "--max-sets", 3,
                    "--max-undersized", 7, *SAMPLES)
    assert [told(line) for line in lines] == [sized(file, catalogue, **limits) for file in SAMPLES]


def test_random_projects(catalogue, tmp_path):
    files = []
    for seed in range(500):
        files.append(tmp_path / f"{seed}.json")
        files[-1].write_text(json.dumps(random_projects.project(seed)), encoding="utf-8")
    lines = [told(line) for line in told_by("size", "--json", "--jobs", 2, *files)]
    found = [sized(file, catalogue) for file in files]
    assert len(lines) == 500
    for file, line, answer_ in zip(files, lines, found):
        assert line == answer_, file
    # Most of them are sized, and some with sets in both lists.
    assert sum("Error" not in line for line in lines) > 250
    assert sum(bool(line.get("ChosenSets")) and bool(line.get("RejectedSets")) for line in lines) > 50


@pytest.mark.parametrize("file", SAMPLES, ids=lambda file: file.stem)
def test_explanations(catalogue, file):
    line, = told_by("explain", "--json", "--all", file)
    result = genvara.read(file).size(catalogue)
    counts = {"candidates": line["Candidates"], "recommended": line["Recommended"], "undersized": line["Undersized"],
              "below_min_loading": line["BelowMinLoading"]}
    assert result.counts == counts
    sets = result.explain(all=True)
    assert len(sets) == len(line["Sets"])
    for found, expected in zip(sets, line["Sets"]):
        assert (found.model, found.verdict, found.transient_class, found.loading, tightest_of(found.tightest)) == tuple(
            expected[name] for name in ("ModelNum", "Verdict", "Class", "Loading", "Tightest"))
        for tests, step in zip(found.steps, expected["Steps"], strict=True):
            for test, row in zip(tests, step["Tests"], strict=True):
                assert (test.name, test.bit, test.unit, test.needed, test.available, test.applies, test.fails,
                        test.margin) == tuple(row[name] for name in ("Name", "Bit", "Unit", "Needed", "Available",
                                                                     "Applies", "Fails", "Margin"))


def test_describe():
    names = ("Kind", "Name", "Type", "Unit", "Least", "Greatest", "AboveLeast")
    lines = told_by("describe", "--json")
    rows = genvara.describe()
    assert len(rows) == len(lines) > 70
    for row, line in zip(rows, lines):
        assert [row[genvara_name] for genvara_name in ("kind", "name", "type", "unit", "least", "greatest",
                                                       "above_least")] == [line[name] for name in names]
        assert row["codes"] == {code["Name"]: code["Code"] for code in line["Codes"]}
        assert line["Meaning"].startswith(row["meaning"])
