#!/usr/bin/env python3
"""Checks that the figures of a catalogue folder hang together.

    check_catalogue.py CATALOG_DIR

Prints every fault, one a line, and ends with status 1 if there is any. `genvara-cli catalog check` asks
whether the program can read a catalogue; this asks whether an engineer would believe ours. The bounds are
this product line's and need not hold for another maker's.
"""

import csv
import re
import sys
from collections import defaultdict
from pathlib import Path

COLUMNS = {
    "Gensets": ["Frequency", "WindingConnection", "VoltageLL", "Fuel", "DerateCode", "AltModel", "GensetModel",
                "EngineModel", "Rating80C", "Rating105C", "Rating125C", "Rating130C", "Rating150C", "LRkVA",
                "StartingPower", "BaseFreqDipKW", "BaseFreqDip", "ExpC"],
    "Derate Codes": ["ID", "AltDerateBase", "AltDerateSlope", "TempDerateBase", "TempDerateSlope"],
    "Alternators": ["ID", "ModelNum", "BasekW", "BaseVolts", "SubtransReact"],
    "Properties": ["ID", "Version", "Date", "Initials"],
    "Connections": ["ID", "Connection Type", "Phases"],
    "Motor Code Letters": ["CodeLetter", "LRkVAPerHP"],
    "Motor Starting Multiplier": ["Multiplier"],
    "Motor Power Conversions": ["HP", "RunningKW", "RunningKVA", "SPF"],
}
TEXT_COLUMNS = {"GensetModel", "EngineModel", "ModelNum", "Version", "Date", "Initials", "Connection Type", "CodeLetter"}
FREQUENCY_DIP = ["BaseFreqDipKW", "BaseFreqDip", "ExpC"]
RATINGS = ["Rating80C", "Rating105C", "Rating125C", "Rating130C", "Rating150C"]

VOLTAGES = {60: {208, 220, 240, 380, 416, 440, 480, 600}, 50: {190, 220, 380, 400, 415, 440}}

# Smallest and largest standby rating of a fuel at 60 Hz [kW].
# A larger set on L.P. empties a tank faster than it boils, and nobody stores gasoline for a larger one.
FUEL_RANGE = {1: (10, 3000), 2: (10, 1000), 3: (10, 200), 4: (5, 20)}

# Most that the terminals of a set carry [A], by the phases of its connection.
MOST_AMPERES = {1: 800, 3: 6000}

# Connections whose dedicated alternators are rated at unity power factor; all others at 0.8.
UNITY_POWER_FACTOR = {3, 6}

# Fuel and aspiration of a derate code, and the share of the standby rating that such an engine takes in one
# step: nearly all of it without a turbocharger, which has no pressure to build up; a half to three quarters
# with one on diesel; less on gas, whose mixture takes longer through the intake.
ONE_STEP = {
    1: ("diesel NA", 0.85, 1.00),
    2: ("diesel turbo", 0.50, 0.75),
    3: ("diesel turbo", 0.50, 0.75),
    4: ("diesel turbo", 0.50, 0.75),
    5: ("gas NA", 0.65, 0.85),
    6: ("gas turbo", 0.25, 0.50),
    7: ("gas NA", 0.65, 0.85),
    8: ("gas turbo", 0.25, 0.50),
    9: ("gasoline NA", 0.70, 0.95),
}

# NEMA code letters: least locked-rotor kVA per horsepower of each band (NEC table 430.7(B)).
CODE_BANDS = [("A", 0), ("B", 3.15), ("C", 3.55), ("D", 4), ("E", 4.5), ("F", 5), ("G", 5.6), ("H", 6.3), ("J", 7.1),
              ("K", 8), ("L", 9), ("M", 10), ("N", 11.2), ("P", 12.5), ("R", 14), ("S", 16), ("T", 18), ("U", 20), ("V", 22.4)]

# Locked-rotor kVA per horsepower that the program reckons with for its default letters.
DEFAULT_LETTERS = {"F": 5.3, "G": 5.95, "H": 6.7, "J": 7.55, "K": 8.5, "L": 9.5, "M": 10.6}

# Reduction of the motor's voltage by the starting methods 1 to 5; line kVA and torque fall with its square.
STARTER_VOLTAGE = [1.0, 0.8, 0.65, 0.84, 0.577]

