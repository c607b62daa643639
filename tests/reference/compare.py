#!/usr/bin/env python3
"""Compares the console program's answers with a second computation over random projects.

    compare.py CLI [--seed N] [--count N] [--keep FOLDER] [--coverage]

CLI is the console program, with its genset database beside it. Ends with status 1 if an answer differs.
"""

import argparse
import json
import random
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from cases.catalogues import GivenCatalogue, RandomCatalogue
from cases.failing import prepare
from cases.json_twin import json_twin
from cases.projects import RandomProject
from comparison import Comparison
from coverage import Coverage
from sizer.answer import answers_for
from sizer.database import Database
from sizer.designer import Limits

DATABASE = "Genvara.db"
PROJECTS_PER_RUN = 10
# Of a run of fewer projects, nobody can ask that it meet everything.
LEAST_COVERED_COUNT = 600
EVERY_SET = 1000
# Share of the runs that explain every candidate, and not the sets of the lists alone.
EVERY_CANDIDATE = 0.1
SHOWN_DIFFERENCES = 12
TIMEOUT_SECONDS = 120
# Connections for which distortion is worked out.
WITH_DISTORTION = (1, 2)


class Judge:
    """Sizes projects twice and reports where the answers part."""

    def __init__(self, cli, keep):
        self.cli, self.keep = cli, keep
        self.comparison, self.coverage, self.different = Comparison(), Coverage(), 0

    def program(self, command, database, paths, limits, jobs):
        command = [self.cli, *command, "--json", "--db", database, "--jobs", jobs, "--min-loading",
                   limits.min_loading, "--max-loading", limits.max_loading, "--max-sets", limits.max_chosen,
                   "--max-undersized", limits.max_rejected, *paths]
        return subprocess.run([str(part) for part in command], capture_output=True, text=True, encoding="utf-8",
                              timeout=TIMEOUT_SECONDS, check=False)

    def judge(self, name, database, paths, limits=Limits(), jobs=1, every=False):
        """Whether the program's answers for the projects are those of the second computation.

        Projects are sized, explained (the sets of both lists, or every candidate), and sized again as JSON.
        """
        sizings, explanations = zip(*(answers_for(path, database, limits, every) for path in paths))
        for sizing, explanation in zip(sizings, explanations):
            self.coverage.add(sizing)
            self.coverage.add_explanation(explanation)
        explain = ["explain", "--all"] if every else ["explain"]
        differences = []
        for command, expected in ((["size"], sizings), (explain, explanations)):
            run = self.program(command, database, paths, limits, jobs)
            differences += [*self.outcome(run, paths, sizings, expected), *self.answers(run.stdout, expected)]
        differences += self.of_twins(database, paths, sizings, limits, jobs)
        if differences:
            self.report(name, database, paths, differences)
        return not differences

    def of_twins(self, database, paths, sizings, limits, jobs):
        """Where the answers for the same projects as JSON part from those expected."""
        opened = Database(database)
        twins = [path.with_suffix(".json") for path in paths]
        for path, twin in zip(paths, twins):
            twin.write_bytes(json_twin(path.read_bytes(), opened))
        opened.close()
        expected = [{**sizing, "File": str(twin)} for sizing, twin in zip(sizings, twins)]
        run = self.program(["size"], database, twins, limits, jobs)
        return [f"as JSON: {text}" for text in (*self.outcome(run, twins, expected, expected),
                                                *self.answers(run.stdout, expected))]

    @staticmethod
    def outcome(run, paths, sizings, expected):
        failed = any("Error" in one for one in expected)
        status = 4 if failed else 0
        if run.returncode != status:
            yield f"exit status: expected {status}, got {run.returncode}; {run.stderr.strip()}"
        told = [line for line in run.stderr.splitlines() if ": error" not in line]
        if told != warnings(paths, sizings, expected):
            yield f"standard error: {run.stderr.strip()}"

    def answers(self, text, expected):
        lines = text.split("\n")[:-1]
        if len(lines) != len(expected):
            return [f"expected {len(expected)} answers, got {len(lines)}"]
        self.comparison.differences = []
        for number, (one, line) in enumerate(zip(expected, lines)):
            self.comparison.walk(one, parsed(line), f"project {number}")
        return self.comparison.differences

    def report(self, name, database, paths, differences):
        self.different += 1
        kept = Path(tempfile.mkdtemp(prefix="genvara-difference-", dir=self.keep))
        for file in (database, *paths):
            shutil.copy(file, kept)
        print(f"DIFFERENT: {name}; files kept in {kept}")
        for text in differences[:SHOWN_DIFFERENCES]:
            print(f"  {text}")
        if len(differences) > SHOWN_DIFFERENCES:
            print(f"  and {len(differences) - SHOWN_DIFFERENCES} more")

    def closing_line(self):
        seen = self.comparison
        return (f"{self.coverage.met['projects']} projects, {self.different} runs differ; {seen.figures} figures, the"
                f" worst off by {seen.worst:.3g}; {seen.others} texts, codes and counts")


