"""The console program as a user sees it: whole output, errors, exit status.

    test_console.py GENVARA-CLI SOURCE-FOLDER
"""
import csv
import errno
import json
import os
import pathlib
import resource
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

HEAD = ('8,0,0,1\r\n#2003-05-20 09:15:00#,"C","D",#2003-05-21 17:02:11#,"Job","U"\r\n'
        '0,25,{connection},60,1,1\r\n20,#FALSE#,15,#FALSE#\r\n20,3,3,480\r\n')
STEP = '1\r\n"Step 1",15\r\n1\r\n'
PUMPS = '1,4,"Pumps","",1,0\r\n100000,0.9\r\n'

TOP_KEYS = ["File", "Project", "PowerSystem", "LoadProfile", "Designer", "ChosenSets", "RejectedSets"]
STEP_KEYS = ["StepNumber", "Description", "MaxVoltageDipOverride", "StepMaxVoltageDip", "TotalRunningRealPower",
             "TotalRunningImgPower", "TotalRunningApparentPower", "TotalStartingRealPower", "TotalStartingImgPower",
             "TotalStartingApparentPower", "TotalSixPulseRectPower", "TotalTwelvePulseRectPower",
             "TotalSixPulseRectFilteredPower", "TotalTwelvePulseRectFilteredPower", "TotalSixPulsePPCPower",
             "TotalSinglePhaseRectPower", "TotalElectBallastRealPower", "TotalMagBallastRealPower", "HasFirePump",
             "HasLoadedMotor", "HasMedicalImageLoad", "HasLoadedMotorWithTap65", "GetSmallestMedicalDip", "Props",
             "Loads"]
LOAD_KEYS = ["ID", "LoadType", "name", "Description", "Quantity", "Phases", "Summary", "RunningRealPower",
             "RunningAppPower", "RunningImgPower", "StartingRealPower", "StartingAppPower", "StartingImgPower",
             "ThreePhaseSixPulseRectPower", "ThreePhaseTwelvePulseRectPower", "ThreePhaseSixPulseRectFilteredPower",
             "ThreePhaseTwelvePulseRectFilteredPower", "ThreePhaseSixPulsePPCRectPower", "SinglePhaseRectPower",
             "SinglePhaseElectBallastPower", "SinglePhaseMagBallastPower", "Props"]
DESIGNER_KEYS = ["TotalRunningKW", "PeakStartingKVA", "VTHD_CalcsValid", "DatabaseVersion", "MinLoading",
                 "MaxLoading", "MaxSetsRecommended", "MaxSetsUndersized", "NumChosenSets", "NumRejectedSets"]
SET_KEYS = ["ModelNum", "AltNum", "EngineNum", "FuelType", "NominalRating", "DeratedRating", "StartKVA35",
            "VoltageDips", "FreqDips", "StepVTHD_A", "StepVTHD_B", "StepVTHD_C", "MaxStepVoltDip", "MaxStepFreqDip",
            "MaxStepVTHD", "FreqDipAvail"]