# Full-load current of three-phase motors at 460 V [A] (NEC table 430.250). The table is on the safe side, so
# real motors lie somewhat below.
FULL_LOAD_AMPS = {0.5: 1.1, 0.75: 1.6, 1: 2.1, 1.5: 3.0, 2: 3.4, 3: 4.8, 5: 7.6, 7.5: 11, 10: 14, 15: 21, 20: 27, 25: 34,
                  30: 40, 40: 52, 50: 65, 60: 77, 75: 96, 100: 124, 125: 156, 150: 180, 200: 240, 250: 302, 300: 361,
                  350: 414, 400: 477, 450: 515, 500: 590}

# What a motor may draw at most, running.
MOST_MOTOR_WATTS, MOST_MOTOR_VA = 798000, 887000

HIGHEST_SITE = 4572.0  # metres, the highest altitude that a project can have
HOTTEST_SITE = 66.0  # degrees Celsius, the highest ambient temperature that a project can have


class Catalogue:
    """The eight tables with their numbers read; an unreadable field becomes a fault and reads as 0."""

    def __init__(self, folder):
        self.faults = []
        self.tables = {name: self._read(folder, name, columns) for name, columns in COLUMNS.items()}

    def fault(self, table, line, text):
        self.faults.append(f"{table}.csv:{line}: {text}" if line else f"{table}.csv: {text}")

    def _read(self, folder, name, columns):
        with open(Path(folder) / f"{name}.csv", newline="", encoding="utf-8") as file:
            reader = csv.DictReader(file)
            if reader.fieldnames != columns:
                self.fault(name, 1, f"columns are {reader.fieldnames}")
                return []
            rows = [self._row(name, reader.line_num, row) for row in reader]
        if not rows:
            self.fault(name, 0, "has no row")
        return rows

    def _row(self, name, line, row):
        result = {"line": line}
        for column, text in row.items():
            if column in TEXT_COLUMNS:
                result[column] = text
                if not text:
                    self.fault(name, line, f"{column} is empty")
            elif text == "" and column in FREQUENCY_DIP:
                result[column] = None
            else:
                try:
                    result[column] = float(text)
                except (TypeError, ValueError):
                    result[column] = 0.0
                    self.fault(name, line, f"{column} is no number: {text!r}")
        return result


def groups(rows, *columns):
    result = defaultdict(list)
    for row in rows:
        result[tuple(row[column] for column in columns)].append(row)
    return result


def check_keys(c):
    for table in ("Derate Codes", "Alternators", "Connections"):
        for (key,), rows in groups(c.tables[table], "ID").items():
            if len(rows) > 1:
                c.fault(table, rows[1]["line"], f"ID {key:g} stands twice")
    for column, table in (("DerateCode", "Derate Codes"), ("AltModel", "Alternators"), ("WindingConnection", "Connections")):
        known = {row["ID"] for row in c.tables[table]}
        used = {row[column] for row in c.tables["Gensets"]}
        for row in c.tables["Gensets"]:
            if row[column] not in known:
                c.fault("Gensets", row["line"], f"{column} {row[column]:g} is not in {table}")
        for row in c.tables[table]:
            if row["ID"] not in used:
                c.fault(table, row["line"], f"ID {row['ID']:g} is used by no set")
    for rows in groups(c.tables["Gensets"], "Frequency", "WindingConnection", "VoltageLL", "GensetModel", "AltModel").values():
        if len(rows) > 1:
            c.fault("Gensets", rows[1]["line"], "the same set stands twice")


