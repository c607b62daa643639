"""The load as it grows from step to step, in kW, kvar and kVA."""

from sizer.arithmetic import root, square

PHASES = (1, 2, 3)


def in_kilo(values):
    return [value / 1000 for value in values]


def running_sum(rows):
    """Each row plus all rows before it."""
    sums = []
    for row in rows:
        sums.append([value + before for value, before in zip(row, sums[-1])] if sums else row)
    return sums


class Profile:
    """Lists count steps from 0; run_kw and run_kvar hold the total and then the phases A, B and C.

    Running and harmonic powers are those of all load that stands after the step. Starting powers are those of the
    step on top of the load that stood before it; alone_kw is the step's starting power without that load.
    """

    def __init__(self, steps):
        def standing(name, phases):
            return running_sum([in_kilo([getattr(step, name)(phase) for phase in phases]) for step in steps])

        def balanced(name):
            return [row[0] for row in running_sum([in_kilo([getattr(step, name)()]) for step in steps])]

        self.run_kw = standing("TotalRunningRealPower", (0, *PHASES))
        self.run_kvar = standing("TotalRunningImgPower", (0, *PHASES))
        self.six_pulse = balanced("TotalSixPulseRectPower")
        self.twelve_pulse = balanced("TotalTwelvePulseRectPower")
        self.six_filtered = balanced("TotalSixPulseRectFilteredPower")
        self.twelve_filtered = balanced("TotalTwelvePulseRectFilteredPower")
        self.controlled = balanced("TotalSixPulsePPCPower")
        self.rectifier = standing("TotalSinglePhaseRectPower", PHASES)
        self.electronic = standing("TotalElectBallastRealPower", PHASES)
        self.magnetic = standing("TotalMagBallastRealPower", PHASES)
        self.alone_kw = in_kilo([step.TotalStartingRealPower(0) for step in steps])
        self.start_kw = self.on_top(self.alone_kw, self.run_kw)
        start_kvar = self.on_top(in_kilo([step.TotalStartingImgPower(0) for step in steps]), self.run_kvar)
        self.start_kva = [root(square(kvar) + square(kw)) for kvar, kw in zip(start_kvar, self.start_kw)]

    @staticmethod
    def on_top(starting, running):
        return starting[:1] + [start + before[0] for start, before in zip(starting[1:], running)]

    def total_kw(self):
        return self.run_kw[-1][0]

    def ballast(self, step, phase):
        """kW of both kinds of ballast on a phase, 0 to 2 for A to C."""
        return self.magnetic[step][phase] + self.electronic[step][phase]

    def non_linear(self, step, phase):
        """kW of all non-linear load on a phase, 0 to 2 for A to C; filtered rectifiers count as unfiltered ones."""
        return (self.rectifier[step][phase] + self.electronic[step][phase] + self.magnetic[step][phase]
                + self.controlled[step] / 3 + self.six_pulse[step] / 3 + self.twelve_pulse[step] / 3)
