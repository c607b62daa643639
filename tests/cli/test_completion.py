"""What bash offers after the words that stand already.

    test_completion.py COMPLETION-SCRIPT GENVARA-CLI
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
PROGRAM = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

# compopt works in a completion only; here nobody looks at file names.
ASK = 'compopt() { :; }; source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _genvara_cli; printf "%s\\n" "${COMPREPLY[@]}"'


class Completion(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.temporary.name)
        (cls.folder / "folder").mkdir()
        for name in ("1.prj", "job.prj", "job.db", "job.rtf", "loads.csv", "loads.tsv"):
            (cls.folder / name).touch()

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def offered(self, *words):
        done = subprocess.run(["bash", "-c", ASK, SCRIPT, "genvara-cli", *words], capture_output=True, text=True,
                              timeout=20, cwd=self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""), words)
        return sorted(done.stdout.split())

    def options(self, *command):
        """Each option of a command with whether it takes a number or a time, as its help says."""
        text = subprocess.run([PROGRAM, *command, "--help"], capture_output=True, text=True, timeout=20).stdout
        return {name: value in ("N", "TIME") for name, value in re.findall(r"^  (--[\w-]+) ?(\w*)", text, re.M)}

    def test_files_are_offered_where_files_belong(self):
        self.assertEqual(self.offered("size", ""), ["1.prj", "folder", "job.prj"])
        self.assertEqual(self.offered("report", "job.prj", "-o", ""), ["1.prj", "folder", "job.db", "job.prj", "job.rtf", "loads.csv",
                                                                   "loads.tsv"])
        self.assertEqual(self.offered("size", "--db", "job"), ["job.db", "job.prj", "job.rtf"])
        self.assertEqual(self.offered("import", ""), ["folder", "loads.csv", "loads.tsv"])
        self.assertEqual(self.offered("import", "loads.csv", "--into", ""), ["1.prj", "folder", "job.prj"])
        self.assertEqual(self.offered("catalog", "build", ""), ["folder"])
        self.assertEqual(self.offered("catalog", "check", ""), ["folder", "job.db"])

    def test_all_kinds_of_record_are_offered(self):
        rows = subprocess.run([PROGRAM, "describe", "--json"], capture_output=True, text=True, timeout=20, check=True).stdout
        self.assertEqual(self.offered("describe", ""), sorted({json.loads(row)["Kind"] for row in rows.splitlines()}))

    def test_nothing_is_offered_where_a_number_or_a_time_belongs(self):
        numbers = 0
        for command in ("size", "sweep", "advise", "order", "report", "export-spec"):
            for option, takes_number in self.options(command).items():
                if takes_number:
                    numbers += 1
                    self.assertEqual(self.offered(command, option, ""), [], (command, option))
                    self.assertEqual(self.offered(command, option, "1"), [], (command, option))
                    self.assertEqual(self.offered(command, option, "1", "j"), ["job.prj"], (command, option))
        self.assertGreaterEqual(numbers, 16)

    def test_every_command_and_option_is_offered(self):
        for command in ("size", "explain", "sweep", "advise", "order", "import", "report", "export-spec",
                        "check"):
            self.assertIn(command, self.offered(command[:2]))
            missing = set(self.options(command)) - set(self.offered(command, "--"))
            self.assertEqual(missing, set(), command)
        self.assertEqual(self.offered("catalog", ""), ["--help", "build", "check"])
        self.assertEqual(self.offered("report", "--type", ""), ["sizing", "summary"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
