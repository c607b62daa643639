"""`genvara-cli explain` as a user and a script see it.

    test_explain.py GENVARA-CLI SOURCE-FOLDER
"""
import json
import math
import os
import pathlib
import pty
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

TOP_KEYS = ["File", "Candidates", "Recommended", "Undersized", "BelowMinLoading", "Sets"]
SET_KEYS = ["ModelNum", "AltNum", "EngineNum", "NominalRating", "DeratedRating", "Verdict", "Class", "Loading", "Steps",
            "Tightest"]
TEST_KEYS = ["Name", "Bit", "Unit", "Needed", "Available", "Applies", "Fails", "Margin"]
TESTS = [("EngineStart", 1, "kW"), ("Rating", 2, "kW"), ("MaxLoading", 8, "kW"), ("PhaseLoading", 4, "kW"),
         ("OneStepCapability", 256, "kW"), ("FrequencyDip", 128, "%"), ("AlternatorStart", 16, "kVA"),
         ("VoltageDip", 512, "%"), ("Distortion", 32, "%")]
# Voltage and frequency dips in percent, highest class first.
CLASSES = (("G3", 15, 7), ("G2", 20, 10), ("G1", 25, 15))
DIESEL = 1


class Explain(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp())
        cls.database = cls.folder / "catalogue.db"
        done = cls.run_program("catalog", "build", SOURCE / "data/catalog", "-o", cls.database)
        assert done.returncode == 0, done.stderr
        cls.samples = sorted((SOURCE / "samples").glob("*.prj"))

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    @staticmethod
    def run_program(*arguments, **options):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=120, **options)

    def explain(self, *arguments):
        return self.run_program("explain", "--db", self.database, *arguments)

    def explained(self, *arguments):
        done = self.explain("--json", *arguments)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(done.stdout.count("\n"), 1)
        return json.loads(done.stdout)

    def sized(self, *arguments):
        return json.loads(self.run_program("size", "--db", self.database, "--json", *arguments).stdout)

    def damaged(self, *statements):
        file = self.folder / "damaged.db"
        shutil.copy(self.database, file)
        connection = sqlite3.connect(file)
        for statement in statements:
            connection.execute(statement)
        connection.commit()
        connection.close()
        return file

    # --- what a script reads

    def test_an_explanation_has_its_keys_in_their_order(self):
        result = self.explained(SOURCE / "samples/hospital.prj")
        self.assertEqual(list(result), TOP_KEYS)
        for explained in result["Sets"]:
            self.assertEqual(list(explained), SET_KEYS)
            self.assertEqual(list(explained["Tightest"]), ["Name", "StepNumber", "Margin"])
            for number, step in enumerate(explained["Steps"], 1):
                self.assertEqual(list(step), ["StepNumber", "Tests"])
                self.assertEqual(step["StepNumber"], number)
                self.assertEqual([list(test) for test in step["Tests"]], [TEST_KEYS] * len(TESTS))
                self.assertEqual([(test["Name"], test["Bit"], test["Unit"]) for test in step["Tests"]], TESTS)

    def test_the_sets_are_those_of_both_lists_with_the_bits_of_their_rejection(self):
        for sample in self.samples:
            result, sizing = self.explained(sample), self.sized(sample)
            listed = sizing["ChosenSets"] + sizing["RejectedSets"]
            self.assertEqual(len(result["Sets"]), len(listed), sample)
            for explained, found in zip(result["Sets"], listed):
                for key in ("ModelNum", "AltNum", "EngineNum", "NominalRating", "DeratedRating"):
                    self.assertEqual(explained[key], found[key])
                bits = 0
                for step in explained["Steps"]:
                    for test in step["Tests"]:
                        bits |= test["Bit"] if test["Fails"] else 0
                self.assertEqual(bits, found.get("RejectionReason", 0), (sample, found["ModelNum"]))
                self.assertEqual(explained["Verdict"], "undersized" if bits else "recommended")

    def test_the_figures_are_those_of_the_sizing(self):
        for sample in self.samples:
            sizing = self.sized(sample)
            sets = self.explained(sample)["Sets"]
            for explained, found in zip(sets, sizing["ChosenSets"] + sizing["RejectedSets"]):
                for s, step in enumerate(explained["Steps"]):
                    needed = {test["Name"]: test["Needed"] for test in step["Tests"]}
                    self.assertEqual(needed["VoltageDip"], found["VoltageDips"][s])
                    self.assertEqual(needed["FrequencyDip"], found["FreqDips"][s])
                    self.assertEqual(needed["Distortion"],
                                     max(found[f"StepVTHD_{phase}"][s] for phase in "ABC"))
                    available = {test["Name"]: test["Available"] for test in step["Tests"]}
                    self.assertEqual(available["VoltageDip"], sizing["LoadProfile"][s]["StepMaxVoltageDip"])
                total = sizing["Designer"]["TotalRunningKW"]
                sets_in_parallel = sizing["PowerSystem"]["GensetsInParallel"]
                self.assertAlmostEqual(explained["Loading"], 100 * total / (sets_in_parallel * found["DeratedRating"]))

    def test_margins_tightest_tests_and_classes_follow_from_the_figures(self):
        for sample in self.samples:
            sizing = self.sized(sample)
            fuels = [found["FuelType"] for found in sizing["ChosenSets"] + sizing["RejectedSets"]]
            for explained, fuel in zip(self.explained(sample)["Sets"], fuels):
                tightest, frequency_data = None, False
                for step in explained["Steps"]:
                    for test in step["Tests"]:
                        self.assertEqual(test["Fails"], test["Applies"] and test["Available"] < test["Needed"])
                        if not test["Applies"] or test["Available"] == 0:
                            self.assertIsNone(test["Margin"])
                            continue
                        margin = 100 * (test["Available"] - test["Needed"]) / test["Available"]
                        self.assertTrue(math.isclose(test["Margin"], margin, rel_tol=1e-12, abs_tol=1e-9))
                        if tightest is None or test["Margin"] < tightest["Margin"]:
                            tightest = {"Name": test["Name"], "StepNumber": step["StepNumber"],
                                        "Margin": test["Margin"]}
                        frequency_data = frequency_data or test["Name"] == "OneStepCapability"
                self.assertEqual(explained["Tightest"], tightest)
                self.assertEqual(explained["Class"], self.class_of(explained) if frequency_data and fuel == DIESEL
                                 else None, (sample, explained["ModelNum"]))

    @staticmethod
    def class_of(explained):
        dips = [{test["Name"]: test["Needed"] for test in step["Tests"]} for step in explained["Steps"]]
        for name, voltage, frequency in CLASSES:
            if all(dip["VoltageDip"] <= voltage and dip["FrequencyDip"] <= frequency for dip in dips):
                return name
        return "none"

    def test_counts_are_those_of_all_candidates(self):
        for sample in self.samples:
            result = self.explained(sample, "--max-sets", 1, "--max-undersized", 0)
            self.assertLessEqual(len(result["Sets"]), 1)
            counts = [result[key] for key in TOP_KEYS[2:5]]
            self.assertEqual(sum(counts), result["Candidates"])
            every = self.explained(sample, "--all")
            self.assertEqual([every[key] for key in TOP_KEYS[1:5]], [result[key] for key in TOP_KEYS[1:5]])
            verdicts = [one["Verdict"] for one in every["Sets"]]
            self.assertEqual([verdicts.count(word) for word in ("recommended", "undersized", "below minimum loading")],
                             counts)
            site = self.sized(sample)["PowerSystem"]
            with sqlite3.connect(self.database) as connection:
                rows = connection.execute(
                    "Select GensetModel from [Gensets] where Frequency = ? and WindingConnection = ? and VoltageLL = ?"
                    " and ? in (0, Fuel)", (site["Freq"], site["ConnectCode"], site["Voltage"], site["Fuel"]))
                self.assertEqual([one["ModelNum"] for one in every["Sets"]], [model for model, in rows])

    def test_limits_of_the_call_count(self):
        hospital = SOURCE / "samples/hospital.prj"
        strict = self.explained(hospital, "--max-loading", 60)
        for one in strict["Sets"]:
            rating = one["Steps"][0]["Tests"][1]["Available"]
            self.assertAlmostEqual(one["Steps"][0]["Tests"][2]["Available"], 0.6 * rating)
        self.assertLess(strict["Recommended"], self.explained(hospital)["Recommended"])
        self.assertEqual(self.explained(hospital, "--min-loading", 0)["BelowMinLoading"], 0)

    def test_models_are_listed_in_the_order_of_the_catalogue(self):
        hospital = SOURCE / "samples/hospital.prj"
        every = [one["ModelNum"] for one in self.explained(hospital, "--all")["Sets"]]
        asked = self.explained(hospital, "--model", "MV1000D", "--model", "MV30D", "--model", "MV1000D")
        self.assertEqual([one["ModelNum"] for one in asked["Sets"]],
                         [model for model in every if model in ("MV30D", "MV1000D")])
        self.assertEqual(asked["Candidates"], len(every))

    def test_a_model_that_is_no_candidate_is_told_from_one_that_nobody_makes(self):
        hospital = SOURCE / "samples/hospital.prj"
        # A gas set is in the catalogue, and no candidate of a diesel site.
        done = self.explain("--model", "MV80G", hospital)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn('"MV80G" is in the genset database, but', done.stderr)
        done = self.explain("--model", "MV801D", hospital)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn('"MV801D" is not in the genset database', done.stderr)
        self.assertEqual(len(done.stderr.splitlines()), 1)
        done = self.explain("--json", "--model", "MV801D", hospital)
        self.assertEqual(list(json.loads(done.stdout)), ["File", "Error"])
        self.assertEqual(self.explain("--model", "MV800D", "--model", "mv800d", hospital).returncode, 2)

    def test_a_site_without_candidates_explains_itself(self):
        file = self.folder / "nowhere.prj"
        file.write_bytes((SOURCE / "samples/farm.prj").read_bytes().replace(b"240\r\n", b"241\r\n", 1))
        result = self.explained(file)
        self.assertEqual([result[key] for key in TOP_KEYS[1:]], [0, 0, 0, 0, []])
        self.assertIn("No candidates: ", self.explain(file).stdout)

    def test_a_project_that_fails_fails_as_it_does_when_it_is_sized(self):
        hospital, farm = SOURCE / "samples/hospital.prj", SOURCE / "samples/farm.prj"
        for statement in ("Update [Gensets] set LRkVA = null", "Delete from [Alternators]",
                          "Update [Derate Codes] set TempDerateBase = 'x'"):
            database = self.damaged(statement)
            arguments = ("--json", "--db", database, hospital)
            expected, done = self.run_program("size", *arguments), self.run_program("explain", *arguments)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (4, expected.stdout, expected.stderr))
        done = self.explain("--json", self.folder / "none.prj", farm)
        self.assertEqual(done.returncode, 3)
        self.assertEqual([list(json.loads(line))[1] for line in done.stdout.splitlines()], ["Error", "Candidates"])
        self.assertEqual(json.loads(done.stdout.splitlines()[0])["Error"]["Number"], 53)
        done = self.run_program("explain", "--json", "--db", self.folder / "none.db", farm)
        self.assertEqual((done.returncode, json.loads(done.stdout)["Error"]["Number"]), (3, 53))

    def test_a_load_that_cannot_be_worked_out_fails_its_project_without_candidates_too(self):
        file = self.folder / "charger.prj"
        for voltage in (b"480", b"481"):
            file.write_bytes(b'8,0,0,1\r\n#2003-05-20 09:15:00#,"C","D",#2003-05-21 17:02:11#,"Job","U"\r\n'
                             b'0,25,1,60,1,1\r\n20,#FALSE#,15,#FALSE#\r\n20,3,3,' + voltage +
                             b'\r\n1\r\n"Step 1",15\r\n1\r\n1,1,"Charger","",1,0\r\n1E+300,1E+300,1,1\r\n')
            done = self.explain("--json", file)
            self.assertEqual(done.returncode, 4)
            self.assertEqual(json.loads(done.stdout)["Error"], {
                "Number": 6, "Source": "CBatChrgLoad::RunningAppPower", "Description": "Overflow"})

    def test_several_projects_come_in_order_whatever_the_jobs(self):
        outputs = set()
        for jobs in (1, 2, 16):
            done = self.explain("--json", "--jobs", jobs, *self.samples)
            self.assertEqual(done.returncode, 0)
            self.assertEqual([json.loads(line)["File"] for line in done.stdout.splitlines()], list(map(str, self.samples)))
            outputs.add(done.stdout)
        self.assertEqual(len(outputs), 1)

    def test_arguments_that_are_off_end_with_usage(self):
        for arguments in ((), ("--model",), ("--jobs", "0", "x"), ("--max-loading", "101", "x")):
            done = self.explain(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn("Usage:", done.stderr)

    def test_full_output_is_told(self):
        with open("/dev/full", "w") as full:
            done = subprocess.run([PROGRAM, "explain", "--db", self.database, self.samples[0]], stdout=full,
                                  stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual(done.returncode, 4)
        self.assertIn("No space left on device", done.stderr)

    # --- what a person reads

    def test_the_table_sets_the_first_recommended_set_beside_the_next_smaller_one(self):
        text = self.explain(SOURCE / "samples/hospital.prj").stdout
        result = self.explained(SOURCE / "samples/hospital.prj", "--all")
        first = self.explained(SOURCE / "samples/hospital.prj")["Sets"][0]
        smaller = [one for one in result["Sets"] if one["NominalRating"] < first["NominalRating"]
                   and one["Verdict"] == "undersized"]
        largest = max(one["NominalRating"] for one in smaller)
        following = max((one for one in smaller if one["NominalRating"] == largest),
                        key=lambda one: one["Tightest"]["Margin"])
        self.assertIn(f'Why {first["ModelNum"]} {first["AltNum"]} and not the smaller {following["ModelNum"]} '
                      f'{following["AltNum"]}\n', text)
        counts = [result[key] for key in TOP_KEYS[1:5]]
        self.assertIn("{} candidates: {} recommended, {} undersized, {} below the minimum loading of 30 %\n"
                      .format(*counts), text)

    def test_failing_tests_are_marked_by_a_word(self):
        for sample in self.samples:
            text, result = self.explain(sample, "--all").stdout, self.explained(sample, "--all")
            failing = sum(len({test["Name"] for step in one["Steps"] for test in step["Tests"] if test["Fails"]})
                          for one in result["Sets"])
            self.assertEqual(text.count("FAILS"), failing, sample)
            self.assertNotIn("\033", text)

    def test_the_verdict_of_the_quarry_is_a_sentence(self):
        text = self.explain(SOURCE / "samples/quarry.prj").stdout
        self.assertRegex(text, r"  undersized: step 3, Crusher: \d+\.\d % dip, 15 % allowed\n")
        self.assertIn("90 candidates: 0 recommended, 90 undersized, 0 below", text)

    def test_steps_shows_every_step(self):
        sample = SOURCE / "samples/telecom-shelter.prj"
        sets = self.explained(sample)["Sets"]
        plain, full = self.explain(sample).stdout, self.explain("--steps", sample).stdout
        more = len(full.splitlines()) - len(plain.splitlines())
        # A blank line, a title and a rule for each set, and a line for each test of each step.
        self.assertEqual(more, sum(3 + len(TESTS) * len(one["Steps"]) for one in sets))

    def test_tables_of_several_projects_stand_apart(self):
        text = self.explain(self.samples[0], self.samples[1]).stdout
        self.assertIn(f"\n\n{self.samples[1]}\n", text)

    # --- long work

    def many(self, count):
        folder = self.folder / f"many-{count}"
        if not folder.exists():
            folder.mkdir()
            for i in range(count):
                os.symlink(self.samples[i % len(self.samples)], folder / f"{i:05}.prj")
        return sorted(map(str, folder.iterdir()))

    def test_ctrl_c_ends_a_batch_between_whole_lines(self):
        files = self.many(500)
        target = self.folder / "stopped.json"
        stopped = 0
        for delay in (0.0, 0.05, 0.1, 0.2, 0.4):
            with open(target, "wb") as stream:
                process = subprocess.Popen([PROGRAM, "explain", "--json", "--all", "--jobs", "2", "--db",
                                            self.database, *files], stdout=stream, stderr=subprocess.PIPE)
                self.wait_for_handler(process)
                time.sleep(delay)
                process.send_signal(signal.SIGINT)
                errors = process.communicate(timeout=60)[1]
            self.assertIn(process.returncode, (130, 0))
            self.assertEqual(errors, b"")
            stopped += process.returncode == 130
            lines = target.read_bytes().split(b"\n")
            self.assertEqual(lines.pop(), b"")
            for i, line in enumerate(lines):
                self.assertEqual(json.loads(line)["File"], files[i])
        self.assertGreater(stopped, 0)

    @staticmethod
    def wait_for_handler(process):
        """Until the program has a handler of its own for the signal."""
        bit = 1 << (signal.SIGINT - 1)
        while process.poll() is None:
            status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
            caught = next(line.split()[1] for line in status.splitlines() if line.startswith("SigCgt:"))
            if int(caught, 16) & bit:
                return
            time.sleep(0.002)

    def test_progress_is_for_terminals(self):
        files = self.many(500)
        command = [PROGRAM, "explain", "--json", "--all", "--db", self.database, *files]
        mine, terminal = pty.openpty()
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=terminal)
        os.close(terminal)
        shown = b""
        try:
            while chunk := os.read(mine, 4096):
                shown += chunk
        except OSError:
            pass  # the other end is closed
        os.close(mine)
        self.assertEqual(process.wait(), 0)
        self.assertRegex(shown.decode(), r"\d+ of 500 projects")
        self.assertTrue(shown.endswith(b"\r\033[K"), shown[-40:])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