class Console(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp())
        cls.database = cls.folder / "catalogue.db"
        done = cls.run_program("catalog", "build", SOURCE / "data/catalog", "-o", cls.database)
        assert done.returncode == 0, done.stderr

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    @staticmethod
    def run_program(*arguments, **options):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=60, **options)

    def size(self, *arguments):
        return self.run_program("size", "--db", self.database, *arguments)

    def project(self, text, name="job.prj"):
        file = self.folder / name
        file.write_bytes(text.encode("cp1252"))
        return file

    def damaged(self, *statements):
        """A copy of the catalogue's database after some statements."""
        file = self.folder / "damaged.db"
        shutil.copy(self.database, file)
        connection = sqlite3.connect(file)
        for statement in statements:
            connection.execute(statement)
        connection.commit()
        connection.close()
        return file

    def error(self, *arguments, status):
        done = self.size("--json", *arguments)
        self.assertEqual(done.returncode, status, done.stderr)
        result = json.loads(done.stdout.splitlines()[-1])
        self.assertEqual(list(result), ["File", "Error"])
        self.assertEqual(list(result["Error"]), ["Number", "Source", "Description"])
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        return result["Error"]

    # --- help and arguments

    def test_help_and_version_go_to_standard_output(self):
        for arguments in (["--help"], ["size", "--help"], ["check", "--help"], ["catalog", "--help"],
                          ["catalog", "build", "--help"]):
            done = self.run_program(*arguments)
            self.assertEqual((done.returncode, done.stderr), (0, ""), arguments)
            self.assertIn("--help", done.stdout)
        self.assertEqual(self.run_program("--version").stdout, "genvara-cli 8.0.0\n")

    def test_arguments_that_are_off_end_with_usage(self):
        for arguments in ([], ["dance"], ["size"], ["size", "--min-loading", "x", "a.prj"],
                          ["size", "--min-loading", "-1", "a.prj"], ["size", "--max-loading", "101", "a.prj"],
                          ["size", "--jobs", "0", "a.prj"], ["size", "--nonsense", "a.prj"], ["catalog"],
                          ["catalog", "build", "x"], ["check"]):
            done = self.run_program(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn("Usage:", done.stderr)

    def test_an_unknown_command_is_named_and_the_nearest_one_offered(self):
        for arguments, line in ((["siez"], 'there is no command "siez"; did you mean "size"?'),
                                (["raport", "x.prj"], 'there is no command "raport"; did you mean "report"?'),
                                (["catalog", "bulid", "x"], 'there is no command "bulid"; did you mean "build"?'),
                                (["dance"], 'there is no command "dance".'),
                                (["catalog", "dance"], 'there is no command "dance".')):
            done = self.run_program(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertEqual(done.stderr.splitlines()[0], f"genvara-cli: {line}")
            self.assertIn("Usage:", done.stderr)

    def test_numbers_are_decimal_whatever_zeros_stand_before_them(self):
        sample = SOURCE / "samples/office.prj"
        for text, sets in (("010", 10), ("008", 8), ("+7", 7), ("0", 0), ("-0", 0), ("000", 0), ("-010", 0)):
            result = json.loads(self.size("--json", "--max-sets", text, sample).stdout)
            self.assertEqual(len(result["ChosenSets"]), sets, text)
        self.assertEqual(json.loads(self.size("--json", "--max-sets=-010", sample).stdout)
                         ["Designer"]["MaxSetsRecommended"], -10)
        for text in ("0x10", "1e1", "ten", "", "-", "1.5", " 7", "2147483648"):
            for option in ("--max-sets", "--jobs"):
                done = self.size(option, text, sample)
                self.assertEqual((done.returncode, done.stdout), (2, ""), (option, text))
        self.assertEqual(self.size("--jobs", "002", sample).returncode, 0)
        for command in ("report", "export-spec"):
            done = [self.run_program(command, sample, "--db", self.database, "--set", text, "-o", "-", *self.fixed(command))
                    for text in ("010", "10", "8")]
            self.assertEqual(done[0].returncode, 0, done[0].stderr)
            self.assertEqual(done[0].stdout, done[1].stdout)
            self.assertNotEqual(done[0].stdout, done[2].stdout)

    @staticmethod
    def fixed(command):
        return ["--now", "2026-01-02 03:04:05"] if command == "report" else []

    # --- projects

    def test_a_sized_project_has_the_keys_in_their_order(self):
        done = self.size("--json", SOURCE / "samples/hospital.prj")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(done.stdout.count("\n"), 1)
        result = json.loads(done.stdout)
        self.assertEqual(list(result), TOP_KEYS)
        self.assertEqual(list(result["Designer"]), DESIGNER_KEYS)
        for step in result["LoadProfile"]:
            self.assertEqual(list(step), STEP_KEYS)
            for load in step["Loads"]:
                self.assertEqual(list(load), LOAD_KEYS)
                self.assertEqual([len(row) for row in load["Props"]], [2] * len(load["Props"]))
        for chosen in result["ChosenSets"]:
            self.assertEqual(list(chosen), SET_KEYS)
            self.assertEqual(len(chosen["VoltageDips"]), len(result["LoadProfile"]))
        for rejected in result["RejectedSets"]:
            self.assertEqual(list(rejected), ["RejectionReason", "Reasons"] + SET_KEYS)
            self.assertEqual(bin(rejected["RejectionReason"]).count("1"), len(rejected["Reasons"]))

    def test_every_sample_but_the_quarry_has_sets_in_both_lists(self):
        for sample in sorted((SOURCE / "samples").glob("*.prj")):
            result = json.loads(self.size("--json", sample).stdout)
            self.assertEqual(bool(result["ChosenSets"]), sample.name != "quarry.prj", sample)
            self.assertTrue(result["RejectedSets"], sample)

    def test_the_table_shows_sets_and_reasons_with_their_figures(self):
        done = self.size(SOURCE / "samples/quarry.prj")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("Recommended sets: none", done.stdout)
        self.assertIn("- The allowed voltage dip was exceeded on at least one load step.\n      step 3: ", done.stdout)

    def test_limits_shape_the_lists(self):
        result = json.loads(self.size("--json", "--max-sets", 2, "--max-undersized", 0, "--min-loading", 0,
                                      "--max-loading", 100, SOURCE / "samples/office.prj").stdout)
        self.assertEqual((len(result["ChosenSets"]), len(result["RejectedSets"])), (2, 0))
        designer = result["Designer"]
        self.assertEqual([designer[key] for key in DESIGNER_KEYS[4:]], [0, 100, 2, 0, 2, 0])

    def test_several_projects_come_in_order_with_the_highest_status(self):
        samples = [SOURCE / f"samples/{name}.prj" for name in ("office", "farm", "workshop", "hospital")]
        arguments = [samples[0], self.folder / "none.prj", *samples[1:]]
        outputs = []
        for jobs in (1, 2, 5):
            done = self.size("--json", "--jobs", jobs, *arguments)
            self.assertEqual(done.returncode, 3)
            outputs.append(done.stdout)
            files = [json.loads(line)["File"] for line in done.stdout.splitlines()]
            self.assertEqual(files, [str(argument) for argument in arguments])
        self.assertEqual(len(set(outputs)), 1)

    def test_a_file_that_is_not_there_carries_its_number(self):
        error = self.error(self.folder / "none.prj", status=3)
        self.assertEqual(error["Number"], 53)
        self.assertIn("none.prj", error["Description"])

    def test_what_is_no_project_is_refused(self):
        self.error(self.folder, status=3)
        for text in ("", "rubbish", "8,0,0,2\r\n", '"' * 1000, ",,,,\r\n"):
            self.assertIn("job.prj", self.error(self.project(text), status=3)["Description"])

    def test_fifty_megabytes_of_rubbish_are_refused_with_little_memory(self):
        file = self.folder / "rubbish.prj"
        for filling in (b"\x93garbage" * 64, b'"' + b"x" * 511, b"1,2,3,4\n" * 64):
            with open(file, "wb") as stream:
                for _ in range(50 * 1024 * 1024 // len(filling)):
                    stream.write(filling)
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            done = subprocess.run([PROGRAM, "size", "--db", str(self.database), str(file)], capture_output=True,
                                  timeout=30, preexec_fn=lambda: None)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            self.assertEqual(done.returncode, 3)
            self.assertLess(after.ru_utime - before.ru_utime, 20.0)
            if not os.environ.get("GENVARA_SANITIZED"):
                self.assertLess(after.ru_maxrss, 100 * 1024)  # kB, of the largest child so far
        file.unlink()

    def test_a_connection_that_no_row_has_comes_first(self):
        error = self.error(self.project(HEAD.format(connection=99) + "0\r\n"), status=3)
        self.assertIn("99", error["Description"])

    def test_a_limit_without_distortion_figures_is_told(self):
        for connection, volts, told in ((1, 480, False), (2, 240, False), (3, 240, True), (4, 240, True),
                                        (6, 240, True)):
            head = HEAD.format(connection=connection).replace(",480\r\n", f",{volts}\r\n")
            load = PUMPS.replace(",1,0\r\n", ",1,1\r\n")
            for enabled in (False, True):
                limited = head.replace("15,#FALSE#", "15,#TRUE#") if enabled else head
                file = self.project(limited + STEP + load)
                done = self.size(file)
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertEqual("no distortion figures for this connection\n" in done.stdout, told)
                warning = (f"{file}: warning: no distortion figures for this connection; the limit of 15 % was not "
                           "tested.\n")
                self.assertEqual(done.stderr, warning if told and enabled else "")
                done = self.run_program("report", file, "--db", self.database, "-o", self.folder / "a.rtf")
                self.assertEqual(done.stderr, warning if told and enabled else "")

    def test_an_empty_profile_is_not_sized(self):
        for text in ("0\r\n", '1\r\n"Step 1",15\r\n0\r\n'):
            error = self.error(self.project(HEAD.format(connection=1) + text), status=4)
            self.assertEqual(error, {"Number": 0, "Source": "",
                                     "Description": "At least one load and load step must be entered."})

    def test_a_load_that_cannot_be_worked_out_fails_its_project_with_candidates_or_without(self):
        charger = '1,1,"Charger","",1,0\r\n1E+300,1E+300,1,1\r\n'
        for voltage in ("480", "481"):
            head = HEAD.format(connection=1).replace(",480\r\n", f",{voltage}\r\n")
            file = self.project(head + STEP + charger)
            self.assertEqual(self.error(file, status=4),
                             {"Number": 6, "Source": "CBatChrgLoad::RunningAppPower", "Description": "Overflow"})
            self.assertEqual(self.size(file).returncode, 4)

    def test_the_load_that_cannot_be_worked_out_is_named(self):
        pump = '1,5,"Pump","",1,0\r\n0,"F",1,#TRUE#,#FALSE#\r\n25\r\n132500,1.2,300\r\n'
        text = HEAD.format(connection=1) + '2\r\n"A",15\r\n"B",15\r\n1\r\n' + PUMPS + "2\r\n" + PUMPS + pump
        for voltage in ("480", "481"):
            file = self.project(text.replace(",480\r\n", f",{voltage}\r\n"))
            line = (f'{file}: error 5 from CMtrLoad::StartingImgPower: Invalid procedure call or argument '
                    '(the starting power factor of load 2 of step 2, "Pump")\n')
            for arguments in (["size"], ["size", "--json"], ["report", "-o", "-"], ["export-spec", "-o", "-"]):
                if voltage == "481" and arguments[0] != "size":
                    continue  # without candidates only the lists ask for the load's figures
                done = self.run_program(*arguments, "--db", self.database, file)
                self.assertEqual((done.returncode, done.stderr), (4, line), arguments)
            error = json.loads(self.size("--json", file).stdout)["Error"]
            self.assertEqual(error, {"Number": 5, "Source": "CMtrLoad::StartingImgPower",
                                     "Description": "Invalid procedure call or argument"})

    def test_the_load_that_a_report_cannot_work_out_is_named(self):
        pump = '1,5,"Pump","",1,0\r\n0,"F",6,#TRUE#,#FALSE#\r\n25\r\n132500,0.4,0\r\n'
        file = self.project(HEAD.format(connection=1) + STEP + pump)
        done = self.run_program("report", "--undersized", "0", "--type", "summary", "--db", self.database, file, "-o", "-")
        self.assertEqual((done.returncode, done.stdout), (4, ""))
        self.assertEqual(done.stderr, f"{file}: error 11 from CMtrLoad::StartingTorque: Division by zero "
                                      '(the current limit of the solid-state starter of load 1 of step 1, "Pump")\n')

    def test_a_filter_without_non_linear_load_leaves_the_distortion_at_nothing(self):
        for pulse, family in ((1, 0), (2, 0), (1, 2), (2, 2)):
            ups = f'1,7,"UPS","",1,0\r\n{pulse},{family},100000,100,10,#TRUE#\r\n'
            done = self.size("--json", self.project(HEAD.format(connection=1) + STEP + ups))
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            result = json.loads(done.stdout)
            self.assertTrue(result["Designer"]["VTHD_CalcsValid"])
            self.assertTrue(result["ChosenSets"])
            for chosen in result["ChosenSets"]:
                self.assertEqual([chosen[f"StepVTHD_{phase}"] for phase in "ABC"], [[0.0]] * 3)

    def test_without_candidates_the_totals_are_those_of_a_fresh_designer(self):
        head = HEAD.format(connection=1).replace(",480\r\n", ",481\r\n")
        result = json.loads(self.size("--json", self.project(head + STEP + PUMPS)).stdout)
        designer = result["Designer"]
        self.assertEqual([designer["TotalRunningKW"], designer["PeakStartingKVA"], designer["VTHD_CalcsValid"]],
                         [0, 0, False])
        self.assertEqual(result["LoadProfile"][0]["TotalRunningRealPower"][0], 100000)

    def test_phases_follow_the_connection_and_not_the_file(self):
        for connection, phases in ((1, 3), (3, 1)):
            file = self.project(HEAD.format(connection=connection) + STEP + PUMPS)
            self.assertEqual(json.loads(self.size("--json", file).stdout)["PowerSystem"]["Phases"], phases)

    def test_what_was_passed_over_is_warned_of_and_listed(self):
        text = HEAD.format(connection=1) + '1\r\n"Step 1",15\r\n2\r\n1,4,"A","",0,0\r\n1000,1\r\n' + PUMPS
        file = self.project(text)
        done = self.size("--json", file)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr,
                         f'{file}: warning: 1 item of the file could not be used; "check" lists it.\n')
        done = self.run_program("check", "--db", self.database, file)
        self.assertEqual((done.returncode, done.stderr), (1, ""))
        self.assertEqual(done.stdout, f"{file}:9: load 1 of step 1 (CMiscLoad): expected a value that is accepted, "
                                      "found Load quantity out of range (CMiscLoad::Quantity)\n")

    def test_what_was_passed_over_is_warned_of_also_where_the_run_fails(self):
        skipped = '1,4,"A","",0,0\r\n1000,1\r\n'
        charger = '1,1,"Charger","",1,0\r\n1E+300,1E+300,1,1\r\n'
        fails = HEAD.format(connection=1) + '1\r\n"Step 1",15\r\n2\r\n' + skipped + charger
        empty = HEAD.format(connection=1) + '1\r\n"Step 1",15\r\n1\r\n' + skipped
        unknown = HEAD.format(connection=99) + '1\r\n"Step 1",15\r\n1\r\n' + skipped
        for text, status in ((fails, 4), (empty, 4), (unknown, 3)):
            file = self.project(text)
            for arguments in (["size"], ["size", "--json"], ["report", "-o", self.folder / "a.rtf"],
                              ["export-spec", "-o", "-"]):
                done = self.run_program(*arguments, "--db", self.database, file)
                self.assertEqual(done.returncode, status, arguments)
                warning, error = done.stderr.splitlines()
                self.assertEqual(warning,
                                 f'{file}: warning: 1 item of the file could not be used; "check" lists it.')
                self.assertTrue(error.startswith(f"{file}: error"), error)

    def test_where_no_set_is_found_the_candidates_are_counted(self):
        # No set is loaded to 101 %, so that all that are not undersized are dropped.
        with open(SOURCE / "data/catalog/Gensets.csv", newline="") as stream:
            rows = [row for row in csv.DictReader(stream) if row["Frequency"] == "60" and row["Fuel"] == "1"
                    and row["WindingConnection"] == "1" and row["VoltageLL"] == "480"]
        file = self.project(HEAD.format(connection=1) + STEP + PUMPS)
        limits = ["--min-loading", "101", "--max-undersized", "1000"]
        result = json.loads(self.size("--json", *limits, file).stdout)
        self.assertEqual(result["ChosenSets"], [])
        undersized, dropped = len(result["RejectedSets"]), len(rows) - len(result["RejectedSets"])
        self.assertGreater(undersized, 0)
        self.assertGreater(dropped, 0)
        self.assertIn(f"\nRecommended sets: none\n  {len(rows)} candidates: {undersized} undersized, {dropped} "
                      "dropped below the minimum loading of 101 %\n", self.size(*limits, file).stdout)
        nowhere = self.project((HEAD.format(connection=1) + STEP + PUMPS).replace(",480\r\n", ",481\r\n"), "nowhere.prj")
        self.assertIn("\nRecommended sets: none\n  0 candidates: no set of the catalogue is for this voltage, "
                      "frequency, connection and fuel\n", self.size(nowhere).stdout)
        self.assertRegex(self.size("--max-sets", "0", file).stdout, r"none\n  \d+ candidates: \d+ undersized, \d+ dropped "
                         r"below the minimum loading of 30 %, [1-9]\d* recommended and cut from the list\n")
        self.assertNotIn("candidates", self.size(file).stdout)

    def test_check_of_sound_and_missing_files(self):
        sample = SOURCE / "samples/farm.prj"
        done = self.run_program("check", "--db", self.database, sample)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, f"{sample}: read without a gap\n", ""))
        done = self.run_program("check", "--db", self.database, sample, self.folder / "none.prj")
        self.assertEqual(done.returncode, 3)
        self.assertEqual(len(done.stderr.splitlines()), 1)

    # --- standard output

    def commands_that_print(self):
        sample = SOURCE / "samples/farm.prj"
        odd = self.folder / "odd.prj"
        odd.write_bytes((HEAD.format(connection=1) + STEP + PUMPS).replace("100000", "many").encode())
        self.assertEqual(self.run_program("check", "--db", self.database, odd).returncode, 1)
        yield from (["--help"], ["--version"], ["size", "--help"], ["size", "--db", self.database, sample],
                    ["size", "--json", "--jobs", "2", "--db", self.database, sample, sample, sample],
                    ["check", "--db", self.database, sample], ["check", "--db", self.database, odd],
                    ["report", "--db", self.database, sample, "-o", "-"],
                    ["export-spec", "--db", self.database, sample, "-o", "-"],
                    ["catalog", "build", SOURCE / "data/catalog", "-o", self.folder / "again.db"],
                    ["catalog", "check", self.database],
                    ["catalog", "check", self.damaged("Update [Gensets] set LRkVA = null")])

    def test_standard_output_that_is_full_has_one_status(self):
        for arguments in self.commands_that_print():
            with open("/dev/full", "w") as full:
                done = subprocess.run([PROGRAM, *arguments], stdout=full, stderr=subprocess.PIPE, text=True, timeout=60)
            self.assertEqual((done.returncode, done.stderr),
                             (4, "genvara-cli: error: Standard output cannot be written: No space left on device.\n"),
                             arguments)

    def test_standard_output_that_is_closed_has_the_same_status(self):
        for arguments in self.commands_that_print():
            done = subprocess.run(["sh", "-c", 'exec "$0" "$@" >&-', PROGRAM, *arguments], stderr=subprocess.PIPE,
                                  text=True, timeout=60)
            self.assertEqual(done.returncode, 4, arguments)
            self.assertEqual(done.stderr,
                             "genvara-cli: error: Standard output cannot be written: Bad file descriptor.\n", arguments)

    def test_a_reader_that_goes_away_is_no_failure(self):
        for arguments in self.commands_that_print():
            reader, writer = os.pipe()
            os.close(reader)
            done = subprocess.run([PROGRAM, *arguments], stdout=writer, stderr=subprocess.PIPE, text=True, timeout=60)
            os.close(writer)
            self.assertEqual((done.returncode, done.stderr), (141, ""), arguments)

    def test_a_limit_of_file_sizes_is_an_error_like_a_full_disk(self):
        file = self.folder / "limited.rtf"
        file.write_text("old")
        done = self.run_program("report", SOURCE / "samples/farm.prj", "--db", self.database, "-o", file,
                                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)))
        self.assertEqual((done.returncode, file.read_text()), (3, "old"))
        self.assertIn("File too large", done.stderr)

    # --- reports and spec exports

    def report(self, sample, *arguments):
        return self.run_program("report", SOURCE / f"samples/{sample}.prj", "--db", self.database, *arguments)

    def test_a_report_is_reproduced_byte_for_byte(self):
        file = self.folder / "a.rtf"
        done = self.report("hospital", "--now", "2026-01-02 03:04:05", "-o", file)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        printed = self.report("hospital", "--now", "2026-01-02 03:04:05", "-o", "-").stdout
        self.assertEqual(file.read_bytes().replace(b"\r\n", b"\n"), printed.encode())
        self.assertIn("Generator Set Sizing", printed)

    def test_a_pdf_needs_no_display_and_is_reproduced_byte_for_byte(self):
        pages = []
        for number, (zone, desktop) in enumerate((("UTC", {}), ("IST-5:30", {
                "DISPLAY": ":987", "QT_QPA_PLATFORM": "xcb", "QT_QPA_PLATFORMTHEME": "gtk3", "QT_SCALE_FACTOR": "2",
                "QT_FONT_DPI": "200"}))):
            file = self.folder / f"farm{number}.PDF"
            environment = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
            done = self.run_program("report", SOURCE / "samples/farm.prj", "--db", self.database, "--type", "summary",
                                    "--now", "2026-01-02 03:04:05", "-o", file,
                                    env={**environment, **desktop, "TZ": zone})
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
            pages.append(file.read_bytes())
        self.assertTrue(pages[0].startswith(b"%PDF-"))
        self.assertIn(b"/CreationDate (D:20260102030405Z)", pages[0])
        self.assertEqual(pages[0], pages[1])
        self.assertTrue(self.report("farm", "-o", "-").stdout.startswith("{\\rtf1"), "standard output has no name")

    def alone(self, helper=None):
        """The console program in a folder of its own, with a script beside it in the helper's place."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        shutil.copy(PROGRAM, folder / "genvara-cli")
        if helper is not None:
            (folder / "genvara-pdf").write_text(f"#!/bin/sh\n{helper}\n")
            (folder / "genvara-pdf").chmod(0o755)
        return folder

    def test_a_pdf_without_its_helper_is_refused_in_words(self):
        for helper, reason in ((None, "is missing"), ("cat >/dev/null; echo part; exit 1", "genvara-pdf failed"),
                               ("exit 0", "genvara-pdf failed"), ("kill -9 $$", "genvara-pdf failed")):
            folder = self.alone(helper)
            (folder / "r.pdf").write_text("old")
            done = subprocess.run([folder / "genvara-cli", "report", SOURCE / "samples/hospital.prj", "--type", "summary",
                                   "--db", self.database, "-o", folder / "r.pdf"], capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stdout), (4, ""), helper)
            self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
            self.assertIn(reason, done.stderr)
            self.assertEqual((folder / "r.pdf").read_text(), "old")

    def test_the_helper_gets_the_report_and_the_projects_name(self):
        folder = self.alone('cat > "$(dirname "$0")/text"; printf "%s|" "$@" > "$(dirname "$0")/words"; echo made')
        done = subprocess.run([folder / "genvara-cli", "report", SOURCE / "samples/farm.prj", "--now",
                               "2026-01-02 03:04:05", "--db", self.database, "-o", folder / "r.pdf"],
                              capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual((folder / "r.pdf").read_text(), "made\n")
        self.assertEqual((folder / "words").read_text(),
                         "--name=Osgood grain dryer|--created=2026-01-02 03:04:05|")
        self.assertEqual((folder / "text").read_text(),
                         self.report("farm", "--now", "2026-01-02 03:04:05", "-o", "-").stdout)

    def test_the_helper_tells_what_it_cannot_do(self):
        helper = PROGRAM.parent / "genvara-pdf"
        for arguments, text, status in ((["--created", "soon"], "{\\rtf1 a}", 2), (["stray"], "{\\rtf1 a}", 2),
                                        ([], "plain", 3), ([], "", 3)):
            done = subprocess.run([helper, *arguments], input=text, capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stdout), (status, ""), arguments)
            self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        with open("/dev/full", "wb") as full:
            done = subprocess.run([helper], input=b"{\\rtf1 a}", stdout=full, stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 3)
        self.assertIn("--name", subprocess.run([helper, "--help"], capture_output=True, text=True).stdout)

    def test_without_a_set_the_report_is_the_first_or_the_search_failure(self):
        self.assertIn("Search Failure Report", self.report("quarry", "-o", "-").stdout)
        self.assertIn("Search Failure Report", self.report("hospital", "--no-match", "-o", "-").stdout)
        self.assertIn("Undersized Generator Set", self.report("quarry", "--undersized", 0, "-o", "-").stdout)

    def test_the_time_of_a_report_has_a_form(self):
        stated = {}
        for text in ("2026-01-02 03:04:05", "2026-01-02T03:04:05", "2026-01-02", "2026-01-02 00:00:00"):
            done = self.report("farm", "--now", text, "-o", "-")
            self.assertEqual((done.returncode, done.stderr), (0, ""), text)
            stated[text] = done.stdout
        self.assertEqual(stated["2026-01-02 03:04:05"], stated["2026-01-02T03:04:05"])
        self.assertEqual(stated["2026-01-02"], stated["2026-01-02 00:00:00"])
        self.assertIn("January 2, 2026; 03:04:05 AM", stated["2026-01-02T03:04:05"])
        self.assertIn("January 2, 2026; 12:00:00 AM", stated["2026-01-02"])
        for text in ("", "now", "2026-01-02t03:04:05", "2026-01-02  03:04:05", "2026-01-02 3:04:05", "2026-01-02T",
                     "2026-01-02 03:04", "2026-02-29 00:00:00", "2026-01-02 24:00:00", "0099-01-01 00:00:00"):
            done = self.report("farm", "--now", text, "-o", "-")
            self.assertEqual((done.returncode, done.stdout), (2, ""), text)
            self.assertIn(f'--now: "{text}" is no time; expected "yyyy-mm-dd hh:mm:ss", or with a T for the blank',
                          done.stderr)
        self.assertIn('"yyyy-mm-dd hh:mm:ss", or with a T for the blank', self.run_program("report", "--help").stdout)

    # --- files that are not written over

    def refused(self, *arguments):
        """The sentence with which a command refuses its output."""
        done = self.run_program(*arguments)
        self.assertEqual((done.returncode, done.stdout), (2, ""), (arguments, done.stderr))
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        return done.stderr.removeprefix("genvara-cli: error: ").rstrip("\n")

    def test_no_output_is_written_over_an_input_by_whatever_name(self):
        folder = self.folder / "inputs"
        (folder / "sub").mkdir(parents=True)
        project, database = folder / "job.prj", folder / "job.db"
        shutil.copy(SOURCE / "samples/farm.prj", project)
        shutil.copy(self.database, database)
        before = project.read_bytes(), database.read_bytes()
        for target, meaning in ((project, "the project"), (database, "the genset database")):
            symbolic, hard = folder / f"link-to-{target.stem}{target.suffix[1]}.rtf", folder / f"hard{target.suffix[1]}.rtf"
            symbolic.symlink_to(target)
            hard.hardlink_to(target)
            for name in (target, symbolic, hard, folder / "sub" / ".." / target.name):
                for command in ("report", "export-spec"):
                    self.assertEqual(self.refused(command, project, "--db", database, "-o", name),
                                     f"{name} is {meaning} and is not written over.")
        self.assertEqual((project.read_bytes(), database.read_bytes()), before)
        for command, output in (("report", "a.rtf"), ("export-spec", "a.gvx")):
            done = self.run_program(command, project, "--db", database, "-o", folder / output)
            self.assertEqual(done.returncode, 0, done.stderr)
        shutil.rmtree(folder)

    def test_a_database_is_not_written_over_a_table_that_it_is_built_from(self):
        tables = self.folder / "tables-of-its-own"
        shutil.copytree(SOURCE / "data/catalog", tables)
        before = (tables / "Derate Codes.csv").read_bytes()
        link = tables / "link.db"
        link.symlink_to("Derate Codes.csv")
        for name in (tables / "Derate Codes.csv", link, tables / ".." / tables.name / "Gensets.csv"):
            self.assertEqual(self.refused("catalog", "build", tables, "-o", name),
                             f"{name} is a table that the database is built from and is not written over.")
        self.assertEqual((tables / "Derate Codes.csv").read_bytes(), before)
        self.assertEqual(self.run_program("catalog", "build", tables, "-o", tables / "new.db").returncode, 0)
        shutil.rmtree(tables)

    def test_an_ending_that_denies_what_the_file_holds_is_refused(self):
        sample = SOURCE / "samples/farm.prj"
        rows = (("report", [sample], "a report", ".rtf", ("x.png", "x.PNG", "x.docx", "x.txt", "a.b.html", "x.gvx")),
                ("export-spec", [sample], "a profile file", ".gvx", ("x.pdf", "x.rtf", "x.Prj")))
        for command, arguments, meaning, ending, names in rows:
            place = self.folder / f"{command}-endings"
            place.mkdir()
            for name in names:
                file = place / name
                self.assertEqual(self.refused(command, *arguments, "--db", self.database, "-o", file),
                                 f"{file} would be {meaning}, which its ending {file.suffix.lower()} denies; let it end "
                                 f"in {ending}.")
                self.assertFalse(file.exists())
            for name in (f"x{ending}", f"x{ending.upper()}", "x", "x.2026-01-02", "x.old"):
                done = self.run_program(command, *arguments, "--db", self.database, "-o", place / name)
                self.assertEqual(done.returncode, 0, (name, done.stderr))
        self.assertIn("would be a genset database", self.refused("catalog", "build", SOURCE / "data/catalog", "-o",
                                                                  self.folder / "x.pdf"))

    def test_characters_that_an_export_cannot_hold_are_warned_of(self):
        wide = self.damaged("Update [Gensets] set GensetModel = 'MV\u03a9\u2126'",
                            "Update [Alternators] set ModelNum = 'TN\u0416'")
        file = self.folder / "wide.gvx"
        for output in (file, "-"):
            done = self.run_program("export-spec", SOURCE / "samples/farm.prj", "--db", wide, "-o", output)
            self.assertEqual((done.returncode, done.stderr), (0, (
                f'{output}: warning: 3 characters that the file cannot hold were written as "?".\n')))
        self.assertIn(b"model=MV??\r\n", file.read_bytes())
        # Rich text holds every character.
        done = self.run_program("report", SOURCE / "samples/farm.prj", "--db", wide, "-o", "-")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("MV\\u937?\\u8486?", done.stdout)
        one = self.damaged("Update [Gensets] set GensetModel = 'MV\u03a9'")
        done = self.run_program("export-spec", SOURCE / "samples/farm.prj", "--db", one, "-o", "-")
        self.assertEqual(done.stderr, '-: warning: 1 character that the file cannot hold was written as "?".\n')

    def test_an_index_beyond_its_list_is_a_matter_of_the_arguments(self):
        for arguments, length in ((["--set", "0"], "0"), (["--undersized", "5"], "5"), (["--set", "-1"], "0")):
            done = self.report("quarry", *arguments, "-o", self.folder / "none.rtf")
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn(f"the list has {length}", done.stderr)
        self.assertFalse((self.folder / "none.rtf").exists())
        for arguments in (["--set", "0", "--undersized", "0"], ["--set", "0", "--no-match"], ["--type", "x"],
                          ["--now", "tomorrow"], ["--now", "2026-02-30 00:00:00"]):
            done = self.report("hospital", *arguments, "-o", self.folder / "none.rtf")
            self.assertEqual(done.returncode, 2, arguments)
        self.assertEqual(self.report("hospital").returncode, 2)

    def test_an_output_that_cannot_be_written_leaves_what_was_there(self):
        for command, ending in (("report", "rtf"), ("export-spec", "gvx")):
            for output in (self.folder / f"no/a.{ending}", self.folder, pathlib.Path("/dev/full")):
                done = self.run_program(command, SOURCE / "samples/farm.prj", "--db", self.database, "-o", output)
                self.assertEqual((done.returncode, done.stdout), (3, ""), (command, output))
                self.assertEqual(len(done.stderr.splitlines()), 1)
                self.assertIn(str(output), done.stderr)

    def test_a_spec_export_merges_with_what_was_there(self):
        file = self.folder / "a.gvx"
        file.write_bytes(b"[Mine]\nkey=1\n")
        done = self.run_program("export-spec", SOURCE / "samples/office.prj", "--db", self.database, "-o", file)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        fresh = self.run_program("export-spec", SOURCE / "samples/office.prj", "--db", self.database, "-o", "-").stdout
        self.assertEqual(file.read_bytes(), b"[Mine]\nkey=1\n" + fresh.replace("\n", "\r\n").encode())
        done = self.run_program("export-spec", SOURCE / "samples/quarry.prj", "--db", self.database, "-o", file)
        self.assertEqual(done.returncode, 4)
        done = self.run_program("export-spec", SOURCE / "samples/quarry.prj", "--db", self.database, "--undersized", 1,
                                "-o", "-")
        self.assertEqual(done.returncode, 0)

    def test_an_undersized_report_takes_over_whether_distortion_is_valid(self):
        # A single-phase site has none; with a set recommended the report says so, with none it shows the zeros.
        for kilowatts, text in (("20000", "N/A"), ("900000", "0.00 %")):
            load = PUMPS.replace("100000", kilowatts).replace(",1,0\r\n", ",1,1\r\n")
            head = HEAD.format(connection=3).replace(",480\r\n", ",240\r\n")
            done = self.run_program("report", self.project(head + STEP + load), "--db", self.database,
                                    "--undersized", 0, "-o", "-")
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn("Voltage THD\\tab \\b0 " + text, done.stdout)

    # --- databases

    def test_a_database_that_is_missing_or_none_is_refused(self):
        project = SOURCE / "samples/farm.prj"
        text = self.folder / "text.db"
        text.write_text("no database " * 500)
        for database, number in ((self.folder / "none.db", 53), (self.folder, 21), (text, 0)):
            done = self.run_program("size", "--json", "--db", database, project, project)
            self.assertEqual(done.returncode, 3, done.stderr)
            errors = [json.loads(line)["Error"] for line in done.stdout.splitlines()]
            self.assertEqual(len(errors), 2)
            self.assertIn(database.name, errors[0]["Description"])
            self.assertEqual(errors[0]["Number"], number)
            self.assertEqual(len(done.stderr.splitlines()), 1)

    def test_an_unfit_database_has_no_number_and_is_named(self):
        for statement in ('Drop table [Motor Code Letters]', 'Alter table [Gensets] drop column ExpC',
                          'Delete from [Properties]', 'Update [Properties] set Version = null',
                          "Update Connections set Phases = 'three'", 'Update Connections set ID = 9999999999',
                          'Update [Motor Power Conversions] set SPF = null'):
            database = self.damaged(statement)
            done = self.run_program("size", "--json", "--db", database, SOURCE / "samples/farm.prj")
            self.assertEqual(done.returncode, 3, statement)
            self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
            error = json.loads(done.stdout)["Error"]
            self.assertEqual(error["Number"], 0, statement)
            self.assertIn(str(database), error["Description"])
            self.assertEqual(error["Description"].count("."), str(database).count(".") + 1, "one sentence")

    @unittest.skipIf(os.geteuid() == 0, "everything may be read by root")
    def test_a_database_that_may_not_be_read_has_the_systems_number(self):
        database = self.damaged()
        database.chmod(0)
        done = self.run_program("size", "--json", "--db", database, SOURCE / "samples/farm.prj")
        self.assertEqual((done.returncode, json.loads(done.stdout)["Error"]["Number"]), (3, errno.EACCES))
        database.chmod(0o600)

    def test_a_null_or_a_missing_row_ends_the_run(self):
        cases = (("Update [Gensets] set LRkVA = null", 13, "CDesigner::ChooseSets"),
                 ("Update [Gensets] set Rating130C = 'x'", 13, "CDesigner::NominalRating"),
                 ("Update [Gensets] set StartingPower = null", 13, "CDesigner::EngineStartingPower"),
                 ("Update [Derate Codes] set AltDerateBase = null", 13, "CDesigner::DeratedRating"),
                 ("Update [Alternators] set BasekW = null", 13, "CDesigner::ReadAlternator"),
                 ("Delete from [Derate Codes]", 3021, "GensetDatabase"),
                 ("Delete from [Alternators]", 3021, "GensetDatabase"))
        for statement, number, source in cases:
            done = self.run_program("size", "--json", "--db", self.damaged(statement), SOURCE / "samples/hospital.prj")
            self.assertEqual(done.returncode, 4, statement)
            error = json.loads(done.stdout)["Error"]
            self.assertEqual((error["Number"], error["Source"]), (number, source), statement)
            self.assertRegex(done.stderr, r"\(the set MV\w+ with the alternator \S+, row \d+ of \[Gensets\]\)\n$")

    def test_the_row_of_the_catalogue_that_ends_a_run_is_named(self):
        # The hospital's site is 480 V wye at 60 Hz on diesel.
        connection = sqlite3.connect(self.database)
        row, model, alternator = connection.execute(
            "Select g.rowid, GensetModel, ModelNum from [Gensets] as g join [Alternators] as a on a.ID = AltModel where "
            "Frequency = 60 and WindingConnection = 1 and VoltageLL = 480 and Fuel = 1 limit 1 offset 40").fetchone()
        connection.close()
        damaged = self.damaged(f"Update [Gensets] set LRkVA = null where rowid = {row}")
        done = self.run_program("size", "--db", damaged, SOURCE / "samples/hospital.prj")
        self.assertEqual((done.returncode, done.stderr), (4, (
            f"{SOURCE}/samples/hospital.prj: error 13 from CDesigner::ChooseSets: Type mismatch (the set {model} with the "
            f"alternator {alternator}, row {row} of [Gensets])\n")))
        self.assertIn(f'[Gensets], row {row}, column "LRkVA": is Null',
                      self.run_program("catalog", "check", damaged).stdout)

    # --- catalogues

    def test_catalog_build_lists_all_faults_and_leaves_no_file(self):
        tables = self.folder / "tables"
        shutil.copytree(SOURCE / "data/catalog", tables)
        (tables / "Connections.csv").write_text("ID,Connection Type,Phases\nx,Wye,3\n1,Wye\n")
        target = self.folder / "new.db"
        done = self.run_program("catalog", "build", tables, "-o", target)
        self.assertEqual((done.returncode, done.stdout), (3, ""))
        self.assertEqual(done.stderr.splitlines(),
                         [f'{tables}/Connections.csv: line 2, column "ID": "x" is no number',
                          f"{tables}/Connections.csv: line 3: 2 fields where the header has 3",
                          f"{target} was not built."])
        self.assertFalse(target.exists())
        self.assertEqual(self.run_program("catalog", "build", self.folder / "none", "-o", target).returncode, 3)

    def test_catalog_build_takes_a_hundred_thousand_rows(self):
        tables = self.folder / "large"
        shutil.copytree(SOURCE / "data/catalog", tables)
        with open(tables / "Gensets.csv", newline="") as stream:
            rows = list(csv.reader(stream))
        with open(tables / "Gensets.csv", "w", newline="") as stream:
            writer = csv.writer(stream)
            writer.writerow(rows[0])
            for index in range(100000):
                writer.writerow(rows[1 + index % (len(rows) - 1)])
        done = self.run_program("catalog", "build", tables, "-o", self.folder / "large.db")
        self.assertEqual(done.returncode, 0, done.stderr)
        shutil.rmtree(tables)

    def test_catalog_check_names_table_row_and_column(self):
        done = self.run_program("catalog", "check", self.database)
        self.assertEqual((done.returncode, done.stdout), (0, f"{self.database}: nothing found\n"))
        done = self.run_program("catalog", "check", self.damaged("Update [Gensets] set LRkVA = null where rowid = 7"))
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (1, '[Gensets], row 7, column "LRkVA": is Null\n', ""))
        self.assertEqual(self.run_program("catalog", "check", self.folder / "none.db").returncode, 3)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