def warnings(paths, sizings, expected):
    """What is said of harmonic limits that nothing can be held against."""
    sites = [(path, sizing.get("PowerSystem")) for path, sizing, one in zip(paths, sizings, expected) if "Error" not in one]
    return [f"{path}: warning: no distortion figures for this connection; the limit of {site['MaxHarmonics']} % was not"
            " tested." for path, site in sites
            if site and site["MaxHarmonicsEnabled"] and site["ConnectCode"] not in WITH_DISTORTION]


def parsed(line):
    """What the line says, or the line itself if it is no JSON."""
    try:
        return json.loads(line)
    except ValueError:
        return line


def random_limits(rng):
    """The usual ones, any, or those that show every set."""
    loading = rng.choice((0, 10, 30, 50, 120)), rng.choice((60, 80, 90, 100))
    return rng.choice((Limits(), Limits(*loading, rng.choice((0, 1, 2, 4, 16)), rng.choice((0, 1, 3, 5, 100))),
                       Limits(*loading, EVERY_SET, EVERY_SET)))


def judge_random_projects(judge, given, seed, count, folder):
    """By turns for the given catalogue and for one made up."""
    for first in range(0, count, PROJECTS_PER_RUN):
        rng = random.Random(f"{seed} {first}")
        place = Path(folder) / str(first)
        place.mkdir()
        made_up = first // PROJECTS_PER_RUN % 2 == 1
        catalogue = RandomCatalogue(rng, place / "catalogue.db") if made_up else given
        paths = [place / f"project-{first + i}.prj" for i in range(min(PROJECTS_PER_RUN, count - first))]
        for path in paths:
            project = RandomProject(rng, catalogue)
            judge.coverage.add_project(project)
            path.write_bytes(project.data())
        name = f"projects {first} to {first + len(paths) - 1} of seed {seed}"
        if judge.judge(name, catalogue.path, paths, random_limits(rng), rng.randint(1, 2), rng.random() < EVERY_CANDIDATE):
            shutil.rmtree(place)


def judge_failing_cases(judge, folder):
    for name, database, path in prepare(folder):
        judge.judge(name, database, [path], every=True)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("cli", type=Path)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=300)
    parser.add_argument("--keep", help="folder for the files of runs that differ; the system's temporary one if none")
    parser.add_argument("--coverage", action="store_true", help="tell what the projects met")
    return parser.parse_args()


def main():
    options = arguments()
    judge, given = Judge(options.cli, options.keep), GivenCatalogue(options.cli.with_name(DATABASE))
    with tempfile.TemporaryDirectory(prefix="genvara-reference-") as folder:
        judge_failing_cases(judge, folder)
        judge_random_projects(judge, given, options.seed, options.count, folder)
    if options.coverage:
        for name, number in sorted(judge.coverage.met.items()):
            print(f"{number:9d}  {name}")
    missing = judge.coverage.missing() if options.count >= LEAST_COVERED_COUNT else []
    for name in missing:
        print(f"The projects met no {name}.")
    print(judge.closing_line())
    return 1 if judge.different or missing else 0


if __name__ == "__main__":
    sys.exit(main())
