"""`genvara-cli order` as a user and a script see it, and against every order there is.

    test_order.py GENVARA-CLI SOURCE-FOLDER

GENVARA_LONG_TESTS=1 tries many more projects.
"""
import copy
import itertools
import json
import os
import random
import re
import signal
import subprocess
import sys
import time
import unittest

from random_projects import project
from study import PROGRAM, SOURCE, StudyCase

LONG = "GENVARA_LONG_TESTS" in os.environ
KEYS = ["File", "Now", "Best", "Proven", "Bound", "Steps"]


def places(records):
    return [[f"Step[{s}].Load[{l}]" for l in range(1, len(step["Loads"]) + 1)]
            for s, step in enumerate(records["LoadProfile"], 1)]


def at(records, place):
    step, load = map(int, re.fullmatch(r"Step\[(\d+)]\.Load\[(\d+)]", place).groups())
    return records["LoadProfile"][step - 1], records["LoadProfile"][step - 1]["Loads"][load - 1]


def reordered(records, order):
    """A second way to the project that an order means."""
    result = copy.deepcopy(records)
    result["LoadProfile"] = [{"Description": "", "Loads": [copy.deepcopy(at(records, place)[1]) for place in group],
                              "MaxVoltageDipOverride": min(at(records, place)[0]["MaxVoltageDipOverride"]
                                                           for place in group)} for group in order]
    return result


def partitions(items, most):
    """Every sequence of groups of the items, no more than `most`."""
    if not items:
        yield []
        return
    if most == 0:
        return
    for size in range(1, len(items) + 1):
        for group in itertools.combinations(items, size):
            rest = [item for item in items if item not in group]
            for others in partitions(rest, most - 1):
                yield [list(group), *others]


def keeps(order, before, together):
    step = {place: number for number, group in enumerate(order) for place in group}
    return (all(step[a] < step[b] for a, b in before) and all(step[a] == step[b] for a, b in together))


def rating(found):
    return found["NominalRating"] if found else float("inf")


