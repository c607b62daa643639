"""`genvara-cli advise` as a user and a script see it, and against every single change there is.

    test_advise.py GENVARA-CLI SOURCE-FOLDER

GENVARA_LONG_TESTS=1 tries many more projects.
"""
import copy
import csv
import itertools
import json
import os
import sys
import unittest

from random_projects import project
from study import SOURCE, StudyCase, changed, member

LONG = "GENVARA_LONG_TESTS" in os.environ
KINDS = ["order", "split", "starter", "rectifier", "limit", "rise", "sets", "fuel"]
# In each of these a limit is raised together with another, or with the switch that ends another.
PAIRED_LIMITS = (8, 17, 57)
HIGHEST = {"MaxVoltageDip": 35, "MaxVoltageDipOverride": 35, "MaxFreqDip": 25, "MaxHarmonics": 20, "MaxLoading": 100}


METHODS = ["Across the Line", "Autotransformer w/ 80% Tap", "Autotransformer w/ 65% Tap", "Part Winding", "Wye-Delta",
           "Solid State"]
FUELS = ["Diesel", "Nat. Gas", "L.P.", "Gasoline"]
RISES = ["80C Continuous", "105C Prime", "125C Prime", "130C Standby", "150C Standby"]


class Advise(StudyCase):
    def advise(self, records_or_file, *arguments):
        file = self.written(records_or_file) if isinstance(records_or_file, dict) else records_or_file
        result, = self.lines("advise", file, *arguments)
        self.assertEqual(list(result), ["File", "Now", "Advice"])
        return result

    def is_smaller(self, total, now):
        return total is not None and (now is None or total < now)

    def options(self, advice):
        """What of an advice is no part of a project."""
        for change in advice["Changes"]:
            if change.get("Path") == "Designer.MaxLoading":
                return ["--max-loading", change["To"]]
        return []

    # --- the promise

    def check_promises(self, file, *arguments):
        """Every advice, applied, gives its set to the bit, in both formats; a limit fails with one unit less."""
        result = self.advise(file, *arguments)
        now = self.total(file)
        totals = []
        for number, advice in enumerate(result["Advice"]):
            self.assertEqual(list(advice), ["Kind", "Text", "Changes", "Set", "Saved", "Tightest"])
            options = self.options(advice)
            for ending in ("json", "prj"):
                new = self.folder / f"applied.{ending}"
                done = self.verb("advise", file, *arguments, "--apply", number, "-o", new)
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertEqual("--max-loading" in done.stderr, bool(options))
                self.assertEqual(self.first(new, *options), advice["Set"], (file, number))
            explained, = self.lines("explain", new, *options)
            self.assertEqual(explained["Sets"][0]["Tightest"], advice["Tightest"])
            total = self.total(new, *options)
            totals.append(total)
            self.assertTrue(self.is_smaller(total, now), (file, number))
            self.assertEqual(advice["Saved"], None if now is None else now - total)
            self.check_one_unit_less(file, advice)
        self.assertEqual(totals, sorted(totals))
        return result

    def check_one_unit_less(self, file, advice):
        if advice["Kind"] != "limit" or isinstance(advice["Changes"][0]["To"], bool):
            return
        change, = advice["Changes"]
        records = self.as_json(file)
        value = change["To"] - 1
        if change["Path"] == "Designer.MaxLoading":
            found = self.first(self.written(records, "less.json"), "--max-loading", value)
        else:
            found = self.first(self.written(changed(records, **{change["Path"]: value}), "less.json"))
        same = found and (found["ModelNum"], found["AltNum"]) == (advice["Set"]["ModelNum"], advice["Set"]["AltNum"])
        self.assertFalse(same, change)

    def test_every_advice_on_every_sample_keeps_its_promise(self):
        for sample in self.samples:
            self.check_promises(sample)

    def test_every_advice_on_random_projects_keeps_its_promise(self):
        seen = set()
        for seed in range(300 if LONG else 6):
            file = self.written(project(seed), f"random{seed}.json")
            seen |= {advice["Kind"] for advice in self.check_promises(file)["Advice"]}
        self.assertGreaterEqual(seen, {"order", "split", "starter", "limit", "sets", "fuel"})

    def test_pairs_keep_their_promise_and_beat_both_of_their_changes(self):
        pairs = 0
        for seed in range(400, 420 if LONG else 403):
            file = self.written(project(seed, loads=4, steps=3), "pairs.json")
            kinds = ["--kinds", "starter,rise,sets,split"]
            singles = {json.dumps(advice["Changes"]): advice for advice in self.advise(file, *kinds)["Advice"]}
            for advice in self.check_promises(file, "--pairs", *kinds)["Advice"]:
                explicit = [change for change in advice["Changes"] if "Follows" not in change]
                if "+" not in advice["Kind"]:
                    self.assertIn(json.dumps(advice["Changes"]), singles)
                    continue
                pairs += 1
                self.assertEqual(len(explicit), 2)
                records = self.as_json(file)
                for change in explicit:
                    for single in singles.values():
                        if change == single["Changes"][0]:
                            sets = [c["To"] for c in explicit if c.get("Path") == "PowerSystem.GensetsInParallel"]
                            of = sets[0] if sets else records["PowerSystem"]["GensetsInParallel"]
                            alone = sets[0] if change.get("Path") == "PowerSystem.GensetsInParallel" else \
                                records["PowerSystem"]["GensetsInParallel"]
                            self.assertLess(advice["Set"]["NominalRating"] * of,
                                            single["Set"]["NominalRating"] * alone)
        self.assertGreater(pairs, 0)

    # --- nothing is left out

    def brute_force(self, records):
        """Each single change of the table but orders and the most loading, made in the project's text."""
        for path, name in self.limits(records):
            record, key = member(records, path)
            for value in range(record[key] + 1, HIGHEST[name] + 1):
                yield {path: value}, changed(records, **{path: value})
        site = records["PowerSystem"]
        for flag in ("MaxFreqDipEnabled", "MaxHarmonicsEnabled"):
            if site[flag]:
                yield {flag: False}, changed(records, **{f"PowerSystem.{flag}": False})
        for sets in range(site["GensetsInParallel"] + 1, 2 * site["GensetsInParallel"] + 1):
            yield {"sets": sets}, changed(records, **{"PowerSystem.GensetsInParallel": sets})
        for fuel in range(1, 5):
            if fuel != site["Fuel"]:
                yield {"fuel": fuel}, changed(records, **{"PowerSystem.Fuel": fuel})
        # By their degrees: 80, 105, 125, 130, 150; codes count from 0 in this order.
        for rise in range(site["RiseDutyCode"] + 1, 5):
            yield {"rise": rise}, changed(records, **{"PowerSystem.RiseDutyCode": rise})
        for s, step in enumerate(records["LoadProfile"]):
            for l, load in enumerate(step["Loads"]):
                path = f"Step[{s + 1}].Load[{l + 1}]"
                if load.get("StartsLoaded"):
                    yield {path: "unloaded"}, changed(
                        records, **{f"{path}.StartsLoaded": False, f"{path}.StartingPF": load["StartingPF"] * 0.65})
                for method, figures in self.starters(load):
                    yield {path: f"starter {method}"}, changed(
                        records, **{f"{path}.{name}": value for name, value in figures.items()})
                if load.get("InputType") == 1:
                    yield {path: "12 pulse"}, changed(records, **{f"{path}.InputType": 2})
                if load["LoadType"] == "UPS":
                    yield {path: "filter"}, changed(records, **{f"{path}.InputFilterInstalled": True})
                for behind in (0, 1):
                    if len(step["Loads"]) > 1:
                        split = copy.deepcopy(records)
                        moved = split["LoadProfile"][s]["Loads"].pop(l)
                        split["LoadProfile"].insert(s + behind, {
                            "Description": "", "MaxVoltageDipOverride": step["MaxVoltageDipOverride"],
                            "Loads": [moved]})
                        yield {path: f"split {behind}"}, split

    def starters(self, motor):
        """Every other starting method of a motor, with what its form shows then: from the catalogue's tables."""
        if motor["LoadType"] != "Motor":
            return
        table = self.table("Motor Code Letters")
        locked = motor["HP"] * next(float(row["LRkVAPerHP"]) for row in table if row["CodeLetter"] == motor["CodeLetter"])
        multipliers = [float(row["Multiplier"]) for row in self.table("Motor Starting Multiplier")]
        kva = {method: locked * multiplier for method, multiplier in enumerate(multipliers, 1)}
        # A soft starter holds the current at its limit, 300 % of the running one in a new motor.
        kva[6] = min(3.0 * self.running_kva(motor["HP"]), locked)
        for method, start in kva.items():
            if method != motor["StartingMethod"]:
                yield method, {"StartingMethod": method, "StartingAppPower": round(start, 2) * 1000}

    @staticmethod
    def table(name):
        with open(SOURCE / f"data/catalog/{name}.csv", newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))

    def running_kva(self, hp):
        """On the line between the two neighbours in the table."""
        rows = sorted((float(row["HP"]), float(row["RunningKVA"])) for row in self.table("Motor Power Conversions"))
        for (low, low_kva), (high, high_kva) in zip(rows, rows[1:]):
            if low <= hp <= high:
                return low_kva + (hp - low) / (high - low) * (high_kva - low_kva)
        raise ValueError(hp)

    @staticmethod
    def limits(records):
        yield "PowerSystem.MaxVoltageDip", "MaxVoltageDip"
        for s in range(1, len(records["LoadProfile"]) + 1):
            yield f"Step[{s}].MaxVoltageDipOverride", "MaxVoltageDipOverride"
        for name, flag in (("MaxFreqDip", "MaxFreqDipEnabled"), ("MaxHarmonics", "MaxHarmonicsEnabled")):
            if records["PowerSystem"][flag]:
                yield f"PowerSystem.{name}", name

    def test_every_set_that_a_single_change_reaches_is_listed(self):
        """Brute force: what helps is listed, with the least value of a limit, and nothing else is."""
        total_helping = 0
        kinds = set()
        # In the last of the few rectifiers and rises help.
        for seed in range(300) if LONG else (*range(6), 60, 81):
            records = project(seed, loads=4, steps=3)
            now = self.total(self.written(records))
            names, files = [], []
            for number, (name, variation) in enumerate(self.brute_force(records)):
                names.append(name)
                files.append(self.written(variation, f"brute{number}.json"))
            done = self.verb("size", "--json", "--max-undersized", "0", *files)
            helping = []
            for name, line in zip(names, done.stdout.splitlines(), strict=True):
                self.keep_if_it_helps(helping, name, json.loads(line), now)
            plain = self.written(records)
            for value in range(81, 101):
                self.keep_if_it_helps(helping, {"Designer.MaxLoading": value},
                                      self.sized(plain, "--max-loading", value), now)
            listed = [advice for advice in self.advise(records)["Advice"] if advice["Kind"] != "order"]
            self.assertEqual(sorted(map(json.dumps, helping)),
                             sorted(json.dumps(self.as_brute(advice)) for advice in listed), seed)
            total_helping += len(helping)
            kinds |= {advice["Kind"] for advice in listed}
            ordered, = self.lines("order", plain)
            gains = ordered["Best"] and (not ordered["Now"] or
                                         ordered["Best"]["NominalRating"] < ordered["Now"]["NominalRating"])
            self.assertEqual([advice["Set"] for advice in self.advise(records, "--kinds", "order")["Advice"]],
                             [ordered["Best"]] if gains else [])
        self.assertGreater(total_helping, 10)
        self.assertGreaterEqual(kinds, {"split", "starter", "rectifier", "limit", "rise", "sets", "fuel"})

    def keep_if_it_helps(self, helping, name, sizing, now):
        """Of a limit, whose values come in ascending order, the first of each set that it reaches."""
        sets = sizing.get("ChosenSets")
        if not sets or not self.is_smaller(sets[0]["NominalRating"] * sizing["PowerSystem"]["GensetsInParallel"], now):
            return
        (key, value), = name.items()
        row = [sets[0]["ModelNum"], sets[0]["AltNum"], sets[0]["EngineNum"]]
        is_limit = key.rpartition(".")[2] in HIGHEST
        if not (is_limit and any(one[0] == key and one[2] == row for one in helping)):
            helping.append([key, value, row])

    @staticmethod
    def as_brute(advice):
        """An advice in the words of `brute_force`."""
        change, found = advice["Changes"][0], advice["Set"]
        row = [found["ModelNum"], found["AltNum"], found["EngineNum"]]
        if "Move" in change:
            return [change["Move"], f"split {int(change['To'].split()[2] == 'behind')}", row]
        record, _, name = change["Path"].rpartition(".")
        words = {"StartsLoaded": "unloaded", "InputType": "12 pulse", "InputFilterInstalled": "filter",
                 "StartingMethod": f"starter {METHODS.index(change['To']) + 1 if change['To'] in METHODS else ''}"}
        if name in words:
            return [record, words[name], row]
        values = {"GensetsInParallel": ("sets", int), "Fuel": ("fuel", lambda fuel: FUELS.index(fuel) + 1),
                  "RiseDutyCode": ("rise", lambda rise: RISES.index(rise)),
                  "MaxFreqDipEnabled": (name, bool), "MaxHarmonicsEnabled": (name, bool)}
        key, value_of = values.get(name, (change["Path"], int))
        return [key, value_of(change["To"]), row]

    # --- what it looks like

    def test_kinds_choose_and_stand_in_the_order_of_the_table_among_equals(self):
        quarry = SOURCE / "samples/quarry.prj"
        every = self.advise(quarry)["Advice"]
        self.assertLessEqual({"starter", "order", "sets"}, {advice["Kind"] for advice in every})
        for kind in KINDS:
            chosen = self.advise(quarry, "--kinds", kind)["Advice"]
            self.assertEqual(chosen, [advice for advice in every if advice["Kind"] == kind])
        for before, after in itertools.pairwise(every):
            if before["Set"]["NominalRating"] == after["Set"]["NominalRating"] and \
                    "sets" not in (before["Kind"], after["Kind"]):
                self.assertLessEqual(KINDS.index(before["Kind"]), KINDS.index(after["Kind"]))

    def test_pairs_of_limits_stand_in_the_order_of_the_profile_among_equals(self):
        names = ["PowerSystem.MaxVoltageDip", *(f"Step[{step}].MaxVoltageDipOverride" for step in range(1, 20)),
                 "Designer.MaxLoading", "PowerSystem.MaxFreqDip", "PowerSystem.MaxHarmonics",
                 "PowerSystem.MaxFreqDipEnabled", "PowerSystem.MaxHarmonicsEnabled"]
        switched = 0
        for seed in PAIRED_LIMITS:
            listed = self.advise(project(seed), "--pairs", "--kinds", "limit")["Advice"]
            sets = project(seed)["PowerSystem"]["GensetsInParallel"]
            places = [(one["Set"]["NominalRating"] * sets, len(one["Changes"]),
                       *(names.index(change["Path"]) for change in one["Changes"])) for one in listed]
            self.assertEqual(places, sorted(places), seed)
            switched += sum(len(place) == 4 and names[place[3]].endswith("Enabled") for place in places)
        self.assertGreater(switched, 0)

    def test_a_sentence_names_the_load_and_both_values(self):
        advice = self.advise(SOURCE / "samples/quarry.prj", "--kinds", "starter")["Advice"]
        texts = [one["Text"] for one in advice]
        self.assertIn('Start "Primary crusher" (step 3) by Wye-Delta instead of Across the Line.', texts)
        change, follows = advice[0]["Changes"][:2]
        self.assertEqual(change["Path"], "Step[3].Load[1].StartingMethod")
        self.assertEqual(change["From"], "Across the Line")
        self.assertEqual((follows["Path"], follows["Follows"]), ("Step[3].Load[1].StartingAppPower", True))

    def test_the_studio_is_limited_by_distortion_alone(self):
        """The next smaller set fails no other test, and every advice but more sets is about distortion."""
        studio = SOURCE / "samples/studio.prj"
        smaller = self.sized(studio)["RejectedSets"][0]
        self.assertEqual(smaller["RejectionReason"], 32)
        advice = self.advise(studio)["Advice"]
        paths = [one["Changes"][0]["Path"].rpartition(".")[2] for one in advice]
        self.assertEqual(set(paths), {"InputType", "InputFilterInstalled", "MaxHarmonics", "MaxHarmonicsEnabled",
                                      "GensetsInParallel"})
        twelve, filtered = (next(one for one, path in zip(advice, paths) if path == name)
                            for name in ("InputType", "InputFilterInstalled"))
        self.assertGreater(twelve["Saved"], filtered["Saved"])

    def test_a_move_names_the_new_step(self):
        moves = [change for seed in range(12) for advice in self.advise(project(seed), "--kinds", "split")["Advice"]
                 for change in advice["Changes"]]
        self.assertGreater(len(moves), 0)
        for move in moves:
            self.assertEqual(list(move), ["Move", "To"])
            self.assertRegex(move["To"], r"^new step (before|behind) \d+$")
            self.assertIn(f"Step[{move['To'].split()[-1]}].", move["Move"])

    def test_any_number_of_jobs_gives_the_same_bytes(self):
        for arguments in ((), ("--pairs", "--kinds", "starter,limit,rise")):
            outputs = {self.verb("advise", "--json", SOURCE / "samples/workshop.prj", "--jobs", jobs, *arguments).stdout
                       for jobs in (1, 2, 16)}
            self.assertEqual(len(outputs), 1)

    def test_sets_that_are_too_large_are_told(self):
        records = project(1, loads=1, steps=1)
        records["LoadProfile"][0]["Loads"] = [{"LoadType": "Miscellaneous", "name": "Lamp", "RunningRealPower": 20}]
        records["LoadProfile"][0]["MaxVoltageDipOverride"] = 35
        done = self.verb("advise", self.written(records))
        self.assertEqual(done.returncode, 0)
        self.assertIn("too large", done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1)

    # --- what is off

    def test_what_is_wrong_with_the_arguments_is_told(self):
        sample = SOURCE / "samples/quarry.prj"
        new = self.folder / "never.prj"
        for arguments, says in ((["--kinds", "starters"], ["starters", "starter"]),
                                (["--apply", "99", "-o", new], ["99", "last one"]),
                                (["--apply", "0", "-o", sample], ["the project"]),
                                (["--apply", "0", "-o", self.folder / "x.txt"], [".prj or .json"])):
            self.refused("advise", sample, *arguments, says=says)
            self.assertFalse(new.exists())
        self.refused("advise", SOURCE / "samples/hospital.prj", "--apply", "0", "-o", new, says=["no advice"])
        for arguments in (["--apply", "0"], ["-o", new], ["--apply", "-1", "-o", new]):
            self.assertEqual(self.verb("advise", sample, *arguments).returncode, 2)
            self.assertFalse(new.exists())

    def test_options_that_no_number_or_name_follows_are_told(self):
        sample = SOURCE / "samples/quarry.prj"
        for arguments, says in ((["--apply", "-1", "-o", "x.prj"], '--apply: "-1" is no number of 0 or more'),
                                (["--apply", "0", "-o", ""], "-o: expected a name, found nothing"),
                                (["--kinds", ""], "--kinds: expected a name, found nothing")):
            done = self.verb("advise", sample, *arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertEqual(done.stderr.splitlines()[0], f"genvara-cli: {says}")

    def test_what_is_promised_of_a_prj_is_what_15_digits_leave(self):
        file = self.written(self.of_many_digits(SOURCE / "samples/quarry.prj"))
        promised = []
        for ending in ("json", "prj"):
            new = self.folder / f"many-digits.{ending}"
            listed, = self.lines("advise", file, "--apply", "0", "-o", new)
            self.assertEqual(self.first(new), listed["Advice"][0]["Set"])
            promised.append(listed["Advice"][0]["Set"])
        self.assertNotEqual(*promised)  # in last bits

    def test_a_file_that_cannot_be_written_is_told(self):
        done = self.verb("advise", SOURCE / "samples/quarry.prj", "--apply", "0", "-o", self.folder / "no/such.prj")
        self.assertEqual((done.returncode, done.stdout), (3, ""))

    def test_a_project_that_fails_today_is_told(self):
        records = project(1)
        records["LoadProfile"] = []
        self.refused("advise", self.written(records), status=4, says=["At least one load"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