def check_product_line(c):
    sets = c.tables["Gensets"]
    models = groups(sets, "GensetModel")
    if not 60 <= len(models) <= 90:
        c.fault("Gensets", 0, f"{len(models)} models")
    if len(sets) < 3000:
        c.fault("Gensets", 0, f"{len(sets)} rows")
    for (model,), rows in models.items():
        for column in ("Fuel", "EngineModel", "DerateCode"):
            if len({row[column] for row in rows}) > 1:
                c.fault("Gensets", rows[0]["line"], f"{model} has several values of {column}")
        if len({row["Frequency"] for row in rows}) < 2:
            c.fault("Gensets", rows[0]["line"], f"{model} is built for one frequency only")
    for (fuel,), rows in groups([row for row in sets if row["Frequency"] == 60], "Fuel").items():
        span = min(standby_of(rows).values()), max(standby_of(rows).values())
        if span != FUEL_RANGE.get(fuel):
            c.fault("Gensets", 0, f"fuel {fuel:g} reaches from {span[0]:g} to {span[1]:g} kW")
    for (frequency,), rows in groups(sets, "Frequency").items():
        if {row["VoltageLL"] for row in rows} != VOLTAGES.get(frequency):
            c.fault("Gensets", 0, f"voltages at {frequency:g} Hz are {sorted({row['VoltageLL'] for row in rows})}")
    for rows in groups(sets, "GensetModel", "Frequency", "WindingConnection", "VoltageLL").values():
        if len(rows) > 3:
            c.fault("Gensets", rows[0]["line"], f"{len(rows)} alternators for one set")


def standby_of(rows):
    """Engine standby rating of each model: what the largest alternator lets through."""
    return {model: max(row["Rating150C"] for row in same) for (model,), same in groups(rows, "GensetModel").items()}


def check_ratings(c):
    sets = c.tables["Gensets"]
    at_60 = standby_of([row for row in sets if row["Frequency"] == 60])
    at_50 = standby_of([row for row in sets if row["Frequency"] == 50])
    for model, rating in at_60.items():
        named = float(re.sub(r"[^0-9.]", "", model) or 0)
        if named != rating:
            c.fault("Gensets", 0, f"{model} gives {rating:g} kW")
        if not 0.75 * rating <= at_50.get(model, rating) < rating:
            c.fault("Gensets", 0, f"{model} gives {at_50.get(model, 0):g} kW at 50 Hz and {rating:g} kW at 60 Hz")
    bases = {row["ID"]: row["BasekW"] for row in c.tables["Alternators"]}
    for row in sets:
        values = [row[column] for column in RATINGS]
        if values != sorted(values) or values[0] <= 0:
            c.fault("Gensets", row["line"], f"ratings do not rise with the temperature: {values}")
        engine = (at_60 if row["Frequency"] == 60 else at_50).get(row["GensetModel"], 0)
        # An engine that runs for hours at a changing load gives less than in an outage.
        if row["Rating125C"] > 0.96 * engine:
            c.fault("Gensets", row["line"], f"prime rating {row['Rating125C']:g} of an engine of {engine:g} kW")
        phases = 3 if row["WindingConnection"] in (1, 2) else 1
        amperes = kva(row, "Rating150C") * 1000 / row["VoltageLL"] / (3**0.5 if phases == 3 else 1) if row["VoltageLL"] else 0
        if amperes > MOST_AMPERES[phases]:
            c.fault("Gensets", row["line"], f"{amperes:.0f} A on terminals for {MOST_AMPERES[phases]}")
        # Half a step of a rating's rounding is left to the comparison.
        if row["Rating125C"] > bases.get(row["AltModel"], 0) + 0.5:
            c.fault("Gensets", row["line"], "rating at 125 C exceeds the alternator's base")


def kva(row, column):
    return row[column] / (1.0 if row["WindingConnection"] in UNITY_POWER_FACTOR else 0.8)


def check_starting(c):
    sets = c.tables["Gensets"]
    for row in sets:
        for column in ("Rating130C", "Rating150C"):
            share = row["LRkVA"] / kva(row, column) if row[column] else 0
            if not 1.5 <= share <= 3.5:
                c.fault("Gensets", row["line"], f"LRkVA is {share:.2f} times the kVA of {column}")
        share = row["StartingPower"] / row["Rating150C"] if row["Rating150C"] else 0
        if not 1.0 <= share <= 1.3:
            c.fault("Gensets", row["line"], f"StartingPower is {share:.2f} times the standby rating")
    bases = {row["ID"]: row["BasekW"] for row in c.tables["Alternators"]}
    for rows in groups(sets, "GensetModel", "Frequency", "WindingConnection", "VoltageLL").values():
        ordered = sorted(rows, key=lambda row: bases.get(row["AltModel"], 0))
        for small, large in zip(ordered, ordered[1:]):
            if large["LRkVA"] <= small["LRkVA"]:
                c.fault("Gensets", large["line"], "LRkVA does not grow with the alternator")
            if any(large[column] < small[column] for column in RATINGS):
                c.fault("Gensets", large["line"], "a rating falls with the larger alternator")


