"""What the page on loads says, tried on the program: ranges, tables and formulas.

    test_loads.py GENVARA-CLI SOURCE-FOLDER
"""
import csv
import json
import math
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import hand_formulas as hand
from manual_pages import read_pages

PROGRAM = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
SOURCE = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

HEAD = ('8,0,0,1\r\n#2026-01-12 09:00:00#,"","",#2026-01-12 09:00:00#,"Loads",""\r\n'
        '0,25,1,60,1,1\r\n20,#FALSE#,15,#FALSE#\r\n20,3,3,480\r\n1\r\n"All",20\r\n')

MOTOR = '5,"L","",1,{phases}\r\n{method},"F",1,#FALSE#,#FALSE#\r\n{size}\r\n{start},0.4,300'

# A load with one value left open, in units of the file; how many of them make the page's unit.
RANGES = {
    "quantity": ('4,"L","",{0},0\r\n1000,1', 1),
    "motor.hp": (MOTOR.format(phases=0, method=0, size="{0}", start=1000), 1),
    "motor.kW": (MOTOR.format(phases=0, method=1, size="{0}", start=1000), 1000),
    "motor.startKVA": (MOTOR.format(phases=0, method=0, size="10", start="{0}"), 1000),
    "air.btu": ('0,"L","",1,0\r\n0,{0}', 1),
    "air.tons": ('0,"L","",1,0\r\n1,{0}', 1),
    "air.hp": ('0,"L","",1,0\r\n2,{0}', 1),
    "vfd.hp": ('8,"L","",1,0\r\n1,{0},90,125,#FALSE#', 1),
    "vfd.efficiency": ('8,"L","",1,0\r\n1,10,{0},125,#FALSE#', 1),
    "vfd.limit": ('8,"L","",1,0\r\n1,10,90,{0},#FALSE#', 1),
    "ups.loading": ('7,"L","",1,0\r\n1,1,10000,{0},10,#FALSE#', 1),
    "ups.charging": ('7,"L","",1,0\r\n1,1,10000,100,{0},#FALSE#', 1),
    "lighting.kW": ('2,"L","",1,0\r\n1,2,{0},1,{0},1', 1000),
    "lighting.pF": ('2,"L","",1,0\r\n1,2,1000,{0},1000,{0}', 1),
    "misc.kW": ('4,"L","",1,0\r\n{0},1', 1000),
    "misc.pF": ('4,"L","",1,0\r\n1000,{0}', 1),
}
WHOLE = ("quantity", "vfd.efficiency", "vfd.limit", "ups.loading", "ups.charging")


def table(name):
    with open(SOURCE / "data/catalog" / f"{name}.csv", encoding="utf-8", newline="") as file:
        return [{column: float(value) for column, value in row.items() if re.fullmatch(r"-?[\d.]+", value)}
                for row in csv.DictReader(file)]


