"""Random projects in JSON, from what `describe` tells that people may enter."""
import random

import genvara

# Mostly those for which there are many sets, and now and then others.
VOLTAGES = (480, 480, 480, 208, 240, 600)
CONNECTIONS = (1, 1, 1, 1, 1, 2, 3, 6)


def value_of(row, chance):
    if row["codes"]:
        return chance.choice(list(row["codes"].values()))
    if row["type"] == "boolean":
        return chance.random() < 0.5
    if row["type"] == "text":
        return chance.choice("ABCDEFGHJKLMNPRSTUV") if row["name"] == "CodeLetter" else "Pump & <Fan>"
    least = row["least"] if row["least"] is not None else 1
    most = row["greatest"] if row["greatest"] is not None else 200
    most = min(most, 20_000) if row["unit"] in ("W", "VA") else min(most, 100)
    if row["type"] == "integer":
        return chance.randint(int(least), max(int(least), int(most)))
    return chance.uniform(least + (0.01 if row["above_least"] else 0), max(most, least + 0.02))


def load(chance):
    kinds = [name for name in dir(genvara) if isinstance(getattr(genvara, name), type)
             and issubclass(getattr(genvara, name), genvara.Load) and name != "Load"]
    kind = chance.choice(kinds)
    rows = genvara.describe(kind)
    made = {"LoadType": kind} | {row["name"]: value_of(row, chance) for row in rows}
    made["Quantity"] = chance.randint(1, 3)
    if "DataEntryMethod" in made:
        # A member of another entry method does not exist for the load.
        sizes = {"AirConditioner": (("BTU",), ("Tonnage",), ("HP",)),
                 "Motor": (("HP",), ("RunningRealPower",), ("RunningAmps", "StartingAmps"))}[kind]
        kept = sizes[made["DataEntryMethod"]]
        for name in {name for method in sizes for name in method} - set(kept):
            del made[name]
    return made


def project(seed):
    chance = random.Random(seed)
    site = {row["name"]: value_of(row, chance) for row in genvara.describe("PowerSystem")}
    site |= {"Freq": chance.choice((60, 60, 60, 50)), "Fuel": chance.choice((0, 1, 1, 2)), "Phases": 3, "Voltage": chance.choice(VOLTAGES),
             "ConnectCode": chance.choice(CONNECTIONS), "GensetsInParallel": chance.randint(1, 4)}
    steps = [{"Description": f"Step {number}", "MaxVoltageDipOverride": chance.randint(5, 35),
              "Loads": [load(chance) for _ in range(chance.randint(1, 4))]}
             for number in range(chance.randint(1, 4))]
    return {"Format": "genvara-project", "Version": 1, "PowerSystem": site, "LoadProfile": steps}
