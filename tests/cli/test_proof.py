"""What the verbs that study a project promise, against what `size` says of the project that was changed and written:
every advice, order and point of a sweep, to the last bit, on the samples and on random projects of every kind of load
with the catalogue and with made-up ones.

    test_proof.py GENVARA-CLI SOURCE-FOLDER

GENVARA_LONG_TESTS=1 takes 300 random projects and all that is promised of each; GENVARA_PROOF_SEED chooses others.
"""
import copy
import json
import os
import random
import sys
import unittest

from study import SOURCE, StudyCase, changed, member

sys.path.insert(0, str(SOURCE / "tests/reference"))
from cases.catalogues import GivenCatalogue, RandomCatalogue  # noqa: E402
from cases.projects import RandomProject  # noqa: E402

LONG = "GENVARA_LONG_TESTS" in os.environ
SEED = int(os.environ.get("GENVARA_PROOF_SEED", 1))
PROJECTS = 300 if LONG else 9
PER_CATALOGUE = 3
MOST_PROVEN = 1000 if LONG else 3  # of one project's advice
POINTS = 6 if LONG else 3

# Members from which nothing follows in an entry form, with values that all may take.
PLAIN = {"PowerSystem.Altitude": (-500, 0, 1234.56789012345678, 4572), "PowerSystem.AmbTemp": (-40, 1 / 3, 66),
         "PowerSystem.GensetsInParallel": (1, 2, 5, 16), "PowerSystem.MaxVoltageDip": (5, 12, 35),
         "PowerSystem.MaxFreqDip": (5, 9, 25), "PowerSystem.MaxHarmonics": (5, 11, 20),
         "PowerSystem.MaxFreqDipEnabled": (True, False), "PowerSystem.MaxHarmonicsEnabled": (True, False),
         "PowerSystem.Fuel": (1, 2, 3, 4), "PowerSystem.Freq": (50, 60), "PowerSystem.RiseDutyCode": (0, 1, 2, 3, 4),
         "PowerSystem.Voltage": (208, 415, 480)}
PLAIN_OF_STEP = {"MaxVoltageDipOverride": (5, 13, 35)}
PLAIN_OF_LOAD = {"Quantity": (1, 3, 17)}
PLAIN_OF_KIND = {"Miscellaneous": {"RunningRealPower": (1, 12345.678901234567, 98765.4), "RunningPowerFactor": (0.6, 2 / 3, 1)},
                 "UPS": {"OutputRating": (1500, 33333.3333333333333), "InputFilterInstalled": (True, False)},
                 "Motor": {"StartingAppPower": (1000, 123456.7890123456), "StartingPF": (0.2, 1 / 3)}}


