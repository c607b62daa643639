"""Random projects: steps of loads that stress one side of the sizing each, for sites of a catalogue."""

import math
from types import SimpleNamespace

from cases.loads import MOST_KW, UPS, LoadMaker
from cases.values import ValueText

# Makers of loads that a project draws from.
MIXTURES = (
    ("motor", "light", "air_conditioner", "charger", "medical", "misc", "office", "ups", "any_rectifier"),
    ("motor", "motor", "motor", "air_conditioner", "misc"),
    ("pump", "motor", "misc"),
    ("tapped", "misc", "light"),
    ("medical", "light", "office", "misc"),
    ("ballast", "ballast", "light", "twelve_pulse", "misc"),
    ("magnetic", "magnetic", "magnetic", "twelve_pulse"),
    ("magnetic", "magnetic", "filtered_twelve"),
    ("filtered_six", "filtered_six", "misc", "office", "light"),
    ("filtered_twelve", "filtered_twelve", "office", "ballast", "misc"),
    ("filtered_six", "filtered_twelve", "ballast", "office"),
    ("ups",),
    ("ups", "ups", "ups", "misc", "light"),
    ("filter_alone", "filter_alone", "misc"),
    ("filter_alone", "ups", "ballast", "office"),
    ("six_pulse", "twelve_pulse", "ballast", "office"),
    ("charger", "small_charger", "office", "misc"),
    ("misc", "incandescent"),
    ("round",),
    ("nothing", "nothing", "misc"),
    ("strange", "misc", "light"),
    ("misc", "office", "light", "charger"))

# A voltage for which no catalogue has a set.
UNSERVED_VOLTAGE = 13800
# Total power of a project in kW, for a single set.
LEAST_TOTAL, MOST_TOTAL = 6, 700
# Shares of the projects, or of those for which the question arises.
EMPTY_STEP, SITE_WITHOUT_SETS, ONE_PHASE, AT_A_LIMIT = 0.05, 0.03, 0.2, 0.2
# Figures of a set that a load may meet: column, shares of it that some limit lies at, and what draws the power.
ENGINE_LIMIT = "StartingPower", (1, 0.9), "peak"
LIMITS = (("Rating130C", (1, 0.9, 0.8, 0.6, 0.3), "steady"), ENGINE_LIMIT, ("BaseFreqDipKW", (1,), "peak"),
          ("LRkVA", (1,), "peak"))
# The fuel that changes a figure, that of the engine's start.
NATURAL_GAS = 2
# Altitude, temperature and duty at which a set gives its Rating130C.
UNDERATED = {"altitude": -500, "temperature": -40, "duty": 3}


def random_site(rng, catalogue):
    freq, connection, voltage = rng.choice(catalogue.sites)
    return SimpleNamespace(
        freq=freq, connection=connection, voltage=UNSERVED_VOLTAGE if rng.random() < SITE_WITHOUT_SETS else voltage,
        sets=rng.choice((1, 1, 1, 1, 2, 2, 3, 16)), fuel=rng.choice((0, 0, 0, 1, 1, 1, 2, 2, 3, 4)),
        duty=rng.choice((0, 1, 2, 3, 3, 4)) if rng.random() < 0.97 else rng.choice((5, -1)),
        altitude=rng.choice([*catalogue.altitudes, rng.uniform(-500, 4572), 152.4]),
        temperature=rng.choice([*catalogue.temperatures, rng.uniform(-40, 66), 25]))


