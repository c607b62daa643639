#!/usr/bin/env python3
"""Derives the eight tables of the genset catalogue from the worksheet of engineering assumptions.

    make_catalogue.py WORKSHEET_DIR CATALOG_DIR

The worksheet holds what an engineer decides (engines, alternator frames, windings, voltages); this
script holds the relations between them, so that no figure of the catalogue stands alone. The same
worksheet always gives the same bytes. docs/catalogue.md tells the reasoning.
"""

import csv
import math
import sys
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

# Share of the engine's shaft power that leaves the alternator's terminals; a middle value for sets of
# 10 to 3,000 kW (0.85 to 0.96), used for the mean effective pressure only.
ALTERNATOR_EFFICIENCY = 0.92

# A voltage dip of 35 % behind the transient reactance x: 0.35 = s*x / (1 + s*x), hence s*x = 0.35/0.65.
START_KVA_TIMES_REACTANCE = 0.35 / 0.65

# Temperature rise at which a frame's rated kVA holds [K]. Copper losses grow with the square of the
# current, so that the permitted load grows with the root of the permitted rise.
BASE_RISE = 125.0

# Column of Gensets, its temperature rise [K] and the engine's duty.
RATINGS = (
    ("Rating80C", 80.0, "continuous"),
    ("Rating105C", 105.0, "prime"),
    ("Rating125C", 125.0, "prime"),
    ("Rating130C", 130.0, "standby"),
    ("Rating150C", 150.0, "standby"),
)

# The starting power of a row never exceeds this share of its standby rating: a reconnected
# single-phase alternator cannot carry all that its engine could give.
MOST_STARTING_SHARE = 1.25

KW_PER_HP = 0.746

GENSET_COLUMNS = (
    "Frequency", "WindingConnection", "VoltageLL", "Fuel", "DerateCode", "AltModel", "GensetModel",
    "EngineModel", "Rating80C", "Rating105C", "Rating125C", "Rating130C", "Rating150C", "LRkVA",
    "StartingPower", "BaseFreqDipKW", "BaseFreqDip", "ExpC",
)


def rounded(value, step):
    """The value to the nearest multiple of step, halves away from zero, as plain decimal text."""
    step = Decimal(step)
    count = (Decimal(repr(value)) / step).quantize(Decimal(1), rounding=ROUND_HALF_UP)
    return plain(count * step)


def plain(number):
    """Decimal text without an exponent and without trailing zeros."""
    text = format(Decimal(number), "f")
    return text.rstrip("0").rstrip(".") if "." in text else text


def rating_text(kilowatts):
    """A rating as a data sheet prints it: the finer, the smaller the set."""
    return rounded(kilowatts, "0.1" if kilowatts < 20 else "0.5" if kilowatts < 100 else "1")


def read(folder, name):
    with open(folder / name, newline="", encoding="utf-8") as file:
        return list(csv.DictReader(file))


def write(folder, name, columns, rows):
    with open(folder / name, "w", newline="", encoding="utf-8") as file:
        table = csv.writer(file, lineterminator="\n")
        table.writerow(columns)
        table.writerows(rows)


class Engine:
    """One model's engine at one frequency."""

    def __init__(self, model, engine_class, frequency):
        self.standby = float(model[f"StandbyKW{frequency}"])
        self.duty = {
            "standby": self.standby,
            "prime": self.standby * float(engine_class["PrimeShare"]),
            "continuous": self.standby * float(engine_class["ContinuousShare"]),
        }
        self.starting = self.standby * float(engine_class["StartingFactor"])
        speed = 120 * frequency / int(model["Poles"])
        # Four-stroke: 1,200 joins kW, litres, revolutions a minute and bar.
        pressure = 1200 * self.standby / ALTERNATOR_EFFICIENCY / (float(model["Litres"]) * speed)
        self.one_step_share = self._one_step_share(engine_class, pressure)
        self.dip = float(engine_class["DipAtZeroBar"]) + float(engine_class["DipPerBar"]) * pressure
        self.exponent = float(engine_class["ExpC"])

    @staticmethod
    def _one_step_share(engine_class, pressure):
        """The higher the pressure, the more of it the turbocharger must build up after a step."""
        share = float(engine_class["OneStepAtZeroBar"])
        share -= float(engine_class["OneStepLossPerBar"]) * pressure
        return min(max(share, float(engine_class["OneStepLeast"])), float(engine_class["OneStepMost"]))


