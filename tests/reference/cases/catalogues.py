"""What a random project needs to know of a catalogue, and catalogues made up at random."""

import sqlite3
from contextlib import closing

from cases.database import write_database

# Frequency, connection and voltage of the sites of a random catalogue, and the phases of each connection.
SITES = ((60, 1, 480), (60, 1, 208), (60, 1, 600), (60, 2, 240), (60, 2, 208), (60, 3, 240), (60, 4, 480),
         (60, 5, 120), (60, 6, 220), (50, 1, 400), (50, 1, 240), (50, 2, 220), (50, 3, 230), (50, 5, 115))
CONNECTION_PHASES = {1: 3, 2: 3, 3: 1, 4: 3, 5: 1, 6: 3}
WITH_DISTORTION = (1, 2)

# Metres and degrees Celsius that sites and derating share, so that a site may lie exactly at a base.
ALTITUDES = (0, 152.4, 300, 1000, 1500, 2500, -500, 4572, 0.1)
TEMPERATURES = (15, 21.1111111111, 25, 40, 45.5, 50, -40, 66, 25.0001)
SIZES = (8, 10, 15, 20, 25, 30, 40, 50, 60, 80, 100, 125, 150, 200, 250, 300, 400, 500, 750, 1000, 1500, 2000)
HORSEPOWERS = (0.25, 0.5, 0.75, 1, 1.5, 2, 3, 5, 7.5, 10, 15, 20, 25, 30, 40, 50, 60, 75, 100, 125, 150, 200, 250,
               300, 400, 500)
DERATE_CODES, ALTERNATORS = range(1, 8), range(1, 15)


def log_uniform(rng, low, high):
    return low * (high / low) ** rng.random()


class Catalogue:
    """A database file."""

    def __init__(self, path):
        self.path = path

    def ask(self, query):
        with closing(sqlite3.connect(f"file:{self.path}?mode=ro", uri=True)) as connection:
            return connection.execute(query).fetchall()

    def figures(self, column, site):
        """A column of the sets for a site, without Null; fuel 0 is any."""
        rows = self.ask(f"Select [{column}] from [Gensets] where Frequency = {site.freq}"
                        f" and WindingConnection = {site.connection} and VoltageLL = {site.voltage}"
                        f" and {site.fuel} in (0, Fuel) and [{column}] is not Null order by 1")
        return [figure for figure, in rows]


class GivenCatalogue(Catalogue):
    """One that is there."""

    def __init__(self, path):
        super().__init__(path)
        self.sites = self.ask("Select distinct Frequency, WindingConnection, VoltageLL from [Gensets] order by 1, 2, 3")
        self.altitudes = self.bases("AltDerateBase")
        self.temperatures = self.bases("TempDerateBase")
        self.phases = dict(self.ask("Select ID, Phases from Connections"))

    def bases(self, column):
        return [base for base, in self.ask(f"Select distinct {column} from [Derate Codes] order by 1")]


class RandomCatalogue(Catalogue):
    """Sets that no maker would build: each figure may be the weak one, and some are missing."""

    def __init__(self, rng, path):
        super().__init__(path)
        self.rng, self.phases = rng, CONNECTION_PHASES
        self.sites = rng.sample(SITES, 3) + [rng.choice([site for site in SITES if site[1] in WITH_DISTORTION])]
        self.altitudes, self.temperatures = rng.sample(ALTITUDES, 4), rng.sample(TEMPERATURES, 4)
        self.alternators = [self.alternator(key) for key in ALTERNATORS]
        gensets = [self.genset(site, rng.choice(SIZES)) for site in self.sites for _ in range(rng.randint(20, 70))]
        rng.shuffle(gensets)
        write_database(path, {
            "Gensets": gensets, "Alternators": self.alternators,
            "Derate Codes": [self.derate_code(key) for key in DERATE_CODES],
            "Connections": [(key, f"Connection {key}", phases) for key, phases in CONNECTION_PHASES.items()],
            "Properties": [(key, f"{rng.randint(1, 9)}.{key}", "2024-05-01", "QA") for key in range(rng.randint(1, 3))],
            "Motor Power Conversions": self.conversions()})

    def derate_code(self, key):
        """Slopes so steep, now and then, that a rating falls below zero."""
        rng = self.rng
        slopes = (0, 1, 0.5, 3.28, round(rng.uniform(0, 4), 3))
        return (key, rng.choice([*self.altitudes, 0, 150]), 9 if rng.random() < 0.05 else rng.choice(slopes),
                rng.choice([*self.temperatures, 25, 40]), rng.choice([*slopes, round(rng.uniform(0, 12), 2)]))

    def alternator(self, key):
        rng = self.rng
        model = rng.choice(("RA274", "RB544-C", "-X12", "RC 49.1-S4-J6", "Ä27é-1", "K", f"4{key}"))
        kw = 0 if rng.random() < 0.07 else round(log_uniform(rng, 15, 1500), 1)
        volts = 0 if rng.random() < 0.05 else rng.choice((480, 240, 240.5, 208, 400, 416, 600, 380))
        return key, model, kw, volts, round(rng.uniform(0.06, 0.4), 4)

    def conversions(self):
        """Apparent power stays above real power, also where the table is carried on beyond its ends."""
        rng, kw, kva, last, factor, rows = self.rng, 0.05, 0.1, 0.0, 0.83, []
        for hp in HORSEPOWERS:
            rise = (hp - last) * rng.uniform(0.72, 0.79)
            last, kw, kva, factor = hp, kw + rise, kva + rise * rng.uniform(1.07, 1.11), factor - 0.02
            rows.append((hp, round(kw, 3), round(kva, 3), round(factor, 3)))
        rng.shuffle(rows)
        return rows

    def genset(self, site, size):
        """A row for a set of about `size` kW."""
        rng = self.rng
        ratings = [size if rng.random() < 0.5 else round(size * rng.uniform(0.8, 1.05), 2) for _ in range(5)]
        locked_rotor = 0 if rng.random() < 0.03 else round(size * log_uniform(rng, 1.2, 9), 1)
        starting = round(size * rng.choice((1, rng.uniform(0.6, 1), rng.uniform(1, 2.2), rng.uniform(1, 2.2))), 1)
        return (*site, rng.choice((1, 1, 1, 2, 2, 3, 4)), rng.choice(DERATE_CODES), self.alternator_for(size),
                f"{size}R{rng.choice(('A', 'B-4', 'éX', ''))}{rng.randint(1, 99)}", rng.choice(("6.8L", "R45T", "")),
                *ratings, locked_rotor, starting, *self.dip_data(size))

    def alternator_for(self, size):
        near = [row[0] for row in self.alternators if size * 0.5 <= row[2] <= size * 3]
        return self.rng.choice(near if near and self.rng.random() < 0.8 else ALTERNATORS)

    def dip_data(self, size):
        """Any of the three may be missing."""
        rng = self.rng
        step_kw = rng.choice((0, 0.8)) if rng.random() < 0.08 else round(size * rng.uniform(0.3, 1.6), 1)
        data = [step_kw, rng.choice((5, 8, 10, 15, 20, round(rng.uniform(2, 22), 2))), round(rng.uniform(0.6, 2.1), 3)]
        missing = rng.sample(range(3), rng.randint(1, 3)) if rng.random() < 0.12 else ()
        return [None if i in missing else value for i, value in enumerate(data)]
