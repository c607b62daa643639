"""The committed catalogue is sound, and comes from its worksheet; the checker finds what is broken."""

import csv
import filecmp
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import check_catalogue

ROOT = Path(__file__).resolve().parents[2]
CATALOG = ROOT / "data" / "catalog"
WORKSHEET = ROOT / "data" / "catalog-worksheet"

# A row of the middle of the table: a three-phase set with frequency dip data and several alternators.
SET = {"GensetModel": "MV200D", "VoltageLL": "480", "WindingConnection": "1"}

# What is broken, and a part of the fault that must be told: table, condition on the row, column, new text.
BROKEN = [
    ("Gensets", SET, "DerateCode", "77", "DerateCode 77 is not in Derate Codes"),
    ("Gensets", SET, "AltModel", "9999", "AltModel 9999 is not in Alternators"),
    ("Gensets", SET, "WindingConnection", "9", "WindingConnection 9 is not in Connections"),
    ("Gensets", SET, "VoltageLL", "460", "voltages at 60 Hz are"),
    ("Gensets", SET, "Rating80C", "190", "ratings do not rise"),
    ("Gensets", SET, "Rating150C", "201", "MV200D gives 201 kW"),
    ("Gensets", SET, "Rating125C", "195", "prime rating 195"),
    ("Gensets", SET, "LRkVA", "370", "LRkVA is 1.48 times"),
    ("Gensets", SET, "LRkVA", "880", "LRkVA is 3.52 times"),
    ("Gensets", SET, "LRkVA", "740", "LRkVA does not grow"),
    ("Gensets", SET, "StartingPower", "199", "StartingPower is 0.99"),
    ("Gensets", SET, "StartingPower", "262", "StartingPower is 1.31"),
    ("Gensets", SET, "BaseFreqDipKW", "190", "takes 0.95 of its standby rating"),
    ("Gensets", SET, "BaseFreqDipKW", "", "frequency dip data in part"),
    ("Gensets", SET, "BaseFreqDip", "31", "BaseFreqDip is 31"),
    ("Gensets", SET, "ExpC", "0.4", "ExpC is 0.4"),
    ("Gensets", SET, "Fuel", "2", "several values of Fuel"),
    ("Gensets", SET, "LRkVA", "many", "LRkVA is no number"),
    ("Gensets", SET, "GensetModel", "", "GensetModel is empty"),
    ("Gensets", {"GensetModel": "MV5P"}, "Fuel", "1", "fuel 1 reaches from 5"),
    # 154 kW / 0.8 / 240 V = 802 A; 3,960 kW / 0.8 / 480 V / root of 3 = 5954 A, 4,000 kW 6014 A
    ("Gensets", {"GensetModel": "MV150D", "VoltageLL": "240", "WindingConnection": "4"}, "Rating150C", "154", "802 A on terminals for 800"),
    ("Gensets", {"GensetModel": "MV3000D", "VoltageLL": "480"}, "Rating150C", "4000", "6014 A on terminals for 6000"),
    ("Gensets", {"GensetModel": "MV200L", "Frequency": "60"}, "Rating150C", "250", "fuel 3 reaches from 10 to 250 kW"),
    ("Gensets", {"GensetModel": "MV20P", "Frequency": "60"}, "Rating150C", "30", "fuel 4 reaches from 5 to 30 kW"),
    ("Alternators", {"ModelNum": "TN315A-12A"}, "SubtransReact", "0.21", "SubtransReact is 0.21"),
    ("Alternators", {"ModelNum": "TN315A-12A"}, "BaseVolts", "0", "a base is not above 0"),
    ("Alternators", {"ModelNum": "TN280D-12A"}, "BasekW", "150", "exceeds the alternator's base"),
    ("Alternators", {"ID": "10"}, "ID", "11", "ID 11 stands twice"),
    ("Derate Codes", {"ID": "3"}, "AltDerateSlope", "10", "is left at 4572 m"),
    ("Derate Codes", {"ID": "3"}, "TempDerateSlope", "0.25", "is left at 66 C"),
    ("Derate Codes", {"ID": "2"}, "AltDerateBase", "200", "does not help in thin air"),
    ("Connections", {"ID": "6"}, "Phases", "3", "phases by code"),
    ("Connections", {"ID": "2"}, "Connection Type", "3 Phase, Wye", "caption of 2"),
    ("Motor Code Letters", {"CodeLetter": "F"}, "LRkVAPerHP", "5.59", "F is not the middle"),
    ("Motor Code Letters", {"CodeLetter": "G"}, "LRkVAPerHP", "6", "G differs from the program's own"),
    ("Motor Code Letters", {"CodeLetter": "H"}, "CodeLetter", "I", "letters are not A to V"),
    ("Motor Starting Multiplier", {"Multiplier": "0.64"}, "Multiplier", "0.8", "0.8 is not the square of 0.8"),
    ("Motor Power Conversions", {"HP": "50"}, "RunningKW", "32", "RunningKW does not rise"),
    ("Motor Power Conversions", {"HP": "50"}, "RunningKVA", "53", "of the full-load current table"),
    ("Motor Power Conversions", {"HP": "50"}, "SPF", "0.95", "SPF does not fall"),
    ("Motor Power Conversions", {"HP": "1000"}, "RunningKVA", "886", "does not end at 1000 hp"),
    ("Motor Power Conversions", {"HP": "900"}, "RunningKVA", "809", "less kVA than kW"),
    # 887 + (887 - 798) / (798 - 718) x (798000 - 798) = 887774, and with 798.1 886777
    ("Motor Power Conversions", {"HP": "900"}, "RunningKVA", "798", "would reopen with 887774 VA"),
    ("Motor Power Conversions", {"HP": "900"}, "RunningKVA", "797", "the power factor falls with the size"),
]


