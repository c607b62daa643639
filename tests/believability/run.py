#!/usr/bin/env python3
"""Sizes the classic cases and the samples, and reports each whose answer no engineer would believe.

    run.py CLI DB

CLI is the console program, DB the genset database. Ends with status 1 if a case lies outside its range.
"""

import csv
import json
import subprocess
import sys
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
SAMPLES = FOLDER.parents[1] / "samples"

# Samples that are there to show what a site looks like that no set can serve.
UNSERVED_SAMPLES = {"quarry"}

# What a run of the console program or a look into its answer may end in.
FAILURES = (RuntimeError, ValueError, LookupError, subprocess.TimeoutExpired)


def read_cases():
    with open(FOLDER / "cases.csv", newline="", encoding="utf-8") as file:
        return list(csv.DictReader(file))


def size(command, database, project, options=(), verb="size"):
    """What the console program says of a project; a run that fails raises RuntimeError."""
    run = subprocess.run([*command, verb, str(project), "--db", str(database), "--json", *options],
                         capture_output=True, text=True, encoding="utf-8", timeout=60, check=False)
    if run.returncode != 0:
        raise RuntimeError(f"status {run.returncode}: {run.stderr.strip() or run.stdout.strip()}")
    # A warning on standard error means that a line of the project was not read as it was meant.
    if run.stderr.strip():
        raise RuntimeError(run.stderr.strip())
    return json.loads(run.stdout)


def first_chosen(command, database, case):
    """The smallest recommended set of a case, or None."""
    project = FOLDER / "cases" / f"{case['Case']}.prj"
    chosen = size(command, database, project, case["Options"].split())["ChosenSets"]
    return chosen[0] if chosen else None


def unreasonable(command, database, case):
    """Which undersized set fails for none of the reasons that it should, or None."""
    project = FOLDER / "cases" / f"{case['Case']}.prj"
    explanation = size(command, database, project, case["Options"].split(), "explain")
    for one in explanation["Sets"]:
        failing = {test["Name"] for step in one["Steps"] for test in step["Tests"] if test["Fails"]}
        if one["Verdict"] == "undersized" and not failing & set(case["Decides"].split()):
            return f"{one['ModelNum']} is undersized for {', '.join(sorted(failing))}, not for {case['Decides']}"
    return None


def judge(case, answer, answers):
    """What is wrong with the answer, or None."""
    if not case["LeastKW"]:
        return f"{answer['ModelNum']} was chosen where no set can serve" if answer else None
    if answer is None:
        return "no set was chosen"
    rating = answer["NominalRating"]
    if not float(case["LeastKW"]) <= rating <= float(case["MostKW"]):
        return f"{answer['ModelNum']} gives {rating:g} kW, not {case['LeastKW']} to {case['MostKW']}"
    if answer["FuelType"] != int(case["Fuel"]):
        return f"{answer['ModelNum']} has fuel {answer['FuelType']}, not {case['Fuel']}"
    above = answers.get(case["NotAbove"])
    if above and rating > above["NominalRating"]:
        return f"{rating:g} kW, above the {above['NominalRating']:g} kW of {case['NotAbove']}"
    return None


def run_cases(command, database):
    """Sizes all cases; returns the faults as lines."""
    cases, answers, faults = read_cases(), {}, []
    for case in cases:
        try:
            answers[case["Case"]] = first_chosen(command, database, case)
            fault = unreasonable(command, database, case)
            faults += [f"{case['Case']}: {fault}"] if fault else []
        except FAILURES as error:
            faults.append(f"{case['Case']}: {error}")
    for case in cases:
        if case["Case"] in answers:
            fault = judge(case, answers[case["Case"]], answers)
            faults += [f"{case['Case']}: {fault}"] if fault else []
    for name, answer in answers.items():
        print(f"{name:32} {answer['ModelNum']} {answer['NominalRating']:g} kW" if answer else f"{name:32} none")
    return faults


def run_samples(command, database):
    """A sample shows both lists, recommended and undersized; returns the faults as lines."""
    faults = []
    for project in sorted(SAMPLES.glob("*.prj")):
        try:
            answer = size(command, database, project)
            if bool(answer["ChosenSets"]) == (project.stem in UNSERVED_SAMPLES):
                faults.append(f"{project.stem}: {len(answer['ChosenSets'])} sets were chosen")
            if not answer["RejectedSets"]:
                faults.append(f"{project.stem}: no undersized set to compare with")
        except FAILURES as error:
            faults.append(f"{project.stem}: {error}")
    return faults


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    found = run_cases([sys.argv[1]], sys.argv[2]) + run_samples([sys.argv[1]], sys.argv[2])
    if found:
        print("\n".join(["", "Not believable:", *found]), file=sys.stderr)
    sys.exit(1 if found else 0)
