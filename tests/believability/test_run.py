"""The runner finds an answer outside its range, of the wrong fuel, above its bound, and a run that fails."""

import contextlib
import io
import json
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

import run

# Stands in for the console program: answers from a table of case name -> [rating, fuel], null for none.
STAND_IN = """
import json, pathlib, sys
project = pathlib.Path(sys.argv[2])
if not project.is_file():
    sys.exit(3)
answer = json.load(open(sys.argv[sys.argv.index("--db") + 1]))[project.stem]
if sys.argv[1] == "explain":
    reasons = json.load(open(sys.argv[sys.argv.index("--db") + 1]))["reasons"].get(project.stem, [])
    tests = [dict(Name=name, Fails=name in reasons) for name in ("MaxLoading", "OneStepCapability", "Distortion")]
    print(json.dumps(dict(Sets=[dict(ModelNum="MV", Verdict=verdict, Steps=[dict(Tests=tests)])
                                for verdict in ("undersized",) if reasons])))
    sys.exit()
if answer == "fails":
    sys.exit("error 9")
if answer == "warns":
    sys.stderr.write("1 line was not read")
chosen = [dict(ModelNum="MV", NominalRating=answer[0], FuelType=answer[1])] if isinstance(answer, list) else []
rejected = [] if answer == "alone" else [dict(ModelNum="MV")]
print(json.dumps(dict(ChosenSets=chosen or [{}] * (answer == "alone"), RejectedSets=rejected)))
"""


class RunTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.script = Path(folder.name) / "stand-in.py"
        self.script.write_text(STAND_IN, "utf-8")
        self.database = Path(folder.name) / "answers.json"
        self.answers = {case["Case"]: self.least(case) for case in run.read_cases()}
        self.answers |= {project.stem: [100, 1] for project in run.SAMPLES.glob("*.prj")}
        self.answers |= {name: None for name in run.UNSERVED_SAMPLES}
        self.answers["reasons"] = {"heating-100kw": ["MaxLoading", "Distortion"]}

    @staticmethod
    def least(case):
        return [float(case["LeastKW"]), int(case["Fuel"])] if case["LeastKW"] else None

    @staticmethod
    def only(name):
        """Lets the runner see one case, and the one that bounds it."""
        cases = run.read_cases()
        bound = next(case["NotAbove"] for case in cases if case["Case"] == name)
        return mock.patch.object(run, "read_cases",
                                 return_value=[case for case in cases if case["Case"] in (name, bound)])

    def faults(self, sizing=run.run_cases):
        self.database.write_text(json.dumps(self.answers), "utf-8")
        with contextlib.redirect_stdout(io.StringIO()):
            return sizing([sys.executable, str(self.script)], self.database)

    def test_answers_in_their_ranges_pass(self):
        self.assertEqual(self.faults(), [])

    def test_twenty_cases_have_a_project_and_a_hand_reasoning(self):
        cases = [case["Case"] for case in run.read_cases()]
        self.assertEqual(len(set(cases)), 20)
        reasoning = (run.FOLDER / "README.md").read_text("utf-8")
        for case in cases:
            self.assertIn(f"**{case}.**", reasoning)
        self.assertEqual(sorted(cases), sorted(path.stem for path in (run.FOLDER / "cases").glob("*.prj")))

    def test_each_fault_is_told(self):
        for case, answer, expected in (
                ("heating-100kw", [124.9, 1], "gives 124.9 kW"),
                ("heating-100kw", [175.1, 1], "gives 175.1 kW"),
                ("heating-100kw", [150, 2], "has fuel 2"),
                ("heating-100kw", [175, 1], "above the 150 kW of heating-100kw-gas"),
                ("heating-100kw", None, "no set was chosen"),
                ("heating-100kw", "fails", "error 9"),
                ("heating-100kw", "warns", "1 line was not read"),
                ("motor-500hp-gas", [1000, 2], "where no set can serve")):
            with self.subTest(answer=answer):
                self.answers[case], usual = answer, self.answers[case]
                with self.only(case):
                    found = self.faults()
                self.answers[case] = usual
                self.assertEqual(len(found), 1)
                self.assertIn(f"{case}: ", found[0])
                self.assertIn(expected, found[0])

    def test_a_set_that_fails_for_another_reason_is_told(self):
        self.answers["reasons"]["ups-100kva-six-pulse"] = ["MaxLoading", "OneStepCapability"]
        with self.only("ups-100kva-six-pulse"):
            found = self.faults()
        self.assertEqual(found, ["ups-100kva-six-pulse: MV is undersized for MaxLoading, OneStepCapability, not for"
                                 " Distortion"])

    def test_samples_show_both_lists(self):
        self.assertEqual(self.faults(run.run_samples), [])
        for sample, answer, expected in (
                ("office", None, "office: 0 sets were chosen"),
                ("office", "alone", "office: no undersized set"),
                ("office", "fails", "office: status 1: error 9"),
                ("quarry", [3000, 1], "quarry: 1 sets were chosen")):
            with self.subTest(sample=sample, answer=answer):
                self.answers[sample], usual = answer, self.answers[sample]
                found = self.faults(run.run_samples)
                self.answers[sample] = usual
                self.assertEqual(len(found), 1)
                self.assertIn(expected, found[0])


if __name__ == "__main__":
    unittest.main()