class Worksheet:
    """The tables of assumptions, by their keys."""

    def __init__(self, folder):
        self.folder = folder
        self.models = read(folder, "Models.csv")
        self.classes = {row["Class"]: row for row in read(folder, "Classes.csv")}
        self.frames = {row["Frame"]: row for row in read(folder, "Alternators.csv")}
        self.windings = {row["Winding"]: row for row in read(folder, "Windings.csv")}
        self.voltages = read(folder, "Voltages.csv")

    def frames_of(self, model, winding):
        column = "SinglePhaseAlternators" if winding["Phases"] == "1" else "Alternators"
        return [self.frames[name] for name in model[column].split()]

    def alternators(self):
        """Every frame in every winding that fits it, numbered in worksheet order from 1."""
        result = {}
        for frame in self.frames.values():
            for winding in self.windings.values():
                if winding["Phases"] == frame["Phases"]:
                    result[frame["Frame"], winding["Winding"]] = len(result) + 1
        return result


def genset_row(model, engine_class, engine, frame, winding, voltage, alternator_id):
    base_kva = float(frame["RatedKVA"]) * float(winding["KVAShare"])
    alternator_kw = base_kva * float(voltage["KVAFactor"]) * float(winding["PowerFactor"])
    row = {
        "Frequency": voltage["Frequency"],
        "WindingConnection": voltage["Connection"],
        "VoltageLL": voltage["VoltageLL"],
        "Fuel": engine_class["Fuel"],
        "DerateCode": engine_class["DerateCode"],
        "AltModel": alternator_id,
        "GensetModel": model["Model"],
        "EngineModel": model["Engine"],
    }
    for column, rise, duty in RATINGS:
        row[column] = rating_text(min(engine.duty[duty], alternator_kw * math.sqrt(rise / BASE_RISE)))
    standby = float(row["Rating150C"])
    start_kva = base_kva * START_KVA_TIMES_REACTANCE / float(frame["TransientReactance"])
    row["LRkVA"] = rounded(start_kva * float(voltage["StartFactor"]), "1" if start_kva < 1000 else "5")
    row["StartingPower"] = rating_text(min(engine.starting, MOST_STARTING_SHARE * standby))
    row.update(frequency_dip(model, engine, standby))
    return [row[column] for column in GENSET_COLUMNS]


def frequency_dip(model, engine, standby):
    """The one-step block and the dip at it; both empty for a model without such data.

    A row that its alternator holds below the engine's rating takes a smaller block, and the dip at it is
    read off the same curve of the engine.
    """
    if model["FreqDipData"] != "yes":
        return {"BaseFreqDipKW": "", "BaseFreqDip": "", "ExpC": ""}
    dip = engine.dip * (standby / engine.standby) ** engine.exponent
    return {
        "BaseFreqDipKW": rounded(standby * engine.one_step_share, "0.1" if standby < 100 else "1"),
        "BaseFreqDip": rounded(dip, "0.1"),
        "ExpC": plain(str(engine.exponent)),
    }


