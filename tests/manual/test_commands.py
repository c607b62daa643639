"""Runs every command of the manual, page by page, in a folder as the pages describe it.

    test_commands.py GENVARA-CLI SOURCE-FOLDER
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from manual_pages import read_pages

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None


class Commands(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = read_pages(SOURCE)

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        shutil.copytree(SOURCE / "samples", self.folder / "projects")
        shutil.copytree(SOURCE / "data/catalog", self.folder / "catalog")
        # A program folder of its own, with a catalogue beside the program.
        (self.folder / "bin").mkdir()
        shutil.copy2(PROGRAM, self.folder / "bin/genvara-cli")
        shutil.copy2(PROGRAM.with_name("genvara-pdf"), self.folder / "bin/genvara-pdf")
        self.run_shell("genvara-cli catalog build catalog -o bin/Genvara.db")

    def run_shell(self, text):
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", text], cwd=self.folder, text=True, timeout=120,
                              capture_output=True,
                              env={**os.environ, "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}"})
        self.assertEqual(done.returncode, 0, f"{text}\n{done.stdout}{done.stderr}")
        return done.stdout

    def run_page(self, name):
        """Writes the page's files and runs its commands in their order; what each of them printed."""
        printed = []
        for block in self.pages[name].root.iter("pre"):
            text = "".join(block.itertext())
            if block.get("class") == "file":
                (self.folder / block.get("title")).write_text(text + "\n")
            else:
                self.assertEqual(block.get("class"), "command")
                printed.append(self.run_shell(text))
        return printed

    def test_every_command_stands_in_a_block_that_is_run(self):
        for page in self.pages.values():
            for block in page.root.iter("pre"):
                self.assertIn(block.get("class"), ("command", "file"), page.name)

    def test_the_catalogue_is_built_and_tried(self):
        printed = self.run_page("files.html")
        self.assertTrue((self.folder / "new.db").is_file())
        self.assertIn("Recommended sets", printed[-1])

    def test_the_template_is_imported(self):
        printed = self.run_page("import.html")
        self.assertIn("12 loads in order", printed[0])
        self.assertTrue((self.folder / "office-with-loads.prj").is_file())

    def test_the_console_page_from_top_to_bottom(self):
        printed = self.run_page("console.html")
        projects = len(list((self.folder / "projects").glob("*.prj")))
        for name in ("hospital.rtf", "loads.rtf", "quarry.rtf", "none.rtf", "farm.rtf"):
            self.assertTrue((self.folder / name).read_text("cp1252").startswith("{\\rtf1"), name)
        self.assertIn("[Model No]", (self.folder / "hospital.gvx").read_text("cp1252"))
        orders = (self.folder / "orders.csv").read_text().splitlines()
        self.assertEqual(len(orders), projects)
        self.assertIn("projects/quarry.prj,none,", orders)
        results = [json.loads(line) for line in (self.folder / "results.jsonl").read_text().splitlines()]
        names = (self.folder / "all.txt").read_text().splitlines()
        self.assertEqual([result["File"] for result in results], names)
        self.assertEqual(len(names), projects)
        self.assertEqual(printed[-1].strip(), "0")

    def batch_blocks(self):
        blocks = list(self.pages["console.html"].root.iter("pre"))
        script = next(n for n, block in enumerate(blocks) if block.get("class") == "file")
        return ["".join(block.itertext()) for block in blocks[script - 1:]]

    def test_the_batch_recipe_with_many_parts_and_a_project_that_fails(self):
        make, script, start, collect = self.batch_blocks()
        (self.folder / "projects/with a blank.prj").write_bytes((SOURCE / "samples/farm.prj").read_bytes())
        (self.folder / "projects/broken.prj").write_text("no project")
        (self.folder / "size-part.sh").write_text(script + "\n")
        self.assertIn("--lines=500", make)
        self.assertEqual(self.run_shell(make.replace("--lines=500", "--lines=3")).strip(), "4")
        self.run_shell(start)
        self.assertEqual(self.run_shell(collect).strip(), "1")
        results = [json.loads(line) for line in (self.folder / "results.jsonl").read_text().splitlines()]
        self.assertEqual([r["File"] for r in results], (self.folder / "all.txt").read_text().splitlines())
        self.assertEqual([r["File"] for r in results if "Error" in r], ["projects/broken.prj"])
        first = (self.folder / "part.0002.jsonl").read_bytes()
        self.run_shell("sh size-part.sh 2 1")
        self.assertEqual((self.folder / "part.0002.jsonl").read_bytes(), first)

    def test_a_task_that_cannot_run_leaves_no_result(self):
        make, script, _, _ = self.batch_blocks()
        (self.folder / "size-part.sh").write_text(script + "\n")
        self.run_shell(make)
        (self.folder / "bin/genvara-cli").unlink()
        status = self.run_shell("sh size-part.sh 1 || echo status $?")
        self.assertRegex(status, r"status 12[67]")
        self.assertFalse((self.folder / "part.0001.jsonl").exists())

    def test_the_options_and_statuses_are_those_of_the_program(self):
        page = self.pages["console.html"]
        help_text = self.run_shell("genvara-cli size --help")
        defaults = dict(re.findall(r"--([a-z-]+) N .*\[(\d+)\]$", help_text, re.MULTILINE))
        self.assertEqual(len(defaults), 4)
        rows = {row[0]: row for table in page.root.iter("table") for row in page.rows(table)}
        for option, default in defaults.items():
            self.assertEqual(rows[f"--{option} N"][1], default)
        listed = {row[2:].split()[0] for row in rows if row.startswith("--")}
        offered = set(re.findall(r"^ +(?:-h,)?--([a-z-]+)", help_text, re.MULTILINE)) - {"help"}
        self.assertEqual(listed, offered)

    def test_the_figures_of_why_this_set_are_those_of_the_program(self):
        self.run_page("why.html")
        told = {element.get("id"): float(element.text) for element in self.pages["why.html"].root.iter("span")}

        def answer(command):
            return [json.loads(line) for line in self.run_shell(command).splitlines()]

        advice = answer("genvara-cli advise --json projects/quarry.prj")[0]
        self.assertIsNone(advice["Now"])
        ratings = {}
        for one in advice["Advice"]:
            ratings.setdefault(one["Kind"], one["Set"]["NominalRating"])
        self.assertEqual(ratings,
                         {"starter": told["starter"], "order": told["order-kw"], "sets": told["sets"]})
        self.assertIn("by Wye-Delta", advice["Advice"][1]["Text"])
        best, = answer("genvara-cli order --json projects/quarry.prj")
        self.assertEqual((best["Proven"], best["Best"]["NominalRating"]), (True, told["order-kw"]))
        none, = answer('genvara-cli order --json projects/quarry.prj --before "Step[2].Load[1]<Step[3].Load[1]"')
        self.assertEqual((none["Proven"], none["Best"]), (True, None))
        cold, = answer("genvara-cli order --json projects/cold-store.prj")
        self.assertEqual([cold[key]["NominalRating"] for key in ("Now", "Best")], [told["cold-now"], told["cold-best"]])
        starts = [place for step in cold["Steps"] for place in step]
        compressor, fans, heaters = "Step[5].Load[1]", "Step[3].Load[1]", "Step[4].Load[1]"
        self.assertLess(starts.index(compressor), min(starts.index(fans), starts.index(heaters)))
        studio, = answer("genvara-cli advise --json projects/studio.prj")
        self.assertEqual(studio["Now"]["NominalRating"], told["studio-now"])
        pulses = [one["Set"]["NominalRating"] for one in studio["Advice"] if "12 pulse" in one["Text"]]
        self.assertEqual(pulses, [told["studio-pulse"]] * 2)
        limit = next(one for one in studio["Advice"] if one["Set"]["NominalRating"] == told["studio-pulse"]
                     and one["Kind"] == "limit")
        self.assertEqual(limit["Changes"][0]["To"], told["studio-limit"])
        stretches = answer(
            "genvara-cli sweep --json projects/hospital.prj --vary PowerSystem.Altitude=0:4500:100 --breaks")
        self.assertEqual([row["Set"]["NominalRating"] for row in stretches[:2]], [told["low"], told["high"]])
        self.assertEqual(int(stretches[0]["To"]), told["altitude"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
