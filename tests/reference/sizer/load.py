"""What the nine kinds of load have in common.

Every power is that of one unit: W for real, VA for apparent, var for imaginary power. The names are those of the
program's answers.
"""

from sizer.arithmetic import root, square
from sizer.errors import member

PHASE_TEXTS = ("3", "1 - A", "1 - B", "1 - C")


class MotorTables:
    """The motor conversion columns, ascending in horsepower: HP, running KW and KVA, starting power factor SPF."""

    def __init__(self, rows):
        rows = sorted(rows, key=lambda row: row[0])
        self.HP, self.KW, self.KVA, self.SPF = ([row[column] for row in rows] for column in range(4))


class Load:
    """A number of equal consumers. Phases is 0 for all three phases, 1 to 3 for phase A to C alone."""

    # Names and types of the values that a project file holds for the kind, in their order.
    record = ""
    # Text of Phases 0.
    three_phase_text = PHASE_TEXTS[0]

    def __init__(self, motors):
        self.motors, self.ID = motors, 0

    def read(self, file, site):
        """Takes the common values from a project file and then those of the kind."""
        self.name, self.Description = file.text(), file.text()
        self.Quantity, self.Phases = file.whole(), file.whole()
        self.read_record(file, site)

    def read_record(self, file, site):
        self.read_fields(file, self.record)

    def read_fields(self, file, record):
        for field in record.split(", "):
            name, kind = field.split()
            setattr(self, name, getattr(file, kind)())

    def ThreePhaseSixPulseRectPower(self):
        return 0.0

    def ThreePhaseTwelvePulseRectPower(self):
        return 0.0

    def ThreePhaseSixPulseRectFilteredPower(self):
        return 0.0

    def ThreePhaseTwelvePulseRectFilteredPower(self):
        return 0.0

    def ThreePhaseSixPulsePPCRectPower(self):
        return 0.0

    def SinglePhaseRectPower(self, phase):
        return 0.0

    def SinglePhaseElectBallastPower(self, phase):
        return 0.0

    def SinglePhaseMagBallastPower(self, phase):
        return 0.0

    def spread(self, phase, watts):
        """What of an evenly distributed power falls on a phase: a third, or all on the load's own phase."""
        if self.Phases == 0:
            return watts / 3
        return watts if self.Phases == phase else 0.0

    def plural(self):
        return "s" if self.Quantity >= 2 else ""

    def GetProps(self):
        phases = self.three_phase_text if self.Phases == 0 else PHASE_TEXTS[self.Phases]
        return [("ID", str(self.ID)), ("Name", self.name), ("Qty", str(self.Quantity)), ("Phases", phases),
                *self.own_props()]


class RunsAsItStarts(Load):
    """Kinds without an inrush of their own."""

    @member
    def StartingRealPower(self):
        return self.RunningRealPower()

    @member
    def StartingAppPower(self):
        return self.RunningAppPower()

    @member
    def StartingImgPower(self):
        return self.RunningImgPower()


class ImaginaryByTriangle:
    """Imaginary power as the third side of the power triangle."""

    @member
    def RunningImgPower(self):
        return root(square(self.RunningAppPower()) - square(self.RunningRealPower()))