def rewrite(path, change):
    """Hands the rows of a CSV file to change, which alters the list in place, and writes them back."""
    with open(path, newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    columns = list(rows[0])
    change(rows)
    with open(path, "w", newline="", encoding="utf-8") as file:
        table = csv.DictWriter(file, columns, lineterminator="\n")
        table.writeheader()
        table.writerows(rows)


class CatalogueTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name) / "catalog"

    def test_hangs_together(self):
        self.assertEqual(check_catalogue.faults(CATALOG), [])

    def test_is_what_the_worksheet_gives(self):
        script = ROOT / "tools" / "make_catalogue.py"
        subprocess.run([sys.executable, script, WORKSHEET, self.folder], check=True)
        names = sorted(path.name for path in CATALOG.iterdir())
        self.assertEqual(names, sorted(path.name for path in self.folder.iterdir()))
        self.assertEqual(filecmp.cmpfiles(CATALOG, self.folder, names, shallow=False), (names, [], []))

    def test_a_broken_field_is_found(self):
        for table, condition, column, text, expected in BROKEN:
            with self.subTest(table=table, column=column, text=text):
                found = self.faults_after(table, lambda rows: self.set_field(rows, condition, column, text))
                self.assertIn(expected, "\n".join(found))

    def test_missing_rows_are_found(self):
        for table, keep, expected in (
                ("Gensets", lambda row: row["Frequency"] == "60", "built for one frequency only"),
                ("Gensets", lambda row: row["VoltageLL"] == "480", "voltages at 60 Hz are"),
                ("Gensets", lambda row: row["Fuel"] == "1", "36 models"),
                ("Gensets", lambda row: row["BaseFreqDipKW"] != "", "0 models have no frequency dip data"),
                ("Gensets", lambda row: row["AltModel"] != "77", "is used by no set"),
                ("Motor Power Conversions", lambda row: float(row["HP"]) >= 1, "begin below one horsepower"),
                ("Motor Starting Multiplier", lambda row: row["Multiplier"] != "1", "5 rows"),
                ("Properties", lambda row: False, "has no row")):
            with self.subTest(expected=expected):
                found = self.faults_after(table, lambda rows: rows.__setitem__(slice(None), filter(keep, rows)))
                self.assertIn(expected, "\n".join(found))

    def test_repeated_rows_are_found(self):
        found = self.faults_after("Gensets", lambda rows: rows.append(rows[0]))
        self.assertIn("the same set stands twice", "\n".join(found))

    def test_an_unknown_column_is_found(self):
        shutil.copytree(CATALOG, self.folder)
        path = self.folder / "Connections.csv"
        path.write_text(path.read_text("utf-8").replace("Connection Type", "ConnectionType"), "utf-8")
        self.assertIn("columns are", "\n".join(check_catalogue.faults(self.folder)))

    def faults_after(self, table, change):
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(CATALOG, self.folder)
        rewrite(self.folder / f"{table}.csv", change)
        return check_catalogue.faults(self.folder)

    def set_field(self, rows, condition, column, text):
        row = next(row for row in rows if all(row[key] == value for key, value in condition.items()))
        self.assertNotEqual(row[column], text)
        row[column] = text


if __name__ == "__main__":
    unittest.main()