def check_one_step(c):
    sets = c.tables["Gensets"]
    without = 0
    for (model,), rows in groups(sets, "GensetModel").items():
        if len({row[column] is None for row in rows for column in FREQUENCY_DIP}) > 1:
            c.fault("Gensets", rows[0]["line"], f"{model} has frequency dip data in part")
        without += rows[0]["ExpC"] is None
    if not 1 <= without <= 20:
        c.fault("Gensets", 0, f"{without} models have no frequency dip data")
    for row in sets:
        if any(row[column] is None for column in FREQUENCY_DIP):
            continue
        name, least, most = ONE_STEP.get(row["DerateCode"], ("unknown engine", 1, 0))
        share = row["BaseFreqDipKW"] / row["Rating150C"] if row["Rating150C"] else 0
        # The block is printed to 0.1 kW, half a percent of a 10 kW set.
        if not least - 0.006 <= share <= most + 0.006:
            c.fault("Gensets", row["line"], f"{name} takes {share:.2f} of its standby rating in one step")
        if not 5 <= row["BaseFreqDip"] <= 20:
            c.fault("Gensets", row["line"], f"BaseFreqDip is {row['BaseFreqDip']:g} %")
        if not 1.0 <= row["ExpC"] <= 1.6:
            c.fault("Gensets", row["line"], f"ExpC is {row['ExpC']:g}")


def check_alternators(c):
    for row in c.tables["Alternators"]:
        if not 0.08 <= row["SubtransReact"] <= 0.20:
            c.fault("Alternators", row["line"], f"SubtransReact is {row['SubtransReact']:g}")
        if row["BasekW"] <= 0 or row["BaseVolts"] <= 0:
            c.fault("Alternators", row["line"], "a base is not above 0")


def check_derating(c):
    rows = {row["ID"]: row for row in c.tables["Derate Codes"]}
    for row in rows.values():
        at_height = 1 - max(HIGHEST_SITE - row["AltDerateBase"], 0) / 100 * row["AltDerateSlope"] / 100
        in_heat = 1 - max(HOTTEST_SITE - row["TempDerateBase"], 0) / 10 * row["TempDerateSlope"] / 100
        # Air at 4,572 m has 0.57 of its density at sea level, at 66 C 0.87 of that at 25 C.
        if not 0.4 <= at_height <= 0.8:
            c.fault("Derate Codes", row["line"], f"{at_height:.2f} is left at {HIGHEST_SITE:g} m")
        if not 0.8 <= in_heat <= 0.97:
            c.fault("Derate Codes", row["line"], f"{in_heat:.2f} is left at {HOTTEST_SITE:g} C")
    for aspirated, charged in ((1, 2), (1, 3), (1, 4), (5, 6), (7, 8)):
        if aspirated in rows and charged in rows and rows[aspirated]["AltDerateBase"] >= rows[charged]["AltDerateBase"]:
            c.fault("Derate Codes", rows[charged]["line"], "a turbocharger does not help in thin air")


def check_connections(c):
    phases = {row["ID"]: row["Phases"] for row in c.tables["Connections"]}
    if phases != {1: 3, 2: 3, 3: 1, 4: 1, 5: 1, 6: 1}:
        c.fault("Connections", 0, f"phases by code are {phases}")
    captions = {row["ID"]: row["Connection Type"] for row in c.tables["Connections"]}
    for code, words in ((1, ("3 Phase", "Wye")), (2, ("3 Phase", "Delta", "120/240")), (3, ("1 Phase",)),
                        (4, ("1 Phase",)), (5, ("1 Phase",)), (6, ("1 Phase",))):
        if not all(word in captions.get(code, "") for word in words):
            c.fault("Connections", 0, f"caption of {code} is {captions.get(code)!r}")


def check_code_letters(c):
    rows = c.tables["Motor Code Letters"]
    if [row["CodeLetter"] for row in rows] != [letter for letter, _ in CODE_BANDS]:
        c.fault("Motor Code Letters", 0, "letters are not A to V in order")
        return
    for row, (letter, least), (_, most) in zip(rows, CODE_BANDS, CODE_BANDS[1:] + [("", CODE_BANDS[-1][1])]):
        if abs(row["LRkVAPerHP"] - (least + most) / 2) > 1e-9:
            c.fault("Motor Code Letters", row["line"], f"{letter} is not the middle of its band")
        if letter in DEFAULT_LETTERS and row["LRkVAPerHP"] != DEFAULT_LETTERS[letter]:
            c.fault("Motor Code Letters", row["line"], f"{letter} differs from the program's own figure")


