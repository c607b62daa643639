"""`genvara-cli import` as a user and a script see it.

    test_import.py GENVARA-CLI SOURCE-FOLDER
"""
import json
import subprocess
import sys
import unittest

from study import PROGRAM, SOURCE, StudyCase

TEMPLATE = SOURCE / "samples/loads-template.csv"
OFFICE = SOURCE / "samples/office.prj"


class Import(StudyCase):
    def table(self, text, name="loads.csv", encoding="utf-8"):
        file = self.folder / name
        file.write_bytes(text.encode(encoding))
        return file

    def taken(self, text, project=OFFICE, **options):
        """The records of a project with the loads of a table."""
        file = self.folder / "taken.json"
        done = self.verb("import", self.table(text, **options), "--into", project, "-o", file)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return json.loads(file.read_text())

    def test_the_template_adds_all_kinds(self):
        file = self.folder / "new.prj"
        done = self.verb("import", TEMPLATE, "--into", OFFICE, "-o", file)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("12 loads in order", done.stdout)
        before, after = self.as_json(OFFICE), self.as_json(file)
        added = sum(len(step["Loads"]) for step in after["LoadProfile"]) - sum(
            len(step["Loads"]) for step in before["LoadProfile"])
        self.assertEqual(added, 12)
        kinds = {json.loads(row)["Kind"] for row in self.program("describe", "--json").stdout.splitlines()}
        self.assertEqual({load["LoadType"] for step in after["LoadProfile"] for load in step["Loads"][-3:]},
                         {kind for kind in kinds if kind not in ("Project", "PowerSystem", "Designer", "Step")})
        self.assertEqual(self.program("check", "--db", self.database, file).returncode, 0)

    def test_loads_come_behind_those_of_their_steps_and_nothing_else_changes(self):
        before = self.as_json(OFFICE)
        steps = len(before["LoadProfile"])
        after = self.taken(f"Step,Type,Name,Qty,kW\n1,Misc,first,2,3.5\n{steps + 1},Misc,other,1,7\n")
        first = after["LoadProfile"][0]["Loads"].pop()
        self.assertEqual((first["LoadType"], first["name"], first["Quantity"], first["RunningRealPower"]),
                         ("Miscellaneous", "first", 2, 3500))
        new = after["LoadProfile"].pop()
        self.assertEqual((new["Description"], len(new["Loads"])), (f"Load Step #{steps + 1}", 1))
        self.assertEqual(new["MaxVoltageDipOverride"], before["PowerSystem"]["MaxVoltageDip"])
        for records in (before, after):
            records["Project"].pop("LastModified")
        self.assertEqual(after, before)

    def test_the_written_file_sizes_to_what_was_shown(self):
        file = self.folder / "sized.json"
        shown, = self.lines("import", TEMPLATE, "--into", OFFICE, "-o", file)
        loads = {load["name"]: load for step in self.sized(file)["LoadProfile"] for load in step["Loads"]}
        self.assertEqual(len(shown["Rows"]), 12)
        for row in shown["Rows"]:
            load = loads[row["name"]]
            for member in ("RunningRealPower", "RunningAppPower", "StartingRealPower", "StartingAppPower"):
                self.assertAlmostEqual(row[member], load[member], 6, (row["name"], member))
            self.assertEqual((row["Quantity"], row["LoadType"], row["Phases"]),
                             (load["Quantity"], load["LoadType"], load["Phases"]))

    def test_without_an_output_the_table_is_shown(self):
        done = self.verb("import", self.table("Step,Type,Name,Qty,kW,pF\n1,Misc,Heater,3,12.5,0.8\n"), "--into", OFFICE)
        self.assertEqual(done.returncode, 0)
        # 3 x 12.5 kW, / 0.8
        self.assertRegex(done.stdout, r"2 +1 +Misc. Linear Load +Heater +3 +37.50 +46.88 +37.50 +46.88\n")

    def test_a_table_comes_from_standard_input_too(self):
        done = self.program("import", "--db", self.database, "-", "--into", OFFICE, "--json", input="Type\tkW\nMisc\t5,5\n")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        shown = json.loads(done.stdout)
        self.assertEqual((shown["File"], shown["Rows"][0]["RunningRealPower"]), ("standard input", 5500))
        self.assertEqual((shown["Faults"], shown["Notes"], shown["NewSteps"]), ([], [], []))

    def test_faults_are_told_beside_their_cells_and_nothing_is_written(self):
        file = self.folder / "never.prj"
        table = self.table("Type,kW,Qty\nMisc,1,1\nMisc,3000,0\n")
        done = self.verb("import", table, "--into", OFFICE, "-o", file)
        self.assertEqual((done.returncode, done.stdout), (3, ""))
        self.assertEqual(done.stderr.splitlines(),
                         [f"{table}: Row 3, column 2: kW: 3000 is out of range. Enter 0 to 2000 kW.",
                          f"{table}: Row 3, column 3: Quantity: 0 is out of range. Enter 1 to 256.",
                          f"{file} was not written."])
        self.assertFalse(file.exists())
        shown, = self.lines("import", table, "--into", OFFICE, status=3)
        self.assertEqual(shown["Faults"][0], {"Row": 3, "Column": 2, "Heading": "kW",
                                              "Description": "kW: 3000 is out of range. Enter 0 to 2000 kW."})
        self.assertEqual([sorted(row) == ["Row", "StepNumber"] for row in shown["Rows"]], [False, True])

    def test_a_column_without_a_meaning_is_warned_of(self):
        table = self.table("Type,kW,Room\nMisc,1,12\n")
        done = self.verb("import", table, "--into", OFFICE)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr, f'{table}: warning: The column "Room" means nothing here and is passed over.\n')

    def test_encodings_and_a_decimal_comma(self):
        for encoding in ("utf-8", "utf-8-sig", "cp1252", "utf-16"):
            after = self.taken("Type;Name;kW\r\nMisc;Kühlung;1,25\r\n", encoding=encoding)
            load = after["LoadProfile"][-1]["Loads"][-1]
            self.assertEqual((load["name"], load["RunningRealPower"]), ("Kühlung", 1250), encoding)

    def test_a_text_that_the_file_cannot_hold_is_refused(self):
        table = self.table("Type,Name,kW\nMisc,Ωmega,1\n")
        file = self.folder / "omega.prj"
        self.refused("import", table, "--into", OFFICE, "-o", file, status=3, says=["Ωmega", "code page", ".json"])
        self.assertFalse(file.exists())
        after = self.taken("Type,Name,kW\nMisc,Ωmega,1\n")
        self.assertEqual(after["LoadProfile"][-1]["Loads"][-1]["name"], "Ωmega")

    def test_a_formula_is_a_text(self):
        after = self.taken("Type,Name,Description,kW\nMisc,=1+1,@SUM(A1),1\n")
        load = after["LoadProfile"][-1]["Loads"][-1]
        self.assertEqual((load["name"], load["Description"]), ("=1+1", "@SUM(A1)"))

    def test_outputs_that_are_inputs_are_refused(self):
        project = self.folder / "mine.json"
        project.write_text(json.dumps(self.as_json(OFFICE)))
        table = self.table("Type,kW\nMisc,1\n", name="table.json")
        link = self.folder / "link.json"
        link.symlink_to(table)
        for output in (project, table, link):
            content = output.read_bytes()
            self.refused("import", table, "--into", project, "-o", output, says=["written over"])
            self.assertEqual(output.read_bytes(), content)
        self.refused("import", table, "--into", project, "-o", self.folder / "new.txt", says=[".prj or .json"])

    def test_what_cannot_be_read_is_told(self):
        self.refused("import", self.folder / "nowhere.csv", "--into", OFFICE, status=3, says=["nowhere.csv"])
        self.refused("import", self.folder, "--into", OFFICE, status=3)
        self.refused("import", TEMPLATE, "--into", self.folder / "nowhere.prj", status=3, says=["nowhere.prj"])
        self.refused("import", self.table("PK\x03\x04\0\0"), "--into", OFFICE, status=3, says=["no table of text"])
        self.refused("import", self.table(""), "--into", OFFICE, status=3, says=["The table is empty."])
        self.assertEqual(self.verb("import", TEMPLATE).returncode, 2)
        with open("/dev/zero", "rb") as zeros:
            done = subprocess.run([PROGRAM, "import", "-", "--into", OFFICE, "--db", self.database], stdin=zeros,
                                  capture_output=True, text=True, timeout=60)
        self.assertEqual(done.returncode, 3)
        self.assertIn("larger than 16 MB", done.stderr)

    def test_a_project_without_steps_gets_them(self):
        records = self.as_json(OFFICE)
        records["LoadProfile"] = []
        after = self.taken("Step,Type,kW\nPumps,Misc,1\nFans,Misc,2\nPumps,Misc,3\n",
                           project=self.written(records, "empty.json"))
        self.assertEqual([(step["Description"], len(step["Loads"])) for step in after["LoadProfile"]],
                         [("Pumps", 2), ("Fans", 1)])

    def test_ten_thousand_rows_are_read_at_once(self):
        rows = "".join(f"{1 + row // 250},Motor,M{row},{1 + row % 500}\n" for row in range(10000))
        shown, = self.lines("import", self.table("Step,Type,Name,HP\n" + rows), "--into",
                            self.written(dict(self.as_json(OFFICE), LoadProfile=[]), "empty.json"))
        self.assertEqual((len(shown["Rows"]), len(shown["NewSteps"]), shown["Faults"]), (10000, 40, []))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