def gensets(worksheet):
    """All rows of Gensets, in the order of the voltage lists and, within one, from the smallest set up."""
    ids = worksheet.alternators()
    rows = []
    for model in worksheet.models:
        engine_class = worksheet.classes[model["Class"]]
        size = float(model["StandbyKW60"])
        for voltage in worksheet.voltages:
            if not float(voltage["LeastKW"]) <= size <= float(voltage["MostKW"]):
                continue
            engine = Engine(model, engine_class, int(voltage["Frequency"]))
            winding = worksheet.windings[voltage["Winding"]]
            for frame in worksheet.frames_of(model, winding):
                key = ids[frame["Frame"], winding["Winding"]]
                rows.append(genset_row(model, engine_class, engine, frame, winding, voltage, key))
    sizes = {model["Model"]: float(model["StandbyKW60"]) for model in worksheet.models}
    # VoltageLL, Frequency, WindingConnection, Fuel, size of the set, alternator.
    rows.sort(key=lambda row: (int(row[2]), -int(row[0]), int(row[1]), int(row[3]), sizes[row[6]], row[5]))
    return rows


def alternators(worksheet, used):
    rows = []
    for (frame_name, winding_name), key in worksheet.alternators().items():
        if key not in used:
            continue
        frame, winding = worksheet.frames[frame_name], worksheet.windings[winding_name]
        kilowatts = float(frame["RatedKVA"]) * float(winding["KVAShare"]) * float(winding["PowerFactor"])
        rows.append([key, f"{frame_name}-{winding['Suffix']}", rounded(kilowatts, "0.1"),
                     winding["BaseVolts"], frame["SubtransientReactance"]])
    return rows


def code_letters(worksheet):
    """Letter and middle of its band; the last letter's band is open, its lower end stands."""
    bands = read(worksheet.folder, "CodeLetters.csv")
    rows = []
    for band, following in zip(bands, bands[1:] + [None]):
        least = Decimal(band["LeastKVAPerHP"])
        most = Decimal(following["LeastKVAPerHP"]) if following else least
        rows.append([band["CodeLetter"], plain((least + most) / 2)])
    return rows


def motor_conversions(worksheet):
    rows = []
    for motor in read(worksheet.folder, "Motors.csv"):
        power = float(motor["HP"]) * KW_PER_HP / (float(motor["Efficiency"]) / 100)
        step = "0.001" if power < 10 else "0.01" if power < 100 else "0.1" if power < 700 else "1"
        kilowatts = rounded(power, step)
        rows.append([motor["HP"], kilowatts, rounded(float(kilowatts) / float(motor["PowerFactor"]), step),
                     plain(motor["StartingPowerFactor"])])
    return rows


def copied(worksheet, name, columns):
    return [[row[column] for column in columns] for row in read(worksheet.folder, name)]


def main(worksheet_folder, catalog_folder):
    worksheet = Worksheet(Path(worksheet_folder))
    target = Path(catalog_folder)
    target.mkdir(parents=True, exist_ok=True)
    sets = gensets(worksheet)
    write(target, "Gensets.csv", GENSET_COLUMNS, sets)
    write(target, "Alternators.csv", ("ID", "ModelNum", "BasekW", "BaseVolts", "SubtransReact"),
          alternators(worksheet, {row[5] for row in sets}))
    write(target, "Motor Code Letters.csv", ("CodeLetter", "LRkVAPerHP"), code_letters(worksheet))
    write(target, "Motor Starting Multiplier.csv", ("Multiplier",),
          [[rounded(float(row["VoltageFactor"]) ** 2, "0.0001")]
           for row in read(worksheet.folder, "StartingMethods.csv")])
    write(target, "Motor Power Conversions.csv", ("HP", "RunningKW", "RunningKVA", "SPF"),
          motor_conversions(worksheet))
    for source, name, columns in (
            ("DerateCodes.csv", "Derate Codes.csv",
             ("ID", "AltDerateBase", "AltDerateSlope", "TempDerateBase", "TempDerateSlope")),
            ("Connections.csv", "Connections.csv", ("ID", "Connection Type", "Phases")),
            ("Properties.csv", "Properties.csv", ("ID", "Version", "Date", "Initials"))):
        write(target, name, columns, copied(worksheet, source, columns))
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2]))
