#!/usr/bin/env python3
"""Starts the desktop program as a whole, without a screen: what it says before there is a window.

    test_start.py GENVARA
"""

import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM = Path(sys.argv.pop(1))
PATIENCE = 120  # seconds; a checked build takes its time


class Start(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="genvara-start-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.program = self.folder / "genvara"
        shutil.copy2(PROGRAM, self.program)
        self.catalogue = self.folder / "Genvara.db"
        shutil.copy2(PROGRAM.parent / "Genvara.db", self.catalogue)
        self.environment = {**os.environ, "HOME": str(self.folder), "XDG_CONFIG_HOME": str(self.folder / "config"),
                            "XDG_STATE_HOME": str(self.folder / "state"), "QT_QPA_PLATFORM": "offscreen"}

    def run_to_end(self, *arguments, **variables):
        environment = {**self.environment, **variables}
        return subprocess.run([self.program, *map(str, arguments)], env=environment, capture_output=True, text=True,
                              timeout=PATIENCE, check=False)

    def run_without_screen(self, *arguments):
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            self.environment.pop(name, None)
        return self.run_to_end(*arguments, QT_QPA_PLATFORM="xcb")

    def line_of_running(self, *arguments):
        """First line of its own on standard error of a program that goes on running."""
        with subprocess.Popen([self.program, *map(str, arguments)], env=self.environment, stderr=subprocess.PIPE,
                              text=True) as running:
            try:
                line = next((line for line in running.stderr if line.startswith("genvara:")), "")
                time.sleep(0.5)
                self.assertIsNone(running.poll(), "it waits for its user")
                return line
            finally:
                running.kill()

    def drop(self, table):
        with sqlite3.connect(self.catalogue) as database:
            database.execute(f"DROP TABLE [{table}]")

    def test_a_second_file_is_refused_in_words(self):
        done = self.run_to_end("a.prj", "b.prj")
        self.assertEqual(done.returncode, 2)
        self.assertIn("genvara: One project can be opened at a time, and 2 files were given.\n", done.stderr)
        self.assertIn("genvara --help", done.stderr)

    def test_an_unknown_option_is_refused_in_words(self):
        done = self.run_to_end("--colour")
        self.assertEqual(done.returncode, 2)
        self.assertIn("colour", done.stderr)

    def test_help_and_version_need_no_screen_and_no_catalogue(self):
        self.catalogue.unlink()
        for option, words in (("--help", "[PROJECT]"), ("-h", "[PROJECT]"), ("--version", "genvara 8."), ("-v", "8.")):
            done = self.run_without_screen(option)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn(words, done.stdout)
            self.assertEqual(done.stderr, "")

    def test_a_missing_catalogue_is_told_in_words(self):
        self.catalogue.unlink()
        sentence = f"genvara: The genset database {self.catalogue} is not there.\n"
        self.assertEqual(self.line_of_running(), sentence)
        done = self.run_without_screen()
        self.assertIn(sentence, done.stderr)
        self.assertNotEqual(done.returncode, 0)

    def test_an_unfit_catalogue_is_told_in_words(self):
        self.catalogue.write_text("Dear Sir, this is no database, and it never was one.")
        self.assertIn(f"The genset database {self.catalogue} ", self.line_of_running())
        shutil.copy2(PROGRAM.parent / "Genvara.db", self.catalogue)
        self.drop("Properties")
        line = self.line_of_running()
        self.assertIn("Properties", line)
        self.assertIn(str(self.catalogue), line)

    def test_a_whole_catalogue_is_not_mentioned(self):
        with subprocess.Popen([self.program], env=self.environment, stderr=subprocess.PIPE, text=True) as running:
            time.sleep(1.0)
            self.assertIsNone(running.poll())
            running.kill()
            self.assertNotIn("genvara:", running.stderr.read())


if __name__ == "__main__":
    unittest.main()
