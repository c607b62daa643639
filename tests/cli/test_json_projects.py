"""JSON projects and what tells of their members, as a user of the console program sees them.

    test_json_projects.py GENVARA-CLI SOURCE-FOLDER
"""
import copy
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import jsonschema

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

KINDS = ["Project", "PowerSystem", "Designer", "Step", "AirConditioner", "BatteryCharger", "Lighting", "MedicalImaging",
         "Miscellaneous", "Motor", "Office", "UPS", "Drive"]

MINIMAL = {"Format": "genvara-project", "Version": 1}

PROJECT = {**MINIMAL,
           "Project": {"ProjName": "Yard", "Created": "2003-05-20T09:15:00", "LastModified": "2003-05-21T17:02:11"},
           "PowerSystem": {"Altitude": 300.5, "Freq": 60, "Fuel": "Diesel", "Voltage": 480, "ConnectCode": 1},
           "LoadProfile": [{"Description": "First", "MaxVoltageDipOverride": 20,
                            "Loads": [{"LoadType": "Miscellaneous", "name": "Pumps", "RunningRealPower": 60000,
                                       "RunningPowerFactor": 0.9},
                                      {"LoadType": 8, "Quantity": 2, "MtrRating": 20}]}]}


def with_change(path, value):
    """The project with a value at a path; with None, without it."""
    project = copy.deepcopy(PROJECT)
    place = project
    for name in path[:-1]:
        place = place[name]
    if value is None:
        del place[path[-1]]
    else:
        place[path[-1]] = value
    return project


LOAD = ["LoadProfile", 0, "Loads", 0]
DRIVE = ["LoadProfile", 0, "Loads", 1]

# What is changed, to what, and the place that both schema and program name.
REFUSED = [
    (["Format"], "project", ["Format"]),
    (["Version"], 2, ["Version"]),
    (["Site"], {}, ["Site"]),
    (["PowerSystem", "Altitude"], 4572.5, ["PowerSystem", "Altitude"]),
    (["PowerSystem", "Altitude"], "300", ["PowerSystem", "Altitude"]),
    (["PowerSystem", "Altitud"], 300, ["PowerSystem", "Altitud"]),
    (["PowerSystem", "Freq"], 60.5, ["PowerSystem", "Freq"]),
    (["PowerSystem", "Freq"], 0, ["PowerSystem", "Freq"]),
    (["PowerSystem", "Phases"], 2, ["PowerSystem", "Phases"]),
    (["PowerSystem", "Fuel"], "diesel", ["PowerSystem", "Fuel"]),
    (["PowerSystem", "MaxFreqDipEnabled"], 1, ["PowerSystem", "MaxFreqDipEnabled"]),
    (["Project", "Created"], "2003-05-20", ["Project", "Created"]),
    (["Project", "ProjName"], 5, ["Project", "ProjName"]),
    (["LoadProfile"], {}, ["LoadProfile"]),
    (["LoadProfile", 0, "MaxVoltageDipOverride"], 4, ["LoadProfile", 0, "MaxVoltageDipOverride"]),
    (LOAD + ["LoadType"], "Pump", LOAD + ["LoadType"]),
    (LOAD + ["LoadType"], None, LOAD + ["LoadType"]),
    (LOAD + ["Quantity"], 257, LOAD + ["Quantity"]),
    (LOAD + ["Phases"], 4, LOAD + ["Phases"]),
    (LOAD + ["RunningPowerFactor"], 0.59, LOAD + ["RunningPowerFactor"]),
    (DRIVE + ["MtrRating"], 0, DRIVE + ["MtrRating"]),
    (DRIVE + ["RunningRealPower"], 5, DRIVE + ["RunningRealPower"]),
    (DRIVE, {"LoadType": "Motor"}, DRIVE + ["HP"]),
    (DRIVE, {"LoadType": "Motor", "DataEntryMethod": "Running kW", "RunningRealPower": 5000, "HP": 5}, DRIVE + ["HP"]),
]

