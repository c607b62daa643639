"""`genvara-cli sweep` as a user and a script see it.

    test_sweep.py GENVARA-CLI SOURCE-FOLDER
"""
import csv
import io
import itertools
import json
import random
import shutil
import signal
import sqlite3
import subprocess
import sys
import time
import unittest

from study import PROGRAM, SOURCE, StudyCase, changed

HOSPITAL = "samples/hospital.prj"


class Sweep(StudyCase):
    def sweep(self, project, *vary, options=(), status=0):
        arguments = itertools.chain.from_iterable(("--vary", text) for text in vary)
        return self.lines("sweep", project, *arguments, *options, status=status)

    # --- points

    def test_a_point_has_its_keys_and_the_set_of_the_sizing(self):
        for sample in self.samples:
            sizing = self.sized(sample)
            altitude = sizing["PowerSystem"]["Altitude"]
            point, = self.sweep(sample, f"PowerSystem.Altitude={altitude}")
            self.assertEqual(list(point), ["File", "At", "Set", "NumChosenSets", "Tightest"])
            self.assertEqual(point["File"], str(sample))
            self.assertEqual(point["At"], {"PowerSystem.Altitude": altitude})
            chosen = sizing["ChosenSets"]
            self.assertEqual(point["Set"], chosen[0] if chosen else None)
            self.assertEqual(point["NumChosenSets"], len(chosen))
            if chosen:
                explained, = self.lines("explain", sample)
                self.assertEqual(point["Tightest"], explained["Sets"][0]["Tightest"])

    def test_the_last_axis_runs_fastest_and_to_is_included_where_a_step_hits_it(self):
        points = self.sweep(SOURCE / HOSPITAL, "PowerSystem.Altitude=0:1:0.3", "PowerSystem.Fuel=Diesel,2,any fuel",
                            "PowerSystem.MaxFreqDipEnabled=true,false")
        self.assertEqual([tuple(point["At"].values()) for point in points],
                         list(itertools.product((0, 0.3, 0.6, 0.9), ("Diesel", "Nat. Gas", "Any Fuel"), (True, False))))
        points = self.sweep(SOURCE / HOSPITAL, "PowerSystem.Altitude=0.1:0.7:0.2")
        self.assertEqual([point["At"]["PowerSystem.Altitude"] for point in points], [0.1, 0.3, 0.5, 0.7])

    def test_each_point_is_what_size_says_of_the_changed_project(self):
        """Members from which nothing follows, changed in the project's text."""
        dice = random.Random(7)
        grids = {"PowerSystem.Altitude": (-500, 0.1, 1234.5, 4572), "PowerSystem.AmbTemp": (-40, 41.25, 66),
                 "PowerSystem.GensetsInParallel": (1, 3, 16), "PowerSystem.Freq": (50, 60),
                 "PowerSystem.RiseDutyCode": (0, 4), "PowerSystem.MaxVoltageDip": (5, 13, 35),
                 "PowerSystem.Fuel": (1, 2, 4), "Step[1].MaxVoltageDipOverride": (5, 11, 35),
                 "Step[1].Load[1].Quantity": (1, 2, 9), "PowerSystem.ConnectCode": (1, 3)}
        for sample in self.samples:
            records = self.as_json(sample)
            project = self.written(records)
            for path, values in grids.items():
                value = dice.choice(values)
                point, = self.sweep(project, f"{path}={value}")
                again = self.written(changed(records, **{path: value}), "changed.json")
                self.assertEqual(point["Set"], self.first(again), (sample, path, value))

    def test_a_change_of_a_motor_acts_like_its_form(self):
        """Worked out from the tables of the catalogue: letter F has 5.3 kVA/hp there, wye-delta a third."""
        tables = {}
        for name in ("Motor Code Letters", "Motor Starting Multiplier"):
            with open(SOURCE / f"data/catalog/{name}.csv", newline="", encoding="utf-8") as file:
                tables[name] = list(csv.DictReader(file))
        letters = {row["CodeLetter"]: float(row["LRkVAPerHP"]) for row in tables["Motor Code Letters"]}
        multipliers = [float(row["Multiplier"]) for row in tables["Motor Starting Multiplier"]]
        for sample in self.samples:
            records = self.as_json(sample)
            project = self.written(records)
            for s, step in enumerate(records["LoadProfile"], 1):
                for l, load in enumerate(step["Loads"], 1):
                    if load["LoadType"] != "Motor" or "HP" not in load:
                        continue
                    path = f"Step[{s}].Load[{l}]"
                    for method, name in ((1, "Across the Line"), (5, "Wye-Delta")):
                        if load["StartingMethod"] == name:
                            continue
                        point, = self.sweep(project, f"{path}.StartingMethod={method}")
                        kva = load["HP"] * letters[load["CodeLetter"]] * multipliers[method - 1]
                        again = changed(records, **{f"{path}.StartingMethod": method,
                                                    f"{path}.StartingAppPower": round(kva, 2) * 1000})
                        self.assertEqual(point["Set"], self.first(self.written(again, "changed.json")))

    def test_a_change_to_the_value_that_stands_changes_nothing(self):
        for sample in self.samples:
            records = self.as_json(sample)
            for s, step in enumerate(records["LoadProfile"], 1):
                for l, load in enumerate(step["Loads"], 1):
                    for name in ("HP", "StartingMethod", "StartsLoaded", "CodeLetter", "LightType", "Family"):
                        if name in load:
                            value = str(load[name]).lower() if isinstance(load[name], bool) else load[name]
                            point, = self.sweep(sample, f"Step[{s}].Load[{l}].{name}={value}")
                            self.assertEqual(point["Set"], self.first(sample), (sample, s, l, name))

    def test_a_point_that_fails_is_a_row_and_the_rest_go_on(self):
        points = self.sweep(SOURCE / HOSPITAL, "PowerSystem.ConnectCode=1,77,1", status=4)
        self.assertEqual(points[0], points[2])
        self.assertEqual(list(points[1]), ["File", "At", "Error"])
        self.assertEqual(points[1]["At"], {"PowerSystem.ConnectCode": 77})
        self.assertEqual(list(points[1]["Error"]), ["Number", "Source", "Description"])
        self.assertIn("77", points[1]["Error"]["Description"])

    def test_points_that_fail_are_counted_and_the_first_is_told_on_standard_error(self):
        done = self.verb("sweep", SOURCE / HOSPITAL, "--vary", "PowerSystem.Altitude=0,300",
                         "--vary", "PowerSystem.ConnectCode=1,77,78", "--csv")
        self.assertEqual(done.returncode, 4)
        line, = done.stderr.splitlines()
        self.assertIn("hospital.prj: 4 of 6 points could not be sized, the first at "
                      "PowerSystem.Altitude=0, PowerSystem.ConnectCode=77: error", line)
        self.assertIn(done.stdout.splitlines()[2].split(",")[-1].strip('"'), line)
        self.assertEqual(self.verb("sweep", SOURCE / HOSPITAL, "--vary", "PowerSystem.Altitude=0").stderr, "")

    def test_limits_of_the_run_vary_like_members(self):
        points = self.sweep(SOURCE / HOSPITAL, "Designer.MaxLoading=60:100:20")
        for point in points:
            self.assertEqual(point["Set"],
                             self.first(SOURCE / HOSPITAL, "--max-loading", point["At"]["Designer.MaxLoading"]))
        self.assertEqual(self.sweep(SOURCE / HOSPITAL, "Designer.MaxSetsRecommended=0")[0]["Set"], None)

    def test_one_change_may_bring_the_member_that_another_sets(self):
        records = self.as_json(SOURCE / HOSPITAL)
        s, l = next((s, l) for s, step in enumerate(records["LoadProfile"], 1)
                    for l, load in enumerate(step["Loads"], 1) if load["LoadType"] == "Motor" and "HP" in load)
        points = self.sweep(SOURCE / HOSPITAL, f"Step[{s}].Load[{l}].DataEntryMethod=1",
                            f"Step[{s}].Load[{l}].RunningRealPower=20000,300000")
        self.assertEqual(len(points), 2)
        self.assertLess(points[0]["Set"]["NominalRating"], points[1]["Set"]["NominalRating"])

    def test_any_number_of_jobs_gives_the_same_bytes(self):
        outputs = [self.verb("sweep", SOURCE / HOSPITAL, "--json", "--vary", "PowerSystem.Altitude=0:4500:30",
                             "--jobs", jobs).stdout for jobs in (1, 2, 16)]
        self.assertEqual(outputs[0].count("\n"), 151)
        self.assertEqual(outputs[0], outputs[1])
        self.assertEqual(outputs[0], outputs[2])

    # --- tables

    def test_csv_says_what_json_says(self):
        grid = ("--vary", "PowerSystem.Fuel=Diesel,Nat. Gas", "--vary", "PowerSystem.ConnectCode=1,77")
        done = self.verb("sweep", SOURCE / HOSPITAL, "--csv", *grid)
        self.assertEqual(done.returncode, 4)
        rows = list(csv.reader(io.StringIO(done.stdout)))
        self.assertEqual(rows[0], ["PowerSystem.Fuel", "PowerSystem.ConnectCode", "ModelNum", "AltNum",
                                   "NominalRating", "DeratedRating", "NumChosenSets", "TightestTest", "TightestStep",
                                   "TightestMargin", "Error"])
        points = self.lines("sweep", SOURCE / HOSPITAL, *grid, status=4)
        for row, point in zip(rows[1:], points, strict=True):
            self.assertEqual(row[:2], [str(value) for value in point["At"].values()])
            if "Error" in point:
                self.assertEqual(row[2:], [""] * 8 + [point["Error"]["Description"]])
                continue
            found, tightest = point["Set"], point["Tightest"]
            self.assertEqual(row[2:4], [found["ModelNum"], found["AltNum"]])
            self.assertEqual([float(cell) for cell in row[4:7]],
                             [found["NominalRating"], found["DeratedRating"], point["NumChosenSets"]])
            self.assertEqual(row[7:9], [tightest["Name"], str(tightest["StepNumber"])])
            self.assertEqual(float(row[9]), tightest["Margin"])

    def test_the_table_marks_where_the_answer_changes(self):
        done = self.verb("sweep", SOURCE / HOSPITAL, "--vary", "PowerSystem.Altitude=0:3000:500")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = done.stdout.splitlines()
        self.assertEqual([line.split()[0] for line in lines if " * " in line and "line above" not in line], ["2500"])
        self.assertEqual(len({len(line.rstrip()) for line in lines[3:10]}), 1)  # right-aligned to the last column

    # --- breaks

    def test_breaks_agree_with_a_fine_sweep(self):
        for sample in self.samples:
            for grid, least in (("PowerSystem.Altitude=0:4500:90", 0.09), ("PowerSystem.MaxVoltageDip=5:35:7", 1),
                                ("Step[1].Load[1].Quantity=1:200:50", 1), ("Designer.MaxLoading=1:100:33", 1)):
                path, _, text = grid.partition("=")
                first, last, by = (float(part) for part in text.split(":"))
                rows = self.sweep(sample, grid, options=["--breaks"])
                self.assertEqual((rows[0]["From"], rows[-1]["To"]), (first, last))
                for before, after in zip(rows, rows[1:]):
                    self.assertLess(before["To"], after["From"])
                    self.assertLessEqual(after["From"] - before["To"], least)
                    self.assertNotEqual(self.row(before), self.row(after))
                ends = [value for row in rows for value in (row["From"], row["To"])]
                points = self.sweep(sample, f"{path}={','.join(repr(end) if least < 1 else str(int(end)) for end in ends)}")
                for row, begin, end in zip(rows, points[::2], points[1::2]):
                    self.assertEqual(row["Set"], begin["Set"])
                    self.assertEqual(self.row(row), self.row(end))
                # Every change that a point of the grid shows is found.
                for point in self.sweep(sample, grid):
                    value = point["At"][path]
                    inside, = [row for row in rows if row["From"] <= value <= row["To"]]
                    self.assertEqual(self.row(inside), self.row(point), (sample, path, value))

    @staticmethod
    def row(point):
        found = point["Set"]
        return found and (found["ModelNum"], found["AltNum"], found["EngineNum"], found["NominalRating"])

    def test_the_last_stretch_ends_at_to_though_no_step_hits_it(self):
        rows = self.sweep(SOURCE / HOSPITAL, "PowerSystem.Altitude=0:1000:300", options=["--breaks"])
        self.assertEqual((rows[0]["From"], rows[-1]["To"]), (0, 1000))

    def test_the_table_of_breaks_says_where_its_figures_hold(self):
        """The rating at the site falls on the way from From to To: what stands there must say for which end."""
        done = self.verb("sweep", SOURCE / HOSPITAL, "--vary", "PowerSystem.Altitude=1500:2000:500", "--breaks")
        low, high = self.sweep(SOURCE / HOSPITAL, "PowerSystem.Altitude=1500,2000")
        self.assertNotEqual(low["Set"]["DeratedRating"], high["Set"]["DeratedRating"])
        row, note = done.stdout.splitlines()[-2:]
        self.assertIn(f"{low['Set']['DeratedRating']:.1f}", row)
        self.assertEqual(note, "  The figures of a set are those at From.")

    def test_a_stretch_that_fails_says_why(self):
        rows = self.sweep(SOURCE / HOSPITAL, "PowerSystem.ConnectCode=1:90:40", options=["--breaks"], status=4)
        # Each code that is no connection fails with its own figure in the text, which is one answer all the same.
        with sqlite3.connect(self.database) as connection:
            (greatest,), = connection.execute("Select max(ID) from Connections")
        self.assertEqual([(row["From"], row["To"]) for row in rows if "Error" in row], [(greatest + 1, 90)])
        self.assertIn(f"{greatest + 1}", rows[-1]["Error"]["Description"])

    # --- what is off

    def test_what_is_wrong_with_the_arguments_is_told(self):
        hospital = SOURCE / HOSPITAL
        for vary, says in ((["PowerSystem.Altitud=1"], ["Altitude"]), (["Step[99].Description=a"], ["99", "7 steps"]),
                           (["Step[1].Load[99].Quantity=1"], ["99"]), (["PowerSystem.Altitude=9999"], ["9999", "4572"]),
                           (["PowerSystem.Altitude=0:9999:1"], ["9999"]), (["PowerSystem.Altitude=5:1:1"], ["above TO"]),
                           (["PowerSystem.Altitude=1:5:0"], ["above 0"]), (["PowerSystem.Altitude=1:5:-1"], ["above 0"]),
                           (["PowerSystem.Altitude=1:5"], ["FROM:TO:BY"]), (["PowerSystem.Altitude=a:5:1"], ["no number"]),
                           (["PowerSystem.Altitude"], ["PATH="]), (["PowerSystem.Fuel=Steam"], ["Steam", "nearest"]),
                           (["PowerSystem.Fuel=1:3:1"], ['"1:3:1"', '0 "Any Fuel", 1 "Diesel"', '3 "L.P." or 4']),
                           (["PowerSystem.MaxVoltageDip=5:9:0.5"], ["whole"]),
                           (["PowerSystem.Phases=1:3:1"], ["2"]),
                           (["PowerSystem.Altitude=1", "PowerSystem.Altitude=2"], ["twice"]),
                           (["Step[1].MaxVoltageDipOverride=9", "Step[01].MaxVoltageDipOverride=8"], ["twice"]),
                           (["PowerSystem.Altitude=0:4000:0.000004"], ["1000000001", "--yes"]),
                           (["PowerSystem.Altitude=0:4000:1e-300", "--yes"], ["more than can be sized"]),
                           (["PowerSystem.Fuel=1,2", "--breaks"], ["--breaks"])):
            arguments = itertools.chain.from_iterable(
                [text] if text.startswith("--") else ("--vary", text) for text in vary)
            self.refused("sweep", hospital, *arguments, says=says)

    def test_a_project_that_is_not_there(self):
        done = self.verb("sweep", "missing.prj", "--vary", "PowerSystem.Altitude=1", "--json")
        self.assertEqual(done.returncode, 3)
        self.assertIn('"Error"', done.stdout)

    def test_a_site_without_candidates_has_no_set_at_any_point(self):
        file = self.folder / "nowhere.prj"
        file.write_bytes((SOURCE / "samples/farm.prj").read_bytes().replace(b"240\r\n", b"241\r\n", 1))
        rows = self.sweep(file, "PowerSystem.Altitude=0:900:300")
        self.assertEqual([(row["Set"], row["Tightest"]) for row in rows], [(None, None)] * 4)
        rows = self.sweep(file, "PowerSystem.Voltage=241,240")
        self.assertIsNone(rows[0]["Set"])
        self.assertEqual(rows[1]["Set"]["ModelNum"], self.first(SOURCE / "samples/farm.prj")["ModelNum"])

    def test_a_project_that_cannot_be_sized_tells_so_at_each_point(self):
        empty = self.as_json(SOURCE / HOSPITAL) | {"LoadProfile": []}
        rows = self.sweep(self.written(empty), "PowerSystem.Altitude=0:600:300", status=4)
        self.assertEqual([("Error" in row, "Set" in row) for row in rows], [(True, False)] * 3)
        database = self.folder / "damaged.db"
        shutil.copy(self.database, database)
        with sqlite3.connect(database) as connection:
            connection.execute("Update [Gensets] set LRkVA = null")
        done = self.program("sweep", "--json", "--db", database, SOURCE / HOSPITAL, "--vary", "PowerSystem.Altitude=0,1")
        self.assertEqual(done.returncode, 4)
        self.assertEqual([json.loads(row)["Error"]["Number"] for row in done.stdout.splitlines()], [13, 13])

    def test_control_c_ends_it_at_once(self):
        sweep = subprocess.Popen([PROGRAM, "sweep", "--db", self.database, SOURCE / HOSPITAL, "--vary",
                                  "PowerSystem.Altitude=0:4500:0.01"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        time.sleep(0.3)
        begun = time.monotonic()
        sweep.send_signal(signal.SIGINT)
        output, complaints = sweep.communicate(timeout=60)
        self.assertEqual((sweep.returncode, output, complaints), (130, b"", b""))
        self.assertLess(time.monotonic() - begun, 30)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