def check_multipliers(c):
    rows = c.tables["Motor Starting Multiplier"]
    if len(rows) != 6:
        c.fault("Motor Starting Multiplier", 0, f"{len(rows)} rows")
    for row, voltage in zip(rows, STARTER_VOLTAGE):
        if abs(row["Multiplier"] - voltage**2) > 0.002:
            c.fault("Motor Starting Multiplier", row["line"], f"{row['Multiplier']:g} is not the square of {voltage:g}")
    for row in rows[5:]:
        if not 0 < row["Multiplier"] <= 1:
            c.fault("Motor Starting Multiplier", row["line"], "the solid-state row is not a share")


def check_motor_conversions(c):
    table = "Motor Power Conversions"
    rows = c.tables[table]
    if len(rows) < 20 or rows[0]["HP"] >= 1:
        c.fault(table, 0, "does not begin below one horsepower, or is too coarse")
        return
    if (rows[-1]["HP"], rows[-1]["RunningKW"], rows[-1]["RunningKVA"]) != (1000, 798, 887):
        c.fault(table, rows[-1]["line"], "does not end at 1000 hp, 798 kW and 887 kVA")
    for below, row in zip(rows, rows[1:]):
        for column in ("HP", "RunningKW", "RunningKVA"):
            if row[column] <= below[column]:
                c.fault(table, row["line"], f"{column} does not rise")
        if row["SPF"] >= below["SPF"]:
            c.fault(table, row["line"], "SPF does not fall")
        # Half of the last digit printed makes up to 0.0005.
        if row["RunningKW"] / row["RunningKVA"] < below["RunningKW"] / below["RunningKVA"] - 0.0005:
            c.fault(table, row["line"], "the power factor falls with the size")
    for row in rows:
        efficiency = 0.746 * row["HP"] / row["RunningKW"] if row["RunningKW"] else 0
        power_factor = row["RunningKW"] / row["RunningKVA"] if row["RunningKVA"] else 0
        if not 0.5 <= efficiency <= 0.96 or not 0.55 <= power_factor <= 0.92 or not 0.1 <= row["SPF"] <= 0.9:
            c.fault(table, row["line"], f"efficiency {efficiency:.2f}, power factor {power_factor:.2f}, SPF {row['SPF']:g}")
        amps = FULL_LOAD_AMPS.get(row["HP"])
        share = row["RunningKVA"] / (3**0.5 * 0.46 * amps) if amps else 0.9
        if not 0.78 <= share <= 1.0:
            c.fault(table, row["line"], f"kVA is {share:.2f} of the full-load current table")
    last, before = rows[-1], rows[-2]
    if last["RunningKVA"] - before["RunningKVA"] <= last["RunningKW"] - before["RunningKW"]:
        c.fault(table, last["line"], "beyond its end the table would give less kVA than kW")
    # A project file's motor by running kW is looked up by its watts, far beyond the end.
    slope = (last["RunningKVA"] - before["RunningKVA"]) / (last["RunningKW"] - before["RunningKW"])
    reopened = last["RunningKVA"] + slope * (MOST_MOTOR_WATTS - last["RunningKW"])
    if reopened > MOST_MOTOR_VA:
        c.fault(table, last["line"], f"a motor of {MOST_MOTOR_WATTS:g} W would reopen with {reopened:.0f} VA")


CHECKS = [check_keys, check_product_line, check_ratings, check_starting, check_one_step, check_alternators, check_derating,
          check_connections, check_code_letters, check_multipliers, check_motor_conversions]


def faults(folder):
    catalogue = Catalogue(folder)
    # Relations between tables that could not be read would only repeat what is already said.
    if all(catalogue.tables.values()):
        for check in CHECKS:
            check(catalogue)
    return catalogue.faults


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = faults(sys.argv[1])
    print("\n".join(found) if found else "The catalogue hangs together.")
    sys.exit(1 if found else 0)