ACCEPTED = [
    (["PowerSystem", "Altitude"], -500),
    (["PowerSystem", "Fuel"], 2),
    (["PowerSystem", "Fuel"], 9),  # held by the model as it stands
    (["PowerSystem", "Phases"], 1),
    (["Project"], None),
    (["PowerSystem", "Freq"], 60.0),
    (LOAD + ["Quantity"], 256),
    (LOAD + ["Phases"], "Phase B"),
    (DRIVE, {"LoadType": "Motor", "HP": 25, "CodeLetter": "G", "StartingAppPower": 150000, "StartingPF": 0.4}),
    (DRIVE, {"LoadType": "Motor", "DataEntryMethod": 1, "RunningRealPower": 5000, "CodeLetter": "H",
             "StartingAppPower": 40000, "StartingPF": 0.4}),
    (DRIVE, {"LoadType": "AirConditioner", "DataEntryMethod": "Tonnage", "Tonnage": 5}),
]


class JsonProjects(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.temporary.name)
        cls.database = cls.folder / "catalogue.db"
        done = cls.run_program("catalog", "build", SOURCE / "data/catalog", "-o", cls.database)
        assert done.returncode == 0, done.stderr
        cls.schema = json.loads((SOURCE / "docs/project.schema.json").read_text("utf-8"))
        cls.validator = jsonschema.Draft202012Validator(cls.schema)

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    @staticmethod
    def run_program(*arguments):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=60)

    def run_with_database(self, command, *arguments):
        return self.run_program(command, "--db", self.database, *arguments)

    def project(self, content, name="job.json"):
        file = self.folder / name
        file.write_text(content if isinstance(content, str) else json.dumps(content), "utf-8")
        return file

    def convert(self, source, target, status=0):
        done = self.run_with_database("convert", source, "-o", target)
        self.assertEqual((done.returncode, done.stdout), (status, ""), done.stderr)
        return done.stderr

    # --- the schema

    def test_the_schema_in_the_tree_is_that_of_the_program(self):
        done = self.run_program("describe", "--schema")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(done.stdout, (SOURCE / "docs/project.schema.json").read_text("utf-8"),
                         "Run: genvara-cli describe --schema > docs/project.schema.json")
        jsonschema.Draft202012Validator.check_schema(self.schema)

    def places_of(self, project):
        """Where the validator finds faults: an unknown or a missing member counts as the place itself."""
        places = []
        for error in self.validator.iter_errors(project):
            path = list(error.absolute_path)
            record = project
            for name in path:
                record = record[name]
            if error.validator == "required":
                path += [name for name in error.validator_value if name not in error.instance]
            elif error.validator == "additionalProperties":
                path += [name for name in error.instance if name not in error.schema["properties"]]
            elif error.validator is None and isinstance(record, dict):
                # Of a member that must not be there some versions tell the record and the value alone.
                path += [name for name, value in record.items() if value is error.instance]
            places.append(path)
        return places

    def test_schema_and_program_refuse_the_same(self):
        for path, value, place in REFUSED:
            with self.subTest(path=path, value=value):
                project = with_change(path, value)
                self.assertIn(place, self.places_of(project))
                done = self.run_with_database("size", "--json", self.project(project))
                self.assertEqual(done.returncode, 3, done.stdout)
                error = json.loads(done.stdout)["Error"]
                self.assertEqual((error["Number"], error["Source"]), (0, ""))
                pointer = "".join(f"/{part}" for part in place)
                self.assertIn(f"{pointer}: expected ", error["Description"])
                self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)

    def test_schema_and_program_accept_the_same(self):
        for path, value in ACCEPTED:
            with self.subTest(path=path, value=value):
                project = with_change(path, value)
                self.assertEqual(list(self.validator.iter_errors(project)), [])
                done = self.run_with_database("size", self.project(project))
                self.assertEqual((done.returncode, done.stderr), (0, ""))

    # --- every verb reads them

    def test_samples_go_to_json_and_back_and_size_to_the_same_bits(self):
        samples = sorted((SOURCE / "samples").glob("*.prj"))
        self.assertGreaterEqual(len(samples), 8)
        for sample in samples:
            with self.subTest(sample=sample.name):
                there, back = self.folder / f"{sample.stem}.json", self.folder / f"{sample.stem}.prj"
                self.assertEqual(self.convert(sample, there), "")
                self.assertEqual(list(self.validator.iter_errors(json.loads(there.read_text("utf-8")))), [])
                self.assertEqual(self.convert(there, back), "")
                self.assertEqual(back.read_bytes(), sample.read_bytes())
                again = self.folder / "again.json"
                self.assertEqual(self.convert(there, again), "")
                self.assertEqual(again.read_bytes(), there.read_bytes())
                sizes = [json.loads(self.run_with_database("size", "--json", file).stdout) for file in (sample, there)]
                self.assertEqual([size.pop("File") for size in sizes], [str(sample), str(there)])
                self.assertEqual(*sizes)

    def test_reports_exports_and_checks_are_those_of_the_prj(self):
        sample = SOURCE / "samples/hospital.prj"
        project = self.folder / "hospital.json"
        self.convert(sample, project)
        for command, *arguments in (["report", "--now", "2026-01-31 12:00:00"], ["export-spec", "--set", "1"]):
            outputs = [self.run_with_database(command, *arguments, "-o", "-", file) for file in (sample, project)]
            self.assertEqual([done.returncode for done in outputs], [0, 0], outputs[1].stderr)
            self.assertGreater(len(outputs[0].stdout), 100)
            self.assertEqual(outputs[0].stdout, outputs[1].stdout)
        done = self.run_with_database("check", project)
        self.assertEqual((done.returncode, done.stdout), (0, f"{project}: read without a gap\n"))

    def test_a_check_lists_all_faults_with_their_lines(self):
        project = self.project('{"Format": "genvara-project", "Version": 1,\n"PowerSystem": {"Altitud": 1,\n"Freq": 0}}')
        done = self.run_with_database("check", project)
        self.assertEqual(done.returncode, 3)
        self.assertEqual(done.stdout.splitlines(), [
            f"{project}:3: /PowerSystem/Freq: expected a whole number 1 and above, found 0",
            f"{project}:2: /PowerSystem/Altitud: expected a member that the record has (the nearest is Altitude), "
            'found "Altitud"'])

    def test_json_is_told_by_its_brace_whatever_it_is_called(self):
        for name in ("job.prj", "job", "job.txt"):
            self.assertEqual(self.run_with_database("size", self.project(PROJECT, name)).returncode, 0, name)
        # What is called JSON is meant to be JSON.
        done = self.run_with_database("size", self.project("8,0,0,1\r\n"))
        self.assertEqual(done.returncode, 3)
        self.assertIn("job.json is no project that can be used: the text: expected ", done.stderr)

    def test_what_can_be_no_project_ends_at_once(self):
        for content in ("", "{", "[" * 100000, '{"a":' * 100000, '{"Format": NaN}', " " * 10**7, "\0", "{}"):
            with self.subTest(content=content[:20]):
                done = self.run_with_database("check", self.project(content))
                self.assertEqual(done.returncode, 3)
                self.assertIn("is no project that can be used", done.stderr)

    # --- convert

    def test_both_dates_are_kept(self):
        target = self.folder / "dates.prj"
        self.convert(self.project(PROJECT), target)
        record = target.read_text("cp1252").splitlines()[1]
        self.assertEqual(record, '#2003-05-20 09:15:00#,"","",#2003-05-21 17:02:11#,"Yard",""')

    def test_names_with_other_endings_are_refused(self):
        for name in ("out.txt", "out", "out.json.bak", "-"):
            error = self.convert(self.project(PROJECT), self.folder / name, status=2)
            self.assertIn("ends with .prj or .json", error)
            self.assertFalse((self.folder / name).exists())
        self.assertEqual(self.convert(self.project(PROJECT), self.folder / "capitals.PRJ"), "")

    def test_the_project_that_is_read_is_never_written_over(self):
        project = self.project(PROJECT)
        before = project.read_bytes()
        link = self.folder / "link.json"
        link.symlink_to(project)
        hard = self.folder / "hard.json"
        os.link(project, hard)
        for name in (project, link, hard, project.parent / "." / project.name):
            self.assertIn("not written over", self.convert(project, name, status=2))
        self.assertEqual(project.read_bytes(), before)

    def test_what_a_prj_cannot_hold_is_an_error_with_its_place(self):
        target = self.folder / "kept.prj"
        target.write_text("as it was")
        for text, expected in (('19" rack', "a text without a double quote"), ("\u03a9", "letters of Windows-1252 alone")):
            error = self.convert(self.project(with_change(LOAD + ["name"], text)), target, status=3)
            self.assertIn(f"/LoadProfile/0/Loads/0/name: expected {expected}, found ", error)
            self.assertEqual(target.read_text(), "as it was")

    def test_a_prj_that_would_lose_something_is_not_converted(self):
        damaged = self.folder / "damaged.prj"
        damaged.write_bytes((SOURCE / "samples/farm.prj").read_bytes().replace(b'",25\r\n', b'",36\r\n', 1))
        self.assertEqual(self.run_with_database("check", damaged).returncode, 1)
        error = self.convert(damaged, self.folder / "lost.json", status=3)
        self.assertIn("would be lost", error)
        self.assertFalse((self.folder / "lost.json").exists())

    def test_what_cannot_be_read_or_written_is_told(self):
        self.assertIn("error 53", self.convert(self.folder / "none.prj", self.folder / "a.json", status=3))
        self.assertIn("cannot be written", self.convert(self.project(PROJECT), self.folder / "none/a.prj", status=3))

    # --- describe

    def test_one_kind_in_full(self):
        done = self.run_program("describe", "miscellaneous")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual([line.rstrip() for line in done.stdout.splitlines()], [
            "Miscellaneous",
            "  Name                Unit  Values        Meaning",
            "  ------------------------------------------------------------------------------------------",
            "  name                      text          Name of the load, as reports show it.",
            "  Description               text          Free text.",
            "  Quantity                  1 to 256      Number of identical units that start together.",
            "  Phases                    code          How the load is connected.",
            '                                          0 "3 Phase", 1 "Phase A", 2 "Phase B", 3 "Phase C"',
            "  RunningRealPower    W     0 to 2000000  Real power of one unit, running and starting.",
            "  RunningPowerFactor        0.6 to 1      Power factor, running and starting."])

    def test_all_kinds_stand_one_below_the_other(self):
        done = self.run_program("describe")
        self.assertEqual([line for line in done.stdout.splitlines() if line and not line.startswith(" ")], KINDS)

    def test_objects_hold_the_same(self):
        rows = [json.loads(line) for line in self.run_program("describe", "--json").stdout.splitlines()]
        self.assertEqual(list(dict.fromkeys(row["Kind"] for row in rows)), KINDS)
        for row in rows:
            self.assertEqual(list(row), ["Kind", "Name", "Type", "Unit", "Least", "Greatest", "AboveLeast", "Codes",
                                         "Meaning"])
        [altitude] = [row for row in rows if row["Name"] == "Altitude"]
        self.assertEqual(altitude, {"Kind": "PowerSystem", "Name": "Altitude", "Type": "number", "Unit": "m",
                                    "Least": -500, "Greatest": 4572, "AboveLeast": False, "Codes": [],
                                    "Meaning": "Altitude of the site above sea level."})
        [horsepower] = [row for row in rows if (row["Kind"], row["Name"]) == ("Motor", "HP")]
        self.assertEqual((horsepower["Least"], horsepower["Greatest"], horsepower["AboveLeast"]), (0, 1000, True))
        [fuel] = [row for row in rows if row["Name"] == "Fuel"]
        self.assertEqual(fuel["Codes"][1], {"Code": 1, "Name": "Diesel"})

    def test_the_schema_has_the_members_that_are_described(self):
        described = {}
        for line in self.run_program("describe", "--json").stdout.splitlines():
            row = json.loads(line)
            described.setdefault(row["Kind"], []).append(row["Name"])
        properties = self.schema["properties"]
        step = properties["LoadProfile"]["items"]["properties"]
        in_schema = {"Project": list(properties["Project"]["properties"]),
                     "PowerSystem": list(properties["PowerSystem"]["properties"]),
                     "Step": [name for name in step if name != "Loads"]}
        for kind in KINDS[4:]:
            in_schema[kind] = [name for name in self.schema["$defs"][kind]["properties"] if name != "LoadType"]
        del described["Designer"]  # the limits of a run are not part of a project
        self.assertEqual(in_schema, described)

    def test_a_kind_that_is_none_is_refused_with_the_nearest(self):
        done = self.run_program("describe", "Moter")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, 'genvara-cli: there is no kind of record "Moter"; the nearest is Motor.\n')


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