class RandomProject:
    """A site and its steps."""

    def __init__(self, rng, catalogue):
        self.rng, self.value, self.site = rng, ValueText(rng), random_site(rng, catalogue)
        self.on_one_phase = rng.random() < (0.8 if catalogue.phases[self.site.connection] == 1 else ONE_PHASE)
        self.own_phase = rng.randint(1, 3)
        self.maker = LoadMaker(rng, self.value, self.phases, self.site.voltage)
        self.mixture = rng.choice(MIXTURES)
        self.steps = self.steps_at_limit(catalogue) if rng.random() < AT_A_LIMIT else self.make_steps()

    def phases(self):
        """The phases of a load: mostly all three, in some projects mostly one of them."""
        if not self.on_one_phase:
            return 0
        return self.own_phase if self.rng.random() < 0.5 else self.rng.randint(1, 3)

    def steps_at_limit(self, catalogue):
        """A single load that meets a figure of a set or misses it by a thousandth; other steps if there is no set."""
        rng = self.rng
        column, shares, maker = ENGINE_LIMIT if self.site.fuel == NATURAL_GAS else rng.choice(LIMITS)
        figures = [figure for figure in catalogue.figures(column, self.site) if 0 < figure < MOST_KW]
        if not figures:
            return self.make_steps()
        vars(self.site).update(UNDERATED)
        load = getattr(self.maker, maker)(rng.choice(figures) * rng.choice(shares) * rng.choice((0.999, 1, 1.001)))
        load.quantity = rng.choice((1, self.site.sets))
        return [SimpleNamespace(dip=35, loads=[load])]

    def make_steps(self):
        rng = self.rng
        counts = [rng.choice((1, 1, 2, 3, 5)) for _ in range(rng.choice((1, 1, 2, 2, 3, 4, 7)))]
        if len(counts) > 1 and rng.random() < EMPTY_STEP:
            counts[-1] = 0
        total = LEAST_TOTAL * (MOST_TOTAL / LEAST_TOTAL) ** rng.random() * math.sqrt(self.site.sets)
        return [self.make_step(count, total / sum(counts)) for count in counts]

    def make_step(self, count, kw):
        dip = self.rng.choice((35, 35, 35, 30, 25, 20, 15, 10, 5))
        return SimpleNamespace(dip=dip, loads=[self.make_load(kw * self.rng.uniform(0.3, 1.7)) for _ in range(count)])

    def make_load(self, kw):
        rng = self.rng
        quantity = 256 if rng.random() < 0.005 else rng.choice((1, 1, 1, 2, 3, rng.randint(2, 12)))
        one = min(max(kw / quantity, 0.02), MOST_KW)
        load = getattr(self.maker, rng.choice(self.mixture))(one)
        load.quantity = quantity
        return load

    def supplies(self):
        """Of each uninterruptible supply: family, input type, whether it has a filter, whether it is on one phase."""
        for load in (load for step in self.steps for load in step.loads if load.kind == UPS):
            pulse, family, *_, flag = load.records[0].split(",")
            yield int(family), int(pulse), flag == self.value.flag(True), load.phases != 0

    def head(self):
        """Versions, project, site, requirements and limits."""
        rng, site = self.rng, self.site
        whole, flag, text, moment = self.value.whole, self.value.flag, self.value.text, self.value.moment
        records = (
            (rng.choice(("8,0,0", "1,0,0", "7,12,3")), "1"),
            (moment(), text(), text(), moment(), text(), text()),
            (self.value.reals(site.altitude, site.temperature), whole(site.connection), whole(site.freq),
             whole(site.fuel), whole(site.sets)),
            (whole(rng.choice((5, 8, 10, 15, 20, 25))), flag(rng.random() < 0.5),
             whole(rng.choice((5, 5, 8, 10, 15, 20))), flag(rng.random() < 0.6)),
            (whole(rng.choice((5, 10, 15, 20, 25, 30, 35, 35))), str(rng.choice((1, 3, 7))), str(site.duty),
             whole(site.voltage)))
        return [",".join(record) for record in records]

    def records(self):
        lines = self.head() + [str(len(self.steps))]
        lines += [f"{self.value.text()},{step.dip}" for step in self.steps]
        for position, step in enumerate(self.steps, 1):
            lines.append(str(len(step.loads)))
            for load in step.loads:
                lines.append(f"{position},{load.kind},{self.value.text()},{self.value.text()},"
                             f"{self.value.whole(load.quantity)},{load.phases}")
                lines += load.records
        return lines

    def data(self):
        return encode(self.records(), "\n" if self.rng.random() < 0.03 else "\r\n")


def encode(lines, line_end="\r\n"):
    return "".join(line + line_end for line in lines).encode("cp1252")