class Order(StudyCase):
    def order(self, records_or_file, *arguments):
        file = self.written(records_or_file) if isinstance(records_or_file, dict) else records_or_file
        result, = self.lines("order", file, *arguments)
        self.assertEqual(list(result), KEYS)
        return result

    def best_of(self, records, orders):
        """The least rating of any of some orders: sized, all of them, by `size`."""
        files = [self.written(reordered(records, order), f"order{number}.json")
                 for number, order in enumerate(orders)]
        best = float("inf")
        for begin in range(0, len(files), 400):
            done = self.verb("size", "--json", "--max-undersized", "0", *files[begin:begin + 400])
            for line in done.stdout.splitlines():
                sets = json.loads(line).get("ChosenSets")
                best = min(best, rating(sets[0] if sets else None))
        for file in files:
            file.unlink()
        return best

    def check_written(self, records, result, *arguments):
        """The order means the set that it promises."""
        if result["Steps"] != places(records):
            self.assertEqual(self.first(self.written(reordered(records, result["Steps"]), "again.json")),
                             result["Best"])
        for ending in ("json", "prj"):
            file = self.folder / f"best.{ending}"
            self.order(records, "-o", file, *arguments)
            self.assertEqual(self.first(file), result["Best"])

    # --- exact

    def test_it_is_the_best_of_all_orders(self):
        gained = 0
        # In the last of the few a step's limit decides.
        for seed in range(300) if LONG else (*range(5), 43, 74):
            records = project(seed, loads=3 + seed % 4 if LONG and seed > 100 else 4, steps=3)
            result = self.order(records)
            steps = len(records["LoadProfile"])
            every = partitions(list(itertools.chain(*places(records))), steps)
            self.assertEqual(rating(result["Best"]), self.best_of(records, every), seed)
            self.assertTrue(result["Proven"])
            self.assertEqual(rating(result["Bound"]), rating(result["Best"]))
            self.check_written(records, result)
            gained += rating(result["Best"]) < rating(result["Now"])
        self.assertGreater(gained, 0)

    def test_it_is_the_best_of_all_orders_that_keep_to_constraints(self):
        for seed in range(100, 200 if LONG else 105):
            dice = random.Random(seed)
            records = project(seed, loads=4 + seed % 3 if LONG else 4, steps=3)
            loads = list(itertools.chain(*places(records)))
            first, second, third = dice.sample(loads, 3)
            before, together = [(first, second)], [(second, third)]
            steps = dice.choice((2, 3))
            result = self.order(records, "--max-steps", steps, "--before", f"{first}<{second}",
                                "--together", f"{second}+{third}")
            every = [order for order in partitions(loads, steps) if keeps(order, before, together)]
            self.assertEqual(rating(result["Best"]), self.best_of(records, every), seed)
            self.assertTrue(result["Proven"])
            if result["Steps"] != places(records):
                self.assertTrue(keeps(result["Steps"], before, together))
                self.assertLessEqual(len(result["Steps"]), steps)

    def test_eight_loads_are_always_proven(self):
        for seed in range(200, 230 if LONG else 206):
            result = self.order(project(seed, loads=8, steps=4), "--seconds", "0")
            self.assertTrue(result["Proven"], seed)

    # --- a search

    def test_with_more_loads_it_is_never_larger_than_now_or_than_many_at_random(self):
        for seed in range(300, 320 if LONG else 303):
            records = project(seed, loads=12, steps=5)
            result = self.order(records)
            self.assertLessEqual(rating(result["Best"]), rating(result["Now"]))
            dice = random.Random(seed)
            loads, orders = list(itertools.chain(*places(records))), []
            for _ in range(1000 if LONG else 200):
                groups = [[] for _ in records["LoadProfile"]]
                for load in loads:
                    dice.choice(groups).append(load)
                orders.append([group for group in groups if group])
            self.assertLessEqual(rating(result["Best"]), self.best_of(records, orders), seed)
            if not result["Proven"]:
                self.assertLess(rating(result["Bound"]), rating(result["Best"]))
            self.check_written(records, result)

    def test_any_number_of_jobs_gives_the_same_bytes(self):
        file = self.written(project(301, loads=12, steps=5))
        outputs = {self.verb("order", "--json", file, "--jobs", jobs).stdout for jobs in (1, 2, 16)}
        self.assertEqual(len(outputs), 1)

    # --- what is kept

    def test_an_order_that_gains_nothing_is_the_present_one_and_is_written_all_the_same(self):
        sample = SOURCE / "samples/hospital.prj"
        new = self.folder / "same.prj"
        result = self.order(sample, "-o", new)
        records = self.as_json(sample)
        self.assertEqual(result["Steps"], places(records))
        self.assertEqual(result["Best"], result["Now"])
        self.assertEqual(self.as_json(new)["LoadProfile"], records["LoadProfile"])

    def test_a_step_without_loads_is_shown_empty(self):
        records = project(3, loads=1, steps=1)
        records["LoadProfile"].append({"Description": "later", "MaxVoltageDipOverride": 20, "Loads": []})
        result = self.order(records)
        if result["Best"] == result["Now"]:
            self.assertEqual(result["Steps"], [["Step[1].Load[1]"], []])

    def test_a_new_step_has_the_least_limit_and_lists_its_loads(self):
        records = project(5, loads=2, steps=2)
        records["LoadProfile"] = [
            {"Description": "first", "MaxVoltageDipOverride": 30,
             "Loads": [{"LoadType": "Miscellaneous", "name": "Heating", "RunningRealPower": 20000}]},
            {"Description": "second", "MaxVoltageDipOverride": 25,
             "Loads": [{"LoadType": "Miscellaneous", "name": "Lights", "RunningRealPower": 10000}]}]
        new = self.folder / "one.json"
        result = self.order(records, "--max-steps", "1", "-o", new)
        self.assertEqual(result["Steps"], [["Step[1].Load[1]", "Step[2].Load[1]"]])
        step, = json.loads(new.read_text())["LoadProfile"]
        self.assertEqual((step["Description"], step["MaxVoltageDipOverride"]), ("Heating, Lights", 25))

    def test_the_table_shows_both_orders(self):
        done = self.verb("order", SOURCE / "samples/telecom-shelter.prj")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("Now: MV35L of 35 kW", done.stdout)
        self.assertIn("Best: MV27L of 27 kW", done.stdout)
        self.assertIn("No permitted order does with a smaller set.", done.stdout)

    def test_the_table_tells_sets_in_parallel(self):
        records = self.as_json(SOURCE / "samples/office.prj")
        records["PowerSystem"]["GensetsInParallel"] = 2
        file = self.written(records)
        found = self.first(file)
        self.assertIn(f"Now: 2 x {found['ModelNum']} of {found['NominalRating']:g} kW", self.verb("order", file).stdout)

    def test_the_cold_store_starts_its_compressor_too_late(self):
        """Its 199 kW and 632 kvar come on top of 240 kW and 46 kvar, 808 kVA at once; before fans and heaters on top of
        65 kW and 23 kvar, 706 kVA, which a smaller alternator starts."""
        sample = SOURCE / "samples/cold-store.prj"
        result = self.order(sample)
        self.assertTrue(result["Proven"])
        self.assertLess(rating(result["Best"]), rating(result["Now"]))
        place = {load: step for step, loads in enumerate(result["Steps"]) for load in loads}
        self.assertLess(place["Step[5].Load[1]"], place["Step[4].Load[1]"])
        self.assertLess(place["Step[5].Load[1]"], place["Step[3].Load[1]"])

    # --- what is off

    def test_what_is_wrong_with_the_arguments_is_told(self):
        sample = SOURCE / "samples/hospital.prj"
        a, b, c = "Step[1].Load[1]", "Step[2].Load[1]", "Step[3].Load[1]"
        for arguments, says in (
                (["--before", f"{a}<{b}", "--before", f"{b}<{c}", "--before", f"{c}<{a}"], ["circle", a, b, c]),
                (["--before", f"{a}<{a}"], ["circle", a]),
                (["--before", f"{a}<{b}", "--together", f"{a}+{b}"], [f"circle: {a}+{b} < {a}+{b}."]),
                (["--before", f"{a}<Step[99].Load[1]"], ["Step[99].Load[1]", "7 steps"]),
                (["--before", f"{a}>{b}"], ["two loads"]), (["--together", f"{a}+Load[1]"], ["Load[1]"]),
                (["--max-steps", "1", "--before", f"{a}<{b}"], ["2 steps", "no more than 1"]),
                (["-o", sample], ["the project"]), (["-o", self.database], ["ends with .prj or .json"]),
                (["-o", "x.txt"], [".prj or .json"])):
            before = sample.read_bytes()
            self.refused("order", sample, *arguments, says=says)
            self.assertEqual(sample.read_bytes(), before)

    def test_what_is_promised_of_a_prj_is_what_15_digits_leave(self):
        file = self.written(self.of_many_digits(SOURCE / "samples/cold-store.prj"))
        promised = []
        for ending in ("json", "prj"):
            new = self.folder / f"many-digits.{ending}"
            promised.append(self.order(file, "-o", new)["Best"])
            self.assertEqual(self.first(new), promised[-1])
        self.assertNotEqual(*promised)  # in last bits

    def test_a_prj_whose_15_digits_need_another_set_is_not_written(self):
        """80 percent of 150 kW are 120 kW, of which a step takes half: the 17th digit of a load is too much for a set of
        150 kW, and a .prj has none."""
        half = {"LoadType": "Miscellaneous", "name": "Heater", "RunningRealPower": 60000, "RunningPowerFactor": 1.0}
        more = dict(half, RunningRealPower=60000.00000000003)
        steps = [{"Description": "", "Loads": [load]} for load in (half, more)]
        records = {"Format": "genvara-project", "Version": 1, "PowerSystem": {"Altitude": 0}, "LoadProfile": steps}
        file, new = self.written(records), self.folder / "never.prj"
        found = self.first(file)
        steps[1]["Loads"] = [half]
        self.assertLess(self.first(self.written(records, "rounded.json"))["NominalRating"], found["NominalRating"])
        self.refused("order", file, "-o", new, status=3, says=["15 digits", "another set"])
        self.assertFalse(new.exists())

    def test_options_that_no_number_or_name_follows_are_told(self):
        sample = SOURCE / "samples/hospital.prj"
        for arguments, says in ((["--seconds", "-1"], '"-1" is no number of 0 or more'),
                                (["--seconds", "soon"], '"soon" is no number of 0 or more'),
                                (["--seconds", "nan"], '"nan" is no number of 0 or more'),
                                (["--seconds", "inf"], '"inf" is no number of 0 or more'),
                                (["-o", ""], "expected a name, found nothing")):
            done = self.verb("order", sample, *arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertEqual(done.stderr.splitlines()[0], f"genvara-cli: {arguments[0]}: {says}")

    def test_control_c_leaves_no_half_written_file(self):
        project_file = self.written(project(311, loads=14, steps=6), "long.json")
        for verb, options in (("order", ["-o"]), ("advise", ["--pairs", "--apply", "0", "-o"])):
            dice = random.Random()
            for moment in [dice.uniform(0, 0.4) ** 2 * 2 for _ in range(200 if LONG else 6)]:
                new = self.folder / f"{verb}-{moment}.json"
                running = subprocess.Popen([PROGRAM, verb, "--db", self.database, project_file, *options, new],
                                           stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                time.sleep(moment)
                running.send_signal(signal.SIGINT)
                running.communicate(timeout=120)
                self.assertIn(running.returncode, (0, 2, 130, -signal.SIGINT))
                if new.exists():
                    self.assertEqual(json.loads(new.read_text())["Format"], "genvara-project")
                self.assertEqual([name.name for name in self.folder.iterdir() if new.name in name.name and name != new],
                                 [])

    def test_a_catalogue_without_candidates_has_no_set(self):
        records = project(1)
        records["PowerSystem"]["Voltage"] = 123
        result = self.order(records)
        self.assertEqual((result["Now"], result["Best"], result["Proven"], result["Bound"]), (None, None, True, None))
        advice, = self.lines("advise", self.written(records))
        self.assertIsNone(advice["Now"])
        file = self.written(records)
        for verb in ("order", "advise"):
            self.assertEqual(self.verb(verb, file).stderr, f"{file}: no candidates: the genset database has no set of "
                             "this frequency, connection, voltage and fuel.\n")

    def test_a_project_that_fails_today_is_told_and_nothing_is_written(self):
        records = project(1)
        records["LoadProfile"] = []
        new = self.folder / "never.prj"
        self.refused("order", self.written(records), "-o", new, status=4, says=["At least one load"])
        self.assertFalse(new.exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
