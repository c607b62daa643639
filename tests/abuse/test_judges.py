"""The test of the tests: each script finds what it is there for, in a program that is broken on purpose.

    test_judges.py GENVARA-CLI SAVER SETTINGS-WRITER DATABASE SAMPLES-FOLDER
"""
import contextlib
import io
import os
import pathlib
import random
import shlex
import shutil
import sys
import tempfile
import unittest
import unittest.mock

import abuse
import full_disk
import kill_saver
import odd_catalogues
import odd_projects
import settings_crowd

PROGRAM, SAVER, WRITER, DATABASE, SAMPLES = (
    abuse.arguments("test_judges.py GENVARA-CLI SAVER SETTINGS-WRITER DATABASE SAMPLES-FOLDER"))
REAL = shlex.quote(str(PROGRAM))


class Judges(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def broken(self, script):
        """A program of a few lines of shell."""
        file = self.folder / "broken"
        file.write_text(f"#!/bin/sh\n{script}\n")
        file.chmod(0o755)
        return file

    @staticmethod
    def found(trial):
        """What a trial finds, one text, without its prints."""
        with contextlib.redirect_stdout(io.StringIO()):
            return "\n".join(trial().all)

    # --- savers

    def test_a_saver_that_writes_in_place_is_found(self):
        found = self.found(lambda: kill_saver.hunt(SAVER, 20, random.Random(1), ("--in-place",)))
        self.assertIn("neither the old project nor the new one", found)

    def test_a_saver_that_leaves_its_temporary_files_is_found(self):
        litter = self.broken(f"mktemp \"$(dirname \"$1\")/left-XXXXXX\" >/dev/null; exec {shlex.quote(str(SAVER))} \"$@\"")
        found = self.found(lambda: kill_saver.hunt(litter, 3, random.Random(1)))
        self.assertIn("temporary files pile up", found)
        self.assertIn("the save at the end left", found)

    def test_a_store_without_a_lock_is_found(self):
        found = self.found(lambda: settings_crowd.crowd(WRITER, 12, ("--unlock",)))
        self.assertIn("is lost", found)

    def test_savers_on_a_full_disk(self):
        tell = "{ echo 'x: error 27: File too large' >&2; exit 3; }"
        cases = {
            "the old file is gone": f"head -c 9000 /dev/zero 2>/dev/null > \"$1\" || {tell}",
            "saved, it says, but the file holds": "head -c 9000 /dev/zero 2>/dev/null > \"$1.new\""
                                                  " && mv \"$1.new\" \"$1\"; rm -f \"$1.new\"; exit 0",
            "the failure is not told": "head -c 9000 /dev/zero 2>/dev/null > \"$1.new\""
                                       " && mv \"$1.new\" \"$1\" || { rm \"$1.new\"; exit 3; }",
            "left behind: ['target.new']": "head -c 9000 /dev/zero 2>/dev/null > \"$1.new\""
                                           f" && mv \"$1.new\" \"$1\" || {tell}",
            "ends with status 7": "head -c 9000 /dev/zero 2>/dev/null > \"$1\" || exit 7"}
        for expected, script in cases.items():
            program = self.broken(script)
            save = full_disk.Save("broken", lambda file, program=program: [program, file], b"old")
            self.assertIsNone(full_disk.learn(save))

            def trial(save=save):
                findings = abuse.Findings()
                full_disk.limit_sizes(save, findings, random.Random(1))
                return findings
            self.assertIn(expected, self.found(trial))

    # --- readers

    def projects(self, script):
        broken = self.broken(f"{script}\nexec {REAL} \"$@\"")
        return self.found(lambda: odd_projects.try_samples(broken, DATABASE, SAMPLES, random.Random(1),
                                                           lambda name: name in ("cut-0", "cut-37", "cut-74")))

    def test_the_sound_program_passes(self):
        self.assertEqual(self.projects(""), "")

    def test_a_crash_on_one_file_is_found_and_the_file_named(self):
        found = self.projects("case \"$*\" in *farm-cut-37.prj*) kill -SEGV $$;; esac")
        self.assertRegex(found, r"farm-cut-37\.prj: ends with signal 11")
        self.assertNotRegex(found, r"farm-cut-74\.prj: ")
        self.assertNotIn("office", found)
        self.assertRegex(self.projects("case \"$*\" in *farm-cut-0.json*) kill -SEGV $$;; esac"),
                         r"farm-cut-0\.json: ends with signal 11")

    def test_a_program_that_hangs_is_found(self):
        with unittest.mock.patch.object(abuse, "TIMEOUT", 2):
            found = self.projects("case \"$*\" in check*farm-cut-37.prj*) exec sleep 60;; esac")
        self.assertRegex(found, r"farm-cut-37\.prj: hangs")

    def test_odd_statuses_and_answers_are_found(self):
        cases = {"ends with status 139": "case \"$*\" in check*farm*) exit 139;; esac",
                 "a sanitizer reports": "case \"$*\" in check*farm*) echo 'ERROR: AddressSanitizer' >&2; exit 3;; esac",
                 "lines for": f"case \"$*\" in size*farm*) {REAL} \"$@\" 2>/dev/null | sed 1d; exit 3;; esac",
                 "is answered by no JSON": f"case \"$*\" in size*farm*) {REAL} \"$@\" 2>/dev/null"
                                           " | sed 's/:[-0-9.]*/:nan/'; exit 3;; esac",
                 "is not answered for": "case \"$*\" in check*farm*) exit 0;; esac",
                 "without a word": f"case \"$*\" in size*farm*) {REAL} \"$@\" 2>/dev/null"
                                   " | sed 's/\"Description\":\"[^\"]*\"/\"Description\":\"\"/'; exit 3;; esac"}
        for expected, script in cases.items():
            self.assertIn(expected, self.projects(script))

    def catalogues(self, script, names):
        broken = self.broken(f"{script}\nexec {REAL} \"$@\"")
        return self.found(lambda: odd_catalogues.try_catalogues(broken, DATABASE, SAMPLES, random.Random(1),
                                                                lambda name: name in names))

    def test_a_check_that_finds_nothing_is_found(self):
        blind = "[ \"$1\" = catalog ] && exit 0"
        self.assertIn("catalog check finds nothing, size fails", self.catalogues(blind, {"Gensets dropped"}))
        self.assertIn("size comes to other results", self.catalogues(blind, {"Gensets emptied"}))

    def test_other_broken_readers_of_catalogues(self):
        names = {"Connections dropped"}
        self.assertEqual(self.catalogues("", names), "")
        cases = {"ends with signal 6": "[ \"$1\" = size ] && case \"$*\" in */0.db*) kill -ABRT $$;; esac",
                 "finds something without a word": "[ \"$1\" = catalog ] && exit 1",
                 "catalog check fails without a word": "[ \"$1\" = catalog ] && exit 3",
                 "size fails without a word": f"case \"$*\" in size*/0.db*) {REAL} \"$@\" 2>/dev/null; exit 3;; esac"}
        for expected, script in cases.items():
            self.assertIn(expected, self.catalogues(script, names))


if __name__ == "__main__":
    os.environ.pop("GENVARA_ABUSE_SEED", None)
    unittest.main(argv=sys.argv[:1])
