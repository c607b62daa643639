"""Random loads of about a given power in kW, each as its kind, its phases and the records of its own."""

from types import SimpleNamespace

AIR_CONDITIONER, CHARGER, LIGHT, MEDICAL, MISC, MOTOR, OFFICE, UPS, DRIVE = range(9)

# What a motor of 1 hp draws, in kW and kVA, and the amperes at standstill for each running.
KW_PER_HP, KVA_PER_HP, STANDSTILL = 0.78, 0.87, 6
# Below the least motor, what the conversions carry on is no power any more.
LEAST_HP, MOST_HP, MOST_STARTING_VA, MOST_KW = 0.25, 900, 2.4e7, 1400
SIX_PULSE, TWELVE_PULSE, SINGLE_PHASE = 1, 2, 5


def new_load(kind, *records, phases=0):
    return SimpleNamespace(kind=kind, records=records, phases=phases, quantity=1)


class LoadMaker:
    """Methods named after what they make take the power in kW; `phases` draws the phases of a load."""

    def __init__(self, rng, value, phases, voltage):
        self.rng, self.value, self.phases, self.voltage = rng, value, phases, voltage

    def around(self, value):
        """The value with as many digits as someone would type."""
        return round(value, self.rng.choice((0, 1, 2, 3))) or round(value, 5)

    def misc(self, kw):
        factor = self.rng.choice((0.6, 0.8, 0.9, 0.95, 1))
        return new_load(MISC, self.value.reals(self.around(kw * 1000), factor), phases=self.phases())

    def round(self, kw):
        """A size that sets have too, so that a limit is met exactly."""
        size = min((10, 20, 25, 50, 80, 100, 200, 400), key=lambda size: abs(size - kw))
        return new_load(MISC, self.value.reals(size * 1000, self.rng.choice((0.8, 1))), phases=self.phases())

    def nothing(self, _):
        return self.rng.choice((new_load(MISC, "0,1"), new_load(LIGHT, "1,2,0,0.9,0,0.9"),
                                new_load(OFFICE, "0,0,0,0", phases=1), new_load(CHARGER, "0,0,0,1"),
                                new_load(MEDICAL, "0,0,0.9,0.9", "6,1")))

    def lighting(self, kw, lamp, ballast):
        watts, factor = self.around(kw * 1000), self.rng.choice((0.6, 0.85, 0.95, 1))
        starting = (watts, factor)
        if self.rng.random() < 0.2:
            starting = (self.around(kw * 1400), self.rng.choice((0.6, 0.7)))
        return new_load(LIGHT, f"{lamp},{ballast}," + self.value.reals(watts, factor, *starting), phases=self.phases())

    def light(self, kw):
        lamp = self.rng.randint(0, 2)
        return self.lighting(kw, lamp, self.rng.randint(1, 3) if lamp else 0)

    def ballast(self, kw):
        return self.lighting(kw, self.rng.randint(1, 2), self.rng.choice((1, 2)))

    def magnetic(self, kw):
        return self.lighting(kw, 1, 1)

    def incandescent(self, kw):
        return self.lighting(kw, 0, 0)

    def motor(self, kw, starter=None, pump=False):
        rng, hp = self.rng, min(max(kw / KW_PER_HP, LEAST_HP), MOST_HP)
        hp = rng.choice((round(hp, 2), round(hp, 3), max(1.0, float(round(hp)))))
        method, phases, starter = rng.choice((0, 0, 1, 2)), self.phases(), starter or rng.choice((1, 1, 2, 3, 4, 5, 6))
        flags = f"{self.value.flag(rng.random() < 0.5)},{self.value.flag(pump)}"
        start = hp * 1000 * rng.uniform(1.8, 6) * (1 if starter == 1 else 0.5)
        third = self.value.reals(round(min(start, MOST_STARTING_VA), 2), round(rng.uniform(0.2, 0.85), 2))
        return new_load(MOTOR, f'{method},"{rng.choice(("G", "f", " H ", "A"))}",{starter},{flags}',
                        self.motor_size(hp, method, phases), f"{third},{rng.choice((300, 100, 450, 600))}",
                        phases=phases)

    def motor_size(self, hp, method, phases):
        """The record of a motor's size by entry method: horsepower, watts, or running and starting amperes."""
        amps = hp * KVA_PER_HP * 1000 / (self.voltage * (1.732 if phases == 0 else 1))
        return self.value.reals(*((hp,), (self.around(hp * KW_PER_HP * 1000),),
                                  (round(amps, 2), round(amps * STANDSTILL, 1)))[method])

    def pump(self, kw):
        return self.motor(kw, pump=True)

    def tapped(self, kw):
        return self.motor(kw, starter=3)

    def air_conditioner(self, kw):
        rng, hp = self.rng, min(max(kw / KW_PER_HP, LEAST_HP), MOST_HP)
        method = rng.randint(0, 2)
        size = (round(hp / 0.00016), round(hp / 2, 2), rng.choice((round(hp, 1), 15, 7.5, 5)))[method]
        return new_load(AIR_CONDITIONER, f"{method},{self.value.real(size)}", phases=self.phases())

    def charger(self, kw):
        rng, volts = self.rng, self.rng.choice((12, 24, 48, 125, 2e-16, 2.5e-16, 1.25e17))
        codes = f"{rng.choice((0, 0, 1))},{rng.randint(0, 2)}"
        return new_load(CHARGER, f"{self.value.reals(volts, kw * 800 / volts)},{codes}", phases=self.phases())

    def small_charger(self, _):
        """An industrial one on one phase, mostly where its efficiency takes another course."""
        rng, volts = self.rng, self.rng.choice((12, 24, 48))
        watts = rng.choice((119.0, 120.0, 120.5, 600.0, 1199.5, 1200.0, 1201.0))
        return new_load(CHARGER, f"{volts},{watts / volts!r},0,1", phases=rng.randint(1, 3))

    def steady(self, kw):
        """Exactly that power, running and starting."""
        return new_load(MISC, f"{kw * 1000!r},1")

    def peak(self, kw):
        """A start of exactly that power that leaves half of it running, within any permitted dip."""
        return new_load(MEDICAL, f"{kw * 500!r},{kw * 1000!r},1,1", "99,1")

    def medical(self, kw):
        rng = self.rng
        factors = (rng.choice((0.9, 0.8, 1, 0.123456789012345)), rng.choice((0.9, 0.95, 1)))
        powers = (self.around(kw * 1000), self.around(kw * rng.uniform(1, 3) * 1000))
        return new_load(MEDICAL, self.value.reals(*powers, *factors),
                        f"{rng.choice((4, 6, 10, 15, 30, 99))},{rng.choice((1, 2))}", phases=self.phases())

    def office(self, kw):
        counts = [int(kw / 1.2 * self.rng.random()) for _ in range(4)]
        return new_load(OFFICE, ",".join(map(str, counts)), phases=self.phases())

    def rectifier(self, kw, pulse=None, filtered=False):
        """An on-line supply or a drive; on one phase if no pulse number asks for three."""
        phases = 0 if pulse else self.phases()
        pulse = SINGLE_PHASE if phases else pulse or self.rng.randint(1, 4)
        return self.rng.choice((self.on_line_ups, self.one_drive))(kw, pulse, phases, self.value.flag(filtered))

    def on_line_ups(self, kw, pulse, phases, filtered):
        rating = self.value.real(max(round(kw / 1.1), 1) * 1000)
        return new_load(UPS, f"{pulse},1,{rating},{self.rng.choice((50, 80, 100))},{self.rng.choice((0, 10, 25))},"
                             f"{filtered}", phases=phases)

    def one_drive(self, kw, pulse, phases, filtered):
        hp = self.value.real(min(round(kw / 0.9, 1) or 0.1, MOST_HP))
        return new_load(DRIVE, f"{pulse},{hp},{self.rng.choice((70, 90, 95, 99))},{self.rng.choice((100, 125, 150))},"
                               f"{filtered}", phases=phases)

    def any_rectifier(self, kw):
        return self.rectifier(kw, filtered=self.rng.random() < 0.2)

    def ups(self, kw):
        """A supply of any family, input and filter. The filter of a stand-by one may be all that a phase has."""
        phases, family = self.phases(), self.rng.choice((0, 1, 2))
        pulse = SINGLE_PHASE if phases else self.rng.randint(1, 4)
        rating = self.value.real(self.around(kw * 900))
        return new_load(UPS, f"{pulse},{family},{rating},{self.rng.choice((50, 100))},10,"
                             f"{self.value.flag(self.rng.random() < 0.5)}", phases=phases)

    def filter_alone(self, kw):
        """A three-phase stand-by supply behind a filter, which is counted while its rectifier is not."""
        rating = self.value.real(self.around(kw * 900))
        return new_load(UPS, f"{self.rng.choice((SIX_PULSE, TWELVE_PULSE))},{self.rng.choice((0, 2))},{rating},100,10,"
                             "#TRUE#")

    def six_pulse(self, kw):
        return self.rectifier(kw, SIX_PULSE)

    def twelve_pulse(self, kw):
        return self.rectifier(kw * self.rng.uniform(0.3, 1), TWELVE_PULSE)

    def filtered_six(self, kw):
        return self.rectifier(kw, SIX_PULSE, True)

    def filtered_twelve(self, kw):
        return self.rectifier(kw * self.rng.choice((0.3, 1)), TWELVE_PULSE, True)

    def strange(self, kw):
        """Codes outside their lists, which nothing refuses."""
        rng, phases, watts = self.rng, self.phases(), self.value.real(self.around(kw * 1000))
        return rng.choice((
            new_load(CHARGER, f"48,{self.value.real(kw * 10)},7,9", phases=phases),
            new_load(LIGHT, f"5,{rng.choice((0, 1, 4, 9))},{watts},0.9,{watts},0.9", phases=phases),
            new_load(MOTOR, f'0,"C",{rng.choice((0, 7, -3))},#FALSE#,#FALSE#', "5", "12000,0.5,250", phases=phases),
            new_load(UPS, f"{rng.choice((0, 6))},{rng.choice((1, 3))},{watts},75,5,#TRUE#", phases=phases),
            new_load(DRIVE, "0,10,90,110,#TRUE#", phases=phases),
            new_load(MEDICAL, f"{watts},{watts},{rng.choice((-0.5, -1))},0.7", "-3,9")))
