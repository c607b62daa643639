"""What the tests of the verbs that study a project share: the program, a catalogue, and projects in JSON that a
test may change as it likes.
"""
import copy
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None


class StudyCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp())
        cls.database = cls.folder / "catalogue.db"
        done = cls.program("catalog", "build", SOURCE / "data/catalog", "-o", cls.database)
        assert done.returncode == 0, done.stderr
        cls.samples = sorted((SOURCE / "samples").glob("*.prj"))

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    @staticmethod
    def program(*arguments, **options):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=300, **options)

    def verb(self, verb, *arguments):
        return self.program(verb, "--db", self.database, *arguments)

    def lines(self, verb, *arguments, status=0):
        """The objects that a verb writes."""
        done = self.verb(verb, "--json", *arguments)
        self.assertEqual(done.returncode, status, done.stderr)
        return [json.loads(line) for line in done.stdout.splitlines()]

    def sized(self, project, *arguments):
        done = self.verb("size", "--json", project, *arguments)
        self.assertIn(done.returncode, (0, 4), done.stderr)
        return json.loads(done.stdout)

    def first(self, project, *arguments):
        """The first recommended set of a project as `size` has it, or None."""
        sets = self.sized(project, *arguments)["ChosenSets"]
        return sets[0] if sets else None

    def total(self, project, *arguments):
        """Its rating times the sets in parallel."""
        sizing = self.sized(project, *arguments)
        sets = sizing["ChosenSets"]
        return sets[0]["NominalRating"] * sizing["PowerSystem"]["GensetsInParallel"] if sets else None

    def as_json(self, project):
        """A project's records."""
        file = self.folder / "converted.json"
        done = self.program("convert", "--db", self.database, project, "-o", file)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(file.read_text())

    def written(self, records, name="project.json"):
        file = self.folder / name
        file.write_text(json.dumps(records))
        return file

    def of_many_digits(self, sample):
        """A project of a sample whose motors have powers of more digits than the 15 that a .prj keeps."""
        records = self.as_json(sample)
        for step in records["LoadProfile"]:
            for load in step["Loads"]:
                if load["LoadType"] == "Motor":
                    load["StartingAppPower"] *= 1 + 1 / 3e5
        return records

    def refused(self, verb, *arguments, status=2, says=()):
        """A sentence on standard error, nothing on standard output."""
        done = self.verb(verb, *arguments)
        self.assertEqual((done.returncode, done.stdout), (status, ""), done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        for word in says:
            self.assertIn(word, done.stderr)
        return done.stderr


def member(records, path):
    """The record and the name of the member that a path leads to."""
    record, _, name = path.rpartition(".")
    if not record.startswith("Step"):
        return records[record], name
    step, _, load = record.partition(".")
    target = records["LoadProfile"][int(step[5:-1]) - 1]
    return (target["Loads"][int(load[5:-1]) - 1] if load else target), name


def changed(records, **values):
    """A copy of a project with members changed as they stand; dots are written as double underscores."""
    records = copy.deepcopy(records)
    for path, value in values.items():
        record, name = member(records, path)
        record[name] = value
    return records