class Proof(StudyCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        print(f"GENVARA_PROOF_SEED={SEED}")
        cls.cases = [(sample, cls.database) for sample in cls.samples]
        for first in range(0, PROJECTS, PER_CATALOGUE):
            dice = random.Random(f"proof {SEED} {first}")
            catalogue = GivenCatalogue(cls.database)
            if first // PER_CATALOGUE % 3 == 2:
                catalogue = RandomCatalogue(dice, cls.folder / f"catalogue{first}.db")
            for number in range(first, min(first + PER_CATALOGUE, PROJECTS)):
                file = cls.folder / f"random{number}.prj"
                file.write_bytes(RandomProject(dice, catalogue).data())
                cls.cases.append((file, catalogue.path))

    def ask(self, verb, database, *arguments):
        done = self.program(verb, "--db", database, *arguments)
        self.assertIn(done.returncode, (0, 4), done.stderr)
        return [json.loads(line) for line in done.stdout.splitlines()], done

    def sizings(self, database, files, *options):
        found, _ = self.ask("size", database, "--json", *files, *options)
        self.assertEqual([line["File"] for line in found], [str(file) for file in files])
        return found

    def check_set(self, sizing, expected, where):
        """The first recommended set is the one that was promised, every figure of it."""
        self.assertIn("ChosenSets", sizing, where)
        chosen = sizing["ChosenSets"]
        self.assertEqual(chosen[0] if chosen else None, expected, where)

    def records_of(self, file, database, name="records.json"):
        new = self.folder / name
        done = self.program("convert", "--db", database, file, "-o", new)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(new.read_text())

    # --- advice

    def test_every_advice_gives_the_set_that_it_promises(self):
        proven, limits, kinds = 0, 0, set()
        for number, (file, database) in enumerate(self.cases):
            (result,), _ = self.ask("advise", database, "--json", file)
            if "Error" in result:
                continue
            advice = list(enumerate(result["Advice"]))
            dice = random.Random(f"advice {SEED} {number}")
            for position, one in sorted(dice.sample(advice, min(len(advice), MOST_PROVEN))):
                ending = dice.choice(("prj", "json"))
                new = self.folder / f"advised.{ending}"
                done = self.program("advise", "--db", database, file, "--apply", position, "-o", new)
                self.assertEqual(done.returncode, 0, done.stderr)
                options = [option for change in one["Changes"] if change.get("Path") == "Designer.MaxLoading"
                           for option in ("--max-loading", change["To"])]
                sizing, = self.sizings(database, [new], *options)
                self.check_set(sizing, one["Set"], (file, position, one["Text"]))
                proven += 1
                kinds.add(one["Kind"])
                if one["Kind"] == "limit" and not isinstance(one["Changes"][0]["To"], bool):
                    limits += 1
                    self.check_less(file, database, one)
        print(f"{proven} pieces of advice, {limits} of limits; {sorted(kinds)}")
        self.assertGreater(proven, 400 if LONG else 20)
        self.assertGreater(limits, 100 if LONG else 3)

    def check_less(self, file, database, advice):
        """With one unit less the limit reaches another set, or none."""
        change, = advice["Changes"]
        records, options, value = self.records_of(file, database), [], change["To"] - 1
        if change["Path"] == "Designer.MaxLoading":
            options = ["--max-loading", value]
        else:
            records = changed(records, **{change["Path"]: value})
        sizing, = self.sizings(database, [self.written(records, "less.json")], *options)
        if sizing["ChosenSets"]:
            keys = ("ModelNum", "AltNum", "EngineNum", "NominalRating")
            self.assertNotEqual([sizing["ChosenSets"][0][key] for key in keys], [advice["Set"][key] for key in keys],
                                (file, change))

    # --- orders

    def test_every_order_gives_the_set_that_it_promises(self):
        proven = gained = 0
        for number, (file, database) in enumerate(self.cases):
            new = self.folder / f"ordered.{('prj', 'json')[number % 2]}"
            (result,), done = self.ask("order", database, "--json", file, "--seconds", "60", "-o", new)
            if "Error" in result:
                self.assertEqual(done.returncode, 4)
                continue
            sizing, = self.sizings(database, [new])
            self.check_set(sizing, result["Best"], file)
            # A .prj keeps 15 digits of what it is given, and some of these files have more.
            saved = self.folder / f"saved{file.suffix}"
            self.records_of(file, database)
            self.assertEqual(self.program("convert", "--db", database, self.folder / "records.json", "-o", saved).returncode, 0)
            records = self.records_of(saved, database)
            again, = self.sizings(database, [self.written(self.reordered(records, result["Steps"]), "again.json")])
            self.check_set(again, result["Best"], (file, result["Steps"]))
            proven += 1
            gained += result["Best"] != result["Now"]
        print(f"{proven} orders, {gained} of them with a smaller set")
        self.assertGreater(proven, PROJECTS // 2)
        self.assertGreater(gained, 0)

    @staticmethod
    def reordered(records, order):
        """The project that an order means, made from its records. A step with the loads of an old one keeps its limit."""
        result = copy.deepcopy(records)
        result["LoadProfile"] = []
        for number, group in enumerate(order):
            places = [member(records, f"{place}.") for place in group]
            steps = [records["LoadProfile"][int(place[5:place.index("]")]) - 1] for place in group]
            steps = steps or [records["LoadProfile"][number]]
            result["LoadProfile"].append({
                "Description": "", "Loads": [copy.deepcopy(load) for load, _ in places],
                "MaxVoltageDipOverride": min(step["MaxVoltageDipOverride"] for step in steps)})
        return result

    # --- points

    def plain_values(self, records, dice):
        """A path to a member from which nothing follows, and some values."""
        paths = dict(PLAIN)
        for s, step in enumerate(records["LoadProfile"], 1):
            paths |= {f"Step[{s}].{name}": values for name, values in PLAIN_OF_STEP.items()}
            for l, load in enumerate(step["Loads"], 1):
                plain = PLAIN_OF_LOAD | PLAIN_OF_KIND.get(load["LoadType"], {})
                paths |= {f"Step[{s}].Load[{l}].{name}": values for name, values in plain.items() if name in load}
        path = dice.choice(sorted(paths))
        return path, paths[path]

    def test_every_point_is_what_size_says_of_the_changed_project(self):
        points = 0
        for number, (file, database) in enumerate(self.cases):
            dice = random.Random(f"points {SEED} {number}")
            records = self.records_of(file, database, "point.json")
            for _ in range(POINTS):
                axes = dict(self.plain_values(records, dice) for _ in range(2))
                vary = [f"--vary={path}={','.join(self.text(value) for value in values)}" for path, values in axes.items()]
                lines, _ = self.ask("sweep", database, "--json", self.folder / "point.json", *vary)
                files = []
                for index, line in enumerate(lines):
                    values = {path: axes[path][self.position(axes, path, index)] for path in axes}
                    files.append(self.written(changed(records, **values), f"point{index}.json"))
                for line, sizing in zip(lines, self.sizings(database, files), strict=True):
                    self.assertEqual("Error" in line, "Error" in sizing, (file, line["At"]))
                    if "Error" not in line:
                        self.check_set(sizing, line["Set"], (file, line["At"]))
                        self.assertEqual(len(sizing["ChosenSets"]), line["NumChosenSets"])
                        points += 1
                if file.suffix == ".prj":
                    self.check_point_of_records(file, database, vary, dice.choice(list(zip(lines, files))))
        print(f"{points} points")
        self.assertGreater(points, 100)

    def check_point_of_records(self, file, database, vary, point):
        """The same of a .prj: the changed project is the one that 15 digits keep."""
        of_json, changed_file = point
        lines, _ = self.ask("sweep", database, "--json", file, *vary)
        line, = (line for line in lines if line["At"] == of_json["At"])
        new = self.folder / "point.prj"
        if "Error" not in line and self.program("convert", "--db", database, changed_file, "-o", new).returncode == 0:
            sizing, = self.sizings(database, [new])
            self.check_set(sizing, line["Set"], (file, line["At"]))

    @staticmethod
    def text(value):
        return str(value).lower() if isinstance(value, bool) else repr(value)

    @staticmethod
    def position(axes, path, index):
        """The place of a point on one of two axes; the last runs fastest."""
        names = list(axes)
        fastest = len(axes[names[-1]])
        return index % fastest if path == names[-1] else index // fastest

    # --- breaks

    def test_breaks_agree_with_a_sweep_twenty_times_as_fine(self):
        breaks = passed_over = 0
        for number, (file, database) in enumerate(self.cases):
            path, first, last, by = random.Random(f"breaks {SEED} {number}").choice(
                (("PowerSystem.Altitude", 0, 4500, 150), ("PowerSystem.AmbTemp", -10, 60, 2.5),
                 ("Step[1].Load[1].Quantity", 1, 201, 20)))
            stretches, _ = self.ask("sweep", database, "--json", file, "--vary", f"{path}={first}:{last}:{by}", "--breaks")
            outputs = {self.program("sweep", "--db", database, "--json", file, "--vary", f"{path}={first}:{last}:{by}",
                                    "--breaks", "--jobs", jobs).stdout for jobs in (1, 2, 16)}
            self.assertEqual(len(outputs), 1)
            points, _ = self.ask("sweep", database, "--json", file, "--vary", f"{path}={first}:{last}:{by / 20}")
            for point in points:
                value = point["At"][path]
                answer = self.answer(point)
                inside = [row for row in stretches if row["From"] <= value <= row["To"]]
                on_the_grid = (value - first) % by == 0
                if on_the_grid:
                    self.assertEqual([self.answer(row) for row in inside], [answer], (file, path, value))
                if inside and self.answer(inside[0]) != answer:
                    low = first + (value - first) // by * by
                    self.assertTrue(self.is_passed_over(stretches, low, min(low + by, last), value), (file, path, value))
                    passed_over += 1
            breaks += len(stretches) - 1
        print(f"{breaks} breaks, {passed_over} points between them that halving passes over")
        self.assertGreater(breaks, 10)
        self.assertLess(passed_over, breaks)

    @staticmethod
    def is_passed_over(stretches, low, high, value):
        """Whether halving comes to two values with one answer around another, between which it looks no further."""
        while True:
            if any(row["From"] <= low and high <= row["To"] for row in stretches):
                return True
            middle = low + (high - low) / 2
            if isinstance(stretches[0]["From"], int) and isinstance(value, int):
                middle = low + (high - low) // 2
            if not low < middle < high or high - low < 1e-3:
                return False
            low, high = (low, middle) if value <= middle else (middle, high)

    @staticmethod
    def answer(point):
        if "Error" in point:
            return json.dumps(point["Error"])
        found = point["Set"]
        return found and (found["ModelNum"], found["AltNum"], found["EngineNum"], found["NominalRating"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