class Loads(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = read_pages(SOURCE)["loads.html"]
        cls.temporary = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.temporary.name)
        cls.database = cls.folder / "catalogue.db"
        assert cls.run_program("catalog", "build", SOURCE / "data/catalog", "-o", cls.database).returncode == 0
        cls.motors = table("Motor Power Conversions")

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    @classmethod
    def run_program(cls, *arguments):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=60)

    def project(self, load):
        file = self.folder / "load.prj"
        file.write_bytes((HEAD + f"1\r\n1,{load}\r\n").encode("cp1252"))
        return file

    def is_accepted(self, load):
        done = self.run_program("check", "--db", self.database, self.project(load))
        self.assertIn(done.returncode, (0, 1), done.stderr)
        return done.returncode == 0

    def figures(self, load):
        """kW and kVA running and starting of a load."""
        done = self.run_program("size", "--json", "--db", self.database, self.project(load))
        self.assertEqual(done.returncode, 0, done.stderr)
        found = json.loads(done.stdout)["LoadProfile"][0]["Loads"][0]
        return [found[key] / 1000 for key in ("RunningRealPower", "RunningAppPower", "StartingRealPower",
                                              "StartingAppPower")]

    def assertFigures(self, load, expected):
        for found, by_hand in zip(self.figures(load), expected, strict=True):
            self.assertAlmostEqual(found, by_hand, delta=1e-9 * max(1.0, by_hand), msg=load)

    def rows(self, name):
        return self.page.rows(self.page.of_class("table", name)[0])

    def motor(self, of, at, to):
        return hand.on_a_line(at, [(row[of], row[to]) for row in self.motors])

    def test_every_range_ends_where_the_page_says(self):
        marked = {span.get("data-range"): self.page.text(span)
                  for span in self.page.root.iter("span") if span.get("data-range")}
        self.assertEqual(set(marked), set(RANGES))
        for name, text in marked.items():
            above, least, most = re.match(r"(above )?([\d.]+) to ([\d.]+)", text).groups()
            load, factor = RANGES[name]
            step = 1 if name in WHOLE else 1e-4 * float(most)
            low, high = float(least) * factor, float(most) * factor

            def accepts(value):
                return self.is_accepted(load.format(f"{value:.10g}"))
            self.assertTrue(accepts(high), f"{name}: {text}")
            self.assertFalse(accepts(high + step * factor), f"{name}: {text}")
            self.assertEqual(accepts(low), not above, f"{name}: {text}")
            self.assertFalse(accepts(low - step * factor), f"{name}: {text}")
            self.assertTrue(accepts(low + step * factor), f"{name}: {text}")

    def test_the_starters_are_those_of_the_catalogue(self):
        multipliers = [row["Multiplier"] for row in table("Motor Starting Multiplier")][:5]
        rows = self.rows("starters")[1:]
        self.assertEqual(len(rows), 6)
        self.assertEqual([float(row[1]) for row in rows[:5]], multipliers)
        for row in rows[1:5]:
            voltage = float(re.match(r"[\d.]+", row[2]).group())
            self.assertAlmostEqual(voltage ** 2, float(row[1]), places=4)

    def test_motors_by_kilowatts_lose_as_much_on_reopening_as_the_page_says(self):
        text = self.page.text(self.page.of_class("span", "reopened")[0])
        stated = re.findall(r"(\d+) % (?:less )?at (\d+) kW", text)
        self.assertEqual(len(stated), 3)
        for percent, kw in stated:
            reopened = self.figures(MOTOR.format(phases=0, method=1, size=f"{kw}000", start=1000))[1]
            entered = self.motor("RunningKW", float(kw), "RunningKVA")
            self.assertEqual(round(100 * (1 - reopened / entered)), int(percent), kw)

    def test_air_conditioners_start_by_the_bands_of_the_page(self):
        bands = list(zip(*[map(float, row[1:]) for row in self.rows("bands")]))
        self.assertEqual(len(bands), 7)
        for index, (least, kva_per_hp) in enumerate(bands):
            hp = least or 0.5
            kw = self.motor("HP", hp, "RunningKW")
            start = hp * kva_per_hp
            expected = [kw, self.motor("RunningKW", kw, "RunningKVA"), start * self.motor("HP", hp, "SPF"), start]
            self.assertFigures(f'0,"L","",1,0\r\n2,{hp}', expected)
            self.assertFigures(f'0,"L","",1,0\r\n1,{hp / 2}', expected)
            self.assertFigures(f'0,"L","",1,0\r\n0,{hp * 6250}', expected)
            if index:
                self.assertAlmostEqual(self.figures(f'0,"L","",1,0\r\n2,{bands[index - 1][0] - 0.01}')[3],
                                       (bands[index - 1][0] - 0.01) * kva_per_hp)

    def test_chargers_draw_what_the_page_says(self):
        rows = {row[0]: row[1:] for row in self.rows("chargers")[1:]}
        for name, kind, phases in (("Residential", 0, 1), ("Industrial, three-phase", 1, 0), ("Telecom", 2, 0)):
            efficiency, power_factor = map(float, rows[name])
            kva = 48 * 1.1 * 100 / efficiency / 1000
            self.assertFigures(f'1,"L","",1,{phases}\r\n48,100,0,{kind}', [kva * power_factor, kva] * 2)
        small, power_factor = rows["Industrial, single-phase"]
        low, start, high, end = map(float, re.findall(r"[\d.]+", small)[:4])
        for watts, efficiency in ((0.99 * start, low), ((start + end) / 2, (low + high) / 2), (1.01 * end, high)):
            kva = watts * 1.1 / efficiency / 1000
            found = self.figures(f'1,"L","",1,2\r\n12,{watts / 12},0,1')
            # The rising line meets its ends to six digits.
            self.assertAlmostEqual(found[1], kva, delta=1e-5 * kva)
            self.assertAlmostEqual(found[0], found[1] * float(power_factor), places=9)

    def test_office_machines_draw_what_the_page_says(self):
        watts = [float(re.match(r"\d+", cell).group()) for cell in self.rows("office")[1][:4]]
        power_factor = float(self.rows("office")[1][4])
        # the file has computers, printers, faxes, copiers: the page's order
        for index, each in enumerate(watts):
            counts = ["7" if place == index else "0" for place in range(4)]
            kw = 7 * each / 1000
            self.assertFigures(f'6,"L","",1,0\r\n{",".join(counts)}', [kw, kw / power_factor] * 2)

    def test_ups_units_follow_their_formulas(self):
        for phases, efficiency, power_factor in ((0, 0.95, 0.95), (1, 0.9, 0.85)):
            kva = 40 * 0.75 / efficiency * 1.15
            kind = 1 if phases == 0 else 5
            self.assertFigures(f'7,"L","",1,{phases}\r\n{kind},1,40000,75,15,#FALSE#', [kva * power_factor, kva] * 2)
        for family in (0, 2):
            kva = 40 / 0.9 * 1.1
            self.assertFigures(f'7,"L","",1,0\r\n1,{family},40000,75,15,#FALSE#', [kva * 0.95, kva] * 2)

    def test_drives_follow_their_formulas(self):
        kw = self.motor("HP", 33, "RunningKW") / 0.92
        self.assertFigures('8,"L","",1,0\r\n1,33,92,130,#FALSE#', [kw, kw / 0.9, 1.3 * kw, 1.3 * kw / 0.9])

    def test_medical_equipment_starts_with_its_peak(self):
        self.assertFigures('3,"L","",1,0\r\n50000,300000,0.8,0.9\r\n6,1', [40, 50, 270, 300])

    def test_motors_sizes_follow_from_the_table(self):
        amperes = 60
        kva = amperes * 480 * math.sqrt(3) / 1000
        load = MOTOR.format(phases=0, method=2, size=f"{amperes},300", start=150000)
        self.assertFigures(load, [self.motor("RunningKVA", kva, "RunningKW"), kva, 60, 150])
        load = MOTOR.format(phases=1, method=2, size=f"{amperes},300", start=150000)
        kva = amperes * 480 / 1000
        self.assertFigures(load, [self.motor("RunningKVA", kva, "RunningKW"), kva, 60, 150])

    def test_a_motor_by_kilowatts_from_a_file_counts_a_few_percent_less_apparent_power(self):
        load = MOTOR.format(phases=0, method=1, size="40000", start=150000)
        kw, kva, _, _ = self.figures(load)
        self.assertEqual(kw, 40)
        self.assertTrue(0.9 < kva / self.motor("RunningKW", 40, "RunningKVA") < 0.99, kva)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
